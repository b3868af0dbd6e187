// The starbase module viewer: shows everything, changes nothing.
#include "sbmodules/frmSBModules.h"

#include "editor/EditorFixture.h"

#include <QListWidget>

namespace velmora {
namespace {

class SBModuleViewer : public WindowTest {
  protected:
    void Put(const std::string& file, const std::string& text) { temp.Write("Game/Data/" + file, text); }
    static std::string Block(const std::string& header, const std::string& lines = {}) {
        return "SBMOD " + header +
               "\r\nModel \"Starbase01\"\r\nType 1\r\nModuleSize 1\r\nLocalAbility \"Trade\"\r\n" + lines +
               "ENDSBMOD\r\n";
    }
    std::string Shown() { return Text("txtSBModuleName") + ", " + Text("lblWhereWeAt"); }
    Strings Listed(const char* list) {
        Strings texts;
        auto* widget = Get<QListWidget>(list);
        for (int i = 0; i < widget->count(); ++i)
            texts.push_back(FromQt(widget->item(i)->text()));
        EXPECT_THAT(widget->selectedItems(), IsEmpty()) << list;
        return texts;
    }
    /// Every text and tick on show.
    Strings Everything() {
        Strings texts;
        for (QWidget* widget : window->centralWidget()->findChildren<QWidget*>())
            if (qobject_cast<LineBox*>(widget) || qobject_cast<TextBox*>(widget) ||
                qobject_cast<ChoiceBox*>(widget) || qobject_cast<QLabel*>(widget))
                if (!widget->objectName().startsWith(QLatin1String("qt_")))
                    texts.push_back(Text(widget->objectName().toStdString()));
        texts.push_back(Ticked({"mnuSortAlphabetically", "mnuSortByFileName"}));
        return texts;
    }
};

TEST_F(SBModuleViewer, ShowsEveryFieldLockedButItsLists) {
    Put("A.SBModule",
        "SBMOD 7 Dock\r\nName \"The Dock\"\r\nModel \"starbase01\"\r\nType 3\r\nModuleSize 2\r\n"
        "LocalAbility \"TerrorStar\"\r\nLocalAbilityValue -40\r\nTech_Requirement \"Lasers\"\r\n"
        "Tech_Requirement \"Shields\"\r\nModule_Requirement \"Ring\"\r\nDescription \"About it\"\r\n"
        "ENDSBMOD\r\n" +
            Block("3 Ring"));
    Put("B.SBModule", "");
    Open<frmSBModules>();
    EXPECT_THAT(TextsOf({"cboSBModuleID", "txtSBModuleName", "txtDisplayName", "cboModuleType", "cboModel",
                         "cboModuleSize", "cboLocalAbility", "txtLocalAbilityValue", "txtDescription"}),
                ElementsAre("7", "Dock", "The Dock", "Cultural", "Standard Starbase", "Second Tier",
                            "Terror Star Component", "-40", "About it"));
    EXPECT_THAT(TextsOf({"cboModuleRequirements", "cboTechRequirements", "cboSBModuleFile", "txtEdited",
                         "lblStatus", "lblWhereWeAt", "lblEditStatus"}),
                ElementsAre("", "", "A.SBModule", "NO", "", "1 of 2", "READ ONLY"));
    EXPECT_THAT(Entries("cboSBModuleID"), ElementsAre("7", "3"));
    EXPECT_THAT(Listed("lstTechRequirements"), ElementsAre("Lasers", "Shields"));
    EXPECT_THAT(Listed("lstModuleRequirements"), ElementsAre("Ring"));
    EXPECT_THAT(Listed("lstModules"), IsEmpty());
    EXPECT_THAT(Entries("cboModuleRequirements"), ElementsAre("Dock", "Ring"));
    EXPECT_THAT(Entries("cboTechRequirements"), IsEmpty());
    EXPECT_THAT(Entries("cboSBModuleFile"), ElementsAre("A.SBModule", "B.SBModule", "MySBModules.SBModule"));
    for (const char* off :
         {"txtSBModuleName", "txtDescription", "cboModel", "cboModuleRequirements", "lblModel"})
        EXPECT_FALSE(Enabled(off)) << off;
    for (const char* on :
         {"lblStatusCaption", "lblStatus", "lblWhereWeAt", "lblEditStatus", "lstTechRequirements",
          "lstModules", "cmdAddModule", "cmdAddTech", "cmdGoTo", "cmdBack", "cmdForward"})
        EXPECT_TRUE(Enabled(on)) << on;
    Click("cmdForward");
    EXPECT_EQ(Text("cboSBModuleID"), "3");
    EXPECT_THAT(Listed("lstTechRequirements"), IsEmpty());
}

TEST_F(SBModuleViewer, BrowsesRoundInEitherOrder) {
    Put("B.SBModule", Block("5 gamma") + Block("1 Alpha"));
    Put("a.SBModule", Block("9 Beta"));
    const std::tuple<const char*, const char*, Strings> cases[]{
        {"0", "mnuSortByFileName", {"Beta, 1 of 3", "gamma, 2 of 3", "Alpha, 3 of 3"}},
        {"1", "mnuSortAlphabetically", {"Alpha, 1 of 3", "Beta, 2 of 3", "gamma, 3 of 3"}}};
    for (const auto& [sortBy, ticked, shown] : cases) {
        Settings.SortBy = sortBy;
        Open<frmSBModules>();
        EXPECT_EQ(Ticked({"mnuSortAlphabetically", "mnuSortByFileName"}), ticked);
        for (const std::string& each : shown) {
            EXPECT_EQ(Shown(), each);
            Click("cmdForward");
        }
        EXPECT_EQ(Shown(), shown[0]);
        Click("cmdBack");
        EXPECT_EQ(Shown(), shown[2]);
    }
}

TEST_F(SBModuleViewer, EmptiesTheForm) {
    Open<frmSBModules>();
    EXPECT_THAT(TextsOf({"cboSBModuleID", "txtSBModuleName", "txtDisplayName", "cboModuleType", "cboModel",
                         "cboModuleSize", "cboLocalAbility", "txtLocalAbilityValue", "txtDescription",
                         "cboModuleRequirements", "lblWhereWeAt", "lblStatus"}),
                Each(""));
    EXPECT_THAT(TextsOf({"txtEdited", "lblEditStatus"}), ElementsAre("NO", "READ ONLY"));
    EXPECT_EQ(Entries("cboSBModuleID").size(), 141u);
    EXPECT_EQ(Entries("cboLocalAbility").size(), SBModuleAbilities.Count());
    EXPECT_THAT(Entries("cboSBModuleFile"), ElementsAre("MySBModules.SBModule"));
    EXPECT_FALSE(Enabled("cmdBack"));
    EXPECT_FALSE(Enabled("cmdForward"));
}

TEST_F(SBModuleViewer, IsReadOnlyAfterAFailedLoadToo) {
    Put("A.SBModule", Block("0 Dock") + Block("99999999999 Ring"));
    Open<frmSBModules>();
    EXPECT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(Text("lblEditStatus"), "READ ONLY");
}

TEST_F(SBModuleViewer, ChangesNothingWhateverIsPicked) {
    Put("A.SBModule", Block("0 Dock") + Block("1 Ring"));
    Open<frmSBModules>();
    const Strings before = Everything();
    int picked = 0;
    for (QAction* action : window->findChildren<QAction*>())
        if (action->objectName().startsWith(QLatin1String("mnu")) &&
            action->objectName() != QLatin1String("mnuExit")) {
            action->trigger();
            ASSERT_EQ(Everything(), before) << FromQt(action->objectName());
            ++picked;
        }
    EXPECT_GE(picked, 14);
    for (const char* button : {"cmdAddModule", "cmdAddTech", "cmdGoTo"}) {
        Click(button);
        EXPECT_EQ(Everything(), before) << button;
    }
    EXPECT_EQ(window->Records().Count(), 2u);
    Pick("mnuExit");
    EXPECT_FALSE(window->isVisible());
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "nothing asked";
    QApplication::closeAllWindows(); // the guide
    EXPECT_EQ(temp.Read("Game/Data/A.SBModule"), Block("0 Dock") + Block("1 Ring"));
}

TEST_F(SBModuleViewer, StartsAfreshAtEachOpening) {
    Put("A.SBModule", Block("0 Dock") + Block("140 Ring"));
    Settings.AutoBackup = true;
    Open<frmSBModules>();
    Click("cmdForward");
    QObject::connect(window.get(), &RecordWindow::Closed, [this] { temp.Write("Home/closed", ""); });
    window->close();
    EXPECT_TRUE(temp.Has("Home/closed"));
    Put("A.SBModule", Block("140 Ring"));
    Reopen();
    EXPECT_EQ(Shown(), "Ring, 1 of 1");
    EXPECT_THAT(Entries("cboSBModuleID"), ElementsAre("140"));
    EXPECT_EQ(temp.Read("Home/BackupData/A.latestSBModule"), Block("140 Ring"));
    EXPECT_EQ(temp.Read("Home/BackupData/A.1stSBModule"), Block("0 Dock") + Block("140 Ring"));
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_F(SBModuleViewer, HidesTheFormWithoutADataDirectory) {
    std::filesystem::remove_all(temp.Host() / "Game/Data");
    Open<frmSBModules>();
    EXPECT_THAT(prompts.Transcript,
                ElementsAre("Message[Critical]: Unable to acces the Velmora Data directory!"));
    EXPECT_FALSE(Get<QWidget>("fraSBModuleDetails")->isVisible());
    for (const char* menu : {"mnuEdit", "mnuZoom", "mnuHelp"})
        EXPECT_FALSE(Get<QMenu>(menu)->menuAction()->isEnabled()) << menu;
    EXPECT_TRUE(Get<QMenu>("mnuFile")->menuAction()->isEnabled());
    Pick("mnuExit");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SBModuleViewer, ReportsAFailingLoad) {
    Put("A.SBModule", Block("0 Dock") + Block("1 Ring", "LocalAbilityValue 99999999999\r\n"));
    Open<frmSBModules>();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(prompts.Errors[0].Parameters, "<A.SBModule>");
    EXPECT_THAT(handler.LastCallStack(),
                ElementsAre("frmSBModules_Form_Load", "frmSBModules_InitForm",
                            "frmSBModules_LoadCurrentSBModules", "frmSBModules_ParseOutSBModuleFile"));
    EXPECT_FALSE(Enabled("txtDescription"));
}

} // namespace
} // namespace velmora
