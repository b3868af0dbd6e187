#pragma once

#include "editor/ChangeModel.h"
#include "records/Replacement.h"

#include <QTimer>
#include <QWidget>
#include <memory>
#include <optional>
#include <string>
#include <utility>

class QAction;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QTreeView;

namespace velmora {

class RecordList;
class RecordWindow;
class Workbench;

/// The dock that finds a text in all records and replaces it in those that are ticked, as one step. It is on
/// while browsing only.
class ReplacePanel : public QWidget {
    Q_OBJECT

  public:
    /// `openCommand` is the window's command that opens the dock; the dock is on while that is.
    ReplacePanel(RecordWindow& recordWindow, Workbench& bench, RecordList& list, QAction* openCommand);

    /// Opens the dock with what was last looked for.
    void Open();
    /// Opens the dock with texts put in, for all texts of players in the whole library.
    void Open(const std::string& find, const std::string& replace, TextMatcher::How how);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void BuildPanel();
    QWidget* BuildInputs();
    void BuildFields();
    void TickTextsOfPlayers();
    void BuildTree();
    QWidget* BuildHits();
    void AddToWorkbench();
    void FollowWindow();
    QLineEdit* AddText(const char* name, const QString& label);
    QCheckBox* AddCheck(const char* name, const QString& text);

    /// Begins to look for what stands in the boxes.
    void Begin();
    void Restart();
    void WorkOn();
    [[nodiscard]] std::shared_ptr<const Matcher> MakeMatcher();
    [[nodiscard]] Replacement::Request MakeRequest();
    void FollowChange(const Edits::Change& change);
    void FollowShown();
    void FollowCommand();

    void ShowLines();
    void MakeCurrent(const QModelIndex& row);
    void Step(int step);
    void GoTo(const QModelIndex& row);
    bool KeyPressed(QObject* watched, int key, Qt::KeyboardModifiers modifiers);
    void Leave();
    void ReplaceTicked();
    void FollowLink(const QString& link);

    void Tell();
    [[nodiscard]] QString FoundText(const Replacement::Totals& sum) const;
    [[nodiscard]] QString GivenUpText() const;

    RecordWindow& window;
    Workbench& workbench;
    RecordList& records;
    const Library& library;
    QAction* command;
    QAction* next = nullptr;
    QAction* previous = nullptr;
    Replacement replacement;
    ChangeModel* model;
    std::shared_ptr<const CheckContext> context;
    QWidget* inputs = nullptr;
    QLineEdit* find = nullptr;
    QLineEdit* replace = nullptr;
    QLabel* fault = nullptr;
    QCheckBox* matchCase = nullptr;
    QCheckBox* wholeWord = nullptr;
    QCheckBox* regExp = nullptr;
    QComboBox* scope = nullptr;
    QListWidget* fields = nullptr;
    QTreeView* tree = nullptr;
    QPushButton* button = nullptr;
    QLabel* state = nullptr;
    QTimer slices;
    std::pair<std::string, std::string> current; ///< names of record and field of the current line
    std::string origin; ///< the record that was on show before hits were gone through
    bool going = false;
    bool filling = false;                ///< the program fills the boxes
    std::optional<std::size_t> replaced; ///< how many hits, as long as that is the last change
};

} // namespace velmora
