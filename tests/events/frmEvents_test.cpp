// The event editor's own form, checks and texts; what all editors do alike is tested once for all of them.
#include "events/frmEvents.h"

#include "editor/Editors.h"

#include <QAbstractItemView>

namespace velmora {
namespace {

const char* const TypeQuestion =
    "Switching between the Colonial and Random event types necessitates a rebuilding of the Attribute drop "
    "down boxes, as you have completely different choices between the two event types.  If you proceed, all "
    "attribute choices will be set to 'No Effect'.  Do you wish to continue with this operation?||(This "
    "message will only be displayed once per session)";

class EventForm : public FormOf<frmEvents, clsEvent> {
  protected:
    EventForm() : FormOf(EventEditor) {}

    std::string TypeOnShow() { return Ticked({"optColonial", "optRandom"}); }
    std::string Morality() {
        return Ticked({"optMorality_0", "optMorality_1", "optMorality_2", "optMorality_3", "optMorality_4"});
    }
};

/// An event with a value of its own for every key.
const std::string Everything =
    "EVENT Raid\nTitle \"Na\xEFve\"\nDescription \"%s and %s and %s and %s\"\nImage \"Gfx\\\\P.pcx\"\n"
    "GoodOption \"%s good %s\"\nNeutralOption \"%s neutral %s\"\nEvilOption \"%s evil %s\"\nEventType 1\n"
    "GoodAttribute 200\nNeutralAttribute 103\nEvilAttribute 119\nGoodValue 1\nNeutralValue -2\nEvilValue 3\n"
    "GoodPopChange 4\nNeutralPopChange 5\nEvilPopChange -2147483648\nMoralityWeight 4\nProbability 77\n"
    "DescStr01 1\nDescStr02 2\nDescStr03 7\nDescStr04 9\nGoodOptStr01 11\nGoodOptStr02 1\n"
    "NeutralOptStr01 7\nNeutralOptStr02 10\nEvilOptStr01 2\nEvilOptStr02 10\nENDEVENT\n";

TEST_F(EventForm, ShowsARecordAndTakesItBackUnchanged) {
    Start(Everything);
    const std::string before = BlockAt(0);
    EXPECT_THAT(TextsOf({"txtEventName", "txtTitle", "txtDescription", "txtGoodOption", "txtNeutralOption",
                         "txtEvilOption", "txtImagePath", "txtEdited", "cboEventFile", "lblUnableToDisplay"}),
                ElementsAre("Raid", "Na\xEFve", "%s and %s and %s and %s", "%s good %s", "%s neutral %s",
                            "%s evil %s", Settings.GamePath + R"(Gfx\\P.pcx)", "NO", "A.event",
                            "Unable to display picture"));
    EXPECT_THAT(TextsOf(editor.NumberFields), ElementsAre("1", "-2", "3", "4", "5", "-2147483648", "77"));
    EXPECT_EQ(TypeOnShow(), "optRandom");
    EXPECT_EQ(Morality(), "optMorality_3");
    EXPECT_THAT(Texts("cboAttributeDropDown_", 3),
                ElementsAre("Cash-o-la", "Ship Speed", "No Of Trade Routes"));
    EXPECT_THAT(Texts("lblUnit_", 3), ElementsAre("BC", "Moves", "Routes"));
    EXPECT_THAT(Texts("lblEffects_", 3), Each("Affects player's entire civilization"));
    EXPECT_THAT(Texts("cboDescStr_", 10),
                ElementsAre("Player Name", "Empire Name", "Planet Name", "Evil Value", "Good Value",
                            "Player Name", "Planet Name", "Neutral Value", "Empire Name", "Neutral Value"));
    Pick("mnuEditThisEvent");
    Pick("mnuCommitChanges");
    EXPECT_EQ(Text("txtEdited"), "YES");
    EXPECT_THAT(prompts.TakeTranscript(), IsEmpty());
    EXPECT_EQ(BlockAt(0), before);
}

TEST_F(EventForm, EmptiesTheForm) {
    Open<frmEvents>();
    EXPECT_THAT(TextsOf({"txtEventName", "txtTitle", "txtDescription", "txtGoodOption", "txtNeutralOption",
                         "txtEvilOption", "lblWhereWeAt", "lblStatus"}),
                Each(""));
    EXPECT_THAT(TextsOf(editor.NumberFields), Each("0"));
    EXPECT_THAT(TextsOf({"txtImagePath", "cboEventFile", "txtEdited", "lblEditStatus"}),
                ElementsAre(Settings.GamePath, "MyEvents.event", "NO", "READ ONLY"));
    EXPECT_THAT(Entries("cboEventFile"), ElementsAre("MyEvents.event"));
    EXPECT_EQ(TypeOnShow(), "optColonial");
    EXPECT_EQ(Morality(), "optMorality_0");
    EXPECT_THAT(Texts("cboAttributeDropDown_", 3), Each("No Effect"));
    EXPECT_EQ(Entries("cboAttributeDropDown_1").size(), ColonialEventAttributes.Count());
    EXPECT_THAT(Texts("cboDescStr_", 10), Each("Nothing"));
}

TEST_F(EventForm, MakesShownValuesLegalInTheRecord) {
    const std::tuple<std::int32_t, const char*, std::int32_t> cases[]{
        {0, "optMorality_0", 1}, {-7, "optMorality_0", 1}, {3, "optMorality_2", 3}, {9, "optMorality_4", 5}};
    std::vector<clsEvent> events;
    for (const auto& [weight, button, legal] : cases) {
        events.push_back(SoundEvent("E" + std::to_string(events.size())));
        events.back().MoralityWeight = weight;
        events.back().EvilOption = "5% or 5%%";
        events.back().DescStr01 = 3;
    }
    Start(events);
    for (std::size_t i = 0; i < events.size(); ++i) {
        const auto& [weight, button, legal] = cases[i];
        EXPECT_EQ(Morality(), button) << weight;
        EXPECT_EQ(At(i).MoralityWeight, legal);
        EXPECT_EQ(At(i).EvilOption, "5%% or 5%%");
        EXPECT_FALSE(At(i).IsDirty);
        EXPECT_EQ(Text("cboDescStr_0"), "Nothing");
        Click("cmdForward");
    }
    Pick("mnuEditThisEvent");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).DescStr01, 0);
}

