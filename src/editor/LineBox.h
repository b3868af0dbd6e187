#pragma once

#include "editor/RuledBox.h"

#include <QLineEdit>

namespace velmora {

/// A text box of one line.
class LineBox : public RuledBox<QLineEdit> {
    Q_OBJECT
    Q_PROPERTY(bool FiltersKeys READ FiltersKeys WRITE SetFiltersKeys)
    Q_PROPERTY(bool SelectsAllOnEntry READ SelectsAllOnEntry WRITE SetSelectsAllOnEntry)
    Q_PROPERTY(bool CaretAtEndOnEntry READ CaretAtEndOnEntry WRITE SetCaretAtEndOnEntry)
    Q_PROPERTY(bool HoldsPath READ HoldsPath WRITE SetHoldsPath)
    Q_PROPERTY(bool Locked READ Locked WRITE SetLocked)

  public:
    explicit LineBox(QWidget* parent = nullptr);
    void PutCaret(int position) override { setCursorPosition(position); }
    void ReplaceRange(const TextRange& range, const QString& text) override;

  signals:
    /// Before the context menu comes up.
    void MenuShown(QMenu* menu);
    /// Something typed or pasted was left out.
    void Refused(const QString& hint);

  protected:
    [[nodiscard]] QString ShownText() const override { return text(); }
    void ShowText(const QString& text) override;
    [[nodiscard]] qsizetype SelectedLength() const override { return selectedText().size(); }
    void PutCaretAtEnd() override { end(false); }
    void Report(const QString& hint) override { emit Refused(hint); }
    void ShowMarks(const QList<QTextLayout::FormatRange>& all) override;

    void keyPressEvent(QKeyEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    void Paste(const QString& text);
};

} // namespace velmora
