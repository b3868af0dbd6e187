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

enum class CheckFormat { Text, Json, GitHub, Sarif };

struct CheckOptions {
    GameChoice Game;
    CheckFormat Format = CheckFormat::Text;
    std::unordered_set<std::string> Ignored;    ///< rule names
    bool ReadIgnoreFile = true;                 ///< leave out what velwriter.ignore hides, too
    std::string BaselineFile = {};              ///< its findings are left out
    std::string NewBaselineFile = {};           ///< where to keep what is found, in place of printing it
    std::vector<std::string> Dictionaries = {}; ///< to check the spelling with; none to leave it
    bool Watch = false;                         ///< again after each change, until the output is closed
};

struct StatsOptions {
    GameChoice Game;
    bool AsJson = false;
};

struct ExportOptions {
    GameChoice Game;
    bool SortByName = false;
    enum class Form { Json, Csv, Sheet, Texts, Po } As = Form::Json; ///< Csv and Sheet need a single kind
    char Separator = ',';                                            ///< of Sheet and Texts
};

struct ImportOptions {
    GameChoice Game;
    std::string File;
    bool Write = false; ///< else only tell what would change
};

struct FormatOptions {
    std::vector<std::string> Paths;
    bool Check = false;      ///< only tell what would change
    bool Write = false;      ///< replace the files
    bool ToTerminal = false; ///< print UTF-8, not the bytes of the files
};

struct DiffOptions {
    std::string Before; ///< two files of one kind, or two folders
    std::string After;
    bool AsJson = false;
};

struct MergeOptions {
    std::string Base;
    std::string Ours;
    std::string Theirs;
    std::string Out;
    std::string Name; ///< of the file in messages and for its kind; empty for that of `Out`
};

enum class GitAction { Enable, Disable, Status };

/// Prints what changed from one file or folder to another, record by record and field by field. Found when
/// anything did, be it spacing.
ExitStatus RunDiff(const DiffOptions& options, std::ostream& out);

/// Merges two versions of a file into another file. Well only when no conflict is left and nothing is wrong
/// with the result that was not wrong with a side.
ExitStatus RunMerge(const MergeOptions& options, std::ostream& err);

/// Makes git compare and merge the game's files by this program in the repository that it is run in, or no
/// more, and prints what it did; or prints whether it does, Found when it does not.
ExitStatus RunGit(GitAction action, std::ostream& out);

/// Prints every message of loading and every reason of the record checks.
ExitStatus RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err);

/// Prints how many records there are of what.
ExitStatus RunStats(const StatsOptions& options, std::ostream& out, std::ostream& err);

/// Prints every record.
ExitStatus RunExport(const ExportOptions& options, std::ostream& out, std::ostream& err);

/// Takes a table of records, or of their texts, that was edited elsewhere, and tells what it changes. Found
/// when some rows cannot be taken.
ExitStatus RunImport(const ImportOptions& options, std::ostream& out, std::ostream& err);

/// Prints files as the editor would write them, or puts them into that form. A file that would lose records
/// by it is never replaced.
ExitStatus RunFormat(const FormatOptions& options, std::ostream& out, std::ostream& err);

} // namespace velmora
