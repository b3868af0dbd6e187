#include "services/modWriter.h"

#include "FailureOf.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;

TEST(SanitizeName, ReportsEachChangeInWords) {
    using Case = std::tuple<const char*, std::string, std::string, std::string>;
    const std::string letter =
        "Illegal character \"\xC9\" found in the UP Issue name d\xE9j\xE9-vu.  It will be removed.\r";
    for (const auto& [kind, given, legal, told] :
         {Case{"Event", "9 Lives", "NineLives",
               "Illegal Event name found, the first character in the name can not be numeric, the name 9 "
               "Lives "
               "will be converted.  1 will become One, 2 will become Two, etc."
               "\rIllegal character \" \" found in the Event name Nine Lives.  It will be removed."
               "\r\rFinal revised Event name is now: NineLives."},
          Case{"UP Issue", "d\xE9j\xE9-vu", "djvu",
               letter + letter +
                   "Illegal character \"-\" found in the UP Issue name d\xE9j\xE9-vu.  It will be removed."
                   "\r\rFinal revised UP Issue name is now: djvu."}}) {
        std::string name = given;
        EXPECT_EQ(SanitizeName(name, kind), told);
        EXPECT_EQ(name, legal);
    }
}

TEST(SanitizeName, GivesTheNameThatTheGameAccepts) {
    using Case = std::pair<std::string, std::string>;
    for (const auto& [given, legal] :
         {Case{"", ""}, Case{"My_Event2", "My_Event2"}, Case{"Z9", "Z9"}, Case{"_", "_"},
          Case{"3Moons", "ThreeMoons"}, Case{"0", "Zero"}, Case{"12", "One2"}, Case{"45x", "Four5x"},
          Case{"6", "Six"}, Case{"7up", "Sevenup"}, Case{"8", "Eight"}, Case{"2Fast", "TwoFast"},
          Case{"5%", "Five"}, Case{" 1st", "1st"}, Case{"a b\tc", "abc"}, Case{"\"quoted\"", "quoted"},
          Case{"***", ""}, Case{"\xB9st", "st"}, Case{"x\0y"s, "xy"}}) {
        std::string name = given;
        const std::string told = SanitizeName(name, "SBModule");
        EXPECT_EQ(name, legal);
        if (given == legal)
            EXPECT_EQ(told, "");
        else
            EXPECT_THAT(told, ::testing::EndsWith("Final revised SBModule name is now: " + legal + "."));
    }
}

TEST(StripIllegalFileChars, RemovesBlanksAndTheNineCharacters) {
    EXPECT_EQ(StripIllegalFileChars("My \\/:*?\"<>| Events.event"), "MyEvents.event");
    EXPECT_EQ(StripIllegalFileChars(" \\ / "), "");
    EXPECT_EQ(StripIllegalFileChars("A\tB\xE9_1.x"), "A\tB\xE9_1.x");
}

TEST(FilterKeyPress, SwallowsEnterAndSoftensTheDoubleQuote) {
    const std::pair<std::int16_t, std::int16_t> cases[] = {{13, 0}, {34, 39}, {39, 39}, {10, 10},
                                                           {8, 8},  {65, 65}, {0, 0}};
    for (const auto& [typed, received] : cases) {
        std::int16_t key = typed;
        FilterKeyPress(key);
        EXPECT_EQ(key, received) << typed;
    }
}

/// The rule in the words it is known by: five replacements by way of two marker characters.
std::string NormalizedByMarkers(std::string text) {
    const auto replace = [&](const std::string& what, const std::string& with) {
        text = ReplaceAll(text, what, with);
    };
    replace("%s", "\0"s);
    replace("%S", "\0"s);
    replace("%%", "\1");
    replace("%", "%%");
    replace("\1", "%%");
    replace("\0"s, "%s");
    return text;
}

TEST(NormalizeWildCards, DoublesLonePercentSigns) {
    std::string odd = "\0 100% of %S\1"s;
    NormalizeWildCards(odd);
    EXPECT_EQ(odd, "\0 100%% of %s\1"s);
    const std::string letters = "%sSx";
    for (unsigned number = 0; number < 4096 * 4; ++number) {
        std::string text;
        for (unsigned rest = number; text.size() < 7; rest /= 4)
            text += letters[rest % 4];
        std::string changed = text;
        NormalizeWildCards(changed);
        ASSERT_EQ(changed, NormalizedByMarkers(text)) << text;
    }
}

