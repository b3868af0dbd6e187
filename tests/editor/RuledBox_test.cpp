#include "editor/LineBox.h"
#include "editor/TextBox.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace velmora {

namespace {

QWidget* Surface(LineBox& box) {
    return &box;
}
QWidget* Surface(TextBox& box) {
    return box.viewport();
}
QString SelectedText(const LineBox& box) {
    return box.selectedText();
}
QString SelectedText(const TextBox& box) {
    return box.textCursor().selectedText();
}
int CaretOf(const LineBox& box) {
    return box.cursorPosition();
}
int CaretOf(const TextBox& box) {
    return box.textCursor().position();
}

/// A window with the box between two others, the first of which has the focus.
template <class Box>
class RuledBoxTest : public testing::Test {
  protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&window);
        for (QWidget* widget :
             {static_cast<QWidget*>(&before), static_cast<QWidget*>(&box), static_cast<QWidget*>(&after)})
            layout->addWidget(widget);
        QObject::connect(&box, &Box::Refused, [this](const QString& hint) { hints += hint; });
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        before.setFocus();
    }
    void TearDown() override {
        for (QWidget* widget :
             {static_cast<QWidget*>(&before), static_cast<QWidget*>(&box), static_cast<QWidget*>(&after)})
            widget->setParent(nullptr);
    }

    void Type(const QString& text) {
        box.setFocus();
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, &box, c == u'\r' ? Qt::Key_Return : Qt::Key_unknown, QString(c),
                                Qt::NoModifier);
    }
    void PasteFromClipboard(const QString& text) {
        box.setFocus();
        QApplication::clipboard()->setText(text);
        QTest::keySequence(&box, QKeySequence::Paste);
    }
    void Drop(const QString& text) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Surface(box), &enter);
        QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(Surface(box), &drop);
    }
    void Commit(const QString& text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&box, &event);
    }

    QWidget window;
    QLineEdit before;
    Box box;
    QLineEdit after;
    QStringList hints;
};

using Boxes = testing::Types<LineBox, TextBox>;
TYPED_TEST_SUITE(RuledBoxTest, Boxes);

TYPED_TEST(RuledBoxTest, KeepsTheBytesOfAnUntouchedText) {
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    this->box.SetBytes(everyByte);
    EXPECT_EQ(this->box.Bytes(), everyByte);
    this->box.SetBytes("");
    EXPECT_EQ(this->box.Bytes(), "");
}

TYPED_TEST(RuledBoxTest, EncodesAChangedText) {
    this->box.SetBytes("a\xA0z");
    this->Type(QStringLiteral("ä€"));
    EXPECT_EQ(this->box.Bytes(), "\xE4\x80"
                                 "a\xA0z");
    EXPECT_TRUE(this->hints.isEmpty());
}

TYPED_TEST(RuledBoxTest, NeverCutsATextThatIsOnlyShown) {
    const std::string longText(70000, 'x');
    this->box.SetLimit(540);
    this->box.SetBytes(longText);
    EXPECT_EQ(this->box.Bytes(), longText);
    this->box.SetLimit(0);
    this->Type(QStringLiteral("y"));
    EXPECT_EQ(this->box.Bytes(), "y" + longText);
}

TYPED_TEST(RuledBoxTest, LimitsTyping) {
    this->box.SetLimit(5);
    this->Type(QStringLiteral("1234567"));
    EXPECT_EQ(this->box.Bytes(), "12345");
    this->box.selectAll();
    this->Type(QStringLiteral("abcdefg"));
    EXPECT_EQ(this->box.Bytes(), "abcde");
}

TYPED_TEST(RuledBoxTest, LetsALongerTextOnlyShrink) {
    this->box.SetLimit(5);
    this->box.SetBytes("abcdefg");
    this->Type(QStringLiteral("x"));
    EXPECT_EQ(this->box.Bytes(), "abcdefg");
    QTest::keyClick(&this->box, Qt::Key_Delete);
    EXPECT_EQ(this->box.Bytes(), "bcdefg");
}

