#include "shell/ShellFixture.h"

#include "BrokenPrompts.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const char* const NoRegistry =
    "Message: Unable to access the Velmora installation location from the registry, "
    "you will need to enter the path manually.";
const char* const BadPath = "Message[Exclamation]: That does not appear to be a valid path!";
const char* const StandardFile =
    "Message: You may not use the chosen event file to save your events in, as it is "
    "a Velmora standard event file.";

TEST_F(OptionsDialog, CannotBeLeftWithoutAPath) {
    Show([this] {
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(NoRegistry));
        EXPECT_THAT(Boxes(), ElementsAre("", "MyEvents", "MyUPIssues", "MySBModules"));
        EXPECT_TRUE(Get<QAbstractButton>("chkAutoBackup")->isChecked());
        EXPECT_EQ(Ticked({"optSortByAlphabetical", "optSortByFileName"}), "optSortByFileName");
        EXPECT_FALSE(temp.Has("Home/VelWriter.ini")) << "nothing is written before the dialog is to close";
        Click("cmdDone");
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(BadPath));
        ASSERT_TRUE(Form().isVisible());
        EXPECT_TRUE(Get<QWidget>("txtVelmoraPath")->hasFocus());
        EXPECT_EQ(Written(), IniOf(Slash, "MyEvents", "MyUPIssues", "MySBModules", "TRUE", "0"));
        EXPECT_EQ(Settings.GamePath, Slash) << "even a refused path is kept";
        Type("txtVelmoraPath", ToQt(temp / "Game"));
        Get<QAbstractButton>("chkAutoBackup")->click();
        Get<QAbstractButton>("optSortByAlphabetical")->click();
        Click("cmdDone");
    });
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    EXPECT_EQ(Written(), IniOf(Game(), "MyEvents", "MyUPIssues", "MySBModules", "FALSE", "1"));
    EXPECT_EQ(Settings.GamePath, Game());
    EXPECT_EQ(Settings.DataPath, Settings.GamePath + "Data" + Slash);
    EXPECT_EQ(Settings.UPIssuePath, Settings.DataPath + "UP_Issues" + Slash);
    EXPECT_EQ(Settings.EventFile + Settings.UPIssueFile + Settings.SBModuleFile,
              "MyEvents.eventMyUPIssues.upissueMySBModules.sbmodule");
    EXPECT_FALSE(Settings.AutoBackup);
    EXPECT_EQ(Settings.SortBy, "1");
}

TEST_F(OptionsDialog, ReadsTheSettingsFile) {
    struct {
        std::string Ini;
        std::vector<std::string> Boxes;
        bool AutoBackup;
        const char* SortBy;
    } const cases[]{
        {"Path=P\r\nEvent File=E\r\nUP Issue File=U\r\nSB Module File=S\r\nAutobackup=true\r\nSortBy=1\r\n",
         {"P", "E", "U", "S"},
         true,
         "optSortByAlphabetical"},
        {"AutoBackup=yes\r\nSortBy=0\r\nUP Issue File=\r\n",
         {"", "", "MyUPIssues", "MySBModules"},
         false,
         "optSortByFileName"},
        {"Event File=Own\r\n", {"", "Own", "MyUPIssues", "MySBModules"}, true, "optSortByFileName"},
    };
    for (const auto& file : cases) {
        PutIni(file.Ini);
        Show([&] {
            EXPECT_EQ(Boxes(), file.Boxes);
            EXPECT_EQ(Get<QAbstractButton>("chkAutoBackup")->isChecked(), file.AutoBackup);
            EXPECT_EQ(Ticked({"optSortByAlphabetical", "optSortByFileName"}), file.SortBy);
            EXPECT_EQ(Written(), "[Setup]\r\n" + file.Ini);
            for (const char* box : {"txtVelmoraPath", "txtEventFile", "txtUPIssue", "txtSBModuleFile"}) {
                Enter(box);
                EXPECT_EQ(FromQt(Get<LineBox>(box)->selectedText()), Text(box)) << box;
            }
            LeaveWithGoodPath();
        });
    }
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "the registry is not asked";
}

TEST_F(OptionsDialog, ShowsADeepPathWhole) {
    const std::string deep = temp / (std::string(70, 'd') + "/" + std::string(70, 'e')) + Slash;
    PutIni("Path=" + deep + "\r\nEvent File=E\r\n");
    Show([&] {
        EXPECT_EQ(Text("txtVelmoraPath"), deep.substr(0, 62));
        Form().hide();
    });
    Files::CreateFolder(deep);
    Show([&] {
        EXPECT_EQ(Text("txtVelmoraPath"), deep);
        Click("cmdDone");
    });
    EXPECT_EQ(Settings.GamePath, deep);
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(OptionsDialog, RefusesTheGamesOwnEventFiles) {
    PutIni("Path=" + temp / "Game" + "\r\nEvent File=E\r\n");
    const std::pair<const char*, const char*> cases[]{
        {"CoreEvents.event", "CoreEvents"}, {"bonusEVENTS", "bonusEVENTS"}, {"Core Events", "CoreEvents"}};
    Show([&] {
        for (const auto& [typed, stored] : cases) {
            Type("txtEventFile", QString::fromLatin1(typed));
            Click("cmdDone");
            EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(StandardFile));
            ASSERT_TRUE(Form().isVisible());
            EXPECT_TRUE(Get<QWidget>("txtEventFile")->hasFocus());
            EXPECT_EQ(Settings.EventFile, std::string(stored) + ".event");
            EXPECT_EQ(Written(), IniOf(Game(), stored, "MyUPIssues", "MySBModules", "TRUE", "0"));
        }
        Type("txtVelmoraPath", QStringLiteral("nowhere"));
        Click("cmdDone");
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(BadPath, StandardFile)) << "every reason is told";
        Type("txtEventFile", QStringLiteral("CoreEvents2"));
        LeaveWithGoodPath();
    });
    EXPECT_EQ(Settings.EventFile, "CoreEvents2.event");
}

