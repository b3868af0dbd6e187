#include "editor/DialogPrompts.h"

#include <QApplication>
#include <QFont>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace velmora {

namespace {

const std::string ShortText = "No events.";
const std::string LongText = "Unable to access the Velmora installation location from the registry, you will "
                             "need to enter the path manually.";
const std::string Reasons =
    "Failed validation!  Reasons: \r\r" + LongText + "\r" + LongText + "\r\r" + LongText;

/// Looks at the box that `show` opens, then answers it with Escape.
void InspectBox(const std::function<void()>& show, const std::function<void(QMessageBox&)>& inspect) {
    bool inspected = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        poll.stop();
        inspect(*box);
        inspected = true;
        box->reject();
    });
    poll.start(0);
    show();
    EXPECT_TRUE(inspected);
}

void ExpectWholeText(QMessageBox& box) {
    const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    ASSERT_TRUE(label);
    const QSize needed =
        label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
    EXPECT_GE(label->height(), needed.height());
    EXPECT_GE(label->width(), needed.width());
}

} // namespace

TEST(MessageSize, ShowsEveryWordOfATextOfAnyLength) {
    DialogPrompts prompts;
    const QFont usual = QApplication::font();
    for (const int size : {6, 9, 14}) {
        QFont font = usual;
        font.setPixelSize(size);
        QApplication::setFont(font);
        for (const std::string& text : {ShortText, LongText, Reasons}) {
            SCOPED_TRACE(std::to_string(size) + " pixels: " + text);
            InspectBox([&] { prompts.Message(text, Icon::None); }, ExpectWholeText);
            InspectBox([&] { prompts.MessageInSeries(text, Icon::Critical); }, ExpectWholeText);
            InspectBox([&] { prompts.Ask({text, true}); }, ExpectWholeText);
        }
    }
    QApplication::setFont(usual);
}

} // namespace velmora
