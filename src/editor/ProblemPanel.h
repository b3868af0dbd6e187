#pragma once

#include "editor/ProblemModel.h"
#include "kinds/IgnoreFile.h"
#include "records/ProblemIndex.h"

#include <QTimer>
#include <QWidget>
#include <optional>
#include <string_view>
#include <vector>

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QTreeView;

namespace velmora {

class RecordList;
class RecordWindow;
class Workbench;

/// The dock that lists what is wrong with a window's files and records, kept up while they change, and leads
/// to it. While a record is edited the problems of what is being typed stand in its place.
class ProblemPanel : public QWidget {
    Q_OBJECT

  public:
    /// `list` is told which rules its records break. `edit` is the window's command that begins editing;
    /// nullptr for a window that only reads.
    ProblemPanel(RecordWindow& recordWindow, Workbench& bench, RecordList& list, QAction* edit);

    /// Checks all records once more for something else, once they have been checked for what the game
    /// demands.
    void CheckAlso(RecordCheck check);
    /// True once all records have been checked.
    [[nodiscard]] bool Complete() const { return index.Done(); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildPanel();
    void BuildTree();
    void BuildCommands();
    void AddToWorkbench();
    void FollowWindow();
    void FollowRows();
    QAction* AddCommand(const char* name, const QString& text, const std::function<void()>& run);

    void Begin();
    void End();
    void WorkOn();
    void BeginMore();
    void FollowChange(const Edits::Change& change);
    void Replace(const ProblemIndex::HolderPtr& before, const ProblemIndex::HolderPtr& after);
    void FollowMode();
    void CheckDraft();
    void TakeFound();
    /// Lists anew; the row that was current is again, or the most similar one.
    void Renew(const std::function<void()>& change);
    void MakeCurrent(const QModelIndex& row);
    void TellCounts();
    /// Tells what the index has found since.
    void TellChanges();
    void UpdateCommands();

    /// Names of the rules that a record breaks, those hidden left out.
    [[nodiscard]] std::vector<std::string_view> RulesOf(const Record& record) const;
    [[nodiscard]] std::optional<Problem> Current() const;
    void Step(int step);
    void Jump(const QModelIndex& row);
    void Enter(const QModelIndex& row);
    void EditJumped();
    void Hide(IgnoreFile::Scope scope);
    void ShowAgain();
    void FixCurrent();

    RecordWindow& window;
    RecordList& records;
    Workbench& workbench;
    const Library& library;
    QAction* editCommand;
    ProblemIndex index;
    IgnoreFile ignored;
    ProblemModel* model;
    QTreeView* tree = nullptr;
    QComboBox* groupBy = nullptr;
    QLineEdit* filter = nullptr;
    QLabel* count = nullptr;
    QAction* fix = nullptr;
    std::vector<QAction*> hides; ///< by scope
    QAction* showAgain = nullptr;
    std::vector<QAction*> steps; ///< to the next and the previous problem
    bool rulesChanged = false;
    std::optional<RecordCheck> wanted; ///< to be checked too
    QTimer slices;
    QTimer typed;
    std::optional<Problem> jumped; ///< whose record is on show, and whose field is marked
    std::optional<Problem> kept;   ///< that of the current row, while rows change
};

} // namespace velmora
