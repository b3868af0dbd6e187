// Whatever the host does, every file is the old one or the new one, whole, and no record is lost.
#include "reliability/FaultDriver.h"

#include "FailureOf.h"
#include "Fault.h"
#include "LibraryFixture.h"
#include "ScratchRegistry.h"
#include "events/clsEvent.h"
#include "platform/ProfileStrings.h"
#include "services/clsMsgLog.h"

#include <memory>
#include <set>
#include <sys/mount.h>

namespace velmora {
namespace {

using ::testing::AnyOf;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;

using Contents = std::set<std::pair<std::string, std::string>>;

Contents ContentsOf(const std::string& folder) {
    Contents contents;
    for (const std::string& name : Files::ListFiles(folder))
        contents.emplace(name, Files::ReadWhole(folder + name));
    return contents;
}

/// A data directory of some events.
struct Game : LibraryInFolder {
    Game() : LibraryInFolder(EventKind, "MyEvents.event") { Fill(); }

    void Fill() {
        library.Clear();
        for (const auto& [name, file] :
             {std::pair{"Apple", "a"}, {"Cherry", "a"}, {"Banana", "b"}, {"Date", "c"}, {"Elder", "e"}}) {
            Add(name, file + std::string(".event"));
            Title(name, "a title");
        }
        Save();
    }
    /// Every kind of change: a move, an edit, a rename, the deletion of a file's last record.
    void Change() {
        Move("Apple", "a.event", "b.event");
        Title("Cherry", std::string(700, 'x'));
        edits.RenameFile("c.event", "d.event");
        edits.ToggleDeletion("Elder");
    }
    void Save() { edits.Write(data, library.FilesToWrite()); }
    void ExpectNothingLost() const {
        const Places places = PlacesOnDisk();
        for (const char* name : {"Apple", "Cherry", "Banana", "Date"})
            EXPECT_TRUE(places.contains(name)) << name;
    }
};

/// The files before and after a save that nothing disturbed.
const std::pair<Contents, Contents>& OldAndNew() {
    static const auto both = [] {
        Game game;
        const Contents old = ContentsOf(game.data);
        game.Load();
        game.Change();
        game.Save();
        return std::pair{old, ContentsOf(game.data)};
    }();
    return both;
}

/// Every data file is the old one or the new one; nothing else is there, unless a temporary may be.
void ExpectOldOrNew(const std::string& folder, bool clean) {
    const auto& [old, wanted] = OldAndNew();
    for (const auto& file : ContentsOf(folder))
        EXPECT_TRUE(old.contains(file) || wanted.contains(file) ||
                    (!clean && !file.first.ends_with(".event")))
            << file.first;
    for (const char* lasting : {"a.event", "b.event"})
        EXPECT_TRUE(Files::FileExists(folder + lasting));
}

struct LibrarySave : Game {
    LibrarySave() {
        Load();
        Change();
    }
    bool Run() {
        return FailureOf([this] { Save(); }).Number == 0;
    }
    void Check(bool clean) const { ExpectOldOrNew(data, clean); }
    void Survived(bool succeeded) {
        EXPECT_EQ(library.FilesLosingRecords().empty(), succeeded);
        EXPECT_EQ(library.Count(), 5u);
        EXPECT_TRUE(library.Find("Elder")->ToBeDeleted);
        ExpectNothingLost();
        // What is still in memory does the rest as soon as the host lets it.
        Save();
        Contents events = ContentsOf(data);
        std::erase_if(events, [](const auto& file) { return !file.first.ends_with(".event"); });
        EXPECT_EQ(events, OldAndNew().second);
    }
    void Restart() const { ExpectNothingLost(); }
};

TEST(Saves, LoseNothingWhateverStrikes) {
    PlayEveryBlow<LibrarySave>();
}

TEST(Saves, FlushTheNamesOfGainingFilesBeforeARecordLeavesItsOwn) {
    LibrarySave scene;
    const Fault none;
    scene.Save();
    // Two files gain, then a third one loses and two are deleted; the flushes beyond those of the bytes are
    // the folder's.
    std::vector<std::size_t> flushes;
    for (const std::string& beforeRename : Split(none.Calls, "rename"))
        flushes.push_back(Split(beforeRename, "fsync").size() - 1);
    EXPECT_THAT(flushes, ElementsAre(2, 0, 2, 3));
}

/// Loading with backups, the second time over changed files.
struct BackedUpLoad : Game {
    BackedUpLoad() {
        Load(true);
        old = ContentsOf(backups);
        Change();
        Save();
        wanted = ContentsOf(data);
    }
    bool Run() {
        return FailureOf([this] { Load(true); }).Number == 0;
    }
    void Check(bool clean) const {
        EXPECT_EQ(ContentsOf(data), wanted);
        for (const auto& backup : ContentsOf(backups)) {
            const auto& [name, bytes] = backup;
            const std::string source = name.substr(0, name.find('.')) + ".event";
            EXPECT_TRUE(old.contains(backup) || wanted.contains({source, bytes}) ||
                        (!clean && !name.ends_with("EVENT")))
                << name;
        }
    }
    void Survived(bool succeeded) const {
        if (succeeded) {
            EXPECT_EQ(Files::ReadWhole(backups + "b.latestEVENT"), Get("b.event"));
            EXPECT_EQ(Files::ReadWhole(backups + "d.1stEVENT"), Get("d.event"));
        } else {
            EXPECT_LT(library.Count(), 4u) << "a load whose backup failed went on";
        }
    }
    void Restart() {
        EXPECT_TRUE(Run());
        EXPECT_EQ(library.Count(), 4u);
        Survived(true);
    }

