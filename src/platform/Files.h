#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Files and folders of the host.
///
/// Paths are texts of the record core (code-page bytes). Both "/" and "\" separate, doubled separators count
/// as one. On hosts whose names distinguish letter case a name that does not exist as written is found
/// without regard to case, component by component, as the game itself would find it. A character that the
/// code page lacks travels as the byte 127 and its UTF-8 form, so any folder of the host can be used, and a
/// message that mentions one can be shown (PathTexts.h).
///
/// Failing operations throw Failure with the classic number (53, 57, 61, 70, 75, 76) and a description that
/// holds the path and the system's reason.
namespace velmora::Files {

/// The separator of this host: "\" on Windows, "/" elsewhere.
extern const char Separator;

/// The host's form of a path, resolved without regard to case as described above. A last component that does
/// not exist keeps its spelling.
std::filesystem::path HostPath(std::string_view path);

/// The core's text of a host path (inverse of HostPath for existing files).
std::string PathText(const std::filesystem::path& path);

/// False only where the host knows no such file, or no such folder on the way. Fail when it cannot tell.
bool FileExists(std::string_view path);
bool FolderExists(std::string_view path);

/// Names (without folder) of the files of a folder, subfolders left out, in the order in which the file
/// system lists them.
std::vector<std::string> ListFiles(std::string_view folder);

/// True when the host has room for a file of that name in the folder.
bool NameFits(std::string_view folder, std::string_view name);

/// Part after the last separator; the whole text without one.
std::string NameOf(std::string_view path);
/// Part up to and including the last separator; empty without one.
std::string FolderOf(std::string_view path);
/// `folder` with a separator of this host appended unless it ends in one, then `name`. An empty folder adds
/// nothing.
std::string Join(std::string_view folder, std::string_view name);

/// Private files are for the user's eyes only: nobody else may read one made so, and a symbolic link in the
/// place of one is never followed, reading and appending fail for it, replacing replaces it.
enum class Sharing { Usual, Private };

/// Whole contents as they stand.
std::string ReadWhole(std::string_view path, Sharing sharing = Sharing::Usual);
/// The same into a text whose memory is used again, for reading many files.
void ReadWhole(std::string_view path, std::string& bytes);
std::uint64_t SizeOf(std::string_view path);
/// True for a file with just this content.
bool Holds(std::string_view path, std::string_view bytes);

/// Appends bytes, creating the file when it is missing.
void Append(std::string_view path, std::string_view bytes);
/// The same, returning once the bytes are on the disk itself.
void AppendSafely(std::string_view path, std::string_view bytes, Sharing sharing = Sharing::Usual);

/// Gives a file's bytes a piece at a time, so that a long text is never in memory as a whole.
using Pieces = std::function<void(const std::function<void(std::string_view)>& write)>;
/// A single one.
inline Pieces AsPieces(std::string_view bytes) {
    return [bytes](const auto& write) { write(bytes); };
}
void AppendSafely(std::string_view path, const Pieces& pieces, Sharing sharing = Sharing::Usual);

/// How a file that is put in a place is shared.
struct Placing {
    Sharing Readers = Sharing::Usual;
    std::string NoMoreOpenThan = {}; ///< a path: who may not read or write that file may not do so here
};

/// Replaces (or creates) a file as a whole: writes beside it, flushes to disk, renames over it, flushes the
/// folder. Keeps the mode of the old file, follows a symbolic link to its target. On failure the old file is
/// untouched and the temporary is gone.
void ReplaceSafely(std::string_view path, std::string_view bytes, const Placing& placing = {});
void ReplaceSafely(std::string_view path, const Pieces& pieces, const Placing& placing = {});

/// Removes from a folder what ReplaceSafely left there when its program was killed: temporaries and second
/// names that are more than a day old, so that no other program still works on them. Never throws.
void RemoveOldTemporaries(std::string_view folder);

/// Copies one file, replacing an existing target (as a whole, as ReplaceSafely does). The copy is no more
/// open than its file.
void CopyFile(std::string_view from, std::string_view to);

/// Once this returns the file does not come back, whatever happens to the machine.
void DeleteFile(std::string_view path);
/// Creates a folder, with its parents; an existing one is left alone.
void CreateFolder(std::string_view path);

/// Why no file can be created in a folder, in the host's words; empty when one can.
std::string WriteRefusal(std::string_view folder);

} // namespace velmora::Files
