#pragma once

#include "records/Library.h"
#include "services/Catalogues.h"
#include "services/modWriter.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

/// What the checks of a record need to know beside the record. Needs the catalogues.
class CheckContext {
  public:
    explicit CheckContext(std::string gameDirectory);

    Catalogue EventSubs;
    Catalogue UPIssueSubs;
    /// Where a picture lies; empty when it does not exist. Looks for each picture once.
    const std::string& PicturePath(const std::string& image);

  private:
    std::string gamePath;
    std::unordered_map<std::string, std::string> pictures;
};

/// One kind of record as the command line deals with it.
struct KindEntry {
    const RecordKind* Kind;
    std::string_view Option;         ///< "events": its name on the command line, its list in the export
    std::string_view FileList;       ///< "eventFiles": its list of files in the export
    std::string_view NumberProperty; ///< "EventNumber"
    std::string_view Folder;         ///< below the game directory, with trailing separator
    std::string_view OwnFileOption;  ///< "--event-file"
    std::string_view OwnFile;        ///< the user's own target file unless the option says otherwise
    /// Reasons that a record is not fit for the game, after the normalising that showing it performs;
    /// nullptr for a kind without checks.
    std::vector<Reason> (*Check)(Record&, CheckContext&) = nullptr;
    Library::Admission (*MakeAdmission)() = nullptr; ///< made anew for each load
    bool Written = true;                             ///< the editor writes files of this kind
};

/// All kinds, in the order in which they are loaded.
std::span<const KindEntry> Kinds();

/// The kind of a file by its extension, nullptr when it has none.
const KindEntry* KindOfFile(std::string_view path);

} // namespace velmora
