// The editor's commands on files and on the order of records.
#include "editor/ChoiceBox.h"
#include "editor/EditorWindow.h"
#include "editor/frmZoomTo.h"
#include "platform/Files.h"
#include "records/Losses.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <QAction>
#include <QApplication>
#include <QEvent>
#include <utility>

namespace velmora {

std::string EditorWindow::AskFileName(const std::string& prompt,
                                      const std::function<std::string(const std::string&)>& refusal) {
    std::string answer = CodePage::ReplaceNoCase(gPrompts->Input(prompt), library.Kind.Extension, "");
    if (answer.empty())
        return {};
    for (const char illegal : IllegalFileChars)
        if (answer.find(illegal) != std::string::npos) {
            gPrompts->Message(std::string("Your filename may not contain the character \"") + illegal + "\"",
                              Icon::Information);
            return {};
        }
    if (const std::string reason = FileNameRefusal(answer); !reason.empty()) {
        gPrompts->Message(reason, Icon::Information);
        return {};
    }
    if (const std::string reason = refusal(answer); !reason.empty()) {
        gPrompts->Message(reason);
        return {};
    }
    return answer;
}

void EditorWindow::RenameThisFile() {
    const std::string oldFile = controls.File->Chosen();
    const std::string answer = AskFileName("Rename the file " + oldFile + " to:\r\rThis change will affect " +
                                               words.RenameScope + oldFile,
                                           [this](const std::string& name) { return RenameRefusal(name); });
    if (answer.empty())
        return;
    const std::string newFile = answer + std::string(library.Kind.Extension);
    edits.RenameFile(oldFile, newFile);
    PopulateForm(CurrentIndex());
}

void EditorWindow::MoveToNewFile() {
    const std::string oldFile = controls.File->Chosen();
    const std::string answer = AskFileName("Please enter the new filename to use.",
                                           [this](const std::string& name) { return MoveRefusal(name); });
    if (answer.empty())
        return;
    const std::string name = library.NameOf(ShownRecord());
    const std::string newFile = answer + words.MoveExtension;
    Edits::Step step(library, "moving of " + name + " to " + newFile);
    step.Move(name, DataFolder(), oldFile, newFile);
    edits.Do(std::move(step));
    PopulateForm(CurrentIndex());
}

void EditorWindow::WriteToFile() {
    Trap(Routine("WriteToFile"), NoInputParms, [this] {
        const std::vector<std::string> files = library.FilesToWrite();
        if (files.empty())
            return;
        bool drops = false;
        const std::string details = WriteDetails(library, DataFolder(), files, &drops);
        if (!gPrompts->Ask({words.WriteIntroduction + "\r\r" + Join(files, "\r") + "\r\rProceed?", false,
                            details, drops}))
            return;
        if (!MayReplaceOutsideChanges(files))
            return;
        std::vector<std::string> copies = edits.Write(DataFolder(), files, MayGoOnWithoutCopy);
        unwritten.Drop();
        InitForm();
        for (std::string& copy : copies)
            copy = Files::NameOf(copy);
        if (!copies.empty())
            ShowHint(BrowsingText() + ".  What the files held beyond their records is kept as " +
                     Join(copies, ", "));
    });
}

bool EditorWindow::MayGoOnWithoutCopy(const std::string& reason) {
    return gPrompts->Ask({"What the files hold beyond their records cannot be kept in a dated copy:\r" +
                              reason + "\r\rWriting drops it for good.  Proceed?",
                          true});
}

bool EditorWindow::MayReplaceOutsideChanges(const std::vector<std::string>& files) {
    const std::vector<std::string> changed = library.ChangedOutside(DataFolder(), files).Changed;
    return changed.empty() ||
           gPrompts->Ask({"These files are no longer what was read.  Another program has changed them:\r\r" +
                              Join(changed, "\r") + "\r\rWriting replaces those changes.  Proceed?",
                          true});
}

void EditorWindow::OfferOutsideChanges() {
    const bool quiet =
        isVisible() && Browsing() && !halfRead && !QApplication::activeModalWidget() && !library.AnyPending();
    if (!quiet)
        return;
    RunCommand("Form_Activate", [this] {
        const Library::OutsideChanges outside = library.ChangedOutside(DataFolder());
        const std::string unreadable = Join(outside.Unreadable, ", ");
        if (std::exchange(unreadableTold, unreadable) != unreadable && !unreadable.empty())
            ShowHint(BrowsingText() + ".  It cannot be told whether another program changed " + unreadable +
                     ", which cannot be read.");
        const std::string changed = Join(outside.Changed, "\r");
        if (changed == offered)
            return;
        offered = changed;
        if (!changed.empty() && gPrompts->Ask({"Another program has changed these files:\r\r" + changed +
                                               "\r\rDo you wish to read all files again?"}))
            InitForm();
    });
}

void EditorWindow::changeEvent(QEvent* event) {
    RecordWindow::changeEvent(event);
    // Queued: the window may be just coming up, or a dialog going.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        QMetaObject::invokeMethod(this, &EditorWindow::OfferOutsideChanges, Qt::QueuedConnection);
}

void EditorWindow::ReadAgain() {
    if (library.AnyPending() &&
        !gPrompts->Ask({"Reading the files again discards all changes that have not been written.  "
                        "Do you wish to continue?",
                        true}))
        return;
    KeepWhatIsGivenUp();
    edits.GiveUp();
    unwritten.Drop();
    InitForm();
}

void EditorWindow::SortByMenu(std::int32_t mode) {
    Action("mnuSortAlphabetically")->setChecked(mode != 0);
    Action(SortByFileItem())->setChecked(mode == 0);
    SortBy(mode);
}

void EditorWindow::Zoom(const std::string& title, frmZoomTo::Mode mode) {
    frmZoomTo dialog(library, this);
    const std::int32_t position = dialog.ZoomTo(title, mode, ShownName());
    if (position != -1 && (static_cast<std::size_t>(position) != CurrentIndex() || !anyShown))
        PopulateForm(static_cast<std::size_t>(position));
}

} // namespace velmora
