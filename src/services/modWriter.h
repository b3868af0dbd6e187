#pragma once

#include "services/Problem.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The rules that all editors apply to texts: names, file names, keys, percent signs, wild cards.
namespace velmora {

/// True for a name that SanitizeName leaves alone.
bool IsLegalName(std::string_view name);

/// Makes a record name legal: a leading digit becomes its English word, characters other than A to Z, 0 to 9
/// and the underscore are removed. Returns the report of what was changed (lines separated by 13), empty when
/// nothing was. `kind` is "Event", "UP Issue" or "SBModule".
std::string SanitizeName(std::string& name, std::string_view kind);

/// The text without blanks and characters that file names may not hold.
std::string StripIllegalFileChars(std::string_view text);

/// Why no file may have that name (told without its extension): Windows keeps it for a device, or drops its
/// end, and the game runs there. Empty when nothing is against it.
std::string FileNameRefusal(std::string_view name);

/// Filters a typed key: Enter (13) becomes 0, a double quote (34) a single one (39).
void FilterKeyPress(std::int16_t& keyCode);

/// Doubles lone percent signs; "%s" (written small) and "%%" stay.
void NormalizeWildCards(std::string& text);

/// Checks the wild cards of a text against its substitution boxes. `subs` holds their codes, the first box's
/// first; 0 means not set. Appends its reasons, which are about `field`.
void CheckWildCards(std::string_view text, std::int32_t maximum, std::string_view label,
                    std::span<const std::int32_t> subs, std::vector<Problem>& problems,
                    std::string_view field = {});

/// What is said of a text that is longer than recommended; lengths in characters.
std::string LengthText(std::string_view label, std::size_t length, std::size_t maximum);
/// Appends a note on a text that is too long once its percent signs are made legal.
void CheckLength(std::string_view text, std::size_t maximum, std::string_view label, std::string_view rule,
                 std::string_view field, std::vector<Problem>& problems);

/// The question that lists reasons and lets the author proceed all the same. Lines end with 13.
std::string FailedValidationText(std::span<const Problem> reasons);

/// A text as it may stand between quotes in a file: a double quote becomes a single one, a line break the two
/// characters "\n", a NUL character, which no text file holds, a blank.
std::string TextForFile(std::string_view text);

/// A text as the game will show it: the first four "%s" replaced by the names in brackets and capitals (an
/// absent name counts as empty), "%%" by "%", "\n" by a carriage return (13).
std::string ReviewText(std::string_view text, std::span<const std::string> names);

/// Replaces every occurrence, scanning left to right.
std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with);
std::string Join(std::span<const std::string> texts, std::string_view separator);
std::vector<std::string> Split(std::string_view text, std::string_view separator);

} // namespace velmora
