// Settings, registry and logs: old or new, whole, and success is never claimed falsely.
#include "reliability/FaultDriver.h"

#include "FailureOf.h"
#include "ScratchRegistry.h"
#include "platform/ProfileStrings.h"
#include "services/clsError.h"
#include "services/clsMsgLog.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using namespace std::string_literals;
using ::testing::AnyOf;
using ::testing::StartsWith;

class SettingsWrite {
  public:
    SettingsWrite() { folder.Write("VelWriter.ini", Old); }
    void Begin() {}
    bool Run() { return ProfileStrings::Write("Setup", "SortBy", "1", folder / "VelWriter.ini"); }
    void Check(bool clean) {
        EXPECT_THAT(folder.Read("VelWriter.ini"), AnyOf(Old, New));
        if (clean) {
            EXPECT_EQ(folder.EntryCount(), 1);
        }
    }
    void Survived(bool succeeded) {
        if (succeeded) {
            EXPECT_EQ(folder.Read("VelWriter.ini"), New);
        }
    }
    void Restart() {
        EXPECT_THAT(ProfileStrings::Read("Setup", "SortBy", "", 9, folder / "VelWriter.ini"),
                    AnyOf("0", "1"));
        EXPECT_TRUE(Run());
        Survived(true);
    }

  private:
    const std::string Old = "[Setup]\r\nSortBy=0\r\n; mine\r\n";
    const std::string New = "[Setup]\r\nSortBy=1\r\n; mine\r\n";
    TempFolder folder;
};

TEST(SmallFiles, SettingsAreOldOrNew) {
    PlayEveryBlow<SettingsWrite>();
}

class RegistryWrite {
  public:
    RegistryWrite() {
        scratch.Host->CreateKey(ScratchRegistry::Root, "K");
        scratch.Host->Write(ScratchRegistry::Root, "K", "x", {RegistryType::Sz, "old\0"s});
        old = scratch.Folder.Read("registry.reg");
        entries = scratch.Folder.EntryCount();
    }
    void Begin() {}
    bool Run() { return scratch.Host->Write(ScratchRegistry::Root, "K", "x", {RegistryType::Sz, "new\0"s}); }
    void Check(bool clean) {
        EXPECT_THAT(scratch.Folder.Read("registry.reg"), AnyOf(old, New()));
        if (clean) {
            EXPECT_EQ(scratch.Folder.EntryCount(), entries);
        }
    }
    void Survived(bool succeeded) {
        if (succeeded) {
            EXPECT_EQ(scratch.Folder.Read("registry.reg"), New());
        }
    }
    void Restart() {
        EXPECT_TRUE(Run());
        Survived(true);
    }

  private:
    [[nodiscard]] std::string New() const {
        std::string text = old;
        return text.replace(text.find("old"), 3, "new");
    }

    ScratchRegistry scratch;
    std::string old;
    int entries = 0;
};

TEST(SmallFiles, TheRegistryIsOldOrNew) {
    PlayEveryBlow<RegistryWrite>();
}

/// A failure is reported and logged, then the log is put away for its size.
class Logging {
  public:
    Logging() { folder.Write("x.log", Old); }
    void Begin() {}
    bool Run() {
        clsError handler;
        handler.LogFile = folder / "x.log";
        handler.SetMsgOutputDIR(folder.Path());
        handler.HandleError("frm_Click", 0, FailureDiskFull, "full", "", {}, true);
        EXPECT_EQ(handler.LastCallStack(), std::vector<std::string>{"frm_Click"});
        clsMsgLog log;
        log.LogFile = folder / "x.log";
        std::string backupDir = folder.Path();
        return FailureOf([&] {
                   std::string line = "line";
                   log.WriteToLogFile(line, false);
                   log.MaintainLogFile(1, &backupDir);
               }).Number == 0;
    }
    void Check(bool) {
        const std::string kept = folder.Read("OLDx.log");
        EXPECT_THAT(folder.Has("x.log") ? folder.Read("x.log") : kept, StartsWith(Old));
    }
    void Survived(bool succeeded) {
        if (succeeded) {
            EXPECT_FALSE(folder.Has("x.log"));
            EXPECT_THAT(folder.Read("OLDx.log"), ::testing::EndsWith("line\r\n"));
        }
    }
    void Restart() {
        if (!folder.Has("x.log"))
            return;
        EXPECT_TRUE(Run());
        Survived(true);
    }

  private:
    const std::string Old = "what was logged before\r\n";
    TempFolder folder;
};

TEST(SmallFiles, LogsKeepWhatTheyHold) {
    PlayEveryBlow<Logging>();
}

} // namespace
} // namespace velmora
