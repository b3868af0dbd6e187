#include "editor/FieldMark.h"

#include <QEvent>
#include <QPainter>
#include <QPolygon>

namespace velmora {

namespace {
constexpr int Margin = 1; // a meter may stand right below
constexpr int SignSize = 9;
} // namespace

FieldMark::FieldMark(QWidget* markedControl)
    : QWidget(markedControl->parentWidget()), control(markedControl) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    control->installEventFilter(this);
    Follow();
}

void FieldMark::Follow() {
    setGeometry(control->geometry().adjusted(-Margin, -Margin, Margin, Margin));
    setVisible(!control->isHidden());
    raise();
}

bool FieldMark::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type == QEvent::Move || type == QEvent::Resize || type == QEvent::Show || type == QEvent::Hide)
        Follow();
    return QWidget::eventFilter(watched, event);
}

void FieldMark::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QColor color = palette().color(QPalette::Active, QPalette::Highlight);
    painter.setPen(QPen(color, 2));
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawPolygon(QPolygon({QPoint(0, 0), QPoint(SignSize, 0), QPoint(0, SignSize)}));
}

} // namespace velmora
