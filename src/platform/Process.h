#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Programs and facts of the host system. Texts are code-page bytes as in the record core.
namespace velmora::Process {

/// Starts a program without waiting for it: program name first, then its arguments. Throws Failure (53)
/// when it cannot be started.
void Start(const std::vector<std::string>& commandLine);

/// Runs a command line and returns when it has ended, calling `waiting` about every 50 ms meanwhile. A start
/// failure is not reported: the call returns at once. `windowStyle` is a standard show-window code where the
/// host has such.
void RunAndWait(std::string_view commandLine, std::optional<int> windowStyle,
                const std::function<void()>& waiting = {});

/// Full path of the running executable.
std::string ExecutablePath();

/// Free bytes available to the user on the volume of a path; nothing when they cannot be read.
std::optional<std::uint64_t> FreeBytes(std::string_view path);

/// The Windows directory without trailing separator; elsewhere the root of the system ("/").
std::string SystemFolder();

std::string ComputerName();

/// The user's own data directory for this program ("VelmoraWriter" under the platform's local application
/// data), without trailing separator. Not created.
std::string UserDataFolder();
/// The user's configuration directory for this program, without trailing separator. Not created.
std::string UserConfigFolder();

/// Value of an environment variable, empty when it is not set.
std::string Environment(const char* name);

void Sleep(std::int32_t milliseconds);

/// Lets another program bring its window to the front, where the host leaves that to the one the user has
/// just started.
void LetOthersComeToFront();

} // namespace velmora::Process
