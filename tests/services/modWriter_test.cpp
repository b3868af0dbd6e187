#include "services/modWriter.h"

#include "FailureOf.h"

#include <gmock/gmock.h>

#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;
using ::testing::ElementsAre;

TEST(SanitizeName, GivesTheNameThatTheGameAcceptsAndReportsEachChangeInWords) {
    Texts names{"", "My_Event2", "Z9", "_"};
    for (std::string& name : names)
        EXPECT_EQ(SanitizeName(name, "Event"), "");
    names = {"0", "12", "2F", "3%", "45x", "5", "6", "7up", "8", " 1st", "a b\tc", "***", "\xB9st", "x\0y"s};
    for (std::string& name : names)
        EXPECT_NE(SanitizeName(name, "Event"), "");
    EXPECT_THAT(names, ElementsAre("Zero", "One2", "TwoF", "Three", "Four5x", "Five", "Six", "Sevenup",
                                   "Eight", "1st", "abc", "", "st", "xy"));
    std::string name = "9 \xE9";
    EXPECT_EQ(
        SanitizeName(name, "UP Issue"),
        "Illegal UP Issue name found, the first character in the name can not be numeric, the name 9 \xE9 "
        "will be converted.  1 will become One, 2 will become Two, etc."
        "\rIllegal character \" \" found in the UP Issue name Nine \xE9.  It will be removed."
        "\rIllegal character \"\xC9\" found in the UP Issue name Nine \xE9.  It will be removed."
        "\r\rFinal revised UP Issue name is now: Nine.");
    name = "a-b";
    EXPECT_EQ(SanitizeName(name, "Event"), "Illegal character \"-\" found in the Event name a-b.  It will be "
                                           "removed.\r\rFinal revised Event name is now: ab.");
}

TEST(SanitizeName, KeepsItsReportInProportionToTheName) {
    std::string name(30000, '!');
    EXPECT_LT(SanitizeName(name, "Event").size(), 30000u * 300);
}

TEST(FilterKeyPress, SwallowsEnterAndSoftensTheDoubleQuote) {
    std::vector<std::int16_t> keys{13, 34, 39, 10, 65};
    for (std::int16_t& key : keys)
        FilterKeyPress(key);
    EXPECT_THAT(keys, ElementsAre(0, 39, 39, 10, 65));
}

TEST(NormalizeWildCards, DoublesLonePercentSigns) {
    Texts texts{"% %% %%% %%%% s", "%s %S %%s %%%S %%%%s %%%%%S", "%s%Ss%", "%S%%", "\0 100% of %x\1"s, ""};
    for (std::string& text : texts)
        NormalizeWildCards(text);
    EXPECT_THAT(texts, ElementsAre("%% %% %%%% %%%% s", "%s %s %%%s %%%s %%%%%s %%%%%s", "%s%ss%%", "%s%%",
                                   "\0 100%% of %%x\1"s, ""));
}

TEST(CheckWildCards, FindsWhatDoesNotMatch) {
    using Case = std::tuple<const char*, std::vector<std::int32_t>, std::string>;
    for (const auto& [text, subs, rules] :
         {Case{"100%%", {0, 0}, ""}, Case{"one %s", {-1, 0}, ""}, Case{"%s and %S", {1, 2}, ""},
          Case{"one %s", {0, 7}, "wild-card-placement "},
          Case{"two %s%s", {0, 0}, "wild-card-placement wild-card-placement wild-card-count "},
          Case{"one %s", {1, 2}, "wild-card-count "}, Case{"%s%s%s", {1, 2}, "too-many-wild-cards "},
          Case{"%s%s%s", {1, 2, 3}, "too-many-wild-cards wild-card-count "},
          Case{"none", {1, 0}, "wild-cards-missing wild-card-count "}}) {
        std::vector<Problem> reasons;
        CheckWildCards(text, 2, "Good Option", subs, reasons);
        std::string found;
        for (const Problem& reason : reasons)
            found += std::string(reason.Rule) + ' ';
        EXPECT_EQ(found, rules) << text;
    }
}