TEST_F(EventForm, PutsTheCaretBehindThePathOnEntry) {
    Start({SoundEvent("Raid")});
    Pick("mnuEditThisEvent");
    for (const char* box : {"txtTitle", "txtEdited"}) {
        Enter(box);
        EXPECT_EQ(FromQt(Get<LineBox>(box)->selectedText()), Text(box));
    }
    Enter("txtImagePath");
    EXPECT_FALSE(Get<LineBox>("txtImagePath")->hasSelectedText());
    EXPECT_EQ(Get<LineBox>("txtImagePath")->cursorPosition(), static_cast<int>(Text("txtImagePath").size()));
}

TEST_F(EventForm, AsksOnceBeforeItSwitchesTheType) {
    Start(Everything);
    Pick("mnuEditThisEvent");
    Click("optRandom");
    prompts.ExpectAsk(TypeQuestion, false);
    Click("optColonial");
    EXPECT_EQ(TypeOnShow(), "optRandom");
    EXPECT_EQ(Text("cboAttributeDropDown_0"), "Cash-o-la");
    Click("optColonial");
    EXPECT_EQ(TypeOnShow(), "optColonial");
    EXPECT_THAT(Texts("cboAttributeDropDown_", 3), Each("No Effect"));
    EXPECT_THAT(Texts("lblUnit_", 3), Each("%"));
    EXPECT_EQ(Entries("cboAttributeDropDown_2").size(), ColonialEventAttributes.Count());
    EXPECT_THAT(Texts("lblEffects_", 3), Each("Affects player's entire civilization"));
    Choose("cboAttributeDropDown_2", "Morale Bonus");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).EventType, 0);
    EXPECT_EQ(At(0).EvilAttribute, 2);
    EXPECT_THAT(Texts("lblEffects_", 3), Each("Affects only this colony"));
    prompts.ExpectAsk("", true);
    window->close();
    Reopen();
    Pick("mnuEditThisEvent");
    Click("optColonial");
    EXPECT_THAT(Texts("cboAttributeDropDown_", 3), Each("No Effect"));
    EXPECT_EQ(prompts.Questions.size(), 2u) << "once a session, whatever was opened and closed";
}

