#include "editor/FieldChecks.h"

#include "editor/QtText.h"
#include "services/Trap.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QScopedValueRollback>

namespace velmora {

FieldChecks::FieldChecks(QWidget* checkedWindow) : QObject(checkedWindow), window(checkedWindow) {
    connect(qApp, &QApplication::focusChanged, this, &FieldChecks::FocusChanged);
}

void FieldChecks::OnLeave(QWidget* field, const std::function<bool()>& check) {
    checks.insert(field, check);
}

void FieldChecks::FocusChanged(QWidget* old, QWidget* now) {
    if (checking || !old || !now || now->window() != window || !old->isEnabled())
        return;
    if (qobject_cast<QMenu*>(now) || qobject_cast<QMenuBar*>(now))
        return;
    const auto check = checks.constFind(old);
    if (check == checks.constEnd())
        return;
    const QScopedValueRollback<bool> guard(checking, true);
    bool mayLeave = true;
    const QString routine = QStringLiteral("%1_%2_LostFocus")
                                .arg(window->objectName(), old->objectName().section(QLatin1Char('_'), 0, 0));
    TrapEvent(FromQt(routine), NoInputParms, [&] { mayLeave = check.value()(); });
    if (!mayLeave)
        old->setFocus(Qt::OtherFocusReason);
}

} // namespace velmora
