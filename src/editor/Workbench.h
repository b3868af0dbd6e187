#pragma once

#include <QKeySequence>
#include <QObject>
#include <QPointer>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QAction;
class QDockWidget;
class QHeaderView;
class QKeyEvent;
class QMenu;
class QSettings;
class QToolBar;

namespace velmora {

class FieldMark;
class RecordWindow;

/// What stands around the form of a kind: docks, a toolbar, the View menu, and the way back to
/// records shown before. Sizes and places are kept in workbench.ini beside the settings; a broken or foreign
/// one is ignored. It never asks anything, and leads nowhere while a record is being edited.
class Workbench : public QObject {
    Q_OBJECT

  public:
    /// To be made once the window's menus are there.
    explicit Workbench(RecordWindow& recordWindow);

    /// A dock around a panel, with an item in the View menu that shows and hides it. Both are hidden until
    /// Restore.
    QDockWidget* AddDock(const char* name, const QString& title, QWidget* panel, Qt::DockWidgetArea area,
                         const char* action, const QKeySequence& key = {});
    /// An item in the View menu, below the docks.
    QAction* AddItem(const char* name, const QString& text, const QKeySequence& key = {});
    /// Keeps which columns a list shows, and how wide they are.
    void KeepColumns(QHeaderView* header);
    /// Puts commands of the window on the toolbar, by their names; "" is a separator.
    void AddTools(const std::vector<std::pair<const char*, const char*>>& actionsAndIcons);

    /// Lays the window out as it was left; the first time, as its screen has room. To be called before it is
    /// shown.
    void Restore();
    /// Keeps the layout, if it was changed.
    void Save() const;

    /// A group of workbench.ini.
    [[nodiscard]] static std::unique_ptr<QSettings> Store(const QString& group);

    /// Marks the controls of fields until another record or another mode comes on show.
    void Mark(const std::vector<std::string_view>& properties);
    void Unmark();

    /// Shows the record that was on show before or after the present one in the order of showing.
    void GoBack() { GoAlong(-1); }
    void GoForward() { GoAlong(1); }
    void GoToLastEdited();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] bool IsOwnCommand(const QKeyEvent& event) const;
    void AddHistory();
    void NoteShown();
    void GoAlong(int step);
    void LayOutFirst();
    void GiveRoom();
    void UpdateHistory();
    struct Columns {
        QHeaderView* Header;
        QByteArray First;
        QByteArray Opened = {};
    };
    static QString KeyOf(const Columns& columns);

    RecordWindow& window;
    QMenu* menu;
    QToolBar* toolbar;
    QAction* endOfDocks;
    QAction* goBack = nullptr;
    QAction* goForward = nullptr;
    std::vector<QDockWidget*> docks;
    QByteArray firstState;
    QByteArray openedState;
    std::vector<Columns> keptColumns;
    std::vector<QPointer<FieldMark>> marks;
    std::vector<std::string> shown; ///< names in the order of showing
    std::size_t at = 0;             ///< the present one's
    bool going = false;
    std::string lastEdited;
};

} // namespace velmora
