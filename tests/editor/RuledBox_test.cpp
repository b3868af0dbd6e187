#include "editor/LineBox.h"
#include "editor/TextBox.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace velmora {

namespace {

/// A way in which a text comes into a box.
enum class Way { Type, Paste, Drop, Compose };

/// A window with the box between two others, the first of which has the focus.
template <class Box>
class RuledBoxTest : public testing::Test {
  protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(&before);
        layout->addWidget(&box);
        layout->addWidget(&after);
        QObject::connect(&box, &Box::Refused, [this](const QString& hint) { hints += hint; });
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        before.setFocus();
    }

    void Put(Way way, const QString& text) {
        QMimeData data;
        data.setText(text);
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QInputMethodEvent composed;
        composed.setCommitString(text);
        box.setFocus();
        switch (way) {
        case Way::Type:
            for (const QChar c : text)
                QTest::sendKeyEvent(QTest::Click, &box, c == u'\r' ? Qt::Key_Return : Qt::Key_unknown,
                                    QString(c), Qt::NoModifier);
            break;
        case Way::Paste:
            QApplication::clipboard()->setText(text);
            QTest::keySequence(&box, QKeySequence::Paste);
            break;
        case Way::Drop:
            QApplication::sendEvent(Surface(box), &enter);
            QApplication::sendEvent(Surface(box), &drop);
            break;
        case Way::Compose:
            QApplication::sendEvent(&box, &composed);
        }
    }
    QVariant Asked(Qt::InputMethodQuery query) { return static_cast<QWidget&>(box).inputMethodQuery(query); }
    QString Selected() { return Asked(Qt::ImCurrentSelection).toString(); }
    static QWidget* Surface(LineBox& line) { return &line; }
    static QWidget* Surface(TextBox& lines) { return lines.viewport(); }

    QWidget window;
    QLineEdit before;
    Box box;
    QLineEdit after;
    QStringList hints;
};

using Boxes = testing::Types<LineBox, TextBox>;
TYPED_TEST_SUITE(RuledBoxTest, Boxes);

TYPED_TEST(RuledBoxTest, NeverCutsATextThatIsOnlyShown) {
    std::string everyByte;
    for (int byte = 1; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    const std::string longText(70000, 'x');
    this->box.SetLimit(5);
    for (const std::string& text : {everyByte, std::string(), "-" + longText}) {
        this->box.SetBytes(text);
        EXPECT_EQ(this->box.Bytes(), text);
    }
    QTest::keyClick(&this->box, Qt::Key_Delete);
    EXPECT_EQ(this->box.Bytes(), longText) << "it can shrink";
    this->box.SetLimit(0);
    this->Put(Way::Type, QStringLiteral("y"));
    EXPECT_EQ(this->box.Bytes(), "y" + longText);
    this->box.SetLimit(5);
    this->box.selectAll();
    this->Put(Way::Type, QStringLiteral("1234567"));
    EXPECT_EQ(this->box.Bytes(), "12345");
}

const char16_t* const OneLeftOut = u"The character ‘李’ is not in the game's code page and was left out.";
const char16_t* const CutToEight = u"The pasted text was cut: this field holds at most 8 characters.";

TYPED_TEST(RuledBoxTest, TakesATextByItsRulesAndUndoesIt) {
    const struct {
        Way How;
        int Limit;
        bool Filters;
        const char* Before;
        const char16_t* Text;
        const char* After;
        const char16_t* Hint = u"";
    } cases[]{
        {Way::Type, 0, false, "x\xA0z", u"ä€", "\xE4\x80x\xA0z"},
        {Way::Type, 5, false, "abcdefg", u"x", "abcdefg"},
        {Way::Type, 0, false, "", u"\"hi\"", "\"hi\""},
        {Way::Type, 0, true, "", u"say \"hi\"\rnow", "say 'hi'now"},
        {Way::Type, 0, false, "", u"a李b", "ab", OneLeftOut},
        {Way::Paste, 8, false, "abc", u"a\nbcdef", "a\\nbcabc", CutToEight},
        {Way::Paste, 8, false, "", u"1234567\n9", "1234567", CutToEight},
        {Way::Paste, 0, true, "", u"one\r\ntwo\r\"three\"", "one\\ntwo\\n'three'"},
        {Way::Paste, 0, false, "", u"\"one\"\u2029two\u2028three", "'one'\\ntwo\\nthree"},
        {Way::Paste, 0, false, "", u"cafe\u0301 no\u00A0ise", "caf\xE9 no\xA0ise"},
        {Way::Paste, 0, false, "", u"x李y\u200Bz李\U0001F600", "xyz",
         u"The characters ‘李’, ‘U+200B’, ‘\U0001F600’ are not in the game's code page and were left out."},
        {Way::Drop, 8, false, "", u"\"a\"\nbcdefghi", "'a'\\nbcd", CutToEight},
        {Way::Compose, 9, true, "", u"é\"李\"1\n2abcdef", "\xE9''1\\n2ab", OneLeftOut},
        {Way::Compose, 0, false, "", u"\"é\"", "\"\xE9\""},
    };
    for (const auto& entry : cases) {
        this->hints.clear();
        this->box.SetLimit(entry.Limit);
        this->box.SetFiltersKeys(entry.Filters);
        this->box.SetBytes(entry.Before);
        this->Put(entry.How, QString::fromUtf16(entry.Text));
        EXPECT_EQ(this->box.Bytes(), entry.After);
        EXPECT_EQ(this->hints.join(QLatin1Char('|')), QString::fromUtf16(entry.Hint)) << entry.After;
        // Once too often: the text of another record must not come back.
        for (int step = 0; step < 15; ++step)
            QTest::keySequence(&this->box, QKeySequence::Undo);
        EXPECT_EQ(this->box.Bytes(), entry.Before) << "of " << entry.After;
    }
}

TYPED_TEST(RuledBoxTest, ConvertsWhatTheContextMenuPastes) {
    QApplication::clipboard()->setText(QStringLiteral("\"a\"\nb"));
    QWidget* surface = this->Surface(this->box);
    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(3, 3), surface->mapToGlobal(QPoint(3, 3)));
    // A menu of the text box runs until it is closed.
    QTimer::singleShot(0, &this->window, [] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_TRUE(menu);
        for (QAction* action : menu->actions())
            if (action->text().startsWith(QStringLiteral("&Paste")))
                action->trigger();
        menu->close();
    });
    QApplication::sendEvent(surface, &request);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !this->box.Bytes().empty(); }));
    EXPECT_EQ(this->box.Bytes(), "'a'\\nb");
}

