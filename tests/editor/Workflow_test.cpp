// What every editor does alike: modes, files and what is asked on the way.
#include "editor/Editors.h"

namespace velmora {
namespace {

class Workflow : public EditorTest {
  protected:
    void AddAs(const std::string& name, const std::string& item = "mnuAddNew") {
        prompts.ExpectInput("Please enter the name of this new " + editor.Noun +
                                ", there should be no spaces in the chosen name.",
                            name);
        Pick(item);
    }
    Strings MenuItemsOn() {
        Strings on;
        for (const std::string& item :
             Strings{editor.EditItem, "mnuDiscardChanges", "mnuCommitChanges", "mnuRenameThisFile", moveItem,
                     "mnuAddNew", "mnuCopyAsNew", "mnuDelete", "mnuWriteToFile", "mnuSortAlphabetically",
                     "mnuZoomTo", zoomFileItem})
            if (Enabled(item))
                on.push_back(item);
        return on;
    }
    std::string SortOnShow() { return Ticked({"mnuSortAlphabetically", editor.SortByFileItem.c_str()}); }

    const std::string adding = editor.Noun == "event" ? "ADDING THIS EVENT" : "ADDING THIS UP ISSUE";
    const std::string edited = "EDITED, PENDING A WRITE TO FILE";
    const std::string deleteQuestion = "Are you sure you wish to mark this " + editor.Noun + " for deletion?";
};

TEST_P(Workflow, BrowsesRoundInBothDirections) {
    Start();
    for (const char* shown : {"Apple, 1 of 3, ", "Cherry, 2 of 3, ", "Banana, 3 of 3, "}) {
        EXPECT_EQ(Shown(), shown);
        Click("cmdForward");
    }
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Click("cmdBack");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    for (const auto& [key, shown] :
         {std::pair{Qt::Key_Right, "Apple, 1 of 3, "}, std::pair{Qt::Key_Left, "Banana, 3 of 3, "}}) {
        QTest::keyClick(window.get(), key, Qt::AltModifier);
        EXPECT_EQ(Shown(), shown) << "not at once";
    }
    EXPECT_THAT(prompts.Transcript, IsEmpty());
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
    EXPECT_EQ(Shown(), "First, 1 of 1, " + adding);
}

TEST_P(Workflow, SwitchesItemsWithTheMode) {
    Start();
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_FALSE(Enabled(editor.TextField));
    EXPECT_TRUE(Enabled("lblStatus"));
    EXPECT_THAT(MenuItemsOn(), ElementsAre(editor.EditItem, "mnuRenameThisFile", moveItem, "mnuAddNew",
                                           "mnuCopyAsNew", "mnuDelete", "mnuWriteToFile",
                                           "mnuSortAlphabetically", "mnuZoomTo", zoomFileItem));
    Pick(editor.EditItem);
    EXPECT_EQ(Text("lblEditStatus"), "READY FOR EDITS");
    EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuDiscardChanges", "mnuCommitChanges"));
    EXPECT_TRUE(Enabled(editor.TextField));
    EXPECT_FALSE(Enabled(nameBox));
    EXPECT_FALSE(Enabled("cmdForward"));
    Pick("mnuDiscardChanges");
    Pick("mnuSortAlphabetically");
    EXPECT_FALSE(Enabled(zoomFileItem));
}

TEST_P(Workflow, AddsARecordToTheOwnFile) {
    Start();
    AddAs("");
    const std::pair<std::string, std::string> taken[]{{"mnuAddNew", editor.Noun},
                                                      {"mnuCopyAsNew", editor.CopyNoun}};
    for (const auto& [item, noun] : taken) {
        AddAs("aPPLE", item);
        EXPECT_EQ(prompts.TakeTranscript().back(), "Message: The chosen name matches that of an existing " +
                                                       noun + ".  The " + noun +
                                                       " name must be unique, please try again.");
    }
    AddAs("2 Fast");
    EXPECT_EQ(Shown(), "TwoFast, 4 of 4, " + adding);
    EXPECT_EQ(Text("lblEditStatus"), "");
    EXPECT_EQ(Text(fileBox), editor.OwnFile);
    EXPECT_EQ(Text("txtProbability"), editor.Word == "Event" ? "100" : "0");
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    AddAs("Date");
    prompts.ExpectAsk("", true);
    Pick("mnuCommitChanges");
    EXPECT_EQ(Shown(), "Date, 4 of 4, " + edited);
    EXPECT_EQ(Text("txtEdited"), "YES");
}

TEST_P(Workflow, CommitsAndWritesTheEdit) {
    Start();
    Commit("a \"quoted\" 5% text");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    EXPECT_EQ(Text(editor.TextField), "a 'quoted' 5%% text");
    EditText("another");
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Text(editor.TextField), "a 'quoted' 5%% text") << "an earlier commit stays";
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    prompts.ExpectAsk(Question(FileName("A")), false).ExpectAsk(Question(FileName("A")), true);
    Pick("mnuWriteToFile");
    EXPECT_EQ(OnDisk(FileName("A")), Block("Apple") + Block("Cherry"));
    Pick("mnuWriteToFile");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EXPECT_EQ(OnDisk(FileName("A")),
              Block("Apple", editor.LongTexts[0].Key, "a 'quoted' 5%% text") + Block("Cherry"));
    prompts.TakeTranscript();
    Pick("mnuWriteToFile");
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "nothing to write, nothing asked";
}

TEST_P(Workflow, TellsWhatAWriteDropsAndAsksBeforeItReplacesOutsideChanges) {
    Put("A", "// by hand\r\n" + Block("Apple") + Block("Cherry"));
    Start();
    Commit("text");
    const std::string outside = "// from outside\r\n" + Block("Apple");
    Put("A", outside);
    const std::string question =
        "These files are no longer what was read.  Another program has changed them:||" + FileName("A") +
        "||Writing replaces those changes.  Proceed?";
    for (const bool yes : {false, true}) {
        prompts.ExpectAsk(Question(FileName("A")), true).ExpectAsk(question, yes);
        Pick("mnuWriteToFile");
        EXPECT_EQ(OnDisk(FileName("A")) == outside, !yes);
    }
    EXPECT_THAT(prompts.Questions[0].Details, HasSubstr("lost: 1 comment\r"));
    EXPECT_THAT(prompts.Questions[0].Details, HasSubstr("- // from outside\r"));
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
    Put("A", Block("Apple"));
    Pick(editor.EditItem);
    comeBack();
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "while something is pending";
    Pick("mnuDiscardChanges");
    prompts.ExpectAsk("Another program has changed these files:||" + FileName("A") +
                          "||Do you wish to read all files again?",
                      false);
    comeBack();
    comeBack();
    EXPECT_EQ(Text("lblWhereWeAt"), "1 of 3") << "declined, and not asked again";
    Put("B", Block("Banana") + Block("Date"));
    prompts.ExpectAsk("", true);
    comeBack();
    EXPECT_EQ(window->Records().Records.Count(), 3u);
    EXPECT_TRUE(window->Records().Find("Date"));
    EXPECT_EQ(prompts.Transcript.size(), 2u);
}

TEST_P(Workflow, CopiesIntoTheOwnFile) {
    Start();
    AddAs("Copy", "mnuCopyAsNew");
    EXPECT_EQ(Text(editor.TextField), "about Apple");
    EXPECT_EQ(Text(fileBox), editor.OwnFile);
    Pick("mnuCommitChanges");
    prompts.ExpectAsk(Question(editor.OwnFile), true);
    Pick("mnuWriteToFile");
    EXPECT_EQ(OnDisk(editor.OwnFile), Block("Copy", editor.LongTexts[0].Key, "about Apple"));
}

TEST_P(Workflow, DeletesWhatIsMarkedAndAFileWithItsLastRecord) {
    Start();
    Click("cmdBack");
    prompts.ExpectAsk(deleteQuestion, false);
    Pick("mnuDelete");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    prompts.ExpectAsk(deleteQuestion, true);
    Pick("mnuDelete");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, MARKED FOR DELETION");
    EXPECT_EQ(Get<QAction>("mnuDelete")->text(), QStringLiteral("&Un-Delete"));
    Pick("mnuDelete");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, " + edited);
    prompts.ExpectAsk(deleteQuestion, true).ExpectAsk(Question(FileName("B")), true);
    Pick("mnuDelete");
    Pick("mnuWriteToFile");
    EXPECT_THAT(FilesOnDisk(), ElementsAre(FileName("A")));
    EXPECT_EQ(Shown(), "Apple, 1 of 2, ");
}

TEST_P(Workflow, MovesACommittedRecordBetweenFiles) {
    Start();
    EditText("moved");
    Choose(fileBox, FileName("B"));
    Pick("mnuCommitChanges");
    Write();
    EXPECT_EQ(OnDisk(FileName("A")), Block("Cherry"));
    EXPECT_EQ(OnDisk(FileName("B")), Block("Apple", editor.LongTexts[0].Key, "moved") + Block("Banana"));
}

TEST_P(Workflow, RenamesAFileWithAllItsRecords) {
    Start();
    const std::string prompt = "Rename the file " + FileName("A") + " to:||This change will affect every " +
                               editor.Noun + " owned by " + FileName("A");
    for (const auto& [refused, reason] : {std::pair{"a:b", "\":\""}, std::pair{"x/*y", "\"/\""}}) {
        prompts.ExpectInput(prompt, refused);
        Pick("mnuRenameThisFile");
        EXPECT_EQ(prompts.Transcript.back(),
                  std::string("Message[Information]: Your filename may not contain the character ") + reason);
    }
    prompts.ExpectInput(prompt, FileName("Story"))
        .ExpectAsk(Question(FileName("Story") + "|" + FileName("A")), true);
    Pick("mnuRenameThisFile");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    EXPECT_EQ(Text(fileBox), FileName("Story"));
    Pick("mnuWriteToFile");
    EXPECT_THAT(FilesOnDisk(), ElementsAre(FileName("B"), FileName("Story")));
    EXPECT_EQ(OnDisk(FileName("Story")), Block("Apple") + Block("Cherry"));
}

TEST_P(Workflow, MovesOneRecordToANewFileAndKeepsItWhenTheWriteFails) {
    const std::string wall = "Wall." + editor.Word;
    Files::CreateFolder(temp / editor.Folder + wall);
    temp.Write(editor.Folder + wall + "/in the way", "");
    Start();
    prompts.ExpectInput("Please enter the new filename to use.", "").ExpectInput("", "Wall");
    Pick(moveItem);
    Pick(moveItem);
    EXPECT_EQ(Text(fileBox), wall);
    Write();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Parameters, "<" + wall + ">");
    const auto routine = [this](const char* name) { return editor.Records->Routine(name); };
    EXPECT_THAT(handler.LastCallStack(),
                ElementsAre(routine("mnuWriteToFile_Click"), routine("WriteToFile"), routine("WriteItDown")));
    EXPECT_EQ(OnDisk(FileName("A")), Block("Apple") + Block("Cherry"));
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    std::filesystem::remove_all(temp.Host() / (editor.Folder + wall));
    prompts.ExpectAsk(Question(wall + "|" + FileName("A")), true);
    Pick("mnuWriteToFile");
    EXPECT_EQ(OnDisk(wall), Block("Apple"));
    EXPECT_EQ(OnDisk(FileName("A")), Block("Cherry"));
}

