#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The single-byte code page in which the game's files, the settings file and all texts of the record core
/// are kept: the system's own where that is a single-byte one, else Windows-1252. The five bytes that 1252
/// leaves undefined stand for the control characters of the same number, so every byte survives a round trip.
namespace velmora::CodePage {

/// The Unicode character of a byte.
char32_t ToUnicode(unsigned char byte);

/// The byte of a Unicode character, nothing when the code page lacks it.
std::optional<unsigned char> FromUnicode(char32_t character);

/// UTF-8 form of a code-page text. Never fails.
std::string ToUtf8(std::string_view text);

/// Code-page form of a UTF-8 text; nothing when it is no UTF-8 or holds a character the code page lacks.
std::optional<std::string> FromUtf8(std::string_view utf8);

/// The same, with `replacement` in place of every character that the code page lacks.
std::string FromUtf8Lossy(std::string_view utf8, char replacement = '?');

/// Lower-case form of a byte by this code page; a byte without one stays.
unsigned char Fold(unsigned char byte);

/// Upper-case form of a byte by this code page; a byte without one stays.
unsigned char Upper(unsigned char byte);

/// True for a letter of any script.
bool IsLetter(unsigned char byte);

std::string ToUpper(std::string_view text);
/// Every byte folded; texts that are equal without regard to case become equal.
std::string ToLower(std::string_view text);

/// Comparisons without regard to letter case, by this code page.
bool EqualNoCase(std::string_view left, std::string_view right);
/// Negative, 0 or positive, by folded byte values.
int CompareNoCase(std::string_view left, std::string_view right);
std::size_t HashNoCase(std::string_view text);
/// Position of `what` at or after `from`, npos when absent. An empty `what` is never found.
std::size_t FindNoCase(std::string_view text, std::string_view what, std::size_t from = 0);
bool EndsWithNoCase(std::string_view text, std::string_view end);
/// Replaces every occurrence of `what`, scanning left to right, never inside a replacement.
std::string ReplaceNoCase(std::string_view text, std::string_view what, std::string_view with);

} // namespace velmora::CodePage