TYPED_TEST(RuledBoxTest, CutsAPastedTextToWhatFits) {
    this->box.SetLimit(8);
    this->box.SetBytes("abc");
    this->PasteFromClipboard(QStringLiteral("123456789"));
    EXPECT_EQ(this->box.Bytes(), "12345abc");
    EXPECT_EQ(this->hints,
              QStringList{QStringLiteral("The pasted text was cut: this field holds at most 8 characters.")});
}

TYPED_TEST(RuledBoxTest, MeasuresAPastedTextAsItIsInserted) {
    this->box.SetLimit(5);
    this->PasteFromClipboard(QStringLiteral("a\nbcdef"));
    EXPECT_EQ(this->box.Bytes(), "a\\nbc");
}

TYPED_TEST(RuledBoxTest, FiltersTypedKeysOnDemand) {
    this->box.SetFiltersKeys(true);
    this->Type(QStringLiteral("say \"hi\"\rnow"));
    EXPECT_EQ(this->box.Bytes(), "say 'hi'now");
}

TYPED_TEST(RuledBoxTest, LeavesTypedQuotesWithoutAFilter) {
    this->Type(QStringLiteral("\"hi\""));
    EXPECT_EQ(this->box.Bytes(), "\"hi\"");
}

TYPED_TEST(RuledBoxTest, MakesAPastedTextFitForAFile) {
    const std::pair<const char16_t*, const char*> cases[] = {
        {u"one\ntwo", "one\\ntwo"},
        {u"one\r\ntwo\rthree", "one\\ntwo\\nthree"},
        {u"one\u2029two\u2028three", "one\\ntwo\\nthree"},
        {u"\"quoted\"", "'quoted'"},
        {u"cafe\u0301", "caf\xE9"},
        {u"no\u00A0break", "no\xA0"
                           "break"},
    };
    for (const bool filters : {false, true})
        for (const auto& [pasted, bytes] : cases) {
            this->box.SetFiltersKeys(filters);
            this->box.SetBytes("");
            this->PasteFromClipboard(QString::fromUtf16(pasted));
            EXPECT_EQ(this->box.Bytes(), bytes);
        }
    EXPECT_TRUE(this->hints.isEmpty());
}

TYPED_TEST(RuledBoxTest, ConvertsADroppedText) {
    this->box.SetLimit(10);
    this->Drop(QStringLiteral("\"a\"\nbcdefghi"));
    EXPECT_EQ(this->box.Bytes(), "'a'\\nbcdef");
}

TYPED_TEST(RuledBoxTest, ConvertsWhatTheContextMenuPastes) {
    QApplication::clipboard()->setText(QStringLiteral("\"a\"\nb"));
    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(3, 3),
                              Surface(this->box)->mapToGlobal(QPoint(3, 3)));
    // A menu of the text box runs until it is closed.
    QMetaObject::invokeMethod(
        &this->window,
        [] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_TRUE(menu);
            for (QAction* action : menu->actions())
                if (action->text().startsWith(QStringLiteral("&Paste")))
                    action->trigger();
            menu->close();
        },
        Qt::QueuedConnection);
    QApplication::sendEvent(Surface(this->box), &request);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !this->box.Bytes().empty(); }));
    EXPECT_EQ(this->box.Bytes(), "'a'\\nb");
}

TYPED_TEST(RuledBoxTest, RefusesCharactersThatTheCodePageLacks) {
    this->Type(QStringLiteral("a李b"));
    EXPECT_EQ(this->box.Bytes(), "ab");
    EXPECT_EQ(this->hints, QStringList{QStringLiteral(
                               "The character ‘李’ is not in the game's code page and was left out.")});
    this->hints.clear();
    this->box.SetBytes("");
    this->PasteFromClipboard(QStringLiteral("x李y白z李\U0001F600"));
    EXPECT_EQ(this->box.Bytes(), "xyz");
    EXPECT_EQ(
        this->hints,
        QStringList{QStringLiteral(
            "The characters ‘李’, ‘白’, ‘\U0001F600’ are not in the game's code page and were left out.")});
}

