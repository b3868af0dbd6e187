// Whatever the host does to a save, every file is the old one or the new one and no record is lost.
#include "reliability/FaultDriver.h"

#include "FailureOf.h"
#include "TempFolder.h"
#include "events/clsEvent.h"
#include "records/Journal.h"
#include "services/Prompts.h"

#include <gmock/gmock.h>

#include <map>
#include <set>
#include <sys/mount.h>

namespace velmora {
namespace {

using ::testing::AnyOf;
using ::testing::IsSupersetOf;

using Contents = std::map<std::string, std::string>;

Contents ContentsOf(const std::string& folder) {
    Contents contents;
    for (const std::string& name : Files::ListFiles(folder))
        contents[name] = Files::ReadWhole(folder + name);
    return contents;
}

/// A data directory with every kind of change pending: an edit, a move, a rename, the deletion of a file's
/// last record.
class Game {
  public:
    explicit Game(std::string folder, bool backups = false) : data(std::move(folder)), autoBackup(backups) {
        Files::CreateFolder(data);
        Files::CreateFolder(Backups());
        Put("a.event", {"Apple", "Cherry"});
        Put("b.event", {"Banana"});
        Put("c.event", {"Date"});
        Put("e.event", {"Elder"});
    }

    [[nodiscard]] std::string Backups() const { return data + "BackupData/"; }
    void Load() {
        library.Clear();
        LoadRequest request;
        request.Folder = data;
        request.BackupFolder = Backups();
        request.OwnFile = "MyEvents.event";
        request.MakeBackups = true;
        request.AutoBackup = autoBackup;
        request.Findings = [](const Finding&) {};
        library.Load(request);
    }
    void Edit() {
        library.MoveRecord(*library.Find("Apple"), data, "a.event", "b.event");
        Titled("Cherry", std::string(700, 'x'));
        library.RenameFile("c.event", "d.event");
        Record& elder = *library.Find("Elder");
        elder.ToBeDeleted = elder.IsDirty = true;
    }
    Record& Titled(const std::string& name, const std::string& title) {
        auto& event = static_cast<clsEvent&>(*library.Find(name));
        event.Title = title;
        event.IsDirty = true;
        return event;
    }
    void Save() {
        library.WriteFiles(data, library.FilesToWrite());
        library.FilesLosingRecords.clear();
    }
    [[nodiscard]] std::set<std::string> Names() const {
        std::set<std::string> names;
        for (const auto& [name, record] : library.Records)
            names.insert(name);
        return names;
    }

    const std::string data;
    const bool autoBackup;
    Library library{EventKind};

  private:
    void Put(const std::string& file, const std::vector<std::string>& names) const {
        std::string text;
        for (const std::string& name : names) {
            clsEvent event;
            event.EventName = name;
            event.Title = "title of " + name;
            text += event.GenerateEventString(false);
        }
        Files::ReplaceSafely(data + file, text);
    }
};

/// The files before and after a save that nothing disturbed.
struct Reference {
    Reference() {
        const TempFolder folder;
        Game game(folder / "Data/");
        Old = ContentsOf(game.data);
        game.Load();
        game.Edit();
        game.Save();
        New = ContentsOf(game.data);
    }
    Contents Old;
    Contents New;
};

/// Every data file is the old one or the new one; nothing else is there, unless a temporary may be.
void ExpectOldOrNew(const std::string& folder, bool clean) {
    static const Reference reference;
    const auto in = [](const Contents& contents, const std::string& name) {
        const auto found = contents.find(name);
        return found == contents.end() ? "no file" : found->second;
    };
    const Contents now = ContentsOf(folder);
    for (const char* name : {"a.event", "b.event", "c.event", "d.event", "e.event"})
        EXPECT_THAT(in(now, name), AnyOf(in(reference.Old, name), in(reference.New, name))) << name;
    for (const auto& [name, bytes] : now)
        if (name.ends_with(".event"))
            EXPECT_TRUE(reference.Old.contains(name) || reference.New.contains(name)) << name;
        else
            EXPECT_FALSE(clean) << name;
}

const std::vector<std::string> Lasting{"Apple", "Cherry", "Banana", "Date"};

class LibrarySave {
  public:
    void Begin() {
        game.Load();
        game.Edit();
    }
    bool Run() {
        return FailureOf([this] { game.Save(); }).Number == 0;
    }
    void Check(bool clean) { ExpectOldOrNew(game.data, clean); }
    void Survived(bool succeeded) {
        EXPECT_EQ(game.library.FilesLosingRecords.empty(), succeeded);
        EXPECT_THAT(game.Names(), IsSupersetOf(Lasting));
        EXPECT_TRUE(game.library.Find("Elder")->ToBeDeleted);
        ExpectNothingLost();
        // What is still in memory does the rest as soon as the host lets it.
        game.Save();
        static const Reference reference;
        Contents events = ContentsOf(game.data);
        std::erase_if(events, [](const auto& file) { return !file.first.ends_with(".event"); });
        EXPECT_EQ(events, reference.New);
    }
    void Restart() { ExpectNothingLost(); }

