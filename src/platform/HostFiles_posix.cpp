#include "platform/HostFiles.h"

#include "platform/FaultHook.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora::HostFiles {

namespace {

[[noreturn]] void Refuse(int code, const char* operation) {
    throw std::system_error(code, std::generic_category(), operation);
}

int Descriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

struct ::stat FactsOf(int descriptor) {
    struct ::stat facts {};
    if (::fstat(descriptor, &facts) != 0)
        Refuse(errno, "fstat");
    return facts;
}

/// Throws for folders, pipes and devices.
void CheckRegular(const struct ::stat& facts) {
    if (S_ISDIR(facts.st_mode))
        Refuse(EISDIR, "open");
    if (!S_ISREG(facts.st_mode))
        Refuse(EOPNOTSUPP, "open");
}

int OpenForWriting(const Path& path, OutFile::Opening opening) {
    CheckFault("open");
    // Without blocking: a pipe that nobody reads must not hang the program.
    const int how = opening == OutFile::Opening::Append ? O_APPEND | O_NONBLOCK : O_EXCL;
    const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | how, 0666);
    if (descriptor < 0)
        Refuse(errno, "open");
    return descriptor;
}

void Rename(const Path& from, const Path& to) {
    CheckFault("rename");
    if (::rename(from.c_str(), to.c_str()) != 0)
        Refuse(errno, "rename");
}

void FlushDescriptor(int descriptor) {
    CheckFault("fsync");
    if (::fsync(descriptor) != 0)
        Refuse(errno, "fsync");
}

/// The folder of a file, held open so that what happens to its names can be flushed.
class Folder {
  public:
    explicit Folder(const Path& file)
        : Handle(::open(file.has_parent_path() ? file.parent_path().c_str() : ".",
                        O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        // A folder that may be written but not listed cannot be flushed, which is no reason not to save.
        if (Handle < 0 && errno != EACCES)
            Refuse(errno, "open");
    }
    ~Folder() {
        if (Handle >= 0)
            ::close(Handle);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    void Flush() const {
        if (Handle < 0)
            return;
        try {
            FlushDescriptor(Handle);
        } catch (const std::system_error& refusal) {
            // Some network file systems know no flushing of folders.
            if (refusal.code().value() != EINVAL && refusal.code().value() != EOPNOTSUPP)
                throw;
        }
    }

  private:
    int Handle;
};

} // namespace

InFile::InFile(const Path& path) {
    CheckFault("open");
    Handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (Handle < 0)
        Refuse(errno, "open");
    try {
        const auto facts = FactsOf(Descriptor(Handle));
        CheckRegular(facts);
        SizeAtOpening = static_cast<std::uint64_t>(facts.st_size);
    } catch (...) {
        ::close(Descriptor(Handle));
        throw;
    }
}

InFile::~InFile() {
    ::close(Descriptor(Handle));
}

std::size_t InFile::Read(char* buffer, std::size_t size) {
    CheckFault("read");
    while (true) {
        const ssize_t got = ::read(Descriptor(Handle), buffer, size);
        if (got >= 0)
            return static_cast<std::size_t>(got);
        if (errno != EINTR)
            Refuse(errno, "read");
    }
}

OutFile::OutFile(const Path& path, Opening opening) : Handle(OpenForWriting(path, opening)) {}

OutFile::~OutFile() {
    if (Handle >= 0)
        ::close(Descriptor(Handle));
}

void OutFile::TakeModeOf(const Path& other) {
    struct ::stat wanted {};
    if (::stat(other.c_str(), &wanted) != 0)
        Refuse(errno, "stat");
    const auto mine = FactsOf(Descriptor(Handle));
    if (mine.st_uid != wanted.st_uid || mine.st_gid != wanted.st_gid) {
        // Only the administrator may give files away; a group may be one of the user's own.
        if (::fchown(Descriptor(Handle), wanted.st_uid, wanted.st_gid) != 0 &&
            ::fchown(Descriptor(Handle), static_cast<uid_t>(-1), wanted.st_gid) != 0 && errno != EPERM)
            Refuse(errno, "fchown");
    }
    if (::fchmod(Descriptor(Handle), wanted.st_mode & 07777) != 0)
        Refuse(errno, "fchmod");
}

void OutFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        CheckFault("write");
        const ssize_t written = ::write(Descriptor(Handle), bytes.data(), WritablePiece(bytes.size()));
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            Refuse(written < 0 ? errno : EIO, "write");
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
}

void OutFile::StartFlush() {
#ifdef SYNC_FILE_RANGE_WRITE
    ::sync_file_range(Descriptor(Handle), 0, 0, SYNC_FILE_RANGE_WRITE);
#endif
}

void OutFile::Flush() {
    FlushDescriptor(Descriptor(Handle));
}

void OutFile::Close() {
    // The system gives the descriptor up even when it reports a failure.
    const int result = ::close(Descriptor(std::exchange(Handle, -1)));
    const int code = errno;
    CheckFault("close");
    if (result != 0)
        Refuse(code, "close");
}

Path FollowLinks(const Path& path) {
    constexpr int mostLinks = 40;
    Path target = path;
    for (int followed = 0; followed < mostLinks; ++followed) {
        std::error_code none;
        const Path next = std::filesystem::read_symlink(target, none);
        if (none)
            return target;
        target = target.parent_path() / next;
    }
    Refuse(ELOOP, "readlink");
}

void CheckReplaceable(const Path& target) {
    struct ::stat facts {};
    if (::stat(target.c_str(), &facts) != 0) {
        if (errno == ENOENT)
            return;
        Refuse(errno, "stat");
    }
    CheckRegular(facts);
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        Refuse(errno, "access");
}

Replaced Replace(const Path& finished, const Path& target) {
    Replaced replaced{target, Path(finished).replace_extension(".old")};
    if (::link(target.c_str(), replaced.Kept.c_str()) != 0) {
        replaced.WasAbsent = errno == ENOENT;
        replaced.Kept.clear();
    }
    try {
        Rename(finished, target);
    } catch (...) {
        ::unlink(replaced.Kept.c_str());
        throw;
    }
    return replaced;
}

void FlushFolderOf(const Replaced& replaced) {
    Folder(replaced.Target).Flush();
}

void Settle(const Replaced& replaced) {
    if (!replaced.Kept.empty())
        Unlink(replaced.Kept);
}

void TakeBack(const Replaced& replaced) {
    try {
        if (!replaced.Kept.empty())
            Rename(replaced.Kept, replaced.Target);
        else if (replaced.WasAbsent)
            Unlink(replaced.Target);
    } catch (const std::system_error&) {
        // The first failure is the one to report.
    }
}

void Unlink(const Path& file) {
    CheckFault("unlink");
    if (::unlink(file.c_str()) != 0)
        Refuse(errno, "unlink");
}

void MakeFolder(const Path& folder) {
    CheckFault("mkdir");
    if (::mkdir(folder.c_str(), 0777) != 0)
        Refuse(errno, "mkdir");
}

void RemoveFolder(const Path& folder) {
    CheckFault("rmdir");
    if (::rmdir(folder.c_str()) != 0)
        Refuse(errno, "rmdir");
}

void TryCreatingIn(const Path& folder) {
    CheckFault("access");
    if (::faccessat(AT_FDCWD, folder.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        throw std::system_error(errno, std::generic_category(), "access");
}

bool IsDiskFull(const std::error_code& code) {
    return code == std::errc::no_space_on_device || code.value() == EDQUOT;
}

} // namespace velmora::HostFiles
