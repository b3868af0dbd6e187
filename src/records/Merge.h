#pragma once

#include "records/RecordKind.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A record that two sides changed so that no one but a person can tell what it should be.
struct MergeConflict {
    std::string Name;
    std::vector<std::string> Fields; ///< changed differently by both; empty where one side has no record
};

struct MergeResult {
    std::string Text;
    std::vector<MergeConflict> Conflicts = {};
    std::vector<std::string> Joined = {}; ///< records that are as no side has them
};

/// Joins what two sides made of one file: by record name, then by field. What only one side changed holds; a
/// record that both changed in one field differently, that one deleted and the other changed, or that both
/// added differently is a conflict and stands in the result twice, as a whole, between lines of signs.
///
/// A record that one side left alone keeps the other's text, comments included. Sides that are swapped give
/// the same result but for the order of the conflicts' sides. Throws Failure for a side that cannot be read,
/// holds two records of one name, or all three lines of signs of an earlier merge's conflict.
MergeResult Merge(const RecordKind& kind, const std::string& base, const std::string& ours,
                  const std::string& theirs);

/// True for a line that stands around the sides of a conflict.
bool IsConflictLine(std::string_view line);

} // namespace velmora
