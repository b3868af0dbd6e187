#include "records/Library.h"

#include "FailureOf.h"
#include "Fault.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

#include <cerrno>
#include <map>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

class LibraryTest : public LibraryFixture {
  protected:
    LibraryTest() : LibraryFixture(EventKind, "MyEvents.event") {}
    const clsEvent& At(std::size_t at) const { return As<clsEvent>(at); }
};

TEST_F(LibraryTest, ReadsFilesInPathOrderWithoutRegardToCase) {
    Put("Gamma.EVENT", Block("G"));
    Put("beta.event", Block("B"));
    Put("Alpha.event", Block("A"));
    Put("Old.event.bak", Block("X"));
    Put("Readme.txt", Block("X"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("A 1", "B 2", "G 3"));
    EXPECT_THAT(FileNames(),
                ElementsAre("Alpha.event 0", "beta.event 1", "Gamma.EVENT 2", "MyEvents.event 3"));
    EXPECT_EQ(At(2).ShortName, "Gamma.EVENT");
    EXPECT_EQ(At(2).FileName, data + "Gamma.EVENT");
    EXPECT_TRUE(texts.empty());
}

TEST_F(LibraryTest, ListsOnlyTheOwnFileWhenThereIsNone) {
    ASSERT_TRUE(Load());
    EXPECT_THAT(FileNames(), ElementsAre("MyEvents.event 0"));
    Put("myevents.EVENT", "");
    ASSERT_TRUE(Load());
    EXPECT_EQ(library.Files.Count(), 1u) << "the own file is the one on disk, whatever its case";
    data += "Elsewhere/";
    EXPECT_FALSE(Load());
    EXPECT_THAT(texts, ElementsAre(":0: Unable to acces the Velmora Data directory! [no-data-directory]"));
}

TEST_F(LibraryTest, ReportsWhatTheTextHasWrong) {
    Put("a.event", Block("Raid", "  EventType 1 0\n\tEventType\t1\n  Colour \"red\"\n") + Block("raid"));
    Put("b.event", "\n" + Block("9_Lives!"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("Raid 1", "Nine_Lives 2"));
    EXPECT_EQ(At(0).EventType, 10);
    EXPECT_THAT(
        texts, ElementsAre(
                   "a.event:2: Unneeded space removed from EventType 1 0. [unneeded-space]",
                   "a.event:3: Unneeded space removed from  EventType 1. [unneeded-space]",
                   "a.event:3: Unrecognized token! a(0) = , sValue = EventType1, File = a.event "
                   "[unrecognized-token]",
                   "a.event:4: Unrecognized token! a(0) = Colour, sValue = red, File = a.event "
                   "[unrecognized-token]",
                   "a.event:7: Duplicate event found!  EventName = raid, File = a.event [duplicate-event]",
                   "b.event:2: Illegal Event name found, the first character in the name can not be numeric, "
                   "the name 9_Lives! will be converted.  1 will become One, 2 will become Two, etc.|Illegal "
                   "character \"!\" found in the Event name Nine_Lives!.  It will be removed.||Final revised "
                   "Event name is now: Nine_Lives. [illegal-name]"));
}

TEST_F(LibraryTest, CarriesValuesOverWithinOneFileOnly) {
    Put("a.event", Block("One", "Title \"First\"\r\nProbability 2.5\r\nImage \"a.pcx\"\r\n") +
                       Block("Two", "title \"Second\"\r\n") + Block("Three", "Probability 3.5\r\n"));
    Put("b.event", Block("Four"));
    ASSERT_TRUE(Load());
    std::vector<std::string> values;
    for (std::size_t i = 0; i < 4; ++i)
        values.push_back(At(i).Title + " " + At(i).Image + " " + std::to_string(At(i).Probability));
    EXPECT_THAT(values, ElementsAre("First a.pcx 2", "Second a.pcx 2", "Second a.pcx 4", "  0"));
    EXPECT_EQ(At(2).HeaderLine, 9u);
}

TEST_F(LibraryTest, EndsLoadingAtANumberBeyond32Bits) {
    Put("a.event", Block("One"));
    Put("b.event", Block("Two") + "EVENT Three\r\n  Probability 2147483648\r\n");
    Put("c.event", Block("Four"));
    EXPECT_THAT(LoadFailing(), ElementsAre("6 Overflow (file b.event, line 4, key Probability) <b.event>",
                                           "frmEvents_Form_Load", "frmEvents_LoadCurrentEvents",
                                           "frmEvents_ParseOutEventFile"));
    EXPECT_THAT(Names(), ElementsAre("One 1", "Two 2"));
    EXPECT_EQ(library.Files.Count(), 1u);
}

TEST_F(LibraryTest, BacksUpTheFirstAndTheLatestState) {
    Put("Ships.Event.event", "first");
    Load(false);
    EXPECT_TRUE(Files::ListFiles(backups).empty());
    Load(true);
    Put("Ships.Event.event", "second");
    Load(true);
    EXPECT_EQ(temp.Read("BackupData/Ships.1stEVENT"), "first");
    EXPECT_EQ(temp.Read("BackupData/Ships.latestEVENT"), "second");
    EXPECT_EQ(Files::ListFiles(backups).size(), 2u);
}

TEST_F(LibraryTest, FailingBackupEndsTheLoad) {
    Put("a.event", Block("One"));
    backups = temp.Path() + "missing/";
    EXPECT_THAT(LoadFailing(true),
                ElementsAre(::testing::_, "frmEvents_Form_Load", "frmEvents_LoadCurrentEvents"));
    EXPECT_TRUE(library.Records.Empty());
}

TEST_F(LibraryTest, SortsByNameAndBackToLoadOrder) {
    Put("a.event", Block("cherry") + Block("Apple"));
    Put("b.event", Block("banana"));
    ASSERT_TRUE(Load());
    library.AddNew("Acorn", data, "b.event");
    library.SortBy(1);
    EXPECT_THAT(Names(), ElementsAre("Acorn 1", "Apple 2", "banana 3", "cherry 4"));
    EXPECT_TRUE(library.Records.Exists("APPLE"));
    library.SortBy(0);
    EXPECT_THAT(Names(), ElementsAre("cherry 1", "Apple 2", "banana 3", "Acorn 4"));
}

TEST_F(LibraryTest, WritesExactlyTheRecordsOfAFile) {
    Put("a.event", Block("One") + Block("Two") + Block("Three"));
    Put("b.event", Block("Four"));
    ASSERT_TRUE(Load());
    library.At(1).ToBeDeleted = library.At(1).IsDirty = true;
    library.MoveRecord(library.At(2), data, "a.event", "B.Event");
    EXPECT_THAT(library.FilesToWrite(), ElementsAre("a.event", "B.Event"));
    library.WriteFiles(data, library.FilesToWrite());
    EXPECT_EQ(Get("a.event"), At(0).GenerateEventString(false));
    EXPECT_EQ(Get("b.event"), At(2).GenerateEventString(false) + At(3).GenerateEventString(false));
    EXPECT_EQ(Files::ListFiles(data).size(), 2u);
}

/// Records on their way between files of two records each: A1 and A2 are in A.event and so on.
struct Moves {
    const char* What;
    std::vector<std::pair<std::string, std::string>> To; ///< record and its new file
    std::vector<std::string> Files;                      ///< in the order in which they are written
    std::string Wanted;                                  ///< the files' records afterwards
};

class LibraryMovesTest : public LibraryTest, public ::testing::WithParamInterface<Moves> {
  public:
    void Begin() {
        for (const std::string& name : Files::ListFiles(data))
            Files::DeleteFile(data + name);
        for (const std::string file : {"A", "B", "C"})
            Put(file + ".event", Block(file + "1") + "// a comment\r\n" + Block(file + "2"));
        ASSERT_TRUE(Load());
        library.FilesLosingRecords.clear();
        for (const auto& [name, file] : GetParam().To) {
            Record& record = *library.Find(name);
            library.MoveRecord(record, data, record.ShortName, file + ".event");
        }
    }
    Failure Write() {
        std::vector<std::string> names;
        for (const std::string& file : GetParam().Files)
            names.push_back(file + ".event");
        return FailureOf([&] { library.WriteFiles(data, names); });
    }
    std::string OnDisk() {
        EXPECT_TRUE(Load());
        std::map<std::string, std::string> files;
        for (const auto& [name, record] : library.Records)
            files[record->ShortName.substr(0, 1)] += " " + name;
        std::string seen;
        for (const auto& [file, names] : files)
            seen += file + ":" + names + " ";
        return seen;
    }
    /// Looks at the disk as a crash would leave it before each call, and fails the one it is the turn of.
    static int Strike(const char*) {
        gFaultHook = nullptr;
        running->ExpectAllOnDisk();
        gFaultHook = Strike;
        return countdown-- > 0 ? 0 : EIO;
    }
    static inline LibraryMovesTest* running = nullptr;
    static inline int countdown = 0;
    void ExpectAllOnDisk() {
        std::string all;
        for (const std::string& name : Files::ListFiles(data))
            if (name.ends_with(".event"))
                all += Get(name);
        for (const std::string name : {"A1", "A2", "B1", "B2", "C1", "C2"})
            EXPECT_THAT(all, HasSubstr("EVENT " + name + "\r\n"));
    }
};

TEST_P(LibraryMovesTest, LosesNoRecordWhereverTheSaveEnds) {
    int operations = 0;
    for (bool succeeded = false; !succeeded; ++operations) {
        SCOPED_TRACE("operation " + std::to_string(operations));
        Begin();
        countdown = operations;
        running = this;
        gFaultHook = Strike;
        const Failure failure = Write();
        gFaultHook = nullptr;
        ExpectAllOnDisk();
        succeeded = failure.Number == 0;
        EXPECT_TRUE(succeeded || failure.Number == FailureAlreadyReported);
        EXPECT_EQ(Write().Number, 0);
        EXPECT_EQ(OnDisk(), GetParam().Wanted);
    }
    EXPECT_GE(operations, 8);
}

INSTANTIATE_TEST_SUITE_P(
    Scenes, LibraryMovesTest,
    ::testing::Values(
        Moves{"LosingFileFirst", {{"A1", "B"}}, {"A", "B"}, "A: A2 B: A1 B1 B2 C: C1 C2 "},
        Moves{"Rename", {{"A1", "S"}, {"A2", "S"}}, {"A", "S"}, "B: B1 B2 C: C1 C2 S: A1 A2 "},
        Moves{"Exchange", {{"A1", "B"}, {"B1", "A"}}, {"A", "B"}, "A: A2 B1 B: A1 B2 C: C1 C2 "},
        Moves{
            "Round", {{"A1", "B"}, {"B1", "C"}, {"C1", "A"}}, {"A", "B", "C"}, "A: A2 C1 B: A1 B2 C: B1 C2 "},
        Moves{"Chain",
              {{"A1", "B"}, {"A2", "B"}, {"B1", "C"}, {"B2", "C"}},
              {"A", "B", "C"},
              "B: A1 A2 C: B1 B2 C1 C2 "}),
    [](const auto& moves) { return std::string(moves.param.What); });

TEST_F(LibraryTest, AFailedSaveTellsWhatWasWrittenAndTheNextDoesTheRest) {
    const std::vector<std::string> files{"a.event", "b.event", "c.event"};
    for (const std::string& file : files)
        Put(file, Block(file.substr(0, 1)));
    ASSERT_TRUE(Load());
    library.At(2).ToBeDeleted = true;
    ScriptedPrompts prompts;
    handler.Unattended = false;
    {
        const Fault fault("rename", 2, ENOSPC);
        TrapEvent("Click", NoInputParms, [&] { library.WriteFiles(data, files); });
    }
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_THAT(
        prompts.Errors[0].Description,
        ::testing::AllOf(HasSubstr("b.event: "),
                         ::testing::EndsWith(" (files written: a.event; not written: b.event, c.event)")));
    EXPECT_EQ(prompts.Errors[0].Parameters, "<b.event>");
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("Click", "frmEvents_WriteItDown"));
    EXPECT_EQ(Get("c.event"), Block("c")) << "nothing is deleted before what comes first is written";
    const Fault none;
    library.WriteFiles(data, files);
    EXPECT_EQ(Split(none.Calls, "rename").size(), 2u) << "the file that is already as wanted is left alone";
    for (std::size_t i = 0; i < 2; ++i)
        EXPECT_EQ(Get(At(i).ShortName), At(i).GenerateEventString(false));
    EXPECT_THAT(Files::ListFiles(data), ::testing::UnorderedElementsAre("a.event", "b.event"));
}

TEST_F(LibraryTest, NamesThatDifferInCaseMeanOneFile) {
    Put("Extra.Event", Block("One") + Block("Two"));
    Put("a.event", Block("Three"));
    ASSERT_TRUE(Load());
    library.MoveRecord(library.At(0), data, "a.event", "extra.event");
    library.At(1).IsDirty = true;
    EXPECT_THAT(library.FilesToWrite(), ElementsAre("extra.event", "Extra.Event", "a.event"));
    library.WriteFiles(data, library.FilesToWrite());
    EXPECT_THAT(Files::ListFiles(data), ElementsAre("Extra.Event"));
    EXPECT_EQ(Get("Extra.Event"), At(0).GenerateEventString(false) + At(1).GenerateEventString(false) +
                                      At(2).GenerateEventString(false));
}

TEST_F(LibraryTest, NoBackupShadowsAnother) {
    Put("Ships.event", Block("One"));
    Put("Ships.Event.event", Block("Two"));
    ASSERT_TRUE(Load(true));
    EXPECT_EQ(Files::ListFiles(backups).size(), 4u);
    for (const char* mark : {".1stEVENT", ".latestEVENT"}) {
        EXPECT_EQ(Files::ReadWhole(backups + "Ships" + mark), Get("Ships.event"));
        EXPECT_EQ(Files::ReadWhole(backups + "Ships.Event.event" + mark), Get("Ships.Event.event"));
    }
}

TEST_F(LibraryTest, NoticesWhatOthersDoToItsFiles) {
    Put("a.event", Block("One"));
    Put("b.event", Block("Two"));
    Put("c.event", Block("Three"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(library.ChangedOutside(data), ::testing::IsEmpty());
    const auto time = std::filesystem::last_write_time(data + "a.event");
    std::string changed = Get("a.event");
    changed[6] = 'X'; // same size, and below the same time
    Put("a.event", changed);
    std::filesystem::last_write_time(data + "a.event", time);
    Put("b.event", Get("b.event"));
    Files::DeleteFile(data + "c.event");
    Put("new.event", Block("Four"));
    EXPECT_THAT(library.ChangedOutside(data), ElementsAre("a.event", "c.event"));
    EXPECT_THAT(library.ChangedOutside(data, {"B.event", "new.event", "other.event"}),
                ElementsAre("new.event"));
    library.WriteFiles(data, {"a.event", "c.event", "new.event"});
    EXPECT_THAT(library.ChangedOutside(data), ::testing::IsEmpty());
}

TEST_F(LibraryTest, ClearsAwayWhatAKilledSaveLeft) {
    const std::string left = ".velmora-0123456789abcdef.tmp";
    const std::string fresh = ".velmora-fedcba9876543210.tmp";
    const std::string kept = ".velmora-0123456789abcdef.old";
    const std::string foreign = ".velmora-notes-of-mine-01.txt";
    Put("a.event", Block("One"));
    ASSERT_TRUE(Load());
    for (const std::string& name : {left, kept, fresh, foreign})
        Put(name, "x");
    const auto now = std::filesystem::file_time_type::clock::now();
    for (const std::string& name : {left, kept, foreign})
        std::filesystem::last_write_time(data + name, now - std::chrono::hours(25));
    library.WriteFiles(data, {"a.event"});
    EXPECT_THAT(Files::ListFiles(data), ::testing::UnorderedElementsAre("a.event", fresh, foreign));
}

TEST_F(LibraryTest, DeletesAFileWithoutRecords) {
    Put("a.event", Block("One"));
    ASSERT_TRUE(Load());
    library.RenameFile("A.EVENT", "Story.event");
    EXPECT_THAT(library.FilesToWrite(), ElementsAre("Story.event", "A.EVENT"));
    library.WriteFiles(data, library.FilesToWrite());
    EXPECT_THAT(Files::ListFiles(data), ElementsAre("Story.event"));
}

TEST_F(LibraryTest, GivesBackEveryByteThatFitsIntoTheFile) {
    ExpectEveryByteBack(50);
    static_cast<clsEvent&>(library.At(0)).Title = "Say \"hi\"\r\nnow\rthen\nend";
    library.WriteFiles(data, {"a.event"});
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(0).Title, "Say 'hi'\\nnow\\nthen\\nend");
    EXPECT_TRUE(texts.empty());
}

TEST(FindingMessages, EndTheStormWithOneList) {
    ScriptedPrompts prompts;
    FindingMessages messages;
    const auto show = [&](const char* text) { messages.Show({"event", "a.event", 1, "rule", text}); };
    show("one");
    show("two");
    prompts.ShowRestAsList = true;
    show("three");
    show("four");
    show("five");
    messages.Finish();
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("Message: one", "Message: two", "Message: three", "List: four", "List: five"));
}

} // namespace
} // namespace velmora
