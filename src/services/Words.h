#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace velmora {

/// A word's place in a text, in characters.
struct WordPlace {
    std::size_t From;
    std::size_t Length;

    [[nodiscard]] std::string_view In(std::string_view text) const { return text.substr(From, Length); }
};

/// The words of a text that can be looked up: letters of the code page with apostrophes among them. Wild
/// cards,
/// "%%" and "\n" are none and part words; what holds a digit or an underscore is a name or a number, a letter
/// by itself is no word.
std::vector<WordPlace> WordsIn(std::string_view text);

/// A letter of the code page.
bool IsLetter(char c);

} // namespace velmora
