// What every editor does alike: modes, files and what is asked on the way.
#include "Fault.h"
#include "editor/Editors.h"

#include <QScrollArea>
#include <QScrollBar>
#include <cerrno>

namespace velmora {
namespace {

using ::testing::AllOf;
using ::testing::UnorderedElementsAre;

class Workflow : public EditorTest {
  protected:
    void AddAs(const std::string& name, const std::string& item = "mnuAddNew") {
        prompts.ExpectInput("Please enter the name of this new " + noun +
                                ", there should be no spaces in the chosen name.",
                            name);
        Pick(item);
    }
    Strings MenuItemsOn() {
        Strings items{editItem,           "mnuDiscardChanges",
                      "mnuCommitChanges", "mnuRenameThisFile",
                      moveItem,           "mnuAddNew",
                      "mnuCopyAsNew",     "mnuDelete",
                      "mnuWriteToFile",   "mnuSortAlphabetically",
                      "mnuZoomTo",        zoomFileItem};
        std::erase_if(items, [this](const std::string& item) { return !Enabled(item); });
        return items;
    }
    std::string SortOnShow() { return Ticked({"mnuSortAlphabetically", sortByFileItem.c_str()}); }
    Strings FilesOnDisk() { return Files::ListFiles(temp / editor.Folder); }
    /// The block of a record that is about something else than its name.
    std::string About(const std::string& name, const std::string& text) {
        return Block(name, editor.LongTexts[0].Key, text);
    }
    void WriteWhenAsked(const std::string& files, bool yes = true) {
        prompts.ExpectAsk("Preparing to save " + noun + "s for the following files:||" + files + "||Proceed?",
                          yes);
        Pick("mnuWriteToFile");
    }