TYPED_TEST(RuledBoxTest, NamesAnInvisibleCharacterByItsCode) {
    this->PasteFromClipboard(QStringLiteral("a\u200Bb"));
    EXPECT_EQ(this->box.Bytes(), "ab");
    EXPECT_EQ(this->hints, QStringList{QStringLiteral(
                               "The character ‘U+200B’ is not in the game's code page and was left out.")});
}

TYPED_TEST(RuledBoxTest, GoesByTheSameRulesForInputMethods) {
    this->box.SetFiltersKeys(true);
    this->box.SetLimit(9);
    this->Commit(QStringLiteral("é\"李\""));
    this->Commit(QStringLiteral("1\n2"));
    this->Commit(QStringLiteral("abcdef"));
    EXPECT_EQ(this->box.Bytes(), "\xE9''1\\n2ab");
    EXPECT_EQ(this->hints.size(), 1);
}

TYPED_TEST(RuledBoxTest, UndoesTypingAndPasting) {
    this->box.SetBytes("abc");
    this->PasteFromClipboard(QStringLiteral("\"\n\""));
    EXPECT_EQ(this->box.Bytes(), "'\\n'abc");
    QTest::keySequence(&this->box, QKeySequence::Undo);
    EXPECT_EQ(this->box.Bytes(), "abc");
    QTest::keySequence(&this->box, QKeySequence::Undo);
    EXPECT_EQ(this->box.Bytes(), "abc") << "the text of another record must not come back";
}

