// The UP issue editor's own form, guidance, checks and texts.
#include "upissues/frmUPIssues.h"

#include "editor/EditorFixture.h"
#include "editor/ModalAnswers.h"
#include "editor/frmZoomTo.h"

namespace velmora {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Strings = std::vector<std::string>;

class UPIssueForm : public WindowTest {
  protected:
    static clsUPIssue Good(const std::string& name) {
        clsUPIssue issue;
        issue.UPIssueName = name;
        issue.Question = "Question";
        issue.Option01 = "Yes";
        issue.OptionVal01 = 1;
        issue.UPIssueAttribute = 2;
        return issue;
    }
    void Put(const std::string& file, const std::vector<clsUPIssue>& issues) {
        std::string text;
        for (const clsUPIssue& issue : issues)
            text += issue.GenerateUPIssueString(false);
        temp.Write("Game/Data/UP_Issues/" + file, text);
    }
    void Start(const std::vector<clsUPIssue>& issues) {
        Put("A.UPIssue", issues);
        Open<frmUPIssues>();
    }
    const clsUPIssue& At(std::size_t at) { return static_cast<const clsUPIssue&>(window->Records().At(at)); }
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

clsUPIssue Everything() {
    clsUPIssue issue;
    issue.UPIssueName = "Tax";
    issue.Question = "Will %s pay %s%% to %s of %s?";
    issue.SubQuestion = "sub 5%% question";
    issue.Option01 = "One";
    issue.Option06 = "Six";
    issue.OptionVal01 = -5;
    issue.OptionVal06 = 60;
    issue.UPIssueAttribute = 31;
    issue.AppliesTo = 11;
    issue.Prereq = 12;
    issue.Probability = 13;
    issue.YearsInEffect = 14;
    issue.Value01 = 21;
    issue.Value02 = 22;
    issue.Value03 = 23;
    issue.Value04 = 24;
    issue.QuestionStr01 = 2;
    issue.QuestionStr02 = 5;
    issue.QuestionStr03 = 1;
    issue.QuestionStr04 = 7;
    issue.HowAIWouldVote = 7;
    return issue;
}

TEST_F(UPIssueForm, ShowsARecordAndTakesItBackUnchanged) {
    Start({Everything()});
    const std::pair<const char*, const char*> cases[]{
        {"txtUPIssueName", "Tax"},
        {"txtQuestion", "Will %s pay %s%% to %s of %s?"},
        {"txtSubQuestion", "sub 5%% question"},
        {"cboAttributeToEffect", "Screw the leading civ"},
        {"txtAppliesTo", "11"},
        {"txtPrerequisite", "12"},
        {"txtProbability", "13"},
        {"txtYearsInEffect", "14"},
        {"cboHowAIWouldVote", "Vote self if losing, otherwise friend"},
        {"cboUPIssueFile", "A.UPIssue"},
        {"txtEdited", "NO"},
        {"lblUnableToDisplay", "Unable to display picture"}};
    for (const auto& [control, text] : cases)
        EXPECT_EQ(Text(control), text) << control;
    EXPECT_THAT(Texts("txtOption_", 6), ElementsAre("One", "", "", "", "", "Six"));
    EXPECT_THAT(Texts("txtOptVal_", 6), ElementsAre("-5", "0", "0", "0", "0", "60"));
    EXPECT_THAT(Texts("txtValue_", 4), ElementsAre("21", "22", "23", "24"));
    EXPECT_THAT(Texts("cboUPIssueSubs_", 4),
                ElementsAre("Empire Name", "Selected Race", "Player Name", "Planet Name"));
    Pick("mnuEditThisIssue");
    EXPECT_TRUE(Get<QWidget>("txtQuestion")->hasFocus());
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).GenerateUPIssueString(false), Everything().GenerateUPIssueString(false));
    EXPECT_EQ(Text("txtEdited"), "YES");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(UPIssueForm, EmptiesTheForm) {
    Open<frmUPIssues>();
    for (const char* empty : {"txtUPIssueName", "txtQuestion", "txtSubQuestion", "lblWhereWeAt", "lblStatus"})
        EXPECT_EQ(Text(empty), "") << empty;
    for (const char* number : {"txtYearsInEffect", "txtAppliesTo", "txtPrerequisite", "txtProbability"})
        EXPECT_EQ(Text(number), "0") << number;
    EXPECT_THAT(Texts("txtOption_", 6), Each(""));
    EXPECT_THAT(Texts("txtOptVal_", 6), Each("0"));
    EXPECT_THAT(Texts("txtValue_", 4), Each("0"));
    EXPECT_EQ(Text("cboAttributeToEffect"), "Change number of trade routes");
    EXPECT_EQ(Text("cboHowAIWouldVote"), "Randomly vote");
    EXPECT_THAT(Entries("cboUPIssueFile"), ElementsAre("MyUPIssues.upissue"));
    EXPECT_EQ(Text("txtEdited"), "NO");
    EXPECT_FALSE(AbilityBoxShown());
}

TEST_F(UPIssueForm, GuidesByTheType) {
    Start({Good("Tax")});
    EXPECT_EQ(Text("lblAttributeStatus"), "#1 + #2 = Yes/No, #3-#6 ignored.\r");
    Pick("mnuEditThisIssue");
    struct {
        const char* Type;
        const char* Guidance;
        Strings Captions;
        bool AbilityBox;
    } const cases[]{
        {"Ability power-up",
         "Affects the specified civ-wide ability.\rYears In Effect ignored with this setting.\r"
         "Auto-lists major races as the options.",
         {"<Choose the ability to power-up.", "<Strength of new ability.", "not used", "not used"},
         true},
        {"Anomaly ownership",
         "#1 + #2 = Yes/No, #3-#6 ignored.\r",
         {"not used", "not used", "not used", "not used"},
         false},
        {"Change number of trade routes",
         "#1 + #2 = Yes/No, #3-#6 ignored.\rYears In Effect ignored with this setting.",
         {"<# of trade routes to alter.", "not used", "not used", "not used"},
         false},
        {"Galactic Olympics",
         "Increased revenue for specified number of years.\rAuto-lists major races as the options.",
         {"not used", "not used", "not used", "not used"},
         false},
    };
    for (const auto& type : cases) {
        Choose("cboAttributeToEffect", type.Type);
        EXPECT_EQ(Text("lblAttributeStatus"), type.Guidance);
        EXPECT_TRUE(Get<QLabel>("lblAttributeStatus")->isVisible());
        EXPECT_EQ(ValueCaptions(), type.Captions) << type.Type;
        EXPECT_EQ(AbilityBoxShown(), type.AbilityBox) << type.Type;
        EXPECT_TRUE(Enabled("mnuCommitChanges"));
    }
}

TEST_F(UPIssueForm, TakesTheFirstValueFromTheBoxOnShow) {
    clsUPIssue power = Good("Power");
    power.Option01.clear();
    power.OptionVal01 = 0;
    power.UPIssueAttribute = 8;
    power.Value01 = 19;
    power.Value02 = 5;
    Start({power});
    EXPECT_TRUE(AbilityBoxShown());
    EXPECT_EQ(Text("cboValue01"), "No Of Trade Routes");
    EXPECT_EQ(Text("lblValue02"), "Strength of new ability.") << "showing is not choosing";
    Pick("mnuEditThisIssue");
    const std::tuple<const char*, const char*, const char*> abilities[]{
        {"Luck", "percent", "Affects most random rolls for this player"},
        {"No Of Trade Routes", "routes", "Affects player's number of trade routes"},
        {"Ship Speed", "moves", "Affects player's Ship Speed ability"}};
    for (const auto& [ability, unit, hint] : abilities) {
        Choose("cboValue01", ability);
        EXPECT_EQ(Text("lblValue02"), unit);
        EXPECT_TRUE(Get<QLabel>("lblValue02")->alignment() & Qt::AlignHCenter);
        EXPECT_EQ(Text("lblEditStatus"), hint);
    }
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Value01, 3);
    EXPECT_EQ(At(0).Value02, 5);
    Pick("mnuEditThisIssue");
    Choose("cboAttributeToEffect", "Anomaly ownership");
    Type("txtValue_0", QStringLiteral("77"));
    Type("txtOption_0", QStringLiteral("No"));
    Type("txtOptVal_0", QStringLiteral("-1"));
    Enter("txtQuestion");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Value01, 77);
    EXPECT_EQ(At(0).UPIssueAttribute, 2);
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(UPIssueForm, HintsAtSubstitutions) {
    Start({Good("Tax")});
    Pick("mnuEditThisIssue");
    const std::pair<const char*, const char*> cases[]{
        {"Selected Race", "The race this issue targets, not always applicable"},
        {"Nothing", ""},
        {"Planet Name", "The planet this issue targets, not always applicable"},
        {"Empire Name", "Name of the human race"},
        {"Player Name", "What the player typed in at the start of the game"}};
    for (const auto& [name, hint] : cases) {
        Choose("cboUPIssueSubs_3", name);
        EXPECT_EQ(Text("lblEditStatus"), hint) << name;
    }
}

