#include "platform/PrefixRegistry.h"

#include "platform/CodePage.h"
#include "platform/PathTexts.h"
#include "platform/RegistryText.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"

#include <charconv>
#include <vector>

namespace velmora::PrefixRegistry {

namespace {

/// Takes up to `longest` digits off `rest`; nothing when it starts with none.
std::optional<char32_t> TakeDigits(std::string_view& rest, int base, std::size_t longest) {
    std::uint32_t number = 0;
    const std::string_view digits = rest.substr(0, longest);
    const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (parsed.ec != std::errc())
        return std::nullopt;
    rest.remove_prefix(static_cast<std::size_t>(parsed.ptr - digits.data()));
    return number;
}

/// Takes what follows a backslash off `rest`.
char32_t TakeEscaped(std::string_view& rest) {
    constexpr std::string_view letters = "abefnrtv";
    constexpr std::string_view meanings = "\a\b\x1B\f\n\r\t\v";
    if (const auto octal = TakeDigits(rest, 8, 3))
        return *octal;
    const char letter = rest.front();
    rest.remove_prefix(1);
    if (letter == 'x')
        return TakeDigits(rest, 16, 4).value_or(U'x');
    const std::size_t at = letters.find(letter);
    return static_cast<unsigned char>(at == std::string_view::npos ? letter : meanings[at]);
}

/// Takes a text that starts and ends with the delimiters off `rest`; nothing when it is not closed.
std::optional<std::u32string> TakeDelimited(std::string_view& rest, char open, char close) {
    if (rest.empty() || rest.front() != open)
        return std::nullopt;
    rest.remove_prefix(1);
    std::u32string units;
    while (!rest.empty()) {
        if (rest.front() == close) {
            rest.remove_prefix(1);
            return units;
        }
        if (rest.front() == '\\' && rest.size() > 1) {
            rest.remove_prefix(1);
            units += TakeEscaped(rest);
        } else if (const auto character = Utf8::TakeCharacter(rest)) {
            units += *character;
        } else {
            units += U'?';
            rest.remove_prefix(1);
        }
    }
    return std::nullopt;
}

/// The core's text of characters that may be halves of UTF-16 pairs.
std::string CoreText(const std::u32string& units) {
    const auto isHalf = [&](std::size_t at, char32_t kind) {
        return at < units.size() && (units[at] & 0xFFFFFC00) == kind;
    };
    std::string utf8;
    for (std::size_t i = 0; i < units.size(); ++i) {
        if (isHalf(i, 0xD800) && isHalf(i + 1, 0xDC00)) {
            Utf8::Append(utf8, 0x10000 + ((units[i] & 0x3FF) << 10) + (units[i + 1] & 0x3FF));
            ++i;
        } else {
            Utf8::Append(utf8, isHalf(i, 0xD800) || isHalf(i, 0xDC00) ? U'?' : units[i]);
        }
    }
    return PathTexts::FromHostText(utf8);
}

std::optional<std::string> TakeText(std::string_view& rest, char open, char close) {
    const auto units = TakeDelimited(rest, open, close);
    return units ? std::optional(CoreText(*units)) : std::nullopt;
}

std::optional<RegistryValue> ParseData(std::string_view data) {
    RegistryType type = RegistryType::Sz;
    if (data.starts_with("str(2):"))
        type = RegistryType::ExpandSz;
    else if (data.starts_with("str(7):"))
        type = RegistryType::MultiSz;
    if (type != RegistryType::Sz)
        data.remove_prefix(7);
    if (const auto text = TakeText(data, '"', '"'))
        return RegistryValue{type, *text + '\0'};
    const auto numbers = RegistryText::ParseNumbers(data);
    const bool usable =
        numbers && (numbers->Type == RegistryType::Dword || numbers->Type == RegistryType::Binary);
    return usable ? numbers : std::nullopt;
}

std::optional<std::string> TakeName(std::string_view& rest) {
    if (!rest.starts_with('@'))
        return TakeText(rest, '"', '"');
    rest.remove_prefix(1);
    return std::string();
}

/// Line after a key's own, 0 when the key is missing.
std::size_t FindKey(const std::vector<std::string_view>& lines, std::string_view key) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string_view line = lines[i];
        const auto found = TakeText(line, '[', ']');
        if (found && CodePage::EqualNoCase(*found, key))
            return i + 1;
    }
    return 0;
}

} // namespace

bool KeyExists(std::string_view text, std::string_view key) {
    return FindKey(TextLines::Split(text), key) != 0;
}

std::optional<RegistryValue> Read(std::string_view text, std::string_view key, std::string_view name) {
    const auto lines = TextLines::Split(text);
    std::size_t at = FindKey(lines, key);
    while (at != 0 && at < lines.size() && !lines[at].starts_with('[')) {
        const RegistryText::Value value = RegistryText::JoinLines(lines, at);
        at += value.Lines;
        std::string_view rest = value.Text;
        const auto found = TakeName(rest);
        if (found && CodePage::EqualNoCase(*found, name) && rest.starts_with('='))
            return ParseData(rest.substr(1));
    }
    return std::nullopt;
}

} // namespace velmora::PrefixRegistry
