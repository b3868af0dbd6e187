// The main window: start of the program, its editors, the copy of the data directory, its end.
#include "shell/ShellFixture.h"

#include "platform/Failure.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <string_view>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(Startup, WritesTheDefaultsOfMissingKeys) {
    Start("Event File=Mine\r\nAutoBackup=true\r\n");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(Written(), "[Setup]\r\nPath=" + Game() +
                             "\r\nEvent File=Mine\r\nAutoBackup=true\r\nUP Issue File=MyUpIssues\r\n"
                             "SortBy=0\r\nSB Module File=MySBModules\r\n");
    EXPECT_EQ(Settings.DataPath, Game() + "Data" + Files::Separator);
    EXPECT_EQ(Settings.EventFile, "Mine.event");
    EXPECT_EQ(Settings.UPIssueFile, "MyUPIssues.upissue");
    EXPECT_EQ(Settings.SBModuleFile, "MySBModules.SBModule");
    EXPECT_TRUE(Settings.AutoBackup);
    EXPECT_EQ(Settings.SortBy, "0");
    EXPECT_TRUE(Files::FolderExists(temp / "Home/BackupData"));
    EXPECT_EQ(writer.windowTitle(), QStringLiteral("Velmora Writer v.1.0.0"));
    EXPECT_FALSE(Enabled("mnuSBModules"));
}

TEST_F(Startup, TakesStoredValuesAsTheyStand) {
    const std::string deep = Game() + std::string(70, 'd') + Files::Separator;
    Files::CreateFolder(deep);
    temp.Write("Home/VelWriter.ini",
               "[setup]\r\nPath=" + deep +
                   "\r\nevent file=X\r\nUP Issue File=myupissues\r\nAutobackup=yes\r\nSortBy=1\r\n"
                   "SB Module File=S\r\n");
    writer.Load();
    EXPECT_EQ(Settings.GamePath, deep) << "the whole one where the cut one names no folder";
    EXPECT_EQ(Settings.EventFile, "X.event");
    EXPECT_EQ(Settings.UPIssueFile, "myupissues.upissue");
    EXPECT_EQ(Settings.SBModuleFile, "S.SBModule");
    EXPECT_EQ(Settings.SortBy, "1");
    EXPECT_FALSE(Settings.AutoBackup);
}

TEST_F(Startup, AsksForOptionsWithoutASettingsFileOrAnEventFile) {
    InOptions([this] { writer.Load(); },
              [this] {
                  EXPECT_THAT(prompts.TakeTranscript(),
                              ElementsAre("Message: Please confirm the Event Writer Options.",
                                          ::testing::StartsWith("Message: Unable to access the Velmora")));
                  LeaveWithGoodPath();
              });
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(Written(), IniOf(Game(), "MyEvents", "MyUPIssues", "MySBModules", "TRUE", "0"));
    EXPECT_EQ(Settings.GamePath, Game());
    EXPECT_EQ(Settings.SBModuleFile, "MySBModules.sbmodule");
    InOptions([this] { Start("SortBy=1\r\n"); },
              [this] {
                  EXPECT_EQ(Text("txtVelmoraPath"), Game().substr(0, 62))
                      << "what the buffer holds of the path";
                  EXPECT_EQ(Text("txtEventFile"), "");
                  LeaveWithGoodPath();
              });
    EXPECT_EQ(Settings.EventFile, "MyEvents.event");
    EXPECT_EQ(Settings.SortBy, "1");
}

TEST_F(Startup, OpensOneEditorAtATime) {
    Start("Event File=X\r\n");
    Files::CreateFolder(temp / "Game/Data/UP_Issues");
    writer.show();
    const auto expectRoundTrip = [this](const char* name) {
        QWidget* editor = Shown(name);
        ASSERT_TRUE(editor) << name;
        EXPECT_FALSE(writer.isVisible()) << name;
        editor->close();
        EXPECT_TRUE(writer.isVisible()) << name;
    };
    Pick("mnuEvents");
    expectRoundTrip("frmEvents");
    Pick("mnuUPIssues");
    expectRoundTrip("frmUPIssues");
    EXPECT_TRUE(writer.OpenEditor(QStringLiteral("sbmodules")));
    expectRoundTrip("frmSBModules");
    EXPECT_FALSE(writer.OpenEditor(QStringLiteral("planets")));
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(Startup, ShowsTheReleaseNotesAndEndsWithItsMainWindow) {
    Start("Event File=X\r\n");
    temp.Write("Home/ReleaseNotes.txt", "New.");
    Pick("mnuReleaseNotes");
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("ShowTextFile: " + (temp / "Home") + Files::Separator + "ReleaseNotes.txt"));
    writer.show();
    QTimer::singleShot(0, qApp, [this] { Pick("mnuExit"); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(writer.isVisible());
}

TEST_F(Backup, CopiesTheDataDirectoryOnce) {
    const std::string copy = BackUp(false);
    EXPECT_THAT(copy, ::testing::StartsWith(Game() + "DATA DIR 2"));
    EXPECT_FALSE(Files::FolderExists(copy));

    prompts.TakeTranscript();
    BackUp(true);
    EXPECT_EQ(prompts.Transcript.back(), "Message: Operation complete!");
    EXPECT_EQ(Files::ReadWhole(copy + "/A.event"), "one");
    EXPECT_EQ(Files::ReadWhole(copy + "/UP_Issues/B.UPIssue"), "two");

    prompts.TakeTranscript();
    temp.Write("Game/Data/A.event", "changed");
    BackUp(true);
    EXPECT_EQ(prompts.Transcript.back(),
              "Message[Critical]: The directory " + copy + " already exists!  Operation cancelled.");
    EXPECT_EQ(Files::ReadWhole(copy + "/A.event"), "one");
}

TEST_F(Backup, LeavesNothingWhenItFails) {
    static int writes;
    writes = 0;
    gFaultHook = [](const char* operation) {
        return operation == std::string_view("write") && ++writes == 2 ? ENOSPC : 0;
    };
    const std::string copy = BackUp(true);
    gFaultHook = nullptr;
    ASSERT_EQ(prompts.Errors.size(), 1u);
    const ErrorDetails& error = prompts.Errors.front();
    EXPECT_EQ(error.Number, FailureDiskFull);
    EXPECT_THAT(error.Description, ::testing::HasSubstr("B.UPIssue"));
    EXPECT_EQ(error.CallStack, "frmWriter_mnuBackupDataDirectory_Click\r\n");
    EXPECT_TRUE(error.CollectUserInput);
    EXPECT_TRUE(error.OfferDetails);
    EXPECT_FALSE(Files::FolderExists(copy));
    EXPECT_TRUE(Files::FileExists(temp / "Home/VelmoraEventWriter.log"));
}

} // namespace
} // namespace velmora