    Contents old;
    Contents wanted;
};

TEST(Saves, BackUpOrDoNotLoad) {
    PlayEveryBlow<BackedUpLoad>();
}

/// Committing into the journal.
struct JournaledCommit : Game {
    JournaledCommit() {
        Load();
        Journal::Leftover none;
        journal.Find(path, data, none);
        journal.Begin();
        Commit("Apple", "first");
    }
    std::string Commit(const std::string& name, const std::string& title) {
        Title(name, title);
        return journal.Note({name});
    }
    bool Run() { return Commit("Cherry", "second").empty(); }
    void Check(bool) const {}
    void Survived(bool) {
        EXPECT_EQ(Commit("Date", "third"), "");
        EXPECT_THAT(LeftIn(path, data), ElementsAre("Apple first", "Cherry second", "Date third"));
    }
    void Restart() {
        const std::vector<std::string> left = LeftIn(path, data);
        EXPECT_THAT(left, Contains("Apple first"));
        EXPECT_THAT(left, Each(AnyOf("Apple first", "Cherry second", "Date third", "complaint")));
    }

    const std::string path = temp / "events.journal";
    Journal journal{library};
};

TEST(Saves, KeepEarlierCommitsInTheJournal) {
    PlayEveryBlow<JournaledCommit>();
}

/// The end of a journal after a good write.
struct JournalsEnd : JournaledCommit {
    bool Run() {
        return FailureOf([this] { Save(); }).Number == 0 && journal.Remove().empty();
    }
    void Survived(bool succeeded) { EXPECT_TRUE(!succeeded || LeftIn(path, data).empty()); }
    void Restart() {
        journal.Begin();
        EXPECT_TRUE(Run());
        Survived(true);
    }
};

TEST(Saves, OfferNoWrittenJournalUnlessToldSo) {
    PlayEveryBlow<JournalsEnd>();
    JournalsEnd scene;
    const Fault nothingGoes("unlink", 0, EIO);
    EXPECT_EQ(scene.journal.Remove(), "");
    EXPECT_TRUE(Files::FileExists(scene.path));
    scene.Survived(true);
}

TEST(Saves, LoseNothingOnAFullDisk) {
    std::size_t pages = 0;
    for (bool succeeded = false; !succeeded; ++pages) {
        SCOPED_TRACE(pages);
        Game game;
        const std::string disk = game.temp.Host().string();
        const int refusal = ::mount("velmora", disk.c_str(), "tmpfs", 0, "size=128k") == 0 ? 0 : errno;
        if (refusal == EPERM)
            GTEST_SKIP() << "mounting needs permission";
        ASSERT_EQ(refusal, 0);
        const std::shared_ptr<void> unmount(nullptr, [&](void*) { ::umount2(disk.c_str(), MNT_DETACH); });
        Files::CreateFolder(game.data);
        game.Fill();
        game.Load();
        game.Change();
        const auto free = std::filesystem::space(disk).free / 4096;
        ASSERT_GE(free, pages);
        game.temp.Write("filler", std::string((free - pages) * 4096, '.'));
        const std::int32_t number = FailureOf([&] { game.Save(); }).Number;
        succeeded = number == 0;
        EXPECT_TRUE(succeeded || number == FailureDiskFull) << number;
        ExpectOldOrNew(game.data, true);
        Files::DeleteFile(game.temp / "filler");
        game.Save();
        game.ExpectNothingLost();
        EXPECT_EQ(game.PlacesOnDisk().size(), 4u);
    }
    EXPECT_GE(pages, 2u) << "the disk was never full";
}

/// One write of "new" over "old" in a small file, which is the old one or the new one after it.
template <class Store>
struct OldOrNew : Store {
    OldOrNew() {
        this->Write("new");
        wanted = Bytes();
        this->Write("old");
        old = Bytes();
        entries = this->Folder.EntryCount();
        EXPECT_NE(old, wanted);
    }
    std::string Bytes() const { return this->Folder.Read(Store::File); }
    bool Run() { return this->Write("new"); }
    void Check(bool clean) const {
        EXPECT_THAT(Bytes(), AnyOf(old, wanted));
        // A lock's file may be left: it means nothing once its holder is gone.
        EXPECT_TRUE(!clean ||
                    this->Folder.EntryCount() - int{this->Folder.Has("registry.reg.lock")} == entries);
    }
    void Survived(bool succeeded) const { EXPECT_TRUE(!succeeded || Bytes() == wanted); }
    void Restart() {
        EXPECT_THAT(this->Read(), AnyOf("old", "new"));
        EXPECT_TRUE(Run());
        Survived(true);
    }

