#pragma once

#include "editor/RecordListModel.h"
#include "records/Edits.h"

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

class QAction;
class QLabel;
class QLineEdit;
class QTreeView;

namespace velmora {

class RecordWindow;
class UnwrittenFooter;
class Workbench;

/// The dock that lists a window's records, and finds any of them by what stands in it. Looking costs nothing:
/// arrows move the selection only; Enter, a click and the commands of the View menu show a record.
class RecordList : public QWidget {
    Q_OBJECT

  public:
    /// `editable` is false for a window that only reads: it has nothing unwritten.
    RecordList(RecordWindow& recordWindow, Workbench& workbench, bool editable);

    /// Where the rules come from that a record breaks; RulesChanged is to be called when they change.
    void SetRules(RulesOf rules) { model->SetRules(std::move(rules)); }
    void RulesChanged();
    /// Names of the rules that a record breaks.
    [[nodiscard]] std::vector<std::string_view> BrokenRules(const Record& record) const;
    /// Lists the records that a filter line asks for.
    void FilterBy(const QString& line);
    /// Names of the selected records, in order.
    [[nodiscard]] std::vector<std::string> SelectedNames() const;
    /// True for a record that matches the filter.
    [[nodiscard]] bool Lists(const Record& record) const { return model->MatchesFilter(record); }
    /// A command on the selected records, for the context menu.
    QAction* AddCommand(const char* name, const QString& text);

  signals:
    void SelectionChanged();
    void RulesTold(); ///< other records break rules now
    /// A person has made this record current, which shows it not yet.
    void Pointed(const std::string& name);
    void FilterChanged();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildPanel(bool editable);
    QWidget* BuildFilterLine();
    void BuildTree();
    void BuildColumnMenu();
    void AddToWorkbench(Workbench& workbench, bool editable);
    void FollowWindow();

    void FilterTyped();
    void GoToFilter();
    void TellOfFilter() const;
    void Leave();
    bool KeyPressed(QObject* watched, int key);

    void FollowChange(const Edits::Change& change);
    void FollowShown();
    void Restart();
    /// Goes on with the search for one slice.
    void WorkOn();
    void Finish();
    /// Gives the view its current row back once it is there.
    void Settle();
    void MakeCurrent(int row);
    void ShowCurrent();
    /// Shows the record a row further on in this direction that is wanted.
    void Step(int direction, const std::function<bool(const Record&)>& wanted);
    void TellCount();
    void CopyAsCsv() const;
    void PressWrite();

    RecordWindow& window;
    const Library& library;
    RecordListModel* model;
    QLineEdit* filter = nullptr;
    QLabel* count = nullptr;
    QTreeView* tree = nullptr;
    UnwrittenFooter* footer = nullptr;
    QTimer slices;
    QPointer<QWidget> cameFrom; ///< what had the focus before the filter
    std::string chosenName;     ///< what the person made current, or has on show
    bool settling = false;      ///< the program moves the current place
    std::string wantedName;     ///< what is to be current once it is found
    std::string shownName;
};

} // namespace velmora
