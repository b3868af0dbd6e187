#include "records/Journal.h"

#include "Fault.h"
#include "LibraryFixture.h"
#include "events/clsEvent.h"

#include <cerrno>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class JournalTest : public LibraryFixture {
  protected:
    JournalTest() : LibraryFixture(EventKind, "MyEvents.event") {
        Put("a.event", Block("One") + Block("Two") + Block("Three"));
        Put("b.event", Block("Four"));
        Start();
    }

    /// Opens the library as a new run would; what was left is in `found`.
    void Start() {
        library.FilesLosingRecords.clear();
        Load();
        Reread();
    }
    void Reread(const std::string& bytes) {
        temp.Write("events.journal", bytes);
        Reread();
    }
    void Reread() {
        found = std::make_unique<Journal::Leftover>();
        journal.Find(path, data, *found);
    }
    Record& Edit(const std::string& name, const std::string& title) {
        auto& event = static_cast<clsEvent&>(*library.Find(name));
        event.Title = title;
        event.IsDirty = true;
        return event;
    }
    void EditAndNote(const std::string& name, const std::string& title) {
        EXPECT_EQ(journal.Note({&Edit(name, title)}), "");
    }
    /// Each record with where it belongs and what is pending.
    [[nodiscard]] std::vector<std::string> State() const {
        std::vector<std::string> state;
        for (const auto& [name, record] : library.Records)
            state.push_back(name + " " + record->ShortName + " " + record->FileName + " " +
                            (record->IsDirty ? "dirty " : "") + (record->ToBeDeleted ? "deleted " : "") +
                            BlockOf(library.Kind, *record));
        for (const std::string& file : library.FilesLosingRecords)
            state.push_back("losing " + file);
        return state;
    }
    [[nodiscard]] std::vector<std::string> Left() const {
        std::vector<std::string> left;
        for (const auto& [name, record] : found->Records)
            left.push_back(name + " " + static_cast<clsEvent&>(*record).Title);
        return left;
    }

    const std::string path = temp / "events.journal";
    Journal journal{library};
    std::unique_ptr<Journal::Leftover> found;
};

TEST_F(JournalTest, GivesBackEveryKindOfEdit) {
    journal.Begin();
    EditAndNote("One", "first" + AllBytes());
    EditAndNote("One", "last" + AllBytes());
    Record& moved = *library.Find("Two");
    library.MoveRecord(moved, data, "a.event", "New.Event");
    journal.Note({&moved});
    Record& deleted = Edit("Three", "");
    deleted.ToBeDeleted = true;
    journal.Note({&deleted});
    Record& added = library.AddNew("Five", data, "b.event");
    added.IsBeingAdded = false;
    added.IsDirty = true;
    journal.Note({&added});
    library.RenameFile("b.event", "c.event");
    library.Find("Four")->FileName = data + "c.event"; // renaming leaves it to the next load
    added.FileName = data + "c.event";
    journal.Note({library.Find("Four"), &added});
    const auto before = State();
    const auto order = Names();
    const auto files = FileNames();

    Start();
    EXPECT_EQ(found->Complaint, "");
    journal.TakeUp(*found);
    EXPECT_EQ(State(), before);
    EXPECT_EQ(Names(), order);
    EXPECT_EQ(FileNames(), files);
    for (const auto& [name, record] : library.Records)
        EXPECT_FALSE(record->IsBeingAdded);
}

TEST_F(JournalTest, IsGoneWhenItsEditsAreWrittenOrGivenUp) {
    EditAndNote("One", "before it was begun");
    EXPECT_FALSE(temp.Has("events.journal"));
    Start();
    journal.Begin();
    EditAndNote("One", "x");
    EXPECT_TRUE(temp.Has("events.journal"));
    EXPECT_EQ(journal.Remove(), "");
    EditAndNote("One", "after it was removed");
    EXPECT_FALSE(temp.Has("events.journal"));
}

TEST_F(JournalTest, CostsWhatTheEditCosts) {
    journal.Begin();
    EditAndNote("One", "x");
    const auto first = Files::SizeOf(path);
    for (int i = 0; i < 1000; ++i)
        library.AddNew("Other" + std::to_string(i), data, "b.event").IsDirty = true;
    EditAndNote("One", "y");
    EXPECT_LE(Files::SizeOf(path), 2 * first);
}

TEST_F(JournalTest, GivesBackWhatIsWholeWhereverItIsCut) {
    journal.Begin();
    EditAndNote("One", "x");
    const auto first = Files::SizeOf(path);
    EditAndNote("Two", "y");
    const std::string whole = Files::ReadWhole(path);
    for (std::size_t size = first % 7; size < whole.size(); size += 7) {
        Reread(whole.substr(0, size));
        SCOPED_TRACE(size);
        EXPECT_EQ(Left(), size < first ? std::vector<std::string>{} : std::vector<std::string>{"One x"});
        // Cut right between two entries, nothing tells that one is missing.
        const bool atTheSeam = size == first || whole.substr(0, size).ends_with(data + "\r\n");
        EXPECT_EQ(found->Complaint.empty(), atTheSeam);
    }
}

TEST_F(JournalTest, TakesNoByteForAnother) {
    journal.Begin();
    EditAndNote("One", "x");
    const std::string whole = Files::ReadWhole(path);
    for (std::size_t at = 0; at < whole.size(); at += 5) {
        std::string broken = whole;
        broken[at] = static_cast<char>(broken[at] ^ 1);
        Reread(broken);
        EXPECT_THAT(Left(), IsEmpty()) << at;
        EXPECT_NE(found->Complaint, "") << at;
    }
}

TEST_F(JournalTest, BelongsToOneDirectoryAndKind) {
    journal.Begin();
    EditAndNote("One", "x");
    const std::string written = Files::ReadWhole(path);
    Journal::Leftover other;
    journal.Find(path, temp / "Elsewhere/", other);
    EXPECT_TRUE(other.Records.Empty());
    EXPECT_THAT(other.Complaint, HasSubstr(path));
    const std::string copy = journal.KeepCopy();
    EXPECT_NE(journal.KeepCopy(), copy) << "a copy never replaces another";
    EXPECT_EQ(Files::ReadWhole(copy), written);
    EXPECT_THAT(copy, ::testing::StartsWith(path + "."));

    Reread("[Setup]\r\n");
    EXPECT_TRUE(found->Records.Empty());
    EXPECT_NE(found->Complaint, "");
}

TEST_F(JournalTest, TroubleIsToldOnceAndMadeUpFor) {
    journal.Begin();
    for (const std::string operation : {"open", "write", "fsync", "close", "rename"}) {
        std::string trouble;
        {
            const Fault fault(operation, 0, ENOSPC);
            trouble = journal.Note({&Edit("One", operation)});
        }
        EXPECT_THAT(trouble, ::testing::StartsWith(operation == "open" ? "Cannot write " + path + ": " : ""));
        EXPECT_EQ(trouble.empty(), operation != "open");
        EditAndNote("Two", operation);
        Journal::Leftover left;
        Journal(library).Find(path, data, left);
        EXPECT_EQ(left.Complaint, "");
        EXPECT_EQ(left.Records.Count(), 2u) << "the edit that failed is there, too: " << operation;
        EXPECT_EQ(static_cast<clsEvent&>(*left.Records.ItemAt(0)).Title, operation);
    }
}

} // namespace
} // namespace velmora
