#include "services/frmError.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(ErrorDialog, GrowsForTheDetailsIsHeldOnTheScreenAndKeepsTheNote) {
    ErrorDetails details;
    details.Number = 53;
    details.Parameters = "<A.event>,<b>";
    details.CallStack = "frmEvents_Form_Load\r\nfrmEvents_InitForm\r\n";
    for (const bool collects : {true, false}) {
        details.CollectUserInput = collects;
        frmError dialog(details);
        dialog.show();
        dialog.activateWindow(); // or the first key goes to the window before it
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        auto* const button = dialog.findChild<QPushButton*>(QStringLiteral("cmdDetails"));
        auto* const note = dialog.findChild<QWidget*>(QStringLiteral("txtUserMessage"));
        const auto heightInTwips = [&] { return dialog.height() * 1440 / dialog.logicalDpiY(); };
        const int collapsed = heightInTwips();
        EXPECT_NEAR(collapsed, collects ? 2710 : 1650, 400) << "room for the text comes first";
        EXPECT_EQ(button->text(), QStringLiteral("&Details >>"));
        const QRect screen = dialog.screen()->geometry();
        const int limit = screen.top() + qRound(screen.height() * 0.96);
        dialog.move(0, limit - dialog.frameGeometry().height() - 1);
        button->click();
        EXPECT_NEAR(heightInTwips(), 5985, 15);
        EXPECT_EQ(button->text(), QStringLiteral("No &Details"));
        EXPECT_EQ(dialog.y() + dialog.frameGeometry().height(), limit);
        EXPECT_EQ(note->hasFocus(), collects);
        button->click();
        EXPECT_EQ(heightInTwips(), collapsed);
        const auto label = [&](const char* name) {
            return dialog.findChild<QLabel*>(QLatin1String(name))->text();
        };
        EXPECT_EQ(label("lblErrNum") + label("lblPassedParameters"), QStringLiteral("53<A.event>,<b>"));
        EXPECT_EQ(label("lblCallStack"), QStringLiteral("frmEvents_Form_Load\nfrmEvents_InitForm"));
        if (collects) {
            QTest::keyClicks(note, QStringLiteral("I \"clicked\""));
            QTest::keyClick(note, Qt::Key_Return);
        }
        dialog.close();
        EXPECT_EQ(dialog.UserMessage(), collects ? "I \"clicked\"\r\n" : "");
    }
}

TEST(ErrorDialog, SaysWithoutDetailsWhatThePersonCanMend) {
    for (const std::int32_t number : {70, 75, 61, 6}) {
        ErrorDetails details;
        details.Number = number;
        details.Description = "A.event: Permission denied";
        frmError dialog(details);
        const auto* reason = dialog.findChild<QLabel*>(QStringLiteral("lblReason"));
        EXPECT_EQ(reason->isHidden(), number == 6);
        EXPECT_EQ(reason->text(), QStringLiteral("A.event: Permission denied"));
    }
}

} // namespace
} // namespace velmora