TEST_P(Workflow, RemembersLosingFilesAndRefreshesBackups) {
    Settings.AutoBackup = true;
    Start();
    prompts.ExpectInput("", "New").ExpectAsk("", true);
    Pick(moveItem);
    window->close();
    Reopen();
    Click("cmdBack");
    Commit("changed");
    prompts.ExpectAsk(Question(FileName("B") + "|" + FileName("A")), true);
    Pick("mnuWriteToFile");
    EXPECT_THAT(OnDisk(FileName("B")), HasSubstr("\"changed\""));
    const std::string mark = editor.Word == "Event" ? "EVENT" : "UPIssue";
    EXPECT_EQ(temp.Read("Home/BackupData/B.1st" + mark), Block("Banana"));
    EXPECT_EQ(temp.Read("Home/BackupData/B.latest" + mark), OnDisk(FileName("B")));
    prompts.ExpectAsk(Question(FileName("B")), false);
    Click("cmdBack");
    Commit("changed again");
    Pick("mnuWriteToFile");
}

TEST_P(Workflow, ShowsAndWritesInTheSortedOrder) {
    Put("A", Block("Cherry") + Block("apple"));
    Settings.SortBy = "1";
    Start();
    EXPECT_EQ(SortOnShow(), "mnuSortAlphabetically");
    EXPECT_FALSE(Enabled(zoomFileItem));
    EXPECT_EQ(Shown(), "apple, 1 of 3, ");
    for (int again = 0; again < 2; ++again) {
        Pick(editor.SortByFileItem);
        EXPECT_EQ(SortOnShow(), editor.SortByFileItem);
        EXPECT_EQ(Shown(), "Cherry, 1 of 3, ");
    }
    EXPECT_TRUE(Enabled(zoomFileItem));
    Commit("about Cherry");
    Write();
    EXPECT_EQ(OnDisk(FileName("A")), Block("Cherry") + Block("apple"));
    EXPECT_EQ(SortOnShow(), "mnuSortAlphabetically") << "the setting rules again after a write";
    EXPECT_EQ(Shown(), "apple, 1 of 3, ");
    Commit("about apple");
    Write();
    EXPECT_EQ(OnDisk(FileName("A")), Block("apple") + Block("Cherry"));
}

