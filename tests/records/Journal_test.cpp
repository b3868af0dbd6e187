#include "records/Journal.h"

#include "Fault.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

#include <cerrno>

namespace velmora {
namespace {

using ::testing::ElementsAre;

class JournalTest : public LibraryFixture {
  protected:
    JournalTest() : LibraryFixture(EventKind, "MyEvents.event") {
        Put("a.event", Block("One", "MoralityWeight 1\r\n") + Block("Two") + Block("Three"));
        Put("b.event", Block("Four", "MoralityWeight 1\r\n"));
        Load();
        journal.Find(path, data, none);
        journal.Begin();
    }

    void EditAndNote(const std::string& name, const std::string& title) {
        Title(name, title);
        EXPECT_EQ(journal.Note({name}), "");
    }
    /// Where each record belongs and what is pending.
    [[nodiscard]] std::vector<std::string> State() const {
        std::vector<std::string> state = FileNames();
        for (const auto& [name, record] : library)
            state.push_back(name + " " + std::to_string(EventKind.NumberOf(record)) + " " + record.ShortName +
                            " " + record.FileName + (record.IsDirty ? " dirty" : "") +
                            (record.ToBeDeleted ? " deleted" : "") + (record.IsBeingAdded ? " added" : "") +
                            BlockOf(EventKind, record));
        for (const std::string& file : library.FilesLosingRecords())
            state.push_back("losing " + file);
        return state;
    }
    const std::string path = temp / "events.journal";
    Journal journal{library};
    Journal::Leftover none;
};

TEST_F(JournalTest, GivesBackEveryKindOfEdit) {
    EditAndNote("One", "first" + AllBytes());
    EditAndNote("One", "last" + AllBytes());
    Move("Two", "a.event", "New.Event");
    journal.Note({"Two"});
    edits.ToggleDeletion("Three");
    journal.Note({"Three"});
    Add("Five", "b.event");
    journal.Note({"Five"});
    edits.RenameFile("b.event", "c.event");
    for (const std::string name : {"Four", "Five"}) // renaming leaves the path to the next load
        Edit(name, [this](Record& record) { record.FileName = data + "c.event"; });
    journal.Note({"Four", "Five"});
    const std::vector<std::string> before = State();

    edits.GiveUp();
    Load();
    Journal::Leftover found;
    journal.Find(path, data, found);
    EXPECT_EQ(found.Complaint, "");
    edits.Do(journal.TakeUp(found));
    EXPECT_EQ(State(), before);
}

TEST_F(JournalTest, GivesBackWhatIsLongerThanAPiece) {
    for (const char letter : {'a', 'b'}) { // written anew, appended
        for (const std::string name : {"One", "Two", "Three"})
            Title(name, std::string(900'000, letter));
        EXPECT_EQ(journal.Note({"One", "Two", "Three"}), "");
    }
    const std::vector<std::string> before = State();
    edits.GiveUp();
    Load();
    Journal::Leftover found;
    journal.Find(path, data, found);
    edits.Do(journal.TakeUp(found));
    EXPECT_TRUE(State() == before);
}

TEST_F(JournalTest, FollowsWhatIsTakenBack) {
    edits.OnChange([this](const Edits::Change& change) { journal.Note(change.Names); });
    Title("One", "x");
    Move("Two", "a.event", "b.event");
    Add("Five", "b.event");
    edits.Write(data, library.FilesToWrite());
    edits.Reread([this] { Load(); });
    journal.Begin();
    Title("Three", "y");
    for (int step = 0; step < 3; ++step)
        edits.Undo();
    EXPECT_THAT(LeftIn(path, data), ElementsAre("Two "));
    edits.Undo();
    const std::vector<std::string> before = State();
    edits.Reread([this] { Load(); });
    Journal::Leftover found;
    journal.Find(path, data, found);
    edits.Do(journal.TakeUp(found));
    EXPECT_EQ(State(), before);
}

TEST_F(JournalTest, IsGoneWhenItsEditsAreWrittenOrGivenUp) {
    EditAndNote("One", "x");
    EXPECT_TRUE(temp.Has("events.journal"));
    EXPECT_EQ(journal.Remove(), "");
    EditAndNote("One", "after it was removed");
    EXPECT_FALSE(temp.Has("events.journal"));
}

TEST_F(JournalTest, IsGoneWhileAllIsUndone) {
    edits.OnChange([this](const Edits::Change& change) { EXPECT_EQ(journal.Note(change.Names), ""); });
    Move("Two", "a.event", "b.event");
    edits.Undo();
    EXPECT_FALSE(temp.Has("events.journal"));
    edits.Redo();
    Journal::Leftover found;
    Journal::Read(EventKind, path, data, found);
    EXPECT_THAT(found.FilesLosingRecords, ElementsAre("a.event"));
}

TEST_F(JournalTest, CostsWhatTheEditCosts) {
    EditAndNote("One", "x");
    const auto first = Files::SizeOf(path);
    for (int i = 0; i < 1000; ++i)
        Add("Other" + std::to_string(i), "b.event");
    EditAndNote("One", "y");
    EXPECT_LE(Files::SizeOf(path), 2 * first);
}

TEST_F(JournalTest, GivesBackWhatIsWholeWhereverItIsCut) {
    EditAndNote("One", "x");
    const auto first = Files::SizeOf(path);
    EditAndNote("Two", "y");
    const std::string whole = Files::ReadWhole(path);
    for (std::size_t size = first % 7; size < whole.size(); size += 7) {
        SCOPED_TRACE(size);
        std::vector<std::string> wanted;
        if (size >= first)
            wanted.emplace_back("One x");
        // Cut right between two entries, nothing tells that one is missing.
        if (size != first && !whole.substr(0, size).ends_with(data + "\r\n"))
            wanted.emplace_back("complaint");
        temp.Write("events.journal", whole.substr(0, size));
        EXPECT_EQ(LeftIn(path, data), wanted);
    }
}

TEST_F(JournalTest, TakesNoByteForAnother) {
    EditAndNote("One", "x");
    const std::string whole = Files::ReadWhole(path);
    for (std::size_t at = 0; at < whole.size(); at += 5) {
        std::string broken = whole;
        broken[at] = static_cast<char>(broken[at] ^ 1);
        temp.Write("events.journal", broken);
        EXPECT_THAT(LeftIn(path, data), ElementsAre("complaint")) << at;
    }
}

TEST_F(JournalTest, BelongsToOneDirectoryAndKind) {
    EditAndNote("One", "x");
    const std::string written = Files::ReadWhole(path);
    EXPECT_THAT(LeftIn(path, temp / "Elsewhere/"), ElementsAre("complaint"));
    const std::string copy = journal.KeepCopy();
    EXPECT_NE(journal.KeepCopy(), copy) << "a copy never replaces another";
    EXPECT_EQ(Files::ReadWhole(copy), written);
    EXPECT_TRUE(copy.starts_with(path + "."));
    temp.Write("events.journal", ReplaceAll(written, "2 event", "2 upissue"));
    EXPECT_THAT(LeftIn(path, data), ElementsAre("complaint"));
}

TEST_F(JournalTest, TroubleIsToldOnceAndMadeUpFor) {
    for (const std::string operation : {"open", "write", "fsync", "close", "rename"}) {
        std::string trouble;
        {
            const Fault fault(operation, 0, ENOSPC);
            Title("One", operation);
            trouble = journal.Note({"One"});
        }
        EXPECT_EQ(trouble.substr(0, trouble.find(": ")), operation == "open" ? "Cannot write " + path : "");
        EditAndNote("Two", operation);
        EXPECT_THAT(LeftIn(path, data), ElementsAre("One " + operation, "Two " + operation));
    }
}

TEST_F(JournalTest, StaysAwayThoughItsFolderCannotBeFlushed) {
    EditAndNote("One", "x");
    const Fault fault("fsync", 0, EIO);
    static_cast<void>(journal.Remove()); // some hosts know no flush of folders, and then no trouble
    EXPECT_FALSE(Files::FileExists(path));
}

} // namespace
} // namespace velmora
