#pragma once

#include "cli/GameLoader.h"
#include "kinds/Kinds.h"

#include <ostream>
#include <string>
#include <unordered_set>
#include <vector>

namespace velmora {

/// Exit statuses of the program.
enum ExitStatus { ExitWell = 0, ExitFound = 1, ExitFailure = 2 };

/// What `check` and `export` look at.
struct GameChoice {
    std::string Directory;
    std::vector<const KindEntry*> Kinds;
    OwnFiles Own;
};

struct CheckOptions {
    GameChoice Game;
    bool AsJson = false;
    std::unordered_set<std::string> Ignored; ///< rule names
};

struct ExportOptions {
    GameChoice Game;
    bool SortByName = false;
    bool AsCsv = false; ///< needs a single kind
};

struct FormatOptions {
    std::vector<std::string> Paths;
    bool Check = false;      ///< only tell what would change
    bool Write = false;      ///< replace the files
    bool ToTerminal = false; ///< print UTF-8, not the bytes of the files
};

/// Prints every message of loading and every reason of the record checks.
ExitStatus RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err);

/// Prints every record.
ExitStatus RunExport(const ExportOptions& options, std::ostream& out, std::ostream& err);

/// Prints files as the editor would write them, or puts them into that form. A file that would lose records
/// by it is never replaced.
ExitStatus RunFormat(const FormatOptions& options, std::ostream& out, std::ostream& err);

} // namespace velmora
