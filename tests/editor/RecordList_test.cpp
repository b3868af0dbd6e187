// The dock that lists the records: what it shows, finds, and leads to.
#include "editor/Editors.h"
#include "editor/RecordList.h"
#include "sbmodules/frmSBModules.h"

#include <QAccessible>
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QTreeView>

namespace velmora {
namespace {

class RecordListTest : public EditorTest {
  protected:
    void Start() {
        Put("A", Block("Apple", editor.LongTexts[0].Key, "a red fruit") + Block("Cherry"));
        EditorTest::Start();
        Pick("mnuFilterRecords");
    }
    QTreeView& Tree() { return *Get<QTreeView>("tvwRecords"); }
    std::string Cell(int row, int column) {
        return FromQt(Tree().model()->index(row, column).data().toString());
    }
    std::string Spoken(int row) {
        return FromQt(Tree().model()->index(row, 0).data(Qt::AccessibleTextRole).toString());
    }
    Strings Rows() {
        Strings rows;
        for (int row = 0; row < Tree().model()->rowCount(); ++row)
            rows.push_back(Spoken(row));
        return rows;
    }
    void Filter(const char* text) {
        Type("txtFilter", QString::fromLatin1(text));
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return Text("lblFilterCount").find("...") == std::string::npos; }));
    }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }
    void Select(std::initializer_list<int> rows) {
        Tree().clearSelection();
        for (const int row : rows)
            Tree().selectionModel()->select(Tree().model()->index(row, 0),
                                            QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    std::string Current() { return Spoken(Tree().currentIndex().row()); }
};

TEST_P(RecordListTest, ListsTheRecordsAndTheirStates) {
    Start();
    EXPECT_THAT(Rows(), ElementsAre("Apple, on show", "Cherry", "Banana"));
    EXPECT_EQ(Text("lblFilterCount"), "3 records");
    EXPECT_EQ(Text("lblUnwritten"), "Everything is written");
    EXPECT_EQ((Strings{Cell(2, 1), Cell(2, 3), Cell(2, 4)}),
              (Strings{"Banana", FileName("B"), events ? "Colonial" : "Anomaly ownership"}));
    Commit("another");
    EXPECT_EQ(Cell(0, 0), "* edited");
    EXPECT_EQ(Spoken(0), "edited, Apple, on show");
    EXPECT_EQ(Text("lblUnwritten"), "1 record in 1 file not yet written");
    prompts.ExpectInput("", "Date");
    Pick("mnuAddNew");
    EXPECT_THAT(Rows().back(), StartsWith("new, Date, "));
    Pick("mnuDiscardChanges");
    EXPECT_THAT(Rows(), ElementsAre("edited, Apple, on show", "Cherry", "Banana"));
    Pick("mnuSortAlphabetically");
    EXPECT_THAT(Rows(), ElementsAre("edited, Apple, on show", "Banana", "Cherry"));
    prompts.ExpectAsk("", true);
    QTest::mouseClick(Get<QWidget>("lblUnwritten"), Qt::LeftButton);
    EXPECT_THAT(Rows(), ElementsAre("Apple, on show", "Cherry", "Banana")) << "written and read again";
    EXPECT_EQ(Text("lblUnwritten"), "Everything is written");
}

TEST_P(RecordListTest, ShowsWhatTheFilterFinds) {
    Start();
    Filter("CHERRY");
    EXPECT_EQ(Text("lblFilterCount"), "1 of 3");
    EXPECT_THAT(Rows(), ElementsAre("Apple, on show, does not match", "Cherry"));
    EXPECT_EQ(Current(), "Cherry");
    EXPECT_EQ(Text(nameBox), "Apple") << "looking shows nothing";
    Filter("an");
    EXPECT_EQ(Current(), "Banana");
    Filter("-fruit");
    EXPECT_EQ(Current(), "Cherry") << "the first, for nobody chose Banana";
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    EXPECT_THAT(Rows(), ElementsAre("Cherry, on show", "Banana"));
    Press(Qt::Key_Escape);
    EXPECT_EQ(Text("lblFilterCount"), "3 records");
    EXPECT_EQ(Current(), "Cherry, on show");
    Press(Qt::Key_Escape);
    EXPECT_FALSE(Get<QWidget>("dckRecords")->isAncestorOf(QApplication::focusWidget()));
    // A commit moves records into the result and out of it.
    Pick("mnuFilterRecords");
    Filter("-fruit");
    EXPECT_THAT(Rows(), ElementsAre("Cherry, on show", "Banana"));
    Commit("no fruit");
    EXPECT_THAT(Rows(), ElementsAre("edited, Cherry, on show, does not match", "Banana"));
    Filter("state:edited");
    EXPECT_THAT(Rows(), ElementsAre("edited, Cherry, on show"));
}

TEST_P(RecordListTest, GoesThroughTheListWithoutShowing) {
    Start();
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    EXPECT_EQ(Current(), "Banana");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Enter("tvwRecords");
    Press(Qt::Key_Up);
    Press(Qt::Key_Enter);
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    const QRect place = Tree().visualRect(Tree().model()->index(2, 1));
    QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    Press(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Press(Qt::Key_Up, Qt::ControlModifier);
    Commit("another");
    Pick("actPreviousInList");
    auto* list = window->findChild<RecordList*>();
    list->SetRules([this](const Record& record) {
        return std::vector<std::string_view>(window->Records().NameOf(record) == "Apple" ? 2 : 0, "no-title");
    });
    list->RulesChanged();
    EXPECT_EQ(Spoken(0), "Apple, 2 problems");
    EXPECT_EQ(Cell(0, 5), "2");
    for (const char* next : {"Banana", "Apple", "Banana"}) {
        Pick("actNextOpen");
        EXPECT_EQ(Text(nameBox), next);
    }
    Pick(editItem);
    Pick("actPreviousOpen");
    EXPECT_EQ(Text(nameBox), "Banana");
    EXPECT_EQ(Text("lblEditStatus"), "Commit or discard first");
    EXPECT_TRUE(Enabled("txtFilter") && Enabled("tvwRecords"));
}

TEST_P(RecordListTest, ChangesSeveralRecordsInOneStep) {
    Start();
    Select({0, 2});
    prompts.ExpectAsk("Mark 2 records for deletion?", true);
    Pick("mnuDeleteSelected");
    EXPECT_THAT(Rows(), ElementsAre("deleted, Apple, on show", "Cherry", "deleted, Banana"));
    EXPECT_EQ(Text("lblStatus"), "MARKED FOR DELETION");
    EXPECT_EQ(Text("lblUnwritten"), "2 records in 2 files not yet written");
    EXPECT_EQ(Get<QAction>("mnuDeleteSelected")->text(), QStringLiteral("Un-&Delete"));
    Pick("mnuDeleteSelected");
    Select({0, 1});
    prompts.ExpectInput("Please enter the name of the file to move 2 records to.", "B");
    Pick("mnuMoveSelected");
    EXPECT_EQ(Text("lblUnwritten"), "3 records in 2 files not yet written");
    EXPECT_EQ((Strings{Cell(0, 3), Cell(1, 3)}), (Strings{FileName("B"), FileName("B")}));
    EXPECT_EQ(window->Changes().StepsDone(), 3u);
    Pick("mnuCopyAsCsv");
    const QStringList lines = QApplication::clipboard()->text().split(QLatin1Char('\n'));
    EXPECT_EQ(lines.size(), 4);
    EXPECT_TRUE(lines[0].startsWith(ToQt(editor.Records->Name.Property)) &&
                lines[1].startsWith(QLatin1String("Apple,")) && lines[2].endsWith(ToQt("," + FileName("B"))));
    Write();
    EXPECT_THAT(OnDisk(FileName("B")), HasSubstr("Cherry"));
    Pick(editItem);
    EXPECT_FALSE(Enabled("mnuDeleteSelected") || Enabled("mnuMoveSelected"));
}

TEST_P(RecordListTest, KeepsItsColumns) {
    Start();
    auto* columns = Get<QMenu>("mnuColumns");
    columns->popup({});
    EXPECT_TRUE(columns->actions()[5]->isChecked() && !columns->actions()[8]->isChecked());
    columns->actions()[8]->trigger();
    columns->close();
    window->close();
    EXPECT_EQ(Rows(), Strings{});
    EditorTest::Start();
    EXPECT_FALSE(Tree().header()->isSectionHidden(8));
    EXPECT_TRUE(Tree().header()->isSectionHidden(9));
}

INSTANTIATE_TEST_SUITE_P(Editors, RecordListTest, EveryEditor, ::testing::PrintToStringParamName());

class ModuleListTest : public WindowTest {};

TEST_F(ModuleListTest, ListsModulesWithoutStates) {
    temp.Write("Game/Data/A.SBModule", "SBMOD 1 Gun\r\nName \"Big Gun\"\r\nType 1\r\nENDSBMOD\r\n"
                                       "SBMOD 2 Shop\r\nName Shop\r\nType 2\r\nENDSBMOD\r\n");
    Open<frmSBModules>();
    Pick("mnuFilterRecords");
    Type("txtFilter", QStringLiteral("type:economic"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_EQ(Text("lblWhereWeAt"), "2 of 2");
    EXPECT_EQ(Get<QTreeView>("tvwRecords")->model()->index(0, 0).data().toString(), QStringLiteral("Shop"));
    EXPECT_FALSE(window->findChild<QWidget*>(QStringLiteral("lblUnwritten")));
}

} // namespace
} // namespace velmora
