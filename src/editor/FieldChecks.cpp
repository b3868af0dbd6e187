#include "editor/FieldChecks.h"

#include "editor/QtText.h"
#include "services/Trap.h"

#include <QApplication>
#include <QEvent>
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
    if (checking)
        return;
    if (checks.contains(old))
        visiting = old->isEnabled() ? old : nullptr;
    if (!now || now->window() != window || qobject_cast<QMenuBar*>(now))
        return;
    QWidget* field = visiting;
    visiting = nullptr;
    if (!field || field == now || !field->isEnabled() || MayLeave(field))
        return;
    DropTheClick();
    field->setFocus(Qt::OtherFocusReason);
}

bool FieldChecks::MayLeave(QWidget* field) {
    const QScopedValueRollback<bool> guard(checking, true);
    bool mayLeave = true;
    const QString routine =
        QStringLiteral("%1_%2_LostFocus")
            .arg(window->objectName(), field->objectName().section(QLatin1Char('_'), 0, 0));
    TrapEvent(FromQt(routine), NoInputParms, [&] { mayLeave = checks.value(field)(); });
    return mayLeave;
}

void FieldChecks::DropTheClick() {
    qApp->installEventFilter(this);
    QMetaObject::invokeMethod(
        this, [this] { qApp->removeEventFilter(this); }, Qt::QueuedConnection);
}

bool FieldChecks::eventFilter(QObject* watched, QEvent* event) {
    return event->type() == QEvent::MouseButtonPress || QObject::eventFilter(watched, event);
}

} // namespace velmora
