// What every editor does alike: one table of kinds, the same workflow for each.
#include "editor/EditorFixture.h"
#include "events/frmEvents.h"
#include "platform/Files.h"
#include "upissues/frmUPIssues.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct Kind {
    const RecordKind* Records;
    std::unique_ptr<RecordWindow> (*Make)();
    std::string Folder; ///< below the game directory
    std::string OwnFile;
    const char* NameBox;
    const char* FileBox;
    const char* TextField; ///< a long text of the record
    const char* NumberField;
    std::string NumberCaption;
    const char* EditItem;
    const char* MoveItem;
    const char* ZoomFileItem;
    const char* SortByFileItem;
    std::string AddPrompt;
    std::string TakenText;
    std::string DeleteQuestion;
    std::string UnwrittenQuestion;
    std::string WriteQuestion; ///< up to the names
    std::string RenameScope;
    std::string MoveExtension;
    std::string Adding;
    std::string SaveRoutine;
    /// A record that passes every check.
    std::string (*Block)(const std::string& name);
};

std::string EventBlock(const std::string& name) {
    clsEvent event;
    event.EventName = name;
    event.Title = "T";
    event.Description = "about " + name;
    event.Image = "Gfx\\\\P.pcx";
    event.GoodOption = event.NeutralOption = event.EvilOption = "O";
    event.MoralityWeight = 1;
    return event.GenerateEventString(false);
}

std::string IssueBlock(const std::string& name) {
    clsUPIssue issue;
    issue.UPIssueName = name;
    issue.Question = "about " + name;
    issue.Option01 = "Yes";
    issue.OptionVal01 = 1;
    issue.UPIssueAttribute = 2;
    return issue.GenerateUPIssueString(false);
}

template <class Window>
std::unique_ptr<RecordWindow> Make() {
    return std::make_unique<Window>();
}

const Kind Events{
    &EventKind,
    Make<frmEvents>,
    "Game/Data/",
    "MyEvents.event",
    "txtEventName",
    "cboEventFile",
    "txtDescription",
    "txtGoodValue",
    "Good value",
    "mnuEditThisEvent",
    "mnuMoveThisEventToANewFile",
    "mnuZoomToEventFile",
    "mnuSortByFileName",
    "Please enter the name of this new event, there should be no spaces in the chosen name.",
    "The chosen name matches that of an existing event.  The event name must be unique, please try again.",
    "Are you sure you wish to mark this event for deletion?",
    "There are changed events that have not yet been committed to file, do you still wish to exit?",
    "Preparing to save events for the following files:",
    "every event owned by ",
    ".Event",
    "ADDING THIS EVENT",
    "frmEvents_SaveEvent",
    EventBlock};
const Kind Issues{
    &UPIssueKind,
    Make<frmUPIssues>,
    "Game/Data/UP_Issues/",
    "MyUPIssues.upissue",
    "txtUPIssueName",
    "cboUPIssueFile",
    "txtQuestion",
    "txtYearsInEffect",
    "Years in effect",
    "mnuEditThisIssue",
    "mnuMoveThisUPIssueToANewFile",
    "mnuZoomToUPIssueFile",
    "mnuSortByFilename",
    "Please enter the name of this new UP Issue, there should be no spaces in the chosen name.",
    "The chosen name matches that of an existing UP Issue.  The UP Issue name must be unique, please try "
    "again.",
    "Are you sure you wish to mark this UP Issue for deletion?",
    "There are changed UP Issues that have not yet been committed to file, do you still wish to exit?",
    "Preparing to save UP Issues for the following files:",
    "every UP Issue owned by ",
    ".UPIssue",
    "ADDING THIS UP ISSUE",
    "frmUPIssues_SaveUPIssue",
    IssueBlock};

