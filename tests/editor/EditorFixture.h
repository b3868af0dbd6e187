#pragma once

#include "BrokenPrompts.h"
#include "TempFolder.h"
#include "editor/FormDriver.h"
#include "editor/RecordWindow.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "services/clsError.h"

#include <QMenu>

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace velmora {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using Strings = std::vector<std::string>;

/// A game directory, settings and scripted prompts around one real window.
class WindowTest : public ::testing::Test, protected FormDriver {
  protected:
    WindowTest() {
        BuildCatalogues();
        for (const char* folder : {"Game/Data/UP_Issues", "Game/GFX", "Home/BackupData"})
            Files::CreateFolder(temp / folder);
        temp.Write("Game/GFX/P.pcx", "no picture, but there");
        ProgramDirectory = temp / "Home";
        Settings.SetGamePath(temp / "Game/");
        Settings.BackupPath = temp / "Home/BackupData/";
        Settings.EventFile = "MyEvents.event";
        Settings.UPIssueFile = "MyUPIssues.upissue";
        Settings.SBModuleFile = "MySBModules.SBModule";
        Settings.AutoBackup = false;
        Settings.SortBy = "0";
        handler.Unattended = false;
        gErrHandler = &handler;
    }
    ~WindowTest() override {
        window.reset();
        gErrHandler = nullptr;
        ReleaseCatalogues();
    }

    template <class Window>
    void Open() {
        window = std::make_unique<Window>();
        Reopen();
    }
    void Reopen() {
        window->Open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }

    QWidget& Form() override { return *window; }

    /// The names under which the window's routines are reported.
    Strings Routines(Strings names) {
        for (std::string& name : names)
            name = window->Records().Kind.Routine(name);
        return names;
    }
    /// A control that fails once nothing can be asked, and the routines that its failure passes through below
    /// its own.
    struct Road {
        std::string Control;
        Strings Below = {};
    };
    void ExpectFailureRoads(const std::vector<Road>& roads) {
        for (const auto& [control, below] : roads) {
            BrokenPrompts broken;
            if (window->findChild<QAction*>(QString::fromStdString(control)))
                Pick(control);
            else
                Click(control);
            EXPECT_EQ(broken.Errors.size(), 1u) << control;
            Strings passed{control == "mnuSortByFileName" ? "mnuSortByFilename_Click" : control + "_Click"};
            passed.insert(passed.end(), below.begin(), below.end());
            EXPECT_EQ(handler.LastCallStack(), Routines(passed)) << control;
        }
    }

    TempFolder temp;
    ScriptedPrompts prompts;
    clsError handler;
    std::unique_ptr<RecordWindow> window;
};

} // namespace velmora
