#include "shell/ShellFixture.h"

#include "Fault.h"

#include <cerrno>
#include <cstdint>
#include <filesystem>

namespace velmora {
namespace {

TEST_F(OptionsDialog, FindsTheGameInTheRegistry) {
    registry.Folder.Write("registry.reg",
                          "REGEDIT4\r\n\r\n[HKEY_LOCAL_MACHINE\\Software\\Corvane\\Morvath.Net\\"
                          "Velmora]\r\n\"Path\"=\"" +
                              temp / "Game" + "\"\r\n");
    Show([this] {
        EXPECT_EQ(Text("txtVelmoraPath"), temp / "Game");
        Click("cmdDone");
    });
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(Settings.GamePath, Game());
}

TEST_F(OptionsDialog, TellsEverySettingThatCouldNotBeStored) {
    std::string struck = "first";
    for (int nth = 1; !struck.empty(); ++nth) {
        PutIni("Path=" + Game() + "\r\nEvent File=E\r\n");
        prompts.Transcript.clear();
        Show([&] {
            Get<QAbstractButton>("chkAutoBackup")->click();
            {
                const Fault fault("", nth, ENOSPC);
                Click("cmdDone");
                struck = fault.Struck;
            }
            if (Form().isVisible())
                Click("cmdDone");
        });
        const bool stored = Written() == IniOf(Game(), "E", "AutoBackup=FALSE\r\nSortBy=0\r\n");
        EXPECT_TRUE(stored || !prompts.Transcript.empty()) << nth << " " << struck;
        EXPECT_TRUE(stored || !struck.empty());
    }
}

TEST_F(ShellTest, SaysAtOpeningThatNothingCanBeWritten) {
    Start("Event File=X\r\nAutoBackup=FALSE\r\n");
    for (const char* item : {"mnuEvents", "mnuUPIssues"}) {
        {
            const Fault readOnly("access", 0, EROFS);
            Pick(item);
        }
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre(StartsWith("Message[Information]: Nothing can be written to " + Game() +
                                           "Data" + Slash)));
        Pick(item);
        EXPECT_THAT(prompts.TakeTranscript(), IsEmpty());
    }
}

// Only a file with a hole can be larger than the disk it lies on.
TEST_F(Backup, IsNotBegunWithoutRoom) {
    std::filesystem::resize_file(temp / "Game/Data/A.event", std::uintmax_t{1} << 43);
    const std::string copy = BackUp(true);
    EXPECT_THAT(prompts.Transcript.back(), StartsWith("Message[Critical]: The copy needs 87960"));
    EXPECT_FALSE(Files::FolderExists(copy));
}

} // namespace
} // namespace velmora