class Workflow : public WindowTest, public ::testing::WithParamInterface<const Kind*> {
  protected:
    Workflow() {
        temp.Write("Game/GFX/P.pcx", "no picture, but there");
        Put("A", kind.Block("Apple") + kind.Block("Cherry"));
        Put("B", kind.Block("Banana"));
    }
    void Start() {
        window = kind.Make();
        Reopen();
    }
    [[nodiscard]] std::string FileName(const std::string& base) const {
        return base + std::string(kind.Records->Extension);
    }
    void Put(const std::string& base, const std::string& text) {
        temp.Write(kind.Folder + FileName(base), text);
    }
    std::string OnDisk(const std::string& name) { return temp.Read(kind.Folder + name); }
    std::vector<std::string> FilesOnDisk() {
        auto names = Files::ListFiles(temp / kind.Folder);
        std::sort(names.begin(), names.end());
        return names;
    }
    std::string Shown() {
        return Text(kind.NameBox) + ", " + Text("lblWhereWeAt") + ", " + Text("lblStatus");
    }
    [[nodiscard]] std::string WriteQuestion(const std::string& names) const {
        return kind.WriteQuestion + "||" + names + "||Proceed?";
    }
    void AddAs(const std::string& name) {
        prompts.ExpectInput(kind.AddPrompt, name);
        Pick("mnuAddNew");
    }
    void EditText(const QString& text) {
        Pick(kind.EditItem);
        Type(kind.TextField, text);
    }
    std::vector<std::string> MenuItemsOn() {
        std::vector<std::string> on;
        for (const char* item : {kind.EditItem, "mnuDiscardChanges", "mnuCommitChanges", "mnuRenameThisFile",
                                 kind.MoveItem, "mnuAddNew", "mnuCopyAsNew", "mnuDelete", "mnuWriteToFile",
                                 "mnuSortAlphabetically", "mnuZoomTo", kind.ZoomFileItem})
            if (Enabled(item))
                on.emplace_back(item);
        return on;
    }

    const Kind& kind = *GetParam();
};

