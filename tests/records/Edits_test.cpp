#include "records/Edits.h"

#include "LibraryFixture.h"
#include "events/clsEvent.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Seeded edits of every kind over a small library.
class EditsTest : public LibraryFixture {
  protected:
    EditsTest() : LibraryFixture(EventKind, "MyEvents.event") {
        for (const std::string file : {"a", "b", "c"}) {
            std::string text;
            for (const char* number : {"1", "2", "3", "4"})
                text += Block(file + number, "MoralityWeight 2\r\nTitle \"" + file + "\"\r\n");
            Put(file + ".event", text);
        }
        EXPECT_TRUE(Load());
    }

    std::size_t Roll(std::size_t sides) { return random() % sides; }
    std::string AnyName() { return library.Names()[Roll(library.Count())]; }
    std::string AnyFile() { return std::string(1, static_cast<char>('a' + Roll(5))) + ".event"; }

    void DoAnything() {
        const std::string name = library.Empty() ? "" : AnyName();
        switch (name.empty() ? 0 : library.Count() > 10 ? 4 : Roll(8)) {
        case 0:
            edits.Open(AddStep("New" + std::to_string(++added), AnyFile()));
            if (Roll(4) == 0)
                edits.TakeBack();
            else
                EditAnything("New" + std::to_string(added));
            break;
        case 1:
            edits.ToggleDeletion(name);
            break;
        case 2:
            Move(name, library.Find(name)->ShortName, AnyFile());
            break;
        case 3:
            edits.RenameFile(library.Find(name)->ShortName, AnyFile());
            break;
        case 4:
            RemoveSome();
            break;
        default:
            EditAnything(name);
        }
    }
    void EditAnything(const std::string& name) {
        Edits::Step step(library, "commit of " + name);
        auto& event = static_cast<clsEvent&>(step.Change(name));
        event.Title = std::to_string(random());
        event.IsDirty = true;
        event.IsBeingAdded = false;
        if (Roll(5) == 0) {
            step.NoteLosing(event.ShortName);
            event.ShortName = AnyFile();
        }
        edits.Do(std::move(step));
    }
    void RemoveSome() {
        Edits::Step step(library, "removal");
        for (const std::string& name : library.Names())
            if (Roll(4) == 0)
                step.Remove(name);
        edits.Do(std::move(step));
    }

    /// Everything that is to be as it was.
    ContentHash State() const {
        std::string state;
        for (const auto& [name, record] : library)
            state += name + std::to_string(EventKind.NumberOf(record)) + ' ' + record.ShortName + ' ' +
                     record.FileName + (record.IsDirty ? " dirty " : " ") + record.Status() +
                     BlockOf(EventKind, record);
        return HashOf(state + ::testing::PrintToString(FileNames()) +
                      ::testing::PrintToString(library.FilesLosingRecords()) +
                      (library.AnyPending() ? "!" : ""));
    }
    /// What a write leaves on disk.
    std::string Lasting() const {
        std::map<std::string, std::string> records;
        std::map<std::string, std::vector<std::string>> files;
        for (const auto& [name, record] : library) {
            files[CodePage::ToLower(record.ShortName)].push_back(name);
            if (!record.ToBeDeleted)
                records[name] = record.ShortName + BlockOf(EventKind, record);
        }
        for (const auto& [file, names] : files)
            EXPECT_EQ(library.NamesInFile(file), names);
        return ::testing::PrintToString(records);
    }
    void WriteAndReread() {
        edits.Write(data, library.FilesToWrite());
        EXPECT_THAT(edits.Reread([this] { EXPECT_TRUE(Load()); }), IsEmpty());
        EXPECT_EQ(library.FilesToWrite(), std::vector<std::string>{});
    }

    std::mt19937 random{5};
    int added = 0;
};

