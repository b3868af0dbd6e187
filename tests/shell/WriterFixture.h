#pragma once

#include "ScratchRegistry.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "editor/FormDriver.h"
#include "editor/ModalAnswers.h"
#include "platform/FaultHook.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "shell/frmOptions.h"
#include "shell/frmWriter.h"

namespace velmora {

/// The main window over a scratch game and a program directory of its own.
class Startup : public ::testing::Test, protected FormDriver {
  protected:
    Startup() {
        Files::CreateFolder(temp / "Home");
        Files::CreateFolder(temp / "Game/Data");
        ProgramDirectory = temp / "Home";
        Settings = {};
    }
    ~Startup() override { ReleaseCatalogues(); }

    void Start(const std::string& settings) {
        temp.Write("Home/VelWriter.ini", settings);
        writer.Load();
    }
    std::string IniFile() { return temp.Read("Home/VelWriter.ini"); }
    [[nodiscard]] std::string Game() const { return (temp / "Game") + Files::Separator; }

    /// Acts on the options dialog, which must be closed by then, while the program starts.
    void StartThrough(const std::string& settings, const std::function<void()>& act) {
        ModalAnswers answers;
        answers.Expect<frmOptions>([&](frmOptions& shown) {
            options = &shown;
            act();
            options = nullptr;
        });
        if (settings.empty())
            writer.Load();
        else
            Start(settings);
    }
    QWidget& Form() override { return options ? static_cast<QWidget&>(*options) : writer; }
    static QWidget* Shown(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String(name) && window->isVisible())
                return window;
        return nullptr;
    }

    TempFolder temp;
    ScratchRegistry registry;
    ScriptedPrompts prompts;
    frmWriter writer;
    frmOptions* options = nullptr;
};

/// The main window over a game whose data directory can be copied.
class Backup : public Startup {
  protected:
    Backup() {
        Start("[Setup]\r\nPath=" + Game() + "\r\nEvent File=X\r\n");
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
