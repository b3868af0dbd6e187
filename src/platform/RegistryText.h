#pragma once

#include "platform/Registry.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the text forms of a registry have in common: data written as numbers, and values over several lines.
namespace velmora::RegistryText {

/// A value's text with the number of lines it takes.
struct Value {
    std::string Text;
    std::size_t Lines = 1;
};

/// The value that starts in a line. Hexadecimal data goes on in the next line after a "\".
Value JoinLines(const std::vector<std::string_view>& lines, std::size_t at);

/// Data of the forms "dword:0000000a", "hex:01,02" and "hex(7):61,00,00"; nothing for any other.
std::optional<RegistryValue> ParseNumbers(std::string_view data);

/// Data of a value in one of these forms.
std::string FormatNumbers(const RegistryValue& value);

/// The bytes of a 32-bit number as the registry holds it.
std::string DwordBytes(std::uint32_t number);
/// The number in such bytes; nothing unless there are four.
std::optional<std::uint32_t> DwordOf(std::string_view bytes);

} // namespace velmora::RegistryText
