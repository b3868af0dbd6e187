#pragma once

#include "editor/RuledBox.h"

#include <QPlainTextEdit>

namespace velmora {

/// A text box of several lines. Tab leaves it.
class TextBox : public RuledBox<QPlainTextEdit> {
    Q_OBJECT
    Q_PROPERTY(bool FiltersKeys READ FiltersKeys WRITE SetFiltersKeys)
    Q_PROPERTY(bool SelectsAllOnEntry READ SelectsAllOnEntry WRITE SetSelectsAllOnEntry)
    Q_PROPERTY(bool CaretAtEndOnEntry READ CaretAtEndOnEntry WRITE SetCaretAtEndOnEntry)
    Q_PROPERTY(bool Locked READ Locked WRITE SetLocked)

  public:
    explicit TextBox(QWidget* parent = nullptr);
    void PutCaret(int position) override;
    void ReplaceRange(const TextRange& range, const QString& text) override;

    /// Room for a few lines of the font in use.
    [[nodiscard]] QSize sizeHint() const override { return SizeOfLines(4); }
    [[nodiscard]] QSize minimumSizeHint() const override { return SizeOfLines(3); }

  signals:
    /// Before the context menu comes up.
    void MenuShown(QMenu* menu);
    /// Something typed or pasted was left out.
    void Refused(const QString& hint);

  protected:
    [[nodiscard]] QString ShownText() const override;
    void ShowText(const QString& text) override;
    [[nodiscard]] qsizetype SelectedLength() const override;
    void PutCaretAtEnd() override { moveCursor(QTextCursor::End); }
    void Report(const QString& hint) override { emit Refused(hint); }
    void ShowMarks(const QList<QTextLayout::FormatRange>& all) override;

    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    bool viewportEvent(QEvent* event) override;

  private:
    [[nodiscard]] QSize SizeOfLines(int lines) const;
    bool ScrollWhileDisabled(const QWheelEvent& event);
};

} // namespace velmora
