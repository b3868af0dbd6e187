#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

namespace velmora {
namespace {

TEST(CodePage, EveryByteSurvivesARoundTrip) {
    std::set<char32_t> characters;
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = CodePage::ToUnicode(static_cast<unsigned char>(byte));
        EXPECT_TRUE(characters.insert(character).second) << "byte " << byte;
        EXPECT_EQ(CodePage::FromUnicode(character), byte);
        const std::string text{'a', static_cast<char>(byte), 'z'};
        EXPECT_EQ(CodePage::FromUtf8(CodePage::ToUtf8(text)), text);
    }
}

TEST(CodePage, KnowsTheCharactersOfWindows1252) {
    // The tests run in a UTF-8 or ASCII environment, where 1252 stands in.
    using Case = std::tuple<char, char32_t, std::string>;
    for (const auto& [byte, character, utf8] :
         {Case{'A', U'A', "A"}, Case{'\x80', 0x20AC, "\xE2\x82\xAC"}, Case{'\x81', 0x0081, "\xC2\x81"},
          Case{'\x8A', 0x0160, "\xC5\xA0"}, Case{'\x9F', 0x0178, "\xC5\xB8"},
          Case{'\xA0', 0x00A0, "\xC2\xA0"}, Case{'\xFF', 0x00FF, "\xC3\xBF"}}) {
        EXPECT_EQ(CodePage::ToUnicode(static_cast<unsigned char>(byte)), character);
        EXPECT_EQ(CodePage::ToUtf8(std::string(1, byte)), utf8);
    }
}

TEST(CodePage, RefusesWhatItLacksAndWhatIsNoUtf8) {
    using Case = std::pair<std::string, std::string>;
    for (const auto& [utf8, lossy] : {Case{"\xD0\x96", "?"},             // a Cyrillic letter
                                      Case{"a\xF0\x9F\x9A\x80z", "a?z"}, // a rocket
                                      Case{"caf\xE9", "caf?"},           // already in the code page
                                      Case{"\xC3", "?"},                 // cut short
                                      Case{"\xC1\xA9", "??"},            // overlong
                                      Case{"\xE0\x81\xA9", "???"},       // overlong
                                      Case{"\xF0\x80\x81\xA9", "????"},  // overlong
                                      Case{"\xED\xA0\x80", "???"},       // a surrogate
                                      Case{"\xF4\x90\x80\x80", "????"},  // beyond Unicode
                                      Case{"\xC3\xA9\xA9", "\xE9?"}}) {  // a stray tail
        EXPECT_EQ(CodePage::FromUtf8(utf8), std::nullopt) << lossy;
        EXPECT_EQ(CodePage::FromUtf8Lossy(utf8), lossy);
    }
    EXPECT_EQ(CodePage::FromUtf8Lossy("\xD0\x96-\xC3\xA9", '_'), "_-\xE9");
    EXPECT_EQ(CodePage::FromUnicode(0x80), std::nullopt);
}

TEST(CodePage, FoldsLettersThatBothCasesHave) {
    using Case = std::pair<unsigned char, unsigned char>;
    for (const auto& [upper, lower] :
         {Case{'A', 'a'}, Case{'Z', 'z'}, Case{0xC0, 0xE0}, Case{0xD6, 0xF6}, Case{0xDE, 0xFE},
          Case{0x8A, 0x9A}, Case{0x8C, 0x9C}, Case{0x8E, 0x9E}, Case{0x9F, 0xFF},
          // Signs, and letters whose other case the code page lacks.
          Case{'@', '@'}, Case{'[', '['}, Case{'`', '`'}, Case{'{', '{'}, Case{0xD7, 0xD7}, Case{0xF7, 0xF7},
          Case{0xDF, 0xDF}, Case{0xB5, 0xB5}, Case{0x83, 0x83}, Case{0xAA, 0xAA}, Case{0x81, 0x81}}) {
        SCOPED_TRACE(static_cast<int>(upper));
        for (const unsigned char letter : {upper, lower}) {
            EXPECT_EQ(CodePage::Fold(letter), lower);
            EXPECT_EQ(CodePage::Upper(letter), upper);
        }
    }
    EXPECT_EQ(CodePage::ToUpper("na\xEFve \x9Ctude, 42"), "NA\xCFVE \x8CTUDE, 42");
}

TEST(CodePage, ComparesWithoutRegardToCase) {
    using namespace std::string_literals;
    using Case = std::tuple<std::string, std::string, int>;
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (const auto& [left, right, order] :
         {Case{"", "", 0}, Case{"Raid", "rAID", 0}, Case{"\xC9lan", "\xE9LAN", 0}, Case{"a", "B", -1},
          Case{"A", "b", -1}, Case{"_", "A", -1}, Case{"abc", "ab", 1}, Case{"AB", "abc", -1},
          Case{"\xDF", "ss", 1}, Case{"a\0B"s, "A\0b"s, 0}, Case{"a\0b"s, "a\0c"s, -1}}) {
        SCOPED_TRACE(left + " | " + right);
        EXPECT_EQ(sign(CodePage::CompareNoCase(left, right)), order);
        EXPECT_EQ(sign(CodePage::CompareNoCase(right, left)), -order);
        EXPECT_EQ(CodePage::EqualNoCase(left, right), order == 0);
        EXPECT_EQ(CodePage::HashNoCase(left) == CodePage::HashNoCase(right), order == 0);
    }
}

TEST(CodePage, FindsWithoutRegardToCase) {
    constexpr auto npos = std::string_view::npos;
    using Case = std::tuple<std::string, std::string, std::size_t, std::size_t>;
    for (const auto& [text, what, from, at] :
         {Case{"Ships.Event.event", ".EVENT", 0, 5}, Case{"Ships.Event.event", ".EVENT", 6, 11},
          Case{"Ships.Event.event", ".EVENT", 12, npos}, Case{"abc", "", 0, npos}, Case{"", "a", 0, npos},
          Case{"ab", "abc", 0, npos}, Case{"aab", "AB", 0, 1}, Case{"ab", "ab", 99, npos},
          Case{"x\xC9", "\xE9", 0, 1}})
        EXPECT_EQ(CodePage::FindNoCase(text, what, from), at) << text << " | " << what;
    EXPECT_TRUE(CodePage::EndsWithNoCase("Ships.EVENT", ".event"));
    EXPECT_TRUE(CodePage::EndsWithNoCase("any", ""));
    EXPECT_FALSE(CodePage::EndsWithNoCase("event", ".event"));
    EXPECT_FALSE(CodePage::EndsWithNoCase("a.event.txt", ".event"));
}

TEST(CodePage, ReplacesWithoutRegardToCase) {
    using Case = std::tuple<std::string, std::string, std::string, std::string>;
    for (const auto& [text, what, with, result] :
         {Case{"Ships.Event.event", ".event", "", "Ships"}, Case{"aXAxa", "x", "ax", "aaxAaxa"},
          Case{"aaaa", "AA", "a", "aa"}, Case{"abc", "", "z", "abc"}, Case{"", "a", "z", ""},
          Case{"abc", "C", "", "ab"}, Case{"..even.event", ".Event", "!", "..even!"}})
        EXPECT_EQ(CodePage::ReplaceNoCase(text, what, with), result) << text;
}

} // namespace
} // namespace velmora
