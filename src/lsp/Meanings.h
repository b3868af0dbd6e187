#pragma once

#include "records/RecordKind.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::lsp {

/// One of the values that a field can have, as the windows offer it.
struct Choice {
    std::string Value; ///< as the file has it
    std::string Name;
    std::string Hint; ///< more about it, empty for none
};

/// The number that a field has in the same block, 0 when it has none.
using NumberOf = std::function<std::int32_t(std::string_view property)>;

/// The values that a field can have, by the vocabulary of the game; empty for one that can have any. What
/// some mean depends on other fields of the block.
std::vector<Choice> ChoicesOf(const RecordKind& kind, const Field& field, const NumberOf& numberOf);

/// What is to be said of a field whatever its value is, empty for nothing: what the game makes of it, how
/// long a text may be and is.
std::string AboutField(const RecordKind& kind, const Field& field, std::string_view value,
                       const NumberOf& numberOf);

} // namespace velmora::lsp