    std::string old;
    std::string wanted;
    int entries = 0;
};

struct SettingsStore {
    bool Write(const std::string& value) const {
        return FailureOf([&] { ProfileStrings::Write("Setup", "Key", value, Folder / File); }).Number == 0;
    }
    std::string Read() const { return ProfileStrings::Read("Setup", "Key", "", 9, Folder / File); }
    static constexpr const char* File = "VelWriter.ini";
    TempFolder Folder;
};

TEST(SmallFiles, SettingsAreOldOrNew) {
    PlayEveryBlow<OldOrNew<SettingsStore>>();
}

struct RegistryStore : ScratchRegistry {
    RegistryStore() { Host->CreateKey(Root, "K"); }
    bool Write(const std::string& value) const {
        return Host->Write(Root, "K", "x", {RegistryType::Sz, value + '\0'});
    }
    std::string Read() const {
        return Host->Read(Root, "K", "x").value_or(RegistryValue{}).Bytes.substr(0, 3);
    }
    static constexpr const char* File = "registry.reg";
};

TEST(SmallFiles, TheRegistryIsOldOrNew) {
    PlayEveryBlow<OldOrNew<RegistryStore>>();
}

/// A failure is reported and logged, then the log is put away for its size.
struct Logging {
    Logging() { folder.Write("x.log", Old); }
    bool Run() const {
        clsError handler;
        handler.LogFile = folder / "x.log";
        handler.SetMsgOutputDIR(folder.Path());
        handler.HandleError("frm_Click", 0, FailureDiskFull, "full", "", {}, true);
        EXPECT_EQ(handler.LastCallStack(), std::vector<std::string>{"frm_Click"});
        clsMsgLog log;
        log.LogFile = folder / "x.log";
        std::string backupDir = folder.Path();
        std::string line = "line";
        const auto writeAndPutAway = [&] {
            log.WriteToLogFile(line, false);
            log.MaintainLogFile(1, &backupDir);
        };
        return FailureOf(writeAndPutAway).Number == 0;
    }
    void Check(bool) const {
        EXPECT_THAT(folder.Read(folder.Has("x.log") ? "x.log" : "OLDx.log"), ::testing::StartsWith(Old));
    }
    void Survived(bool succeeded) const {
        const bool putAway = !folder.Has("x.log") && folder.Read("OLDx.log").ends_with("line\r\n");
        EXPECT_TRUE(putAway || !succeeded);
    }
    void Restart() const { Survived(!folder.Has("x.log") || Run()); }

    const std::string Old = "what was logged before\r\n";
    TempFolder folder;
};

TEST(SmallFiles, LogsKeepWhatTheyHold) {
    PlayEveryBlow<Logging>();
}

} // namespace
} // namespace velmora
