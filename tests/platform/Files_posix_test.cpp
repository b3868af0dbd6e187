#include "TempFolder.h"
#include "platform/Failure.h"
#include "platform/FaultHook.h"
#include "platform/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

/// Makes the host refuse the n-th matching operation for as long as it lives.
class Fault {
  public:
    Fault(std::string operation, int nth, int code)
        : Operation(std::move(operation)), Countdown(nth), Code(code) {
        current = this;
        gFaultHook = [](const char* name) { return current->Ask(name); };
    }
    ~Fault() { gFaultHook = nullptr; }
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;

    [[nodiscard]] bool Struck() const { return Countdown <= 0; }
    [[nodiscard]] const std::string& What() const { return Refused; }

  private:
    int Ask(const char* name) {
        if ((!Operation.empty() && Operation != name) || --Countdown != 0) {
            return 0;
        }
        Refused = name;
        return Code;
    }

    static inline Fault* current = nullptr;
    std::string Operation;
    int Countdown;
    int Code;
    std::string Refused;
};

std::int32_t NumberOf(const std::function<void()>& work, std::string* description = nullptr) {
    try {
        work();
        return 0;
    } catch (const Failure& failure) {
        if (description != nullptr) {
            *description = failure.Description();
        }
        return failure.Number;
    }
}

/// Everything below a folder, with the contents of files: two of these are equal when nothing has changed.
std::map<std::string, std::string> Picture(const TempFolder& folder) {
    std::map<std::string, std::string> picture;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Host())) {
        const std::string name = entry.path().lexically_relative(folder.Host());
        picture[name] = entry.is_regular_file() ? folder.Read(name) : "not a file";
    }
    return picture;
}

mode_t ModeOf(const fs::path& path) {
    struct stat facts {};
    EXPECT_EQ(::stat(path.c_str(), &facts), 0);
    return facts.st_mode & 07777;
}

TEST(FilesFaults, ReplacingLeavesTheOldFileWhateverFails) {
    for (const bool existed : {true, false}) {
        bool succeeded = false;
        for (int nth = 1; !succeeded; ++nth) {
            TempFolder folder;
            folder.Write("other", "o");
            if (existed) {
                folder.Write("a.event", "old");
            }
            const auto before = Picture(folder);
            std::string struck;
            std::int32_t number = 0;
            {
                const Fault fault("", nth, EIO);
                number = NumberOf([&] { Files::ReplaceSafely(folder / "a.event", "new"); });
                struck = fault.What();
            }
            SCOPED_TRACE(std::to_string(nth) + " " + struck);
            succeeded = number == 0;
            EXPECT_EQ(succeeded, struck.empty());
            if (succeeded) {
                EXPECT_GE(nth, 6);
                EXPECT_EQ(folder.Read("a.event"), "new");
                EXPECT_EQ(folder.EntryCount(), 2);
            } else {
                EXPECT_EQ(number, FailureDeviceError);
                EXPECT_EQ(Picture(folder), before);
            }
        }
    }
}

TEST(FilesFaults, ShortWritesAreCarriedOn) {
    TempFolder folder;
    gShortWriteHook = [](std::size_t) { return std::size_t{3}; };
    Files::ReplaceSafely(folder / "a.event", "0123456789");
    Files::Append(folder / "a.event", "abcdefg");
    EXPECT_EQ(folder.Read("a.event"), "0123456789abcdefg");
    {
        // The disk fills up in the middle.
        const Fault fault("write", 3, ENOSPC);
        EXPECT_EQ(NumberOf([&] { Files::ReplaceSafely(folder / "a.event", "0123456789"); }), FailureDiskFull);
    }
    EXPECT_EQ(folder.Read("a.event"), "0123456789abcdefg");
    EXPECT_EQ(folder.EntryCount(), 1);
    // A disk that takes nothing and reports nothing must not be asked for ever.
    gShortWriteHook = [](std::size_t) { return std::size_t{0}; };
    EXPECT_EQ(NumberOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); }), FailureDeviceError);
    gShortWriteHook = nullptr;
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(FilesFaults, ReasonsBecomeClassicNumbers) {
    struct Case {
        int Code;
        std::int32_t Number;
        const char* Reason;
    };
    for (const Case& each :
         {Case{ENOSPC, FailureDiskFull, "No space left on device"}, Case{EDQUOT, FailureDiskFull, "quota"},
          Case{EACCES, FailurePermissionDenied, "Permission denied"},
          Case{EPERM, FailurePermissionDenied, "not permitted"},
          Case{EROFS, FailurePermissionDenied, "Read-only"}, Case{EIO, FailureDeviceError, "error"},
          Case{EMFILE, FailurePathFileAccess, "Too many"}, Case{EEXIST, FailurePathFileAccess, "exists"}}) {
        TempFolder folder;
        const Fault fault("open", 1, each.Code);
        std::string description;
        EXPECT_EQ(NumberOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); }, &description),
                  each.Number);
        EXPECT_THAT(description, HasSubstr("Cannot write " + folder.Path() + "a.event: "));
        EXPECT_THAT(description, HasSubstr(each.Reason));
    }
}