TEST_F(EventForm, HintsAtWhatIsPicked) {
    Start(Everything);
    Pick("mnuEditThisEvent");
    struct {
        const char* Box;
        const char* Entry;
        const char* Hint;
        const char* Unit;
    } const cases[]{
        {"cboAttributeDropDown_1", "Luck", "Affects most random rolls for this player", "%"},
        {"cboAttributeDropDown_1", "Ship Speed", "Affects player's Ship Speed ability", "Moves"},
        {"cboAttributeDropDown_1", "No Of Trade Routes", "Affects player's number of trade routes", "Routes"},
        {"cboAttributeDropDown_1", "No Effect", "", "%"},
        {"cboDescStr_9", "Good Value", "Random value of the GOOD option", "%"},
        {"cboDescStr_9", "Nothing", "", "%"},
        {"cboDescStr_0", "Empire Name", "Name of the human race", "%"},
    };
    for (const auto& pick : cases) {
        Choose(pick.Box, pick.Entry);
        EXPECT_EQ(Text("lblEditStatus"), pick.Hint) << pick.Entry;
        EXPECT_EQ(Text("lblUnit_1"), pick.Unit) << pick.Entry;
        EXPECT_TRUE(Enabled("mnuCommitChanges"));
    }
    for (const auto& [box, hint] : {std::pair{"cboDescStr_4", "Random value of the GOOD option"},
                                    std::pair{"cboDescStr_0", "Name of the human race"}}) {
        auto* choice = Get<ChoiceBox>(box);
        choice->showPopup();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(choice->view()->window()));
        QTest::keyClick(choice->view(), Qt::Key_Return);
        EXPECT_EQ(Text("lblEditStatus"), hint) << "an entry chosen again";
    }
    EXPECT_EQ(At(0).NeutralAttribute, 103) << "nothing changes before the commit";
    SetText("txtProbability", "none");
    prompts.ExpectAsk("", true);
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Parameters, "<False>") << "a hint stands where the mode is read";
}

TEST_F(EventForm, BrowsesForAPicture) {
    temp.Write("Game/Art/New.pcx", "x");
    const std::string picked = temp / "Game/Art/New.pcx";
    Start({SoundEvent("Raid")});
    Pick("mnuEditThisEvent");
    prompts.ExpectPickFile("Select your picture", "").ExpectPickFile("Select your picture", picked);
    Click("cmdBrowseForPicture");
    EXPECT_EQ(Text("txtImagePath"), Settings.GamePath + R"(Gfx\\P.pcx)");
    Click("cmdBrowseForPicture");
    EXPECT_EQ(prompts.FileRequests.back().Folder, Settings.GamePath + "GFX\\");
    EXPECT_EQ(prompts.FileRequests.back().Pattern, "*.pcx");
    EXPECT_EQ(prompts.FileRequests.back().FilterText, "PCX files (*.pcx)");
    EXPECT_EQ(Text("txtImagePath"), picked);
    for (int again = 0; again < 3; ++again) {
        Pick("mnuCommitChanges");
        EXPECT_EQ(At(0).Image, R"(Art\\New.pcx)");
        EXPECT_EQ(Text("txtImagePath"), Settings.GamePath + R"(Art\\New.pcx)");
        Pick("mnuEditThisEvent");
    }
}

