#include "shell/ShellFixture.h"

#include "BrokenPrompts.h"

#include <QClipboard>

namespace velmora {
namespace {

const char* const NoRegistry =
    "Message: Unable to access the Velmora installation location from the registry, "
    "you will need to enter the path manually.";
const char* const BadPath = "Message[Exclamation]: That does not appear to be a valid path!";
const char* const StandardFile =
    "Message: You may not use the chosen event file to save your events in, as it is "
    "a Velmora standard event file.";

TEST_F(OptionsDialog, CannotBeLeftWithoutAPath) {
    const std::function<void()> waysOut[]{
        [this] { Click("cmdDone"); },
        [this] { QTest::keyClick(&Form(), Qt::Key_Escape); },
        [this] { Form().close(); },
        [this] { QTest::keyClick(Get<QWidget>("txtVelmoraPath"), Qt::Key_Return); },
    };
    Show([&] {
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(NoRegistry));
        EXPECT_EQ(Shown(), "|MyEvents|MyUPIssues|MySBModules|chkAutoBackup and optSortByFileName");
        EXPECT_FALSE(temp.Has("Home/VelWriter.ini")) << "nothing is written before the dialog is to close";
        for (const auto& leave : waysOut) {
            leave();
            EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(BadPath));
            ASSERT_TRUE(Form().isVisible());
            EXPECT_TRUE(Get<QWidget>("txtVelmoraPath")->hasFocus());
        }
        EXPECT_EQ(Written(), IniOf(Slash, "MyEvents", "AutoBackup=TRUE\r\nSortBy=0\r\n"));
        EXPECT_EQ(Settings.GamePath, Slash) << "even a refused path is kept";
        Get<QAbstractButton>("chkAutoBackup")->click();
        Get<QAbstractButton>("optSortByAlphabetical")->click();
        LeaveWithGoodPath();
    });
    EXPECT_EQ(Written(), IniOf(Game(), "MyEvents", "AutoBackup=FALSE\r\nSortBy=1\r\n"));
    EXPECT_EQ(Settings.UPIssuePath, Game() + "Data" + Slash + "UP_Issues" + Slash);
    EXPECT_EQ(InUse(), "MyEvents.event MyUPIssues.upissue MySBModules.sbmodule 1");
    for (const auto& leave : waysOut)
        Show(leave);
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(OptionsDialog, ReadsTheSettingsFile) {
    const std::string deep = temp / std::string(70, 'd') + Slash;
    Files::CreateFolder(deep);
    const std::string missing = temp / std::string(70, 'm');
    std::string parent = temp / "";
    parent.resize(62, 'p');
    const std::string child = parent + Slash + "Velmora" + Slash;
    Files::CreateFolder(child);
    const std::pair<std::string, std::string> cases[]{
        {"Path=" + deep + "\r\nEvent File=E\r\nUP Issue File=U\r\nSB Module File=S\r\n" +
             "Autobackup=true\r\nSortBy=1\r\n",
         deep + "|E|U|S|chkAutoBackup and optSortByAlphabetical"},
        {"AutoBackup=yes\r\nSortBy=0\r\nUP Issue File=\r\n", "||MyUPIssues|MySBModules|optSortByFileName"},
        {"Path=" + child + "\r\nEvent File=E\r\n",
         child + "|E|MyUPIssues|MySBModules|chkAutoBackup and optSortByFileName"},
        {"Path=" + missing + "\r\nEvent File=Own\r\n",
         missing.substr(0, 62) + "|Own|MyUPIssues|MySBModules|chkAutoBackup and optSortByFileName"},
    };
    for (const auto& [entries, shown] : cases) {
        PutIni(entries);
        Show([this, &entries = entries, &shown = shown] {
            EXPECT_EQ(Shown(), shown);
            EXPECT_EQ(Written(), "[Setup]\r\n" + entries);
            for (const std::string& box : boxes) {
                Enter(box);
                EXPECT_EQ(FromQt(Get<LineBox>(box)->selectedText()), Text(box)) << box;
            }
            LeaveWithGoodPath();
        });
    }
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "the registry is not asked";
}

TEST_F(OptionsDialog, RefusesTheGamesOwnEventFiles) {
    PutIni("Path=" + temp / "Game" + "\r\nEvent File=E\r\n");
    Show([&] {
        for (const auto& [typed, stored] : {std::pair{"CoreEvents.event", "CoreEvents"},
                                            {"bonusEVENTS", "bonusEVENTS"},
                                            {"Core Events", "CoreEvents"}}) {
            Type("txtEventFile", QString::fromLatin1(typed));
            Click("cmdDone");
            EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(StandardFile));
            ASSERT_TRUE(Form().isVisible());
            EXPECT_TRUE(Get<QWidget>("txtEventFile")->hasFocus());
            EXPECT_EQ(Written(), IniOf(Game(), stored, "AutoBackup=TRUE\r\nSortBy=0\r\n"));
        }
        Type("txtVelmoraPath", QStringLiteral("nowhere"));
        Click("cmdDone");
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(BadPath, StandardFile)) << "every reason is told";
        Type("txtEventFile", QStringLiteral("CoreEvents2"));
        Type("txtUPIssue", QStringLiteral("Com1.upissue"));
        Click("cmdDone");
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre(BadPath, ::testing::HasSubstr("may not be \"Com1\"")));
        Type("txtUPIssue", QStringLiteral("Issues"));
        LeaveWithGoodPath();
    });
    EXPECT_EQ(Settings.EventFile, "CoreEvents2.event");
}

