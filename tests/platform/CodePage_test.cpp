#include "platform/CodePage.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;

TEST(CodePage, EveryByteSurvivesARoundTrip) {
    std::set<char32_t> characters;
    for (int byte = 0; byte < 256; ++byte) {
        const auto character = CodePage::ToUnicode(static_cast<unsigned char>(byte));
        EXPECT_TRUE(characters.insert(character).second) << "byte " << byte;
        EXPECT_EQ(CodePage::FromUnicode(character), byte);
        const std::string text{'a', static_cast<char>(byte), 'z'};
        EXPECT_EQ(CodePage::FromUtf8(CodePage::ToUtf8(text)), text);
    }
    EXPECT_EQ(CodePage::FromUnicode(0x80), std::nullopt);
    // The tests run in a UTF-8 or ASCII environment, where Windows-1252 stands in.
    EXPECT_EQ(CodePage::ToUtf8("A\x80\x81\x8A\x9F\xA0\xFF"),
              "A\xE2\x82\xAC\xC2\x81\xC5\xA0\xC5\xB8\xC2\xA0\xC3\xBF");
}

TEST(CodePage, RefusesWhatItLacksAndWhatIsNoUtf8) {
    // In the code page already, overlong (three), a surrogate, beyond Unicode, a stray tail.
    for (const std::string bytes : {"\xE9", "\xC1\xA9", "\xE0\x81\xA9", "\xF0\x80\x81\xA9", "\xED\xA0\x80",
                                    "\xF4\x90\x80\x80", "\xA9"}) {
        EXPECT_EQ(CodePage::FromUtf8("\xC3\xA9" + bytes), std::nullopt);
        EXPECT_EQ(CodePage::FromUtf8Lossy("\xC3\xA9" + bytes), "\xE9" + std::string(bytes.size(), '?'));
    }
    EXPECT_EQ(CodePage::FromUtf8("\xD0\x96"), std::nullopt);
    EXPECT_EQ(CodePage::FromUtf8Lossy("\xD0\x96-\xF0\x9F\x9A\x80z", '_'), "_-_z");
}

TEST(CodePage, FoldsLettersThatBothCasesHave) {
    const std::string upper = "AZ\xC0\xD6\xDE\x8A\x8C\x8E\x9F";
    const std::string lower = "az\xE0\xF6\xFE\x9A\x9C\x9E\xFF";
    // Signs, and letters whose other case the code page lacks.
    const std::string others = "@[`{\xD7\xF7\xDF\xB5\x83\xAA\x81";
    EXPECT_EQ(CodePage::ToUpper(upper + lower + others), upper + upper + others);
    EXPECT_EQ(CodePage::ToLower(upper + lower + others), lower + lower + others);
    EXPECT_EQ(CodePage::Fold(0xC9), 0xE9);
    EXPECT_EQ(CodePage::Upper(0xE9), 0xC9);
    for (const char c : upper + lower + "\xDF\xAA")
        EXPECT_TRUE(CodePage::IsLetter(static_cast<unsigned char>(c))) << c;
    for (const char c : "@[`{19_ \xD7\xF7\x80\x96\xA0\xB0"s)
        EXPECT_FALSE(CodePage::IsLetter(static_cast<unsigned char>(c))) << c;
}

TEST(CodePage, ComparesWithoutRegardToCase) {
    using Case = std::tuple<std::string, std::string, int>;
    const auto sign = [](int value) { return (value > 0) - (value < 0); };
    for (const auto& [left, right, order] :
         {Case{"", "", 0}, Case{"\xC9lan", "\xE9LAN", 0}, Case{"a", "B", -1}, Case{"_", "A", -1},
          Case{"AB", "abc", -1}, Case{"\xDF", "ss", 1}, Case{"a\0b"s, "A\0c"s, -1}}) {
        SCOPED_TRACE(left + " | " + right);
        EXPECT_EQ(sign(CodePage::CompareNoCase(left, right)), order);
        EXPECT_EQ(sign(CodePage::CompareNoCase(right, left)), -order);
        EXPECT_EQ(CodePage::EqualNoCase(left, right), order == 0);
        EXPECT_EQ(CodePage::HashNoCase(left) == CodePage::HashNoCase(right), order == 0);
    }
}

TEST(CodePage, FindsAndReplacesWithoutRegardToCase) {
    constexpr auto npos = std::string_view::npos;
    for (const auto& [from, at] : {std::pair{0u, std::size_t{5}}, {6u, 11}, {12u, npos}, {99u, npos}})
        EXPECT_EQ(CodePage::FindNoCase("Ships.Event.event", ".EVENT", from), at) << from;
    EXPECT_EQ(CodePage::FindNoCase("x\xC9", "\xE9"), 1u);
    for (const char* what : {"", "abc"})
        EXPECT_EQ(CodePage::FindNoCase("ab", what), npos);
    EXPECT_TRUE(CodePage::EndsWithNoCase("Ships.EVENT", ".event"));
    EXPECT_FALSE(CodePage::EndsWithNoCase("event", ".event"));
    EXPECT_FALSE(CodePage::EndsWithNoCase("a.event.txt", ".event"));
    using Case = std::tuple<std::string, std::string, std::string, std::string>;
    for (const auto& [text, what, with, result] :
         {Case{"Ships.Event.event", ".event", "", "Ships"}, Case{"aXAxa", "x", "ax", "aaxAaxa"},
          Case{"aaaa", "AA", "a", "aa"}, Case{"abc", "", "z", "abc"},
          Case{"..even.event", ".Event", "!", "..even!"}})
        EXPECT_EQ(CodePage::ReplaceNoCase(text, what, with), result) << text;
}

} // namespace
} // namespace velmora