TEST_F(UPIssueForm, TellsOverlongTextsAndLiftsTheirLimits) {
    struct {
        const char* Box;
        std::string clsUPIssue::*Member;
        std::size_t Limit;
        const char* Notice;
    } const cases[]{
        {"txtQuestion", &clsUPIssue::Question, 530, "The original Question text length for this issue"},
        {"txtOption_0", &clsUPIssue::Option01, 30, "The original option text length for #1"},
        {"txtOption_5", &clsUPIssue::Option06, 30, "The original option text length for #6"}};
    for (const auto& text : cases) {
        clsUPIssue lengthy = Good("Lengthy");
        lengthy.*text.Member = std::string(text.Limit, 'x') + "%";
        clsUPIssue full = Good("Full");
        full.*text.Member = std::string(text.Limit, 'x');
        Start({lengthy, full});
        const std::string notice =
            std::string("Message: ") + text.Notice +
            " is too long and will display poorly in-game.  It has NOT been shortened, "
            "but you really ought to rewrite it.";
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(notice));
        EXPECT_EQ(At(0).*text.Member, std::string(text.Limit, 'x') + "%%");
        const auto typeMore = [&] {
            Pick("mnuEditThisIssue");
            Enter(text.Box);
            QTest::keyClick(Get<QWidget>(text.Box), Qt::Key_End, Qt::ControlModifier);
            QTest::keyClick(Get<QWidget>(text.Box), Qt::Key_End);
            QTest::keyClicks(Get<QWidget>(text.Box), QStringLiteral("more"));
            const std::size_t length = Text(text.Box).size();
            Pick("mnuDiscardChanges");
            return length;
        };
        EXPECT_EQ(typeMore(), text.Limit + 6);
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(notice)) << "each time it is shown";
        Click("cmdForward");
        EXPECT_EQ(typeMore(), text.Limit) << text.Box;
        EXPECT_THAT(prompts.Transcript, IsEmpty());
    }
}

