#pragma once

#include "editor/ChoiceBox.h"
#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {

/// Drives a window by the names of its controls, as a user does.
class FormDriver {
  public:
    virtual ~FormDriver() = default;

    template <class Control>
    Control* Get(const std::string& name) {
        auto* control = Form().findChild<Control*>(QString::fromStdString(name));
        EXPECT_TRUE(control) << name;
        return control;
    }
    std::string Text(const std::string& name) {
        auto* control = Get<QWidget>(name);
        if (auto* line = qobject_cast<LineBox*>(control))
            return line->Bytes();
        if (auto* text = qobject_cast<TextBox*>(control))
            return text->Bytes();
        if (auto* choice = qobject_cast<ChoiceBox*>(control))
            return choice->Chosen();
        return FromQt(Get<QLabel>(name)->text());
    }
    /// The texts of the entries of a control array, `array` being "txtOption_".
    std::vector<std::string> Texts(const std::string& array, int count) {
        std::vector<std::string> texts;
        for (int i = 0; i < count; ++i)
            texts.push_back(Text(array + std::to_string(i)));
        return texts;
    }
    std::vector<std::string> TextsOf(std::vector<std::string> names) {
        for (std::string& name : names)
            name = Text(name);
        return names;
    }
    bool Enabled(const std::string& name) { return Get<QObject>(name)->property("enabled").toBool(); }
    /// Which of some option buttons, check boxes or menu items are ticked.
    std::string Ticked(std::initializer_list<const char*> names) {
        std::string ticked;
        for (const char* name : names)
            if (Get<QObject>(name)->property("checked").toBool())
                ticked += ticked.empty() ? name : std::string(" and ") + name;
        return ticked;
    }
    std::vector<std::string> Entries(const std::string& box) {
        std::vector<std::string> entries;
        auto* choice = Get<ChoiceBox>(box);
        for (int i = 0; i < choice->count(); ++i)
            entries.push_back(FromQt(choice->itemText(i)));
        return entries;
    }

    /// Picks a menu item: it must be enabled.
    void Pick(const std::string& item) {
        auto* action = Get<QAction>(item);
        ASSERT_TRUE(action->isEnabled()) << item;
        action->trigger();
    }
    /// Clicks a button, which takes the focus first.
    void Click(const std::string& name) {
        auto* button = Get<QAbstractButton>(name);
        ASSERT_TRUE(button->isVisible()) << name;
        button->setFocus(Qt::MouseFocusReason);
        button->click();
    }
    /// Moves the focus to a control.
    void Enter(const std::string& control) {
        Get<QWidget>(control)->setFocus(Qt::TabFocusReason);
        ASSERT_TRUE(Get<QWidget>(control)->hasFocus()) << control;
    }
    /// Replaces a box's text by typing.
    void Type(const std::string& box, const QString& text) {
        Enter(box);
        auto* control = Get<QWidget>(box);
        QTest::keySequence(control, QKeySequence::SelectAll);
        QTest::keyClick(control, Qt::Key_Delete);
        QTest::keyClicks(control, text);
    }
    /// Replaces a box's text as the program does.
    void SetText(const std::string& box, const std::string& bytes) {
        if (auto* line = qobject_cast<LineBox*>(Get<QWidget>(box)))
            line->SetBytes(bytes);
        else
            Get<TextBox>(box)->SetBytes(bytes);
    }
    void Choose(const std::string& box, const std::string& entry) {
        auto* choice = Get<ChoiceBox>(box);
        const int at = choice->findText(ToQt(entry));
        ASSERT_GE(at, 0) << entry;
        choice->setCurrentIndex(at);
    }

  protected:
    virtual QWidget& Form() = 0;
};

} // namespace velmora
