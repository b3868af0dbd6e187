#include "records/Library.h"

#include "LibraryFixture.h"
#include "events/clsEvent.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;

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
    EXPECT_TRUE(library.Records.Empty());
    ASSERT_EQ(library.Files.Count(), 1u);
    EXPECT_EQ(library.Files.ItemAt(0), 0);
    Put("myevents.EVENT", "");
    ASSERT_TRUE(Load());
    EXPECT_EQ(library.Files.Count(), 1u) << "the own file is the one on disk, whatever its case";
}

TEST_F(LibraryTest, TellsOfAMissingFolder) {
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
    EXPECT_EQ(At(1).Title, "Second");
    EXPECT_EQ(At(1).Image, "a.pcx");
    EXPECT_EQ(At(1).Probability, 2);
    EXPECT_EQ(At(2).Title, "Second");
    EXPECT_EQ(At(2).Probability, 4);
    EXPECT_EQ(At(3).Title, "");
    EXPECT_EQ(At(3).Probability, 0);
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
    EXPECT_EQ(Files::ReadWhole(backups + "Ships.1stEVENT"), "first");
    EXPECT_EQ(Files::ReadWhole(backups + "Ships.latestEVENT"), "second");
    EXPECT_EQ(Files::ListFiles(backups).size(), 2u);
}

TEST_F(LibraryTest, FailingBackupEndsTheLoad) {
    Put("a.event", Block("One"));
    backups = temp.Path() + "missing/";
    ScriptedPrompts prompts;
    handler.Unattended = false;
    EXPECT_FALSE(TrapEvent("frmEvents_Form_Load", NoInputParms, [this] { Load(true); }));
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("frmEvents_Form_Load", "frmEvents_LoadCurrentEvents"));
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
    for (const std::string& file : library.FilesToWrite())
        library.WriteItDown(data, file);
    EXPECT_EQ(Get("a.event"), At(0).GenerateEventString(false));
    EXPECT_EQ(Get("b.event"), At(2).GenerateEventString(false) + At(3).GenerateEventString(false));
    EXPECT_EQ(Files::ListFiles(data).size(), 2u);
}

TEST_F(LibraryTest, DeletesAFileWithoutRecords) {
    Put("a.event", Block("One"));
    ASSERT_TRUE(Load());
    library.RenameFile("A.EVENT", "Story.event");
    EXPECT_THAT(library.FilesToWrite(), ElementsAre("Story.event", "A.EVENT"));
    for (const std::string& file : library.FilesToWrite())
        library.WriteItDown(data, file);
    EXPECT_THAT(Files::ListFiles(data), ElementsAre("Story.event"));
}

TEST_F(LibraryTest, GivesBackEveryByteOfGeneratedRecords) {
    ExpectEveryByteBack(50);
}

TEST_F(LibraryTest, MakesTextsFitForTheFile) {
    auto& event = static_cast<clsEvent&>(library.AddNew("One", data, "a.event"));
    event.Title = "Say \"hi\"\r\nnow\rthen\nend";
    library.WriteItDown(data, "a.event");
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
