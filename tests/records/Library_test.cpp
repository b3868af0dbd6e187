#include "records/Library.h"

#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "events/clsEvent.h"
#include "platform/Files.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <random>

namespace velmora {
namespace {

using ::testing::ElementsAre;

class LibraryTest : public ::testing::Test {
  protected:
    void SetUp() override {
        Files::CreateFolder(data);
        Files::CreateFolder(backups);
        handler.Unattended = true;
        gErrHandler = &handler;
    }
    void TearDown() override { gErrHandler = nullptr; }

    bool Load(bool autoBackup = false) {
        texts.clear();
        library.Clear();
        LoadRequest request;
        request.Folder = data;
        request.BackupFolder = backups;
        request.OwnFile = "MyEvents.event";
        request.MakeBackups = true;
        request.AutoBackup = autoBackup;
        request.Findings = [this](const Finding& finding) {
            texts.push_back(finding.File + ":" + std::to_string(finding.Line) + ": " +
                            ReplaceAll(finding.Text, "\r", "|") + " [" + std::string(finding.Rule) + "]");
        };
        return library.Load(request);
    }

    /// Loads under an event routine; the failure's description and call stack.
    std::vector<std::string> LoadFailing() {
        ScriptedPrompts prompts;
        handler.Unattended = false;
        TrapEvent("frmEvents_Form_Load", NoInputParms, [this] { Load(); });
        std::vector<std::string> seen = handler.LastCallStack();
        for (const ErrorDetails& error : prompts.Errors)
            seen.insert(seen.begin(),
                        std::to_string(error.Number) + " " + error.Description + " " + error.Parameters);
        return seen;
    }

    void Put(const std::string& name, const std::string& text) { Files::ReplaceSafely(data + name, text); }
    std::string Get(const std::string& name) { return Files::ReadWhole(data + name); }
    static std::string Event(const std::string& name, const std::string& lines = {}) {
        return "EVENT " + name + "\r\n" + lines + "ENDEVENT\r\n";
    }
    const clsEvent& At(std::size_t at) { return static_cast<const clsEvent&>(library.At(at)); }
    std::vector<std::string> Names() {
        std::vector<std::string> names;
        for (const auto& [name, record] : library.Records)
            names.push_back(name + " " + std::to_string(EventKind.Number(*record)));
        return names;
    }

    TempFolder temp;
    std::string data = temp.Path() + "Data/";
    std::string backups = temp.Path() + "BackupData/";
    clsError handler;
    Library library{EventKind};
    std::vector<std::string> texts;
};

TEST_F(LibraryTest, ReadsFilesInPathOrderWithoutRegardToCase) {
    Put("Gamma.EVENT", Event("G"));
    Put("beta.event", Event("B"));
    Put("Alpha.event", Event("A"));
    Put("Old.event.bak", Event("X"));
    Put("Readme.txt", Event("X"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("A 1", "B 2", "G 3"));
    std::vector<std::string> files;
    for (const auto& [name, item] : library.Files)
        files.push_back(name + " " + std::to_string(item));
    EXPECT_THAT(files, ElementsAre("Alpha.event 0", "beta.event 1", "Gamma.EVENT 2", "MyEvents.event 3"));
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
    Put("a.event", Event("Raid", "  EventType 1 0\n\tEventType\t1\n  Colour \"red\"\n") + Event("raid"));
    Put("b.event", "\n" + Event("9_Lives!"));
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
    Put("a.event", Event("One", "Title \"First\"\r\nProbability 2.5\r\nImage \"a.pcx\"\r\n") +
                       Event("Two", "title \"Second\"\r\n") + Event("Three", "Probability 3.5\r\n"));
    Put("b.event", Event("Four"));
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
    Put("a.event", Event("One"));
    Put("b.event", Event("Two") + "EVENT Three\r\n  Probability 2147483648\r\n");
    Put("c.event", Event("Four"));
    EXPECT_THAT(LoadFailing(), ElementsAre("6 Overflow (file b.event, line 4, key Probability) <b.event>",
                                           "frmEvents_Form_Load", "frmEvents_LoadCurrentEvents",
                                           "frmEvents_ParseOutEventFile"));
    EXPECT_THAT(Names(), ElementsAre("One 1", "Two 2"));
    EXPECT_EQ(library.Files.Count(), 1u);
}

TEST_F(LibraryTest, EndsLoadingAtAFileThatCannotBeRead) {
    Put("a.event", Event("One"));
    std::filesystem::create_symlink("nowhere", temp.Path() + "Data/b.event");
    const auto seen = LoadFailing();
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_THAT(seen[0], ::testing::StartsWith("53 "));
    EXPECT_EQ(seen.back(), "frmEvents_ParseOutEventFile");
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
    Put("a.event", Event("One"));
    backups = temp.Path() + "missing/";
    ScriptedPrompts prompts;
    handler.Unattended = false;
    EXPECT_FALSE(TrapEvent("frmEvents_Form_Load", NoInputParms, [this] { Load(true); }));
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("frmEvents_Form_Load", "frmEvents_LoadCurrentEvents"));
    EXPECT_TRUE(library.Records.Empty());
}

TEST_F(LibraryTest, SortsByNameAndBackToLoadOrder) {
    Put("a.event", Event("cherry") + Event("Apple"));
    Put("b.event", Event("banana"));
    ASSERT_TRUE(Load());
    library.AddNew("Acorn", data, "b.event");
    library.SortBy(1);
    EXPECT_THAT(Names(), ElementsAre("Acorn 1", "Apple 2", "banana 3", "cherry 4"));
    EXPECT_TRUE(library.Records.Exists("APPLE"));
    library.SortBy(0);
    EXPECT_THAT(Names(), ElementsAre("cherry 1", "Apple 2", "banana 3", "Acorn 4"));
}

TEST_F(LibraryTest, WritesExactlyTheRecordsOfAFile) {
    Put("a.event", Event("One") + Event("Two") + Event("Three"));
    Put("b.event", Event("Four"));
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
    Put("a.event", Event("One"));
    ASSERT_TRUE(Load());
    library.RenameFile("A.EVENT", "Story.event");
    EXPECT_THAT(library.FilesToWrite(), ElementsAre("Story.event", "A.EVENT"));
    for (const std::string& file : library.FilesToWrite())
        library.WriteItDown(data, file);
    EXPECT_THAT(Files::ListFiles(data), ElementsAre("Story.event"));
}

TEST_F(LibraryTest, GivesBackEveryByteOfGeneratedRecords) {
    std::mt19937 random(7);
    std::string allBytes;
    for (int byte = 0; byte < 256; ++byte)
        if (byte != '"' && byte != '\r' && byte != '\n')
            allBytes += static_cast<char>(byte);
    for (int i = 0; i < 50; ++i) {
        Record& record = library.AddNew("Event_" + std::to_string(i), data, "a.event");
        for (const Field& field : EventKind.Fields)
            if (field.Type == FieldType::Text)
                field.SetText(record, allBytes.substr(random() % allBytes.size()) + " \xE9\x81 ");
            else
                field.SetNumber(record, static_cast<std::int32_t>(random()));
    }
    library.WriteItDown(data, "a.event");
    const std::string written = Get("a.event");
    ASSERT_TRUE(Load());
    EXPECT_TRUE(texts.empty()) << texts.front();
    ASSERT_EQ(library.Records.Count(), 50u);
    library.WriteItDown(data, "a.event");
    EXPECT_EQ(Get("a.event"), written);
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