TEST_F(EventForm, ListsReasonsAndLetsTheAuthorDecide) {
    Start({SoundEvent("Raid")});
    Pick("mnuEditThisEvent");
    for (const char* box : {"txtTitle", "txtDescription", "txtEvilOption"})
        Type(box, QString());
    Type("txtImagePath", ToQt(Settings.GamePath));
    Type("txtNeutralOption", QStringLiteral("%s%s%s"));
    Choose("cboDescStr_4", "Player Name");
    const std::string question =
        "Failed validation!  Reasons: ||No Title text set, please specify a title.|"
        "Unable to locate specified image file.|"
        "No Description text set, please specify a Description.|"
        "No Evil option text set, please specify a Evil option.|"
        "No wild cards in the Good Option text, but Wild Card subs were set.|"
        "1 Wild Card Sub boxes were set, but there are 0 '%s' character groupings in the Good Option text.|"
        "Too many wild cards in the Neutral Option text (3) !  You are limited to 2 wild cards.|"
        "The number or placement of wild cards (%s) used in the Neutral Option text do not match the number "
        "of wild card subs set using the drop down boxes.|"
        "The number or placement of wild cards (%s) used in the Neutral Option text do not match the number "
        "of wild card subs set using the drop down boxes.|"
        "0 Wild Card Sub boxes were set, but there are 2 '%s' character groupings in the Neutral Option "
        "text.||Do you still wish to proceed? (proceeding in this state might render Velmora inoperative)";
    prompts.ExpectAsk(question, false).ExpectAsk(question, true);
    Pick("mnuCommitChanges");
    EXPECT_TRUE(Enabled("txtTitle"));
    EXPECT_EQ(Text("txtNeutralOption"), "%s%s%s");
    EXPECT_EQ(At(0).Title, "Title");
    EXPECT_FALSE(At(0).IsDirty);
    Pick("mnuCommitChanges");
    EXPECT_THAT(prompts.Transcript, Each(StartsWith("Ask[No default]: ")));
    EXPECT_EQ(At(0).Title, "");
    EXPECT_EQ(At(0).GoodOptStr01, 1);
    EXPECT_EQ(Text("lblStatus"), "EDITED, PENDING A WRITE TO FILE");
    Pick("mnuEditThisEvent");
    Type("txtTitle", QStringLiteral(" "));
    prompts.ExpectAsk("", false);
    Pick("mnuCommitChanges");
    EXPECT_THAT(prompts.Transcript.back(),
                StartsWith("Ask[No default]: Failed validation!  Reasons: ||Unable"));
}

TEST_F(EventForm, ReviewsWhatTheFormHolds) {
    std::string block =
        ReplaceAll(Everything, "%s and %s and %s and %s", R"(Hello %s, welcome to %S.\n100%% %s %s%s!)");
    block = ReplaceAll(block, "%s good %s", "%s|%s|%s");
    Start(ReplaceAll(block, "%s evil %s", "none"));
    const std::pair<const char*, const char*> cases[]{
        {"mnuReviewDescription",
         "Hello [PLAYER NAME], welcome to [EMPIRE NAME].|100% [PLANET NAME] [EVIL VALUE]!"},
        {"mnuReviewGood", "[GOOD VALUE]|[PLAYER NAME]|[]"},
        {"mnuReviewNeutral", "[PLANET NAME] neutral [NEUTRAL VALUE]"},
        {"mnuReviewEvil", "none"}};
    for (const auto& [item, text] : cases) {
        Pick(item);
        EXPECT_EQ(prompts.Transcript.back(), std::string("Message: ") + text) << item;
    }
    Pick("mnuEditThisEvent");
    Type("txtEvilOption", QStringLiteral("typed %s"));
    Pick("mnuReviewEvil");
    EXPECT_EQ(prompts.Transcript.back(), "Message: typed [EMPIRE NAME]");
}

