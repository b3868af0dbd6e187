#pragma once

#include <array>
#include <optional>

/// What the host knows about code pages and letters; only CodePage.cpp and its tests ask here.
namespace velmora::HostCodePage {

/// Marks a byte that a code page leaves undefined.
constexpr char32_t Undefined = 0xFFFFFFFF;

/// The characters of the 256 bytes of a code page.
using Table = std::array<char32_t, 256>;

/// The system's own code page. Nothing when it is no single-byte extension of ASCII.
std::optional<Table> SystemTable();

/// Simple (one to one) case forms by Unicode, whatever the user's language.
char32_t ToLower(char32_t character);
char32_t ToUpper(char32_t character);

} // namespace velmora::HostCodePage

namespace velmora::CodePage {

/// Gives every undefined byte a character of its own: the control character of the same number or, where a
/// defined byte has that character already, one of the private use area.
void FillGaps(HostCodePage::Table& table);

} // namespace velmora::CodePage
