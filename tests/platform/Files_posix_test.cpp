#include "FailureOf.h"
#include "Fault.h"
#include "TempFolder.h"
#include "platform/FileTrees.h"
#include "platform/Files.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::UnorderedElementsAre;

class FilesPosixTest : public ::testing::Test {
  protected:
    /// Links a name in the folder to what may be relative to it.
    void Link(const std::string& name, const std::string& target) const {
        fs::create_symlink(target, folder.Host() / name);
    }

    TempFolder folder;
};

TEST_F(FilesPosixTest, ReplacingKeepsModeAndOwner) {
    const std::string path = folder / "a.event";
    struct stat facts {};
    const mode_t old = ::umask(027);
    Files::ReplaceSafely(path, "x");
    ::umask(old);
    ASSERT_EQ(::stat(path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 07777, 0640u) << "a new file gets the usual mode";
    const bool mayGiveAway = ::geteuid() == 0;
    for (const mode_t mode : {0600u, 0666u, 0755u}) {
        ASSERT_TRUE(!mayGiveAway || ::chown(path.c_str(), 12345, 23456) == 0);
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        Files::ReplaceSafely(path, "new");
        ASSERT_EQ(::stat(path.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_mode & 07777, mode);
        EXPECT_TRUE(!mayGiveAway || (facts.st_uid == 12345 && facts.st_gid == 23456));
    }
}

TEST_F(FilesPosixTest, ReplacingFollowsLinks) {
    folder.Write("real/a.event", "old");
    fs::create_directory(folder.Host() / "links");
    Link("links/first", "../real/a.event");
    Link("links/second", folder / "links/first");
    Link("links/broken", "../real/made.event");
    Link("links/round", "round");
    Files::ReplaceSafely(folder / "links/second", "new");
    Files::ReplaceSafely(folder / "links/broken", "made");
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "links/round", "x"); }).Number,
              FailurePathFileAccess);
    EXPECT_EQ(folder.Read("real/a.event"), "new");
    EXPECT_EQ(folder.Read("real/made.event"), "made");
    for (const char* link : {"first", "second", "broken", "round"})
        EXPECT_TRUE(fs::is_symlink(folder.Host() / "links" / link)) << link;
    EXPECT_THAT(Files::ListFiles(folder / "real"), UnorderedElementsAre("a.event", "made.event"));
}

TEST_F(FilesPosixTest, ALinkThatCannotBeReadFailsTheWriteAndPrivateFilesFollowNone) {
    folder.Write("real", "old");
    Link("link", "real");
    {
        const Fault refused("readlink", 0, EIO);
        EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "link", "new"); }).Number,
                  FailureDeviceError);
    }
    EXPECT_TRUE(fs::is_symlink(folder.Host() / "link"));
    constexpr auto onlyMine = Files::Sharing::Private;
    EXPECT_NE(FailureOf([&] { Files::AppendSafely(folder / "link", "new", onlyMine); }).Number, 0);
    EXPECT_NE(FailureOf([&] { Files::ReadWhole(folder / "link", onlyMine); }).Number, 0);
    Files::ReplaceSafely(folder / "link", "new", {.Readers = onlyMine});
    Files::AppendSafely(folder / "link", "er", onlyMine);
    Files::AppendSafely(folder / "made", "made", onlyMine);
    EXPECT_EQ(Files::ReadWhole(folder / "link", onlyMine), "newer");
    EXPECT_EQ(folder.Read("real"), "old");
    for (const char* name : {"link", "made"})
        EXPECT_EQ(fs::symlink_status(folder.Host() / name).permissions(),
                  fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(folder.EntryCount(), 3);
}

TEST_F(FilesPosixTest, AFileThatTheHostCannotTellOfIsNotMissing) {
    const Fault refused("stat", 0, EIO);
    EXPECT_EQ(FailureOf([&] { Files::FileExists(folder / "a"); }).Number, FailureDeviceError);
    EXPECT_EQ(FailureOf([&] { Files::FolderExists(folder.Path()); }).Number, FailureDeviceError);
}

TEST_F(FilesPosixTest, ListsBrokenLinksButNoLinksToFolders) {
    folder.Write("d/a.event", "x");
    Link("file.event", "d/a.event");
    Link("broken.event", "nowhere");
    Link("folder.event", "d");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("file.event", "broken.event"));
    EXPECT_FALSE(Files::FileExists(folder / "broken.event"));
}

