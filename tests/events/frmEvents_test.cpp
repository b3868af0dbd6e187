// The event editor's own form, checks and texts; what all editors do alike is tested once for all of them.
#include "events/frmEvents.h"

#include "editor/EditorFixture.h"
#include "editor/ModalAnswers.h"
#include "editor/frmZoomTo.h"

namespace velmora {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Strings = std::vector<std::string>;

const char* const TypeQuestion =
    "Switching between the Colonial and Random event types necessitates a rebuilding of the Attribute drop "
    "down boxes, as you have completely different choices between the two event types.  If you proceed, all "
    "attribute choices will be set to 'No Effect'.  Do you wish to continue with this operation?||(This "
    "message will only be displayed once per session)";

class EventForm : public WindowTest {
  protected:
    EventForm() { temp.Write("Game/GFX/P.pcx", "no picture, but there"); }

    static clsEvent Good(const std::string& name) {
        clsEvent event;
        event.EventName = name;
        event.Title = "Title";
        event.Description = "Description";
        event.Image = R"(Gfx\\P.pcx)";
        event.GoodOption = event.NeutralOption = event.EvilOption = "Option";
        event.MoralityWeight = 1;
        return event;
    }
    void Put(const std::string& file, const std::vector<clsEvent>& events) {
        std::string text;
        for (const clsEvent& event : events)
            text += event.GenerateEventString(false);
        temp.Write("Game/Data/" + file, text);
    }
    void Start(const std::vector<clsEvent>& events) {
        Put("A.event", events);
        Open<frmEvents>();
    }
    const clsEvent& At(std::size_t at) { return static_cast<const clsEvent&>(window->Records().At(at)); }
    std::string Shown() { return Text("txtEventName") + ", " + Text("lblWhereWeAt"); }
    std::string TypeOnShow() { return Ticked({"optColonial", "optRandom"}); }
    std::string Morality() {
        return Ticked({"optMorality_0", "optMorality_1", "optMorality_2", "optMorality_3", "optMorality_4"});
    }
};

struct LongText {
    const char* Box;
    const char* Label;
    std::string clsEvent::*Member;
    std::size_t Limit;
};
const LongText LongTexts[]{{"txtDescription", "Description", &clsEvent::Description, 540},
                           {"txtGoodOption", "Good Option", &clsEvent::GoodOption, 200},
                           {"txtNeutralOption", "Neutral Option", &clsEvent::NeutralOption, 200},
                           {"txtEvilOption", "Evil Option", &clsEvent::EvilOption, 200}};
const char* const NumberFields[]{"txtGoodValue",     "txtNeutralValue",     "txtEvilValue",
                                 "txtGoodPopChange", "txtNeutralPopChange", "txtEvilPopChange",
                                 "txtProbability"};

clsEvent Everything() {
    clsEvent event;
    event.EventName = "Raid";
    event.Title = "Ra\xEF"
                  "d";
    event.Image = R"(Gfx\\P.pcx)";
    event.Description = "%s and %s and %s and %s";
    event.GoodOption = "%s good %s";
    event.NeutralOption = "%s neutral %s";
    event.EvilOption = "%s evil %s";
    event.EventType = 1;
    event.GoodAttribute = 200;
    event.NeutralAttribute = 103;
    event.EvilAttribute = 119;
    event.GoodValue = 1;
    event.NeutralValue = -2;
    event.EvilValue = 3;
    event.GoodPopChange = 4;
    event.NeutralPopChange = 5;
    event.EvilPopChange = -2147483648;
    event.MoralityWeight = 4;
    event.Probability = 77;
    event.DescStr01 = event.GoodOptStr02 = 1;
    event.DescStr02 = event.EvilOptStr01 = 2;
    event.DescStr03 = event.NeutralOptStr01 = 7;
    event.DescStr04 = 9;
    event.GoodOptStr01 = 11;
    event.NeutralOptStr02 = event.EvilOptStr02 = 10;
    return event;
}

TEST_F(EventForm, ShowsARecordAndTakesItBackUnchanged) {
    Start({Everything()});
    const std::pair<const char*, std::string> cases[]{{"txtEventName", "Raid"},
                                                      {"txtTitle", "Ra\xEF"
                                                                   "d"},
                                                      {"txtDescription", "%s and %s and %s and %s"},
                                                      {"txtGoodOption", "%s good %s"},
                                                      {"txtNeutralOption", "%s neutral %s"},
                                                      {"txtEvilOption", "%s evil %s"},
                                                      {"txtImagePath", Settings.GamePath + R"(Gfx\\P.pcx)"},
                                                      {"txtGoodValue", "1"},
                                                      {"txtNeutralValue", "-2"},
                                                      {"txtEvilValue", "3"},
                                                      {"txtGoodPopChange", "4"},
                                                      {"txtNeutralPopChange", "5"},
                                                      {"txtEvilPopChange", "-2147483648"},
                                                      {"txtProbability", "77"},
                                                      {"txtEdited", "NO"},
                                                      {"cboEventFile", "A.event"},
                                                      {"lblUnableToDisplay", "Unable to display picture"}};
    for (const auto& [control, text] : cases)
        EXPECT_EQ(Text(control), text) << control;
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
    EXPECT_EQ(At(0).GenerateEventString(false), Everything().GenerateEventString(false));
    EXPECT_EQ(Text("txtEdited"), "YES");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(EventForm, EmptiesTheForm) {
    Open<frmEvents>();
    for (const char* empty : {"txtEventName", "txtTitle", "txtDescription", "txtGoodOption",
                              "txtNeutralOption", "txtEvilOption", "lblWhereWeAt", "lblStatus"})
        EXPECT_EQ(Text(empty), "") << empty;
    for (const char* number : NumberFields)
        EXPECT_EQ(Text(number), "0") << number;
    EXPECT_EQ(Text("txtImagePath"), Settings.GamePath);
    EXPECT_THAT(Entries("cboEventFile"), ElementsAre("MyEvents.event"));
    EXPECT_EQ(Text("cboEventFile"), "MyEvents.event");
    EXPECT_EQ(TypeOnShow(), "optColonial");
    EXPECT_EQ(Morality(), "optMorality_0");
    EXPECT_THAT(Texts("cboAttributeDropDown_", 3), Each("No Effect"));
    EXPECT_EQ(Entries("cboAttributeDropDown_1").size(), ColonialEventAttributes.Count());
    EXPECT_THAT(Texts("cboDescStr_", 10), Each("Nothing"));
    EXPECT_EQ(Text("txtEdited"), "NO");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
}

TEST_F(EventForm, MakesShownValuesLegalInTheRecord) {
    const std::tuple<std::int32_t, const char*, std::int32_t> cases[]{
        {0, "optMorality_0", 1}, {-7, "optMorality_0", 1}, {3, "optMorality_2", 3}, {9, "optMorality_4", 5}};
    std::vector<clsEvent> events;
    for (const auto& [weight, button, legal] : cases) {
        events.push_back(Good("E" + std::to_string(events.size())));
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

TEST_F(EventForm, TellsOverlongTextsAndLiftsTheirLimits) {
    for (const LongText& text : LongTexts) {
        clsEvent lengthy = Good("Lengthy");
        lengthy.*text.Member = std::string(text.Limit, 'x') + "%";
        clsEvent full = Good("Full");
        full.*text.Member = std::string(text.Limit, 'x');
        Start({lengthy, full});
        const std::string notice = "Message: The original " + std::string(text.Label) +
                                   " text length for this event is too long and will display poorly in-game. "
                                   " It has NOT been shortened, but you really ought to rewrite it.";
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(notice)) << text.Label;
        const auto typeMore = [&] {
            Pick("mnuEditThisEvent");
            Enter(text.Box);
            QTest::keyClick(Get<QWidget>(text.Box), Qt::Key_End, Qt::ControlModifier);
            QTest::keyClicks(Get<QWidget>(text.Box), QStringLiteral("more"));
            const std::size_t length = Text(text.Box).size();
            Pick("mnuDiscardChanges");
            return length;
        };
        EXPECT_EQ(typeMore(), text.Limit + 6);
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(notice)) << "each time it is shown";
        Click("cmdForward");
        EXPECT_EQ(typeMore(), text.Limit);
        EXPECT_THAT(prompts.Transcript, IsEmpty());
    }
}

TEST_F(EventForm, ChecksALongTextOnLeaving) {
    Start({Good("Raid")});
    Pick("mnuEditThisEvent");
    for (const LongText& text : LongTexts) {
        auto* box = Get<TextBox>(text.Box);
        Type(text.Box, QStringLiteral("a\"b"));
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_EQ(Text(text.Box), "a'b");
        for (const bool percent : {false, true}) {
            box->SetBytes(std::string(text.Limit - 1, 'x') + (percent ? "%" : "x"));
            Enter(text.Box);
            Enter("txtTitle");
            EXPECT_EQ(Text(text.Box).size(), text.Limit + (percent ? 1 : 0));
        }
        const std::string limit = std::to_string(text.Limit);
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre("Message[Exclamation]: " + std::string(text.Label) + " text length (" +
                                std::to_string(text.Limit + 1) +
                                ") higher than maximum recommended length (" + limit + ")!"));
    }
}

TEST_F(EventForm, HoldsTheFocusInEveryNumberField) {
    Start({Good("Raid")});
    Pick("mnuEditThisEvent");
    for (const char* number : NumberFields) {
        Type(number, QString());
        Get<QWidget>("txtTitle")->setFocus();
        EXPECT_TRUE(Get<QWidget>(number)->hasFocus()) << number;
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre("Message: Sorry, this field must contain a numeric value"));
        Type(number, QStringLiteral("2.5"));
        Enter("txtTitle");
    }
    Pick("mnuCommitChanges");
    EXPECT_EQ(At(0).GoodValue, 2);
    EXPECT_EQ(At(0).Probability, 2);
}

