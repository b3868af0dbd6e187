#include "platform/RegistryText.h"

#include "platform/CodePage.h"
#include "platform/TextLines.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

namespace velmora::RegistryText {

namespace {

using TextLines::Stripped;

constexpr std::array KnownTypes{RegistryType::None,   RegistryType::Sz,    RegistryType::ExpandSz,
                                RegistryType::Binary, RegistryType::Dword, RegistryType::MultiSz};

std::optional<std::uint32_t> HexNumber(std::string_view digits, std::size_t longest) {
    std::uint32_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto parsed = std::from_chars(digits.data(), end, number, 16);
    if (digits.size() > longest || parsed.ec != std::errc() || parsed.ptr != end)
        return std::nullopt;
    return number;
}

std::optional<std::string> HexBytes(std::string_view list) {
    std::string bytes;
    if (Stripped(list).empty())
        return bytes;
    for (bool more = true; more;) {
        const std::size_t comma = list.find(',');
        const auto byte = HexNumber(Stripped(list.substr(0, comma)), 2);
        if (!byte)
            return std::nullopt;
        bytes += static_cast<char>(*byte);
        more = comma != std::string_view::npos;
        if (more)
            list.remove_prefix(comma + 1);
    }
    return bytes;
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
    if (!CodePage::EqualNoCase(text.substr(0, prefix.size()), prefix))
        return false;
    text.remove_prefix(prefix.size());
    return true;
}

std::optional<RegistryType> TakeHexType(std::string_view& data) {
    if (TakePrefix(data, ":"))
        return RegistryType::Binary;
    const std::size_t end = data.find("):");
    if (!TakePrefix(data, "(") || end == std::string_view::npos)
        return std::nullopt;
    const auto number = HexNumber(data.substr(0, end - 1), 8);
    data.remove_prefix(end + 1);
    const auto* const known = std::find_if(KnownTypes.begin(), KnownTypes.end(), [&](RegistryType type) {
        return number == static_cast<std::uint32_t>(type);
    });
    return known == KnownTypes.end() ? std::nullopt : std::optional(*known);
}

bool ContinuesHexData(std::string_view line) {
    return !line.empty() &&
           line.find_first_not_of("0123456789abcdefABCDEF, \t\r\\") == std::string_view::npos;
}

} // namespace

Value JoinLines(const std::vector<std::string_view>& lines, std::size_t at) {
    Value value{std::string(Stripped(lines[at]))};
    while (!value.Text.empty() && value.Text.back() == '\\' && at + value.Lines < lines.size() &&
           ContinuesHexData(lines[at + value.Lines])) {
        value.Text.pop_back();
        value.Text += Stripped(lines[at + value.Lines]);
        ++value.Lines;
    }
    return value;
}

std::optional<RegistryValue> ParseNumbers(std::string_view data) {
    if (TakePrefix(data, "dword:")) {
        const auto number = HexNumber(data, 8);
        if (!number)
            return std::nullopt;
        return RegistryValue{RegistryType::Dword, DwordBytes(*number)};
    }
    if (!TakePrefix(data, "hex"))
        return std::nullopt;
    const auto type = TakeHexType(data);
    auto bytes = HexBytes(data);
    if (!type || !bytes)
        return std::nullopt;
    return RegistryValue{*type, std::move(*bytes)};
}

std::string FormatNumbers(const RegistryValue& value) {
    char text[24];
    const auto number = DwordOf(value.Bytes);
    if (value.Type == RegistryType::Dword && number) {
        std::snprintf(text, sizeof text, "dword:%08x", *number);
        return text;
    }
    std::string data = "hex";
    if (value.Type != RegistryType::Binary)
        data += '(' + std::to_string(static_cast<std::uint32_t>(value.Type)) + ')';
    const char* separator = ":";
    for (const char byte : value.Bytes) {
        std::snprintf(text, sizeof text, "%s%02x", separator, static_cast<unsigned>(byte) & 0xFF);
        data += text;
        separator = ",";
    }
    return value.Bytes.empty() ? data + ':' : data;
}

std::string DwordBytes(std::uint32_t number) {
    std::string bytes;
    for (int i = 0; i < 4; ++i)
        bytes += static_cast<char>(number >> (8 * i) & 0xFF);
    return bytes;
}

std::optional<std::uint32_t> DwordOf(std::string_view bytes) {
    if (bytes.size() != 4)
        return std::nullopt;
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number |= static_cast<std::uint32_t>(static_cast<unsigned char>(bytes[i])) << (8 * i);
    return number;
}

} // namespace velmora::RegistryText