TEST(FilesFaults, EveryOperationReportsItsFailure) {
    TempFolder folder;
    folder.Write("f", "x");
    struct Case {
        const char* Operation;
        std::function<void()> Work;
    };
    for (const Case& each : {Case{"open", [&] { Files::Append(folder / "f", "y"); }},
                             Case{"write", [&] { Files::Append(folder / "f", "y"); }},
                             Case{"unlink", [&] { Files::DeleteFile(folder / "f"); }},
                             Case{"mkdir", [&] { Files::CreateFolder(folder / "d"); }},
                             Case{"rename", [&] { Files::CopyFile(folder / "f", folder / "g"); }}}) {
        const Fault fault(each.Operation, 1, EACCES);
        EXPECT_EQ(NumberOf(each.Work), FailurePermissionDenied) << each.Operation;
    }
    EXPECT_THAT(Picture(folder), UnorderedElementsAre(std::pair<const std::string, std::string>("f", "x")));
    const Fault fault("close", 1, EIO);
    EXPECT_EQ(NumberOf([&] { Files::Append(folder / "f", "y"); }), FailureDeviceError);
}

TEST(FilesFaults, AHalfMadeTreeIsRemovedWhateverFails) {
    bool succeeded = false;
    for (int nth = 1; !succeeded; ++nth) {
        TempFolder folder;
        folder.Write("Data/a", "aaa");
        folder.Write("Data/Sub/b", "bbb");
        const auto before = Picture(folder);
        std::int32_t number = 0;
        {
            const Fault fault("", nth, ENOSPC);
            number = NumberOf([&] { Files::CopyTree(folder / "Data", folder / "New/Copy"); });
            succeeded = !fault.Struck();
        }
        EXPECT_EQ(number, succeeded ? 0 : FailureDiskFull);
        if (!succeeded) {
            EXPECT_EQ(Picture(folder), before) << nth;
        }
    }
}

TEST(FilesPosix, ReplacingKeepsModeAndOwner) {
    TempFolder folder;
    folder.Write("a.event", "old");
    const fs::path path = folder.Host() / "a.event";
    for (const mode_t mode : {0600u, 0640u, 0666u, 0755u}) {
        ASSERT_EQ(::chmod(path.c_str(), mode), 0);
        Files::ReplaceSafely(folder / "a.event", "new");
        EXPECT_EQ(ModeOf(path), mode);
    }
    if (::geteuid() == 0) {
        ASSERT_EQ(::chown(path.c_str(), 12345, 23456), 0);
        Files::ReplaceSafely(folder / "a.event", "newer");
        struct stat facts {};
        ASSERT_EQ(::stat(path.c_str(), &facts), 0);
        EXPECT_EQ(facts.st_uid, 12345u);
        EXPECT_EQ(facts.st_gid, 23456u);
        EXPECT_EQ(ModeOf(path), 0755u);
    }
}

TEST(FilesPosix, NewFilesGetTheUsualMode) {
    TempFolder folder;
    const mode_t old = ::umask(027);
    Files::ReplaceSafely(folder / "a.event", "x");
    ::umask(old);
    EXPECT_EQ(ModeOf(folder.Host() / "a.event"), 0640u);
}