TEST_F(EventForm, SelectsTextsOnEntry) {
    Start({Good("Raid")});
    Pick("mnuEditThisEvent");
    for (const LongText& text : LongTexts) {
        Enter(text.Box);
        EXPECT_EQ(FromQt(Get<TextBox>(text.Box)->textCursor().selectedText()), Text(text.Box));
    }
    Strings boxes(std::begin(NumberFields), std::end(NumberFields));
    boxes.insert(boxes.end(), {"txtTitle", "txtEdited"});
    for (const std::string& box : boxes) {
        Enter(box);
        EXPECT_EQ(FromQt(Get<LineBox>(box)->selectedText()), Text(box)) << box;
    }
    Enter("txtImagePath");
    EXPECT_FALSE(Get<LineBox>("txtImagePath")->hasSelectedText());
    EXPECT_EQ(Get<LineBox>("txtImagePath")->cursorPosition(), static_cast<int>(Text("txtImagePath").size()));
}

TEST_F(EventForm, AsksOnceBeforeItSwitchesTheType) {
    Start({Everything()});
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
    Start({Everything()});
    Pick("mnuEditThisEvent");
    struct {
        const char* Box;
        const char* Entry;
        const char* Hint;
        const char* Unit;
    } const cases[]{
        {"cboAttributeDropDown_1", "Luck", "Affects most random rolls for this player", "%"},
        {"cboAttributeDropDown_1", "Cash-o-la", "Affects the player's treasury", "BC"},
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
    EXPECT_EQ(At(0).NeutralAttribute, 103) << "nothing changes before the commit";
    Get<LineBox>("txtProbability")->SetBytes("none");
    prompts.ExpectAsk("", true);
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Parameters, "<False>") << "a hint stands where the mode is read";
}

