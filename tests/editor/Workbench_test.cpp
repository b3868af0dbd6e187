// What stands around the forms.
#include "editor/Editors.h"

#include <QDockWidget>
#include <QMenuBar>
#include <QToolBar>
#include <set>

namespace velmora {
namespace {

class WorkbenchTest : public EditorTest {
  protected:
    void Press(Qt::MouseButton button) { QTest::mouseClick(window.get(), button); }
};

TEST_P(WorkbenchTest, LeadsBackToRecordsShownBefore) {
    Start();
    Click("cmdForward");
    Click("cmdForward");
    Press(Qt::BackButton);
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    Pick("mnuGoBack");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    EXPECT_FALSE(Enabled("mnuGoBack"));
    Press(Qt::ForwardButton);
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    Pick(editItem);
    Pick("mnuGoForward");
    EXPECT_EQ(Text("lblEditStatus"), "Commit or discard first");
    Pick("mnuCommitChanges");
    Write();
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
    Pick("mnuGoToLastEdited");
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
}

TEST_P(WorkbenchTest, KeepsItsLayoutBesideTheSettings) {
    Start();
    const auto menus = window->menuBar()->actions();
    EXPECT_EQ(menus[menus.size() - 2]->text(), QStringLiteral("&View"));
    EXPECT_TRUE(window->close());
    EXPECT_THAT(Files::ListFiles(temp / "Home"), IsEmpty()) << "nothing was changed";
    const bool shown = Get<QToolBar>("tbrMain")->isVisibleTo(window.get());
    const auto restart = [this] {
        Start();
        return Get<QToolBar>("tbrMain")->isVisible();
    };
    EXPECT_EQ(restart(), shown);
    Pick("mnuShowToolbar");
    window->close();
    EXPECT_EQ(restart(), !shown);
    Pick("mnuResetLayout");
    EXPECT_EQ(Get<QToolBar>("tbrMain")->isVisible(), shown);
    for (const char* broken : {"[General", "[frmEvents]\nstate=@ByteArray(x)\n[frmUPIssues]\nstate=7\n"}) {
        temp.Write("Home/workbench.ini", broken);
        EXPECT_EQ(restart(), shown);
    }
}

TEST_P(WorkbenchTest, TabPassesOverPanelsBehindOthers) {
    Start();
    std::set<const QDockWidget*> reached;
    for (const char* dock : {"dckProblems", "dckReplace", "dckRecords"})
        Get<QDockWidget>(dock)->show();
    window->tabifyDockWidget(Get<QDockWidget>("dckProblems"), Get<QDockWidget>("dckReplace"));
    Get<QDockWidget>("dckProblems")->raise();
    Enter("txtFilter");
    do {
        for (const QWidget* at = window->focusWidget(); at; at = at->parentWidget())
            if (const auto* dock = qobject_cast<const QDockWidget*>(at))
                reached.insert(dock);
        QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
    } while (window->focusWidget() != Get<QWidget>("txtFilter"));
    EXPECT_THAT(reached, ::testing::UnorderedElementsAre(Get<QDockWidget>("dckRecords"),
                                                         Get<QDockWidget>("dckProblems")));
}

INSTANTIATE_TEST_SUITE_P(Editors, WorkbenchTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
