#pragma once

#include "editor/Form.h"
#include "editor/FormHistory.h"
#include "editor/RecordWindow.h"
#include "editor/UnwrittenWork.h"
#include "editor/frmZoomTo.h"
#include "services/modWriter.h"

#include <optional>
#include <span>
#include <string>

class QTimer;

namespace velmora {

class DifferencesPanel;
class ProblemPanel;
class ReplacePanel;
class RevertArrows;

/// What a field holds, as its control shows it.
struct FieldStates {
    const Binding* Field;
    std::optional<std::string> OnDisk; ///< none where the disk has no such record, or it is not known
    std::string Committed;
    std::string Typed;
    [[nodiscard]] bool Differ() const { return OnDisk != Committed || Committed != Typed; }
};

class RecordList;

/// What one editor's controls and texts are called where the workflow of all editors needs them.
struct EditorWords {
    const char* EditItem;
    const char* MoveItem;
    const char* ZoomFileItem;
    const char* SortByFileItem;
    const char* SaveRoutine;
    std::string AddPrompt;
    std::string TakenOnAdd;
    std::string TakenOnCopy;
    std::string DeleteQuestion;
    std::string UnwrittenQuestion;
    std::string WriteIntroduction;
    std::string RenameScope; ///< "every event owned by "
    std::string MoveExtension;
    std::string ZoomNameTitle;
    std::string ZoomFileTitle;
    frmZoomTo::Mode ZoomNameMode;
    frmZoomTo::Mode ZoomFileMode;
    std::string InstructionsFile;
    std::string (*OwnFile)(); ///< the user's own file for new records
    std::string (*DataFolder)();
    const char* SubstitutionPick; ///< routine that runs when a substitution is picked
    void (*BuildSubstitutions)(Catalogue&);
    std::string_view (*SubstitutionHint)(std::string_view name);
};

/// An editor of one kind of record: the three modes (browsing, editing, adding) and all commands that work
/// alike for every kind. A kind's window holds its form, its checks and its texts.
class EditorWindow : public RecordWindow {
    Q_OBJECT

  public:
    // What stands around the form makes use of these.

    /// The fields of the record on show.
    [[nodiscard]] std::vector<FieldStates> FieldsOnShow() const;
    [[nodiscard]] bool CanRevert(const FieldStates& states) const;
    /// Gives a field back what stands on disk: while editing in the form, else as a step.
    void Revert(const Binding& binding);
    /// Undoes or redoes until so many steps of the history are done.
    void GoToStep(int stepsDone);
    [[nodiscard]] QString WhyOff(const QAction& action) const override;
    [[nodiscard]] ReplacePanel& FindAndReplace() { return *replacePanel; }

  protected:
    /// `substitutionsOfKind` is filled at each load with what a "%s" in a text can stand for.
    EditorWindow(const RecordKind& recordKind, const EditorWords& editorWords, Catalogue& substitutionsOfKind,
                 QWidget* parent = nullptr);

    /// To be called once the form is set up.
    void AdoptEditor(const RecordControls& shared);
    /// To be called once the form's fields are bound: what shows and measures their texts.
    void AdoptTexts();
    /// Binds a box of what a "%s" in a text can stand for.
    void BindSubstitution(std::string_view property, ChoiceBox* box);

    /// Checks what the form holds; true when it may be committed.
    virtual bool ValidateData() = 0;
    /// Lets what is no field follow the record that the form shows.
    virtual void FollowRecord(const Record& record) = 0;
    /// Values of a new record beyond its name and file.
    virtual void InitNewRecord(Record&) {}
    /// True for a file of the game's own that must not be renamed and whose records must stay.
    [[nodiscard]] virtual bool IsReservedFile(const std::string&) const { return false; }
    /// Why a file may not get this name (without extension); empty when it may.
    [[nodiscard]] virtual std::string RenameRefusal(const std::string&) const { return {}; }
    [[nodiscard]] virtual std::string MoveRefusal(const std::string&) const { return {}; }
    [[nodiscard]] std::string OwnFile() const { return words.OwnFile(); }
    [[nodiscard]] std::string DataFolder() const { return words.DataFolder(); }
    [[nodiscard]] const char* SortByFileItem() const override { return words.SortByFileItem; }
    [[nodiscard]] std::string UnwrittenQuestion() const override { return words.UnwrittenQuestion; }
    [[nodiscard]] LoadRequest Request() const override;
    void EndLoad() override;
    [[nodiscard]] std::string BrowsingText() const override;
    void BeginLoad() override;
    void ReleaseRecords() override;
    void KeepWhatIsGivenUp() override;
    void TellOfEndedHistory(const std::vector<std::string>& names) override;

