#pragma once

#include "services/Prompts.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

enum class Severity {
    Note,    ///< the game shows it badly, but takes it
    Warning, ///< loading had to change or leave out something
    Error,   ///< the record, or the file, is not fit for the game
};

/// Something that is wrong with a file or a record, told alike by loading, by the checks of records and by
/// failures. What does not apply is empty.
struct Problem {
    std::string_view Rule = {}; ///< stable name, such as "unneeded-space"
    std::string Text = {};
    Severity Level = Severity::Warning;
    std::string_view Field = {}; ///< name of the record's member that it is about
    std::string Record = {};     ///< name of the record
    std::string_view Kind = {};  ///< "event", "upissue" or "sbmodule"
    std::string File = {};       ///< name without folder, empty for the data directory itself
    std::size_t Line = 0;        ///< 1-based, 0 where no line applies
    Icon MessageIcon = Icon::None;
};

using ProblemSink = std::function<void(const Problem&)>;

/// A reason that a record is not fit for the game.
inline Problem Reason(std::string_view rule, std::string_view field, std::string text) {
    return {rule, std::move(text), Severity::Error, field};
}

/// "error", "warning" or "note".
inline std::string_view NameOf(Severity severity) {
    return severity == Severity::Error ? "error" : severity == Severity::Warning ? "warning" : "note";
}

/// The rule of every failure that keeps a file from being read.
inline constexpr std::string_view LoadFailureRule = "load-failure";
/// The rule of a block that is not read for want of its end line.
inline constexpr std::string_view UnfinishedBlockRule = "unfinished-block";

/// The rule of a line of signs that a merge put around the sides of a conflict.
inline constexpr std::string_view ConflictRule = "merge-conflict";

/// Where a problem is: "A.event, line 12, Raid, Title"; empty when nothing is known of it.
std::string PlaceOf(const Problem& problem);

} // namespace velmora
