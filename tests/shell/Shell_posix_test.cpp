#include "shell/ShellFixture.h"

#include "Fault.h"

#include "editor/DialogPrompts.h"
#include "platform/Process.h"

#include <QApplication>
#include <algorithm>
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

TEST_F(ShellTest, ShowsAHelpTextItselfWhereTheDesktopFails) {
    const std::string path = Process::Environment("PATH");
    temp.Write("Notes.txt", "help");
    temp.Write("bin/xdg-open", "#!/bin/sh\n[ \"$(cat \"$1\")\" = help ] && exit 4\n");
    std::filesystem::permissions(temp.Host() / "bin/xdg-open", std::filesystem::perms::owner_all);
    SetEnvironment("PATH", temp / "bin:" + path);
    SetEnvironment("DISPLAY", ":none");
    DialogPrompts().ShowTextFile(temp / "Notes.txt");
    EXPECT_TRUE(QTest::qWaitFor([] {
        const auto windows = QApplication::topLevelWidgets();
        return std::any_of(windows.begin(), windows.end(), [](QWidget* window) {
            return window->objectName() == QStringLiteral("frmTextViewer") && window->close();
        });
    }));
    SetEnvironment("PATH", path);
    ::unsetenv("DISPLAY");
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
