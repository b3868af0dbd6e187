// The editor's commands on several records that are selected in the list.
#include "editor/EditorWindow.h"
#include "editor/ProblemPanel.h"
#include "editor/RecordList.h"
#include "editor/ReplacePanel.h"
#include "services/Settings.h"
#include "services/modWriter.h"

#include <QAction>
#include <QMenu>
#include <algorithm>

namespace velmora {

namespace {

/// "Raid" or "3 records".
std::string Several(const std::vector<std::string>& names) {
    return names.size() == 1 ? names.front() : std::to_string(names.size()) + " records";
}

} // namespace

void EditorWindow::AdoptList() {
    recordList = new RecordList(*this, *workbench, true);
    recordList->AddCommand("mnuMoveSelected", tr("&Move To A File..."));
    recordList->AddCommand("mnuDeleteSelected", tr("&Delete"));
    OnClick("mnuDeleteSelected", [this] { DeleteSelected(); });
    OnClick("mnuMoveSelected", [this] { MoveSelected(); });
    connect(recordList, &RecordList::SelectionChanged, this, &EditorWindow::UpdateListMenu);
    problems = new ProblemPanel(*this, *workbench, *recordList, Action(words.EditItem));
    Menu("mnuEdit")->addSeparator();
    QAction* replace = Menu("mnuEdit")->addAction(tr("&Find And Replace..."));
    replace->setObjectName(QStringLiteral("mnuFindReplace"));
    replace->setShortcut(Qt::CTRL | Qt::Key_H);
    replacePanel = new ReplacePanel(*this, *workbench, *recordList, replace);
}

void EditorWindow::UpdateListMenu() {
    const std::vector<std::string> names = recordList->SelectedNames();
    const auto all = [&](const auto& holds) {
        return std::all_of(names.begin(), names.end(),
                           [&](const std::string& name) { return holds(*library.Find(name)); });
    };
    const bool changeable = !names.empty() && Browsing() && !halfRead;
    const bool marked = changeable && all([](const Record& record) { return record.ToBeDeleted; });
    Action("mnuDeleteSelected")->setEnabled(changeable);
    Action("mnuDeleteSelected")->setText(marked ? tr("Un-&Delete") : tr("&Delete"));
    Action("mnuMoveSelected")->setEnabled(changeable && all([this](const Record& record) {
                                              return !IsReservedFile(record.ShortName);
                                          }));
}

void EditorWindow::DeleteSelected() {
    std::vector<std::string> names = recordList->SelectedNames();
    const auto isMarked = [this](const std::string& name) { return library.Find(name)->ToBeDeleted; };
    const bool unmark = std::all_of(names.begin(), names.end(), isMarked);
    if (!unmark)
        std::erase_if(names, isMarked);
    const std::string what = Several(names);
    if (!unmark && !gPrompts->Ask({"Mark " + what + " for deletion?", false, Join(names, "\r")}))
        return;
    Edits::Step step(library, (unmark ? "un-deletion of " : "deletion of ") + what);
    for (const std::string& name : names) {
        Record& record = step.Change(name);
        record.ToBeDeleted = !unmark;
        record.IsDirty = true;
    }
    DoWithSelected(std::move(step));
}

void EditorWindow::MoveSelected() {
    const std::vector<std::string> names = recordList->SelectedNames();
    const std::string what = Several(names);
    const std::string answer = AskFileName("Please enter the name of the file to move " + what + " to.",
                                           [this](const std::string& name) { return MoveRefusal(name); });
    if (answer.empty())
        return;
    std::string file = answer + words.MoveExtension;
    if (const std::size_t at = library.FileList().IndexOf(file); at != Library::None)
        file = library.FileList().KeyAt(at);
    Edits::Step step(library, "moving of " + what + " to " + file);
    for (const std::string& name : names)
        if (const std::string old = library.Find(name)->ShortName; !CodePage::EqualNoCase(old, file))
            step.Move(name, DataFolder(), old, file);
    if (step.Count() > 0)
        DoWithSelected(std::move(step));
}

void EditorWindow::DoWithSelected(Edits::Step step) {
    const bool onShow = anyShown && step.Touches(ShownName());
    edits.Do(std::move(step));
    if (onShow)
        ShowQuietly(CurrentIndex());
}

QString EditorWindow::WhyOff(const QAction& action) const {
    const auto is = [&](const char* name) { return action.objectName() == QLatin1String(name); };
    if (is("mnuCommitChanges") || is("mnuDiscardChanges"))
        return tr("No record is being edited");
    if (is("mnuUndo"))
        return tr("Nothing was done that could be undone");
    if (is("mnuRedo"))
        return tr("Nothing was undone");
    if (halfRead)
        return tr("Not all files were read: choose File, Read Files Again");
    if (!Browsing() || !anyShown)
        return RecordWindow::WhyOff(action);
    if (is("mnuRenameThisFile") || is(words.MoveItem))
        return tr("The records of the game's own files stay where they are");
    if (is(words.ZoomFileItem))
        return tr("The records are sorted by name, not by file");
    if (is("mnuDeleteSelected"))
        return tr("No record is selected in the list");
    if (is("mnuMoveSelected"))
        return tr("No record is selected in the list, or one of a file of the game's own");
    return RecordWindow::WhyOff(action);
}

} // namespace velmora