TEST_F(EventForm, BrowsesForAPicture) {
    temp.Write("Game/Art/New.pcx", "x");
    const std::string picked = temp / "Game/Art/New.pcx";
    Start({Good("Raid")});
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
    Start({Good("Raid")});
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
    clsEvent event = Everything();
    event.Description = "Hello %s, welcome to %S.\\n100%% %s %s%s!";
    event.GoodOption = "%s|%s|%s";
    event.EvilOption = "none";
    Start({event});
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
        Put(own, {Everything()});
        Start({Good("Apple"), Good("Berry")});
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
        clsEvent copy = Everything();
        copy.EventName = "Copied";
        EXPECT_EQ(At(3).GenerateEventString(false), copy.GenerateEventString(false));
        EXPECT_EQ(At(3).ShortName, "MyEvents.event");
        EXPECT_EQ(At(3).FileName, Settings.DataPath + "MyEvents.event");
        prompts.ExpectAsk("", true);
        EXPECT_TRUE(window->close());
    }
}

TEST_F(EventForm, RefusesTheGamesOwnFileNames) {
    Start({Good("Raid")});
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

TEST_F(EventForm, StartsInTheOrderOfTheSettings) {
    Put("B.event", {Good("banana"), Good("Apple")});
    Settings.SortBy = "1";
    Start({Good("Cherry")});
    EXPECT_EQ(Shown(), "Apple, 1 of 3");
    EXPECT_EQ(Ticked({"mnuSortAlphabetically", "mnuSortByFileName"}), "mnuSortAlphabetically");
    EXPECT_FALSE(Enabled("mnuZoomToEventFile"));
    EXPECT_EQ(At(1).EventName + At(2).EventName, "bananaCherry");
    Pick("mnuSortByFileName");
    EXPECT_EQ(Ticked({"mnuSortAlphabetically", "mnuSortByFileName"}), "mnuSortByFileName");
    EXPECT_EQ(Shown(), "Cherry, 1 of 3");
    EXPECT_TRUE(Enabled("mnuZoomToEventFile"));
    Pick("mnuSortByFileName");
    EXPECT_EQ(Ticked({"mnuSortAlphabetically", "mnuSortByFileName"}), "mnuSortByFileName") << "picked again";
    EXPECT_EQ(Settings.SortBy, "1");
}

TEST_F(EventForm, ZoomsToANameOrAFile) {
    clsEvent cherry = Good("Cherry");
    cherry.Description = "All about\ncherries";
    Put("B.event", {cherry, Good("Date")});
    Put("C.event", {});
    Start({Good("Apple")});
    Click("cmdForward");
    struct {
        const char* Item;
        const char* Title;
        const char* First;
        const char* FirstBlurb;
        const char* Chosen; ///< empty closes the dialog
        const char* Blurb;
        const char* Shown;
    } const cases[]{
        {"mnuZoomTo", "Zoom To Event Name", "Cherry", "All about\\ncherries", "Date", "Description",
         "Date, 3 of 3"},
        {"mnuZoomTo", "Zoom To Event Name", "Date", "Description", "", "", "Date, 3 of 3"},
        {"mnuZoomTo", "Zoom To Event Name", "Date", "Description", "Date", "Description", "Date, 3 of 3"},
        {"mnuZoomToEventFile", "Zoom To Event File", "A.event", "Events contained in this file:\nApple",
         "B.event", "Events contained in this file:\nCherry, Date", "Cherry, 2 of 3"},
        {"mnuZoomToEventFile", "Zoom To Event File", "A.event", "Events contained in this file:\nApple",
         "C.event", "Events contained in this file:\n", "Cherry, 2 of 3"},
        {"mnuZoomToEventFile", "Zoom To Event File", "A.event", "Events contained in this file:\nApple",
         "A.event", "Events contained in this file:\nApple", "Apple, 1 of 3"},
    };
    for (const auto& zoom : cases) {
        ModalAnswers answers;
        answers.Expect<frmZoomTo>([&](frmZoomTo& dialog) {
            auto* box = dialog.findChild<ChoiceBox*>(QStringLiteral("cboZoomTo"));
            auto* blurb = dialog.findChild<QLabel*>(QStringLiteral("lblBlurb"));
            EXPECT_EQ(dialog.windowTitle(), QString::fromLatin1(zoom.Title));
            EXPECT_EQ(box->Chosen(), zoom.First);
            EXPECT_EQ(FromQt(blurb->text()), zoom.FirstBlurb);
            if (!*zoom.Chosen) {
                dialog.close();
                return;
            }
            box->setCurrentIndex(box->findText(QString::fromLatin1(zoom.Chosen)));
            EXPECT_EQ(FromQt(blurb->text()), zoom.Blurb);
            dialog.findChild<QAbstractButton*>(QStringLiteral("cmdGo"))->click();
        });
        Pick(zoom.Item);
        EXPECT_EQ(Shown(), zoom.Shown) << zoom.Item << " " << zoom.Chosen;
    }
}

TEST_F(EventForm, KeepsEverythingWhenAWriteFails) {
    Files::CreateFolder(temp / "Game/Data/Wall.Event");
    temp.Write("Game/Data/Wall.Event/in the way", "");
    Start({Good("Apple"), Good("Berry")});
    const std::string before = temp.Read("Game/Data/A.event");
    prompts.ExpectInput("", "Wall").ExpectAsk("", true);
    Pick("mnuMoveThisEventToANewFile");
    Pick("mnuWriteToFile");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Parameters, "<Wall.Event>");
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("frmEvents_mnuWriteToFile_Click",
                                                     "frmEvents_WriteToFile", "frmEvents_WriteItDown"));
    EXPECT_EQ(temp.Read("Game/Data/A.event"), before);
    EXPECT_EQ(Text("lblStatus"), "EDITED, PENDING A WRITE TO FILE");
    std::filesystem::remove_all(temp.Host() / "Game/Data/Wall.Event");
    prompts.ExpectAsk("Preparing to save events for the following files:||Wall.Event|A.event||Proceed?",
                      true);
    Pick("mnuWriteToFile");
    EXPECT_EQ(temp.Read("Game/Data/Wall.Event"), Good("Apple").GenerateEventString(false));
    EXPECT_EQ(temp.Read("Game/Data/A.event"), Good("Berry").GenerateEventString(false));
}

