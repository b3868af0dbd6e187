#include "platform/HostFiles.h"

#include "platform/FaultHook.h"
#include "platform/HostWindows.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace velmora::HostFiles {

namespace {

[[noreturn]] void Refuse(DWORD code, const char* operation) {
    throw std::system_error(static_cast<int>(code), std::system_category(), operation);
}

HANDLE Native(std::intptr_t handle) {
    return reinterpret_cast<HANDLE>(handle);
}

bool IsFolder(DWORD attributes) {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Refuses a path with the system's last reason; a folder in the place of a file is named as what it is.
[[noreturn]] void RefusePath(const Path& path, const char* operation) {
    const DWORD code = ::GetLastError();
    if (code == ERROR_ACCESS_DENIED && IsFolder(::GetFileAttributesW(path.c_str())))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory), operation);
    Refuse(code, operation);
}

std::intptr_t Open(const Path& path, DWORD access, DWORD sharing, DWORD creation, DWORD flags) {
    const HANDLE handle = ::CreateFileW(path.c_str(), access, sharing, nullptr, creation, flags, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        RefusePath(path, "open");
    return reinterpret_cast<std::intptr_t>(handle);
}

bool IsLink(const Path& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return false;
    ::FindClose(search);
    return (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 &&
           found.dwReserved0 == IO_REPARSE_TAG_SYMLINK;
}

void RefuseLink(const Path& path, bool isPrivate) {
    if (isPrivate && IsLink(path))
        throw std::system_error(std::make_error_code(std::errc::too_many_symbolic_link_levels), "open");
}

std::intptr_t OpenForReading(const Path& path, bool isPrivate) {
    CheckFault("open");
    RefuseLink(path, isPrivate);
    return Open(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, OPEN_EXISTING,
                FILE_FLAG_SEQUENTIAL_SCAN);
}

// What a user's private files need denied to others, the rights of the user's own folders deny here.
std::intptr_t OpenForWriting(const Path& path, OutFile::Opening opening, bool isPrivate) {
    CheckFault("open");
    RefuseLink(path, isPrivate);
    if (opening == OutFile::Opening::Append)
        return Open(path, FILE_APPEND_DATA, FILE_SHARE_READ, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL);
    return Open(path, GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_NORMAL);
}

/// The path with its last name as the disk has it, which may differ in the case of its letters.
Path AsOnDisk(const Path& path) {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW(path.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return path;
    ::FindClose(search);
    return path.parent_path() / found.cFileName;
}

DWORD Piece(std::size_t wanted) {
    constexpr std::size_t most = std::numeric_limits<std::int32_t>::max();
    return static_cast<DWORD>(std::min(wanted, most));
}

} // namespace

InFile::InFile(const Path& path, bool isPrivate) : Handle(OpenForReading(path, isPrivate)) {
    LARGE_INTEGER size{};
    if (::GetFileType(Native(Handle)) != FILE_TYPE_DISK || !::GetFileSizeEx(Native(Handle), &size)) {
        ::CloseHandle(Native(Handle));
        throw std::system_error(std::make_error_code(std::errc::operation_not_supported), "open");
    }
    SizeAtOpening = static_cast<std::uint64_t>(size.QuadPart);
}

InFile::~InFile() {
    ::CloseHandle(Native(Handle));
}

std::size_t InFile::Read(char* buffer, std::size_t size) {
    CheckFault("read");
    DWORD got = 0;
    if (!::ReadFile(Native(Handle), buffer, Piece(size), &got, nullptr))
        Refuse(::GetLastError(), "read");
    return got;
}

OutFile::OutFile(const Path& path, Opening opening, bool isPrivate)
    : Handle(OpenForWriting(path, opening, isPrivate)) {}

OutFile::~OutFile() {
    if (Handle != 0)
        ::CloseHandle(Native(Handle));
}

void OutFile::TakeModeOf(const Path& /*other*/) {
    // Replace hands the attributes and rights of the old file on.
}

void OutFile::BeNoMoreOpenThan(const Path& /*other*/) {
    // Rights come from the folder here, and the user's own folders are open to the user only.
}

void OutFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        CheckFault("write");
        DWORD written = 0;
        if (!::WriteFile(Native(Handle), bytes.data(), Piece(WritablePiece(bytes.size())), &written, nullptr))
            Refuse(::GetLastError(), "write");
        if (written == 0)
            throw std::system_error(std::make_error_code(std::errc::io_error), "write");
        bytes.remove_prefix(written);
    }
}

void OutFile::StartFlush() {
    // Windows has no such hint.
}

void OutFile::Flush() {
    CheckFault("fsync");
    if (!::FlushFileBuffers(Native(Handle)))
        Refuse(::GetLastError(), "fsync");
}

void OutFile::Close() {
    const bool closed = ::CloseHandle(Native(std::exchange(Handle, 0)));
    const DWORD code = ::GetLastError();
    CheckFault("close");
    if (!closed)
        Refuse(code, "close");
}

