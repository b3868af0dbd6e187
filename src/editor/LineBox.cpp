#include "editor/LineBox.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <limits>
#include <memory>

namespace velmora {

LineBox::LineBox(QWidget* parent) : RuledBox<QLineEdit>(parent) {
    // The toolkit would cut what is longer than 32767, and cut texts that are only shown.
    setMaxLength(std::numeric_limits<int>::max());
}

void LineBox::ShowText(const QString& text) {
    setText(text);
    if (!CaretAtEndOnEntry() && !HoldsPath())
        setCursorPosition(0);
}

void LineBox::ShowMarks(const QList<QTextLayout::FormatRange>& all) {
    // The only formats that a line takes are those of an input method, counted from the caret.
    QList<QInputMethodEvent::Attribute> formats;
    for (const QTextLayout::FormatRange& range : all)
        formats.append({QInputMethodEvent::TextFormat, range.start - cursorPosition(), range.length,
                        QVariant::fromValue<QTextFormat>(range.format)});
    QInputMethodEvent marking(QString(), formats);
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): what is marked is not typed, so its rules do not count
    QLineEdit::inputMethodEvent(&marking);
}

void LineBox::Paste(const QString& text) {
    if (isReadOnly())
        return;
    if (const QString admitted = AdmitPasted(text); !admitted.isEmpty())
        insert(admitted);
}

void LineBox::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste))
        Paste(QApplication::clipboard()->text());
    else
        RuledBox<QLineEdit>::keyPressEvent(event);
}

void LineBox::mouseReleaseEvent(QMouseEvent* event) {
    const QClipboard* clipboard = QApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard->supportsSelection()) {
        deselect();
        Paste(clipboard->text(QClipboard::Selection));
    } else {
        RuledBox<QLineEdit>::mouseReleaseEvent(event);
    }
}

void LineBox::ReplaceRange(const TextRange& range, const QString& text) {
    setSelection(static_cast<int>(range.From), static_cast<int>(range.Length));
    Paste(text);
}

void LineBox::contextMenuEvent(QContextMenuEvent* event) {
    SetMenuPosition(event->reason() == QContextMenuEvent::Mouse ? cursorPositionAt(event->pos())
                                                                : cursorPosition());
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (QAction* action : menu->actions())
        if (action->text().startsWith(QLineEdit::tr("&Paste"))) {
            action->disconnect(this);
            connect(action, &QAction::triggered, this, [this] { Paste(QApplication::clipboard()->text()); });
        }
    emit MenuShown(menu);
    menu->popup(event->globalPos());
}

void LineBox::dropEvent(QDropEvent* event) {
    if (event->source() == this && event->dropAction() == Qt::MoveAction) {
        RuledBox<QLineEdit>::dropEvent(event); // the text only changes its place
        return;
    }
    deselect();
    QMimeData admitted;
    admitted.setText(isReadOnly() ? QString() : AdmitPasted(event->mimeData()->text()));
    QDropEvent changed(event->position(), event->possibleActions(), &admitted, event->buttons(),
                       event->modifiers());
    changed.setDropAction(event->dropAction());
    RuledBox<QLineEdit>::dropEvent(&changed);
    event->setDropAction(changed.dropAction());
    event->setAccepted(changed.isAccepted());
}

} // namespace velmora