TEST(FilesPosix, ReplacingFollowsLinks) {
    TempFolder folder;
    folder.Write("real/a.event", "old");
    fs::create_directory(folder.Host() / "links");
    fs::create_symlink("../real/a.event", folder.Host() / "links/first");
    fs::create_symlink(folder.Host() / "links/first", folder.Host() / "links/second.event");
    fs::create_symlink("../real/made.event", folder.Host() / "links/broken.event");
    Files::ReplaceSafely(folder / "links/second.event", "new");
    EXPECT_EQ(folder.Read("real/a.event"), "new");
    Files::ReplaceSafely(folder / "links/broken.event", "made");
    EXPECT_EQ(folder.Read("real/made.event"), "made");
    for (const char* link : {"links/first", "links/second.event", "links/broken.event"}) {
        EXPECT_TRUE(fs::is_symlink(folder.Host() / link)) << link;
    }
    fs::create_symlink("round.event", folder.Host() / "links/round.event");
    EXPECT_EQ(NumberOf([&] { Files::ReplaceSafely(folder / "links/round.event", "x"); }),
              FailurePathFileAccess);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Host() / "links"), {}), 4);
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.Host() / "real"), {}), 2);
}

TEST(FilesPosix, ListsBrokenLinksButNoLinksToFolders) {
    TempFolder folder;
    folder.Write("d/a.event", "x");
    fs::create_symlink("d/a.event", folder.Host() / "file.event");
    fs::create_symlink("nowhere", folder.Host() / "broken.event");
    fs::create_symlink("d", folder.Host() / "folder.event");
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("file.event", "broken.event"));
    EXPECT_EQ(NumberOf([&] { Files::ReadWhole(folder / "broken.event"); }), FailureFileNotFound);
    EXPECT_EQ(Files::ReadWhole(folder / "file.event"), "x");
    EXPECT_FALSE(Files::FileExists(folder / "broken.event"));
}

TEST(FilesPosix, NeitherReadsNorReplacesPipesAndDevices) {
    TempFolder folder;
    ASSERT_EQ(::mkfifo((folder.Host() / "pipe.event").c_str(), 0600), 0);
    for (const std::string& path :
         {folder / "pipe.event", std::string("/dev/null"), std::string("/dev/full")}) {
        EXPECT_EQ(NumberOf([&] { Files::ReadWhole(path); }), FailurePathFileAccess) << path;
        EXPECT_EQ(NumberOf([&] { Files::ReplaceSafely(path, "x"); }), FailurePathFileAccess) << path;
    }
    EXPECT_EQ(NumberOf([&] { Files::Append(folder / "pipe.event", "x"); }), FailurePathFileAccess);
    EXPECT_TRUE(fs::is_fifo(folder.Host() / "pipe.event"));
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(FilesPosix, AFullDiskIsReported) {
    std::string description;
    EXPECT_EQ(NumberOf([&] { Files::Append("/dev/full", "x"); }, &description), FailureDiskFull);
    EXPECT_EQ(description, "Cannot write /dev/full: No space left on device");
}

TEST(FilesPosix, ReadsFilesThatTellNoSize) {
    EXPECT_THAT(Files::ReadWhole("/proc/self/status"), HasSubstr("Pid:"));
}

TEST(FilesPosix, PrefersTheExactNameThenTheFirstInOrder) {
    TempFolder folder;
    for (const char* name : {"RAID.event", "Raid.event", "raid.event", "Sub/x", "SUB/y"}) {
        folder.Write(name, name);
    }
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
    const std::string read = Files::ReadWhole("PLAIN");
    fs::current_path(before);
    EXPECT_EQ(read, "1");
    EXPECT_EQ(folder.Read("C:/Games/a.event"), "2");
    EXPECT_TRUE(folder.Has("New/Deep"));
}

TEST(FilesPosix, NamesThatAreNoUtf8StayUsable) {
    TempFolder folder;
    std::ofstream(folder.Host() / "caf\xE9.event") << "raw";
    EXPECT_THAT(Files::ListFiles(folder.Path()), UnorderedElementsAre("caf\xE9.event"));
    EXPECT_EQ(Files::ReadWhole(folder / "caf\xE9.event"), "raw");
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
    EXPECT_EQ(NumberOf([&] { Files::TreeSize(folder / "Data"); }), FailurePathFileAccess);
    EXPECT_EQ(NumberOf([&] { Files::CopyTree(folder / "Data", folder / "Second"); }), FailurePathFileAccess);
    EXPECT_FALSE(folder.Has("Second"));
}

} // namespace
} // namespace velmora
