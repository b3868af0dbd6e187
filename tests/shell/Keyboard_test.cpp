// Every window can be used by keyboard and screen reader: Tab reaches each control, and each has a name.
#include "editor/EditorFixture.h"
#include "editor/TextViewer.h"
#include "editor/frmZoomTo.h"
#include "events/frmEvents.h"
#include "sbmodules/frmSBModules.h"
#include "services/frmError.h"
#include "shell/frmOptions.h"
#include "upissues/frmUPIssues.h"

#include <set>

namespace velmora {
namespace {

class Keyboard : public WindowTest {
  protected:
    Keyboard() {
        temp.Write("Game/Data/A.event", "EVENT Raid\r\nTITLE Raid\r\nENDEVENT\r\n");
        const std::string issues = "Data/UP_Issues/Council.UPIssue";
        temp.Write("Game/" + issues, Files::ReadWhole(std::string(VELMORA_SAMPLE) + "/" + issues));
    }

    /// Presses Tab until the focus comes round; what it never reached, and what it reached without a name.
    static void Walk(QWidget& shown) {
        shown.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&shown));
        std::set<const QWidget*> reached;
        for (QWidget* now = &shown; now && reached.insert(now).second; now = shown.focusWidget())
            QTest::keyClick(now, Qt::Key_Tab);
        for (const QWidget* widget : shown.findChildren<QWidget*>()) {
            if (widget->window() != &shown || !widget->isVisible() || !widget->isEnabled() ||
                widget->focusProxy() || (widget->focusPolicy() & Qt::TabFocus) == 0)
                continue;
            SCOPED_TRACE(widget->metaObject()->className() + (" " + FromQt(widget->objectName())));
            const QWidget* dock = widget;
            while (dock && !dock->inherits("QDockWidget"))
                dock = dock->parentWidget();
            EXPECT_FALSE(dock && dock->visibleRegion().isEmpty() && reached.count(widget))
                << "behind another dock";
            if (dock && dock->visibleRegion().isEmpty())
                continue;
            // Of a group of option buttons Tab reaches one; the arrow keys reach the others.
            EXPECT_TRUE(widget->inherits("QRadioButton") || reached.count(widget)) << "Tab never reaches it";
            const auto* button = qobject_cast<const QAbstractButton*>(widget);
            EXPECT_FALSE(widget->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
                << "no name";
        }
    }
    template <class Editor>
    void WalkEditing(const char* editItem) {
        Open<Editor>();
        Walk(*window);
        Pick(editItem);
        Walk(*window);
        Pick("mnuDiscardChanges");
    }
};

TEST_F(Keyboard, ReachesEveryControlOfTheEditors) {
    WalkEditing<frmEvents>("mnuEditThisEvent");
    WalkEditing<frmUPIssues>("mnuEditThisIssue");
    Open<frmSBModules>();
    Walk(*window);
}

TEST_F(Keyboard, ReachesEveryControlOfTheDialogs) {
    clsINI ini;
    ini.INIFile = temp / "VelWriter.ini";
    frmOptions options(ini);
    Walk(options);
    options.hide();

    TextViewer viewer(QStringLiteral("Notes"), QStringLiteral("Some text\nof two lines"));
    Walk(viewer);
    viewer.findChild<QPlainTextEdit*>()->setFocus();
    QTest::keyClick(viewer.findChild<QPlainTextEdit*>(), Qt::Key_Return);
    EXPECT_FALSE(viewer.isVisible()) << "Enter closes it";

    ErrorDetails details;
    details.CollectUserInput = true;
    frmError error(details);
    Walk(error);

    Library library(EventKind);
    Edits::Step addition(library, "addition of Raid");
    addition.Add("Raid", temp / "Game/Data/", "A.event");
    Edits(library).Open(std::move(addition));
    frmZoomTo zoom(library);
    Walk(zoom);
}

} // namespace
} // namespace velmora
