#pragma once

#include "records/Library.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// One kind of record with its place in a game and its words where it is named.
struct KindEntry {
    const RecordKind* Kind;
    std::string_view Option;         ///< "events": its name on the command line, its list in the export
    std::string_view FileList;       ///< "eventFiles": its list of files in the export
    std::string_view NumberProperty; ///< "EventNumber"
    std::string_view Folder;         ///< below the game directory, with trailing separator
    std::string_view OwnFileOption;  ///< "--event-file"
    std::string_view OwnFile;        ///< the user's own target file unless the option says otherwise
    Library::Admission (*MakeAdmission)() = nullptr; ///< made anew for each load
    bool Written = true;                             ///< the editor writes files of this kind
};

/// All kinds, in the order in which they are loaded.
std::span<const KindEntry> Kinds();

/// Paths of the files of a kind, in order: of a game directory, of its data directory, or of any folder of
/// such files.
std::vector<std::string> FilesOf(const KindEntry& entry, const std::string& folder);

/// The entry of a kind.
const KindEntry& EntryOf(const RecordKind& kind);

/// The kind of a file by its extension, nullptr when it has none.
const KindEntry* KindOfFile(std::string_view path);

/// The game's directory around a folder of a kind's files, both with trailing separator; empty when the
/// folder is none of a game.
std::string GameAround(const KindEntry& kind, const std::string& folder);

} // namespace velmora
