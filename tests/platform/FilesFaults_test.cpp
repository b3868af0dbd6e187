#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/FaultHook.h"
#include "platform/Files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <map>
#include <vector>

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

/// Everything below a folder, with the contents of files: two of these are equal when nothing has changed.
std::map<std::string, std::string> Picture(const TempFolder& folder) {
    std::map<std::string, std::string> picture;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Host())) {
        const std::string name = entry.path().lexically_relative(folder.Host()).generic_string();
        picture[name] = entry.is_regular_file() ? folder.Read(name) : "not a file";
    }
    return picture;
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
                number = FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "new"); }).Number;
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

TEST(FilesFaults, NothingIsRenamedBeforeItIsOnTheDisk) {
    static std::vector<std::string> operations;
    operations.clear();
    TempFolder folder;
    gFaultHook = [](const char* operation) {
        operations.emplace_back(operation);
        return 0;
    };
    Files::ReplaceSafely(folder / "a.event", "x");
    gFaultHook = nullptr;
    const std::vector<std::string> needed = {"open", "write", "fsync", "close", "rename"};
    ASSERT_GE(operations.size(), needed.size());
    EXPECT_EQ(std::vector<std::string>(operations.begin(), operations.begin() + 5), needed);
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
        EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "0123456789"); }).Number,
                  FailureDiskFull);
    }
    EXPECT_EQ(folder.Read("a.event"), "0123456789abcdefg");
    EXPECT_EQ(folder.EntryCount(), 1);
    // A disk that takes nothing and reports nothing must not be asked for ever.
    gShortWriteHook = [](std::size_t) { return std::size_t{0}; };
    EXPECT_EQ(FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); }).Number, FailureDeviceError);
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
         {Case{ENOSPC, FailureDiskFull, "No space left on device"},
          Case{EACCES, FailurePermissionDenied, "Permission denied"},
          Case{EPERM, FailurePermissionDenied, "not permitted"},
          Case{EROFS, FailurePermissionDenied, "Read-only"}, Case{EIO, FailureDeviceError, "error"},
          Case{EMFILE, FailurePathFileAccess, "Too many"}, Case{EEXIST, FailurePathFileAccess, "exists"}}) {
        TempFolder folder;
        const Fault fault("open", 1, each.Code);
        const Failure failure = FailureOf([&] { Files::ReplaceSafely(folder / "a.event", "x"); });
        EXPECT_EQ(failure.Number, each.Number);
        EXPECT_THAT(failure.Description(), HasSubstr("Cannot write " + folder.Path() + "a.event: "));
        EXPECT_THAT(failure.Description(), HasSubstr(each.Reason));
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
        EXPECT_EQ(FailureOf(each.Work).Number, FailurePermissionDenied) << each.Operation;
    }
    EXPECT_THAT(Picture(folder), UnorderedElementsAre(std::pair<const std::string, std::string>("f", "x")));
    const Fault fault("close", 1, EIO);
    EXPECT_EQ(FailureOf([&] { Files::Append(folder / "f", "y"); }).Number, FailureDeviceError);
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
            number = FailureOf([&] { Files::CopyTree(folder / "Data", folder / "New/Copy"); }).Number;
            succeeded = !fault.Struck();
        }
        EXPECT_EQ(number, succeeded ? 0 : FailureDiskFull);
        if (!succeeded) {
            EXPECT_EQ(Picture(folder), before) << nth;
        }
    }
}

} // namespace
} // namespace velmora
