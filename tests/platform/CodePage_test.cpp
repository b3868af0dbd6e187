#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace velmora {
namespace {

std::string AllBytes() {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte) {
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

TEST(CodePage, EveryByteSurvivesARoundTrip) {
    const std::string bytes = AllBytes();
    EXPECT_EQ(CodePage::FromUtf8(CodePage::ToUtf8(bytes)), bytes);
    std::set<char32_t> characters;
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = CodePage::ToUnicode(static_cast<unsigned char>(byte));
        EXPECT_TRUE(characters.insert(character).second) << "byte " << byte;
        EXPECT_EQ(CodePage::FromUnicode(character), byte);
    }
}

TEST(CodePage, KnowsTheCharactersOfWindows1252) {
    // The tests run in a UTF-8 or ASCII environment, where 1252 stands in.
    struct Case {
        unsigned char Byte;
        char32_t Character;
        const char* Utf8;
    };
    for (const Case& each :
         {Case{'A', U'A', "A"}, Case{0x80, 0x20AC, "\xE2\x82\xAC"}, Case{0x81, 0x0081, "\xC2\x81"},
          Case{0x8A, 0x0160, "\xC5\xA0"}, Case{0x8D, 0x008D, "\xC2\x8D"}, Case{0x8F, 0x008F, "\xC2\x8F"},
          Case{0x90, 0x0090, "\xC2\x90"}, Case{0x96, 0x2013, "\xE2\x80\x93"},
          Case{0x99, 0x2122, "\xE2\x84\xA2"}, Case{0x9D, 0x009D, "\xC2\x9D"}, Case{0x9F, 0x0178, "\xC5\xB8"},
          Case{0xA0, 0x00A0, "\xC2\xA0"}, Case{0xE9, 0x00E9, "\xC3\xA9"}, Case{0xFF, 0x00FF, "\xC3\xBF"}}) {
        SCOPED_TRACE(static_cast<int>(each.Byte));
        const std::string text(1, static_cast<char>(each.Byte));
        EXPECT_EQ(CodePage::ToUnicode(each.Byte), each.Character);
        EXPECT_EQ(CodePage::FromUnicode(each.Character), each.Byte);
        EXPECT_EQ(CodePage::ToUtf8(text), each.Utf8);
        EXPECT_EQ(CodePage::FromUtf8(each.Utf8), text);
    }
}

TEST(CodePage, RefusesWhatItLacksAndWhatIsNoUtf8) {
    struct Case {
        const char* Utf8;
        const char* Lossy;
    };
    for (const Case& each : {Case{"\xD0\x96", "?"},             // a Cyrillic letter
                             Case{"a\xF0\x9F\x9A\x80z", "a?z"}, // a rocket
                             Case{"caf\xE9", "caf?"},           // already in the code page
                             Case{"\xC3", "?"},                 // cut short
                             Case{"\xC1\xA9", "??"},            // overlong
                             Case{"\xE0\x81\xA9", "???"},       // overlong
                             Case{"\xF0\x80\x81\xA9", "????"},  // overlong
                             Case{"\xED\xA0\x80", "???"},       // a surrogate
                             Case{"\xF4\x90\x80\x80", "????"},  // beyond Unicode
                             Case{"\xC3\xA9\xA9", "\xE9?"}}) {  // a stray tail
        SCOPED_TRACE(each.Utf8);
        EXPECT_EQ(CodePage::FromUtf8(each.Utf8), std::nullopt);
        EXPECT_EQ(CodePage::FromUtf8Lossy(each.Utf8), each.Lossy);
    }
    EXPECT_EQ(CodePage::FromUtf8Lossy("\xD0\x96-\xC3\xA9", '_'), "_-\xE9");
    EXPECT_EQ(CodePage::FromUnicode(0x0416), std::nullopt);
    EXPECT_EQ(CodePage::FromUnicode(0x80), std::nullopt);
}

TEST(CodePage, FoldsLettersThatBothCasesHave) {
    struct Case {
        unsigned char Upper;
        unsigned char Lower;
    };
    for (const Case& each :
         {Case{'A', 'a'}, Case{'Z', 'z'}, Case{0xC0, 0xE0}, Case{0xD6, 0xF6}, Case{0xDE, 0xFE},
          Case{0x8A, 0x9A}, Case{0x8C, 0x9C}, Case{0x8E, 0x9E}, Case{0x9F, 0xFF}}) {
        SCOPED_TRACE(static_cast<int>(each.Upper));
        EXPECT_EQ(CodePage::Fold(each.Upper), each.Lower);
        EXPECT_EQ(CodePage::Fold(each.Lower), each.Lower);
        EXPECT_EQ(CodePage::Upper(each.Lower), each.Upper);
        EXPECT_EQ(CodePage::Upper(each.Upper), each.Upper);
    }
    // Signs, and letters whose other case the code page lacks.
    for (const unsigned char same : {'@', '[', '`', '{', '0', '\x7F'}) {
        EXPECT_EQ(CodePage::Fold(same), same);
        EXPECT_EQ(CodePage::Upper(same), same);
    }
    for (const int same : {0xD7, 0xF7, 0xDF, 0xB5, 0x83, 0xAA, 0x81}) {
        EXPECT_EQ(CodePage::Fold(static_cast<unsigned char>(same)), same);
        EXPECT_EQ(CodePage::Upper(static_cast<unsigned char>(same)), same);
    }
    EXPECT_EQ(CodePage::ToUpper("na\xEFve \x9Ctude, 42"), "NA\xCFVE \x8CTUDE, 42");
}

TEST(CodePage, ComparesWithoutRegardToCase) {
    struct Case {
        std::string Left;
        std::string Right;
        int Order;
    };
    for (const Case& each :
         {Case{"", "", 0}, Case{"Raid", "rAID", 0}, Case{"\xC9lan", "\xE9LAN", 0}, Case{"a", "B", -1},
          Case{"A", "b", -1}, Case{"_", "A", -1}, Case{"abc", "ab", 1}, Case{"AB", "abc", -1},
          Case{"\xDF", "ss", 1}, Case{std::string("a\0B", 3), std::string("A\0b", 3), 0},
          Case{std::string("a\0b", 3), std::string("a\0c", 3), -1}}) {
        SCOPED_TRACE(each.Left + " | " + each.Right);
        const auto sign = [](int value) { return (value > 0) - (value < 0); };
        EXPECT_EQ(sign(CodePage::CompareNoCase(each.Left, each.Right)), each.Order);
        EXPECT_EQ(sign(CodePage::CompareNoCase(each.Right, each.Left)), -each.Order);
        EXPECT_EQ(CodePage::EqualNoCase(each.Left, each.Right), each.Order == 0);
        EXPECT_EQ(CodePage::HashNoCase(each.Left) == CodePage::HashNoCase(each.Right), each.Order == 0);
    }
    EXPECT_TRUE(CodePage::EqualNoCase({}, ""));
}

TEST(CodePage, FindsWithoutRegardToCase) {
    constexpr auto npos = std::string_view::npos;
    struct Case {
        std::string_view Text;
        std::string_view What;
        std::size_t From;
        std::size_t At;
    };
    for (const Case& each :
         {Case{"Ships.Event.event", ".EVENT", 0, 5}, Case{"Ships.Event.event", ".EVENT", 6, 11},
          Case{"Ships.Event.event", ".EVENT", 12, npos}, Case{"abc", "", 0, npos}, Case{"", "a", 0, npos},
          Case{"ab", "abc", 0, npos}, Case{"aab", "AB", 0, 1}, Case{"ab", "ab", 1, npos},
          Case{"ab", "ab", 99, npos}, Case{"x\xC9", "\xE9", 0, 1}}) {
        SCOPED_TRACE(std::string(each.Text) + " | " + std::string(each.What));
        EXPECT_EQ(CodePage::FindNoCase(each.Text, each.What, each.From), each.At);
    }
    EXPECT_TRUE(CodePage::EndsWithNoCase("Ships.EVENT", ".event"));
    EXPECT_TRUE(CodePage::EndsWithNoCase("any", ""));
    EXPECT_FALSE(CodePage::EndsWithNoCase("event", ".event"));
    EXPECT_FALSE(CodePage::EndsWithNoCase("a.event.txt", ".event"));
}

TEST(CodePage, ReplacesWithoutRegardToCase) {
    struct Case {
        std::string_view Text;
        std::string_view What;
        std::string_view With;
        std::string_view Result;
    };
    for (const Case& each :
         {Case{"Ships.Event.event", ".event", "", "Ships"}, Case{"aXAxa", "x", "ax", "aaxAaxa"},
          Case{"aaaa", "AA", "a", "aa"}, Case{"abc", "", "z", "abc"}, Case{"", "a", "z", ""},
          Case{"abc", "C", "", "ab"}, Case{"..even.event", ".Event", "!", "..even!"}}) {
        EXPECT_EQ(CodePage::ReplaceNoCase(each.Text, each.What, each.With), each.Result) << each.Text;
    }
}

} // namespace
} // namespace velmora
