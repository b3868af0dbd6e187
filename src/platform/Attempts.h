#pragma once

#include "platform/Failure.h"
#include "platform/Files.h"

#include <cstdint>
#include <filesystem>
#include <system_error>

/// What the files of this folder share: how the host's refusals become failures. Nobody else's business.
namespace velmora::Files {

enum class Wanted { File, Folder };

/// Both throw the host's refusal to tell.
bool IsFolder(const std::filesystem::path& path);
bool Exists(const std::filesystem::path& path);

/// The failure that users know for a refusal of the host.
Failure FailureFor(const std::error_code& code, const char* doing, const std::filesystem::path& path,
                   Wanted wanted);

/// Runs work on a file or folder, with the system's refusals turned into the failures users know.
template <class Work>
auto Attempt(const char* doing, const std::filesystem::path& path, Wanted wanted, Work work) {
    try {
        return work();
    } catch (const std::system_error& refusal) {
        throw FailureFor(refusal.code(), doing, path, wanted);
    }
}

/// Removes what a failure leaves behind; that one is the one to report.
void RemoveQuietly(const std::filesystem::path& path, Wanted kind);

} // namespace velmora::Files
