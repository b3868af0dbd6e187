// Work survives a crash: the windows offer what their journals hold.
#include "editor/Editors.h"
#include "platform/FaultHook.h"

#include <cerrno>

namespace velmora {
namespace {

using ::testing::AllOf;

class UnwrittenWorkTest : public EditorTest {
  protected:
    UnwrittenWorkTest() { Start(); }
    ~UnwrittenWorkTest() override { gFaultHook = nullptr; }

    /// The program ends without closing its windows, and is started again.
    void Crash() {
        window.reset();
        Start();
    }
    std::string Shown() { return Text(nameBox) + ", " + Text(textField) + ", " + Text("lblStatus"); }
    static std::string Offer(int count) {
        return "The program ended before changes to these records were written to file: " +
               std::to_string(count) + ".|Do you wish to take them up again?";
    }

    const std::string journal = "Home/" + std::string(editor.Records->Word) + "s.journal";
};

TEST_P(UnwrittenWorkTest, IsOfferedAfterACrashAndCanBeWritten) {
    Commit("changed");
    Click("cmdForward");
    prompts.ExpectAsk("", true);
    Pick("mnuDelete");
    Click("cmdForward");
    prompts.ExpectInput("", "Story");
    Pick("mnuRenameThisFile");
    for (int crash = 0; crash < 2; ++crash) {
        prompts.ExpectAsk(Offer(3), true);
        Crash();
        EXPECT_EQ(prompts.Questions.back().Details, "Apple, " + FileName("A") + "\rCherry, " + FileName("A") +
                                                        ", to be deleted\rBanana, " + FileName("Story"));
        EXPECT_EQ(Shown(), "Apple, changed, " + edited);
        Click("cmdForward");
        EXPECT_EQ(Shown(), "Cherry, about Cherry, MARKED FOR DELETION");
        Click("cmdForward");
        EXPECT_EQ(Text(fileBox), FileName("Story"));
    }
    Write();
    EXPECT_THAT(OnDisk(FileName("A")), AllOf(HasSubstr("changed"), Not(HasSubstr("Cherry"))));
    EXPECT_EQ(OnDisk(FileName("Story")), Block("Banana"));
    EXPECT_FALSE(temp.Has(journal));
    Crash(); // and nothing is offered any more
}

TEST_P(UnwrittenWorkTest, IsNotOfferedAfterACleanClose) {
    Commit("given up");
    const std::string unsaved = "There are changed " + noun +
                                "s that have not yet been committed to file, do you still wish to exit?";
    const std::string editing = "Do you wish to discard your changes and exit?";
    prompts.ExpectAsk(unsaved, false).ExpectAsk(editing, false).ExpectAsk(editing, true);
    EXPECT_FALSE(window->close());
    EditText("more");
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(temp.Has(journal));
    EXPECT_TRUE(window->close());
    for (const Question& question : prompts.Questions) {
        EXPECT_TRUE(question.DefaultNo);
        EXPECT_THAT(question.Details, HasSubstr("\rApple, " + FileName("A")));
    }
    EXPECT_THAT(Files::ListFiles(temp / "Home"), IsEmpty());
    Reopen();
    EXPECT_EQ(Shown(), "Apple, about Apple, ");
    EXPECT_FALSE(Enabled(textField));
    Commit("given up, too");
    prompts.ExpectAsk("", true);
    Pick("mnuReadAgain");
    EXPECT_FALSE(temp.Has(journal));
}

TEST_P(UnwrittenWorkTest, IsTakenUpIntoAnEmptyLibrary) {
    Commit("changed");
    for (const char* file : {"A", "B"})
        Put(file, "");
    prompts.ExpectAsk(Offer(1), true);
    Crash();
    EXPECT_EQ(Shown(), "Apple, changed, " + edited);
    Click("cmdForward");
    EXPECT_TRUE(Enabled("cmdForward"));
}

TEST_P(UnwrittenWorkTest, IsKeptAsideWhenDeclined) {
    Commit("declined");
    prompts.ExpectAsk(Offer(1), false);
    Crash();
    EXPECT_EQ(Shown(), "Apple, about Apple, ");
    const std::string& told = prompts.Transcript.back();
    const std::string keptAs = "The changes are kept as ";
    ASSERT_THAT(told, HasSubstr(keptAs));
    EXPECT_THAT(Files::ReadWhole(told.substr(told.find(keptAs) + keptAs.size())), HasSubstr("declined"));
    EXPECT_FALSE(temp.Has(journal));
}

TEST_P(UnwrittenWorkTest, IsKeptAsideWhenItCannotBeRead) {
    Commit("whole");
    Commit("torn");
    window.reset();
    const std::string whole = temp.Read(journal);
    temp.Write(journal, whole.substr(0, whole.size() - 1));
    prompts.ExpectAsk(Offer(1), true);
    Start();
    EXPECT_EQ(Shown(), "Apple, whole, " + edited);
    EXPECT_THAT(prompts.Transcript[0], AllOf(StartsWith("Message[Exclamation]: Not all unwritten edits in "),
                                             HasSubstr("The file is kept as ")));
}

TEST_P(UnwrittenWorkTest, WaitsForALibraryThatCanBeRead) {
    Commit("waiting");
    window.reset();
    Put("B", Broken());
    Start();
    EXPECT_TRUE(window->close());
    Reopen();
    EXPECT_EQ(prompts.Errors.size(), 2u);
    Put("B", Block("Banana"));
    prompts.ExpectAsk(Offer(1), true);
    Pick("mnuReadAgain");
    EXPECT_EQ(Shown(), "Apple, waiting, " + edited);
}

TEST_P(UnwrittenWorkTest, StaysInTheWindowWhenTheDiskRefusesIt) {
    gFaultHook = [](const char* call) { return std::string_view(call) == "stat" ? 0 : ENOSPC; };
    Commit("kept");
    EXPECT_THAT(prompts.TakeTranscript(),
                ElementsAre(StartsWith("Message[Exclamation]: Your changes are safe in this window, but")));
    EXPECT_EQ(Shown(), "Apple, kept, " + edited);
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    Click("cmdForward");
    Commit("kept, too");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    gFaultHook = nullptr;
    Click("cmdForward");
    Commit("noted");
    prompts.ExpectAsk(Offer(3), true);
    Crash();
}

TEST_P(UnwrittenWorkTest, BelongsToTheProgramThatHasIt) {
    Commit("of the first");
    {
        const auto second = Make();
        second->Open();
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre(StartsWith("Message[Exclamation]: This editor is open in another")));
        EXPECT_TRUE(second->close());
    }
    prompts.ExpectAsk(Offer(1), true);
    Crash();
    EXPECT_EQ(Shown(), "Apple, of the first, " + edited);
}

INSTANTIATE_TEST_SUITE_P(Editors, UnwrittenWorkTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
