#include "platform/FileLock.h"

#include "platform/Attempts.h"
#include "platform/SystemCall_posix.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora {

namespace {

using SystemCall::Make;
using SystemCall::Try;

int Descriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

/// A file's descriptor, closed at the end unless it is taken.
struct Opened {
    explicit Opened(const std::filesystem::path& path)
        : Handle(Make("open", [&] {
              return ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
          })) {}
    ~Opened() {
        if (Handle >= 0)
            ::close(Handle);
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    int Handle;
};

/// False when the file's name has gone to another file, or to none: then a lock on it keeps nobody off.
bool IsStillThere(int descriptor, const std::filesystem::path& path) {
    struct ::stat mine {};
    struct ::stat there {};
    Make("stat", [&] { return ::fstat(descriptor, &mine); });
    return Try("stat", [&] { return ::stat(path.c_str(), &there); }) == 0 && mine.st_ino == there.st_ino &&
           mine.st_dev == there.st_dev;
}

/// -1 while another program holds the lock.
int Lock(const std::filesystem::path& path, int how) {
    while (true) {
        Opened file(path);
        if (Try("flock", [&] { return ::flock(file.Handle, how); }) != 0) {
            if (errno == EWOULDBLOCK)
                return -1;
            SystemCall::Refuse(errno, "flock");
        }
        if (IsStillThere(file.Handle, path))
            return std::exchange(file.Handle, -1);
    }
}

} // namespace

FileLock::FileLock(std::filesystem::path file, Waiting waiting)
    : path(std::move(file)), handle(Files::Attempt("lock", path, Files::Wanted::File, [&] {
          return Lock(path, waiting == Waiting::Yes ? LOCK_EX : LOCK_EX | LOCK_NB);
      })) {}

FileLock::~FileLock() {
    if (handle < 0)
        return;
    // Removed while it is held: whoever waits for it then sees that it has lost its name.
    Files::RemoveQuietly(path, Files::Wanted::File);
    ::close(Descriptor(handle));
}

} // namespace velmora
