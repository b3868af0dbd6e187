#include "editor/EditorWindow.h"

#include "editor/ChoiceBox.h"
#include "editor/FieldChecks.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"
#include "services/Numbers.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <QAction>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>

namespace velmora {

EditorWindow::EditorWindow(const RecordKind& recordKind, const EditorWords& editorWords, QWidget* parent)
    : RecordWindow(recordKind, parent), words(editorWords), unwritten(library) {}

void EditorWindow::AdoptEditor() {
    AdoptForm(words.DetailsFrame, {"mnuEdit", "mnuReview", "mnuHelp", "mnuZoom"});
    checks = new FieldChecks(this);
    AdoptCommands();
    for (auto* box : findChildren<LineBox*>())
        connect(box, &LineBox::Refused, this, [this](const QString& hint) { ShowHint(hint); });
    for (auto* box : findChildren<TextBox*>())
        connect(box, &TextBox::Refused, this, [this](const QString& hint) { ShowHint(hint); });
    for (const char* menu : {"mnuFile", "mnuEdit", "mnuZoom"})
        connect(Menu(menu), &QMenu::aboutToShow, this,
                [this, menu] { RunCommand(std::string(menu) + "_Click", [] {}); });
}

LoadRequest EditorWindow::Request() const {
    LoadRequest request;
    request.Folder = DataFolder();
    request.OwnFile = OwnFile();
    return request;
}

void EditorWindow::EndLoad() {
    if (unwritten.Offer(ProgramFile(std::string(library.Kind.Word) + "s.journal"), DataFolder())) {
        PopulateForm(0);
        SetReadOnly();
    }
}

std::string EditorWindow::BrowsingText() const {
    return halfRead ? "READ ONLY.  Not all files were read: nothing can be written until File, Read Files "
                      "Again succeeds."
                    : RecordWindow::BrowsingText();
}

void EditorWindow::AdoptCommands() {
    OnClick(words.EditItem, [this] { SetForEditing("READY FOR EDITS"); });
    OnClick("mnuDiscardChanges", [this] { Discard(); });
    OnClick("mnuCommitChanges", [this] { Commit(); });
    OnClick("mnuRenameThisFile", [this] { RenameThisFile(); });
    OnClick(words.MoveItem, [this] { MoveToNewFile(); });
    OnClick("mnuAddNew", [this] { AddNew(nullptr, words.TakenOnAdd); });
    OnClick("mnuCopyAsNew", [this] { AddNew(&ShownRecord(), words.TakenOnCopy); });
    OnClick("mnuDelete", [this] { ToggleDeletion(); });
    OnClick("mnuWriteToFile", [this] { WriteToFile(); });
    OnClick("mnuReadAgain", [this] { ReadAgain(); });
    OnClick("mnuSortAlphabetically", [this] { SortByMenu(1); });
    OnClick(
        words.SortByFileItem, [this] { SortByMenu(0); }, "mnuSortByFilename_Click");
    OnClick("mnuZoomTo", [this] { Zoom(words.ZoomNameTitle, words.ZoomNameMode); });
    OnClick(words.ZoomFileItem, [this] { Zoom(words.ZoomFileTitle, words.ZoomFileMode); });
    OnClick("mnuViewInstructionsFile", [this] { gPrompts->ShowTextFile(HelpFile(words.InstructionsFile)); });
}

std::string EditorWindow::ShownName() const {
    return Find<LineBox>(QString::fromLatin1(words.NameBox))->Bytes();
}

Record& EditorWindow::ShownRecord() const {
    Record* record = library.Find(ShownName());
    if (!record)
        throw Failure(FailureInvalidArgument, "No record is named " + ShownName());
    return *record;
}

ChoiceBox* EditorWindow::FileBox() const {
    return Find<ChoiceBox>(QString::fromLatin1(words.FileBox));
}

void EditorWindow::SetForEditing(const std::string& statusText) {
    Trap(Routine("SetForEditing"), {statusText}, [&] {
        LeaveBrowsing(statusText);
        FileBox()->setEnabled(!IsReservedFile(FileBox()->Chosen()));
        Find<LineBox>(QString::fromLatin1(words.NameBox))->setEnabled(false);
        Find<QWidget>(QString::fromLatin1(words.FirstField))->setFocus(Qt::OtherFocusReason);
    });
}

void EditorWindow::EnableFrames(bool enabled) {
    for (QWidget* frame : findChildren<QWidget*>())
        if (frame->objectName().startsWith(QLatin1String("fra")) &&
            frame->objectName() != QLatin1String(words.DetailsFrame))
            frame->setEnabled(enabled);
    if (auto* browse = findChild<QPushButton*>(QStringLiteral("cmdBrowseForPicture")))
        browse->setEnabled(enabled);
}

void EditorWindow::UpdateMenus() {
    UpdateEditMenu();
    const bool settled = Browsing() && !library.Records.Empty();
    Action(SortByFileItem())->setEnabled(settled);
    Action("mnuSortAlphabetically")->setEnabled(settled);
    Action("mnuReadAgain")->setEnabled(Browsing());
    Action("mnuZoomTo")->setEnabled(settled);
    Action(words.ZoomFileItem)->setEnabled(settled && Action(SortByFileItem())->isChecked());
}

void EditorWindow::UpdateEditMenu() {
    const bool any = !library.Records.Empty();
    const bool settled = anyShown && Browsing();
    const bool movable = settled && !halfRead && !IsReservedFile(library.At(CurrentIndex()).ShortName);
    const bool marked = any && library.At(CurrentIndex()).ToBeDeleted;
    Action("mnuDelete")->setText(marked ? QStringLiteral("&Un-Delete") : QStringLiteral("&Delete"));
    Action(words.EditItem)->setEnabled(settled);
    Action("mnuDiscardChanges")->setEnabled(!Browsing());
    Action("mnuCommitChanges")->setEnabled(!Browsing());
    Action("mnuRenameThisFile")->setEnabled(movable);
    Action(words.MoveItem)->setEnabled(movable);
    Action("mnuAddNew")->setEnabled(Browsing());
    Action("mnuCopyAsNew")->setEnabled(settled);
    Action("mnuDelete")->setEnabled(settled);
    Action("mnuWriteToFile")->setEnabled(settled && !halfRead);
}

void EditorWindow::AddNew(const Record* source, const std::string& takenText) {
    std::string name = gPrompts->Input(words.AddPrompt);
    if (name.empty())
        return;
    if (const std::string report = SanitizeName(name, library.Kind.NameWord); !report.empty())
        gPrompts->Message(report);
    if (library.Records.Exists(name)) {
        gPrompts->Message(takenText);
        return;
    }
    Record& record = library.AddNew(name, DataFolder(), OwnFile());
    if (source)
        CopyContent(library.Kind, *source, record);
    else
        InitNewRecord(record);
    PopulateForm(library.Records.Count() - 1);
    SetForEditing("");
}

void EditorWindow::Commit() {
    const bool editing =
        Find<QLabel>(QStringLiteral("lblEditStatus"))->text() == QLatin1String("READY FOR EDITS");
    Trap(Routine(words.SaveRoutine), {ParameterText(editing)}, [this] {
        if (!Trap(Routine("ValidateData"), NoInputParms, [this] { return ValidateData(); }))
            return;
        Record& record = ShownRecord();
        FormToRecord(record);
        record.IsDirty = true;
        record.IsBeingAdded = false;
        unwritten.Keep({&record});
        PopulateForm(CurrentIndex());
        SetReadOnly();
    });
}

void EditorWindow::Discard() {
    std::size_t position = CurrentIndex();
    if (CodePage::EqualNoCase(FromQt(Find<QLabel>(QStringLiteral("lblStatus"))->text()),
                              library.Kind.Make()->AddingStatus())) {
        library.Remove(ShownName());
        position = 0;
        library.Reorder();
    }
    PopulateForm(position);
    SetReadOnly();
}

void EditorWindow::ToggleDeletion() {
    Record& record = ShownRecord();
    if (!record.ToBeDeleted && !gPrompts->Ask({words.DeleteQuestion}))
        return;
    record.ToBeDeleted = !record.ToBeDeleted;
    record.IsDirty = true;
    unwritten.Keep({&record});
    PopulateForm(CurrentIndex());
}

void EditorWindow::TakeChosenFile(Record& record) {
    const std::string chosen = FileBox()->Chosen();
    if (CodePage::EqualNoCase(chosen, record.ShortName))
        return;
    library.FilesLosingRecords.push_back(record.ShortName);
    record.ShortName = chosen;
    record.FileName = DataFolder() + chosen;
}

std::int32_t EditorWindow::FieldNumber(const QString& name) {
    auto* box = Find<LineBox>(name);
    try {
        return FieldToInt32(box->Bytes());
    } catch (const Failure& failure) {
        box->setFocus(Qt::OtherFocusReason);
        throw Failure(failure.Number, failure.Description() + " (" + FromQt(box->accessibleName()) + ")");
    }
}

void EditorWindow::CheckNumberOnLeave(const QString& name) {
    auto* box = Find<LineBox>(name);
    checks->OnLeave(box, [box] { return !CheckNumericField(box); });
}

void EditorWindow::WarnOfLength(const std::string& text, std::string_view label, std::size_t maximum) {
    if (text.size() > maximum)
        gPrompts->Message(std::string(label) + " text length (" + std::to_string(text.size()) +
                              ") higher than maximum recommended length (" + std::to_string(maximum) + ")!",
                          Icon::Exclamation);
}

void EditorWindow::OnPick(const QString& name, const char* procedure,
                          const std::function<void(const std::string& name)>& picked) {
    auto* box = Find<ChoiceBox>(name);
    const auto run = [this, box, procedure, picked](int index) {
        if (index >= 0 && !populating)
            RunCommand(procedure, [&] { picked(box->Chosen()); });
    };
    connect(box, &QComboBox::currentIndexChanged, this, run);
    // Picking the entry that is chosen already changes nothing, but counts as a choice.
    connect(box, &QComboBox::activated, this, run);
}

bool EditorWindow::AcceptReasons(const std::vector<Reason>& reasons) {
    return reasons.empty() || gPrompts->Ask({FailedValidationText(reasons), true});
}

void EditorWindow::DisplayReview(const std::string& text, const std::vector<std::string>& names,
                                 const std::vector<std::string>& parameters) {
    Trap(Routine("DisplayReview"), parameters, [&] { gPrompts->Message(ReviewText(text, names)); });
}

} // namespace velmora
