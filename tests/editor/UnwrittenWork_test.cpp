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
    std::string Shown() { return Text(nameBox) + ", " + Text(editor.TextField) + ", " + Text("lblStatus"); }
    /// The files beside the settings.
    std::vector<std::string> Home() { return Sorted("Home"); }
    static std::string Offer(int count) {
        return "The program ended before changes to these records were written to file: " +
               std::to_string(count) + ".|Do you wish to take them up again?";
    }

    const std::string journal = std::string(editor.Records->Word) + "s.journal";
};

TEST_P(UnwrittenWorkTest, IsOfferedAfterACrashAndCanBeWritten) {
    Commit("changed");
    Click("cmdForward");
    prompts.ExpectAsk("", true);
    Pick("mnuDelete");
    Click("cmdForward");
    prompts.ExpectInput("", "Story");
    Pick("mnuRenameThisFile");
    prompts.TakeTranscript();
    for (int crash = 0; crash < 2; ++crash) {
        prompts.ExpectAsk(Offer(3), true);
        Crash();
        EXPECT_EQ(prompts.TakeTranscript().size(), 1u);
        EXPECT_EQ(prompts.Questions.back().Details, "Apple, " + FileName("A") + "\rCherry, " + FileName("A") +
                                                        ", to be deleted\rBanana, " + FileName("Story"));
        EXPECT_EQ(Shown(), "Apple, changed, EDITED, PENDING A WRITE TO FILE");
        Click("cmdForward");
        EXPECT_EQ(Shown(), "Cherry, about Cherry, MARKED FOR DELETION");
        Click("cmdForward");
        EXPECT_EQ(Text(fileBox), FileName("Story"));
    }
    Write();
    EXPECT_THAT(OnDisk(FileName("A")), AllOf(HasSubstr("changed"), Not(HasSubstr("Cherry"))));
    EXPECT_THAT(OnDisk(FileName("Story")), HasSubstr(std::string(editor.Records->Header) + " Banana"));
    EXPECT_FALSE(temp.Has(editor.Folder + FileName("B")));
    EXPECT_FALSE(temp.Has("Home/" + journal));
    prompts.TakeTranscript();
    Crash();
    EXPECT_TRUE(prompts.Transcript.empty()) << prompts.Transcript[0];
}

TEST_P(UnwrittenWorkTest, IsNotOfferedAfterACleanClose) {
    Commit("given up");
    EXPECT_TRUE(temp.Has("Home/" + journal));
    prompts.ExpectAsk("", false).ExpectAsk("", true);
    EXPECT_FALSE(window->close());
    EXPECT_TRUE(temp.Has("Home/" + journal));
    EXPECT_TRUE(window->close());
    EXPECT_THAT(Home(), ElementsAre());
    Reopen();
    EXPECT_EQ(Shown(), "Apple, about Apple, ");
    Commit("given up, too");
    prompts.ExpectAsk("", true);
    Pick("mnuReadAgain");
    EXPECT_FALSE(temp.Has("Home/" + journal));
}

TEST_P(UnwrittenWorkTest, IsKeptAsideWhenDeclined) {
    Commit("declined");
    prompts.ExpectAsk(Offer(1), false);
    Crash();
    EXPECT_EQ(Shown(), "Apple, about Apple, ");
    EXPECT_THAT(prompts.Transcript.back(),
                HasSubstr("The changes are kept as " + Files::Join(temp / "Home", journal)));
    ASSERT_EQ(Home().size(), 2u) << "the copy and the lock";
    EXPECT_THAT(temp.Read("Home/" + Home()[0]), HasSubstr("declined"));
}

TEST_P(UnwrittenWorkTest, IsKeptAsideWhenItCannotBeRead) {
    Commit("whole");
    Commit("torn");
    window.reset();
    const std::string whole = temp.Read("Home/" + journal);
    temp.Write("Home/" + journal, whole.substr(0, whole.size() - 1));
    prompts.ExpectAsk(Offer(1), true);
    Start();
    EXPECT_EQ(Shown(), "Apple, whole, EDITED, PENDING A WRITE TO FILE");
    EXPECT_THAT(prompts.Transcript[0], AllOf(StartsWith("Message[Exclamation]: Not all unwritten edits in "),
                                             HasSubstr("The file is kept as ")));
    window.reset();
    Settings.SetGamePath(temp / "Other/");
    for (const char* folder : {"Other/Data/UP_Issues", "Other/GFX"})
        Files::CreateFolder(temp / folder);
    prompts.TakeTranscript();
    Start();
    ASSERT_EQ(prompts.Transcript.size(), 1u);
    EXPECT_THAT(prompts.Transcript[0], HasSubstr("do not belong to this data directory"));
    EXPECT_EQ(Shown(), ", , ");
    EXPECT_FALSE(temp.Has("Home/" + journal));
}

TEST_P(UnwrittenWorkTest, WaitsForALibraryThatCanBeRead) {
    Commit("waiting");
    window.reset();
    Put("B", Broken());
    Start();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_TRUE(window->close());
    Reopen();
    Put("B", Block("Banana"));
    prompts.ExpectAsk(Offer(1), true);
    Pick("mnuReadAgain");
    EXPECT_EQ(Shown(), "Apple, waiting, EDITED, PENDING A WRITE TO FILE");
}

TEST_P(UnwrittenWorkTest, StaysInTheWindowWhenTheDiskRefusesIt) {
    gFaultHook = [](const char*) { return ENOSPC; };
    Commit("kept");
    EXPECT_THAT(prompts.Transcript.back(),
                StartsWith("Message[Exclamation]: Your changes are safe in this window, but"));
    EXPECT_EQ(Shown(), "Apple, kept, EDITED, PENDING A WRITE TO FILE");
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
    Click("cmdForward");
    Commit("kept, too");
    EXPECT_TRUE(prompts.Errors.empty());
    gFaultHook = nullptr;
    Click("cmdForward");
    Commit("noted");
    prompts.ExpectAsk(Offer(3), true);
    Crash();
}

TEST_P(UnwrittenWorkTest, BelongsToTheProgramThatHasIt) {
    Commit("of the first");
    {
        const auto second = editor.Make();
        second->Open();
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre(StartsWith("Message[Exclamation]: This editor is open in another")));
        EXPECT_TRUE(second->close());
    }
    prompts.ExpectAsk(Offer(1), true);
    Crash();
    EXPECT_EQ(Shown(), "Apple, of the first, EDITED, PENDING A WRITE TO FILE");
}

INSTANTIATE_TEST_SUITE_P(Editors, UnwrittenWorkTest, EveryEditor, NameOfEditor);

} // namespace
} // namespace velmora
