// The dock that counts what there is, and lists the records of a bar.
#include "editor/Editors.h"
#include "editor/StatisticsPanel.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QTreeView>

namespace velmora {
namespace {

class StatisticsPanelTest : public EditorTest {
  protected:
    StatisticsPanel& Panel() { return *Get<StatisticsPanel>("tvwStatistics"); }
    void Settle() {
        EXPECT_TRUE(QTest::qWaitFor([this] {
            return Text("lblProblemCount").find("checking") == std::string::npos && Panel().Complete() &&
                   Panel().topLevelItemCount() > 0;
        }));
    }
    QTreeWidgetItem* Row(const std::string& accessibleText) {
        for (QTreeWidgetItemIterator at(&Panel()); *at; ++at)
            if (FromQt((*at)->data(0, Qt::AccessibleTextRole).toString()) == accessibleText)
                return *at;
        return nullptr;
    }
    void Choose(const std::string& accessibleText) {
        QTreeWidgetItem* row = Row(accessibleText);
        ASSERT_NE(row, nullptr) << accessibleText;
        Panel().scrollToItem(row);
        QTest::mouseClick(Panel().viewport(), Qt::LeftButton, {}, Panel().visualItemRect(row).center());
    }
    Strings Listed() {
        const QAbstractItemModel& model = *Get<QTreeView>("tvwRecords")->model();
        Strings names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.push_back(FromQt(model.index(row, 1).data().toString()));
        return names;
    }
};

TEST_P(StatisticsPanelTest, CountsAndListsTheRecordsOfABar) {
    Put("A", Block("Apple") + Block("Cherry", editor.LongTexts[0].Key, ""));
    Start();
    Get<QDockWidget>("dckStatistics")->show();
    Settle();
    EXPECT_NE(Row("Files: " + FileName("B") + ", 1"), nullptr);
    Choose("Files: " + FileName("A") + ", 2");
    EXPECT_EQ(FromQt(Get<QLineEdit>("txtFilter")->text()), "file:\"" + FileName("A") + "\"");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Listed() == Strings({"Apple", "Cherry"}); }));
    const std::string rule = events ? "no-description" : "no-question";
    Choose("Problems by rule: " + rule + ", 1");
    EXPECT_TRUE(QTest::qWaitFor([this] { return Listed().size() == 2; })) << "Cherry, and what is on show";
    for (QTreeWidgetItemIterator at(&Panel()); events && *at; ++at) {
        const std::string shown = FromQt((*at)->data(0, Qt::AccessibleTextRole).toString());
        if (!shown.starts_with("Morality weights: ") && !shown.starts_with("Attributes of "))
            continue;
        emit Panel().itemActivated(*at, 0);
        const std::size_t count = std::stoul(shown.substr(shown.rfind(' ')));
        EXPECT_TRUE(QTest::qWaitFor([&] { return Listed().size() == std::max<std::size_t>(count, 1); }))
            << shown << ", but what is on show is always listed";
    }
    Get<QLineEdit>("txtFilter")->clear();
    Click("cmdForward");
    Commit("a text");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Row("Problems by rule: " + rule + ", 1"); }))
        << "it follows the library";
    Write();
    Settle();
    window->close();
    EXPECT_EQ(Panel().topLevelItemCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(Editors, StatisticsPanelTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
