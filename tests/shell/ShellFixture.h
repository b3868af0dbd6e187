#pragma once

#include "ScratchRegistry.h"
#include "ScriptedPrompts.h"
#include "editor/FormDriver.h"
#include "editor/ModalAnswers.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "services/clsError.h"
#include "shell/frmOptions.h"
#include "shell/frmWriter.h"

#include <gmock/gmock.h>

namespace velmora {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

inline const std::string Slash(1, Files::Separator);

/// The main window, which the program starts with, over a game, a program directory and a registry of their
/// own, and the options dialog while it is open.
class ShellTest : public ::testing::Test, protected FormDriver {
  protected:
    ShellTest() {
        for (const char* folder : {"Home", "Game/Data/UP_Issues"})
            Files::CreateFolder(temp / folder);
        ProgramDirectory = temp / "Home";
        Settings = {};
        gErrHandler->Unattended = false;
    }
    ~ShellTest() override { ReleaseCatalogues(); }

    [[nodiscard]] std::string Game() const { return temp / "Game" + Slash; }
    void PutIni(const std::string& entries) { temp.Write("Home/VelWriter.ini", "[Setup]\r\n" + entries); }
    std::string Written() { return temp.Read("Home/VelWriter.ini"); }
    /// The settings file as the options dialog writes it.
    static std::string IniOf(const std::string& path, const std::string& eventFile,
                             const std::string& backupAndSort) {
        return "[Setup]\r\nPath=" + path + "\r\nEvent File=" + eventFile +
               "\r\nUP Issue File=MyUPIssues\r\nSB Module File=MySBModules\r\n" + backupAndSort;
    }
    /// The settings in use but for the paths.
    static std::string InUse() {
        return Settings.EventFile + " " + Settings.UPIssueFile + " " + Settings.SBModuleFile + " " +
               Settings.SortBy + (Settings.AutoBackup ? " backup" : "");
    }

    /// Starts the program with a settings file of a path and these entries.
    void Start(const std::string& entries) {
        PutIni("Path=" + Game() + "\r\n" + entries);
        writer.Load();
    }
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
    QWidget& Form() override { return options ? static_cast<QWidget&>(*options) : writer; }

    TempFolder temp;
    ScratchRegistry registry;
    ScriptedPrompts prompts;
    frmWriter writer;
    frmOptions* options = nullptr;
};

/// The real options dialog, modal as in the program.
class OptionsDialog : public ShellTest {
  protected:
    /// Shows the dialog; `work` is done while it is open and is to close it.
    void Show(const std::function<void()>& work) {
        clsINI ini;
        ini.INIFile = temp / "Home/VelWriter.ini";
        InOptions([&] { frmOptions(ini).Show(); }, work);
    }
    std::string Shown() {
        std::string texts;
        for (const std::string& box : boxes)
            texts += Text(box) + "|";
        return texts + Ticked({"chkAutoBackup", "optSortByAlphabetical", "optSortByFileName"});
    }

    const std::vector<std::string> boxes{"txtVelmoraPath", "txtEventFile", "txtUPIssue", "txtSBModuleFile"};
};

/// A game whose data directory can be copied.
class Backup : public ShellTest {
  protected:
    Backup() {
        Start("Event File=X\r\n");
        temp.Write("Game/Data/A.event", "one");
        temp.Write("Game/Data/UP_Issues/B.UPIssue", "two");
    }

    /// Picks the command and answers its question; the name of the copy asked about.
    std::string BackUp(bool answer) {
        prompts.ExpectAsk("", answer);
        Pick("mnuBackupDataDirectory");
        const std::string asked = prompts.Questions.back().Text;
        const std::string before =
            "This will create a copy of " + Settings.DataPath + "\rThis copy will be named ";
        EXPECT_THAT(asked, StartsWith(before));
        return asked.substr(before.size(), asked.find("\rProceed?") - before.size());
    }
};

} // namespace velmora