Entry EntryAt(const Path& path) {
    CheckFault("stat");
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES) {
        if (IsLink(path) && !std::filesystem::exists(path))
            return Entry::Absent;
        return IsFolder(attributes) ? Entry::Folder : Entry::File;
    }
    switch (const DWORD code = ::GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    // Names that nothing can have.
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_INVALID_DRIVE:
    case ERROR_DIRECTORY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
        return Entry::Absent;
    default:
        Refuse(code, "stat");
    }
}

std::uint64_t SizeOf(const Path& path) {
    CheckFault("stat");
    return std::filesystem::file_size(path);
}

// The standard library here keeps whole seconds only.
Stamp StampOf(const Path& path) noexcept {
    WIN32_FILE_ATTRIBUTE_DATA found{};
    if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &found))
        return {};
    const auto whole = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
    return {static_cast<std::int64_t>(
                whole(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime)),
            whole(found.nFileSizeHigh, found.nFileSizeLow)};
}

Path FollowLinks(const Path& path) {
    const DWORD attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return path;
    const HANDLE handle = Native(Open(path, 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    std::wstring target(32768, L'\0');
    const DWORD length = ::GetFinalPathNameByHandleW(handle, target.data(), static_cast<DWORD>(target.size()),
                                                     FILE_NAME_NORMALIZED);
    const DWORD code = ::GetLastError();
    ::CloseHandle(handle);
    if (length == 0 || length >= target.size())
        Refuse(code, "readlink");
    target.resize(length);
    return target;
}

void CheckReplaceable(const Path& target) {
    if (IsLink(target))
        return;
    const DWORD attributes = ::GetFileAttributesW(target.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD code = ::GetLastError();
        if (code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND)
            return;
        Refuse(code, "stat");
    }
    if (IsFolder(attributes))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory), "stat");
    if ((attributes & FILE_ATTRIBUTE_READONLY) != 0)
        Refuse(ERROR_ACCESS_DENIED, "access");
}

Replaced Replace(const Path& finished, const Path& wanted) {
    CheckFault("rename");
    // A file keeps its name, however the caller spells it.
    const Path target = AsOnDisk(wanted);
    // Only a link that is to be replaced itself comes here, and the host's replacing would follow it.
    if (IsLink(target))
        Unlink(target);
    // Without a name to keep the old file by, a replacement that fails half-way would lose it.
    const Path kept = Path(finished).replace_extension(".old");
    if (::ReplaceFileW(target.c_str(), finished.c_str(), kept.c_str(),
                       REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS, nullptr, nullptr)) {
        ::DeleteFileW(kept.c_str());
        return {target, {}};
    }
    if (::GetFileAttributesW(target.c_str()) == INVALID_FILE_ATTRIBUTES)
        ::MoveFileExW(kept.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH);
    // New files come this way too, and volumes that know no replacing.
    if (!::MoveFileExW(finished.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        Refuse(::GetLastError(), "rename");
    return {target, {}};
}

// Here a replacement lasts as soon as it is made.
void FlushFolderOf(const Replaced& /*replaced*/) {}
void Settle(const Replaced& /*replaced*/) {}
void TakeBack(const Replaced& /*replaced*/) {}

void Unlink(const Path& file) {
    CheckFault("unlink");
    if (!::DeleteFileW(file.c_str()))
        RefusePath(file, "unlink");
}

void MakeFolder(const Path& folder) {
    CheckFault("mkdir");
    if (!::CreateDirectoryW(folder.c_str(), nullptr))
        Refuse(::GetLastError(), "mkdir");
}

void RemoveFolder(const Path& folder) {
    CheckFault("rmdir");
    if (!::RemoveDirectoryW(folder.c_str()))
        Refuse(::GetLastError(), "rmdir");
}

void RenameFolder(const Path& from, const Path& to) {
    CheckFault("rename");
    if (!::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_WRITE_THROUGH))
        Refuse(::GetLastError(), "rename");
}

void TakeTimeOf(const Path& other, const Path& path) {
    WIN32_FILE_ATTRIBUTE_DATA found{};
    if (!::GetFileAttributesExW(other.c_str(), GetFileExInfoStandard, &found))
        Refuse(::GetLastError(), "stat");
    // The standard library opens no folder for that.
    const HANDLE handle =
        Native(Open(path, FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS));
    const bool taken = ::SetFileTime(handle, nullptr, nullptr, &found.ftLastWriteTime) != 0;
    const DWORD code = ::GetLastError();
    ::CloseHandle(handle);
    if (!taken)
        Refuse(code, "utime");
}

void TryCreatingIn(const Path& folder) {
    // Rights, shares and virtual folders are too many to work out: a file is tried.
    const Path probe = folder / (".velmora-" + std::to_string(::GetCurrentProcessId()) + ".tmp");
    const HANDLE handle = ::CreateFileW(probe.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), "access");
    ::CloseHandle(handle);
}

bool IsDiskFull(const std::error_code& code) {
    constexpr int diskQuotaExceeded = 1295; // missing from some system headers
    const bool system = code.category() == std::system_category();
    return code == std::errc::no_space_on_device ||
           (system && (code.value() == ERROR_DISK_FULL || code.value() == ERROR_HANDLE_DISK_FULL ||
                       code.value() == diskQuotaExceeded));
}

} // namespace velmora::HostFiles
