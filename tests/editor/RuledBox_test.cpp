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

/// A way in which a text comes into a box.
enum class Way { Type, Paste, Drop, Compose };

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
    void Compose(const QString& text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QApplication::sendEvent(&box, &event);
    }
    void Put(Way way, const QString& text) {
        switch (way) {
        case Way::Type:
            return Type(text);
        case Way::Paste:
            return PasteFromClipboard(text);
        case Way::Drop:
            return Drop(text);
        case Way::Compose:
            return Compose(text);
        }
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

TYPED_TEST(RuledBoxTest, NeverCutsATextThatIsOnlyShown) {
    const std::string longText(70000, 'x');
    this->box.SetLimit(540);
    this->box.SetBytes(longText);
    EXPECT_EQ(this->box.Bytes(), longText);
    this->box.SetLimit(0);
    this->Type(QStringLiteral("y"));
    EXPECT_EQ(this->box.Bytes(), "y" + longText);
}

QString LeftOut(const char16_t* character) {
    return QString::fromUtf16(u"The character ‘%1’ is not in the game's code page and was left out.")
        .arg(QString::fromUtf16(character));
}
QString CutTo(int limit) {
    return QStringLiteral("The pasted text was cut: this field holds at most %1 characters.").arg(limit);
}

TYPED_TEST(RuledBoxTest, TakesATextByItsRules) {
    const struct {
        Way How;
        int Limit;
        bool Filters;
        const char* Before;
        const char16_t* Text;
        const char* After;
        QString Hint = {};
    } cases[]{
        {Way::Type, 0, false, "x\xA0z", u"ä€", "\xE4\x80x\xA0z"},
        {Way::Type, 5, false, "", u"1234567", "12345"},
        {Way::Type, 5, false, "abcdefg", u"x", "abcdefg"},
        {Way::Type, 0, false, "", u"\"hi\"", "\"hi\""},
        {Way::Type, 0, true, "", u"say \"hi\"\rnow", "say 'hi'now"},
        {Way::Type, 0, false, "", u"a李b", "ab", LeftOut(u"李")},
        {Way::Paste, 8, false, "abc", u"123456789", "12345abc", CutTo(8)},
        {Way::Paste, 5, false, "", u"a\nbcdef", "a\\nbc", CutTo(5)},
        {Way::Paste, 0, false, "", u"one\ntwo", "one\\ntwo"},
        {Way::Paste, 0, true, "", u"one\r\ntwo\rthree", "one\\ntwo\\nthree"},
        {Way::Paste, 0, false, "", u"one\u2029two\u2028three", "one\\ntwo\\nthree"},
        {Way::Paste, 0, false, "", u"\"quoted\"", "'quoted'"},
        {Way::Paste, 0, true, "", u"\"quoted\"", "'quoted'"},
        {Way::Paste, 0, false, "", u"cafe\u0301", "caf\xE9"},
        {Way::Paste, 0, false, "", u"no\u00A0ise", "no\xA0ise"},
        {Way::Paste, 0, false, "", u"a\u200Bb", "ab", LeftOut(u"U+200B")},
        {Way::Paste, 0, false, "", u"x李y白z李\U0001F600", "xyz",
         QStringLiteral(
             "The characters ‘李’, ‘白’, ‘\U0001F600’ are not in the game's code page and were left out.")},
        {Way::Drop, 10, false, "", u"\"a\"\nbcdefghi", "'a'\\nbcdef", CutTo(10)},
        {Way::Compose, 9, true, "", u"é\"李\"1\n2abcdef", "\xE9''1\\n2ab", LeftOut(u"李")},
    };
    for (const auto& entry : cases) {
        this->hints.clear();
        this->box.SetLimit(entry.Limit);
        this->box.SetFiltersKeys(entry.Filters);
        this->box.SetBytes(entry.Before);
        this->Put(entry.How, QString::fromUtf16(entry.Text));
        EXPECT_EQ(this->box.Bytes(), entry.After);
        EXPECT_EQ(this->hints.join(QLatin1Char('|')), entry.Hint) << entry.After;
    }
}

TYPED_TEST(RuledBoxTest, LetsALongerTextShrink) {
    this->box.SetLimit(5);
    this->box.SetBytes("abcdefg");
    this->box.setFocus();
    QTest::keyClick(&this->box, Qt::Key_Delete);
    EXPECT_EQ(this->box.Bytes(), "bcdefg");
    this->box.selectAll();
    this->Type(QStringLiteral("1234567"));
    EXPECT_EQ(this->box.Bytes(), "12345");
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
    EXPECT_EQ(SelectedText(this->box), QString()) << "it looks edited only while it has the focus";
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
    this->Compose(QStringLiteral("z"));
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
} // namespace velmora
