#pragma once

#include <QWidget>

namespace velmora {

/// Marks a control from outside with an outline and a sign at its corner. It goes with the control's form,
/// lets the mouse through and never takes the focus.
class FieldMark : public QWidget {
    Q_OBJECT

  public:
    explicit FieldMark(QWidget* markedControl);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Follow();
    QWidget* control;
};

} // namespace velmora