TEST_F(OptionsDialog, TakesNamesWithoutExtension) {
    const char* const cases[][4]{
        {"Pirates.EVENT", "Votes.UPissue", "Mods.SBModule.sbmodule",
         "Pirates.event Votes.upissue Mods.sbmodule 0 backup"},
        {".event", "", ".SBMODULE", "MyEvents.event MyUPIssues.upissue MySBModules.sbmodule 0 backup"},
        {"a b:c*.event", "<u|p>", "s \"b\"", "abc.event up.upissue sb.sbmodule 0 backup"}};
    for (const auto& names : cases) {
        Show([&] {
            for (int box = 0; box < 3; ++box)
                Type(boxes[box + 1], QString::fromLatin1(names[box]));
            LeaveWithGoodPath();
        });
        EXPECT_EQ(InUse(), names[3]);
    }
}

TEST_F(OptionsDialog, CleansTheBoxThatHasTheFocusHoweverItIsClosed) {
    PutIni("Path=" + Game() + "\r\nEvent File=E\r\n");
    for (const auto& close : std::initializer_list<std::function<void()>>{
             [this] { Form().close(); }, [this] { QTest::keyClick(&Form(), Qt::Key_Escape); }}) {
        Show([&] {
            Type("txtEventFile", QStringLiteral("..\\..\\a b"));
            close();
        });
        EXPECT_EQ(Settings.EventFile, "....ab.event");
    }
}

TEST_F(OptionsDialog, TakesAnyPathAsOtherProgramsCopyIt) {
    const QString folder = QString::fromStdString(temp / "") + QStringLiteral("行 é");
    Files::CreateFolder(FromQt(folder));
    for (const QString& copied : {u'"' + folder + QStringLiteral("\"\r\n"), folder, u'\n' + folder}) {
        Show([&] {
            Type("txtVelmoraPath", QString());
            QApplication::clipboard()->setText(copied);
            QTest::keySequence(Get<QWidget>("txtVelmoraPath"), QKeySequence::Paste);
            EXPECT_EQ(Get<QLineEdit>("txtVelmoraPath")->text(), folder);
            Click("cmdDone");
        });
        EXPECT_THAT(Written(), testing::HasSubstr("Path=" + folder.toStdString() + Slash + "\r\n"));
        EXPECT_EQ(ToQt(Settings.GamePath), folder + ToQt(Slash));
    }
}

TEST_F(OptionsDialog, BrowsesForThePath) {
    const std::string title = "Please locate the Velmora install directory";
    PutIni("Path=P\r\nEvent File=E\r\n");
    prompts.ExpectPickFolder(title, "").ExpectPickFolder(title, temp / "Game").ExpectPickFolder(title, "");
    Show([this] {
        Type("txtEventFile", QStringLiteral("typed"));
        Click("cmdBrowse");
        EXPECT_THAT(TextsOf(boxes), ElementsAre("P", "E", "MyUPIssues", "MySBModules"));
        Click("cmdBrowse");
        EXPECT_THAT(TextsOf(boxes), ElementsAre(Game(), "E", "MyUPIssues", "MySBModules"));
        Type("txtVelmoraPath", QStringLiteral("no *where"));
        Type("txtEventFile", QStringLiteral("Mine.event"));
        Click("cmdDone");
        Type("txtEventFile", QStringLiteral("other"));
        Click("cmdBrowse");
        EXPECT_THAT(TextsOf(boxes), ElementsAre("no *where" + Slash, "Mine", "MyUPIssues", "MySBModules"))
            << "what was refused last comes back, a path as it was typed";
        EXPECT_THAT(prompts.PickedFrom, ElementsAre("P", "P", "no *where" + Slash));
        LeaveWithGoodPath();
    });
}

TEST_F(OptionsDialog, ReportsFailuresExceptWhileClosing) {
    BrokenPrompts broken;
    Show([&] {
        EXPECT_EQ(gErrHandler->LastCallStack().front(), "frmOptions_Form_Load");
        Click("cmdBrowse");
        EXPECT_EQ(gErrHandler->LastCallStack().front(), "frmOptions_cmdBrowse_Click");
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
