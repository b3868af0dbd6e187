// The UP issue editor's own form, guidance, checks and texts; what all editors do alike is tested once for
// all.
#include "upissues/frmUPIssues.h"

#include "editor/Editors.h"

namespace velmora {
namespace {

class UPIssueForm : public FormOf<frmUPIssues, clsUPIssue> {
  protected:
    UPIssueForm() : FormOf(IssueEditor) {}

    /// The guidance captions of the four values; "<" marks one at the left.
    Strings ValueCaptions() {
        Strings captions;
        for (const char* name : {"lblValue01", "lblValue02", "lblValue03", "lblValue04"}) {
            const bool left = Get<QLabel>(name)->alignment() & Qt::AlignLeft;
            captions.push_back((left ? "<" : "") + Text(name));
            EXPECT_TRUE(Get<QLabel>(name)->isVisible()) << name;
        }
        return captions;
    }
    bool AbilityBoxShown() {
        const bool shown = Get<QWidget>("cboValue01")->isVisible();
        EXPECT_NE(shown, Get<QWidget>("txtValue_0")->isVisible());
        return shown;
    }
};

/// An issue with a value of its own for every key.
const std::string Everything =
    "UPISSUE Tax\nQuestion \"Will %s pay %s%% to %s of %s?\"\nSubQuestion \"sub 5%% question\"\n"
    "Option01 \"One\"\nOption02 \"Two\"\nOption03 \"Three\"\nOption04 \"Four\"\nOption05 \"Five\"\n"
    "Option06 \"Six\"\nOptionVal01 -5\nOptionVal02 20\nOptionVal03 30\nOptionVal04 40\nOptionVal05 50\n"
    "OptionVal06 60\nAttribute 31\nAppliesTo 11\nPrereq 12\nProbability 13\nYearsInEffect 14\n"
    "Value01 21\nValue02 22\nValue03 23\nValue04 24\nQuestionStr01 2\nQuestionStr02 5\nQuestionStr03 1\n"
    "QuestionStr04 7\nHowAIWouldVote 7\nENDUPISSUE\n";

TEST_F(UPIssueForm, ShowsARecordAndTakesItBackUnchanged) {
    Start(Everything);
    const std::string before = BlockAt(0);
    EXPECT_THAT(TextsOf({"txtUPIssueName", "txtQuestion", "txtSubQuestion", "cboAttributeToEffect",
                         "txtAppliesTo", "txtPrerequisite", "txtProbability", "txtYearsInEffect",
                         "cboHowAIWouldVote", "cboUPIssueFile", "txtEdited", "lblUnableToDisplay"}),
                ElementsAre("Tax", "Will %s pay %s%% to %s of %s?", "sub 5%% question",
                            "Screw the leading civ", "11", "12", "13", "14",
                            "Vote self if losing, otherwise friend", "A.UPIssue", "NO",
                            "Unable to display picture"));
    EXPECT_THAT(Texts("txtOption_", 6), ElementsAre("One", "Two", "Three", "Four", "Five", "Six"));
    EXPECT_THAT(Texts("txtOptVal_", 6), ElementsAre("-5", "20", "30", "40", "50", "60"));
    EXPECT_THAT(Texts("txtValue_", 4), ElementsAre("21", "22", "23", "24"));
    EXPECT_THAT(Texts("cboUPIssueSubs_", 4),
                ElementsAre("Empire Name", "Selected Race", "Player Name", "Planet Name"));
    Pick("mnuIssueText");
    EXPECT_THAT(prompts.TakeTranscript(), ElementsAre("Message: Will [EMPIRE NAME] pay [SELECTED RACE]% to "
                                                      "[PLAYER NAME] of [PLANET NAME]?"));
    Pick("mnuEditThisIssue");
    EXPECT_TRUE(Get<QWidget>("txtQuestion")->hasFocus());
    EXPECT_TRUE(Get<LineBox>("txtUPIssueName")->isReadOnly());
    for (const char* locked : {"txtSubQuestion", "txtValue_2", "txtValue_3", "txtPrerequisite",
                               "txtAppliesTo", "txtProbability", "txtEdited"}) {
        const std::string shown = Text(locked);
        Type(locked, QStringLiteral("9"));
        EXPECT_EQ(Text(locked), shown) << locked;
        EXPECT_TRUE(Enabled(locked)) << locked;
    }
    Enter("txtQuestion");
    Pick("mnuCommitChanges");
    EXPECT_EQ(Text("txtEdited"), "YES");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(BlockAt(0), before);
}

TEST_F(UPIssueForm, EmptiesTheForm) {
    Open<frmUPIssues>();
    EXPECT_THAT(TextsOf({"txtUPIssueName", "txtQuestion", "txtSubQuestion", "lblWhereWeAt", "lblStatus"}),
                Each(""));
    EXPECT_THAT(TextsOf({"txtYearsInEffect", "txtAppliesTo", "txtPrerequisite", "txtProbability"}),
                Each("0"));
    EXPECT_THAT(Texts("txtOption_", 6), Each(""));
    EXPECT_THAT(Texts("txtOptVal_", 6), Each("0"));
    EXPECT_THAT(Texts("txtValue_", 4), Each("0"));
    EXPECT_THAT(TextsOf({"cboAttributeToEffect", "cboHowAIWouldVote", "txtEdited"}),
                ElementsAre("Change number of trade routes", "Randomly vote", "NO"));
    EXPECT_THAT(Entries("cboUPIssueFile"), ElementsAre("MyUPIssues.upissue"));
    EXPECT_FALSE(AbilityBoxShown());
}

TEST_F(UPIssueForm, GuidesByTheTypeAndTakesTheFirstValueFromTheBoxOnShow) {
    clsUPIssue power = SoundIssue("Power");
    power.Option01.clear();
    power.OptionVal01 = 0;
    power.UPIssueAttribute = 8;
    power.Value01 = 19;
    power.Value02 = 5;
    Start({power});
    EXPECT_TRUE(AbilityBoxShown());
    EXPECT_EQ(Text("cboValue01"), "No Of Trade Routes");
    EXPECT_EQ(Text("lblAttributeStatus"),
              "Affects the specified civ-wide ability.\rYears In Effect ignored with this setting.\r"
              "Auto-lists major races as the options.");
    EXPECT_TRUE(Get<QLabel>("lblAttributeStatus")->isVisible());
    EXPECT_THAT(ValueCaptions(), ElementsAre("<Choose the ability to power-up.", "<Strength of new ability.",
                                             "not used", "not used"));
    Pick("mnuEditThisIssue");
    Choose("cboUPIssueSubs_3", "Empire Name");
    EXPECT_EQ(Text("lblEditStatus"), "Name of the human race");
    Choose("cboValue01", "Ship Speed");
    EXPECT_THAT(TextsOf({"lblValue02", "lblEditStatus"}),
                ElementsAre("moves", "Affects player's Ship Speed ability"));
    EXPECT_TRUE(Get<QLabel>("lblValue02")->alignment() & Qt::AlignHCenter);
    Choose("cboUPIssueSubs_3", "Nothing");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Value01, 3);
    EXPECT_EQ(At(0).Value02, 5);
    Pick("mnuEditThisIssue");
    Choose("cboAttributeToEffect", "Change number of trade routes");
    EXPECT_FALSE(AbilityBoxShown());
    EXPECT_THAT(ValueCaptions(),
                ElementsAre("<# of trade routes to alter.", "not used", "not used", "not used"));
    EXPECT_TRUE(Enabled("mnuCommitChanges"));
    Choose("cboAttributeToEffect", "Anomaly ownership");
    EXPECT_EQ(Text("lblAttributeStatus"), "#1 + #2 = Yes/No, #3-#6 ignored.\r");
    Type("txtValue_0", QStringLiteral("77"));
    Type("txtOption_0", QStringLiteral("No"));
    Type("txtOptVal_0", QStringLiteral("-1"));
    Enter("txtQuestion");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Value01, 77);
    EXPECT_EQ(At(0).UPIssueAttribute, 2);
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(UPIssueForm, TellsLineBreaksInOptionsOnLeaving) {
    Start({SoundIssue("Tax")});
    Pick("mnuEditThisIssue");
    const std::string options = "Message[Information]: The \\n character grouping is not applicable for "
                                "Option texts.";
    const std::string length =
        "Message[Exclamation]: Option text length (31) higher than maximum recommended "
        "length (30)!";
    const std::tuple<const char*, std::string, Strings> cases[]{
        {"txtQuestion", "line\\n50%%", {}},
        {"txtOption_5", "a\\Nb", {options}},
        {"txtOption_0", "\\n" + std::string(29, 'x'), {length, options}}};
    for (const auto& [box, text, messages] : cases) {
        SetText(box, text);
        Enter(box);
        Enter("cboHowAIWouldVote");
        EXPECT_EQ(Text(box), text);
        EXPECT_EQ(prompts.TakeTranscript(), messages) << text;
    }
}

TEST_F(UPIssueForm, ListsReasonsAndLetsTheAuthorDecide) {
    Start({SoundIssue("Tax")});
    Pick("mnuEditThisIssue");
    for (const char* box : {"txtQuestion", "txtOption_0"})
        Type(box, QString());
    Type("txtOptVal_0", QStringLiteral("0"));
    Choose("cboUPIssueSubs_0", "Player Name");
    const auto question = [](const std::string& reasons) {
        return "Failed validation!  Reasons: ||" + reasons +
               "||Do you still wish to proceed? (proceeding in this state might render Velmora inoperative)";
    };
    prompts.ExpectAsk(
        question(
            "No Question text set, please specify the question before the UP High Council.|"
            "None of the Option text fields have been filled in.|"
            "None of the Option Value fields have been filled in.|"
            "No wild cards in the Question text, but Wild Card subs were set.|"
            "1 Wild Card Sub boxes were set, but there are 0 '%s' character groupings in the Question text."),
        false);
    Pick("mnuCommitChanges");
    EXPECT_TRUE(Enabled("txtQuestion"));
    EXPECT_FALSE(At(0).IsDirty);
    Choose("cboUPIssueSubs_0", "Nothing");
    Choose("cboAttributeToEffect", "Galactic Olympics");
    Type("txtQuestion", QStringLiteral("Who?"));
    Enter("txtOption_0");
    const std::string unneeded =
        " fields have been filled in, but this is not necessary when the choices are "
        "auto-listed.";
    Type("txtOption_4", QStringLiteral("Me"));
    Type("txtOptVal_4", QStringLiteral("-0.5"));
    prompts.ExpectAsk(question("The Option text" + unneeded + "|The Option Value" + unneeded), true);
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Option05, "Me");
    EXPECT_EQ(At(0).OptionVal05, 0);
    EXPECT_EQ(At(0).UPIssueAttribute, 6);
    Pick("mnuEditThisIssue");
    Type("txtOption_4", QString());
    Pick("mnuCommitChanges");
    EXPECT_THAT(prompts.Transcript, Each(StartsWith("Ask[No default]: ")));
    EXPECT_EQ(prompts.Transcript.size(), 2u);
}

TEST_F(UPIssueForm, FailsWhenAnOptionValueIsNoNumber) {
    Start({SoundIssue("Tax")});
    Pick("mnuEditThisIssue");
    SetText("txtOptVal_2", "two");
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Number, 13);
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("frmUPIssues_mnuCommitChanges_Click",
                                                     "frmUPIssues_SaveUPIssue", "frmUPIssues_ValidateData"));
    EXPECT_TRUE(Enabled("mnuCommitChanges"));
    EXPECT_FALSE(At(0).IsDirty);
}

TEST_F(UPIssueForm, ReviewsFourWildCardsAtMost) {
    clsUPIssue five = SoundIssue("Five");
    five.Question = "%s%s%s%s%s!\\nEnd";
    Start({five});
    Pick("mnuIssueText");
    EXPECT_THAT(prompts.Transcript, ElementsAre("Message: [NOTHING][NOTHING][NOTHING][NOTHING]!|End"));
}

} // namespace
} // namespace velmora