TEST(CheckWildCards, SaysItInTheGamesWordsBehindWhatIsThereAndFailsBeyondTheBoxes) {
    std::vector<Problem> reasons{{"rule", "earlier"}};
    const std::vector<std::int32_t> boxes{1, 0};
    CheckWildCards("%s%s%s", 2, "Good Option", boxes, reasons);
    CheckWildCards("none", 4, "Description", boxes, reasons);
    std::string texts;
    for (const Problem& reason : reasons)
        texts += reason.Text + '|';
    EXPECT_EQ(
        texts,
        "earlier|Too many wild cards in the Good Option text (3) !  You are limited to 2 wild cards.|"
        "The number or placement of wild cards (%s) used in the Good Option text do not match the number "
        "of wild card subs set using the drop down boxes.|"
        "1 Wild Card Sub boxes were set, but there are 2 '%s' character groupings in the Good Option text.|"
        "No wild cards in the Description text, but Wild Card subs were set.|"
        "1 Wild Card Sub boxes were set, but there are 0 '%s' character groupings in the Description text.|");
    const Failure failure = FailureOf([&] { CheckWildCards("%s%s%s", 4, "Question", boxes, reasons); });
    EXPECT_EQ(failure.Number, FailureSubscript);
    EXPECT_EQ(failure.Description(), "Subscript out of range");
}

TEST(TextForFile, KeepsQuotesAndLineBreaksOutOfTheFormat) {
    EXPECT_EQ(TextForFile("say \"hi\" \\n %s"), "say 'hi' \\n %s");
    EXPECT_EQ(TextForFile("a\r\nb\rc\nd\n\re\r"), "a\\nb\\nc\\nd\\n\\ne\\n");
}

TEST(ReviewText, ShowsTheTextAsTheGameWill) {
    const Texts names{"caf\xE9", "Selected Race", "c", "d", "e"};
    EXPECT_EQ(ReviewText("%s pays %S 100%%?%%%%%s", names), "[CAF\xC9] pays [SELECTED RACE] 100%?%%[C]");
    EXPECT_EQ(ReviewText("%s%s%s%s%s.%s!", names), "[CAF\xC9][SELECTED RACE][C][D].!");
    EXPECT_EQ(ReviewText("one\\ntwo\\Nthree%s", {}), "one\rtwo\rthree[]");
    EXPECT_EQ(ReviewText("", names), "");
}

TEST(Texts, SplitJoinAndReplace) {
    const Texts pieces{"", "a", "", "b", ""};
    EXPECT_EQ(Split("--a----b--", "--"), pieces);
    EXPECT_EQ(Join(pieces, "--"), "--a----b--");
    EXPECT_THAT(Split("", ","), ElementsAre(""));
    EXPECT_THAT(Split("abc", ""), ElementsAre("abc"));
    EXPECT_EQ(Join({}, ","), "");
    EXPECT_EQ(ReplaceAll("aaa", "aa", "b"), "ba");
    EXPECT_EQ(ReplaceAll("aXa", "a", "aa"), "aaXaa");
    EXPECT_EQ(StripIllegalFileChars("My \\/:*?\"<>| Ev\t\xE9_1.event"), "MyEv\t\xE9_1.event");
}

TEST(Texts, NamesThatWindowsKeepsForItselfAreNoFileNames) {
    for (const char* refused :
         {"CON", "nul", "Com1", "LPT\xB2", "con.old", "aux .x", "CONIN$", "Story.", "Story "})
        EXPECT_NE(FileNameRefusal(refused), "") << refused;
    for (const char* fine : {"", "Console", "COM", "COM0", "COM10", "x.CON", "My.Story", ".x"})
        EXPECT_EQ(FileNameRefusal(fine), "") << fine;
}

} // namespace
} // namespace velmora
