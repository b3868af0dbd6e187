#include "editor/EditorWindow.h"

#include "editor/ChoiceBox.h"
#include "editor/LengthMeters.h"
#include "editor/LineBox.h"
#include "editor/PreviewPanel.h"
#include "editor/ProblemPanel.h"
#include "editor/QtText.h"
#include "editor/ReplacePanel.h"
#include "editor/SpellChecker.h"
#include "editor/SpellingPanel.h"
#include "editor/TextBox.h"
#include "editor/Workbench.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <QAction>
#include <QMenu>
#include <QTimer>

namespace velmora {

EditorWindow::EditorWindow(const RecordKind& recordKind, const EditorWords& editorWords,
                           Catalogue& substitutionsOfKind, QWidget* parent)
    : RecordWindow(recordKind, parent), substitutions(substitutionsOfKind), words(editorWords),
      unwritten(edits, library) {}

void EditorWindow::AdoptEditor(const RecordControls& shared) {
    AdoptForm(shared, {"mnuEdit", "mnuReview", "mnuHelp", "mnuZoom"});
    AdoptCommands();
    AdoptUndo();
    AdoptList();
    AdoptUndoPanels();
    AdoptImport();
    AdoptCompare();
    for (auto* box : findChildren<LineBox*>())
        connect(box, &LineBox::Refused, this, [this](const QString& hint) { ShowHint(hint); });
    for (auto* box : findChildren<TextBox*>())
        connect(box, &TextBox::Refused, this, [this](const QString& hint) { ShowHint(hint); });
    for (const char* menu : {"mnuFile", "mnuEdit", "mnuZoom"})
        connect(Menu(menu), &QMenu::aboutToShow, this,
                [this, menu] { RunCommand(std::string(menu) + "_Click", [] {}); });
    workbench->AddTools({{"mnuAddNew", "document-new"},
                         {words.EditItem, "document-edit"},
                         {"mnuCommitChanges", "dialog-ok-apply"},
                         {"mnuDiscardChanges", "dialog-cancel"},
                         {"", ""},
                         {"mnuUndo", "edit-undo"},
                         {"mnuRedo", "edit-redo"},
                         {"", ""},
                         {"mnuDelete", "edit-delete"},
                         {"mnuWriteToFile", "document-save"}});
}

void EditorWindow::AdoptTexts() {
    new LengthMeters(*this);
    auto* preview = new PreviewPanel(*this, *workbench, *recordList);
    connect(&history, &FormHistory::Moved, preview, &PreviewPanel::Later);
    auto* speller = new SpellChecker(*this, *workbench);
    auto* unknown = new SpellingPanel(*this, *workbench, *speller);
    connect(unknown, &SpellingPanel::ReplaceWanted, this,
            [this](const std::string& word, const std::string& meant) {
                if (Action("mnuFindReplace")->isEnabled())
                    replacePanel->Open(word, meant, {.MatchCase = true, .WholeWord = true});
                else
                    ShowHint(std::string("Commit or discard first"));
            });
    connect(speller, &SpellChecker::Changed, this, [this, speller] {
        RecordCheck check;
        if (const auto known = speller->Words())
            check = [this, known](const Record& record, std::vector<Problem>& notes) {
                known->Check(library.Kind, record, notes);
            };
        problems->CheckAlso(check);
    });
}

void EditorWindow::BindSubstitution(std::string_view property, ChoiceBox* box) {
    form.BindChoice(property, box, substitutions);
    OnPick(box, words.SubstitutionPick,
           [this](const std::string& name) { ShowHint(std::string(words.SubstitutionHint(name))); });
}

void EditorWindow::BeginLoad() {
    substitutions.RemoveAll();
    words.BuildSubstitutions(substitutions);
}

void EditorWindow::ReleaseRecords() {
    history.End();
    draftTimer->stop();
    discarded.reset();
    unwritten.Drop();
    substitutions.RemoveAll();
}

LoadRequest EditorWindow::Request() const {
    LoadRequest request;
    request.Folder = DataFolder();
    request.OwnFile = OwnFile();
    return request;
}

void EditorWindow::EndLoad() {
    if (unwritten.Offer(ProgramFile(std::string(library.Kind.Word) + "s.journal"), DataFolder()))
        ShowTakenUp();
}

std::string EditorWindow::BrowsingText() const {
    return halfRead ? "READ ONLY.  Not all files were read: nothing can be changed until File, Read Files "
                      "Again succeeds."
                    : RecordWindow::BrowsingText();
}

void EditorWindow::AdoptCommands() {
    OnClick(words.EditItem, [this] { SetForEditing(EditMode::Editing); });
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
    return controls.Name->Bytes();
}

const Record& EditorWindow::ShownRecord() const {
    const Record* record = library.Find(ShownName());
    if (!record)
        throw Failure(FailureInvalidArgument, "No record is named " + ShownName());
    return *record;
}

std::vector<std::string> EditorWindow::FilesOffered(const std::string& shortName) const {
    if (IsReservedFile(shortName))
        return {shortName};
    std::vector<std::string> names = RecordWindow::FilesOffered(shortName);
    std::erase_if(names, [this](const std::string& name) { return IsReservedFile(name); });
    return names;
}

void EditorWindow::ShowRecord(const Record* record) {
    std::unique_ptr<Record> none;
    if (!record) {
        none = library.Kind.Make();
        library.Kind.Normalize(*none);
    }
    const Record& shown = record ? *record : *none;
    form.Show(shown);
    FollowRecord(shown);
}

void EditorWindow::TellOfRecord() {
    for (const std::string& notice : form.Overlong())
        gPrompts->Message(notice);
}

void EditorWindow::SetForEditing(EditMode mode) {
    const std::string statusText = mode == EditMode::Editing ? "READY FOR EDITS" : "";
    Trap(Routine("SetForEditing"), {statusText}, [&] {
        LeaveBrowsing(mode, statusText);
        controls.File->setEnabled(!IsReservedFile(controls.File->Chosen()));
        controls.Name->setEnabled(false);
        firstField->setFocus(Qt::OtherFocusReason);
    });
}

void EditorWindow::EnableFrames(bool enabled) {
    for (QWidget* frame : findChildren<QWidget*>())
        if (frame->objectName().startsWith(QLatin1String("fra")) && frame != controls.Details)
            frame->setEnabled(enabled);
}

void EditorWindow::UpdateMenus() {
    history.Note();
    UpdateUndo();
    UpdateEditMenu();
    UpdateListMenu();
    const bool settled = Browsing() && !library.Empty();
    Action(SortByFileItem())->setEnabled(settled);
    Action("mnuSortAlphabetically")->setEnabled(settled);
    Action("mnuReadAgain")->setEnabled(Browsing());
    Action("mnuZoomTo")->setEnabled(settled);
    Action(words.ZoomFileItem)->setEnabled(settled && Action(SortByFileItem())->isChecked());
}

void EditorWindow::UpdateEditMenu() {
    const bool any = !library.Empty();
    // What was never read could not be written either.
    const bool changeable = anyShown && Browsing() && !halfRead;
    const bool movable = changeable && !IsReservedFile(library.At(CurrentIndex()).ShortName);
    const bool marked = any && library.At(CurrentIndex()).ToBeDeleted;
    Action("mnuDelete")->setText(marked ? QStringLiteral("&Un-Delete") : QStringLiteral("&Delete"));
    Action(words.EditItem)->setEnabled(changeable);
    Action("mnuDiscardChanges")->setEnabled(!Browsing());
    Action("mnuCommitChanges")->setEnabled(!Browsing());
    Action("mnuRenameThisFile")->setEnabled(movable);
    Action(words.MoveItem)->setEnabled(movable);
    Action("mnuAddNew")->setEnabled(Browsing() && !halfRead);
    for (const char* item : {"mnuCopyAsNew", "mnuDelete", "mnuWriteToFile", "mnuFindReplace"})
        Action(item)->setEnabled(changeable);
}

void EditorWindow::AddNew(const Record* source, const std::string& takenText) {
    std::string name = gPrompts->Input(words.AddPrompt);
    if (name.empty())
        return;
    if (const std::string report = SanitizeName(name, library.Kind.NameWord); !report.empty())
        gPrompts->Message(report);
    if (name.empty())
        return;
    if (library.Exists(name)) {
        gPrompts->Message(takenText);
        return;
    }
    Edits::Step step(library, (source ? "copying to " : "addition of ") + name);
    Record& record = step.Add(name, DataFolder(), OwnFile());
    if (source)
        CopyContent(library.Kind, *source, record);
    else
        InitNewRecord(record);
    edits.Open(std::move(step));
    PopulateForm(library.Count() - 1);
    SetForEditing(EditMode::Adding);
}

void EditorWindow::Commit() {
    // A hint in its place makes the parameter "False", though the mode is the same.
    const bool editing = EditStatus() == "READY FOR EDITS";
    Trap(Routine(words.SaveRoutine), {ParameterText(editing)}, [this] {
        form.EndSearches();
        if (!Trap(Routine("ValidateData"), NoInputParms, [this] { return ValidateData(); }))
            return;
        const Record& before = ShownRecord();
        Edits::Step step(library, "commit of " + library.NameOf(before));
        Record& record = step.Change(library.NameOf(before));
        FormToRecord(record);
        if (library.Kind.Normalize)
            library.Kind.Normalize(record);
        if (!CodePage::EqualNoCase(record.ShortName, before.ShortName))
            step.NoteLosing(before.ShortName);
        record.IsDirty = true;
        record.IsBeingAdded = false;
        edits.Do(std::move(step));
        PopulateForm(CurrentIndex());
        SetReadOnly();
    });
}

void EditorWindow::Discard() {
    KeepDiscarded();
    std::size_t position = CurrentIndex();
    if (Mode() == EditMode::Adding) {
        edits.TakeBack();
        position = 0;
    }
    PopulateForm(position);
    SetReadOnly();
}

void EditorWindow::ToggleDeletion() {
    const Record& record = ShownRecord();
    if (!record.ToBeDeleted && !gPrompts->Ask({words.DeleteQuestion}))
        return;
    edits.ToggleDeletion(library.NameOf(record));
    PopulateForm(CurrentIndex());
}

void EditorWindow::FormToRecord(Record& record) {
    const std::string own = record.ShortName;
    form.Read(record);
    if (CodePage::EqualNoCase(record.ShortName, own))
        record.ShortName = own;
    else
        record.FileName = DataFolder() + record.ShortName;
}

void EditorWindow::OnPick(ChoiceBox* box, const char* procedure,
                          const std::function<void(const std::string& name)>& picked) {
    const auto run = [this, box, procedure, picked](int index) {
        if (index >= 0)
            RunCommand(procedure, [&] { picked(box->Chosen()); });
    };
    connect(box, &QComboBox::currentIndexChanged, this, run);
    // Picking the entry that is chosen already changes nothing, but counts as a choice.
    connect(box, &QComboBox::activated, this, run);
}

bool EditorWindow::AcceptReasons(const std::vector<Problem>& reasons) {
    return reasons.empty() || gPrompts->Ask({FailedValidationText(reasons), true});
}

void EditorWindow::DisplayReview(const std::string& text, std::span<ChoiceBox* const> substituting,
                                 const std::vector<std::string>& parameters) {
    Trap(Routine("DisplayReview"), parameters, [&] {
        std::vector<std::string> names;
        for (const ChoiceBox* box : substituting)
            names.push_back(box->Chosen());
        gPrompts->Message(ReviewText(text, names));
    });
}

} // namespace velmora
