// Help on the window's fields and commands.
#include "editor/CommandSearch.h"
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/UserGuide.h"
#include "editor/Workbench.h"
#include "kinds/FieldHelp.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QWhatsThis>

namespace velmora {

void RecordWindow::AdoptHelp() {
    QAction* search = workbench->AddItem("mnuCommandSearch", tr("&Command Search..."), Qt::CTRL | Qt::Key_K);
    connect(search, &QAction::triggered, this, [this] {
        UpdateMenus();
        (new CommandSearch(*this, [this](const QAction& action) { return WhyOff(action); }))->open();
    });
    QMenu* help = Menu("mnuHelp");
    help->addSeparator();
    QAction* what = help->addAction(tr("What's &This?"));
    what->setObjectName(QStringLiteral("mnuWhatsThis"));
    what->setShortcut(Qt::SHIFT | Qt::Key_F1);
    connect(what, &QAction::triggered, this, &RecordWindow::TellOfField);
    UserGuide::AddTo(*help);
}

void RecordWindow::TellWhatFieldsAre() {
    for (const Binding& binding : form.Bindings())
        for (QWidget* control : binding.Controls)
            control->setWhatsThis(LinesToQt(FieldHelp(library.Kind, *binding.Shown))
                                      .toHtmlEscaped()
                                      .replace(QLatin1Char('\n'), QStringLiteral("<br>")));
}

void RecordWindow::TellOfField() {
    const QWidget* focused = QApplication::focusWidget();
    if (!focused || focused->whatsThis().isEmpty())
        return QWhatsThis::enterWhatsThisMode();
    QWhatsThis::showText(focused->mapToGlobal(QPoint(0, focused->height())), focused->whatsThis(),
                         const_cast<QWidget*>(focused));
}

QString RecordWindow::WhyOff(const QAction& action) const {
    static const std::pair<const char*, const char*> reasons[] = {
        {"mnuGoBack", "No record was shown before"},
        {"mnuGoForward", "No record was shown after this one"},
        {"mnuNextProblem", "No problem is shown"},
        {"mnuPreviousProblem", "No problem is shown"},
        {"mnuHideProblem", "No problem is chosen, or it is hidden"},
        {"mnuHideRuleInFile", "No problem is chosen, or it is hidden"},
        {"mnuHideRule", "No problem is chosen, or it is hidden"},
        {"mnuShowProblemAgain", "No hidden problem is chosen"},
        {"mnuQuickFix", "No problem is chosen that has one right answer"},
        {"mnuNextHit", "Nothing was found to replace"},
        {"mnuPreviousHit", "Nothing was found to replace"},
    };
    for (const auto& [name, reason] : reasons)
        if (action.objectName() == QLatin1String(name))
            return tr(reason);
    if (!controls.Details->isVisible())
        return tr("The data directory is missing");
    if (!Browsing())
        return tr("A record is being edited: commit or discard first");
    return anyShown ? tr("Not possible now") : tr("There is no record");
}

} // namespace velmora
