#include "platform/FileLock.h"

#include "platform/Attempts.h"
#include "platform/FaultHook.h"
#include "platform/HostWindows.h"

#include <utility>

namespace velmora {

namespace {

/// A file that nobody else may open, and that goes with its handle; -1 while another program has it.
std::intptr_t Lock(const std::filesystem::path& path, bool waiting) {
    while (true) {
        CheckFault("flock");
        const HANDLE handle = ::CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, 0, nullptr, OPEN_ALWAYS,
                                            FILE_ATTRIBUTE_HIDDEN | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        if (handle != INVALID_HANDLE_VALUE)
            return reinterpret_cast<std::intptr_t>(handle);
        const DWORD code = ::GetLastError();
        if (code != ERROR_SHARING_VIOLATION)
            throw std::system_error(static_cast<int>(code), std::system_category(), "lock");
        if (!waiting)
            return -1;
        ::Sleep(10);
    }
}

} // namespace

FileLock::FileLock(std::filesystem::path file, Waiting waiting)
    : path(std::move(file)), handle(Files::Attempt("lock", path, Files::Wanted::File,
                                                   [&] { return Lock(path, waiting == Waiting::Yes); })) {}

FileLock::~FileLock() {
    if (handle != -1)
        ::CloseHandle(reinterpret_cast<HANDLE>(handle));
}

} // namespace velmora
