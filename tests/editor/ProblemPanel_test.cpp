// The dock that lists what is wrong: what it shows, where it leads, what it hides and puts right.
#include "editor/Editors.h"
#include "editor/FieldMark.h"
#include "sbmodules/frmSBModules.h"

#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QTreeView>
#include <regex>

namespace velmora {
namespace {

using ::testing::Contains;

class ProblemPanelTest : public EditorTest {
  protected:
    /// Cherry has no text, and Banana a line that the game does not know.
    void Start() {
        Put("A", Block("Apple") + Block("Cherry", editor.LongTexts[0].Key, ""));
        Put("B", ReplaceAll(Block("Banana"), std::string(editor.Records->End),
                            "Odd 1\r\n" + std::string(editor.Records->End)));
        EditorTest::Start();
        Get<QDockWidget>("dckProblems")->show();
        Settle();
    }
    void Settle() {
        EXPECT_TRUE(QTest::qWaitFor([this] { return Label().find("checking") == std::string::npos; }));
    }
    std::string Label() { return Text("lblProblemCount"); }
    QTreeView& Tree() { return *Get<QTreeView>("tvwProblems"); }
    Strings Rows(const QModelIndex& above = {}) {
        Strings rows;
        const QAbstractItemModel& model = *Tree().model();
        for (int row = 0; row < model.rowCount(above); ++row) {
            const QModelIndex index = model.index(row, 0, above);
            rows.push_back(FromQt(index.data(Qt::AccessibleTextRole).toString()));
            const Strings below = Rows(index);
            rows.insert(rows.end(), below.begin(), below.end());
        }
        return rows;
    }
    std::string Current() {
        return FromQt(Tree().currentIndex().siblingAtColumn(0).data(Qt::AccessibleTextRole).toString());
    }
    void GroupBy(int grouping) { Get<QComboBox>("cboGroupBy")->setCurrentIndex(grouping); }
    QWidget* Marked() {
        const auto marks = window->findChildren<FieldMark*>();
        return marks.size() == 1 ? window->Fields().ControlOf(textKey) : nullptr;
    }
    void Enter() { QTest::keyClick(&Tree(), Qt::Key_Return); }