TEST_F(UPIssueForm, ChecksTextsOnLeaving) {
    Start({Good("Tax")});
    Pick("mnuEditThisIssue");
    const std::string options = "Message[Information]: The \\n character grouping is not applicable for "
                                "Option texts.";
    const auto tooLong = [](const char* label, int length, int limit) {
        return std::string("Message[Exclamation]: ") + label + " text length (" + std::to_string(length) +
               ") higher than maximum recommended length (" + std::to_string(limit) + ")!";
    };
    struct {
        const char* Box;
        std::string Text;
        std::string Left;
        Strings Messages;
    } const cases[]{
        {"txtQuestion",
         std::string(529, 'x') + "%",
         std::string(529, 'x') + "%%",
         {tooLong("Question", 531, 530)}},
        {"txtQuestion", std::string(530, 'x'), std::string(530, 'x'), {}},
        {"txtQuestion", "line\\n50%%", "line\\n50%%", {}},
        {"txtOption_3", std::string(29, 'x') + "%", std::string(29, 'x') + "%%", {tooLong("Option", 31, 30)}},
        {"txtOption_3", std::string(30, 'x'), std::string(30, 'x'), {}},
        {"txtOption_5", "a\\Nb", "a\\Nb", {options}},
        {"txtOption_0",
         "\\n" + std::string(29, 'x'),
         "\\n" + std::string(29, 'x'),
         {tooLong("Option", 31, 30), options}},
    };
    for (const auto& leave : cases) {
        if (auto* line = qobject_cast<LineBox*>(Get<QWidget>(leave.Box)))
            line->SetBytes(leave.Text);
        else
            Get<TextBox>(leave.Box)->SetBytes(leave.Text);
        Enter(leave.Box);
        Enter("cboHowAIWouldVote");
        EXPECT_EQ(Text(leave.Box), leave.Left);
        EXPECT_EQ(prompts.TakeTranscript(), leave.Messages) << leave.Text;
    }
    for (const char* box : {"txtQuestion", "txtOption_2"}) {
        Type(box, QStringLiteral("a\"b"));
        QTest::keyClick(Get<QWidget>(box), Qt::Key_Return);
        EXPECT_EQ(Text(box), "a'b");
    }
}

