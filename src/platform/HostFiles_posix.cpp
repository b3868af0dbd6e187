#include "platform/HostFiles.h"

#include "platform/SystemCall_posix.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace velmora::HostFiles {

namespace {

using SystemCall::Make;
using SystemCall::Refuse;
using SystemCall::Try;

int Descriptor(std::intptr_t handle) {
    return static_cast<int>(handle);
}

struct ::stat FactsOf(int descriptor) {
    struct ::stat facts {};
    Make("stat", [&] { return ::fstat(descriptor, &facts); });
    return facts;
}

struct ::stat FactsOf(const Path& path) {
    struct ::stat facts {};
    Make("stat", [&] { return ::stat(path.c_str(), &facts); });
    return facts;
}

/// Throws for folders, pipes and devices.
void CheckRegular(const struct ::stat& facts) {
    if (S_ISDIR(facts.st_mode))
        Refuse(EISDIR, "open");
    if (!S_ISREG(facts.st_mode))
        Refuse(EOPNOTSUPP, "open");
}

int NoFollow(bool isPrivate) {
    return isPrivate ? O_NOFOLLOW : 0;
}

int OpenForWriting(const Path& path, OutFile::Opening opening, bool isPrivate) {
    // Without blocking: a pipe that nobody reads must not hang the program.
    const int how = opening == OutFile::Opening::Append ? O_APPEND | O_NONBLOCK : O_EXCL;
    const int flags = O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY | how | NoFollow(isPrivate);
    return Make("open", [&] { return ::open(path.c_str(), flags, isPrivate ? 0600 : 0666); });
}

void Rename(const Path& from, const Path& to) {
    Make("rename", [&] { return ::rename(from.c_str(), to.c_str()); });
}

void FlushDescriptor(int descriptor) {
    Make("fsync", [&] { return ::fsync(descriptor); });
}

/// The folder of a file, held open so that what happens to its names can be flushed.
class Folder {
  public:
    explicit Folder(const Path& file)
        : Handle(Try("opendir", [path = file.has_parent_path() ? file.parent_path() : "."] {
              return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
          })) {
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

InFile::InFile(const Path& path, bool isPrivate)
    : Handle(Make("open", [&] {
          return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | NoFollow(isPrivate));
      })) {
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
    return static_cast<std::size_t>(Make("read", [&] { return ::read(Descriptor(Handle), buffer, size); }));
}

OutFile::OutFile(const Path& path, Opening opening, bool isPrivate)
    : Handle(OpenForWriting(path, opening, isPrivate)) {}

OutFile::~OutFile() {
    if (Handle >= 0)
        ::close(Descriptor(Handle));
}

void OutFile::TakeModeOf(const Path& other) {
    const auto wanted = FactsOf(other);
    const auto mine = FactsOf(Descriptor(Handle));
    if (mine.st_uid != wanted.st_uid || mine.st_gid != wanted.st_gid) {
        // Only the administrator may give files away; a group may be one of the user's own.
        if (::fchown(Descriptor(Handle), wanted.st_uid, wanted.st_gid) != 0 &&
            ::fchown(Descriptor(Handle), static_cast<uid_t>(-1), wanted.st_gid) != 0 && errno != EPERM)
            Refuse(errno, "fchown");
    }
    Make("chmod", [&] { return ::fchmod(Descriptor(Handle), wanted.st_mode & 07777); });
}

void OutFile::BeNoMoreOpenThan(const Path& other) {
    const auto limit = FactsOf(other);
    const auto mine = FactsOf(Descriptor(Handle));
    mode_t allowed = limit.st_mode | S_IRUSR | S_IWUSR;
    // Another group than the other file's has there the rights of everybody.
    if (mine.st_gid != limit.st_gid &&
        ::fchown(Descriptor(Handle), static_cast<uid_t>(-1), limit.st_gid) != 0)
        allowed = (allowed & ~mode_t{S_IRWXG}) | ((allowed & S_IRWXO) << 3);
    Make("chmod", [&] { return ::fchmod(Descriptor(Handle), mine.st_mode & allowed & 07777); });
}

void OutFile::Write(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t piece = WritablePiece(bytes.size());
        const auto written = Make("write", [&] { return ::write(Descriptor(Handle), bytes.data(), piece); });
        if (written == 0)
            Refuse(EIO, "write");
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
    // Never made again: the system gives the descriptor up even when it reports a failure or a signal.
    const int result = ::close(Descriptor(std::exchange(Handle, -1)));
    const int reported = result == 0 ? 0 : errno;
    const int fault = FaultAt("close");
    const int code = fault != 0 ? fault : reported;
    if (code != 0 && code != EINTR)
        Refuse(code, "close");
}

Entry EntryAt(const Path& path) {
    struct ::stat facts {};
    if (Try("stat", [&] { return ::stat(path.c_str(), &facts); }) == 0)
        return S_ISDIR(facts.st_mode) ? Entry::Folder : Entry::File;
    if (errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG) // which nothing can have
        return Entry::Absent;
    Refuse(errno, "stat");
}

std::uint64_t SizeOf(const Path& path) {
    const auto facts = FactsOf(path);
    CheckRegular(facts);
    return static_cast<std::uint64_t>(facts.st_size);
}

Stamp StampOf(const Path& path) noexcept {
    struct stat found {};
    if (::stat(path.c_str(), &found) != 0)
        return {};
    return {std::int64_t{found.st_mtim.tv_sec} * 1'000'000'000 + found.st_mtim.tv_nsec,
            static_cast<std::uint64_t>(found.st_size)};
}

Path FollowLinks(const Path& path) {
    constexpr int mostLinks = 40;
    Path target = path;
    for (int followed = 0; followed < mostLinks; ++followed) {
        Path next;
        const int result = Try("readlink", [&] {
            std::error_code refusal;
            next = std::filesystem::read_symlink(target, refusal);
            errno = refusal.value();
            return refusal ? -1 : 0;
        });
        // EINVAL: this is no link.
        if (result != 0 && (errno == EINVAL || errno == ENOENT || errno == ENOTDIR))
            return target;
        if (result != 0)
            Refuse(errno, "readlink");
        target = target.parent_path() / next;
    }
    Refuse(ELOOP, "readlink");
}

void CheckReplaceable(const Path& target) {
    struct ::stat facts {};
    if (Try("stat", [&] { return ::lstat(target.c_str(), &facts); }) != 0) {
        if (errno == ENOENT)
            return;
        Refuse(errno, "stat");
    }
    if (S_ISLNK(facts.st_mode))
        return;
    CheckRegular(facts);
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        Refuse(errno, "access");
}

Replaced Replace(const Path& finished, const Path& target) {
    Replaced replaced{target, Path(finished).replace_extension(".old")};
    if (Try("link", [&] { return ::link(target.c_str(), replaced.Kept.c_str()); }) != 0) {
        replaced.WasAbsent = errno == ENOENT;
        // Some file systems know no second names, some files have all they can have.
        if (!replaced.WasAbsent && errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS &&
            errno != EMLINK)
            Refuse(errno, "link");
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
    Make("unlink", [&] { return ::unlink(file.c_str()); });
}

void MakeFolder(const Path& folder) {
    Make("mkdir", [&] { return ::mkdir(folder.c_str(), 0777); });
}

void RemoveFolder(const Path& folder) {
    Make("rmdir", [&] { return ::rmdir(folder.c_str()); });
}

void RenameFolder(const Path& from, const Path& to) {
    Rename(from, to);
}

void TakeTimeOf(const Path& other, const Path& path) {
    std::filesystem::last_write_time(path, std::filesystem::last_write_time(other));
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
