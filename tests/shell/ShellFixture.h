#pragma once

#include "ScratchRegistry.h"
#include "ScriptedPrompts.h"
#include "editor/FormDriver.h"
#include "editor/ModalAnswers.h"
#include "platform/FaultHook.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "services/clsError.h"
#include "shell/frmOptions.h"
#include "shell/frmWriter.h"

#include <functional>
#include <string>
#include <vector>

namespace velmora {

inline const std::string Slash(1, Files::Separator);

/// The settings file as the options dialog writes it.
inline std::string IniOf(const std::string& path, const std::string& eventFile,
                         const std::string& upIssueFile, const std::string& sbModuleFile,
                         const std::string& autoBackup, const std::string& sortBy) {
    return "[Setup]\r\nPath=" + path + "\r\nEvent File=" + eventFile + "\r\nUP Issue File=" + upIssueFile +
           "\r\nSB Module File=" + sbModuleFile + "\r\nAutoBackup=" + autoBackup + "\r\nSortBy=" + sortBy +
           "\r\n";
}

/// A game, a program directory and a registry of their own, and the options dialog while it is open.
class ShellTest : public ::testing::Test, protected FormDriver {
  protected:
    ShellTest() {
        for (const char* folder : {"Home", "Game/Data"})
            Files::CreateFolder(temp / folder);
    }
    [[nodiscard]] std::string Game() const { return temp / "Game" + Slash; }
    void PutIni(const std::string& entries) { temp.Write("Home/VelWriter.ini", "[Setup]\r\n" + entries); }
    std::string Written() { return temp.Read("Home/VelWriter.ini"); }

    /// Does something during which the options dialog comes up; `act` is to close it.
    void InOptions(const std::function<void()>& run, const std::function<void()>& act) {
        ModalAnswers answers;
        answers.Expect<frmOptions>([&](frmOptions& shown) {
            options = &shown;
            act();
            options = nullptr;
        });
        run();
    }
    void LeaveWithGoodPath() {
        Type("txtVelmoraPath", ToQt(temp / "Game"));
        Click("cmdDone");
    }
    QWidget& Form() override { return *options; }

    TempFolder temp;
    ScratchRegistry registry;
    ScriptedPrompts prompts;
    frmOptions* options = nullptr;
};

/// The real options dialog, modal as in the program.
class OptionsDialog : public ShellTest {
  protected:
    OptionsDialog() {
        ini.INIFile = temp / "Home/VelWriter.ini";
        handler.Unattended = false;
        gErrHandler = &handler;
    }
    ~OptionsDialog() override { gErrHandler = nullptr; }

    /// Shows the dialog; `work` is done while it is open and is to close it.
    void Show(const std::function<void()>& work) {
        InOptions([this] { frmOptions(ini).Show(); }, work);
    }
    std::vector<std::string> Boxes() {
        return TextsOf({"txtVelmoraPath", "txtEventFile", "txtUPIssue", "txtSBModuleFile"});
    }

    clsError handler;
    clsINI ini;
};

/// The main window, which the program starts with.
class Startup : public ShellTest {
  protected:
    Startup() {
        ProgramDirectory = temp / "Home";
        Settings = {};
    }
    ~Startup() override { ReleaseCatalogues(); }

    /// Starts with a settings file of a path and these entries.
    void Start(const std::string& entries) {
        PutIni("Path=" + Game() + "\r\n" + entries);
        writer.Load();
    }
    QWidget& Form() override { return options ? static_cast<QWidget&>(*options) : writer; }
    static QWidget* Shown(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String(name) && window->isVisible())
                return window;
        return nullptr;
    }

    frmWriter writer;
};

/// The main window over a game whose data directory can be copied.
class Backup : public Startup {
  protected:
    Backup() {
        Start("Event File=X\r\n");
        Files::CreateFolder(temp / "Game/Data/UP_Issues");
        temp.Write("Game/Data/A.event", "one");
        temp.Write("Game/Data/UP_Issues/B.UPIssue", "two");
    }
    ~Backup() override { gFaultHook = nullptr; }

    /// Picks the command and answers its question; the name of the copy asked about.
    std::string BackUp(bool answer) {
        prompts.ExpectAsk("", answer);
        Pick("mnuBackupDataDirectory");
        const std::string asked = prompts.Transcript.front();
        const std::string before = "|This copy will be named ";
        const std::size_t begin = asked.find(before) + before.size();
        EXPECT_EQ(asked.substr(0, begin), "Ask: This will create a copy of " + Settings.DataPath + before);
        return asked.substr(begin, asked.find("|Proceed?") - begin);
    }
};

} // namespace velmora
