#include "platform/Attempts.h"

#include "platform/HostFiles.h"
#include "platform/PathTexts.h"

#include <string>

namespace velmora::Files {

namespace {

namespace fs = std::filesystem;

bool FolderIsThere(const fs::path& file) {
    std::error_code ignored;
    return !file.has_parent_path() || fs::is_directory(file.parent_path(), ignored);
}

std::int32_t NumberOf(const std::error_code& code, const fs::path& path, Wanted wanted) {
    if (code == std::errc::no_such_file_or_directory)
        return wanted == Wanted::File && FolderIsThere(path) ? FailureFileNotFound : FailurePathNotFound;
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted ||
        code == std::errc::read_only_file_system)
        return FailurePermissionDenied;
    if (HostFiles::IsDiskFull(code))
        return FailureDiskFull;
    return code == std::errc::io_error ? FailureDeviceError : FailurePathFileAccess;
}

} // namespace

bool IsFolder(const fs::path& path) {
    return HostFiles::EntryAt(path) == HostFiles::Entry::Folder;
}

bool Exists(const fs::path& path) {
    return HostFiles::EntryAt(path) != HostFiles::Entry::Absent;
}

Failure FailureFor(const std::error_code& code, const char* doing, const fs::path& path, Wanted wanted) {
    return {NumberOf(code, path, wanted), std::string("Cannot ") + doing + ' ' + PathText(path) + ": " +
                                              PathTexts::FromHostText(code.message())};
}

void RemoveQuietly(const fs::path& path, Wanted kind) {
    try {
        kind == Wanted::File ? HostFiles::Unlink(path) : HostFiles::RemoveFolder(path);
    } catch (const std::system_error&) {
        // Called while a failure is on its way: that one is the one to report.
    }
}

} // namespace velmora::Files
