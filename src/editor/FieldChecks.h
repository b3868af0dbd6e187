#pragma once

#include <QHash>
#include <QObject>
#include <QPointer>
#include <functional>

class QWidget;

namespace velmora {

/// Runs the check of a field when the focus moves from it to another control of its window, on whatever way:
/// a visit to a menu or another window is not yet leaving, nor is a field that has been disabled left. A
/// click that would have left a field that must not be left does nothing else either.
class FieldChecks : public QObject {
    Q_OBJECT

  public:
    explicit FieldChecks(QWidget* checkedWindow);

    /// `check` returns true when the focus may move on; false takes it back to the field. One that fails is
    /// reported under WINDOW_FIELD_LostFocus and lets the focus go.
    void OnLeave(QWidget* field, const std::function<bool()>& check);
    /// No field has been left so far: they hold something else now.
    void Forget() { visiting = nullptr; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void FocusChanged(QWidget* old, QWidget* now);
    [[nodiscard]] bool MayLeave(QWidget* field);
    /// Drops the click that moved the focus: it has not reached its control yet.
    void DropTheClick();

    QWidget* window;
    QHash<QWidget*, std::function<bool()>> checks;
    QPointer<QWidget> visiting; ///< the field that had the focus before a menu or another window
    bool checking = false;
};

} // namespace velmora
