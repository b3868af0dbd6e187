#include "services/modWriter.h"

#include "FailureOf.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;

TEST(SanitizeName, LeavesLegalNamesAlone) {
    for (const std::string& legal : {""s, "My_Event2"s, "raid"s, "Z9"s, "_"s}) {
        std::string name = legal;
        EXPECT_EQ(SanitizeName(name, "Event"), "") << legal;
        EXPECT_EQ(name, legal);
    }
}

TEST(SanitizeName, SpellsOutALeadingDigitAndDropsIllegalCharacters) {
    std::string name = "9 Lives";
    EXPECT_EQ(SanitizeName(name, "Event"),
              "Illegal Event name found, the first character in the name can not be numeric, the name 9 "
              "Lives will be "
              "converted.  1 will become One, 2 will become Two, etc."
              "\rIllegal character \" \" found in the Event name Nine Lives.  It will be removed."
              "\r\rFinal revised Event name is now: NineLives.");
    EXPECT_EQ(name, "NineLives");
}

TEST(SanitizeName, ReportsEveryIllegalCharacterInUpperCase) {
    std::string name = "d\xE9"
                       "j\xE9-vu";
    EXPECT_EQ(SanitizeName(name, "UP Issue"), "Illegal character \"\xC9\" found in the UP Issue name d\xE9"
                                              "j\xE9-vu.  It will be removed."
                                              "\rIllegal character \"\xC9\" found in the UP Issue name d\xE9"
                                              "j\xE9-vu.  It will be removed."
                                              "\rIllegal character \"-\" found in the UP Issue name d\xE9"
                                              "j\xE9-vu.  It will be removed."
                                              "\r\rFinal revised UP Issue name is now: djvu.");
    EXPECT_EQ(name, "djvu");
}

TEST(SanitizeName, GivesTheNameThatTheGameAccepts) {
    const struct {
        std::string Name;
        std::string Legal;
    } cases[] = {
        {"3Moons", "ThreeMoons"},
        {"0", "Zero"},
        {"12", "One2"},
        {"45x", "Four5x"},
        {"6", "Six"},
        {"7up", "Sevenup"},
        {"8", "Eight"},
        {"2Fast", "TwoFast"},
        {"5%", "Five"},
        {" 1st", "1st"},
        {"a b\tc", "abc"},
        {"\"quoted\"", "quoted"},
        {"***", ""},
        {"\xB9st", "st"},
        {"x\0y"s, "xy"},
    };
    for (const auto& [given, legal] : cases) {
        std::string name = given;
        EXPECT_NE(SanitizeName(name, "SBModule").find("Final revised SBModule name is now: " + legal + "."),
                  std::string::npos)
            << given;
        EXPECT_EQ(name, legal);
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
    const struct {
        std::string Text;
        std::string Normalized;
    } cases[] = {
        {"", ""},
        {"plain", "plain"},
        {"100%", "100%%"},
        {"%S", "%s"},
        {"%%", "%%"},
        {"%", "%%"},
        {"%%%", "%%%%"},
        {"%%s", "%%%s"},
        {"%%%s", "%%%s"},
        {"%s%s", "%s%s"},
        {"%s%", "%s%%"},
        {"%%%%s", "%%%%%s"},
        {"a%b%%c", "a%%b%%c"},
        {"%s%%?", "%s%%?"},
        {"50% of %s", "50%% of %s"},
        {"\0 100% \1"s, "\0 100%% \1"s},
    };
    for (const auto& [text, normalized] : cases) {
        std::string changed = text;
        NormalizeWildCards(changed);
        EXPECT_EQ(changed, normalized) << text;
    }
}

TEST(NormalizeWildCards, AgreesWithTheReplacementsOnEveryShortText) {
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

std::vector<std::string> RulesOf(const std::string& text, std::int32_t maximum,
                                 const std::vector<std::int32_t>& subs) {
    std::vector<Reason> reasons;
    CheckWildCards(text, maximum, "Good Option", subs, reasons);
    std::vector<std::string> rules;
    for (const Reason& reason : reasons)
        rules.push_back(reason.Rule);
    return rules;
}

TEST(CheckWildCards, FindsWhatDoesNotMatch) {
    const std::string placement = "wild-card-placement";
    const std::string count = "wild-card-count";
    const struct {
        std::string Text;
        std::vector<std::int32_t> Subs;
        std::vector<std::string> Rules;
    } cases[] = {
        {"", {0, 0, 0, 0}, {}},
        {"none", {0, 0, 0, 0}, {}},
        {"one %s", {7, 0, 0, 0}, {}},
        {"%s and %S", {1, 2, 0, 0}, {}},
        {"none", {1, 0, 0, 0}, {"wild-cards-missing", count}},
        {"one %s", {0, 0, 0, 0}, {placement, count}},
        {"one %s", {0, 7, 0, 0}, {placement}},
        {"two %s%s", {0, 0, 0, 0}, {placement, placement, count}},
        {"one %s", {1, 2, 0, 0}, {count}},
        {"%s %s %s", {1, 2, 0, 0}, {"too-many-wild-cards"}},
        {"%s %s %s", {1, 0, 0, 0}, {"too-many-wild-cards", placement, count}},
        {"%s %s %s", {1, 2, 3, 0}, {"too-many-wild-cards", count}},
        {"100%%", {0, 0, 0, 0}, {}},
        {"one %s", {-1, 0, 0, 0}, {}},
    };
    for (const auto& [text, subs, rules] : cases)
        EXPECT_EQ(RulesOf(text, 2, subs), rules) << text;
}

TEST(CheckWildCards, SaysItInTheGamesWordsBehindWhatIsThere) {
    std::vector<Reason> reasons{{"earlier", "rule"}};
    const std::vector<std::int32_t> oneBox{1, 0, 0, 0};
    CheckWildCards("%s%s%s", 2, "Good Option", oneBox, reasons);
    CheckWildCards("none", 4, "Description", oneBox, reasons);
    const std::vector<std::string> expected{
        "earlier",
        "Too many wild cards in the Good Option text (3) !  You are limited to 2 wild cards.",
        "The number or placement of wild cards (%s) used in the Good Option text do not match the number of "
        "wild card "
        "subs set using the drop down boxes.",
        "1 Wild Card Sub boxes were set, but there are 2 '%s' character groupings in the Good Option text.",
        "No wild cards in the Description text, but Wild Card subs were set.",
        "1 Wild Card Sub boxes were set, but there are 0 '%s' character groupings in the Description text."};
    ASSERT_EQ(reasons.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(reasons[i].Text, expected[i]);
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
    const struct {
        std::string Text;
        std::vector<std::string> Names;
        std::string Shown;
    } cases[] = {
        {"Hello %s, welcome to %s",
         {"Player Name", "Planet Name", "Nothing", "Nothing"},
         "Hello [PLAYER NAME], welcome to [PLANET NAME]"},
        {"Will %s pay %s%%?", {"Empire Name", "Selected Race"}, "Will [EMPIRE NAME] pay [SELECTED RACE]%?"},
        {"%s%S%s", {"a", "b"}, "[A][B][]"},
        {"%s%s%s%s%s.%s!", {"a", "b", "c", "d", "e"}, "[A][B][C][D].!"},
        {"one\\ntwo\\Nthree", {}, "one\rtwo\rthree"},
        {"100%% %%%%", {}, "100% %%"},
        {"%%s", {"x"}, "%[X]"},
        {"", {"x"}, ""},
        {"%s", {"caf\xE9"}, "[CAF\xC9]"},
    };
    for (const auto& [text, names, shown] : cases)
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
