#pragma once

#include "editor/InputRules.h"
#include "editor/QtText.h"

#include <QApplication>
#include <QFocusEvent>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPalette>
#include <QTextLayout>
#include <array>
#include <exception>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// Selects a box's whole text. Ignores any failure.
template <class Box>
void SelectAllText(Box* box) noexcept {
    try {
        box->selectAll();
    } catch (const std::exception&) {
        // The box stays as it was.
    }
}

/// What is marked in a text. Each mark has a line of its own form, so that colour is not its only sign.
enum class TextMark { TooLong, Misspelled };
/// A stretch of the text on show.
struct TextRange {
    qsizetype From;
    qsizetype Length;
};

/// How a mark looks.
QTextCharFormat LookOf(TextMark mark);

/// What all text boxes of the editors share, whether of one line or of many: they hold code-page bytes, admit
/// only what InputRules admit and can select their text when they are entered.
template <class Base>
class RuledBox : public Base {
  public:
    explicit RuledBox(QWidget* parent = nullptr) : Base(parent) {}

    /// Shows a text, whole even where it is longer than the limit. It cannot be undone.
    void SetBytes(const std::string& bytes) {
        ShowText(ToQt(bytes));
        original = bytes;
        shown = ShownText();
    }
    /// The very bytes set, as long as their text has not been changed.
    [[nodiscard]] std::string Bytes() const {
        const QString text = ShownText();
        return text == shown ? original : FromQt(text);
    }

    /// Most characters that can be typed or pasted; 0 for any number.
    void SetLimit(int characters) { rules.Limit = characters; }
    /// Typed Enter is dropped, a typed double quote becomes a single one.
    void SetFiltersKeys(bool filters) { rules.FiltersKeys = filters; }
    [[nodiscard]] bool FiltersKeys() const { return rules.FiltersKeys; }
    /// The text is a path, of which the end tells most.
    void SetHoldsPath(bool holds) { rules.Path = holds; }
    [[nodiscard]] bool HoldsPath() const { return rules.Path; }
    /// Selects the whole text on receiving the focus.
    void SetSelectsAllOnEntry(bool selects) { selectsAll = selects; }
    [[nodiscard]] bool SelectsAllOnEntry() const { return selectsAll; }
    /// Puts the caret behind the text on receiving the focus.
    void SetCaretAtEndOnEntry(bool atEnd) { caretAtEnd = atEnd; }
    [[nodiscard]] bool CaretAtEndOnEntry() const { return caretAtEnd; }

    /// Marks stretches of the text on show, in place of those marked so before.
    void SetMarked(TextMark mark, const std::vector<TextRange>& ranges) {
        auto& marked = marks[static_cast<std::size_t>(mark)];
        if (ranges.empty() && marked.empty())
            return;
        marked.clear();
        for (const TextRange& range : ranges)
            marked.append({static_cast<int>(range.From), static_cast<int>(range.Length), LookOf(mark)});
        ShowMarks(marks[0] + marks[1]);
    }
    [[nodiscard]] const QList<QTextLayout::FormatRange>& Marked(TextMark mark) const {
        return marks[static_cast<std::size_t>(mark)];
    }

    /// Where in the text the context menu came up.
    [[nodiscard]] int MenuPosition() const { return menuPosition; }
    /// Puts another text in the place of a stretch, as typing does.
    virtual void ReplaceRange(const TextRange& range, const QString& text) = 0;

    /// The window undoes what is typed here, together with its other fields.
    void SetUndoneByWindow() { undoneByWindow = true; }
    virtual void PutCaret(int position) = 0;

    /// Display only, in every mode of the window; looks flat.
    void SetLocked(bool locked) {
        this->setReadOnly(locked);
        QPalette look;
        if (locked)
            look.setBrush(QPalette::Base, QApplication::palette(this).window());
        this->setPalette(look);
    }
    [[nodiscard]] bool Locked() const { return this->isReadOnly(); }

  protected:
    bool event(QEvent* event) override {
        // What is not claimed here becomes the window's own command.
        if (event->type() == QEvent::ShortcutOverride && IsUndoKey(*static_cast<QKeyEvent*>(event))) {
            event->ignore();
            return false;
        }
        return Base::event(event);
    }
    [[nodiscard]] virtual QString ShownText() const = 0;
    virtual void ShowText(const QString& text) = 0;
    [[nodiscard]] virtual qsizetype SelectedLength() const = 0;
    virtual void PutCaretAtEnd() = 0;
    virtual void ShowMarks(const QList<QTextLayout::FormatRange>& all) = 0;
    virtual void Report(const QString& hint) = 0;

