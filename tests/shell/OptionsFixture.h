#pragma once

#include "ScratchRegistry.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "editor/FormDriver.h"
#include "editor/ModalAnswers.h"
#include "services/Settings.h"
#include "services/clsError.h"
#include "shell/frmOptions.h"

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

/// The real options dialog, modal as in the program, over a settings file and a registry of its own.
class OptionsDialog : public ::testing::Test, protected FormDriver {
  protected:
    OptionsDialog() {
        Files::CreateFolder(temp / "Game");
        ini.INIFile = temp / "VelWriter.ini";
        handler.Unattended = false;
        gErrHandler = &handler;
    }
    ~OptionsDialog() override { gErrHandler = nullptr; }

    /// Shows the dialog; `work` is done while it is open and is to close it.
    void Show(const std::function<void()>& work) {
        ModalAnswers answers;
        answers.Expect<frmOptions>([&](frmOptions& shown) {
            dialog = &shown;
            work();
        });
        frmOptions(ini).Show();
        dialog = nullptr;
    }
    void LeaveWithGoodPath() {
        Type("txtVelmoraPath", ToQt(temp / "Game"));
        Click("cmdDone");
    }
    QWidget& Form() override { return *dialog; }

    void PutIni(const std::string& entries) { temp.Write("VelWriter.ini", "[Setup]\r\n" + entries); }
    std::string Written() { return temp.Read("VelWriter.ini"); }
    std::vector<std::string> Boxes() {
        return {Text("txtVelmoraPath"), Text("txtEventFile"), Text("txtUPIssue"), Text("txtSBModuleFile")};
    }

    TempFolder temp;
    ScratchRegistry registry;
    ScriptedPrompts prompts;
    clsError handler;
    clsINI ini;
    frmOptions* dialog = nullptr;
};

} // namespace velmora
