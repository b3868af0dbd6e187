#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string_view>
#include <system_error>

/// The one narrow place through which the program touches the host's files. Everything here throws
/// std::system_error with the host's reason; Attempts.h turns that into the failures users know.
namespace velmora::HostFiles {

using Path = std::filesystem::path;

/// A regular file open for reading. Opening refuses folders, pipes and devices, a private one links, too.
class InFile {
  public:
    explicit InFile(const Path& path, bool isPrivate = false);
    ~InFile();
    InFile(const InFile&) = delete;
    InFile& operator=(const InFile&) = delete;

    /// The size at the time of opening; a hint only, the file may change while it is read.
    [[nodiscard]] std::uint64_t Size() const { return SizeAtOpening; }
    /// The number of bytes read, 0 at the end only.
    std::size_t Read(char* buffer, std::size_t size);

  private:
    std::intptr_t Handle;
    std::uint64_t SizeAtOpening = 0;
};

/// A file open for writing. Whoever wants to know that the bytes arrived calls Close. A private one is made
/// for the user alone, and opening it refuses links.
class OutFile {
  public:
    enum class Opening { CreateNew, Append };
    OutFile(const Path& path, Opening opening, bool isPrivate = false);
    ~OutFile();
    OutFile(const OutFile&) = delete;
    OutFile& operator=(const OutFile&) = delete;

    /// Takes over the mode of another file, and its owner where the user may give files away.
    void TakeModeOf(const Path& other);
    /// Denies everybody but its owner what another file denies them.
    void BeNoMoreOpenThan(const Path& other);
    /// Writes all of it or throws.
    void Write(std::string_view bytes);
    /// Lets the host begin to write to the disk what it would write some time later. A hint.
    void StartFlush();
    /// Returns once the bytes are on the disk itself.
    void Flush();
    void Close();

  private:
    std::intptr_t Handle;
};

enum class Entry { Absent, Folder, File };
/// What a path leads to. Only a name or folder that is not there means absent; whatever cannot be asked is
/// thrown.
Entry EntryAt(const Path& path);
std::uint64_t SizeOf(const Path& path);

/// Tells a changed file from what it was: the time of its last writing, as fine as the host keeps it, and its
/// size.
struct Stamp {
    std::int64_t Time = 0;
    std::uint64_t Size = 0;
    bool operator==(const Stamp&) const = default;
};
/// All zeros for what cannot be looked at: whoever reads it will say why.
Stamp StampOf(const Path& path) noexcept;

/// Where a path leads through symbolic links; the last one's target need not exist.
Path FollowLinks(const Path& path);

/// Throws unless a file may be put in this place: what stands there, if anything, must be a symbolic link, or
/// a regular file that the user may write.
void CheckReplaceable(const Path& target);

/// A file that has been put in the place of another.
struct Replaced {
    Path Target;
    Path Kept; ///< a second name of the old file, empty without one
    bool WasAbsent = false;
};

/// Puts `finished` in the place of `target` in the same folder. What the old file was can be taken back
/// until the replacement is settled.
Replaced Replace(const Path& finished, const Path& target);
/// Flushes the folder of a replaced file, after which replacements in it last.
void FlushFolderOf(const Replaced& replaced);
/// Lets the old file go.
void Settle(const Replaced& replaced);
/// Puts the old file back in its place, as far as the host lets it.
void TakeBack(const Replaced& replaced);

void Unlink(const Path& file);
void MakeFolder(const Path& folder);
void RemoveFolder(const Path& folder);
void RenameFolder(const Path& from, const Path& to);
/// Gives a file or folder the time at which another was last written.
void TakeTimeOf(const Path& other, const Path& path);
/// Throws where no file can be created.
void TryCreatingIn(const Path& folder);

/// True for every way in which the host says that a disk, or the user's share of it, is full.
bool IsDiskFull(const std::error_code& code);

} // namespace velmora::HostFiles
