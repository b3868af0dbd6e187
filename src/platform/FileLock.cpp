#include "platform/FileLock.h"

#include "platform/Files.h"

#include <utility>

namespace velmora {

FileLock::FileLock(std::string_view lockFile) : FileLock(Files::HostPath(lockFile), Waiting::Yes) {}

FileLock::FileLock(FileLock&& other) noexcept
    : path(std::move(other.path)), handle(std::exchange(other.handle, -1)) {}

std::optional<FileLock> FileLock::Try(std::string_view lockFile) {
    FileLock lock(Files::HostPath(lockFile), Waiting::No);
    return lock.handle == -1 ? std::nullopt : std::optional<FileLock>(std::move(lock));
}

} // namespace velmora