TYPED_TEST(RuledBoxTest, SelectsItsTextOnEntry) {
    this->box.SetBytes("some text");
    this->box.SetSelectsAllOnEntry(true);
    QTest::keyClick(&this->before, Qt::Key_Tab);
    ASSERT_TRUE(this->box.hasFocus());
    EXPECT_EQ(SelectedText(this->box), QStringLiteral("some text"));
    QTest::keyClick(&this->box, Qt::Key_Tab);
    EXPECT_TRUE(this->after.hasFocus()) << "Tab leaves the box";
    QTest::keyClick(&this->after, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(this->box.hasFocus());
    QTest::keyClick(&this->box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(this->before.hasFocus());
    this->box.setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(SelectedText(this->box), QStringLiteral("some text"));
    EXPECT_EQ(this->box.Bytes(), "some text");
}

TYPED_TEST(RuledBoxTest, SelectsItsTextOnTheClickThatGivesTheFocusOnly) {
    this->box.SetBytes("some text");
    this->box.SetSelectsAllOnEntry(true);
    QTest::mouseClick(Surface(this->box), Qt::LeftButton, {}, QPoint(12, 8));
    ASSERT_TRUE(this->box.hasFocus());
    EXPECT_EQ(SelectedText(this->box), QStringLiteral("some text"));
    QTest::mouseClick(Surface(this->box), Qt::LeftButton, {}, QPoint(30, 8));
    EXPECT_EQ(SelectedText(this->box), QString());
}

TYPED_TEST(RuledBoxTest, LeavesAPartSelectedByTheMouseOnEntry) {
    this->box.SetBytes("some text");
    this->box.SetSelectsAllOnEntry(true);
    QWidget* surface = Surface(this->box);
    QTest::mousePress(surface, Qt::LeftButton, {}, QPoint(3, 8));
    QMouseEvent drag(QEvent::MouseMove, QPointF(30, 8), surface->mapToGlobal(QPointF(30, 8)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &drag);
    QTest::mouseRelease(surface, Qt::LeftButton, {}, QPoint(30, 8));
    EXPECT_FALSE(SelectedText(this->box).isEmpty());
    EXPECT_LT(SelectedText(this->box).size(), 9);
}

TYPED_TEST(RuledBoxTest, KeepsItsSelectionWhenTheFocusComesBack) {
    this->box.SetBytes("some text");
    this->box.SetSelectsAllOnEntry(true);
    this->box.setFocus(Qt::OtherFocusReason);
    QTest::keyClick(&this->box, Qt::Key_End);
    for (const Qt::FocusReason reason :
         {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::MenuBarFocusReason}) {
        this->before.setFocus();
        this->box.setFocus(reason);
        EXPECT_EQ(SelectedText(this->box), QString()) << reason;
    }
}

TYPED_TEST(RuledBoxTest, PutsTheCaretBehindThePathOnEntry) {
    this->box.SetCaretAtEndOnEntry(true);
    this->box.SetBytes("some text");
    QTest::keyClick(&this->before, Qt::Key_Tab);
    EXPECT_EQ(SelectedText(this->box), QString());
    EXPECT_EQ(CaretOf(this->box), 9);
}

TYPED_TEST(RuledBoxTest, IsForDisplayOnlyWhenLocked) {
    this->box.SetBytes("fixed");
    this->box.SetLocked(true);
    this->Type(QStringLiteral("x"));
    this->PasteFromClipboard(QStringLiteral("y"));
    this->Commit(QStringLiteral("z"));
    this->Drop(QStringLiteral("q"));
    EXPECT_EQ(this->box.Bytes(), "fixed");
    EXPECT_EQ(this->box.palette().base(), this->box.palette().window()) << "looks flat";

    this->box.SetLocked(false);
    this->Type(QStringLiteral("un"));
    EXPECT_EQ(this->box.Bytes(), "unfixed");
    EXPECT_EQ(this->box.palette().base(), QApplication::palette(&this->box).base());
}

TYPED_TEST(RuledBoxTest, LooksFlatInADarkPaletteToo) {
    this->box.SetLocked(true);
    const QPalette light = QApplication::palette();
    QPalette dark = light;
    dark.setColor(QPalette::Window, QColor(40, 40, 40));
    dark.setColor(QPalette::Base, QColor(20, 20, 20));
    QApplication::setPalette(dark);
    QCoreApplication::processEvents();
    EXPECT_EQ(this->box.palette().color(QPalette::Base), QColor(40, 40, 40));
    QApplication::setPalette(light);
}

TEST(LineBoxTest, PastesTheMouseSelectionByTheSameRules) {
    LineBox box;
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->setText(QStringLiteral("\"a\"\nb"), QClipboard::Selection);
    QTest::mouseClick(&box, Qt::MiddleButton);
    // Only some hosts have a mouse selection.
    EXPECT_EQ(box.Bytes(), clipboard->supportsSelection() ? "'a'\\nb" : "");
}

TEST(TextBoxTest, ScrollsByWheelWhileDisabled) {
    TextBox box;
    box.resize(200, 60);
    box.SetBytes(std::string(2000, 'x') + std::string(500, ' ') + "end");
    box.setEnabled(false);
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    ASSERT_GT(box.verticalScrollBar()->maximum(), 3);
    QWheelEvent down(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box.viewport(), &down);
    EXPECT_EQ(box.verticalScrollBar()->value(), 3);
}

} // namespace

TEST(TextBox, LooksEditedOnlyWhileItHasTheFocus) {
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* text = new TextBox;
    auto* after = new LineBox;
    layout->addWidget(text);
    layout->addWidget(after);
    text->SetSelectsAllOnEntry(true);
    text->SetBytes("a text");
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    after->setFocus(Qt::TabFocusReason);
    text->setFocus(Qt::TabFocusReason);
    ASSERT_EQ(SelectedText(*text), "a text");
    after->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(SelectedText(*text), "");
}

} // namespace velmora