TEST_P(Workflow, AsksBeforeClosing) {
    Start();
    QWidget main;
    QObject::connect(window.get(), &RecordWindow::Closed, &main, &QWidget::show);
    EditText("x");
    prompts.ExpectAsk("Do you wish to discard your changes and exit?", false);
    EXPECT_FALSE(window->close());
    Pick("mnuCommitChanges");
    prompts.ExpectAsk("There are changed " + editor.Noun +
                          "s that have not yet been committed to file, do you still wish to exit?",
                      false);
    EXPECT_FALSE(window->close());
    EditText("y");
    prompts.ExpectAsk("Do you wish to discard your changes and exit?", true);
    EXPECT_TRUE(window->close());
    EXPECT_TRUE(main.isVisible());
    EXPECT_EQ(OnDisk(FileName("A")), Block("Apple") + Block("Cherry"));
    Reopen();
    EXPECT_EQ(Text(editor.TextField), "about Apple");
    EXPECT_FALSE(Enabled(editor.TextField));
}

TEST_P(Workflow, LeavesTheRecordAloneWhenANumberFails) {
    Start();
    EditText("not taken");
    Type(editor.NumberFields[0], QStringLiteral("99999999999"));
    Enter(editor.TextField);
    Pick("mnuCommitChanges");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Number, 6);
    EXPECT_THAT(handler.LastCallStack(), ElementsAre(editor.Records->Routine("mnuCommitChanges_Click"),
                                                     editor.Records->Routine("Save" + editor.Word)));
    EXPECT_TRUE(Get<QWidget>(editor.NumberFields[0])->hasFocus());
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Text(editor.TextField), "about Apple");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
}

