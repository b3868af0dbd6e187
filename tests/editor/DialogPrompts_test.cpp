#include "editor/DialogPrompts.h"

#include "editor/ModalAnswers.h"
#include "editor/QtText.h"

#include <QCheckBox>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextEdit>

namespace velmora {
namespace {

class DialogPromptsTest : public testing::Test {
  protected:
    DialogPrompts prompts;
    ModalAnswers modals;
};

void ExpectWholeText(QMessageBox& box) {
    const auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    const QSize whole =
        label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
    EXPECT_EQ(label->size().expandedTo(whole), label->size());
    box.reject();
}

TEST_F(DialogPromptsTest, ShowEveryWordOfATextOfAnyLength) {
    const std::string longText = "Unable to access the Velmora installation location from the registry, you "
                                 "will need to enter the path manually.";
    for (const std::string& text : {std::string("No events."), longText, longText + "\r\r" + longText}) {
        SCOPED_TRACE(text);
        for (int box = 0; box < 3; ++box)
            modals.Expect<QMessageBox>(ExpectWholeText);
        prompts.Message(text, Icon::None, {});
        prompts.MessageInSeries(text, Icon::Critical, {});
        prompts.Ask({text, true});
    }
}

TEST_F(DialogPromptsTest, BreakTheLinesOfAMessage) {
    modals.Expect<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), QStringLiteral("one\n\ntwo <b>"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.windowTitle(), QStringLiteral("VelmoraWriter"));
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        box.button(QMessageBox::Ok)->click();
    });
    prompts.Message("one\r\rtwo <b>", Icon::Exclamation, {});
}

TEST_F(DialogPromptsTest, AskWithTheDefaultToldAndDetailsOneUnderTheOther) {
    for (const bool defaultNo : {false, true}) {
        modals.Expect<QMessageBox>([defaultNo](QMessageBox& box) {
            EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
            EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
            EXPECT_EQ(box.defaultButton(), box.button(defaultNo ? QMessageBox::No : QMessageBox::Yes));
            for (QAbstractButton* button : box.buttons())
                if (button->text() == QStringLiteral("Show Details...")) {
                    EXPECT_FALSE(defaultNo) << "open from the start";
                    button->click();
                }
            auto* details = box.findChild<QTextEdit*>();
            ASSERT_TRUE(details->isVisible());
            EXPECT_EQ(details->toPlainText().count(QLatin1Char('\n')), 1);
            EXPECT_EQ(details->horizontalScrollBar()->maximum(), 0);
            const QFontMetrics font(details->font());
            EXPECT_EQ(font.horizontalAdvance(QStringLiteral("- iii")),
                      font.horizontalAdvance(QStringLiteral("+ www")));
            box.defaultButton()->click();
        });
        const std::string details = "- " + std::string(70, 'i') + "\r+ " + std::string(70, 'w');
        EXPECT_NE(prompts.Ask({"Proceed?", defaultNo, details, defaultNo}), defaultNo);
    }
}

TEST_F(DialogPromptsTest, NeverOutgrowTheScreen) {
    std::string lines;
    for (int line = 0; line < 200; ++line)
        lines += "Illegal character found\r";
    for (const std::string& text : {lines, std::string(1 << 20, 'x'), std::string(400, 'x') + lines}) {
        modals.Expect<QMessageBox>([&text](QMessageBox& box) {
            EXPECT_LE(box.height(), box.screen()->availableGeometry().height());
            EXPECT_LE(box.width(), box.screen()->availableGeometry().width());
            const QString shown = box.findChild<QPlainTextEdit*>(QStringLiteral("txtLines"))->toPlainText();
            EXPECT_TRUE(shown.startsWith(LinesToQt(text.substr(0, 5000))));
            EXPECT_EQ(shown.endsWith(QStringLiteral(" more characters)")), text.size() > 10'000);
            box.reject();
        });
        prompts.Ask({text, true, lines, true});
    }
}

TEST_F(DialogPromptsTest, NeverOutgrowTheScreenForALongName) {
    modals.Expect<QInputDialog>([](QInputDialog& box) {
        EXPECT_LE(box.width(), box.screen()->availableGeometry().width());
        box.reject();
    });
    prompts.Input("Rename the file " + std::string(250, 'y') + " to:");
}

TEST_F(DialogPromptsTest, RefuseWhatTheCodePageLacksInAnAnswer) {
    modals.Expect<QInputDialog>([](QInputDialog& box) {
        box.setTextValue(QStringLiteral("a李e\u0301"));
        box.accept();
    });
    modals.Expect<QMessageBox>([](QMessageBox& box) {
        EXPECT_TRUE(box.text().contains(QStringLiteral("‘李’"))) << box.text().toStdString();
        box.accept();
    });
    modals.Expect<QInputDialog>([](QInputDialog& box) { box.accept(); });
    EXPECT_EQ(prompts.Input("Name"), "a\xE9");
}

TEST_F(DialogPromptsTest, BreakTheLinesOfAnInputsPrompt) {
    for (const bool accepted : {true, false}) {
        modals.Expect<QInputDialog>([accepted](QInputDialog& box) {
            EXPECT_EQ(box.labelText(), QStringLiteral("Rename <b>a\n\nto"));
            EXPECT_EQ(box.findChild<QLabel*>()->textFormat(), Qt::PlainText);
            EXPECT_EQ(box.windowTitle(), QStringLiteral("VelmoraWriter"));
            box.setTextValue(QStringLiteral("Story"));
            accepted ? box.accept() : box.reject();
        });
        EXPECT_EQ(prompts.Input("Rename <b>a\r\rto"), accepted ? "Story" : "");
    }
}

TEST_F(DialogPromptsTest, OfferTheRestOfASeriesAsOneList) {
    for (const bool taken : {true, false}) {
        modals.Expect<QMessageBox>([taken](QMessageBox& box) {
            EXPECT_EQ(box.detailedText(), QStringLiteral("A.event"));
            EXPECT_EQ(box.checkBox()->text(), QStringLiteral("Show the remaining messages as one list"));
            box.checkBox()->setChecked(taken);
            box.accept();
        });
        EXPECT_EQ(prompts.MessageInSeries("text", Icon::None, "A.event"), taken);
    }
    modals.Expect<QDialog>([](QDialog& viewer) {
        EXPECT_EQ(viewer.findChild<QPlainTextEdit*>()->toPlainText(), QStringLiteral("a\nb\n\nc"));
        viewer.close();
    });
    prompts.MessageList({"a\rb", "c"});
}

} // namespace
} // namespace velmora