TEST_F(FilesPosixTest, ReadsAndWritesRegularFilesOnlyWhateverSizeTheyTell) {
    // Only a pipe of the test's own: run by the administrator, a replacement that went wrong would take a
    // real device away from the whole system.
    const std::string pipe = folder / "pipe.event";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(FailureOf([&] { Files::ReadWhole(pipe); }).Number, FailurePathFileAccess);
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(pipe, "x"); }).Number, FailurePathFileAccess);
    EXPECT_EQ(FailureOf([&] { Files::Append(pipe, "x"); }).Number, FailurePathFileAccess);
    EXPECT_TRUE(fs::is_fifo(folder.Host() / "pipe.event"));
    EXPECT_EQ(folder.EntryCount(), 1);
    EXPECT_THAT(Files::ReadWhole("/proc/self/status"), HasSubstr("Pid:"));
}

TEST_F(FilesPosixTest, FailuresTellThePathAsTheHostSpellsItAndWhenADiskIsFull) {
    folder.Write("Data/x", "");
    EXPECT_EQ(FailureOf([&] { Files::ReadWhole(folder.Path() + "\\data\\No.event"); }).Description(),
              "Cannot read " + (folder / "Data/No.event") + ": No such file or directory");
    const Failure full = FailureOf([] { Files::Append("/dev/full", "x"); });
    EXPECT_EQ(full.Number, FailureDiskFull);
    EXPECT_EQ(full.Description(), "Cannot write /dev/full: No space left on device");
    const Fault shareUsedUp("", 0, EDQUOT);
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); }).Number, FailureDiskFull);
}

TEST_F(FilesPosixTest, TheFolderIsFlushedAfterTheRenaming) {
    const Fault none;
    Files::ReplaceSafely(folder / "new.event", "x");
    EXPECT_THAT(none.Calls, ::testing::EndsWith("rename fsync "));
}

TEST_F(FilesPosixTest, PrefersTheExactNameThenTheFirstInOrder) {
    for (const char* name : {"RAID.event", "Raid.event", "raid.event", "Sub/x", "SUB/y"})
        folder.Write(name, name);
    for (const std::string name : {"Raid.event", "raid.event", "RAID.event"})
        EXPECT_EQ(Files::ReadWhole(folder / name), name);
    EXPECT_EQ(Files::ReadWhole(folder / "rAId.event"), "RAID.event");
    EXPECT_EQ(Files::ReadWhole(folder / "Sub/X"), "Sub/x");
    EXPECT_EQ(Files::ReadWhole(folder / "sub/Y"), "SUB/y");
}

TEST_F(FilesPosixTest, RelativePathsWorkAndDriveLettersAreNothingSpecial) {
    folder.Write("C:/Games/old", "");
    const fs::path before = fs::current_path();
    fs::current_path(folder.Host());
    Files::ReplaceSafely("plain", "1");
    Files::ReplaceSafely("c:\\games\\a.event", "2");
    Files::CreateFolder("New/Deep");
    EXPECT_EQ(Files::ReadWhole("PLAIN"), "1");
    fs::current_path(before);
    EXPECT_EQ(folder.Read("C:/Games/a.event"), "2");
    EXPECT_TRUE(folder.Has("New/Deep"));
}

TEST_F(FilesPosixTest, NamesThatAreNoUtf8StayUsable) {
    folder.Write("caf\xE9.event", "raw");
    EXPECT_EQ(Files::ReadWhole(folder / "CAF\xC9.event"), "raw");
    Files::ReplaceSafely(folder / "caf\xE9.event", "new");
    EXPECT_EQ(folder.Read("caf\xE9.event"), "new");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("caf\xE9.event"));
}

TEST_F(FilesPosixTest, TreesWithLinks) {
    folder.Write("Data/a", "a");
    folder.Write("Else/b", "bb");
    Link("Data/Linked", "../Else");
    Link("Data/link", "a");
    EXPECT_EQ(Files::TreeSize(folder / "Data"), 4u);
    Files::CopyTree(folder / "Data", folder / "Copy");
    EXPECT_EQ(folder.Read("Copy/Linked/b"), "bb");
    EXPECT_EQ(folder.Read("Copy/link"), "a");
    EXPECT_FALSE(fs::is_symlink(folder.Host() / "Copy/link"));
    Link("Else/Back", "../Data");
    Link("Data/broken", "nowhere");
    ASSERT_EQ(::mkfifo((folder / "Data/pipe").c_str(), 0600), 0);
    fs::permissions(folder.Host() / "Else/b", fs::perms::owner_read);
    EXPECT_EQ(Files::TreeSize(folder / "Data"), 4u);
    EXPECT_THAT(Files::CopyTree(folder / "Data", folder / "Second"),
                UnorderedElementsAre(StartsWith(folder / "Data/Linked/Back: "),
                                     StartsWith(folder / "Data/broken: "),
                                     StartsWith(folder / "Data/pipe: ")));
    EXPECT_EQ(folder.Read("Second/a") + folder.Read("Second/Linked/b"), "abb");
    EXPECT_EQ(fs::status(folder.Host() / "Second/Linked/b").permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_FALSE(folder.Has("Second/pipe"));
}

} // namespace
} // namespace velmora