    /// The focus only visits a menu or another window, or returns from there.
    [[nodiscard]] static bool ComesBack(const QFocusEvent& event) {
        return event.reason() == Qt::PopupFocusReason || event.reason() == Qt::ActiveWindowFocusReason ||
               event.reason() == Qt::MenuBarFocusReason;
    }

    [[nodiscard]] QString AdmitPasted(const QString& text) { return Admit(rules.Pasted(text, Room())); }

    void keyPressEvent(QKeyEvent* event) override {
        if (IsUndoKey(*event)) {
            event->accept();
            return;
        }
        const QString text = TypedText(*event);
        if (text.isEmpty() || this->isReadOnly()) {
            Base::keyPressEvent(event);
            return;
        }
        const QString admitted = Admit(rules.Typed(text, Room()));
        if (admitted == text) {
            Base::keyPressEvent(event);
        } else if (admitted.isEmpty()) {
            event->accept();
        } else {
            QKeyEvent changed(event->type(), Qt::Key_unknown, event->modifiers(), admitted);
            Base::keyPressEvent(&changed);
        }
    }

    void inputMethodEvent(QInputMethodEvent* event) override {
        const QString commit = event->commitString();
        if (this->isReadOnly()) {
            event->ignore(); // the toolkit would insert it all the same
            return;
        }
        if (commit.isEmpty()) {
            Base::inputMethodEvent(event);
            return;
        }
        const qsizetype room = Room() + (rules.Limit > 0 ? event->replacementLength() : 0);
        const bool lines = commit.contains(QLatin1Char('\n')) || commit.contains(QLatin1Char('\r'));
        QInputMethodEvent admitted(event->preeditString(), event->attributes());
        admitted.setCommitString(Admit(lines ? rules.Pasted(commit, room) : rules.Typed(commit, room)),
                                 event->replacementStart(), event->replacementLength());
        Base::inputMethodEvent(&admitted);
        event->setAccepted(admitted.isAccepted());
    }

    void focusInEvent(QFocusEvent* event) override {
        Base::focusInEvent(event);
        // The click that gives the focus puts the caret somewhere: the text is selected after it.
        enteredByMouse = event->reason() == Qt::MouseFocusReason;
        if (!enteredByMouse && !ComesBack(*event))
            Enter();
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        Base::mouseReleaseEvent(event);
        if (std::exchange(enteredByMouse, false) && event->button() == Qt::LeftButton &&
            SelectedLength() == 0)
            Enter();
    }

    void changeEvent(QEvent* event) override {
        Base::changeEvent(event);
        if (event->type() == QEvent::PaletteChange && Locked())
            SetLocked(true);
    }

    void SetMenuPosition(int position) { menuPosition = position; }
    [[nodiscard]] bool UndoneByWindow() const { return undoneByWindow; }

  private:
    [[nodiscard]] bool IsUndoKey(const QKeyEvent& event) const {
        return undoneByWindow && (event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo));
    }

    void Enter() {
        if (selectsAll)
            SelectAllText(this);
        else if (caretAtEnd)
            PutCaretAtEnd();
    }

    [[nodiscard]] qsizetype Room() const { return rules.Room(ShownText().size(), SelectedLength()); }

    QString Admit(const InputRules::Admitted& admitted) {
        if (!admitted.Hint.isEmpty())
            Report(admitted.Hint);
        return admitted.Text;
    }

    /// The characters that a key would put into the text; empty for any other key. A pressed AltGr counts as
    /// Ctrl and Alt on some systems.
    static QString TypedText(const QKeyEvent& event) {
        const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::ShiftModifier);
        const QString text = event.text();
        if (text.isEmpty() || modifiers == Qt::ControlModifier)
            return {};
        const bool inserts = text.front().isPrint() || text.front().isSurrogate() ||
                             text.front().category() == QChar::Other_Format ||
                             text.front().category() == QChar::Other_PrivateUse;
        return inserts ? text : QString();
    }

    InputRules rules;
    std::array<QList<QTextLayout::FormatRange>, 2> marks; ///< by TextMark
    std::string original;
    QString shown;
    bool selectsAll = false;
    bool caretAtEnd = false;
    bool undoneByWindow = false;
    bool enteredByMouse = false;
    int menuPosition = 0;
};

} // namespace velmora