  private:
    void ExpectNothingLost() const {
        Game next(folder / "Next/");
        for (const auto& [name, bytes] : ContentsOf(next.data))
            Files::DeleteFile(next.data + name);
        for (const auto& [name, bytes] : ContentsOf(game.data))
            Files::ReplaceSafely(next.data + name, bytes);
        next.Load();
        EXPECT_THAT(next.Names(), IsSupersetOf(Lasting));
    }

    TempFolder folder;
    Game game{folder / "Data/"};
};

TEST(Saves, LoseNothingWhateverStrikes) {
    PlayEveryBlow<LibrarySave>();
}

TEST(Saves, FlushTheNamesOfGainingFilesBeforeARecordLeavesItsOwn) {
    static std::vector<std::string> operations;
    operations.clear();
    const TempFolder folder;
    Game game(folder / "Data/");
    game.Load();
    game.Edit();
    gFaultHook = [](const char* operation) {
        operations.emplace_back(operation);
        return 0;
    };
    game.Save();
    gFaultHook = nullptr;
    // Two files gain, then a third one loses; the flush beyond that of its own bytes is the folder's.
    std::vector<int> flushesBeforeRename{0};
    for (const std::string& operation : operations)
        if (operation == "fsync")
            ++flushesBeforeRename.back();
        else if (operation == "rename")
            flushesBeforeRename.push_back(0);
    EXPECT_THAT(flushesBeforeRename, ::testing::ElementsAre(1, 1, 2, 1));
}

/// Loading with backups, the second time over changed files.
class BackedUpLoad {
  public:
    BackedUpLoad() {
        game.Load();
        old = ContentsOf(game.Backups());
        game.Edit();
        game.Save();
        data = ContentsOf(game.data);
    }
    void Begin() { game.library.Clear(); }
    bool Run() {
        return FailureOf([this] { game.Load(); }).Number == 0;
    }
    void Check(bool clean) {
        EXPECT_EQ(ContentsOf(game.data), data);
        for (const auto& [name, bytes] : ContentsOf(game.Backups())) {
            if (!name.ends_with("EVENT")) {
                EXPECT_FALSE(clean) << name;
                continue;
            }
            const std::string source = name.substr(0, name.find('.')) + ".event";
            EXPECT_TRUE((old.contains(name) && bytes == old[name]) || bytes == data[source]) << name;
        }
    }
    void Survived(bool succeeded) {
        if (succeeded) {
            EXPECT_EQ(Files::ReadWhole(game.Backups() + "b.latestEVENT"), data["b.event"]);
            EXPECT_EQ(Files::ReadWhole(game.Backups() + "d.1stEVENT"), data["d.event"]);
        } else {
            EXPECT_LT(game.library.Records.Count(), 4u) << "a load whose backup failed went on";
        }
    }
    void Restart() {
        game.Load();
        EXPECT_THAT(game.Names(), IsSupersetOf(Lasting));
        Survived(true);
    }

