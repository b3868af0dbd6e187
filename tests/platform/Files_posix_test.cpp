#include "FailureOf.h"
#include "Fault.h"
#include "TempFolder.h"
#include "platform/Files.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

struct stat FactsOf(const TempFolder& folder, const std::string& name) {
    struct stat facts {};
    EXPECT_EQ(::stat((folder.Host() / name).c_str(), &facts), 0);
    return facts;
}

TEST(FilesPosix, ReplacingKeepsModeAndOwner) {
    TempFolder folder;
    const std::string path = folder / "a.event";
    const mode_t old = ::umask(027);
    Files::ReplaceSafely(path, "x");
    ::umask(old);
    EXPECT_EQ(FactsOf(folder, "a.event").st_mode & 07777, 0640u) << "a new file gets the usual mode";
    for (const mode_t mode : {0600u, 0666u, 0755u}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        Files::ReplaceSafely(path, "new");
        EXPECT_EQ(FactsOf(folder, "a.event").st_mode & 07777, mode);
    }
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(path.c_str(), 12345, 23456), 0);
        Files::ReplaceSafely(path, "newer");
        EXPECT_EQ(FactsOf(folder, "a.event").st_uid, 12345u);
        EXPECT_EQ(FactsOf(folder, "a.event").st_gid, 23456u);
        EXPECT_EQ(FactsOf(folder, "a.event").st_mode & 07777, 0755u);
    }
}

TEST(FilesPosix, ReplacingFollowsLinks) {
    TempFolder folder;
    folder.Write("real/a.event", "old");
    fs::create_directory(folder.Host() / "links");
    fs::create_symlink("../real/a.event", folder.Host() / "links/first");
    fs::create_symlink(folder.Host() / "links/first", folder.Host() / "links/second.event");
    fs::create_symlink("../real/made.event", folder.Host() / "links/broken.event");
    fs::create_symlink("round.event", folder.Host() / "links/round.event");
    Files::ReplaceSafely(folder / "links/second.event", "new");
    Files::ReplaceSafely(folder / "links/broken.event", "made");
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "links/round.event", "x"); }).Number,
              FailurePathFileAccess);
    EXPECT_EQ(folder.Read("real/a.event"), "new");
    EXPECT_EQ(folder.Read("real/made.event"), "made");
    for (const auto& link : fs::directory_iterator(folder.Host() / "links"))
        EXPECT_TRUE(link.is_symlink()) << link.path();
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Host() / "real"), {}), 2);
}

TEST(FilesPosix, ListsBrokenLinksButNoLinksToFolders) {
    TempFolder folder;
    folder.Write("d/a.event", "x");
    fs::create_symlink("d/a.event", folder.Host() / "file.event");
    fs::create_symlink("nowhere", folder.Host() / "broken.event");
    fs::create_symlink("d", folder.Host() / "folder.event");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("file.event", "broken.event"));
    EXPECT_EQ(FailureOf([&] { Files::ReadWhole(folder / "broken.event"); }).Number, FailureFileNotFound);
    EXPECT_EQ(Files::ReadWhole(folder / "file.event"), "x");
    EXPECT_FALSE(Files::FileExists(folder / "broken.event"));
}

TEST(FilesPosix, NeitherReadsNorReplacesWhatIsNoRegularFile) {
    // Only a pipe of the test's own: run by the administrator, a replacement that went wrong would take a
    // real device away from the whole system.
    TempFolder folder;
    const std::string pipe = folder / "pipe.event";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(FailureOf([&] { Files::ReadWhole(pipe); }).Number, FailurePathFileAccess);
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(pipe, "x"); }).Number, FailurePathFileAccess);
    EXPECT_EQ(FailureOf([&] { Files::Append(pipe, "x"); }).Number, FailurePathFileAccess);
    EXPECT_TRUE(fs::is_fifo(folder.Host() / "pipe.event"));
    EXPECT_EQ(folder.EntryCount(), 1);
    EXPECT_EQ(FailureOf([&] { Files::ReadWhole("/dev/null"); }).Number, FailurePathFileAccess);
}

