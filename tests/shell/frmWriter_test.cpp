// The main window: start of the program, its editors, the copy of the data directory, its end.
#include "shell/ShellFixture.h"

#include "Fault.h"
#include "platform/Failure.h"

#include <cerrno>

namespace velmora {
namespace {

class Startup : public ShellTest {};

TEST_F(Startup, WritesTheDefaultsOfMissingKeys) {
    Start("Event File=Mine\r\nAutoBackup=true\r\n");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(Written(), "[Setup]\r\nPath=" + Game() +
                             "\r\nEvent File=Mine\r\nAutoBackup=true\r\nUP Issue File=MyUpIssues\r\n"
                             "SortBy=0\r\nSB Module File=MySBModules\r\n");
    EXPECT_EQ(Settings.GamePath, Game());
    EXPECT_EQ(InUse(), "Mine.event MyUPIssues.upissue MySBModules.SBModule 0 backup");
    EXPECT_TRUE(Files::FolderExists(temp / "Home/BackupData"));
    EXPECT_EQ(writer.windowTitle(), QStringLiteral("Velmora Writer v.1.0.0"));
    EXPECT_FALSE(Enabled("mnuSBModules"));
}

TEST_F(Startup, TakesStoredValuesAsTheyStand) {
    const std::string deep = Game() + std::string(70, 'd') + Slash;
    Files::CreateFolder(deep);
    PutIni("Path=" + deep + "\r\nevent file=X\r\nUP Issue File=myupissues\r\n" +
           "Autobackup=yes\r\nSortBy=1\r\nSB Module File=S\r\n");
    writer.Load();
    EXPECT_EQ(Settings.GamePath, deep) << "the whole one where the cut one names no folder";
    EXPECT_EQ(InUse(), "X.event myupissues.upissue S.SBModule 1");
}

TEST_F(Startup, AsksForOptionsWithoutASettingsFileOrAnEventFile) {
    const std::string confirm = "Message: Please confirm the Event Writer Options.";
    InOptions([this] { writer.Load(); },
              [&] {
                  EXPECT_THAT(prompts.TakeTranscript(),
                              ElementsAre(confirm, StartsWith("Message: Unable to access the Velmora")));
                  LeaveWithGoodPath();
              });
    EXPECT_EQ(Written(), IniOf(Game(), "MyEvents", "AutoBackup=TRUE\r\nSortBy=0\r\n"));
    InOptions([this] { Start("SortBy=1\r\n"); },
              [this] {
                  EXPECT_EQ(Text("txtVelmoraPath") + Text("txtEventFile"), Game());
                  LeaveWithGoodPath();
              });
    EXPECT_THAT(prompts.Transcript, ElementsAre(confirm));
    EXPECT_EQ(InUse(), "MyEvents.event MyUpIssues.upissue MySBModules.sbmodule 1 backup");
}

TEST_F(Startup, OpensOneEditorAtATime) {
    Start("Event File=X\r\n");
    writer.show();
    Get<QAction>("mnuSBModules")->setEnabled(true);
    for (const std::string name : {"Events", "UPIssues", "SBModules"}) {
        Pick("mnu" + name);
        EXPECT_FALSE(writer.isVisible()) << name;
        for (QWidget* editor : QApplication::topLevelWidgets())
            if (editor->isVisible() && FromQt(editor->objectName()) == "frm" + name)
                editor->close();
        EXPECT_TRUE(writer.isVisible()) << name;
    }
    EXPECT_TRUE(writer.OpenEditor(QStringLiteral("sbmodules")));
    EXPECT_FALSE(writer.OpenEditor(QStringLiteral("planets")));
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(Startup, ShowsTheReleaseNotesAndEndsWithItsMainWindow) {
    Start("Event File=X\r\n");
    temp.Write("Home/ReleaseNotes.txt", "New.");
    Pick("mnuReleaseNotes");
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("ShowTextFile: " + (temp / "Home") + Slash + "ReleaseNotes.txt"));
    writer.show();
    QTimer::singleShot(0, qApp, [this] { Pick("mnuExit"); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(writer.isVisible());
}

TEST_F(Backup, CopiesTheDataDirectoryOnce) {
    const std::string copy = BackUp(false);
    EXPECT_THAT(copy, StartsWith(Game() + "DATA DIR 2"));
    EXPECT_FALSE(Files::FolderExists(copy));
    BackUp(true);
    EXPECT_EQ(prompts.Transcript.back(), "Message: Operation complete!");
    temp.Write("Game/Data/A.event", "changed");
    BackUp(true);
    EXPECT_TRUE(prompts.Questions.back().DetailsOpen) << "it is told before";
    EXPECT_EQ(prompts.Transcript.back(),
              "Message[Critical]: The directory " + copy + " already exists!  Operation cancelled.");
    EXPECT_EQ(Files::ReadWhole(copy + "/A.event"), "one");
    EXPECT_EQ(Files::ReadWhole(copy + "/UP_Issues/B.UPIssue"), "two");
}

TEST_F(Backup, LeavesNothingWhenItFails) {
    const Fault diskFull("write", 2, ENOSPC);
    const std::string copy = BackUp(true);
    ASSERT_EQ(prompts.Errors.size(), 1u);
    const ErrorDetails& error = prompts.Errors.front();
    EXPECT_EQ(error.Number, FailureDiskFull);
    EXPECT_THAT(error.Description, ::testing::HasSubstr("B.UPIssue"));
    EXPECT_EQ(error.CallStack, "frmWriter_mnuBackupDataDirectory_Click\r\n");
    EXPECT_TRUE(error.CollectUserInput && error.OfferDetails);
    EXPECT_FALSE(Files::FolderExists(copy));
    EXPECT_TRUE(temp.Has("Home/VelmoraEventWriter.log"));
}

} // namespace
} // namespace velmora
