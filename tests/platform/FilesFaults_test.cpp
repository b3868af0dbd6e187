#include "FailureOf.h"
#include "Fault.h"
#include "TempFolder.h"
#include "platform/Files.h"
#include "platform/Replacements.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <tuple>
#include <vector>

namespace velmora {
namespace {

using ::testing::HasSubstr;

/// Everything below a folder, with the contents of files: two of these are equal when nothing has changed.
std::map<std::string, std::string> Picture(const TempFolder& folder) {
    std::map<std::string, std::string> picture;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.Host())) {
        const std::string name = entry.path().lexically_relative(folder.Host()).generic_string();
        picture[name] = entry.is_regular_file() ? folder.Read(name) : "not a file";
    }
    return picture;
}

/// Lets work fail at its first call, its second and so on until it succeeds, and expects its folder as it was
/// before each time. What it left when it succeeded.
std::map<std::string, std::string> ExpectAllOrNothing(const std::map<std::string, std::string>& files,
                                                      int code, std::int32_t number,
                                                      const std::function<void(const TempFolder&)>& work) {
    for (int nth = 1;; ++nth) {
        const TempFolder folder;
        for (const auto& [name, bytes] : files)
            folder.Write(name, bytes);
        const auto before = Picture(folder);
        std::string struck;
        std::int32_t told = 0;
        {
            const Fault fault("", nth, code);
            told = FailureOf([&] { work(folder); }).Number;
            struck = fault.Struck;
        }
        SCOPED_TRACE(std::to_string(nth) + " " + struck);
        EXPECT_EQ(told, struck.empty() ? 0 : number);
        if (told == 0 || struck.empty()) {
            EXPECT_GE(nth, 6);
            return Picture(folder);
        }
        EXPECT_EQ(Picture(folder), before);
    }
}

TEST(FilesFaults, ReplacingLeavesTheOldFileWhateverFails) {
    using Files = std::map<std::string, std::string>;
    for (const auto& before : {Files{{"other", "o"}, {"a.event", "old"}}, Files{{"other", "o"}}})
        EXPECT_EQ(ExpectAllOrNothing(
                      before, EIO, FailureDeviceError,
                      [](const auto& folder) { velmora::Files::ReplaceSafely(folder / "a.event", "new"); }),
                  (Files{{"other", "o"}, {"a.event", "new"}}));
}

TEST(FilesFaults, AHalfMadeTreeIsRemovedWhateverFails) {
    ExpectAllOrNothing({{"Data/a", "aaa"}, {"Data/Sub/b", "bbb"}}, ENOSPC, FailureDiskFull,
                       [](const auto& folder) { Files::CopyTree(folder / "Data", folder / "New/Copy"); });
}

TEST(FilesFaults, ReplacementsThatDoNotLastAreTakenBack) {
    bool succeeded = false;
    for (int nth = 1; !succeeded; ++nth) {
        TempFolder folder;
        folder.Write("a.event", "old");
        std::set<std::string> settled;
        const Fault fault("", nth, EIO);
        const Failure failure = FailureOf([&] {
            Files::Replacements replacements;
            for (const std::string name : {"a.event", "b.event"})
                replacements.Put(folder / name, "new", [&settled, name] { settled.insert(name); });
            EXPECT_EQ(settled.size(), 0u) << "nothing was flushed yet";
            replacements.Settle();
        });
        SCOPED_TRACE(std::to_string(nth) + " " + fault.Struck);
        succeeded = failure.Number == 0;
        EXPECT_EQ(succeeded, fault.Struck.empty());
        EXPECT_TRUE(!succeeded || settled.size() == 2);
        EXPECT_EQ(folder.Read("a.event"), settled.contains("a.event") ? "new" : "old");
        EXPECT_EQ(folder.Has("b.event"), settled.contains("b.event"));
        EXPECT_EQ(folder.EntryCount(), folder.Has("b.event") ? 2 : 1) << "a temporary was left";
    }
}

TEST(FilesFaults, AFileThatFailsEndsTheReplacing) {
    constexpr int count = 150; // more than are open at a time
    for (const auto& [operation, nth] : {std::pair{"fsync", 3}, {"close", 100}, {"rename", 150}}) {
        TempFolder folder;
        std::vector<bool> settled(count);
        const auto nameOf = [](int i) { return "file" + std::to_string(i); };
        const Fault fault(operation, nth, EIO);
        const Failure failure = FailureOf([&] {
            Files::Replacements replacements;
            for (int i = 0; i < count; ++i) {
                folder.Write(nameOf(i), "old");
                replacements.Put(folder / nameOf(i), "new", [&settled, i] { settled[i] = true; });
            }
            replacements.Settle();
        });
        SCOPED_TRACE(operation);
        EXPECT_THAT(failure.Description(),
                    HasSubstr("Cannot write " + folder.Path() + nameOf(nth - 1) + ":"));
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(settled[i], i < nth - 1) << i;
            EXPECT_EQ(folder.Read(nameOf(i)), settled[i] ? "new" : "old");
        }
        EXPECT_EQ(folder.EntryCount(), count) << "a temporary was left";
    }
}

