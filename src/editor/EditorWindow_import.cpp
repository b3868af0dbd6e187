// Taking in a table that was edited elsewhere.
#include "editor/EditorWindow.h"
#include "editor/ImportDialog.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "services/Settings.h"

#include <QAction>
#include <QApplication>
#include <QMenu>

namespace velmora {

namespace {

std::string Rows(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " row" : " rows");
}

} // namespace

void EditorWindow::AdoptImport() {
    auto* item = new QAction(tr("&Import..."), this);
    item->setObjectName(QStringLiteral("mnuImport"));
    Menu("mnuFile")->insertAction(Action("mnuExit"), item);
    OnClick("mnuImport", [this] { ImportTable(); });
}

void EditorWindow::ImportTable() {
    const std::string path = gPrompts->PickFile(
        {"Import a table", Settings.GamePath, "*.csv", "Tables (*.csv *.txt *.tsv);;All files (*)"});
    if (path.empty())
        return;
    const CheckContext context(Settings.GamePath);
    Import table(library, context, OwnFile());
    QApplication::setOverrideCursor(Qt::WaitCursor);
    std::string reason;
    try {
        table.Read(Files::ReadWhole(path));
    } catch (const Failure& failure) {
        reason = failure.Description();
    }
    QApplication::restoreOverrideCursor();
    if (!reason.empty())
        return gPrompts->Message(reason, Icon::Exclamation, path);
    if (table.Rows().empty())
        return ShowHint("Nothing to import: " + Rows(table.CountOf(Import::Outcome::Same)) +
                        " without a change");
    ImportDialog dialog(table, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const std::size_t position = anyShown ? CurrentIndex() : 0;
    edits.Do(table.StepOf(DataFolder(), [&](const Import::Row& row) { return dialog.Wants(row); }));
    ShowQuietly(position);
    ShowHint("Imported " + Rows(dialog.CountWanted()) + "; Undo takes them back");
}

} // namespace velmora