TEST_F(OptionsDialog, TakesNamesWithoutExtension) {
    const std::string usual = "MyEvents.event MyUPIssues.upissue MySBModules.sbmodule";
    const std::tuple<const char*, const char*, const char*, std::string> cases[]{
        {"Pirates.EVENT", "Votes.UPissue", "Mods.SBModule.sbmodule",
         "Pirates.event Votes.upissue Mods.sbmodule"},
        {"", "", "", usual},
        {".event", ".upissue", ".SBMODULE", usual},
        {"a b:c*.event", "<u|p>", "s \"b\"", "abc.event up.upissue sb.sbmodule"}};
    for (const auto& [event, issue, module, names] : cases) {
        Show([&, event = event, issue = issue, module = module] {
            Type("txtEventFile", QString::fromLatin1(event));
            Type("txtUPIssue", QString::fromLatin1(issue));
            Type("txtSBModuleFile", QString::fromLatin1(module));
            LeaveWithGoodPath();
        });
        EXPECT_EQ(Settings.EventFile + " " + Settings.UPIssueFile + " " + Settings.SBModuleFile, names);
    }
}

TEST_F(OptionsDialog, BrowsesForThePath) {
    const std::string title = "Please locate the Velmora install directory";
    PutIni("Path=P\r\nEvent File=E\r\n");
    prompts.ExpectPickFolder(title, "").ExpectPickFolder(title, temp / "Game").ExpectPickFolder(title, "");
    Show([this] {
        Type("txtEventFile", QStringLiteral("typed"));
        Type("txtVelmoraPath", QStringLiteral("a *b"));
        Click("cmdBrowse");
        EXPECT_THAT(Boxes(), ElementsAre("P", "E", "MyUPIssues", "MySBModules"));
        Type("txtUPIssue", QStringLiteral("typed"));
        Click("cmdBrowse");
        EXPECT_THAT(Boxes(), ElementsAre(Game(), "E", "MyUPIssues", "MySBModules"));
        Type("txtVelmoraPath", QStringLiteral("no *where"));
        Type("txtEventFile", QStringLiteral("Mine.event"));
        Click("cmdDone");
        EXPECT_EQ(Text("txtVelmoraPath"), "no *where") << "a path is not stripped";
        Type("txtEventFile", QStringLiteral("other"));
        Click("cmdBrowse");
        EXPECT_THAT(Boxes(), ElementsAre("no *where" + Slash, "Mine", "MyUPIssues", "MySBModules"))
            << "what was refused last comes back";
        LeaveWithGoodPath();
    });
}

TEST_F(OptionsDialog, ChecksHoweverItIsClosed) {
    PutIni("Event File=E\r\n");
    Show([this] {
        QTest::keyClick(&Form(), Qt::Key_Escape);
        EXPECT_TRUE(Form().isVisible());
        Form().close();
        EXPECT_TRUE(Form().isVisible());
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(BadPath, BadPath));
        Type("txtVelmoraPath", ToQt(temp / "Game"));
        QTest::keyClick(&Form(), Qt::Key_Escape);
    });
    EXPECT_EQ(Settings.GamePath, Game());
    Show([this] { Form().close(); });
    Show([this] { QTest::keyClick(Get<QWidget>("txtVelmoraPath"), Qt::Key_Return); });
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(OptionsDialog, ReportsFailuresExceptWhileClosing) {
    BrokenPrompts broken;
    Show([&] {
        EXPECT_EQ(handler.LastCallStack().front(), "frmOptions_Form_Load");
        Click("cmdBrowse");
        EXPECT_EQ(handler.LastCallStack().front(), "frmOptions_cmdBrowse_Click");
        EXPECT_EQ(broken.Errors.size(), 2u);
        Click("cmdDone");
        EXPECT_TRUE(Form().isVisible());
        EXPECT_EQ(broken.Errors.size(), 2u);
        EXPECT_FALSE(temp.Has("Home/VelWriter.ini"));
        LeaveWithGoodPath();
    });
    EXPECT_TRUE(temp.Has("Home/VelWriter.ini"));
}

} // namespace
} // namespace velmora
