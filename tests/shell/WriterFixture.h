#pragma once

#include "ScratchRegistry.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "editor/LineBox.h"
#include "platform/FaultHook.h"
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

#include <gtest/gtest.h>

#include <string>

namespace velmora {

/// The main window over a scratch game and a program directory of its own.
class Startup : public ::testing::Test {
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
    void Pick(const char* item) {
        auto* action = writer.findChild<QAction*>(QString::fromLatin1(item));
        ASSERT_TRUE(action && action->isEnabled()) << item;
        action->trigger();
    }
    static QWidget* Shown(const char* name) {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->objectName() == QLatin1String(name) && window->isVisible())
                return window;
        return nullptr;
    }
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