TEST_F(EventForm, RemembersLosingFilesAndRefreshesBackups) {
    Settings.AutoBackup = true;
    Put("B.event", {Good("Banana")});
    Start({Good("Apple")});
    prompts.ExpectInput("", "New").ExpectAsk("", true);
    Pick("mnuMoveThisEventToANewFile");
    window->close();
    Reopen();
    Click("cmdForward");
    Pick("mnuEditThisEvent");
    Type("txtTitle", QStringLiteral("Changed"));
    Pick("mnuCommitChanges");
    const std::string before = temp.Read("Game/Data/B.event");
    const std::string question = "Preparing to save events for the following files:||";
    prompts.ExpectAsk(question + "B.event|A.event||Proceed?", true);
    Pick("mnuWriteToFile");
    EXPECT_THAT(temp.Read("Game/Data/B.event"), HasSubstr("\"Changed\""));
    EXPECT_EQ(temp.Read("Home/BackupData/B.1stEVENT"), before);
    EXPECT_EQ(temp.Read("Home/BackupData/B.latestEVENT"), temp.Read("Game/Data/B.event"));
    prompts.ExpectAsk(question + "B.event||Proceed?", false);
    Click("cmdForward");
    Pick("mnuEditThisEvent");
    Pick("mnuCommitChanges");
    Pick("mnuWriteToFile");
}