  private:
    TempFolder folder;
    Game game{folder / "Data/", true};
    Contents old;
    Contents data;
};

TEST(Saves, BackUpOrDoNotLoad) {
    PlayEveryBlow<BackedUpLoad>();
}

/// Committing into the journal.
class JournaledCommit {
  public:
    JournaledCommit() {
        game.Load();
        first.Find(path, game.data, found);
        first.Begin();
        first.Note({&game.Titled("Apple", "first")});
    }
    void Begin() {}
    bool Run() { return first.Note({&game.Titled("Cherry", "second")}).empty(); }
    void Check(bool) {}
    void Survived(bool succeeded) {
        EXPECT_EQ(first.Note({&game.Titled("Date", "third")}), "");
        EXPECT_EQ(Left().size(), 3u) << succeeded;
    }
    void Restart() {
        Contents left = Left();
        EXPECT_EQ(left["Apple"], "first");
        EXPECT_TRUE(!left.contains("Cherry") || left["Cherry"] == "second");
    }

  private:
    Contents Left() {
        Journal::Leftover leftover;
        Journal(game.library).Find(path, game.data, leftover);
        Contents titles;
        for (const auto& [name, record] : leftover.Records)
            titles[name] = static_cast<clsEvent&>(*record).Title;
        return titles;
    }

    TempFolder folder;
    Game game{folder / "Data/"};
    const std::string path = folder / "events.journal";
    Journal first{game.library};
    Journal::Leftover found;
};

TEST(Saves, KeepEarlierCommitsInTheJournal) {
    PlayEveryBlow<JournaledCommit>();
}

/// A small disk of its own, gone with the test.
class SmallDisk {
  public:
    explicit SmallDisk(const TempFolder& folder) : where((folder.Host() / "disk").string()) {
        std::filesystem::create_directory(where);
        if (::mount("velmora", where.c_str(), "tmpfs", 0, "size=128k") != 0)
            refusal = errno;
    }
    ~SmallDisk() {
        if (refusal == 0)
            ::umount2(where.c_str(), MNT_DETACH);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    [[nodiscard]] int Refusal() const { return refusal; }
    /// Fills it up but for some pages.
    void FillBut(std::size_t pages) const {
        const auto free = std::filesystem::space(where).free / 4096;
        ASSERT_GE(free, pages);
        const std::string filler((free - pages) * 4096, '.');
        Files::ReplaceSafely(where + "/filler", filler);
    }
    void Free() const { Files::DeleteFile(where + "/filler"); }

  private:
    std::string where;
    int refusal = 0;
};

TEST(Saves, LoseNothingOnAFullDisk) {
    std::size_t pages = 0;
    for (bool succeeded = false; !succeeded; ++pages) {
        SCOPED_TRACE(pages);
        const TempFolder folder;
        const SmallDisk disk(folder);
        if (disk.Refusal() == EPERM)
            GTEST_SKIP() << "mounting needs permission";
        ASSERT_EQ(disk.Refusal(), 0);
        Game game(folder / "disk/Data/");
        game.Load();
        game.Edit();
        disk.FillBut(pages);
        const std::int32_t number = FailureOf([&] { game.Save(); }).Number;
        succeeded = number == 0;
        EXPECT_TRUE(succeeded || number == FailureDiskFull) << number;
        ExpectOldOrNew(game.data, true);
        disk.Free();
        game.Save();
        game.Load();
        EXPECT_THAT(game.Names(), ::testing::UnorderedElementsAreArray(Lasting));
    }
    EXPECT_GE(pages, 2u) << "the disk was never full";
}

} // namespace
} // namespace velmora