TEST_F(EventForm, KeepsEventsOfTheGamesOwnFiles) {
    for (const char* own : {"CoreEvents.event", "bonusevents.EVENT"}) {
        std::filesystem::remove_all(temp.Host() / "Game/Data");
        temp.Write(editor.Folder + own, Everything);
        Start({SoundEvent("Apple"), SoundEvent("Berry")});
        EXPECT_THAT(Entries("cboEventFile"), ElementsAre("A.event", "MyEvents.event"));
        EXPECT_TRUE(Enabled("mnuRenameThisFile"));
        Click("cmdBack");
        EXPECT_EQ(Text("txtEventName"), "Raid");
        EXPECT_THAT(Entries("cboEventFile"), ElementsAre(own));
        EXPECT_FALSE(Enabled("mnuRenameThisFile"));
        EXPECT_FALSE(Enabled("mnuMoveThisEventToANewFile"));
        for (const char* item :
             {"mnuEditThisEvent", "mnuAddNew", "mnuCopyAsNew", "mnuDelete", "mnuWriteToFile"})
            EXPECT_TRUE(Enabled(item)) << item;
        Pick("mnuEditThisEvent");
        EXPECT_FALSE(Enabled("cboEventFile"));
        EXPECT_TRUE(Enabled("cboAttributeDropDown_0"));
        Pick("mnuDiscardChanges");
        prompts.ExpectInput("", "Copied");
        Pick("mnuCopyAsNew");
        EXPECT_TRUE(Enabled("cboEventFile"));
        Pick("mnuCommitChanges");
        EXPECT_EQ(BlockAt(3), ReplaceAll(BlockAt(2), "EVENT Raid", "EVENT Copied"));
        EXPECT_EQ(At(3).ShortName, "MyEvents.event");
        EXPECT_EQ(At(3).FileName, Settings.DataPath + "MyEvents.event");
        prompts.ExpectAsk("", true);
        EXPECT_TRUE(window->close());
    }
}

TEST_F(EventForm, RefusesTheGamesOwnFileNames) {
    Start({SoundEvent("Raid")});
    const std::string move = "You may not use the base Velmora event filenames (BonusEvents or CoreEvents).";
    const std::string rename = "Sorry, but you may not rename this file to ";
    const std::tuple<const char*, const char*, std::string> cases[]{
        {"mnuRenameThisFile", "coreevents", rename + "coreevents as this is a reserved Velmora name."},
        {"mnuRenameThisFile", "BonusEvents.EVENT",
         rename + "BonusEvents as this is a reserved Velmora name."},
        {"mnuMoveThisEventToANewFile", "COREevents", move},
        {"mnuMoveThisEventToANewFile", "BonusEvents.Event", move}};
    for (const auto& [item, answer, message] : cases) {
        prompts.ExpectInput("", answer);
        Pick(item);
        EXPECT_EQ(prompts.Transcript.back(), "Message: " + message);
        EXPECT_EQ(At(0).ShortName, "A.event");
        EXPECT_FALSE(At(0).IsDirty);
    }
    prompts.ExpectInput("", ".event").ExpectInput("", "CoreEvents2");
    Pick("mnuRenameThisFile");
    Pick("mnuRenameThisFile");
    EXPECT_EQ(Text("cboEventFile"), "CoreEvents2.event");
}

TEST_F(EventForm, ReportsItsOwnFailuresUnderTheirRoutines) {
    Start({SoundEvent("Apple")});
    Pick("mnuEditThisEvent");
    ExpectFailureRoads({{"optRandom"}, {"cmdBrowseForPicture"}});
    SetText("txtTitle", "");
    ExpectFailureRoads({{"mnuCommitChanges", {"SaveEvent", "ValidateData"}}});
}

} // namespace
} // namespace velmora