TEST_P(Workflow, HidesTheFormWithoutADataDirectory) {
    Start();
    window->close();
    std::filesystem::remove_all(temp.Host() / "Game/Data");
    Reopen();
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("Message[Critical]: Unable to acces the Velmora Data" + editor.MissingFolder));
    EXPECT_EQ(Shown(), ", , ");
    EXPECT_FALSE(Enabled("cmdForward"));
    EXPECT_FALSE(Get<QWidget>(nameBox)->isVisible());
    EXPECT_FALSE(Get<QMenu>("mnuEdit")->menuAction()->isEnabled());
    window->close();
    Put("A", Block("Apple"));
    Reopen();
    EXPECT_TRUE(Get<QWidget>(nameBox)->isVisible());
    EXPECT_TRUE(Get<QMenu>("mnuEdit")->menuAction()->isEnabled());
}

TEST_P(Workflow, NeverWritesAHalfReadLibrary) {
    Put("B", Broken());
    Start();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_THAT(prompts.Errors[0].Description,
                HasSubstr("file " + FileName("B") + ", line 3, key Probability"));
    EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuAddNew", "mnuSortAlphabetically", "mnuZoomTo", zoomFileItem));
    EXPECT_FALSE(Enabled(editor.TextField));
    EXPECT_THAT(Text("lblEditStatus"), HasSubstr("Read Files Again"));
    Put("B", Block("Banana"));
    Pick("mnuReadAgain");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EXPECT_TRUE(Enabled("mnuWriteToFile"));
    Put("B", Broken());
    Pick("mnuReadAgain");
    EXPECT_EQ(Shown(), ", , ") << "nothing is shown after a failed reading";
    EXPECT_THAT(MenuItemsOn(), ElementsAre("mnuAddNew", "mnuSortAlphabetically", "mnuZoomTo", zoomFileItem));
}

TEST_P(Workflow, EditsWhatWasReadOfAHalfReadLibrary) {
    Put("B", Broken());
    Start();
    Click("cmdBack");
    EXPECT_EQ(Shown(), "Cherry, 2 of 2, ");
    EditText("kept");
    Type(editor.NumberFields[0], QStringLiteral("99999999999"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(prompts.Errors.size(), 2u);
    EXPECT_TRUE(Enabled(editor.TextField));
    EXPECT_EQ(Text(editor.TextField), "kept") << "a failing commit keeps the edit";
    Type(editor.NumberFields[0], QStringLiteral("1"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(Shown(), "Cherry, 2 of 2, " + edited);
    EXPECT_THAT(MenuItemsOn(), ElementsAre(editor.EditItem, "mnuAddNew", "mnuCopyAsNew", "mnuDelete",
                                           "mnuSortAlphabetically", "mnuZoomTo", zoomFileItem))
        << "no file is written, renamed or left";
}

TEST_P(Workflow, ListsWhatWasFoundBeforeAFailure) {
    Put("A", "Odd 1\r\nOdd 2\r\nOdd 3\r\nProbability 99999999999\r\n");
    prompts.ShowRestAsList = true;
    Start();
    ASSERT_EQ(prompts.Transcript.size(), 4u);
    EXPECT_THAT(prompts.Transcript[2], StartsWith("List: Unrecognized token! a(0) = Odd, sValue = 3"));
    EXPECT_THAT(prompts.Transcript[3], StartsWith("Error[6]: Overflow"));
    Strings routines;
    for (const std::string& name : {std::string("Form_Load"), std::string("InitForm"),
                                    "LoadCurrent" + editor.Word + "s", "ParseOut" + editor.Word + "File"})
        routines.push_back(editor.Records->Routine(name));
    EXPECT_EQ(handler.LastCallStack(), routines);
}

INSTANTIATE_TEST_SUITE_P(Editors, Workflow, EveryEditor, NameOfEditor);

} // namespace
} // namespace velmora