TEST(FilesFaults, AFileThatCannotBePutLeavesTheOthersToBeSettled) {
    for (const std::string operation : {"open", "write"}) {
        TempFolder folder;
        folder.Write("b.event", "old");
        std::set<std::string> settled;
        const auto settle = [&settled](const std::string& name) {
            return [&, name] { settled.insert(name); };
        };
        const Fault fault(operation, 2, ENOSPC);
        Files::Replacements replacements;
        replacements.Put(folder / "a.event", "new", settle("a"));
        const Failure failure = FailureOf([&] { replacements.Put(folder / "b.event", "new", settle("b")); });
        SCOPED_TRACE(operation);
        EXPECT_THAT(failure.Description(), HasSubstr("Cannot write " + folder.Path() + "b.event: "));
        replacements.Put(folder / "c.event", "new", settle("c"));
        replacements.Settle();
        EXPECT_EQ(settled, (std::set<std::string>{"a", "c"}));
        EXPECT_EQ(Picture(folder), (std::map<std::string, std::string>{
                                       {"a.event", "new"}, {"b.event", "old"}, {"c.event", "new"}}));
    }
}

TEST(FilesFaults, NothingIsRenamedBeforeItIsOnTheDisk) {
    const TempFolder folder;
    const Fault none;
    Files::ReplaceSafely(folder / "a.event", "x");
    EXPECT_THAT(none.Calls, ::testing::StartsWith("open write fsync close rename "));
}

TEST(FilesFaults, TheDiskIsWaitedForOnceAllAreWritten) {
    const TempFolder folder;
    const Fault none;
    Files::Replacements replacements;
    for (const char* name : {"a.event", "b.event"})
        replacements.Put(folder / name, "x");
    EXPECT_EQ(none.Calls, "open write open write ");
    replacements.Settle();
    EXPECT_THAT(none.Calls,
                ::testing::StartsWith("open write open write fsync close rename fsync close rename "));
}

TEST(FilesFaults, FewFilesAreOpenAtATime) {
    const TempFolder folder;
    const Fault none;
    Files::Replacements replacements;
    for (int i = 0; i < 150; ++i)
        replacements.Put(folder / std::to_string(i), "x");
    replacements.Settle();
    std::istringstream calls(none.Calls);
    int open = 0;
    int most = 0;
    for (std::string call; calls >> call;) {
        open += call == "open" ? 1 : call == "close" ? -1 : 0;
        most = std::max(most, open);
    }
    EXPECT_EQ(open, 0);
    EXPECT_GT(most, 1);
    EXPECT_LE(most, 64);
}

TEST(FilesFaults, ShortWritesAreCarriedOn) {
    TempFolder folder;
    const std::string file = folder / "a.event";
    gShortWriteHook = [](std::size_t) { return std::size_t{3}; };
    Files::ReplaceSafely(file, "0123456789");
    Files::Append(file, "abcdefg");
    {
        // The disk fills up in the middle.
        const Fault fault("write", 3, ENOSPC);
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
    using Case = std::tuple<int, std::int32_t, std::string>;
    for (const auto& [code, number, reason] :
         {Case{ENOSPC, FailureDiskFull, "No space left on device"},
          Case{EACCES, FailurePermissionDenied, "Permission denied"},
          Case{EPERM, FailurePermissionDenied, "not permitted"},
          Case{EROFS, FailurePermissionDenied, "Read-only"}, Case{EIO, FailureDeviceError, "error"},
          Case{EMFILE, FailurePathFileAccess, "Too many"}, Case{EEXIST, FailurePathFileAccess, "exists"}}) {
        TempFolder folder;
        const Fault fault("open", 1, code);
        const Failure failure = FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); });
        EXPECT_EQ(failure.Number, number);
        EXPECT_THAT(failure.Description(), HasSubstr("Cannot write " + folder.Path() + "a.event: "));
        EXPECT_THAT(failure.Description(), HasSubstr(reason));
    }
}

} // namespace
} // namespace velmora
