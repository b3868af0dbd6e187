// Work survives a crash: the windows offer what their journals hold.
#include "editor/EditorFixture.h"
#include "events/frmEvents.h"
#include "platform/FaultHook.h"
#include "upissues/frmUPIssues.h"

#include <cerrno>

namespace velmora {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Editor {
    const RecordKind* Kind;
    std::unique_ptr<RecordWindow> (*Make)();
    std::string Folder;
    const char* NameBox;
    const char* FileBox;
    const char* TextField;
    const char* EditItem;
};

class UnwrittenWorkTest : public WindowTest, public ::testing::WithParamInterface<Editor> {
  protected:
    UnwrittenWorkTest() {
        Put("A", Block("Apple") + Block("Cherry"));
        Put("B", Block("Banana"));
        Start();
    }
    ~UnwrittenWorkTest() override { gFaultHook = nullptr; }

    void Start() {
        window = editor.Make();
        Reopen();
    }
    /// The program ends without closing its windows, and is started again.
    void Crash() {
        window.reset();
        Start();
    }
    [[nodiscard]] std::string Block(const std::string& name) const {
        auto record = editor.Kind->Make();
        editor.Kind->Name.SetText(*record, name);
        return BlockOf(*editor.Kind, *record);
    }
    [[nodiscard]] std::string FileName(const std::string& base) const {
        return base + std::string(editor.Kind->Extension);
    }
    void Put(const std::string& base, const std::string& text) {
        temp.Write(editor.Folder + FileName(base), text);
    }
    std::string OnDisk(const std::string& name) { return temp.Read(editor.Folder + name); }
    void Commit(const char* text) {
        Pick(editor.EditItem);
        Type(editor.TextField, QString::fromLatin1(text));
        prompts.ExpectAsk("", true); // the record is unfinished; that does not matter here
        Pick("mnuCommitChanges");
        prompts.TakeTranscript();
    }
    std::string Shown() {
        return Text(editor.NameBox) + ", " + Text(editor.TextField) + ", " + Text("lblStatus");
    }
    /// The files beside the settings.
    std::vector<std::string> Home() {
        auto names = Files::ListFiles(temp / "Home");
        std::sort(names.begin(), names.end());
        return names;
    }
    static std::string Offer(int count) {
        return "The program ended before changes to these records were written to file: " +
               std::to_string(count) + ".|Do you wish to take them up again?";
    }

    const Editor editor = GetParam();
    const std::string journal = std::string(editor.Kind->Word) + "s.journal";
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
        EXPECT_EQ(Shown(), "Cherry, , MARKED FOR DELETION");
        Click("cmdForward");
        EXPECT_EQ(Text(editor.FileBox), FileName("Story"));
    }
    prompts.ExpectAsk("", true);
    Pick("mnuWriteToFile");
    EXPECT_THAT(OnDisk(FileName("A")), AllOf(HasSubstr("changed"), Not(HasSubstr("Cherry"))));
    EXPECT_THAT(OnDisk(FileName("Story")), HasSubstr(std::string(editor.Kind->Header) + " Banana"));
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
    EXPECT_EQ(Shown(), "Apple, , ");
    Commit("given up, too");
    prompts.ExpectAsk("", true);
    Pick("mnuReadAgain");
    EXPECT_FALSE(temp.Has("Home/" + journal));
}

TEST_P(UnwrittenWorkTest, IsKeptAsideWhenDeclined) {
    Commit("declined");
    prompts.ExpectAsk(Offer(1), false);
    Crash();
    EXPECT_EQ(Shown(), "Apple, , ");
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
    Put("B", "Probability 99999999999\r\nEffectProbability 99999999999\r\nPopularity x\r\n" +
                 std::string(editor.Kind->Header) + " X\r\nYearsInEffect 99999999999\r\n");
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
    Pick(editor.EditItem);
    Type(editor.TextField, QStringLiteral("kept"));
    prompts.ExpectAsk("", true);
    Pick("mnuCommitChanges");
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

template <class Window>
std::unique_ptr<RecordWindow> Make() {
    return std::make_unique<Window>();
}

INSTANTIATE_TEST_SUITE_P(Editors, UnwrittenWorkTest,
                         ::testing::Values(Editor{&EventKind, Make<frmEvents>, "Game/Data/", "txtEventName",
                                                  "cboEventFile", "txtDescription", "mnuEditThisEvent"},
                                           Editor{&UPIssueKind, Make<frmUPIssues>, "Game/Data/UP_Issues/",
                                                  "txtUPIssueName", "cboUPIssueFile", "txtQuestion",
                                                  "mnuEditThisIssue"}),
                         [](const auto& editor) { return std::string(editor.param.Kind->Word); });

} // namespace
} // namespace velmora