TEST(FilesPosix, AFullDiskIsReportedAndSoIsAUsedUpShareOfIt) {
    const Failure failure = FailureOf([&] { Files::Append("/dev/full", "x"); });
    EXPECT_EQ(failure.Number, FailureDiskFull);
    EXPECT_EQ(failure.Description(), "Cannot write /dev/full: No space left on device");
    TempFolder folder;
    const Fault fault("", 0, EDQUOT);
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); }).Number, FailureDiskFull);
}

TEST(FilesPosix, TheFolderIsFlushedAfterTheRenaming) {
    TempFolder folder;
    const Fault none;
    Files::ReplaceSafely(folder / "new.event", "x");
    EXPECT_THAT(none.Calls, ::testing::EndsWith(" fsync "));
}

TEST(FilesPosix, FailuresSpellPathsAsTheHostDoes) {
    TempFolder folder;
    folder.Write("Data/x", "");
    EXPECT_EQ(FailureOf([&] { Files::ReadWhole(folder.Path() + "\\data\\No.event"); }).Description(),
              "Cannot read " + (folder / "Data/No.event") + ": No such file or directory");
}

TEST(FilesPosix, ReadsFilesThatTellNoSize) {
    EXPECT_THAT(Files::ReadWhole("/proc/self/status"), HasSubstr("Pid:"));
}

TEST(FilesPosix, PrefersTheExactNameThenTheFirstInOrder) {
    TempFolder folder;
    for (const char* name : {"RAID.event", "Raid.event", "raid.event", "Sub/x", "SUB/y"})
        folder.Write(name, name);
    EXPECT_EQ(Files::ReadWhole(folder / "Raid.event"), "Raid.event");
    EXPECT_EQ(Files::ReadWhole(folder / "raid.event"), "raid.event");
    EXPECT_EQ(Files::ReadWhole(folder / "rAId.event"), "RAID.event");
    EXPECT_EQ(Files::ReadWhole(folder / "Sub/X"), "Sub/x");
    EXPECT_TRUE(Files::FileExists(folder / "sub/Y"));
}

TEST(FilesPosix, RelativePathsWorkAndDriveLettersAreNothingSpecial) {
    TempFolder folder;
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

TEST(FilesPosix, NamesThatAreNoUtf8StayUsable) {
    TempFolder folder;
    std::ofstream(folder.Host() / "caf\xE9.event") << "raw";
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("caf\xE9.event"));
    EXPECT_EQ(Files::ReadWhole(folder / "CAF\xC9.event"), "raw");
    Files::ReplaceSafely(folder / "caf\xE9.event", "new");
    EXPECT_EQ(folder.Read("caf\xE9.event"), "new");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(FilesPosix, TreesWithLinks) {
    TempFolder folder;
    folder.Write("Data/a", "a");
    folder.Write("Else/b", "bb");
    fs::create_symlink("../Else", folder.Host() / "Data/Linked");
    fs::create_symlink("a", folder.Host() / "Data/link");
    EXPECT_EQ(Files::TreeSize(folder / "Data"), 4u);
    Files::CopyTree(folder / "Data", folder / "Copy");
    EXPECT_EQ(folder.Read("Copy/Linked/b"), "bb");
    EXPECT_EQ(folder.Read("Copy/link"), "a");
    EXPECT_FALSE(fs::is_symlink(folder.Host() / "Copy/link"));
    fs::create_symlink("..", folder.Host() / "Else/Round");
    fs::create_symlink("../Data", folder.Host() / "Else/Back");
    EXPECT_EQ(FailureOf([&] { Files::TreeSize(folder / "Data"); }).Number, FailurePathFileAccess);
    EXPECT_EQ(FailureOf([&] { Files::CopyTree(folder / "Data", folder / "Second"); }).Number,
              FailurePathFileAccess);
    EXPECT_FALSE(folder.Has("Second"));
}

} // namespace
} // namespace velmora