TEST_F(UPIssueForm, HoldsTheFocusInEveryNumberField) {
    Start({Good("Tax")});
    Pick("mnuEditThisIssue");
    for (const char* number :
         {"txtOptVal_0", "txtOptVal_5", "txtValue_0", "txtValue_1", "txtYearsInEffect"}) {
        Type(number, QString());
        Get<QWidget>("txtQuestion")->setFocus();
        EXPECT_TRUE(Get<QWidget>(number)->hasFocus()) << number;
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre("Message: Sorry, this field must contain a numeric value"));
        Type(number, QStringLiteral("3"));
        Enter("txtQuestion");
    }
}

TEST_F(UPIssueForm, NeverTypesIntoLockedFields) {
    Start({Everything()});
    Pick("mnuEditThisIssue");
    for (const char* locked : {"txtSubQuestion", "txtValue_2", "txtValue_3", "txtPrerequisite",
                               "txtAppliesTo", "txtProbability", "txtEdited"}) {
        const std::string before = Text(locked);
        Type(locked, QStringLiteral("9"));
        EXPECT_EQ(Text(locked), before) << locked;
        EXPECT_TRUE(Enabled(locked)) << locked;
    }
    EXPECT_TRUE(Get<LineBox>("txtUPIssueName")->isReadOnly());
    Enter("txtQuestion");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).GenerateUPIssueString(false), Everything().GenerateUPIssueString(false));
}

TEST_F(UPIssueForm, ListsReasonsAndLetsTheAuthorDecide) {
    Start({Good("Tax")});
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
    EXPECT_THAT(prompts.Transcript, Each(::testing::StartsWith("Ask[No default]: ")));
    EXPECT_EQ(prompts.Transcript.size(), 2u);
}

TEST_F(UPIssueForm, FailsWhenAnOptionValueIsNoNumber) {
    Start({Good("Tax")});
    Pick("mnuEditThisIssue");
    Get<LineBox>("txtOptVal_2")->SetBytes("two");
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Number, 13);
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("frmUPIssues_mnuCommitChanges_Click",
                                                     "frmUPIssues_SaveUPIssue", "frmUPIssues_ValidateData"));
    EXPECT_TRUE(Enabled("mnuCommitChanges"));
    EXPECT_FALSE(At(0).IsDirty);
}

TEST_F(UPIssueForm, ReviewsTheQuestion) {
    clsUPIssue five = Good("Five");
    five.Question = "%s%s%s%s%s!\\nEnd";
    Start({Everything(), five});
    Pick("mnuIssueText");
    Click("cmdForward");
    Pick("mnuIssueText");
    EXPECT_THAT(
        prompts.Transcript,
        ElementsAre("Message: Will [EMPIRE NAME] pay [SELECTED RACE]% to [PLAYER NAME] of [PLANET NAME]?",
                    "Message: [NOTHING][NOTHING][NOTHING][NOTHING]!|End"));
}

