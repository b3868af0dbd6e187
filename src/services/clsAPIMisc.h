#pragma once

#include "services/OperationTrace.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace velmora {

/// Small operations of the system. Each passes failures on with the source "clsAPIMisc" and all operations
/// that the object has begun so far, each preceded by "*".
class clsAPIMisc {
  public:
    /// Called about every 50 ms while a started program runs, so that windows can repaint.
    std::function<void()> WhileWaiting;

    /// Runs a command line and returns when the program has ended, or at once when it cannot be started.
    /// `windowStyle` is a standard show-window code, used where the host has such.
    void C2Shell(const std::string& commandLine, std::optional<std::int16_t> windowStyle = std::nullopt);

    void GoToSleep(std::int32_t milliseconds);

    /// Free space for the user on the volume of a path, as MillionsOf gives it; 0 when it cannot be read.
    double GetFreeDiskSpace(const std::string& path);

    /// Bytes in millions, rounded to one decimal place.
    static double MillionsOf(std::uint64_t bytes);

    /// The Windows directory, without trailing separator unless it is a root; elsewhere the system's root.
    std::string WindowsDirectory();

    /// Lets the user pick a folder, beginning at `start`. It ends in a separator; empty when the user
    /// cancels.
    std::string BrowseForFolder(const std::string& title, const std::string& start = {});

    std::string ComputerName();

  private:
    OperationTrace trace{"clsAPIMisc"};
};

} // namespace velmora
