#pragma once

#include <cstdint>
#include <string_view>

namespace velmora {

/// The longest leading part of a text that forms a number, blanks, tabs and line feeds inside it skipped:
/// optional sign, digits, decimal point with digits, exponent of E or D; or &H and &O with hexadecimal and
/// octal digits. A text that does not start with a number gives 0.
double LeadingNumber(std::string_view text);

/// The decimal number at the start of a text, blanks before it skipped: optional sign, digits, decimal point
/// with digits, exponent of E or D. A text that does not start with a number gives 0.
double LeadingDecimal(std::string_view text);

/// Reads a text that is nothing but a short whole number, as nearly every number in the game's files is.
/// False, `value` untouched, for any other text.
bool ReadPlainInteger(std::string_view text, std::int32_t& value);

/// Rounds to the nearest whole number, halves to the even neighbour. Throws Failure (6, "Overflow") beyond
/// 32 bits.
std::int32_t RoundToInt32(double value);

/// True for what a numeric field may hold: optional sign, digits with an optional decimal point, optional
/// exponent, blanks around. An empty text is not numeric.
bool IsNumeric(std::string_view text);

/// The number of a numeric text as IsNumeric accepts it. Throws Failure (13, "Type mismatch") for any other.
double NumberOf(std::string_view text);

/// NumberOf, rounded to 32 bits: what a number field holds when it is committed. Throws Failure (13 or 6).
std::int32_t FieldToInt32(std::string_view text);

} // namespace velmora
