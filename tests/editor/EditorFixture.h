#pragma once

#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "editor/ChoiceBox.h"
#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/TextBox.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "services/clsError.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QMenu>
#include <QTest>

#include <gmock/gmock.h>

#include <memory>
#include <string>

namespace velmora {

/// A game directory, settings and scripted prompts around one real window, driven by its controls' names.
class WindowTest : public ::testing::Test {
  protected:
    WindowTest() {
        BuildCatalogues();
        for (const char* folder : {"Game/Data/UP_Issues", "Game/GFX", "Home/BackupData"})
            Files::CreateFolder(temp / folder);
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

    template <class Control>
    Control* Get(const char* name) {
        auto* control = window->findChild<Control*>(QString::fromLatin1(name));
        EXPECT_TRUE(control) << name;
        return control;
    }
    std::string Text(const char* name) {
        auto* control = window->findChild<QWidget*>(QString::fromLatin1(name));
        if (auto* line = qobject_cast<LineBox*>(control))
            return line->Bytes();
        if (auto* text = qobject_cast<TextBox*>(control))
            return text->Bytes();
        if (auto* choice = qobject_cast<ChoiceBox*>(control))
            return choice->Chosen();
        if (auto* label = qobject_cast<QLabel*>(control))
            return FromQt(label->text());
        ADD_FAILURE() << "no text in " << name;
        return {};
    }
    bool Enabled(const char* name) {
        if (auto* action = window->findChild<QAction*>(QString::fromLatin1(name)))
            return action->isEnabled();
        return Get<QWidget>(name)->isEnabled();
    }

    /// Picks a menu item as a user does: the item must be enabled.
    void Pick(const char* item) {
        auto* action = Get<QAction>(item);
        ASSERT_TRUE(action->isEnabled()) << item;
        action->trigger();
    }
    void Click(const char* button) { QTest::mouseClick(Get<QAbstractButton>(button), Qt::LeftButton); }
    /// Replaces a box's text by typing.
    void Type(const char* box, const QString& text) {
        auto* control = Get<QWidget>(box);
        control->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(control->hasFocus()) << box;
        QTest::keySequence(control, QKeySequence::SelectAll);
        QTest::keyClick(control, Qt::Key_Delete);
        QTest::keyClicks(control, text);
    }
    void Choose(const char* box, const std::string& entry) {
        auto* choice = Get<ChoiceBox>(box);
        const int at = choice->findText(ToQt(entry));
        ASSERT_GE(at, 0) << entry;
        choice->setCurrentIndex(at);
    }

    TempFolder temp;
    ScriptedPrompts prompts;
    clsError handler;
    std::unique_ptr<RecordWindow> window;
};

} // namespace velmora