TEST(CheckWildCards, FindsWhatDoesNotMatch) {
    const std::string placement = "wild-card-placement ";
    const std::string count = "wild-card-count ";
    const std::string many = "too-many-wild-cards ";
    using Case = std::tuple<const char*, std::vector<std::int32_t>, std::string>;
    for (const auto& [text, subs, rules] :
         {Case{"", {0, 0, 0, 0}, ""}, Case{"one %s", {7, 0, 0, 0}, ""}, Case{"%s and %S", {1, 2, 0, 0}, ""},
          Case{"none", {1, 0, 0, 0}, "wild-cards-missing " + count},
          Case{"one %s", {0, 0, 0, 0}, placement + count}, Case{"one %s", {0, 7, 0, 0}, placement},
          Case{"two %s%s", {0, 0, 0, 0}, placement + placement + count}, Case{"one %s", {1, 2, 0, 0}, count},
          Case{"%s %s %s", {1, 2, 0, 0}, many}, Case{"%s %s %s", {1, 0, 0, 0}, many + placement + count},
          Case{"%s %s %s", {1, 2, 3, 0}, many + count}, Case{"100%%", {0, 0, 0, 0}, ""},
          Case{"one %s", {-1, 0, 0, 0}, ""}}) {
        std::vector<Reason> reasons;
        CheckWildCards(text, 2, "Good Option", subs, reasons);
        std::string found;
        for (const Reason& reason : reasons)
            found += std::string(reason.Rule) + ' ';
        EXPECT_EQ(found, rules) << text;
    }
}

TEST(CheckWildCards, SaysItInTheGamesWordsBehindWhatIsThere) {
    std::vector<Reason> reasons{{"earlier", "rule"}};
    const std::vector<std::int32_t> oneBox{1, 0, 0, 0};
    CheckWildCards("%s%s%s", 2, "Good Option", oneBox, reasons);
    CheckWildCards("none", 4, "Description", oneBox, reasons);
    std::vector<std::string> texts;
    for (const Reason& reason : reasons)
        texts.push_back(reason.Text);
    EXPECT_THAT(
        texts,
        ::testing::ElementsAre(
            "earlier", "Too many wild cards in the Good Option text (3) !  You are limited to 2 wild cards.",
            "The number or placement of wild cards (%s) used in the Good Option text do not match the number "
            "of wild card subs set using the drop down boxes.",
            "1 Wild Card Sub boxes were set, but there are 2 '%s' character groupings in the Good Option "
            "text.",
            "No wild cards in the Description text, but Wild Card subs were set.",
            "1 Wild Card Sub boxes were set, but there are 0 '%s' character groupings in the Description "
            "text."));
}

TEST(CheckWildCards, FailsBeyondTheBoxes) {
    std::vector<Reason> reasons;
    const std::vector<std::int32_t> oneBox{1};
    const Failure failure = FailureOf([&] { CheckWildCards("%s%s", 4, "Question", oneBox, reasons); });
    EXPECT_EQ(failure.Number, FailureSubscript);
    EXPECT_EQ(failure.Description(), "Subscript out of range");
}

TEST(TextForFile, KeepsQuotesAndLineBreaksOutOfTheFormat) {
    EXPECT_EQ(TextForFile("say \"hi\""), "say 'hi'");
    EXPECT_EQ(TextForFile("a\r\nb\rc\nd\n\re"), "a\\nb\\nc\\nd\\n\\ne");
    EXPECT_EQ(TextForFile("end\r"), "end\\n");
    EXPECT_EQ(TextForFile("plain \\n %s"), "plain \\n %s");
}

TEST(ReviewText, ShowsTheTextAsTheGameWill) {
    using Case = std::tuple<const char*, std::vector<std::string>, std::string>;
    const std::vector<std::string> letters{"a", "b", "c", "d", "e"};
    for (const auto& [text, names, shown] :
         {Case{"Hello %s, welcome to %s",
               {"Player Name", "Planet Name", "Nothing"},
               "Hello [PLAYER NAME], welcome to [PLANET NAME]"},
          Case{"%s pays %s%%?", {"caf\xE9", "Selected Race"}, "[CAF\xC9] pays [SELECTED RACE]%?"},
          Case{"%s%S%s", {"a", "b"}, "[A][B][]"}, Case{"%s%s%s%s%s.%s!", letters, "[A][B][C][D].!"},
          Case{"one\\ntwo\\Nthree", {}, "one\rtwo\rthree"}, Case{"100%% %%%%", {}, "100% %%"},
          Case{"%%s", letters, "%[A]"}, Case{"", letters, ""}})
        EXPECT_EQ(ReviewText(text, names), shown) << text;
}

TEST(Texts, SplitAndJoinUndoEachOther) {
    const std::vector<std::string> pieces{"", "a", "", "b", ""};
    EXPECT_EQ(Split("--a----b--", "--"), pieces);
    EXPECT_EQ(Join(pieces, "--"), "--a----b--");
    EXPECT_EQ(Split("", ","), std::vector<std::string>{""});
    EXPECT_EQ(Split("abc", ""), std::vector<std::string>{"abc"});
    EXPECT_EQ(Join({}, ","), "");
}

TEST(Texts, ReplaceAllScansLeftToRightAndNeverItsOwnWork) {
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceAll("aXa", "a", "aa"), "aaXaa");
    EXPECT_EQ(ReplaceAll("abc", "", "x"), "abc");
    EXPECT_EQ(ReplaceAll("abc", "abc", ""), "");
}

} // namespace
} // namespace velmora
