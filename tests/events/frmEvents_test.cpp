// The event editor's own form, checks and texts; what all editors do alike is tested once for all of them.
#include "events/frmEvents.h"

#include "editor/Editors.h"

#include <QAbstractItemView>

namespace velmora {
namespace {

class EventForm : public FormOf<frmEvents, clsEvent> {
  protected:
    EventForm() : FormOf(EventEditor) {}

    std::string TypeOnShow() { return Ticked({"optColonial", "optRandom"}); }
    std::string Morality() {
        return Ticked({"optMorality_0", "optMorality_1", "optMorality_2", "optMorality_3", "optMorality_4"});
    }
    Strings Attributes() { return Texts("cboAttributeDropDown_", 3); }
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
    EXPECT_THAT(Attributes(), ElementsAre("Cash-o-la", "Ship Speed", "No Of Trade Routes"));
    EXPECT_THAT(Texts("lblUnit_", 3), ElementsAre("BC", "Moves", "Routes"));
    EXPECT_THAT(Texts("cboDescStr_", 10),
                ElementsAre("Player Name", "Empire Name", "Planet Name", "Evil Value", "Good Value",
                            "Player Name", "Planet Name", "Neutral Value", "Empire Name", "Neutral Value"));
    Pick("mnuEditThisEvent");
    Pick("mnuCommitChanges");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(BlockAt(0), before);
}

TEST_F(EventForm, EmptiesTheForm) {
    Open<frmEvents>();
    EXPECT_THAT(TextsOf({"txtTitle", "txtImagePath", "cboEventFile", "txtProbability", "cboDescStr_9"}),
                ElementsAre("", Settings.GamePath, "MyEvents.event", "0", "Nothing"));
    EXPECT_EQ(TypeOnShow(), "optColonial");
    EXPECT_EQ(Morality(), "optMorality_0");
    EXPECT_THAT(Attributes(), Each("No Effect"));
}

TEST_F(EventForm, MakesShownValuesLegalInTheRecord) {
    for (const auto& [weight, legal] : {std::pair{-7, 1}, {3, 3}, {9, 5}}) {
        clsEvent event = SoundEvent("Raid");
        event.MoralityWeight = weight;
        event.EvilOption = "5% or 5%%";
        event.DescStr01 = 3; // stands for nothing
        Start({event});
        EXPECT_EQ(Morality(), "optMorality_" + std::to_string(legal - 1));
        EXPECT_EQ(At(0).MoralityWeight, legal);
        EXPECT_EQ(At(0).EvilOption, "5%% or 5%%");
        EXPECT_FALSE(At(0).IsDirty);
    }
    Pick("mnuEditThisEvent");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).DescStr01, 0);
}

TEST_F(EventForm, AsksOnceASessionBeforeItSwitchesTheType) {
    Start(Everything);
    Pick("mnuEditThisEvent");
    Click("optRandom");
    prompts.ExpectAsk(
        "Switching between the Colonial and Random event types necessitates a rebuilding of the Attribute "
        "drop down boxes, as you have completely different choices between the two event types.  If you "
        "proceed, all attribute choices will be set to 'No Effect'.  Do you wish to continue with this "
        "operation?||(This message will only be displayed once per session)",
        false);
    Click("optColonial");
    EXPECT_EQ(TypeOnShow(), "optRandom");
    EXPECT_EQ(Text("cboAttributeDropDown_0"), "Cash-o-la");
    Click("optColonial");
    EXPECT_THAT(Attributes(), Each("No Effect"));
    EXPECT_THAT(Texts("lblEffects_", 3), Each("Affects player's entire civilization"));
    Choose("cboAttributeDropDown_2", "Morale Bonus");
    Click("optColonial");
    EXPECT_THAT(Texts("lblUnit_", 3), Each("%"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).EventType, 0);
    EXPECT_EQ(At(0).EvilAttribute, 2);
    EXPECT_THAT(Texts("lblEffects_", 3), Each("Affects only this colony"));
    prompts.ExpectAsk("", true);
    window->close();
    Reopen();
    Pick("mnuEditThisEvent");
    Click("optColonial");
}

TEST_F(EventForm, HintsAtWhatIsPicked) {
    Start(Everything);
    Pick("mnuEditThisEvent");
    Choose("cboAttributeDropDown_1", "Luck");
    EXPECT_THAT(TextsOf({"lblEditStatus", "lblUnit_1"}),
                ElementsAre("Affects most random rolls for this player", "%"));
    Choose("cboAttributeDropDown_2", "Ship Speed");
    EXPECT_THAT(TextsOf({"lblEditStatus", "lblUnit_2"}),
                ElementsAre("Affects player's Ship Speed ability", "Moves"));
    Choose("cboDescStr_0", "Empire Name");
    EXPECT_EQ(Text("lblEditStatus"), "Name of the human race");
    auto* choice = Get<ChoiceBox>("cboDescStr_9");
    choice->showPopup();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(choice->view()->window()));
    QTest::keyClick(choice->view(), Qt::Key_Return);
    EXPECT_EQ(Text("lblEditStatus"), "Random value of the NEUTRAL option") << "an entry chosen again";
    EXPECT_EQ(At(0).NeutralAttribute, 103) << "nothing changes before the commit";
    SetText("txtProbability", "none");
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
    const FileRequest& request = prompts.FileRequests.back();
    EXPECT_THAT((Strings{request.Folder, request.Pattern, request.FilterText}),
                ElementsAre(Settings.GamePath + "GFX\\", "*.pcx", "PCX files (*.pcx)"));
    EXPECT_EQ(Text("txtImagePath"), picked);
    auto* path = Get<LineBox>("txtImagePath");
    Enter("txtImagePath");
    EXPECT_FALSE(path->hasSelectedText()) << "unlike other boxes";
    EXPECT_EQ(path->cursorPosition(), static_cast<int>(picked.size()));
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Image, R"(Art\\New.pcx)");
    EXPECT_EQ(Text("txtImagePath"), Settings.GamePath + R"(Art\\New.pcx)");
}

