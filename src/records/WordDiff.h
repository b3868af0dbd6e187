#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// How one text became another, word by word: "We [-are-] {+were+} here". A long text is taken as a whole
/// between the words that both begin and end with.
std::string DiffWords(std::string_view before, std::string_view after);

} // namespace velmora
