#include "FailureOf.h"
#include "Fault.h"
#include "TempFolder.h"
#include "platform/FileTrees.h"
#include "platform/Files.h"
#include "platform/Replacements.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <map>

namespace velmora {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

using Contents = std::map<std::string, std::string>;

/// Everything below a folder, with the contents of files: two of these are equal when nothing has changed.
Contents ContentsOf(const TempFolder& folder) {
    Contents contents;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Host())) {
        const std::string name = entry.path().lexically_relative(folder.Host()).generic_string();
        contents[name] = entry.is_regular_file() ? folder.Read(name) : "not a file";
    }
    return contents;
}

TEST(FilesFaults, AHalfMadeTreeIsRemovedUnlessOnlyItsSourceFails) {
    bool succeeded = false;
    for (int nth = 1; !succeeded; ++nth) {
        const TempFolder folder;
        for (const char* name : {"Data/a", "Data/Sub/b"})
            folder.Write(name, name);
        const Contents before = ContentsOf(folder);
        const Fault fault("", nth, ENOSPC);
        std::vector<std::string> leftOut;
        const Failure failure =
            FailureOf([&] { leftOut = Files::CopyTree(folder / "Data", folder / "Copy"); });
        SCOPED_TRACE(std::to_string(nth) + " " + fault.Struck);
        succeeded = fault.Struck.empty();
        EXPECT_EQ(failure.Number, succeeded || !leftOut.empty() ? 0 : FailureDiskFull);
        EXPECT_TRUE(failure.Number == 0 ? nth > 6 || leftOut.size() == 1 : ContentsOf(folder) == before);
        EXPECT_TRUE(failure.Number != 0 || folder.Has("Copy/a") || folder.Has("Copy/Sub/b"));
    }
}

TEST(FilesFaults, ReplacementsThatDoNotLastAreTakenBackAndAFileThatCannotBePutHarmsNoOther) {
    bool succeeded = false;
    for (int nth = 1; !succeeded; ++nth) {
        TempFolder folder;
        folder.Write("a.event", "old");
        std::int32_t told = 0;
        Contents settled;
        const Fault fault("", nth, EIO);
        Files::Replacements replacements;
        for (const std::string name : {"a.event", "b.event", "c.event"}) {
            const auto settle = [&, name] { settled.insert_or_assign(name, "new"); };
            told += FailureOf([&] { replacements.Put(folder / name, "new", settle); }).Number;
        }
        EXPECT_TRUE(settled.empty()) << "nothing was flushed yet";
        told += FailureOf([&] { replacements.Settle(); }).Number;
        SCOPED_TRACE(std::to_string(nth) + " " + fault.Struck);
        succeeded = fault.Struck.empty();
        EXPECT_EQ(told, succeeded ? 0 : FailureDeviceError);
        const bool isPutting = fault.Struck == "open" || fault.Struck == "write";
        EXPECT_TRUE(settled.size() == (succeeded ? 3 : 2) || !(succeeded || isPutting));
        settled.emplace("a.event", "old");
        EXPECT_EQ(ContentsOf(folder), settled);
    }
}

TEST(FilesFaults, AFileThatFailsEndsTheReplacing) {
    const TempFolder folder;
    int settled = 0;
    const Fault fault("fsync", 2, EIO);
    Files::Replacements replacements;
    for (int i = 0; i < 70; ++i) // more than are open at a time
        replacements.Put(folder / std::to_string(i), "new", [&settled] { ++settled; });
    const std::string told = FailureOf([&] { replacements.Settle(); }).Description();
    Contents
        before; // several flushes wait at a time: any of the first files may be the second one to be flushed
    for (int i = 0; i < settled; ++i)
        before.emplace(std::to_string(i), "new");
    EXPECT_THAT(told, HasSubstr("Cannot write " + (folder / std::to_string(settled)) + ":"));
    EXPECT_LT(settled, 64);
    EXPECT_EQ(ContentsOf(folder), before);
}

TEST(FilesFaults, TheDiskIsWaitedForLateAndBeforeAnyRenamingButFewFilesAreOpen) {
    const TempFolder folder;
    const Fault none;
    std::string expected;
    constexpr int mostOpen = 64;
    std::string flushes;
    std::string renames;
    for (int i = 0; i < mostOpen; ++i) {
        flushes += "fsync ";
        renames += "close rename ";
    }
    {
        Files::Replacements replacements;
        for (int i = 0; i <= mostOpen; ++i) {
            replacements.Put(folder / std::to_string(i), "x");
            if (i == mostOpen)
                expected += flushes + renames;
            expected += "open write ";
        }
        EXPECT_EQ(none.Calls, expected);
    }
    EXPECT_THAT(none.Calls, StartsWith(expected + "fsync close rename "));
}

TEST(FilesFaults, ShortWritesAreCarriedOn) {
    TempFolder folder;
    const std::string file = folder / "a.event";
    gShortWriteHook = [](std::size_t) { return std::size_t{3}; };
    Files::ReplaceSafely(file, "0123456789");
    Files::Append(file, "abcdefg");
    {
        const Fault fullInTheMiddle("write", 3, ENOSPC);
        EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(file, "0123456789"); }).Number, FailureDiskFull);
    }
    // A disk that takes nothing and reports nothing must not be asked for ever.
    gShortWriteHook = [](std::size_t) { return std::size_t{0}; };
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(file, "x"); }).Number, FailureDeviceError);
    gShortWriteHook = nullptr;
    EXPECT_EQ(folder.Read("a.event"), "0123456789abcdefg");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST(FilesFaults, ReasonsBecomeClassicNumbers) {
    for (const auto& [code, number] : {std::pair{ENOSPC, FailureDiskFull},
                                       {EACCES, FailurePermissionDenied},
                                       {EPERM, FailurePermissionDenied},
                                       {EROFS, FailurePermissionDenied},
                                       {EEXIST, FailurePathFileAccess}}) {
        const TempFolder folder;
        const Fault fault("open", 1, code);
        const Failure failure = FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); });
        EXPECT_EQ(failure.Number, number);
        EXPECT_THAT(failure.Description(), StartsWith("Cannot write " + folder.Path() + "a.event: "));
    }
}

} // namespace
} // namespace velmora