TEST_F(UPIssueForm, TellsATakenNameInItsOwnWords) {
    Start({Good("Tax")});
    prompts.ExpectInput("", "TAX").ExpectInput("", "TAX").ExpectInput("", "New");
    Pick("mnuAddNew");
    Pick("mnuCopyAsNew");
    EXPECT_EQ(prompts.Transcript[1], "Message: The chosen name matches that of an existing UP Issue.  The UP "
                                     "Issue name must be unique, please try again.");
    EXPECT_EQ(prompts.Transcript[3],
              "Message: The chosen name matches that of an existing UPIssue.  The UPIssue "
              "name must be unique, please try again.");
    Pick("mnuAddNew");
    EXPECT_EQ(Text("txtProbability"), "0");
}

TEST_F(UPIssueForm, ZoomsToANameOrAFile) {
    Put("B.UPIssue", {Good("Ban"), Good("Cease")});
    Start({Good("Tax")});
    const std::tuple<const char*, const char*, const char*, const char*> cases[]{
        {"mnuZoomTo", "Zoom To UP Issue Name", "Cease", "Question"},
        {"mnuZoomToUPIssueFile", "Zoom To UP Issue File", "B.UPIssue",
         "UP Issues contained in this file:\nBan, Cease"}};
    Strings shown;
    for (const auto& [item, title, entry, blurb] : cases) {
        ModalAnswers answers;
        answers.Expect<frmZoomTo>([&, title = title, entry = entry, blurb = blurb](frmZoomTo& dialog) {
            auto* box = dialog.findChild<ChoiceBox*>(QStringLiteral("cboZoomTo"));
            EXPECT_EQ(dialog.windowTitle(), QString::fromLatin1(title));
            box->setCurrentIndex(box->findText(QString::fromLatin1(entry)));
            EXPECT_EQ(FromQt(dialog.findChild<QLabel*>(QStringLiteral("lblBlurb"))->text()), blurb);
            dialog.findChild<QAbstractButton*>(QStringLiteral("cmdGo"))->click();
        });
        Pick(item);
        shown.push_back(Text("txtUPIssueName"));
    }
    EXPECT_THAT(shown, ElementsAre("Cease", "Ban"));
}

TEST_F(UPIssueForm, ReportsFailuresUnderTheirRoutines) {
    clsUPIssue lengthy = Good("Lengthy");
    lengthy.Option06 = std::string(31, 'x');
    Start({Good("Tax"), lengthy});
    ExpectFailureRoads({
        {"cmdForward", {"cmdForward_Click", "PopulateForm"}},
        {"cmdBack", {"cmdBack_Click", "PopulateForm"}},
        {"mnuAddNew", {"mnuAddNew_Click"}},
        {"mnuCopyAsNew", {"mnuCopyAsNew_Click"}},
        {"mnuDelete", {"mnuDelete_Click"}},
        {"mnuRenameThisFile", {"mnuRenameThisFile_Click"}},
        {"mnuMoveThisUPIssueToANewFile", {"mnuMoveThisUPIssueToANewFile_Click"}},
        {"mnuIssueText", {"mnuIssueText_Click", "DisplayReview"}},
        {"mnuViewInstructionsFile", {"mnuViewInstructionsFile_Click"}},
    });
    Pick("mnuEditThisIssue");
    ReleaseCatalogues();
    ExpectFailureRoads({{"mnuCommitChanges", {"mnuCommitChanges_Click", "SaveUPIssue"}}});
    BuildCatalogues();
    Pick("mnuDiscardChanges");
    temp.Write("Game/Data/UP_Issues/A.UPIssue", lengthy.GenerateUPIssueString(false));
    window->close();
    Reopen();
    ExpectFailureRoads({
        {"mnuSortAlphabetically", {"mnuSortAlphabetically_Click", "SortBy", "PopulateForm"}},
        {"mnuSortByFilename", {"mnuSortByFilename_Click", "SortBy", "PopulateForm"}},
    });
}

} // namespace
} // namespace velmora
