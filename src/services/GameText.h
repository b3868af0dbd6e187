#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// How the game shows a text of its files.
namespace velmora {

/// A stretch of a text as the game shows it.
struct TextPiece {
    enum class Sort {
        Plain,
        Filled,  ///< stands in for a wild card
        Unset,   ///< a wild card for which nothing is set
        Surplus, ///< a wild card beyond those that the text may hold
    };
    Sort Is = Sort::Plain;
    std::string Text; ///< of a wild card: the name that stands in for it, as it was given
};

/// The substitutions of a text: a name for each of its boxes, empty where none is set.
using WildCardNames = std::vector<std::string>;

/// The text cut at its wild cards. The plain pieces are as the file holds them.
std::vector<TextPiece> CutAtWildCards(std::string_view text, std::span<const std::string> names);

/// Plain text as the game shows it: "%%" as "%", "\n" as a carriage return (13).
std::string ShownPlain(std::string_view text);

/// Length of a text in characters, once its lone percent signs are doubled: what the limits are about.
std::size_t LengthInGame(std::string_view text);
/// How many characters of a text fit into a limit, so counted.
std::size_t FittingLength(std::string_view text, std::size_t maximum);
/// "431 of 540, 109 left", "552 of 540, 12 too long".
std::string LengthOfLimit(std::size_t length, std::size_t maximum);

} // namespace velmora
