#include "platform/CodePage.h"

#include "platform/HostCodePage.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

namespace velmora::CodePage {

namespace {

using HostCodePage::Undefined;

HostCodePage::Table Windows1252() {
    static constexpr std::array<char32_t, 32> upperControls = {
        0x20AC, Undefined, 0x201A,    0x0192, 0x201E,    0x2026,    0x2020, 0x2021,    0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152,    Undefined, 0x017D, Undefined, Undefined, 0x2018, 0x2019,    0x201C, 0x201D, 0x2022,
        0x2013, 0x2014,    0x02DC,    0x2122, 0x0161,    0x203A,    0x0153, Undefined, 0x017E, 0x0178};
    HostCodePage::Table table{};
    for (char32_t byte = 0; byte < 256; ++byte)
        table[byte] = byte >= 0x80 && byte < 0xA0 ? upperControls[byte - 0x80] : byte;
    return table;
}

/// Everything that is asked about a byte, worked out once.
struct Tables {
    Tables();
    [[nodiscard]] std::optional<unsigned char> ByteOf(char32_t character) const;

    HostCodePage::Table Unicode;
    std::vector<std::pair<char32_t, unsigned char>> Bytes; // sorted, those beyond ASCII only
    std::array<unsigned char, 256> Folded{};
    std::array<unsigned char, 256> Uppered{};
};

Tables::Tables() : Unicode(HostCodePage::SystemTable().value_or(Windows1252())) {
    FillGaps(Unicode);
    for (unsigned byte = 0x80; byte < 256; ++byte)
        Bytes.emplace_back(Unicode[byte], static_cast<unsigned char>(byte));
    std::sort(Bytes.begin(), Bytes.end());
    for (unsigned byte = 0; byte < 256; ++byte) {
        const auto same = static_cast<unsigned char>(byte);
        Folded[byte] = ByteOf(HostCodePage::ToLower(Unicode[byte])).value_or(same);
        Uppered[byte] = ByteOf(HostCodePage::ToUpper(Unicode[byte])).value_or(same);
    }
}

std::optional<unsigned char> Tables::ByteOf(char32_t character) const {
    if (character < 0x80)
        return static_cast<unsigned char>(character);
    const auto found =
        std::lower_bound(Bytes.begin(), Bytes.end(), std::pair{character, static_cast<unsigned char>(0)});
    if (found == Bytes.end() || found->first != character)
        return std::nullopt;
    return found->second;
}

const Tables& TheTables() {
    static const Tables tables;
    return tables;
}

unsigned char Byte(char character) {
    return static_cast<unsigned char>(character);
}

/// Both texts are known to be at least `length` long.
std::string Mapped(std::string_view text, const std::array<unsigned char, 256>& table) {
    std::string result(text);
    for (char& character : result)
        character = static_cast<char>(table[Byte(character)]);
    return result;
}

bool SameFolded(const char* left, const char* right, std::size_t length) {
    const auto& folded = TheTables().Folded;
    for (std::size_t i = 0; i < length; ++i)
        if (folded[Byte(left[i])] != folded[Byte(right[i])])
            return false;
    return true;
}

} // namespace

void FillGaps(HostCodePage::Table& table) {
    constexpr char32_t privateUse = 0xF700;
    for (char32_t byte = 0; byte < 256; ++byte) {
        if (table[byte] == Undefined) {
            const bool taken = std::find(table.begin(), table.end(), byte) != table.end();
            table[byte] = taken ? privateUse + byte : byte;
        }
    }
}

char32_t ToUnicode(unsigned char byte) {
    return TheTables().Unicode[byte];
}

std::optional<unsigned char> FromUnicode(char32_t character) {
    return TheTables().ByteOf(character);
}

std::string ToUtf8(std::string_view text) {
    const auto& unicode = TheTables().Unicode;
    std::string utf8;
    utf8.reserve(text.size() + text.size() / 8);
    for (const char character : text)
        Utf8::Append(utf8, unicode[Byte(character)]);
    return utf8;
}

std::optional<std::string> FromUtf8(std::string_view utf8) {
    const Tables& tables = TheTables();
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = Utf8::TakeCharacter(utf8);
        const auto byte = character ? tables.ByteOf(*character) : std::nullopt;
        if (!byte)
            return std::nullopt;
        text += static_cast<char>(*byte);
    }
    return text;
}

std::string FromUtf8Lossy(std::string_view utf8, char replacement) {
    const Tables& tables = TheTables();
    std::string text;
    text.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = Utf8::TakeCharacter(utf8);
        if (!character)
            utf8.remove_prefix(1);
        const auto byte = character ? tables.ByteOf(*character) : std::nullopt;
        text += byte ? static_cast<char>(*byte) : replacement;
    }
    return text;
}

unsigned char Fold(unsigned char byte) {
    return TheTables().Folded[byte];
}

unsigned char Upper(unsigned char byte) {
    return TheTables().Uppered[byte];
}

bool IsLetter(unsigned char byte) {
    const char32_t character = ToUnicode(byte);
    if (character < 0x80)
        return (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
    constexpr std::u32string_view lettersBefore = U"\u00AA\u00B5\u00BA"; // of the scripts
    constexpr char32_t scripts = 0xC0;
    constexpr char32_t afterScripts = 0x2000;
    return lettersBefore.find(character) != std::u32string_view::npos ||
           (character >= scripts && character < afterScripts && character != 0xD7 && character != 0xF7);
}

std::string ToUpper(std::string_view text) {
    return Mapped(text, TheTables().Uppered);
}

std::string ToLower(std::string_view text) {
    return Mapped(text, TheTables().Folded);
}

bool EqualNoCase(std::string_view left, std::string_view right) {
    return left.size() == right.size() &&
           (left == right || SameFolded(left.data(), right.data(), left.size()));
}

int CompareNoCase(std::string_view left, std::string_view right) {
    const auto& folded = TheTables().Folded;
    const std::size_t shared = std::min(left.size(), right.size());
    for (std::size_t i = 0; i < shared; ++i)
        if (const int difference = folded[Byte(left[i])] - folded[Byte(right[i])]; difference != 0)
            return difference;
    return left.size() < right.size() ? -1 : left.size() > right.size() ? 1 : 0;
}

std::size_t HashNoCase(std::string_view text) {
    const auto& folded = TheTables().Folded;
    std::uint64_t hash = 0xCBF29CE484222325u;
    for (const char character : text)
        hash = (hash ^ folded[Byte(character)]) * 0x100000001B3u;
    return static_cast<std::size_t>(hash);
}

std::size_t FindNoCase(std::string_view text, std::string_view what, std::size_t from) {
    if (what.empty() || text.size() < what.size())
        return std::string_view::npos;
    const auto& folded = TheTables().Folded;
    const unsigned char first = folded[Byte(what[0])];
    const std::size_t last = text.size() - what.size();
    for (std::size_t at = from; at <= last; ++at)
        if (folded[Byte(text[at])] == first && SameFolded(text.data() + at, what.data(), what.size()))
            return at;
    return std::string_view::npos;
}

bool EndsWithNoCase(std::string_view text, std::string_view end) {
    return text.size() >= end.size() && EqualNoCase(text.substr(text.size() - end.size()), end);
}

std::string ReplaceNoCase(std::string_view text, std::string_view what, std::string_view with) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = FindNoCase(text, what); at != std::string_view::npos;
         at = FindNoCase(text, what, done)) {
        result.append(text, done, at - done).append(with);
        done = at + what.size();
    }
    return result.append(text, done);
}

} // namespace velmora::CodePage