TEST_F(EventForm, LeavesAPictureAloneThatNobodyChose) {
    temp.Write("Game/GFX/Raid.pcx", "x");
    clsEvent event = SoundEvent("Raid");
    event.Image = "Gfx/Raid.pcx";
    Start({event});
    Pick("mnuEditThisEvent");
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Image, "Gfx/Raid.pcx");
    EXPECT_TRUE(At(0).IsDirty);
    Pick("mnuEditThisEvent");
    Type("txtImagePath", ToQt(Settings.GamePath + "Gfx/P.pcx"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).Image, R"(Gfx\\P.pcx)");
}

TEST_F(EventForm, ListsReasonsAndLetsTheAuthorDecide) {
    Start({SoundEvent("Raid")});
    Pick("mnuEditThisEvent");
    Enter("txtTitle");
    EXPECT_TRUE(Get<LineBox>("txtTitle")->hasSelectedText());
    QTest::keyClick(Get<LineBox>("txtTitle"), Qt::Key_Delete);
    Type("txtImagePath", ToQt(Settings.GamePath));
    const std::string question =
        "Failed validation!  Reasons: ||No Title text set, please specify a title.|"
        "Unable to locate specified image file.||"
        "Do you still wish to proceed? (proceeding in this state might render Velmora inoperative)";
    prompts.ExpectAsk(question, false).ExpectAsk(question, true);
    Pick("mnuCommitChanges");
    EXPECT_TRUE(Enabled("txtTitle"));
    EXPECT_EQ(At(0).Title, "Title");
    EXPECT_FALSE(At(0).IsDirty);
    Pick("mnuCommitChanges");
    EXPECT_THAT(prompts.Transcript, Each(StartsWith("Ask[No default]: ")));
    EXPECT_EQ(At(0).Title, "");
}

TEST_F(EventForm, ReviewsWhatTheFormHolds) {
    Start(Everything);
    Pick("mnuEditThisEvent");
    Type("txtEvilOption", QStringLiteral("typed %s"));
    for (const std::string& item : editor.ReviewItems)
        Pick(item);
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("Message: [PLAYER NAME] and [EMPIRE NAME] and [PLANET NAME] and [EVIL VALUE]",
                            "Message: [GOOD VALUE] good [PLAYER NAME]",
                            "Message: [PLANET NAME] neutral [NEUTRAL VALUE]",
                            "Message: typed [EMPIRE NAME]"));
}

TEST_F(EventForm, KeepsEventsOfTheGamesOwnFiles) {
    temp.Write(editor.Folder + "bonusevents.EVENT", Everything);
    temp.Write(editor.Folder + "CoreEvents.event", "");
    Start({SoundEvent("Apple")});
    EXPECT_THAT(Entries("cboEventFile"), ElementsAre("A.event", "MyEvents.event"));
    EXPECT_TRUE(Enabled("mnuRenameThisFile"));
    Click("cmdForward");
    EXPECT_THAT(Entries("cboEventFile"), ElementsAre("bonusevents.EVENT"));
    for (const char* item : {"mnuRenameThisFile", "mnuMoveThisEventToANewFile"})
        EXPECT_FALSE(Enabled(item)) << item;
    Pick("mnuEditThisEvent");
    EXPECT_FALSE(Enabled("cboEventFile"));
    EXPECT_TRUE(Enabled("cboAttributeDropDown_0"));
    Pick("mnuDiscardChanges");
    prompts.ExpectInput("", "Copied");
    Pick("mnuCopyAsNew");
    EXPECT_TRUE(Enabled("cboEventFile"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(BlockAt(2), ReplaceAll(BlockAt(1), "EVENT Raid", "EVENT Copied"));
    EXPECT_EQ(At(2).FileName, Settings.DataPath + "MyEvents.event");
}

TEST_F(EventForm, RefusesTheGamesOwnFileNames) {
    Start({SoundEvent("Raid")});
    prompts.ExpectInput("", "BonusEvents.EVENT").ExpectInput("", "COREevents");
    Pick("mnuRenameThisFile");
    EXPECT_EQ(prompts.Transcript.back(), "Message: Sorry, but you may not rename this file to BonusEvents as "
                                         "this is a reserved Velmora name.");
    Pick("mnuMoveThisEventToANewFile");
    EXPECT_EQ(prompts.Transcript.back(), "Message: You may not use the base Velmora event filenames "
                                         "(BonusEvents or CoreEvents).");
    EXPECT_EQ(At(0).ShortName, "A.event");
    EXPECT_FALSE(At(0).IsDirty);
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