    const std::string textKey = editor.LongTexts[0].Key;
    const std::string odd = "Unrecognized token! a(0) = Odd, sValue = 1, File = " + FileName("B");
    const std::string oddRow = "warning, unrecognized-token, Banana, " + odd;
    const std::string lacking =
        events
            ? "no-description, Cherry, Description, No Description text set, please specify a Description."
            : "no-question, Cherry, Question, No Question text set, please specify the question before the "
              "UP High Council.";
    const std::string cherryRow = "error, " + lacking;
};

TEST_P(ProblemPanelTest, LeadsToEachProblemAndIntoItsField) {
    Start();
    EXPECT_THAT(Rows(), ElementsAre(FileName("A") + " (1)", cherryRow, FileName("B") + " (1)", oddRow));
    EXPECT_EQ(Label(), "1 error, 1 warning");
    Get<QDockWidget>("dckProblems")->hide();
    Pick("mnuNextProblem");
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    EXPECT_EQ(Marked(), Get<QWidget>(textField));
    Pick("mnuNextProblem");
    EXPECT_EQ(Shown(), "Banana, 3 of 3, ");
    Pick("mnuNextProblem");
    EXPECT_EQ(Current(), cherryRow);
    Pick("mnuPreviousProblem");
    EXPECT_EQ(Current(), oddRow);
    QTest::keyClick(window.get(), Qt::Key_F4);
    QTest::keyClick(window.get(), Qt::Key_Return);
    EXPECT_EQ(Text("lblEditStatus"), "READY FOR EDITS");
    EXPECT_TRUE(Get<QWidget>(textField)->hasFocus());
    EXPECT_FALSE(Marked());
    Pick("mnuNextProblem");
    EXPECT_EQ(Text("lblEditStatus"), "Commit or discard first");
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    Pick("mnuDiscardChanges");
    Get<QDockWidget>("dckProblems")->show();
    Tree().setFocus();
    Enter();
    EXPECT_TRUE(Marked());
    Enter();
    EXPECT_TRUE(Get<QWidget>(textField)->hasFocus());
}

TEST_P(ProblemPanelTest, FollowsWhatIsTypedAndCommitted) {
    Start();
    GroupBy(2);
    Pick("mnuNextProblem"); // what loading told comes first
    Pick("mnuNextProblem");
    const std::string typed = "error, not committed, " + lacking;
    Pick(editItem);
    EXPECT_THAT(Rows(), ElementsAre(oddRow, typed));
    EXPECT_EQ(Current(), typed);
    Type(textField, QStringLiteral("Something"));
    EXPECT_TRUE(QTest::qWaitFor([this] { return Rows() == Strings{oddRow}; }));
    Pick("mnuDiscardChanges");
    EXPECT_THAT(Rows(), ElementsAre(oddRow, cherryRow));
    Commit("Something");
    EXPECT_THAT(Rows(), ElementsAre(oddRow));
    window->Changes().Undo();
    EXPECT_THAT(Rows(), ElementsAre(oddRow, cherryRow));
    GroupBy(1);
    Get<QLineEdit>("txtProblemFilter")->setText(QStringLiteral("CHERRY error"));
    EXPECT_THAT(Rows(), ElementsAre(::testing::EndsWith("(1)"), cherryRow));
    EXPECT_EQ(Label(), "1 error, 1 filtered out");
    Pick("mnuNextProblem");
    Pick("mnuSortAlphabetically");
    window->Changes().Redo();
    window->Changes().Undo();
    EXPECT_THAT(Rows(), ElementsAre(::testing::EndsWith("(1)"), cherryRow));
    Pick("mnuNextProblem");
    EXPECT_EQ(Shown(), "Cherry, 3 of 3, ");
}

TEST_P(ProblemPanelTest, HidesWithoutForgetting) {
    Start();
    Pick("mnuNextProblem");
    Pick("mnuHideProblem");
    EXPECT_THAT(Rows(), ElementsAre(FileName("B") + " (1)", oddRow));
    EXPECT_THAT(Label(), "1 warning, 1 hidden, <a href=\"hidden\">show</a>");
    EXPECT_THAT(temp.Read("Game/velwriter.ignore"),
                StartsWith("rule:no-" + std::string(events ? "description" : "question") +
                           " record:Cherry field:" + textKey + "  # No "));
    Pick("mnuNextProblem");
    Pick("mnuHideRuleInFile");
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_FALSE(Enabled("mnuNextProblem"));
    emit Get<QLabel>("lblProblemCount")->linkActivated({});
    EXPECT_THAT(Rows(), Contains("error, hidden, " + lacking));
    Pick("mnuNextProblem");
    EXPECT_FALSE(Enabled("mnuHideRule"));
    Pick("mnuShowProblemAgain");
    EXPECT_THAT(Label(), StartsWith("1 error, 1 warning, 1 hidden"));
    temp.Write("Game/velwriter.ignore", "what?\r\n");
    Pick("mnuReadAgain");
    Settle();
    EXPECT_EQ(Label(), "1 error, 2 warnings");
    EXPECT_THAT(Rows(), Contains(StartsWith("warning, broken-ignore-line, This line hides nothing")));
}

TEST_P(ProblemPanelTest, PutsRightWhatHasOneAnswer) {
    const std::string sub = events ? "DescStr0" : "QuestionStr0";
    const auto with = [&](const char* name, const char* text, const char* box) {
        return std::regex_replace(Block(name, textKey, text), std::regex(sub + box + "( +)0"),
                                  sub + box + "$017");
    };
    Put("A", with("XUp", "Hm, %s", "2") + with("XDrop", "Hm", "3") + with("XTwo", "%s and %s", "2"));
    EditorTest::Start();
    Settle();
    const auto fixed = [&](const char* name) {
        Get<QLineEdit>("txtProblemFilter")->setText(QLatin1String(name) + QStringLiteral(" wild-card"));
        Tree().setCurrentIndex({});
        Pick("mnuNextProblem");
        if (!Enabled("mnuQuickFix"))
            return std::string("none");
        const std::string what = Text(nameBox) + ": " + FromQt(Get<QAction>("mnuQuickFix")->text());
        Pick("mnuQuickFix");
        return what + ", " + Label().substr(0, 11);
    };
    EXPECT_EQ(fixed("XUp"), "XUp: Move the substitution up, No problems");
    EXPECT_EQ(Text("lblStatus"), edited);
    EXPECT_EQ(fixed("XDrop"), "XDrop: Drop the substitution without wild card, No problems");
    EXPECT_EQ(fixed("XTwo"), "none");
    EXPECT_EQ(window->Changes().StepsDone(), 2u);
    window->Changes().Undo();
    EXPECT_EQ(fixed("XDrop"), "XDrop: Drop the substitution without wild card, No problems");
}

INSTANTIATE_TEST_SUITE_P(Editors, ProblemPanelTest, EveryEditor, ::testing::PrintToStringParamName());

class ModuleProblemsTest : public WindowTest {};

TEST_F(ModuleProblemsTest, AreThoseOfLoading) {
    temp.Write("Game/Data/A.SBModule", "SBMOD 1 Gun\r\nType 1\r\nENDSBMOD\r\nSBMOD 1 Shop\r\nENDSBMOD\r\n");
    Open<frmSBModules>();
    EXPECT_EQ(Text("lblProblemCount"), "1 warning");
    for (const char* control : {"tvwProblems", "cboGroupBy", "txtProblemFilter"}) {
        EXPECT_FALSE(Get<QWidget>(control)->accessibleName().isEmpty());
        EXPECT_TRUE(Get<QWidget>(control)->focusPolicy() & Qt::TabFocus);
    }
    EXPECT_FALSE(Get<QTreeView>("tvwProblems")->tabKeyNavigation());
    EXPECT_FALSE(Enabled("mnuQuickFix"));
}

} // namespace
} // namespace velmora
