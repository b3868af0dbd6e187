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

using ::testing::AnyOf;
using ::testing::StartsWith;

/// One write of "new" over "old" in a small file, which is the old one or the new one after it.
template <class Write>
class OldOrNew {
  public:
    OldOrNew() {
        old = Folder().Read(write.File);
        wanted = old;
        wanted.replace(old.find("old"), 3, "new");
        entries = Folder().EntryCount();
    }
    void Begin() {}
    bool Run() { return write.Run("new"); }
    void Check(bool clean) {
        EXPECT_THAT(Folder().Read(write.File), AnyOf(old, wanted));
        EXPECT_TRUE(!clean || Folder().EntryCount() == entries);
    }
    void Survived(bool succeeded) { EXPECT_TRUE(!succeeded || Folder().Read(write.File) == wanted); }
    void Restart() {
        EXPECT_THAT(write.Read(), AnyOf("old", "new"));
        EXPECT_TRUE(Run());
        Survived(true);
    }

  private:
    const TempFolder& Folder() { return write.Folder(); }

    Write write;
    std::string old;
    std::string wanted;
    int entries = 0;
};

struct SettingsWrite {
    SettingsWrite() { folder.Write(File, "[Setup]\r\nKey=old\r\n; mine\r\n"); }
    bool Run(const std::string& value) { return ProfileStrings::Write("Setup", "Key", value, folder / File); }
    std::string Read() { return ProfileStrings::Read("Setup", "Key", "", 9, folder / File); }
    const TempFolder& Folder() { return folder; }
    const std::string File = "VelWriter.ini";
    TempFolder folder;
};

TEST(SmallFiles, SettingsAreOldOrNew) {
    PlayEveryBlow<OldOrNew<SettingsWrite>>();
}

struct RegistryWrite {
    RegistryWrite() {
        scratch.Host->CreateKey(ScratchRegistry::Root, "K");
        Run("old");
    }
    bool Run(const std::string& value) {
        return scratch.Host->Write(ScratchRegistry::Root, "K", "x", {RegistryType::Sz, value + '\0'});
    }
    std::string Read() {
        return scratch.Host->Read(ScratchRegistry::Root, "K", "x")
            .value_or(RegistryValue{})
            .Bytes.substr(0, 3);
    }
    const TempFolder& Folder() { return scratch.Folder; }
    const std::string File = "registry.reg";
    ScratchRegistry scratch;
};

TEST(SmallFiles, TheRegistryIsOldOrNew) {
    PlayEveryBlow<OldOrNew<RegistryWrite>>();
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
        EXPECT_TRUE(!succeeded || !folder.Has("x.log"));
        EXPECT_TRUE(!succeeded || folder.Read("OLDx.log").ends_with("line\r\n"));
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