TEST_F(EditsTest, GoBackToTheStartAndForwardToTheEnd) {
    std::vector<ContentHash> states{State()};
    while (edits.StepsDone() < 10'000) {
        const std::size_t before = edits.StepsDone();
        DoAnything();
        if (edits.StepsDone() > before)
            states.push_back(State());
        ASSERT_TRUE(State() == states.back()) << "an addition that was taken back";
    }
    for (std::size_t at = states.size() - 1; edits.CanUndo(); --at) {
        edits.Undo();
        ASSERT_TRUE(State() == states[at - 1]) << at << ' ' << edits.NextRedo().Name();
    }
    EXPECT_FALSE(library.AnyPending());
    for (std::size_t at = 1; edits.CanRedo(); ++at) {
        edits.Redo();
        ASSERT_TRUE(State() == states[at]) << at << ' ' << edits.NextUndo().Name();
    }
    EXPECT_EQ(edits.StepsDone(), states.size() - 1);
}

TEST_F(EditsTest, OutliveWrites) {
    std::vector<std::string> states{Lasting()};
    for (int i = 0; i < 400; ++i) {
        const std::size_t before = edits.StepsDone();
        DoAnything();
        if (edits.StepsDone() > before)
            states.push_back(Lasting());
        if (Roll(15) == 0)
            WriteAndReread();
    }
    ASSERT_EQ(edits.StepsDone() + 1, states.size());
    while (edits.CanUndo() || edits.CanRedo()) {
        const bool back = edits.CanUndo() && (Roll(3) > 0 || !edits.CanRedo());
        back ? edits.Undo() : edits.Redo();
        ASSERT_EQ(Lasting(), states[edits.StepsDone()]);
        if (Roll(10) == 0) {
            WriteAndReread();
            ASSERT_EQ(Lasting(), states[edits.StepsDone()]) << "is not what was written";
            if (edits.CanUndo()) {
                edits.Undo();
                edits.Redo();
                EXPECT_FALSE(library.AnyPending()) << "back at the state of the disk";
                EXPECT_THAT(library.FilesToWrite(), IsEmpty());
            }
        }
        if (edits.StepsDone() == 0)
            break;
    }
}

TEST_F(EditsTest, EndBeforeWhatAnotherProgramChanged) {
    Title("a1", "one");
    Title("b1", "two");
    Title("c1", "three");
    edits.Write(data, library.FilesToWrite());
    Put("b.event", ReplaceAll(Get("b.event"), "two", "foreign"));
    EXPECT_THAT(edits.Reread([this] { Load(); }), ElementsAre("b1"));
    ASSERT_EQ(edits.StepsDone(), 1u);
    EXPECT_EQ(edits.NextUndo().Name(), "commit of c1");
    Title("c1", "given up");
    EXPECT_THAT(edits.Reread([this] { Load(); }), ElementsAre("c1"));
    EXPECT_FALSE(edits.CanUndo());
}

TEST_F(EditsTest, TellWhoListensAndKeepToTheirLimits) {
    Edits limited(library, {.Steps = 3});
    std::string told;
    limited.OnChange([&](const Edits::Change& change) {
        told += std::to_string(static_cast<int>(change.Kind)) + std::string(change.StepName) + ':';
        for (const std::string_view name : change.Names)
            told += std::string(name) + ' ';
    });
    for (int i = 0; i < 5; ++i)
        limited.ToggleDeletion("A1");
    EXPECT_EQ(limited.StepsDone(), 3u);
    told.clear();
    limited.Undo();
    limited.Redo();
    limited.Open(AddStep("X", "a.event"));
    EXPECT_FALSE(limited.CanUndo()) << "an open record is committed or taken back first";
    limited.TakeBack();
    limited.Normalize(0);
    EXPECT_EQ(told, "1deletion of A1:a1 2deletion of A1:a1 3addition of X:X 4addition of X:X ");
    EXPECT_THROW(Edits::Step(library, "").Change("nobody"), Failure);
}

} // namespace
} // namespace velmora
