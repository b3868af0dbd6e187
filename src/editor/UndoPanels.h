#pragma once

#include <QListWidget>
#include <QPointer>
#include <QTreeWidget>
#include <vector>

class QToolButton;

namespace velmora {

class EditorWindow;
class Workbench;

/// The steps of an editor's history, the oldest first; choosing one goes there.
class HistoryPanel : public QListWidget {
    Q_OBJECT

  public:
    HistoryPanel(EditorWindow& editorWindow, Workbench& workbench);

  private:
    void GoToCurrent();
    void Refresh();

    EditorWindow& window;
};

/// What the fields of the record on show hold on disk, committed and typed. Choosing one reverts it: that way
/// is open to the keyboard for every field, the arrows are for the pointer.
class DifferencesPanel : public QTreeWidget {
    Q_OBJECT

  public:
    DifferencesPanel(EditorWindow& editorWindow, Workbench& workbench);

    void Refresh();

  private:
    void RevertRow(QTreeWidgetItem* row);

    EditorWindow& window;
};

/// An arrow at each field that differs from the disk; pressing it gives the field back what stands there.
class RevertArrows : public QObject {
    Q_OBJECT

  public:
    RevertArrows(EditorWindow& editorWindow, QWidget* formArea);

    void Refresh();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Arrow {
        QToolButton* Button;
        QPointer<QWidget> Control;
    };
    QToolButton* ArrowOf(QWidget* control);
    void Place();

    EditorWindow& window;
    QWidget* area;
    std::vector<Arrow> arrows;
};

} // namespace velmora