    [[nodiscard]] std::vector<std::string> FilesOffered(const std::string& shortName) const override;
    void ShowRecord(const Record* record) override;
    void TellOfRecord() override;
    void SetForEditing(EditMode mode);
    void EnableFrames(bool enabled) override;
    void changeEvent(QEvent* event) override;
    void UpdateMenus() override;

    /// Runs when an entry of a combo box is picked.
    void OnPick(ChoiceBox* box, const char* procedure,
                const std::function<void(const std::string& name)>& picked);
    /// Asks whether to proceed in spite of the reasons; true without any.
    static bool AcceptReasons(const std::vector<Problem>& reasons);
    /// Shows a text with the names in its substitution boxes put in.
    void DisplayReview(const std::string& text, std::span<ChoiceBox* const> substituting,
                       const std::vector<std::string>& parameters = {"NO INPUT PARMS"});

    QWidget* firstField = nullptr; ///< gets the focus when editing begins

  private:
    Catalogue& substitutions;

    void AdoptCommands();
    /// Name of the record on show, as the form has it.
    [[nodiscard]] std::string ShownName() const;
    [[nodiscard]] const Record& ShownRecord() const;
    /// Puts what the form holds into the record on show; a failure leaves it untouched.
    void FormToRecord(Record& record);
    void AddNew(const Record* source, const std::string& takenText);
    void Commit();
    void Discard();
    void ToggleDeletion();
    void RenameThisFile();
    void MoveToNewFile();
    /// The file name asked for, without extension; empty when refused or cancelled.
    std::string AskFileName(const std::string& prompt,
                            const std::function<std::string(const std::string&)>& refusal);
    void WriteToFile();
    /// Asks before changes of another program are written over.
    bool MayReplaceOutsideChanges(const std::vector<std::string>& files);
    /// Asks before a rewrite drops what no copy keeps.
    static bool MayGoOnWithoutCopy(const std::string& reason);
    /// While nothing is pending, offers to read again what another program has changed.
    void OfferOutsideChanges();
    void ReadAgain();
    void SortByMenu(std::int32_t mode);
    void Zoom(const std::string& title, frmZoomTo::Mode mode);
    void UpdateEditMenu();

    void AdoptUndo();
    void AdoptImport();
    void ImportTable();
    void AdoptCompare();
    void CompareWithFolder();
    void AdoptUndoPanels();
    void RevertTyped(const Binding& binding, const std::string& text);
    void RevertCommitted(const Binding& binding);
    template <class Box>
    void AdoptBox(Box* box);
    void FollowMode();
    void UpdateUndo();
    using RecordWindow::GoTo;
    /// Moves the focus to where a change was undone or redone.
    void GoTo(const FormHistory::Place& place);
    void UndoStep();
    void RedoStep();
    /// Undoes or redoes a step, shows a record that it touches and marks what changed.
    void ShowExchange(const std::string& word, const Edits::Step& step, void (Edits::*exchange)());
    /// What is typed over the record on show, while it is edited.
    [[nodiscard]] Draft WhatIsTyped();
    void KeepDraft();
    /// Keeps what is about to be discarded.
    void KeepDiscarded();
    void BringBackDiscarded();
    /// Begins to edit the record of a draft again, or to add it.
    void Resume(const Draft& draft);
    void ResumeTyping(const Draft& draft);
    void TakeUpGivenUp();
    void ShowTakenUp();
    [[nodiscard]] std::vector<std::string> DescribeGivenUp(const Journal::Leftover& work) const;
    [[nodiscard]] std::string FieldsOf(const Draft& draft) const;
    void AdoptList();
    void UpdateListMenu();
    void DeleteSelected();
    void MoveSelected();
    /// Does a step on several records; the one on show is shown anew when it is among them.
    void DoWithSelected(Edits::Step step);

    EditorWords words;
    std::string unreadableTold; ///< files that cannot be read, as last told
    std::string offered;        ///< changed files that the user was last asked about
    UnwrittenWork unwritten;
    FormHistory history{form};
    QTimer* draftTimer = nullptr;
    QTimer* differenceTimer = nullptr;
    DifferencesPanel* differences = nullptr;
    RevertArrows* arrows = nullptr;
    /// What Discard gave up, until something else is done.
    struct Discarded {
        Draft What;
        FormHistory::State History;
    };
    std::optional<Discarded> discarded;
    RecordList* recordList = nullptr;
    ProblemPanel* problems = nullptr;
    ReplacePanel* replacePanel = nullptr;
};

} // namespace velmora
