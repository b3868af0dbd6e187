// The start of the program and the closing of its options dialog.
#include "ScratchRegistry.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "editor/LineBox.h"
#include "platform/Files.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "shell/frmOptions.h"
#include "shell/frmWriter.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Startup : public ::testing::Test {
  protected:
    Startup() {
        Files::CreateFolder(temp / "Home");
        Files::CreateFolder(temp / "Game/Data");
        ProgramDirectory = temp / "Home";
        Settings = {};
        ini.INIFile = temp / "Home/VelWriter.ini";
    }
    ~Startup() override { ReleaseCatalogues(); }

    void Start(const std::string& settings) {
        temp.Write("Home/VelWriter.ini", settings);
        writer.Load();
    }
    std::string IniFile() { return temp.Read("Home/VelWriter.ini"); }
    [[nodiscard]] std::string Game() const { return (temp / "Game") + Files::Separator; }
    /// What the accessor's buffer holds of the path.
    [[nodiscard]] std::string CutGame() const { return Game().substr(0, 62); }

    /// Acts on the options dialog while it is open. It must be closed by then.
    template <class Act>
    void InOptions(const Act& act) {
        QTimer::singleShot(0, qApp, [this, act] {
            options = qobject_cast<frmOptions*>(QApplication::activeModalWidget());
            ASSERT_TRUE(options);
            ASSERT_TRUE(QTest::qWaitForWindowActive(options));
            act();
            EXPECT_FALSE(options->isVisible()) << "stays open";
            options->hide();
        });
    }
    void OpenOptions() { frmOptions(ini).Show(); }
    [[nodiscard]] LineBox* Box(const char* name) const {
        return options->findChild<LineBox*>(QString::fromLatin1(name));
    }
    void Type(const char* name, const std::string& text) {
        Box(name)->setFocus(Qt::TabFocusReason);
        Box(name)->selectAll();
        QTest::keyClicks(Box(name), QString::fromStdString(text));
    }
    void Done() { options->findChild<QAbstractButton*>(QStringLiteral("cmdDone"))->click(); }

    TempFolder temp;
    ScratchRegistry registry;
    ScriptedPrompts prompts;
    clsINI ini;
    frmWriter writer;
    frmOptions* options = nullptr;
};

constexpr const char* InvalidPath = "Message[Exclamation]: That does not appear to be a valid path!";
constexpr const char* StandardFile =
    "Message: You may not use the chosen event file to save your events in, as it is a Velmora standard "
    "event file.";

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

TEST_F(Startup, KeepsRejectedOptionsAndTheDialog) {
    temp.Write("Home/VelWriter.ini", "[Setup]\r\nPath=" + Game() + "\r\nEvent File=Old\r\n");
    InOptions([this] {
        Type("txtVelmoraPath", temp / "Nowhere");
        Type("txtEventFile", "Core Events.EVENT");
        QTest::keyClick(Box("txtEventFile"), Qt::Key_Return);
        EXPECT_TRUE(options->isVisible());
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(InvalidPath, StandardFile));
        EXPECT_THAT(IniFile(), ::testing::HasSubstr("Path=" + (temp / "Nowhere") + Files::Separator));
        EXPECT_THAT(IniFile(), ::testing::HasSubstr("Event File=CoreEvents\r\n"));
        EXPECT_EQ(Settings.EventFile, "CoreEvents.event");
        Type("txtVelmoraPath", Game());
        Type("txtEventFile", "Pirates.EVENT");
        QTest::keyClick(options, Qt::Key_Escape);
    });
    OpenOptions();
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_THAT(IniFile(), ::testing::HasSubstr("Path=" + Game() + "\r\nEvent File=Pirates\r\n"));
    EXPECT_EQ(Settings.EventFile, "Pirates.event");
}

TEST_F(Startup, BrowsingShowsTheWorkingCopyAgain) {
    temp.Write("Home/VelWriter.ini", "[Setup]\r\nPath=" + Game() + "\r\nEvent File=Old\r\n");
    prompts.ExpectPickFolder("Please locate the Velmora install directory", "")
        .ExpectPickFolder("Please locate the Velmora install directory", temp / "Home/");
    InOptions([this] {
        auto* browse = options->findChild<QAbstractButton*>(QStringLiteral("cmdBrowse"));
        Type("txtEventFile", "Typed");
        browse->click();
        EXPECT_EQ(Box("txtVelmoraPath")->Bytes(), CutGame());
        EXPECT_EQ(Box("txtEventFile")->Bytes(), "Old");
        browse->click();
        EXPECT_EQ(Box("txtVelmoraPath")->Bytes(), temp / "Home/");
        Done();
    });
    OpenOptions();
    EXPECT_EQ(Settings.GamePath, temp / "Home/");
}

} // namespace
} // namespace velmora
