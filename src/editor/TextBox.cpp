#include "editor/TextBox.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QWheelEvent>

namespace velmora {

TextBox::TextBox(QWidget* parent) : RuledBox<QPlainTextEdit>(parent) {
    setTabChangesFocus(true);
}

QString TextBox::ShownText() const {
    // The plain text would turn no-break spaces into blanks.
    QString text = document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
}

void TextBox::ShowText(const QString& text) {
    setPlainText(text);
}

qsizetype TextBox::SelectedLength() const {
    const QTextCursor cursor = textCursor();
    return cursor.selectionEnd() - cursor.selectionStart();
}

void TextBox::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && FiltersKeys())
        event->accept();
    else
        RuledBox<QPlainTextEdit>::keyPressEvent(event);
}

void TextBox::focusOutEvent(QFocusEvent* event) {
    RuledBox<QPlainTextEdit>::focusOutEvent(event);
    if (ComesBack(*event))
        return;
    QTextCursor cursor = textCursor(); // else the text would go on looking like the one being edited
    cursor.clearSelection();
    setTextCursor(cursor);
}

void TextBox::PutCaret(int position) {
    QTextCursor cursor = textCursor();
    cursor.setPosition(qMin(position, document()->characterCount() - 1));
    setTextCursor(cursor);
}

QTextCharFormat LookOf(TextMark mark) {
    QTextCharFormat look;
    look.setUnderlineColor(QColor(220, 40, 40));
    look.setUnderlineStyle(mark == TextMark::TooLong ? QTextCharFormat::SingleUnderline
                                                     : QTextCharFormat::WaveUnderline);
    if (mark == TextMark::TooLong)
        look.setBackground(QColor(220, 40, 40, 70));
    return look;
}

void TextBox::ShowMarks(const QList<QTextLayout::FormatRange>& all) {
    QList<QTextEdit::ExtraSelection> selections;
    for (const QTextLayout::FormatRange& range : all) {
        QTextEdit::ExtraSelection selection{QTextCursor(document()), range.format};
        const int last = document()->characterCount() - 1;
        selection.cursor.setPosition(qMin(range.start, last));
        selection.cursor.setPosition(qMin(range.start + range.length, last), QTextCursor::KeepAnchor);
        selections.append(selection);
    }
    setExtraSelections(selections);
}

void TextBox::ReplaceRange(const TextRange& range, const QString& text) {
    QTextCursor cursor(document());
    cursor.setPosition(static_cast<int>(range.From));
    cursor.setPosition(static_cast<int>(range.From + range.Length), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    if (const QString admitted = AdmitPasted(text); !admitted.isEmpty())
        textCursor().insertText(admitted);
}

void TextBox::contextMenuEvent(QContextMenuEvent* event) {
    SetMenuPosition(event->reason() == QContextMenuEvent::Mouse ? cursorForPosition(event->pos()).position()
                                                                : textCursor().position());
    QMenu* menu = createStandardContextMenu(event->pos());
    menu->setAttribute(Qt::WA_DeleteOnClose);
    emit MenuShown(menu);
    menu->popup(event->globalPos());
}

bool TextBox::canInsertFromMimeData(const QMimeData* source) const {
    return !isReadOnly() && source->hasText();
}

void TextBox::insertFromMimeData(const QMimeData* source) {
    if (!canInsertFromMimeData(source))
        return;
    if (const QString admitted = AdmitPasted(source->text()); !admitted.isEmpty()) {
        textCursor().insertText(admitted);
        ensureCursorVisible();
    }
}

bool TextBox::viewportEvent(QEvent* event) {
    // While browsing, all boxes are disabled; a long text can be read all the same.
    if (event->type() == QEvent::Wheel && !isEnabled())
        return ScrollWhileDisabled(static_cast<QWheelEvent&>(*event));
    return RuledBox<QPlainTextEdit>::viewportEvent(event);
}

bool TextBox::ScrollWhileDisabled(const QWheelEvent& event) {
    constexpr int angleOfLine = 40; // three lines a notch
    QScrollBar* bar = verticalScrollBar();
    const int before = bar->value();
    bar->setValue(before - event.angleDelta().y() / angleOfLine);
    return bar->value() != before;
}

QSize TextBox::SizeOfLines(int lines) const {
    const int around = 2 * (frameWidth() + qRound(document()->documentMargin()));
    return {fontMetrics().averageCharWidth() * 24 + around, fontMetrics().lineSpacing() * lines + around};
}

} // namespace velmora