    const std::string fileA = FileName("A");
    const std::string fileB = FileName("B");
    const std::string ownFile = events ? "MyEvents.event" : "MyUPIssues.upissue";
    const std::string adding = events ? "ADDING THIS EVENT" : "ADDING THIS UP ISSUE";
};

TEST_P(Workflow, BrowsesRoundInBothDirectionsUntilAnEditBegins) {
    Start();
    for (const char* shown : {"Cherry, 2 of 3, ", "Banana, 3 of 3, ", "Apple, 1 of 3, "}) {
        Click("cmdForward");
        EXPECT_EQ(Shown(), shown);
    }
    Click("cmdBack");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    QTest::keyClick(window.get(), Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ") << "not at once";
    QTest::keyClick(window.get(), Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ") << "not at once";
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_FALSE(Enabled(textField));
    EXPECT_THAT(MenuItemsOn(),
                ElementsAre(editItem, "mnuRenameThisFile", moveItem, "mnuAddNew", "mnuCopyAsNew", "mnuDelete",
                            "mnuWriteToFile", "mnuSortAlphabetically", "mnuZoomTo", zoomFileItem));
    Pick(editItem);
    EXPECT_EQ(Text("lblEditStatus"), "READY FOR EDITS");
    EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuDiscardChanges", "mnuCommitChanges"));
    EXPECT_FALSE(Enabled(nameBox));
    EXPECT_FALSE(Enabled("cmdForward"));
}

TEST_P(Workflow, AddsAndCopiesIntoTheOwnFile) {
    Start();
    AddAs("");
    const std::pair<std::string, std::string> taken[]{{"mnuAddNew", noun},
                                                      {"mnuCopyAsNew", events ? "event" : "UPIssue"}};
    for (const auto& [item, called] : taken) {
        AddAs("aPPLE", item);
        EXPECT_EQ(prompts.TakeTranscript().back(), "Message: The chosen name matches that of an existing " +
                                                       called + ".  The " + called +
                                                       " name must be unique, please try again.");
    }
    AddAs(" !? ");
    EXPECT_THAT(prompts.TakeTranscript().back(), StartsWith("Message: "));
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ") << "no record without a name";
    AddAs("2 Fast");
    EXPECT_EQ(Shown(), "TwoFast, 4 of 4, " + adding);
    EXPECT_EQ(Text("lblEditStatus"), "");
    EXPECT_EQ(Text(fileBox), ownFile);
    EXPECT_EQ(Text("txtProbability"), events ? "100" : "0");
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    AddAs("Copy", "mnuCopyAsNew");
    Pick("mnuCommitChanges");
    EXPECT_EQ(Shown(), "Copy, 4 of 4, " + edited);
    WriteWhenAsked(ownFile);
    EXPECT_EQ(OnDisk(ownFile), About("Copy", "about Apple"));
}

TEST_P(Workflow, ScrollsNoFormWhenEditingEnds) {
    Start();
    window->resize(window->width(), 400);
    const auto* bar = Get<QScrollArea>("scrDetails")->verticalScrollBar();
    for (const char* end : {"mnuDiscardChanges", "mnuCommitChanges"}) {
        Pick(editItem);
        const int before = bar->value();
        ASSERT_LT(before, bar->maximum()) << end;
        Pick(end);
        EXPECT_EQ(bar->value(), before) << end;
    }
}

TEST_P(Workflow, CommitsWritesAndMovesTheEdit) {
    Start();
    Commit("a \"quoted\" 5% text");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    EXPECT_EQ(Text("txtEdited"), "YES");
    EditText("another");
    Type(editor.NumberFields[0], QStringLiteral("99999999999"));
    Enter(textField);
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Number, 6);
    EXPECT_EQ(handler.LastCallStack(), Routines({"mnuCommitChanges_Click", "Save" + word}));
    EXPECT_TRUE(Get<QWidget>(editor.NumberFields[0])->hasFocus());
    EXPECT_EQ(Text(textField), "another") << "a failing commit keeps the edit";
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Text(textField), "a 'quoted' 5%% text") << "an earlier commit stays";
    WriteWhenAsked(fileA, false);
    EXPECT_EQ(OnDisk(fileA), Block("Apple") + Block("Cherry"));
    WriteWhenAsked(fileA);
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EXPECT_EQ(OnDisk(fileA), About("Apple", "a 'quoted' 5%% text") + Block("Cherry"));
    Pick("mnuWriteToFile"); // nothing to write, nothing asked
    EditText("moved");
    Choose(fileBox, fileB);
    Pick("mnuCommitChanges");
    Write();
    EXPECT_EQ(OnDisk(fileA), Block("Cherry"));
    EXPECT_EQ(OnDisk(fileB), About("Apple", "moved") + Block("Banana"));
}

TEST_P(Workflow, TellsWhatAWriteDropsAndAsksBeforeItReplacesOutsideChanges) {
    Put("A", "// by hand\r\n" + Block("Apple") + Block("Cherry"));
    Start();
    Commit("text");
    const std::string outside = "// from outside\r\n" + Block("Apple");
    Put("A", outside);
    const std::string question =
        "These files are no longer what was read.  Another program has changed them:||" + fileA +
        "||Writing replaces those changes.  Proceed?";
    for (const bool yes : {false, true}) {
        prompts.ExpectAsk("", true).ExpectAsk(question, yes);
        Pick("mnuWriteToFile");
        EXPECT_EQ(OnDisk(fileA) == outside, !yes);
    }
    EXPECT_THAT(prompts.Questions[0].Details,
                AllOf(HasSubstr("lost: 1 comment\r"), HasSubstr("- // from outside\r")));
    EXPECT_THAT(Text("lblEditStatus"), HasSubstr(" is kept as A."));
    EXPECT_TRUE(prompts.Questions[0].DetailsOpen);
    EXPECT_TRUE(prompts.Questions[1].DefaultNo);
    Commit("more");
    Write();
    EXPECT_FALSE(prompts.Questions.back().DetailsOpen) << "nothing is lost";
}

TEST_P(Workflow, OffersToReadWhatAnotherProgramChanged) {
    Start();
    const auto comeBack = [this] {
        QEvent activation(QEvent::ActivationChange);
        QCoreApplication::sendEvent(window.get(), &activation);
        QCoreApplication::processEvents();
    };
    comeBack();
    {
        const Fault unreadable("open", 0, EACCES);
        comeBack();
        EXPECT_THAT(Text("lblEditStatus"), HasSubstr(fileA));
        Click("cmdForward");
        comeBack();
        EXPECT_EQ(Text("lblEditStatus"), "READ ONLY") << "told once";
        Click("cmdBack");
    }
    Put("A", Block("Apple"));
    Pick(editItem);
    comeBack();
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "while something is pending";
    Pick("mnuDiscardChanges");
    prompts.ExpectAsk("Another program has changed these files:||" + fileA +
                          "||Do you wish to read all files again?",
                      false);
    comeBack();
    comeBack();
    EXPECT_EQ(Text("lblWhereWeAt"), "1 of 3") << "declined, and not asked again";
    Put("B", Block("Banana") + Block("Date"));
    prompts.ExpectAsk("", true);
    comeBack();
    EXPECT_TRUE(window->Records().Find("Date"));
}

TEST_P(Workflow, DeletesWhatIsMarkedAndAFileWithItsLastRecord) {
    Start();
    Click("cmdBack");
    const std::string question = "Are you sure you wish to mark this " + noun + " for deletion?";
    prompts.ExpectAsk(question, false).ExpectAsk(question, true).ExpectAsk(question, true);
    for (const std::string& status : {std::string(), std::string("MARKED FOR DELETION"), edited}) {
        Pick("mnuDelete");
        EXPECT_EQ(Shown(), "Banana, 3 of 3, " + status);
        EXPECT_EQ(FromQt(Get<QAction>("mnuDelete")->text()),
                  status.starts_with("MARKED") ? "&Un-Delete" : "&Delete");
    }
    Pick("mnuDelete");
    WriteWhenAsked(fileB);
    EXPECT_THAT(FilesOnDisk(), ElementsAre(fileA));
}

TEST_P(Workflow, RenamesAFileAndKeepsTheNewNameWhenTheWriteFails) {
    const std::string wall = FileName("Wall");
    temp.Write(editor.Folder + wall + "/in the way", "");
    Start();
    const std::string prompt =
        "Rename the file " + fileA + " to:||This change will affect every " + noun + " owned by " + fileA;
    prompts.ExpectInput(prompt, "x/*y").ExpectInput(prompt, "nul").ExpectInput(prompt, wall);
    Pick("mnuRenameThisFile");
    EXPECT_EQ(prompts.Transcript.back(),
              "Message[Information]: Your filename may not contain the character \"/\"");
    Pick("mnuRenameThisFile");
    EXPECT_EQ(prompts.Transcript.back(),
              "Message[Information]: Your filename may not be \"nul\", which Windows keeps for itself");
    Pick("mnuRenameThisFile");
    WriteWhenAsked(wall + "|" + fileA);
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Parameters, "<" + wall + ">");
    EXPECT_EQ(handler.LastCallStack(), Routines({"mnuWriteToFile_Click", "WriteToFile", "WriteItDown"}));
    EXPECT_EQ(OnDisk(fileA), Block("Apple") + Block("Cherry"));
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    EXPECT_EQ(Text(fileBox), wall);
    std::filesystem::remove_all(temp.Host() / (editor.Folder + wall));
    WriteWhenAsked(wall + "|" + fileA);
    EXPECT_THAT(FilesOnDisk(), UnorderedElementsAre(fileB, wall));
    EXPECT_EQ(OnDisk(wall), Block("Apple") + Block("Cherry"));
}

TEST_P(Workflow, RemembersFilesThatLoseAMovedRecordAndRefreshesBackups) {
    Settings.AutoBackup = true;
    Start();
    prompts.ExpectInput("Please enter the new filename to use.", "").ExpectInput("", "New");
    Pick(moveItem);
    Pick(moveItem);
    EXPECT_EQ(Text(fileBox), "New." + word);
    prompts.ExpectAsk("", true);
    window->close();
    Reopen();
    Click("cmdBack");
    Commit("changed");
    WriteWhenAsked(fileB + "|" + fileA);
    const std::string mark = events ? "EVENT" : "UPIssue";
    EXPECT_EQ(temp.Read("Home/BackupData/B.latest" + mark), About("Banana", "changed"));
    Click("cmdBack");
    Commit("changed again");
    WriteWhenAsked(fileB, false);
}

TEST_P(Workflow, ShowsAndWritesInTheSortedOrder) {
    Put("A", Block("Cherry") + Block("apple"));
    Settings.SortBy = "1";
    Start();
    EXPECT_EQ(SortOnShow(), "mnuSortAlphabetically");
    EXPECT_EQ(Shown(), "apple, 1 of 3, ");
    EXPECT_FALSE(Enabled(zoomFileItem));
    Pick(sortByFileItem);
    Pick(sortByFileItem);
    EXPECT_EQ(SortOnShow(), sortByFileItem) << "also when it is picked again";
    EXPECT_EQ(Shown(), "Cherry, 1 of 3, ");
    Pick("mnuSortAlphabetically");
    Commit("about apple");
    Settings.SortBy = "0";
    Write();
    EXPECT_EQ(OnDisk(fileA), Block("apple") + Block("Cherry"));
    EXPECT_EQ(SortOnShow(), sortByFileItem) << "the setting rules again after a write";
}

TEST_P(Workflow, HidesTheFormWithoutADataDirectoryAndOffersOnlyAddNewWithoutRecords) {
    std::filesystem::remove_all(temp.Host() / "Game/Data");
    Start();
    EXPECT_THAT(prompts.Transcript, ElementsAre("Message[Critical]: Unable to acces the Velmora Data" +
                                                std::string(events ? "" : "\\UP_Issue") + " directory!"));
    for (const bool shown : {false, true}) {
        EXPECT_EQ(Get<QWidget>(nameBox)->isVisible(), shown);
        EXPECT_EQ(Get<QMenu>("mnuEdit")->menuAction()->isEnabled(), shown);
        EXPECT_EQ(Shown(), ", , ");
        EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuAddNew"));
        EXPECT_FALSE(Enabled("cmdBack"));
        window->close();
        Put("A", "");
        Reopen();
    }
    AddAs("First");
    EXPECT_EQ(Shown(), "First, 1 of 1, " + adding);
}

TEST_P(Workflow, NeverWritesAHalfReadLibrary) {
    Put("B", "Odd 1\r\nOdd 2\r\nOdd 3\r\n" + Broken());
    prompts.ShowRestAsList = true;
    Start();
    ASSERT_EQ(prompts.Transcript.size(), 4u);
    EXPECT_THAT(prompts.Transcript[2], StartsWith("List: Unrecognized token! a(0) = Odd, sValue = 3"));
    EXPECT_THAT(prompts.Transcript[3], StartsWith("Error[6]: Overflow"));
    EXPECT_THAT(prompts.Errors[0].Description, HasSubstr("file " + fileB + ", line 5, key Probability"));
    EXPECT_EQ(handler.LastCallStack(),
              Routines({"Form_Load", "InitForm", "LoadCurrent" + word + "s", "ParseOut" + word + "File"}));
    const Strings onWithNothingShown{"mnuSortAlphabetically", "mnuZoomTo", zoomFileItem};
    EXPECT_EQ(MenuItemsOn(), onWithNothingShown);
    EXPECT_FALSE(Enabled(textField));
    EXPECT_THAT(Text("lblEditStatus"), HasSubstr("Read Files Again"));
    Click("cmdBack");
    EXPECT_EQ(Shown(), "Cherry, 2 of 2, ");
    EXPECT_EQ(MenuItemsOn(), onWithNothingShown) << "an edit could not be written";
    Put("B", Block("Banana"));
    Pick("mnuReadAgain");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_TRUE(Enabled("mnuWriteToFile"));
    Put("B", Broken());
    Pick("mnuReadAgain");
    EXPECT_EQ(Shown(), ", , ") << "nothing is shown after a failed reading";
    EXPECT_EQ(MenuItemsOn(), onWithNothingShown);
    Click("cmdForward");
    EXPECT_EQ(Shown(), "Apple, 1 of 2, ");
}

INSTANTIATE_TEST_SUITE_P(Editors, Workflow, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
