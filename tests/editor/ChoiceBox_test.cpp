#include "editor/ChoiceBox.h"

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

std::vector<std::string> LongList() {
    std::vector<std::string> names;
    for (int i = 0; i < 200; ++i)
        names.push_back("Event" + std::to_string(i));
    names.push_back("PlagueOnTheStation");
    return names;
}

class ChoiceBoxTest : public testing::Test {
  protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(box);
        layout->addWidget(other);
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        box->setFocus();
    }

    void TypeIntoSearch(const QString& text) {
        box->lineEdit()->selectAll();
        QTest::keyClicks(box, text);
    }

    QWidget window;
    ChoiceBox* box = new ChoiceBox;
    QLineEdit* other = new QLineEdit;
};

TEST_F(ChoiceBoxTest, ShowsAndGivesBackTheVeryBytes) {
    box->SetEntries({"Nothing", "El Ni\xF1o", "\x80uro"}, 1);
    EXPECT_EQ(box->currentText(), QStringLiteral("El Niño"));
    EXPECT_EQ(box->Chosen(), "El Ni\xF1o");
    box->setCurrentIndex(2);
    EXPECT_EQ(box->Chosen(), "\x80uro");
}

TEST_F(ChoiceBoxTest, FillsWithoutASignal) {
    const QSignalSpy changed(box, &QComboBox::currentIndexChanged);
    const QSignalSpy texts(box, &QComboBox::currentTextChanged);
    box->SetEntries({"a", "b"}, 1);
    box->SetEntries({"a", "b"}, 0);
    box->SetEntries(LongList(), 7);
    box->SetEntries({}, -1);
    EXPECT_EQ(changed.count() + texts.count(), 0);
    box->SetEntries({"a", "b"}, 0);
    box->setCurrentIndex(1);
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(ChoiceBoxTest, CanHoldNothingChosen) {
    for (const auto& entries : {std::vector<std::string>{}, {"a", "b"}, LongList()}) {
        box->SetEntries(entries, -1);
        EXPECT_EQ(box->Chosen(), "");
        EXPECT_EQ(box->currentText(), QString());
    }
}

TEST_F(ChoiceBoxTest, LeavesTheWheelToTheFormAround) {
    for (const bool searchable : {false, true}) {
        box->SetEntries(searchable ? LongList() : std::vector<std::string>{"a", "b", "c"}, 1);
        QWheelEvent wheel(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        wheel.accept();
        QApplication::sendEvent(box, &wheel);
        EXPECT_EQ(box->currentIndex(), 1);
        EXPECT_FALSE(wheel.isAccepted());
    }
}

TEST_F(ChoiceBoxTest, FindsAnEntryOfAShortListByItsFirstLetters) {
    box->SetEntries({"Nothing", "Player Name", "Planet Name", "Empire Name"}, 0);
    EXPECT_FALSE(box->isEditable());
    const QSignalSpy activated(box, &QComboBox::activated);
    QTest::keyClicks(box, QStringLiteral("plan"));
    EXPECT_EQ(box->Chosen(), "Planet Name");
    EXPECT_GE(activated.count(), 1);
}

TEST_F(ChoiceBoxTest, SearchesALongListByAnyPartOfAnEntry) {
    box->SetEntries(LongList(), 3);
    ASSERT_TRUE(box->isEditable());
    EXPECT_EQ(box->currentText(), QStringLiteral("Event3"));
    TypeIntoSearch(QStringLiteral("onthe"));
    QAbstractItemView* offered = box->completer()->popup();
    ASSERT_TRUE(offered->isVisible());
    ASSERT_EQ(offered->model()->rowCount(), 1);
    EXPECT_EQ(box->Chosen(), "Event3") << "typing alone chooses nothing";
    const QSignalSpy activated(box, &QComboBox::activated);
    QTest::keyClick(offered, Qt::Key_Down);
    QTest::keyClick(offered, Qt::Key_Return);
    EXPECT_EQ(box->Chosen(), "PlagueOnTheStation");
    EXPECT_EQ(activated.count(), 1);
}

TEST_F(ChoiceBoxTest, ChoosesAnEntryTypedWhole) {
    box->SetEntries(LongList(), 3);
    const QSignalSpy changed(box, &QComboBox::currentIndexChanged);
    TypeIntoSearch(QStringLiteral("Event42"));
    EXPECT_EQ(box->Chosen(), "Event42");
    EXPECT_EQ(changed.count(), 2) << "Event4 on the way";
    TypeIntoSearch(QStringLiteral("plagueonthestation"));
    box->completer()->popup()->hide();
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ(box->Chosen(), "PlagueOnTheStation") << "letter case does not matter";
    EXPECT_EQ(box->currentText(), QStringLiteral("PlagueOnTheStation"));
    box->setCurrentText(QStringLiteral("Event17"));
    EXPECT_EQ(box->Chosen(), "Event17") << "set by the program";
}

TEST_F(ChoiceBoxTest, ReturnsToTheChosenEntryWhenLeftWithAnythingElse) {
    box->SetEntries(LongList(), 3);
    for (const QString& typed : {QStringLiteral("nosuchentry"), QStringLiteral(" ")}) {
        box->setFocus();
        TypeIntoSearch(typed);
        box->completer()->popup()->hide();
        QTest::keyClick(box, Qt::Key_Tab);
        EXPECT_TRUE(other->hasFocus());
        EXPECT_EQ(box->Chosen(), "Event3");
        EXPECT_EQ(box->currentText(), QStringLiteral("Event3"));
        EXPECT_EQ(box->count(), 201) << "nothing was added";
    }
}

TEST_F(ChoiceBoxTest, KeepsItsSizeWhateverItHolds) {
    box->SetEntries({"a"}, 0);
    const QSize before = box->sizeHint();
    box->SetEntries({std::string(200, 'W')}, 0);
    EXPECT_EQ(box->sizeHint(), before);
}

} // namespace

} // namespace velmora