TEST_F(EventForm, ReportsFailuresUnderTheirRoutines) {
    clsEvent lengthy = Good("Lengthy");
    lengthy.Description = std::string(541, 'x');
    Start({Good("Apple"), lengthy});
    ExpectFailureRoads({
        {"cmdForward", {"cmdForward_Click", "PopulateForm"}},
        {"cmdBack", {"cmdBack_Click", "PopulateForm"}},
        {"mnuAddNew", {"mnuAddNew_Click"}},
        {"mnuCopyAsNew", {"mnuCopyAsNew_Click"}},
        {"mnuDelete", {"mnuDelete_Click"}},
        {"mnuRenameThisFile", {"mnuRenameThisFile_Click"}},
        {"mnuMoveThisEventToANewFile", {"mnuMoveThisEventToANewFile_Click"}},
        {"mnuReviewDescription", {"mnuReviewDescription_Click", "DisplayReview"}},
        {"mnuReviewGood", {"mnuReviewGood_Click", "DisplayReview"}},
        {"mnuReviewNeutral", {"mnuReviewNeutral_Click", "DisplayReview"}},
        {"mnuReviewEvil", {"mnuReviewEvil_Click", "DisplayReview"}},
        {"mnuViewInstructionsFile", {"mnuViewInstructionsFile_Click"}},
    });
    Pick("mnuEditThisEvent");
    ExpectFailureRoads(
        {{"optRandom", {"optRandom_Click"}}, {"cmdBrowseForPicture", {"cmdBrowseForPicture_Click"}}});
    Get<LineBox>("txtTitle")->SetBytes("");
    ExpectFailureRoads({{"mnuCommitChanges", {"mnuCommitChanges_Click", "SaveEvent", "ValidateData"}}});
    ReleaseCatalogues();
    Get<LineBox>("txtTitle")->SetBytes("T");
    ExpectFailureRoads({{"mnuCommitChanges", {"mnuCommitChanges_Click", "SaveEvent"}}});
    BuildCatalogues();
    prompts.ExpectAsk("", true).ExpectAsk("", true);
    Pick("mnuDiscardChanges");
    Pick("mnuDelete");
    Click("cmdForward");
    prompts.TakeTranscript();
    ExpectFailureRoads({{"mnuWriteToFile", {"mnuWriteToFile_Click", "WriteToFile"}}});
    temp.Write("Game/Data/A.event", lengthy.GenerateEventString(false));
    window->close();
    Reopen();
    ExpectFailureRoads({
        {"mnuSortAlphabetically", {"mnuSortAlphabetically_Click", "SortBy", "PopulateForm"}},
        {"mnuSortByFileName", {"mnuSortByFilename_Click", "SortBy", "PopulateForm"}},
    });
}

} // namespace
} // namespace velmora
