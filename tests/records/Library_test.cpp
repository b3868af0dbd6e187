#include "records/Library.h"

#include "FailureOf.h"
#include "Fault.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

#include <cerrno>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class LibraryTest : public LibraryFixture {
  protected:
    LibraryTest() : LibraryFixture(EventKind, "MyEvents.event") {}
    const clsEvent& At(std::size_t at) const { return As<clsEvent>(at); }
};

TEST_F(LibraryTest, ReadsFilesInPathOrderWithoutRegardToCase) {
    Put("myevents.EVENT", Block("M"));
    Put("Gamma.EVENT", Block("G"));
    Put("beta.event", Block("B"));
    Put("Old.event.bak", Block("X"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("B 1", "G 2", "M 3"));
    EXPECT_THAT(FileNames(), ElementsAre("beta.event 0", "Gamma.EVENT 1", "myevents.EVENT 2"));
}

TEST_F(LibraryTest, TakesLinesApart) {
    Put("a.event", Block("Raid\t", "   \n// Title \"x\"\ntitle\"first\" and \"second\"\nEventType\t1\n"
                                   "\tDescription \t \t\" kept blanks \"\nImage \"open end\n"
                                   "\"nameless\"\n\t//x\n/ / x  y\n"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("Raid 1"));
    EXPECT_EQ(At(0).Title + At(0).Description + At(0).Image, "first kept blanks open end");
    EXPECT_EQ(At(0).EventType, 1);
    EXPECT_EQ(At(0).HeaderLine, 1u);
    EXPECT_THAT(texts, ElementsAre(StartsWith("a.event:8: Unrecognized token! a(0) = , sValue = nameless,"),
                                   HasSubstr("a(0) = , sValue = //x,"), HasSubstr("/ / x  y. [unneeded"),
                                   HasSubstr("a(0) = /, sValue = /xy,")));
}

TEST_F(LibraryTest, NoBackupShadowsAnother) {
    Put("Ships.event", Block("One"));
    Put("Ships.Event.event", Block("Two"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Files::ListFiles(backups), IsEmpty());
    ASSERT_TRUE(Load(true));
    Put("Ships.event", Block("Three"));
    ASSERT_TRUE(Load(true));
    EXPECT_EQ(Files::ListFiles(backups).size(), 4u);
    EXPECT_EQ(temp.Read("BackupData/Ships.1stEVENT"), Block("One"));
    EXPECT_EQ(temp.Read("BackupData/Ships.latestEVENT"), Block("Three"));
    for (const char* mark : {".1stEVENT", ".latestEVENT"})
        EXPECT_EQ(Files::ReadWhole(backups + "Ships.Event.event" + mark), Block("Two"));
}

TEST_F(LibraryTest, FailingBackupEndsTheLoad) {
    Put("a.event", Block("One"));
    backups = temp.Path() + "missing/";
    EXPECT_THAT(LoadFailing(true),
                ElementsAre(::testing::_, "frmEvents_Form_Load", "frmEvents_LoadCurrentEvents"));
    EXPECT_TRUE(library.Empty());
}

TEST_F(LibraryTest, ASaveGoesOnWithoutItsDatedCopyOnlyWhereThatIsAgreedTo) {
    for (const char* name : {"a.event", "b.event"})
        Put(name, "// by hand\r\n" + Block(name));
    ASSERT_TRUE(Load());
    std::filesystem::remove_all(backups);
    for (const std::string& name : library.Names())
        Edit(name);
    for (const bool agreed : {false, true}) {
        int asked = 0;
        const auto answer = [&](const std::string& reason) {
            EXPECT_THAT(reason, HasSubstr("BackupData"));
            ++asked;
            return agreed;
        };
        EXPECT_EQ(FailureOf([&] { library.WriteFiles(data, library.FilesToWrite(), answer); }).Number,
                  agreed ? 0 : FailureAlreadyReported);
        EXPECT_EQ(asked, 1);
        EXPECT_EQ(Get("b.event").find("by hand") != std::string::npos, !agreed);
    }
}

class LibraryMovesTest : public LibraryTest {};

TEST_F(LibraryMovesTest, LosesNoRecordWhereverTheSaveEnds) {
    const Places one{{"A1", "B.event"}};
    const Places rename{{"A1", "S.event"}, {"A2", "S.event"}};
    const Places exchange{{"A1", "B.event"}, {"B1", "A.event"}};
    const Places round{{"A1", "B.event"}, {"B1", "C.event"}, {"C1", "A.event"}};
    const Places chain{{"A1", "B.event"}, {"A2", "B.event"}, {"B1", "C.event"}, {"B2", "C.event"}};
    for (const Places& moves : {one, rename, exchange, round, chain}) {
        int operation = 0;
        for (bool succeeded = false; !succeeded; ++operation) {
            SCOPED_TRACE(::testing::PrintToString(moves) + " operation " + std::to_string(operation));
            LibraryInFolder game(EventKind, "MyEvents.event");
            for (const std::string name : {"A", "B", "C"})
                game.Put(name + ".event",
                         game.Block(name + "1") + "// a comment\r\n" + game.Block(name + "2"));
            ASSERT_TRUE(game.Load());
            Places wanted = moves;
            wanted.merge(game.PlacesInMemory());
            for (const auto& [name, file] : moves)
                game.Move(name, name.substr(0, 1) + ".event", file);
            std::vector<std::string> files = game.library.FilesToWrite();
            std::sort(files.begin(), files.end()); // a losing file comes first
            const auto write = [&] { game.library.WriteFiles(game.data, files); };
            // Refuses everything from here on, so that the disk stays as a crash would leave it.
            static int countdown;
            countdown = operation;
            gFaultHook = [](const char*) { return countdown-- > 0 ? 0 : EIO; };
            const std::int32_t number = FailureOf(write).Number;
            gFaultHook = nullptr;
            EXPECT_EQ(game.PlacesOnDisk().size(), 6u);
            succeeded = number == 0;
            EXPECT_TRUE(succeeded || number == FailureAlreadyReported);
            write();
            EXPECT_EQ(game.PlacesOnDisk(), wanted);
        }
        EXPECT_GE(operation, 8);
    }
}

TEST_F(LibraryTest, AFailedSaveTellsWhatWasWrittenAndTheNextDoesTheRest) {
    const std::vector<std::string> files{"a.event", "b.event", "c.event"};
    for (const std::string& file : files)
        Put(file, Block(file.substr(0, 1)));
    ASSERT_TRUE(Load());
    edits.ToggleDeletion("c");
    ScriptedPrompts prompts;
    handler.Unattended = false;
    {
        const Fault fault("rename", 2, ENOSPC);
        TrapEvent("Click", NoInputParms, [&] { library.WriteFiles(data, files); });
    }
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_THAT(prompts.Errors[0].Description, HasSubstr("b.event: "));
    EXPECT_THAT(prompts.Errors[0].Description,
                EndsWith(" (files written: a.event; not written: b.event, c.event)"));
    EXPECT_EQ(prompts.Errors[0].Parameters, "<b.event>");
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("Click", "frmEvents_WriteItDown"));
    EXPECT_EQ(Get("c.event"), Block("c")) << "nothing is deleted before what comes first is written";
    const Fault none;
    library.WriteFiles(data, files);
    EXPECT_EQ(Split(none.Calls, "rename").size(), 2u) << "the file that is already as wanted is left alone";
    EXPECT_EQ(Get("a.event") + Get("b.event"), BlockOf(EventKind, At(0)) + BlockOf(EventKind, At(1)));
    EXPECT_THAT(Files::ListFiles(data), ::testing::UnorderedElementsAre("a.event", "b.event"));
}

TEST_F(LibraryTest, NamesThatDifferInCaseMeanOneFile) {
    Put("Extra.Event", Block("One") + Block("Gone") + Block("Two"));
    Put("a.event", Block("Three"));
    ASSERT_TRUE(Load());
    edits.RenameFile("A.EVENT", "extra.event");
    edits.ToggleDeletion("Gone");
    EXPECT_THAT(library.FilesToWrite(), ElementsAre("extra.event", "Extra.Event", "A.EVENT"));
    library.WriteFiles(data, library.FilesToWrite());
    EXPECT_THAT(Files::ListFiles(data), ElementsAre("Extra.Event"));
    EXPECT_EQ(Get("Extra.Event"),
              BlockOf(EventKind, At(0)) + BlockOf(EventKind, At(1)) + BlockOf(EventKind, At(3)));
    EXPECT_THAT(Names(), ElementsAre("Three 1", "One 2", "Gone 3", "Two 4"));
}

TEST_F(LibraryTest, LeavesAFileThatIsNoTextAlone) {
    const std::string zeros(8000000, '\0');
    Put("a.event", "\n" + zeros);
    Put("b.event", Block("Two"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, ElementsAre("a.event:2: This is no text file: a NUL byte in line 2 [load-failure]"));
    EXPECT_THAT(Names(), ElementsAre("Two 1"));
    Add("New", "a.event");
    ScriptedPrompts prompts;
    handler.Unattended = false;
    TrapEvent("Click", NoInputParms, [&] { library.WriteFiles(data, {"a.event"}); });
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_THAT(prompts.Errors[0].Description, HasSubstr("a.event could not be read"));
    EXPECT_EQ(Get("a.event"), "\n" + zeros);
}

TEST_F(LibraryTest, NoticesWhatOthersDoToItsFiles) {
    for (const std::string name : {"a", "b", "c"})
        Put(name + ".event", Block(name));
    ASSERT_TRUE(Load());
    EXPECT_THAT(library.ChangedOutside(data).Changed, IsEmpty());
    const auto time = std::filesystem::last_write_time(data + "a.event");
    Put("a.event", Block("X")); // same size, and below the same time
    std::filesystem::last_write_time(data + "a.event", time);
    Put("b.event", Get("b.event"));
    Files::DeleteFile(data + "c.event");
    Put("new.event", Block("Four"));
    EXPECT_THAT(library.ChangedOutside(data).Changed, ElementsAre("a.event", "c.event"));
    EXPECT_THAT(library.ChangedOutside(data, {"B.event", "new.event", "other.event"}).Changed,
                ElementsAre("new.event"));
    library.WriteFiles(data, {"a.event", "c.event", "new.event"});
    EXPECT_THAT(library.ChangedOutside(data).Changed, IsEmpty());
}

/// The temporary of a save at some time, without ending.
std::string TemporaryOf(std::time_t made) {
    char name[26];
    std::snprintf(name, sizeof name, ".velmora-%08x01234567", static_cast<unsigned>(made));
    return name;
}

TEST_F(LibraryTest, ClearsAwayWhatAKilledSaveLeft) {
    // What a program has in use may be a second name of a file that is years old.
    const std::string fresh = TemporaryOf(std::time(nullptr) - 23L * 3600);
    const std::string stale = TemporaryOf(std::time(nullptr) - 25L * 3600);
    for (const std::string& name :
         {fresh + ".old", stale + ".tmp", stale + ".old", std::string(".velmora-notes-of-mine-01.txt")}) {
        Put(name, "x");
        std::filesystem::last_write_time(data + name, std::filesystem::file_time_type::clock::now() -
                                                          std::chrono::hours(99));
    }
    library.WriteFiles(data, {});
    EXPECT_THAT(Files::ListFiles(data),
                ::testing::UnorderedElementsAre(fresh + ".old", ".velmora-notes-of-mine-01.txt"));
}

TEST_F(LibraryTest, GivesBackEveryByteThatFitsIntoTheFile) {
    ExpectEveryByteBack(50);
    Title("Record_0", "Say \"hi\"\r\nnow\rthen\nend");
    library.WriteFiles(data, {"a.event"});
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(0).Title, "Say 'hi'\\nnow\\nthen\\nend");
    EXPECT_THAT(texts, IsEmpty());
}

} // namespace
} // namespace velmora
