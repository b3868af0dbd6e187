#include "SoundRecords.h"
#include "events/EventPreview.h"
#include "upissues/UPIssuePreview.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using Strings = std::vector<std::string>;

/// A line a part: "Good answer: text -> effect (note)"; "!" before a wild card that is to be looked at.
Strings Told(const Preview& preview) {
    Strings lines;
    for (const PreviewPart& part : preview.Parts) {
        std::string line = part.Heading.empty() ? "" : part.Heading + ": ";
        for (const TextPiece& piece : part.Text)
            line += (piece.Is == TextPiece::Sort::Unset     ? "!"
                     : piece.Is == TextPiece::Sort::Surplus ? "!!"
                                                            : "") +
                    piece.Text;
        if (!part.Effect.empty())
            line += " -> " + part.Effect;
        for (const std::string& note : part.Notes)
            line += " (" + note + ")";
        lines.push_back(line);
    }
    return lines;
}

class PreviewTest : public ::testing::Test {
  protected:
    PreviewTest() { BuildCatalogues(); }
    ~PreviewTest() override { ReleaseCatalogues(); }
};

TEST_F(PreviewTest, FillsTheWildCardsOfAnEventAndMarksThoseThatAreWrong) {
    struct Case {
        std::string Text;
        std::array<std::int32_t, 4> Codes;
        std::string Shown;
    };
    const SampleNames names{{"Planet Name", "Rill"}, {"Good Value", ""}};
    for (const Case& c : std::initializer_list<Case>{
             {"one\\ntwo 5%", {}, "one\rtwo 5%"},
             {"%s of %S", {1, 7}, "[PLAYER NAME] of Rill"},
             {"%s", {}, "![NOTHING]"},
             {"%s", {99}, "![NOTHING]"},
             {"a%sb%sc%sd%se%sf%s", {7, 0, 7, 7}, "aRillb![NOTHING]cRilldRille!![]f!![]"},
             {"no card",
              {7, 0, 2},
              "no card (Planet Name is set, but there is no wild card #1) (Empire Name is set, but there is "
              "no "
              "wild card #3)"},
             {"%s BC", {11}, "8 BC"}}) {
        clsEvent event = SoundEvent("Raid");
        event.Description = c.Text;
        event.GoodValue = -8;
        event.DescStr01 = c.Codes[0];
        event.DescStr02 = c.Codes[1];
        event.DescStr03 = c.Codes[2];
        event.DescStr04 = c.Codes[3];
        EXPECT_EQ(Told(PreviewEvent(event, names))[0], c.Shown);
    }
    clsEvent event = SoundEvent("Raid");
    event.GoodOption = "%s";
    event.GoodOptStr01 = 7;
    EXPECT_EQ(Told(PreviewEvent(event, {}))[1], "Good answer: [PLANET NAME] -> No effect");
}

TEST_F(PreviewTest, TellsWhatAnAnswerDoes) {
    struct Case {
        std::int32_t Type, Attribute, Value, PopChange;
        std::string Effect;
    };
    for (const Case& c : std::initializer_list<Case>{
             {0, 2, 8, -1, "Morale Bonus +8 %, population -1 million on this colony"},
             {1, 104, -8, 0, "Morale -8 % for the entire civilization"},
             {1, 103, 2, 0, "Ship Speed +2 Moves for the entire civilization"},
             {1, 119, 0, 0, "No Of Trade Routes 0 Routes for the entire civilization"},
             {0, 200, -500, 3, "Cash-o-la -500 BC, population +3 million on this colony"},
             {0, 0, 12, 2, "Population +2 million on this colony"},
             {0, 104, 8, 0, "No effect"}}) {
        clsEvent event = SoundEvent("Raid");
        event.EventType = c.Type;
        event.EvilAttribute = c.Attribute;
        event.EvilValue = c.Value;
        event.EvilPopChange = c.PopChange;
        EXPECT_EQ(PreviewEvent(event, {}).Parts[3].Effect, c.Effect);
    }
}

TEST_F(PreviewTest, TellsWhatTheOptionsOfAnIssueDoByItsType) {
    clsUPIssue issue = SoundIssue("Tax");
    issue.Question = "Will %s pay?";
    issue.QuestionStr01 = 2;
    issue.Option02 = "No, 5%\\n";
    issue.Option03 = "Maybe";
    issue.YearsInEffect = 1;
    EXPECT_THAT(
        Told(PreviewUPIssue(issue, {})),
        ElementsAre("Will [EMPIRE NAME] pay?", "Option 1: Yes -> Yes: anomaly ownership in force, for 1 year",
                    "Option 2: No, 5%\\n -> No: nothing changes", "Option 3: Maybe -> Ignored by the game"));
    issue.UPIssueAttribute = 18;
    issue.OptionVal01 = 4;
    issue.OptionVal02 = 9;
    issue.YearsInEffect = 0;
    EXPECT_THAT(
        Told(PreviewUPIssue(issue, {{"Empire Name", "Rill"}})),
        ElementsAre("Will Rill pay?",
                    "Option 1: Yes -> new government: Star Federation, for the rest of the game",
                    "Option 2: No, 5%\\n -> new government: 9, which is none, for the rest of the game",
                    "Option 3: Maybe -> new government: no change, for the rest of the game"));
    issue.UPIssueAttribute = 8;
    issue.Value01 = 3;
    issue.Value02 = -2;
    const Strings told = Told(PreviewUPIssue(issue, {}));
    EXPECT_EQ(told[1], "The major races:  -> Ship Speed -2 moves");
    EXPECT_EQ(told[2], "Option 1: Yes -> Ignored by the game");
}

TEST_F(PreviewTest, KnowsEveryType) {
    for (const auto& [name, number] : UPIssueTypes) {
        clsUPIssue issue = SoundIssue("Any");
        issue.UPIssueAttribute = number;
        const Preview preview = PreviewUPIssue(issue, {});
        EXPECT_EQ(preview.Title, name);
        EXPECT_THAT(preview.Parts[1].Effect, ::testing::Not(::testing::AnyOf("", ::testing::HasSubstr("{"))))
            << name;
    }
}

} // namespace
} // namespace velmora
