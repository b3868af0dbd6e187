#pragma once

#include <QHash>
#include <QObject>
#include <functional>

class QWidget;

namespace velmora {

/// Runs the check of a field when the focus moves from it to another control of its window. Menus, other
/// windows and a field that has just been disabled do not count as leaving.
class FieldChecks : public QObject {
    Q_OBJECT

  public:
    explicit FieldChecks(QWidget* checkedWindow);

    /// `check` returns true when the focus may move on; false takes it back to the field. One that fails is
    /// reported under WINDOW_FIELD_LostFocus and lets the focus go.
    void OnLeave(QWidget* field, const std::function<bool()>& check);

  private:
    void FocusChanged(QWidget* old, QWidget* now);

    QWidget* window;
    QHash<QWidget*, std::function<bool()>> checks;
    bool checking = false;
};

} // namespace velmora
