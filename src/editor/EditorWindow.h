#pragma once

#include "editor/RecordWindow.h"
#include "editor/UnwrittenWork.h"
#include "services/modWriter.h"

#include <string>

namespace velmora {

class ChoiceBox;

/// What one editor's controls and texts are called where the workflow of all editors needs them.
struct EditorWords {
    const char* DetailsFrame;
    const char* NameBox;
    const char* FileBox;
    const char* FirstField; ///< gets the focus when editing begins
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
    std::int32_t ZoomNameMode;
    std::int32_t ZoomFileMode;
    std::string InstructionsFile;
};

/// An editor of one kind of record: the three modes (browsing, editing, adding) and all commands that work
/// alike for every kind. A kind's window holds its form, its checks and its texts.
class EditorWindow : public RecordWindow {
    Q_OBJECT

  protected:
    EditorWindow(const RecordKind& recordKind, const EditorWords& editorWords, QWidget* parent = nullptr);

    /// To be called once the form is set up.
    void AdoptEditor();

    /// Checks what the form holds; true when it may be committed.
    virtual bool ValidateData() = 0;
    /// Copies the form into the record on show. Numbers are converted first, so that a failure leaves the
    /// record untouched.
    virtual void FormToRecord(Record& record) = 0;
    /// Values of a new record beyond its name and file.
    virtual void InitNewRecord(Record&) {}
    /// True for a file of the game's own that must not be renamed and whose records must stay.
    [[nodiscard]] virtual bool IsReservedFile(const std::string&) const { return false; }
    /// Why a file may not get this name (without extension); empty when it may.
    [[nodiscard]] virtual std::string RenameRefusal(const std::string&) const { return {}; }
    [[nodiscard]] virtual std::string MoveRefusal(const std::string&) const { return {}; }
    /// The user's own file for new records.
    [[nodiscard]] virtual std::string OwnFile() const = 0;
    [[nodiscard]] virtual std::string DataFolder() const = 0;
    [[nodiscard]] const char* SortByFileItem() const override { return words.SortByFileItem; }
    [[nodiscard]] std::string UnwrittenQuestion() const override { return words.UnwrittenQuestion; }
    [[nodiscard]] LoadRequest Request() const override;
    void EndLoad() override;
    [[nodiscard]] std::string BrowsingText() const override;
    void ReleaseRecords() override { unwritten.Drop(); }

    void SetForEditing(const std::string& statusText);
    void EnableFrames(bool enabled) override;
    void changeEvent(QEvent* event) override;
    void UpdateMenus() override;

    /// Name of the record on show, as the form has it.
    [[nodiscard]] std::string ShownName() const;
    [[nodiscard]] Record& ShownRecord() const;
    [[nodiscard]] ChoiceBox* FileBox() const;
    /// Moves the record to the file chosen in the form, where that differs from its own.
    void TakeChosenFile(Record& record);
    /// A number field's 32-bit value. A failing conversion puts the focus into the field and passes on.
    std::int32_t FieldNumber(const QString& box);
    /// Runs the leave check of a number field.
    void CheckNumberOnLeave(const QString& box);
    /// Doubles lone percent signs in a text box.
    template <class Box>
    static void NormalizeBox(Box* box) {
        std::string text = box->Bytes();
        NormalizeWildCards(text);
        if (text != box->Bytes())
            box->SetBytes(text);
    }
    static void WarnOfLength(const std::string& text, std::string_view label, std::size_t maximum);
    /// Runs when an entry of a combo box is picked.
    void OnPick(const QString& box, const char* procedure,
                const std::function<void(const std::string& name)>& picked);
    /// Asks whether to proceed in spite of the reasons; true without any.
    static bool AcceptReasons(const std::vector<Reason>& reasons);
    void DisplayReview(const std::string& text, const std::vector<std::string>& names,
                       const std::vector<std::string>& parameters = {"NO INPUT PARMS"});

    class FieldChecks* checks = nullptr;

  private:
    void AdoptCommands();
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
    /// While nothing is pending, offers to read again what another program has changed.
    void OfferOutsideChanges();
    void ReadAgain();
    void SortByMenu(std::int32_t mode);
    void Zoom(const std::string& title, std::int32_t mode);
    void UpdateEditMenu();

    EditorWords words;
    std::string offered; ///< changed files that the user was last asked about
    UnwrittenWork unwritten;
};

} // namespace velmora