TYPED_TEST(RuledBoxTest, SelectsItsTextOnEntry) {
    this->box.SetBytes("some text");
    this->box.SetSelectsAllOnEntry(true);
    QTest::keyClick(&this->before, Qt::Key_Tab);
    EXPECT_EQ(this->Selected(), QStringLiteral("some text"));
    QTest::keyClick(&this->box, Qt::Key_Tab);
    EXPECT_TRUE(this->after.hasFocus()) << "Tab leaves the box";
    EXPECT_EQ(this->Selected(), QString()) << "it looks edited only while it has the focus";
    QTest::keyClick(&this->after, Qt::Key_Backtab, Qt::ShiftModifier);
    QTest::keyClick(&this->box, Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(this->before.hasFocus());
    this->box.setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(this->Selected(), QStringLiteral("some text"));

    QTest::keyClick(&this->box, Qt::Key_End);
    for (const Qt::FocusReason back :
         {Qt::PopupFocusReason, Qt::ActiveWindowFocusReason, Qt::MenuBarFocusReason}) {
        this->before.setFocus();
        this->box.setFocus(back);
        EXPECT_EQ(this->Selected(), QString()) << back;
    }
    this->box.SetSelectsAllOnEntry(false);
    this->box.SetCaretAtEndOnEntry(true);
    this->before.setFocus();
    this->box.SetBytes("path");
    QTest::keyClick(&this->before, Qt::Key_Tab);
    EXPECT_EQ(this->Asked(Qt::ImCursorPosition), 4);
}

TYPED_TEST(RuledBoxTest, SelectsItsTextOnTheClickThatGivesTheFocusOnly) {
    this->box.SetBytes("some text");
    this->box.SetSelectsAllOnEntry(true);
    QWidget* surface = this->Surface(this->box);
    QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(12, 8));
    EXPECT_EQ(this->Selected(), QStringLiteral("some text"));
    QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(30, 8));
    EXPECT_EQ(this->Selected(), QString());

    this->before.setFocus();
    QTest::mousePress(surface, Qt::LeftButton, {}, QPoint(3, 8));
    QMouseEvent drag(QEvent::MouseMove, QPointF(30, 8), surface->mapToGlobal(QPointF(30, 8)), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &drag);
    QTest::mouseRelease(surface, Qt::LeftButton, {}, QPoint(30, 8));
    const qsizetype selected = this->Selected().size();
    EXPECT_TRUE(0 < selected && selected < 9) << "a part selected by the mouse stays";
}

TYPED_TEST(RuledBoxTest, IsForDisplayOnlyWhenLocked) {
    this->box.SetBytes("fixed");
    this->box.SetLocked(true);
    for (const Way way : {Way::Type, Way::Paste, Way::Compose, Way::Drop})
        this->Put(way, QStringLiteral("x"));
    EXPECT_EQ(this->box.Bytes(), "fixed");
    EXPECT_EQ(this->box.palette().base(), this->box.palette().window()) << "looks flat";

    this->box.SetLocked(false);
    this->Put(Way::Type, QStringLiteral("un"));
    EXPECT_EQ(this->box.Bytes(), "unfixed");
    EXPECT_EQ(this->box.palette().base(), QApplication::palette(&this->box).base());

    this->box.SetLocked(true);
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(40, 40, 40)));
    QCoreApplication::processEvents();
    EXPECT_EQ(this->box.palette().color(QPalette::Base), QColor(40, 40, 40));
    QApplication::setPalette(light);
}

TEST(TextBoxTest, ScrollsByWheelWhileDisabled) {
    TextBox box;
    box.resize(200, 60);
    box.SetBytes(std::string(2000, 'x') + std::string(500, ' ') + "end");
    box.setEnabled(false);
    box.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&box));
    QWheelEvent down(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                     Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box.viewport(), &down);
    EXPECT_EQ(box.verticalScrollBar()->value(), 3);
}

} // namespace
} // namespace velmora
