#include "services/frmError.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {
namespace {

class ErrorDialog : public ::testing::Test {
  protected:
    void Open(bool collectUserInput) {
        ErrorDetails details;
        details.Number = 53;
        details.Parameters = "<A.event>,<b>";
        details.CallStack = "frmEvents_Form_Load\r\nfrmEvents_InitForm\r\n";
        details.CollectUserInput = collectUserInput;
        dialog = std::make_unique<frmError>(details);
        dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(dialog.get()));
    }
    [[nodiscard]] QPushButton* Details() const {
        return dialog->findChild<QPushButton*>(QStringLiteral("cmdDetails"));
    }
    [[nodiscard]] QString Label(const char* name) const {
        return dialog->findChild<QLabel*>(QString::fromLatin1(name))->text();
    }
    [[nodiscard]] int HeightInTwips() const { return dialog->height() * 1440 / dialog->logicalDpiY(); }

    std::unique_ptr<frmError> dialog;
};

TEST_F(ErrorDialog, GrowsForTheDetailsAndShrinksBack) {
    for (const bool collects : {true, false}) {
        Open(collects);
        const int collapsed = HeightInTwips();
        EXPECT_NEAR(collapsed, collects ? 2710 : 1650, 400) << "room for the text comes first";
        EXPECT_EQ(Details()->text(), QStringLiteral("&Details >>"));
        Details()->click();
        EXPECT_NEAR(HeightInTwips(), 5985, 15);
        EXPECT_EQ(Details()->text(), QStringLiteral("No &Details"));
        EXPECT_EQ(dialog->findChild<QWidget*>(QStringLiteral("txtUserMessage"))->hasFocus(), collects);
        Details()->click();
        EXPECT_EQ(HeightInTwips(), collapsed);
    }
}

TEST_F(ErrorDialog, IsHeldOnTheScreen) {
    Open(true);
    const QRect screen = dialog->screen()->geometry();
    const int limit = screen.top() + qRound(screen.height() * 0.96);
    dialog->move(0, limit - dialog->frameGeometry().height() - 1);
    const int before = dialog->y();
    Details()->click();
    EXPECT_LT(dialog->y(), before);
    EXPECT_EQ(dialog->y() + dialog->frameGeometry().height(), limit);
}

TEST_F(ErrorDialog, ShowsWhatIsKnownAndKeepsTheNoteWhenClosed) {
    Open(true);
    EXPECT_EQ(Label("lblErrNum"), QStringLiteral("53"));
    EXPECT_EQ(Label("lblPassedParameters"), QStringLiteral("<A.event>,<b>"));
    EXPECT_EQ(Label("lblCallStack"), QStringLiteral("frmEvents_Form_Load\nfrmEvents_InitForm"));
    QTest::keyClicks(dialog->findChild<QWidget*>(QStringLiteral("txtUserMessage")),
                     QStringLiteral("I \"clicked\""));
    dialog->close();
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->UserMessage(), "I \"clicked\"");
}

} // namespace
} // namespace velmora
