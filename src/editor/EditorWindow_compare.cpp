// Holding the library against another folder.
#include "editor/CompareDialog.h"
#include "editor/EditorWindow.h"
#include "editor/QtText.h"
#include "editor/Workbench.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "services/Settings.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QSettings>

namespace velmora {

namespace {

std::string Differences(std::size_t count) {
    return std::to_string(count) + (count == 1 ? " difference" : " differences");
}

/// The folder compared with last, which the picker begins at.
class LastFolder {
  public:
    [[nodiscard]] std::string Get() const {
        const std::string folder = PathFromQt(store->value(key).toString());
        return !folder.empty() && Files::FolderExists(folder) ? folder : Settings.GamePath;
    }
    void Set(const std::string& folder) { store->setValue(key, PathToQt(folder)); }

  private:
    const QString key = QStringLiteral("folder");
    std::unique_ptr<QSettings> store = Workbench::Store(QStringLiteral("compare"));
};

} // namespace

void EditorWindow::AdoptCompare() {
    auto* item = new QAction(tr("&Compare With Folder..."), this);
    item->setObjectName(QStringLiteral("mnuCompareWith"));
    Menu("mnuFile")->insertAction(Action("mnuExit"), item);
    Menu("mnuFile")->insertSeparator(Action("mnuExit"));
    OnClick("mnuCompareWith", [this] { CompareWithFolder(); });
}

void EditorWindow::CompareWithFolder() {
    LastFolder last;
    const std::string folder = gPrompts->PickFolder("Compare with a folder", last.Get());
    if (folder.empty())
        return;
    last.Set(folder);
    FolderComparison comparison(library, std::make_shared<CheckContext>(Settings.GamePath));
    QApplication::setOverrideCursor(Qt::WaitCursor);
    std::string reason;
    try {
        if (!comparison.Read(folder))
            reason = "There is no " + std::string(library.Kind.Extension) + " file in this folder.";
    } catch (const Failure& failure) {
        reason = failure.Description();
    }
    QApplication::restoreOverrideCursor();
    if (!reason.empty())
        return gPrompts->Message(reason, Icon::Exclamation, folder);
    if (comparison.Count() == 0)
        return ShowHint(std::string("No record differs from those of ") + folder);
    CompareDialog dialog(comparison, PathToQt(folder), this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const std::size_t position = anyShown ? CurrentIndex() : 0;
    const std::string taken = Differences(comparison.Sum().Ticked);
    Edits::Step step = comparison.MakeStep("taking of " + taken, DataFolder());
    if (step.Count() == 0)
        return ShowHint(std::string("Nothing to take: all of it stays as it is"));
    edits.Do(std::move(step));
    ShowQuietly(position);
    ShowHint("Took " + taken + "; Undo gives them back");
}

} // namespace velmora
