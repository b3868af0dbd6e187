// The UP issue editor's own form, guidance and checks; what all editors do alike is tested once for all.
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
            const auto alignment = Get<QLabel>(name)->alignment();
            EXPECT_NE(alignment.testFlag(Qt::AlignLeft), alignment.testFlag(Qt::AlignHCenter)) << name;
            EXPECT_TRUE(Get<QLabel>(name)->isVisible()) << name;
            captions.push_back((alignment & Qt::AlignLeft ? "<" : "") + Text(name));
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
    "UPISSUE Tax\nQuestion \"Will %s pay %s%% to %s of %s?\"\nSubQuestion \"sub 5% question\"\n"
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
    Pick("mnuIssueText");
    EXPECT_THAT(prompts.TakeTranscript(), ElementsAre("Message: Will [EMPIRE NAME] pay [SELECTED RACE]% to "
                                                      "[PLAYER NAME] of [PLANET NAME]?"));
    Pick("mnuEditThisIssue");
    EXPECT_TRUE(Get<QWidget>("txtQuestion")->hasFocus());
    for (const char* locked : {"txtSubQuestion", "txtValue_2", "txtValue_3", "txtPrerequisite",
                               "txtAppliesTo", "txtProbability", "txtEdited"}) {
        EXPECT_TRUE(Enabled(locked)) << locked;
        const std::string shown = Text(locked);
        Type(locked, QStringLiteral("9"));
        EXPECT_EQ(Text(locked), shown) << locked;
    }
    Pick("mnuCommitChanges");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(BlockAt(0), before);
}

TEST_F(UPIssueForm, EmptiesTheForm) {
    Open<frmUPIssues>();
    EXPECT_THAT(TextsOf({"txtQuestion", "txtOption_5", "txtValue_3", "cboHowAIWouldVote", "cboUPIssueFile"}),
                ElementsAre("", "", "0", "Randomly vote", "MyUPIssues.upissue"));
}

TEST_F(UPIssueForm, GuidesByTheTypeAndTakesTheFirstValueFromTheBoxOnShow) {
    clsUPIssue power = SoundIssue("Power");
    power.Option01.clear();
    power.OptionVal01 = 0;
    power.UPIssueAttribute = 8;
    power.Value01 = 19;
    Start({power});
    EXPECT_TRUE(AbilityBoxShown());
    EXPECT_THAT(TextsOf({"cboValue01", "lblAttributeStatus"}),
                ElementsAre("No Of Trade Routes", OfferGuidance(8).Caption));
    EXPECT_THAT(ValueCaptions(), ElementsAre("<Choose the ability to power-up.", "<Strength of new ability.",
                                             "not used", "not used"));
    Pick("mnuEditThisIssue");
    Choose("cboValue01", "Ship Speed");
    EXPECT_EQ(Text("lblEditStatus"), "Affects player's Ship Speed ability");
    EXPECT_THAT(ValueCaptions(),
                ElementsAre("<Choose the ability to power-up.", "moves", "not used", "not used"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Value01, 3);
    Pick("mnuEditThisIssue");
    Choose("cboAttributeToEffect", "Galactic Olympics");
    EXPECT_FALSE(AbilityBoxShown());
    EXPECT_EQ(Text("lblAttributeStatus"), OfferGuidance(6).Caption);
    EXPECT_THAT(ValueCaptions(), Each("not used"));
    Type("txtValue_0", QStringLiteral("77"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Value01, 77);
    EXPECT_EQ(At(0).UPIssueAttribute, 6);
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(UPIssueForm, TellsLineBreaksInOptionsOnLeaving) {
    Start({SoundIssue("Tax")});
    Pick("mnuEditThisIssue");
    for (const auto& [box, text] : {std::pair{"txtQuestion", "line\\n50%%"},
                                    {"txtOption_0", "a\\Nb"},
                                    {"txtOption_5", "\\nxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"}}) {
        SetText(box, text);
        Enter(box);
        Enter("cboHowAIWouldVote");
        EXPECT_EQ(Text(box), text);
    }
    const std::string options = "Message[Information]: The \\n character grouping is not applicable for "
                                "Option texts.";
    EXPECT_THAT(prompts.Transcript, ElementsAre(options, StartsWith("Message[Exclamation]: "), options));
}

TEST_F(UPIssueForm, ListsReasonsAndLetsTheAuthorDecide) {
    Start({SoundIssue("Tax")});
    Pick("mnuEditThisIssue");
    for (const char* box : {"txtQuestion", "txtOption_0"})
        Type(box, QString());
    Type("txtOptVal_0", QStringLiteral("0"));
    const auto expectReasons = [this](const std::string& reasons, bool yes) {
        prompts.ExpectAsk("Failed validation!  Reasons: ||" + reasons +
                              "||Do you still wish to proceed? (proceeding in this state might render "
                              "Velmora inoperative)",
                          yes);
        Pick("mnuCommitChanges");
    };
    expectReasons("No Question text set, please specify the question before the UP High Council.|"
                  "None of the Option text fields have been filled in.|"
                  "None of the Option Value fields have been filled in.",
                  false);
    EXPECT_TRUE(Enabled("txtQuestion"));
    EXPECT_FALSE(At(0).IsDirty);
    Choose("cboAttributeToEffect", "Galactic Olympics");
    Type("txtQuestion", QStringLiteral("Who, %s?"));
    Type("txtOption_4", QStringLiteral("Me"));
    Type("txtOptVal_4", QStringLiteral("-0.5"));
    Type("txtOptVal_5", QStringLiteral("0.5"));
    Choose("cboUPIssueSubs_0", "Empire Name");
    EXPECT_EQ(Text("lblEditStatus"), "Name of the human race");
    const std::string unneeded = " fields have been filled in, but this is not necessary when the choices "
                                 "are auto-listed.";
    expectReasons("The Option text" + unneeded + "|The Option Value" + unneeded, true);
    EXPECT_EQ(At(0).OptionVal05, 0);
    EXPECT_EQ(At(0).QuestionStr01, 2);
    EXPECT_THAT(prompts.Transcript, Each(StartsWith("Ask[No default]: ")));
}

TEST_F(UPIssueForm, FailsWhenAnOptionValueIsNoNumber) {
    Start({SoundIssue("Tax")});
    Pick("mnuEditThisIssue");
    SetText("txtOptVal_2", "two");
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Description, "Type mismatch (OptValue #3)");
    EXPECT_EQ(handler.LastCallStack(), Routines({"mnuCommitChanges_Click", "SaveUPIssue", "ValidateData"}));
    EXPECT_TRUE(Get<QWidget>("txtOptVal_2")->hasFocus());
}

} // namespace
} // namespace velmora