TEST_P(Workflow, BrowsesRoundInBothDirections) {
    Start();
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Click("cmdForward");
    Click("cmdForward");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    Click("cmdForward");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Click("cmdBack");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_FALSE(Enabled(kind.TextField));
    EXPECT_TRUE(Enabled("lblStatus"));
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_P(Workflow, BrowsesByKeyboard) {
    Start();
    QTest::keyClick(window.get(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ") << "not at once";
    QTest::keyClick(window.get(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
}

TEST_P(Workflow, OffersOnlyAddNewWithoutRecords) {
    Put("A", "");
    Put("B", "");
    Start();
    EXPECT_EQ(Shown(), ", , ");
    EXPECT_EQ(Text("txtEdited"), "NO");
    EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuAddNew"));
    EXPECT_FALSE(Enabled("cmdBack"));
    AddAs("First");
    EXPECT_EQ(Shown(), "First, 1 of 1, " + kind.Adding);
}

TEST_P(Workflow, SwitchesItemsWithTheMode) {
    Start();
    EXPECT_THAT(MenuItemsOn(), ElementsAre(kind.EditItem, "mnuRenameThisFile", kind.MoveItem, "mnuAddNew",
                                           "mnuCopyAsNew", "mnuDelete", "mnuWriteToFile",
                                           "mnuSortAlphabetically", "mnuZoomTo", kind.ZoomFileItem));
    Pick(kind.EditItem);
    EXPECT_EQ(Text("lblEditStatus"), "READY FOR EDITS");
    EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuDiscardChanges", "mnuCommitChanges"));
    EXPECT_TRUE(Enabled(kind.TextField));
    EXPECT_FALSE(Enabled(kind.NameBox));
    EXPECT_FALSE(Enabled("cmdForward"));
    Pick("mnuDiscardChanges");
    Pick("mnuSortAlphabetically");
    EXPECT_FALSE(Enabled(kind.ZoomFileItem));
}

TEST_P(Workflow, AddsARecordToTheOwnFile) {
    Start();
    prompts.ExpectInput(kind.AddPrompt, "");
    Pick("mnuAddNew");
    AddAs("aPPLE");
    EXPECT_THAT(prompts.TakeTranscript().back(), "Message: " + kind.TakenText);
    AddAs("2 Fast");
    EXPECT_EQ(Shown(), "TwoFast, 4 of 4, " + kind.Adding);
    EXPECT_EQ(Text("lblEditStatus"), "");
    EXPECT_EQ(Text(kind.FileBox), kind.OwnFile);
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    AddAs("Date");
    prompts.ExpectAsk("", true);
    Pick("mnuCommitChanges");
    EXPECT_EQ(Shown(), "Date, 4 of 4, EDITED, PENDING A WRITE TO FILE");
    EXPECT_EQ(Text("txtEdited"), "YES");
}

TEST_P(Workflow, CommitsAndWritesTheEdit) {
    Start();
    EditText(QStringLiteral("a \"quoted\" 5% text"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, EDITED, PENDING A WRITE TO FILE");
    EXPECT_EQ(Text(kind.TextField), "a 'quoted' 5%% text");
    prompts.ExpectAsk(WriteQuestion(FileName("A")), false).ExpectAsk(WriteQuestion(FileName("A")), true);
    Pick("mnuWriteToFile");
    EXPECT_THAT(OnDisk(FileName("A")), ::testing::Not(::testing::HasSubstr("quoted")));
    Pick("mnuWriteToFile");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EXPECT_EQ(OnDisk(FileName("A")), BlockOf(*kind.Records, window->Records().At(0)) + kind.Block("Cherry"));
    EXPECT_THAT(OnDisk(FileName("A")), ::testing::HasSubstr("\"a 'quoted' 5%% text\""));
    prompts.TakeTranscript();
    Pick("mnuWriteToFile");
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "nothing to write, nothing asked";
}

TEST_P(Workflow, TellsWhatAWriteDropsAndAsksBeforeItReplacesOutsideChanges) {
    Put("A", "// by hand\r\n" + kind.Block("Apple") + kind.Block("Cherry"));
    Start();
    EditText(QStringLiteral("text"));
    Pick("mnuCommitChanges");
    const std::string outside = "// from outside\r\n" + kind.Block("Apple");
    Put("A", outside);
    const std::string question =
        "These files are no longer what was read.  Another program has changed them:||" + FileName("A") +
        "||Writing replaces those changes.  Proceed?";
    for (const bool yes : {false, true}) {
        prompts.ExpectAsk(WriteQuestion(FileName("A")), true).ExpectAsk(question, yes);
        Pick("mnuWriteToFile");
        EXPECT_EQ(OnDisk(FileName("A")) == outside, !yes);
    }
    EXPECT_THAT(prompts.Questions[0].Details, ::testing::HasSubstr("lost: 1 comment\r"));
    EXPECT_THAT(prompts.Questions[0].Details, ::testing::HasSubstr("- // from outside\r"));
    EXPECT_TRUE(prompts.Questions[1].DefaultNo);
    EXPECT_EQ(Files::ListFiles(Settings.BackupPath).size(), 1u) << "the dated copy";
}

TEST_P(Workflow, OffersToReadWhatAnotherProgramChanged) {
    Start();
    const auto comeBack = [this] {
        QEvent activation(QEvent::ActivationChange);
        QCoreApplication::sendEvent(window.get(), &activation);
        QCoreApplication::processEvents();
    };
    comeBack();
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    const std::string question = "Another program has changed these files:||" + FileName("A") +
                                 "||Do you wish to read all files again?";
    Put("A", kind.Block("Apple"));
    Pick(kind.EditItem);
    comeBack();
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "while something is pending";
    Pick("mnuDiscardChanges");
    prompts.ExpectAsk(question, false);
    comeBack();
    comeBack();
    EXPECT_EQ(Text("lblWhereWeAt"), "1 of 3") << "declined, and not asked again";
    Put("B", kind.Block("Banana") + kind.Block("Date"));
    prompts.ExpectAsk("", true);
    comeBack();
    EXPECT_EQ(window->Records().Records.Count(), 3u);
    EXPECT_TRUE(window->Records().Find("Date"));
    EXPECT_EQ(prompts.Transcript.size(), 2u);
}

TEST_P(Workflow, DiscardKeepsEarlierCommits) {
    Start();
    EditText(QStringLiteral("first"));
    Pick("mnuCommitChanges");
    EditText(QStringLiteral("second"));
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Text(kind.TextField), "first");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
}

TEST_P(Workflow, CopiesIntoTheOwnFile) {
    Start();
    prompts.ExpectInput(kind.AddPrompt, "Copy");
    Pick("mnuCopyAsNew");
    EXPECT_EQ(Text(kind.TextField), "about Apple");
    EXPECT_EQ(Text(kind.FileBox), kind.OwnFile);
    Pick("mnuCommitChanges");
    prompts.ExpectAsk(WriteQuestion(kind.OwnFile), true);
    Pick("mnuWriteToFile");
    std::string expected = kind.Block("Apple");
    expected.replace(expected.find(" Apple"), 6, " Copy");
    EXPECT_EQ(OnDisk(kind.OwnFile), expected);
}

TEST_P(Workflow, MarksAndUnmarksForDeletion) {
    Start();
    prompts.ExpectAsk(kind.DeleteQuestion, false).ExpectAsk(kind.DeleteQuestion, true);
    Pick("mnuDelete");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Pick("mnuDelete");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, MARKED FOR DELETION");
    EXPECT_EQ(Get<QAction>("mnuDelete")->text(), QStringLiteral("&Un-Delete"));
    Pick("mnuDelete");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, EDITED, PENDING A WRITE TO FILE");
}

TEST_P(Workflow, DeletesAFilesLastRecordWithItsFile) {
    Start();
    Click("cmdBack");
    prompts.ExpectAsk(kind.DeleteQuestion, true).ExpectAsk(WriteQuestion(FileName("B")), true);
    Pick("mnuDelete");
    Pick("mnuWriteToFile");
    EXPECT_THAT(FilesOnDisk(), ElementsAre(FileName("A")));
    EXPECT_EQ(Shown(), "Apple, 1 of 2, ");
}

TEST_P(Workflow, MovesACommittedRecordBetweenFiles) {
    Start();
    EditText(QStringLiteral("moved"));
    Choose(kind.FileBox, FileName("B"));
    Pick("mnuCommitChanges");
    prompts.ExpectAsk("", true);
    Pick("mnuWriteToFile");
    EXPECT_EQ(OnDisk(FileName("A")), kind.Block("Cherry"));
    EXPECT_THAT(OnDisk(FileName("B")), ::testing::HasSubstr("\"moved\""));
    EXPECT_THAT(OnDisk(FileName("B")), ::testing::HasSubstr(kind.Block("Banana")));
}

TEST_P(Workflow, RenamesAFileWithAllItsRecords) {
    Start();
    const std::string prompt = "Rename the file " + FileName("A") + " to:||This change will affect " +
                               kind.RenameScope + FileName("A");
    for (const char* refused : {"a:b", "x/*y"}) {
        prompts.ExpectInput(prompt, refused);
        Pick("mnuRenameThisFile");
    }
    EXPECT_EQ(prompts.Transcript[1],
              "Message[Information]: Your filename may not contain the character \":\"");
    EXPECT_EQ(prompts.Transcript[3],
              "Message[Information]: Your filename may not contain the character \"/\"");
    prompts.ExpectInput(prompt, FileName("Story"))
        .ExpectAsk(WriteQuestion(FileName("Story") + "|" + FileName("A")), true);
    Pick("mnuRenameThisFile");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, EDITED, PENDING A WRITE TO FILE");
    EXPECT_EQ(Text(kind.FileBox), FileName("Story"));
    Pick("mnuWriteToFile");
    EXPECT_THAT(FilesOnDisk(), ElementsAre(FileName("B"), FileName("Story")));
    EXPECT_EQ(OnDisk(FileName("Story")), kind.Block("Apple") + kind.Block("Cherry"));
}

TEST_P(Workflow, MovesOneRecordToANewFile) {
    Start();
    prompts.ExpectInput("Please enter the new filename to use.", "")
        .ExpectInput("", "Extra")
        .ExpectAsk("", true);
    Pick(kind.MoveItem);
    Pick(kind.MoveItem);
    EXPECT_EQ(Text(kind.FileBox), "Extra" + kind.MoveExtension);
    Pick("mnuWriteToFile");
    EXPECT_EQ(OnDisk("Extra" + kind.MoveExtension), kind.Block("Apple"));
    EXPECT_EQ(OnDisk(FileName("A")), kind.Block("Cherry"));
}

TEST_P(Workflow, WritesInTheSortedOrder) {
    Put("A", kind.Block("Cherry") + kind.Block("Apple"));
    Start();
    Pick("mnuSortAlphabetically");
    EXPECT_TRUE(Get<QAction>("mnuSortAlphabetically")->isChecked());
    EXPECT_FALSE(Get<QAction>(kind.SortByFileItem)->isChecked());
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EditText(QStringLiteral("about Apple"));
    Pick("mnuCommitChanges");
    prompts.ExpectAsk("", true);
    Pick("mnuWriteToFile");
    EXPECT_EQ(OnDisk(FileName("A")), kind.Block("Apple") + kind.Block("Cherry"));
    EXPECT_TRUE(Get<QAction>(kind.SortByFileItem)->isChecked()) << "the setting rules again after a write";
}

TEST_P(Workflow, AsksBeforeClosing) {
    Start();
    QWidget main;
    QObject::connect(window.get(), &RecordWindow::Closed, &main, &QWidget::show);
    EditText(QStringLiteral("x"));
    prompts.ExpectAsk("Do you wish to discard your changes and exit?", false);
    EXPECT_FALSE(window->close());
    Pick("mnuCommitChanges");
    prompts.ExpectAsk(kind.UnwrittenQuestion, false);
    EXPECT_FALSE(window->close());
    EditText(QStringLiteral("y"));
    prompts.ExpectAsk("Do you wish to discard your changes and exit?", true);
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(main.isVisible());
    EXPECT_THAT(OnDisk(FileName("A")), kind.Block("Apple") + kind.Block("Cherry"));
    Reopen();
    EXPECT_EQ(Text(kind.TextField), "about Apple");
    EXPECT_FALSE(Enabled(kind.TextField));
}

TEST_P(Workflow, LeavesTheRecordAloneWhenANumberFails) {
    Start();
    EditText(QStringLiteral("not taken"));
    Type(kind.NumberField, QStringLiteral("99999999999"));
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Number, 6);
    EXPECT_THAT(handler.LastCallStack(),
                ElementsAre(kind.Records->Routine("mnuCommitChanges_Click"), kind.SaveRoutine));
    EXPECT_TRUE(Get<QWidget>(kind.NumberField)->hasFocus());
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Text(kind.TextField), "about Apple");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
}

TEST_P(Workflow, HoldsTheFocusInAFieldThatIsNoNumber) {
    Start();
    Pick(kind.EditItem);
    Type(kind.NumberField, QStringLiteral("x"));
    Get<QWidget>(kind.TextField)->setFocus();
    EXPECT_TRUE(Get<QWidget>(kind.NumberField)->hasFocus());
    EXPECT_THAT(prompts.TakeTranscript(),
                ElementsAre("Message: Sorry, this field must contain a numeric value"));
    Type(kind.NumberField, QStringLiteral("-12"));
    Get<QWidget>(kind.TextField)->setFocus();
    EXPECT_TRUE(Get<QWidget>(kind.TextField)->hasFocus());
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_P(Workflow, HidesTheFormWithoutADataDirectory) {
    std::filesystem::remove_all(temp.Host() / "Game/Data");
    Start();
    EXPECT_EQ(prompts.Transcript.size(), 1u);
    EXPECT_THAT(prompts.Transcript[0],
                ::testing::StartsWith("Message[Critical]: Unable to acces the Velmora Data"));
    EXPECT_FALSE(Get<QWidget>(kind.NameBox)->isVisible());
    EXPECT_FALSE(Get<QMenu>("mnuEdit")->menuAction()->isEnabled());
    window->close();
    Put("A", kind.Block("Apple"));
    Reopen();
    EXPECT_TRUE(Get<QWidget>(kind.NameBox)->isVisible());
    EXPECT_TRUE(Get<QMenu>("mnuEdit")->menuAction()->isEnabled());
}

TEST_P(Workflow, NeverWritesAHalfReadLibrary) {
    Put("B", "Probability 1\r\n" + std::string(kind.Records->Header) + " X\r\nProbability 99999999999\r\n");
    Start();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_THAT(prompts.Errors[0].Description,
                ::testing::HasSubstr("file " + FileName("B") + ", line 3, key Probability"));
    EXPECT_FALSE(Enabled("mnuWriteToFile"));
    EXPECT_FALSE(Enabled("mnuRenameThisFile"));
    EXPECT_FALSE(Enabled(kind.TextField));
    EXPECT_THAT(Text("lblEditStatus"), ::testing::HasSubstr("Read Files Again"));
    Put("B", kind.Block("Banana"));
    Pick("mnuReadAgain");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EXPECT_TRUE(Enabled("mnuWriteToFile"));
}

TEST_P(Workflow, EmptiesTheWindowWithoutADataDirectory) {
    Start();
    window->close();
    std::filesystem::remove_all(temp.Host() / "Game/Data");
    Reopen();
    EXPECT_EQ(Shown(), ", , ");
    EXPECT_FALSE(Enabled("cmdForward"));
}

TEST_P(Workflow, ListsWhatWasFoundBeforeAFailure) {
    Put("A", "Odd 1\r\nOdd 2\r\nOdd 3\r\nProbability 99999999999\r\n");
    prompts.ShowRestAsList = true;
    Start();
    ASSERT_EQ(prompts.Transcript.size(), 4u);
    EXPECT_THAT(prompts.Transcript[2],
                ::testing::StartsWith("List: Unrecognized token! a(0) = Odd, sValue = 3"));
    EXPECT_THAT(prompts.Transcript[3], ::testing::StartsWith("Error[6]: Overflow"));
    EXPECT_THAT(handler.LastCallStack(),
                ElementsAre(kind.Records->Routine("Form_Load"), kind.Records->Routine("InitForm"),
                            kind.Records->Routine(kind.Records->LoadRoutine),
                            kind.Records->Routine(kind.Records->ParseRoutine)));
}

TEST_P(Workflow, AFailingCommitKeepsTheEditOfAHalfReadLibrary) {
    Put("B", std::string(kind.Records->Header) + " X\r\nProbability 99999999999\r\n");
    Start();
    Click("cmdForward");
    EditText(QStringLiteral("kept"));
    Type(kind.NumberField, QStringLiteral("99999999999"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(prompts.Errors.size(), 2u);
    EXPECT_TRUE(Enabled(kind.TextField));
    EXPECT_TRUE(Enabled("mnuCommitChanges"));
    EXPECT_EQ(Text(kind.TextField), "kept");
}

TEST_P(Workflow, ShowsNothingAfterAFailedReading) {
    Start();
    Click("cmdBack");
    ASSERT_EQ(Shown(), "Banana, 3 of 3, ");
    Put("B", "Probability 1\r\n" + std::string(kind.Records->Header) + " X\r\nProbability 99999999999\r\n");
    Pick("mnuReadAgain");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(Shown(), ", , ");
    EXPECT_THAT(MenuItemsOn(),
                ElementsAre("mnuAddNew", "mnuSortAlphabetically", "mnuZoomTo", kind.ZoomFileItem));
    Click("cmdBack");
    EXPECT_EQ(Shown(), "Cherry, 2 of 2, ");
    EditText("still edited");
    Pick("mnuCommitChanges");
    EXPECT_EQ(Shown(), "Cherry, 2 of 2, EDITED, PENDING A WRITE TO FILE");
    EXPECT_FALSE(Enabled("mnuWriteToFile"));
}

INSTANTIATE_TEST_SUITE_P(Editors, Workflow, ::testing::Values(&Events, &Issues),
                         [](const auto& kind) { return std::string(kind.param->Records->Word); });

} // namespace
} // namespace velmora
