// The main window: start of the program, its editors, the copy of the data directory, its end.
#include "shell/WriterFixture.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "services/Settings.h"

#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

#include <cerrno>
#include <string_view>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr const char* InvalidPath = "Message[Exclamation]: That does not appear to be a valid path!";
TEST_F(Startup, WritesTheDefaultsOfMissingKeys) {
    Start("[Setup]\r\nPath=" + Game() + "\r\nEvent File=Mine\r\nAutoBackup=true\r\n");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(IniFile(), "[Setup]\r\nPath=" + Game() +
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
    EXPECT_FALSE(writer.findChild<QAction*>(QStringLiteral("mnuSBModules"))->isEnabled());
}

TEST_F(Startup, TakesStoredValuesAsTheyStand) {
    Start(
        "[setup]\r\nPath=" + Game() +
        "\r\nevent file=X\r\nUP Issue File=myupissues\r\nAutobackup=yes\r\nSortBy=1\r\nSB Module File=S\r\n");
    EXPECT_EQ(Settings.EventFile, "X.event");
    EXPECT_EQ(Settings.UPIssueFile, "myupissues.upissue");
    EXPECT_EQ(Settings.SBModuleFile, "S.SBModule");
    EXPECT_EQ(Settings.SortBy, "1");
    EXPECT_FALSE(Settings.AutoBackup);
}

TEST_F(Startup, TakesAWholePathWhereTheCutOneNamesNoFolder) {
    const std::string deep = Game() + std::string(70, 'd') + Files::Separator;
    Files::CreateFolder(deep);
    Start("[Setup]\r\nPath=" + deep + "\r\nEvent File=X\r\n");
    EXPECT_EQ(Settings.GamePath, deep);
}

TEST_F(Startup, AsksForOptionsWithoutASettingsFile) {
    InOptions([this] {
        EXPECT_THAT(
            prompts.TakeTranscript(),
            ElementsAre("Message: Please confirm the Event Writer Options.",
                        "Message: Unable to access the Velmora installation location from the registry, "
                        "you will need to enter the path manually."));
        Done();
        EXPECT_TRUE(options->isVisible());
        EXPECT_TRUE(Box("txtVelmoraPath")->hasFocus());
        Type("txtVelmoraPath", temp / "Game");
        Done();
    });
    writer.Load();
    EXPECT_THAT(prompts.Transcript, ElementsAre(InvalidPath));
    EXPECT_EQ(IniFile(), "[Setup]\r\nPath=" + Game() +
                             "\r\nEvent File=MyEvents\r\nUP Issue File=MyUPIssues\r\n"
                             "SB Module File=MySBModules\r\nAutoBackup=TRUE\r\nSortBy=0\r\n");
    EXPECT_EQ(Settings.GamePath, Game());
    EXPECT_EQ(Settings.SBModuleFile, "MySBModules.sbmodule");
}

TEST_F(Startup, AsksForOptionsWithoutAnEventFile) {
    InOptions([this] {
        EXPECT_EQ(Box("txtVelmoraPath")->Bytes(), CutGame());
        EXPECT_EQ(Box("txtEventFile")->Bytes(), "");
        Type("txtVelmoraPath", Game());
        Done();
    });
    Start("[Setup]\r\nPath=" + Game() + "\r\nSortBy=1\r\n");
    EXPECT_EQ(Settings.EventFile, "MyEvents.event");
    EXPECT_EQ(Settings.SortBy, "1");
}

TEST_F(Startup, OpensOneEditorAtATime) {
    Start("[Setup]\r\nPath=" + Game() + "\r\nEvent File=X\r\n");
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

TEST_F(Startup, EndsWithItsMainWindow) {
    Start("[Setup]\r\nPath=" + Game() + "\r\nEvent File=X\r\n");
    writer.show();
    QTimer::singleShot(0, qApp, [this] { Pick("mnuExit"); });
    EXPECT_EQ(QApplication::exec(), 0);
    EXPECT_FALSE(writer.isVisible());
}

TEST_F(Startup, ShowsTheReleaseNotes) {
    Start("[Setup]\r\nPath=" + Game() + "\r\nEvent File=X\r\n");
    temp.Write("Home/ReleaseNotes.txt", "New.");
    Pick("mnuReleaseNotes");
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("ShowTextFile: " + (temp / "Home") + Files::Separator + "ReleaseNotes.txt"));
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
