#include "editor/ChoiceBox.h"

#include "editor/QtText.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace velmora {

namespace {

using Names = std::vector<std::string>;

class ChoiceBoxTest : public testing::Test {
  protected:
    void SetUp() override {
        for (int i = 0; i < 200; ++i)
            longList.push_back("Event" + std::to_string(i));
        longList.emplace_back("PlagueOnTheStation");
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(box);
        layout->addWidget(other);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        box->setFocus();
    }

    void TypeIntoSearch(const char* text) {
        box->lineEdit()->selectAll();
        QTest::keyClicks(box, QString::fromLatin1(text));
    }

    Names longList;
    QWidget window;
    ChoiceBox* box = new ChoiceBox;
    QLineEdit* other = new QLineEdit;
};

TEST_F(ChoiceBoxTest, FillsWithoutASignalKeepsItsSizeAndLeavesTheWheelToTheForm) {
    const QSize size = box->sizeHint();
    const QSignalSpy changed(box, &QComboBox::currentIndexChanged);
    const QSignalSpy texts(box, &QComboBox::currentTextChanged);
    const std::tuple<Names, int, std::string> cases[]{
        {{"Nothing", "El Ni\xF1o", "\x80uro"}, 1, "El Ni\xF1o"},
        {{"\x80uro", "b"}, 0, "\x80uro"},
        {longList, 7, "Event7"},
        {longList, -1, ""},
        {{}, -1, ""},
        {{"a", "b"}, -1, ""},
        {{std::string(200, 'W'), "b"}, 0, std::string(200, 'W')},
    };
    for (const auto& [entries, selected, chosen] : cases) {
        box->SetEntries(entries, selected);
        QWheelEvent wheel(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        wheel.accept();
        QApplication::sendEvent(box, &wheel);
        EXPECT_FALSE(wheel.isAccepted());
        EXPECT_EQ(box->Chosen(), chosen);
        EXPECT_EQ(box->currentText(), ToQt(chosen));
        EXPECT_EQ(box->sizeHint(), size) << chosen;
        EXPECT_EQ(box->isEditable(), entries == longList) << chosen;
    }
    EXPECT_EQ(changed.count() + texts.count(), 0);
    box->setCurrentIndex(1);
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(box->Chosen(), "b");
}

TEST_F(ChoiceBoxTest, SearchesALongListByAnyPartOfAnEntryAndShowsTheChosenOneOnceItIsLeft) {
    box->SetEntries(longList, 3);
    TypeIntoSearch("onthe");
    QAbstractItemView* offered = box->completer()->popup();
    ASSERT_TRUE(offered->isVisible());
    ASSERT_EQ(offered->model()->rowCount(), 1);
    EXPECT_EQ(box->Chosen(), "Event3") << "typing alone chooses nothing";
    const QSignalSpy activated(box, &QComboBox::activated);
    QTest::keyClick(offered, Qt::Key_Down);
    QTest::keyClick(offered, Qt::Key_Return);
    EXPECT_EQ(box->Chosen(), "PlagueOnTheStation");
    EXPECT_EQ(activated.count(), 1);

    const QSignalSpy changed(box, &QComboBox::currentIndexChanged);
    TypeIntoSearch("Event42");
    EXPECT_EQ(box->Chosen(), "Event42");
    EXPECT_EQ(changed.count(), 2) << "Event4 on the way";
    box->setCurrentText(QStringLiteral("Event17"));
    EXPECT_EQ(box->Chosen(), "Event17") << "set by the program";

    for (const auto& [typed, chosen] : {std::pair{"nosuchentry", "Event17"},
                                        {" ", "Event17"},
                                        {"onthe", "PlagueOnTheStation"},
                                        {"vent17", "PlagueOnTheStation"},
                                        {"EVENT1", "Event1"},
                                        {"plagueonthestation", "PlagueOnTheStation"}}) {
        box->setFocus(Qt::OtherFocusReason);
        QTest::keyClicks(box, QString::fromLatin1(typed));
        QTest::keyClick(offered->isVisible() ? static_cast<QWidget*>(offered) : box, Qt::Key_Tab);
        EXPECT_TRUE(other->hasFocus());
        EXPECT_EQ(box->Chosen(), chosen);
        EXPECT_EQ(FromQt(box->currentText()), chosen);
        EXPECT_EQ(box->count(), 201) << "nothing was added";
    }
}

} // namespace

} // namespace velmora
