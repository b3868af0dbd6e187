#pragma once

#include "editor/Form.h"
#include "records/Edits.h"

#include <QMainWindow>
#include <QString>
#include <functional>
#include <string>
#include <vector>

class QAction;
class QLabel;
class QMenu;
class QPushButton;

namespace velmora {

class Workbench;

/// What the user is doing with the record on show.
enum class EditMode { Browsing, Editing, Adding };

/// The controls that every window of records has.
struct RecordControls {
    QWidget* Details; ///< holds the record's fields
    LineBox* Name;
    ChoiceBox* File;
    LineBox* Edited;
    QLabel* WhereWeAt;
    QLabel* StatusCaption;
    QLabel* Status;
    QLabel* EditStatus;
    QPushButton* Back;
    QPushButton* Forward;
};
/// Those of a drawn form, where all but three have the same names.
template <class Ui>
RecordControls ControlsOf(const Ui& ui, QWidget* details, LineBox* name, ChoiceBox* file) {
    return {details,
            name,
            file,
            ui->txtEdited,
            ui->lblWhereWeAt,
            ui->lblStatusCaption,
            ui->lblStatus,
            ui->lblEditStatus,
            ui->cmdBack,
            ui->cmdForward};
}

/// A window that loads all records of one kind and shows them one at a time, read only. It is never deleted
/// while the program runs: closing hides it, opening loads everything afresh.
class RecordWindow : public QMainWindow {
    Q_OBJECT

  public:
    ~RecordWindow() override;

    /// Shows the window and loads its library: the window's load event.
    void Open();

    [[nodiscard]] const Library& Records() const { return library; }
    /// 0-based position of the record on show, 0 when there is none.
    [[nodiscard]] std::size_t CurrentIndex() const { return currentIndex; }
    /// Name of the record on show, empty when there is none.
    [[nodiscard]] std::string ShownRecordName() const;
    [[nodiscard]] EditMode Mode() const { return editMode; }
    [[nodiscard]] Edits& Changes() { return edits; }
    [[nodiscard]] const Form& Fields() const { return form; }
    /// What reading the library had to tell.
    [[nodiscard]] const std::vector<Problem>& FoundInLoading() const { return found; }

    // What stands around the form makes use of these.

    /// Shows a record. False, with a hint, while another is being edited.
    bool GoTo(std::size_t position);
    /// Brings a field into view.
    void ScrollTo(QWidget* control);
    /// Why a command is off.
    [[nodiscard]] virtual QString WhyOff(const QAction& action) const;
    /// Writes into the edit-status line.
    void ShowHint(const std::string& text);
    void ShowHint(const QString& text);

  signals:
    void Closed();
    void RecordShown();
    void ModeChanged();
    /// The records have another order; one of them is about to be shown.
    void LibrarySorted();
    /// The library was read from disk, as far as it could be.
    void LibraryRead();

  protected:
    explicit RecordWindow(const RecordKind& recordKind, QWidget* parent = nullptr);

    /// To be called once the form is set up. `menusOfRecords` go off when the data directory is missing.
    void AdoptForm(const RecordControls& shared, const std::vector<const char*>& menusOfRecords);
    /// The files that a record of this file may belong to.
    [[nodiscard]] virtual std::vector<std::string> FilesOffered(const std::string& shortName) const;

    /// The window's load event beyond the library, such as its picture.
    virtual void LoadForm() {}
    /// Where the files are; the base adds what belongs to this opening.
    [[nodiscard]] virtual LoadRequest Request() const = 0;
    /// Called before the library is read.
    virtual void BeginLoad() {}
    /// Called when the library was read to its end and is on show.
    virtual void EndLoad() {}
    /// Called when the library was read again and these records were found to be others than here, so that
    /// the history before them has ended.
    virtual void TellOfEndedHistory(const std::vector<std::string>& /*names*/) {}
    /// Puts a record into the form; nullptr empties it.
    virtual void ShowRecord(const Record* record) = 0;
    /// Tells what is to be said of the record on show.
    virtual void TellOfRecord() {}
    /// Called when closing is about to give up what is not written.
    virtual void KeepWhatIsGivenUp() {}
    /// Called when the window has closed, after the records are gone.
    virtual void ReleaseRecords() {}
    /// Question before closing with committed, unwritten records.
    [[nodiscard]] virtual std::string UnwrittenQuestion() const = 0;

    /// The menu item's name; one editor spells it its own way.
    [[nodiscard]] virtual const char* SortByFileItem() const { return "mnuSortByFileName"; }

    /// What the edit-status line reads while browsing.
    [[nodiscard]] virtual std::string BrowsingText() const { return "READ ONLY"; }

    void InitForm();
    void PopulateForm(std::size_t position);
    /// The same for a record whose faults the user has been told of, or is about to be shown.
    void ShowQuietly(std::size_t position);
    void SetReadOnly();
    void SortBy(std::int32_t mode);
    [[nodiscard]] bool Browsing() const { return editMode == EditMode::Browsing; }
    /// Enters editing or adding mode.
    void LeaveBrowsing(EditMode newMode, const std::string& statusText);
    /// What the edit-status line reads.
    [[nodiscard]] std::string EditStatus() const;
    /// Text boxes, option buttons, combo boxes and labels.
    void EnableFields(bool enabled);
    virtual void EnableFrames(bool) {}
    void EnableNavigation(bool enabled);
    /// Menu items follow the state; called whenever it may have changed.
    virtual void UpdateMenus() {}

    /// Runs a command as an event routine of this window.
    void RunCommand(const std::string& procedure, const std::function<void()>& body);
    /// Connects a menu item or button to a command; the routine is the control's name + "_Click".
    void OnClick(const char* control, const std::function<void()>& body, const char* procedure = nullptr);

    [[nodiscard]] std::string Routine(const std::string& procedure) const {
        return library.Kind.Routine(procedure);
    }
    [[nodiscard]] QAction* Action(const char* name) const;
    [[nodiscard]] QMenu* Menu(const char* name) const;
    template <class Control>
    [[nodiscard]] Control* Find(const QString& name) const {
        auto* control = findChild<Control*>(name);
        if (!control)
            qFatal("%s lacks %s", qPrintable(objectName()), qPrintable(name));
        return control;
    }

    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void changeEvent(QEvent* event) override;

    Library library;
    Edits edits{library};
    Form form{library.Kind, this}; ///< binds the record's fields
    RecordControls controls{};
    Workbench* workbench = nullptr; ///< what stands around the form
    /// Set when the last load did not run to its end: what was never read must not be written over.
    bool halfRead = false;

    /// True when a record is on show.
    bool anyShown = false;

  private:
    bool MayClose();
    /// Names and files of the records that closing would give up, a line each; empty without any.
    [[nodiscard]] std::string UnwrittenRecords() const;
    void Load();
    /// The loading itself; false without a data directory.
    bool ReadLibrary();
    void ClearLibrary();
    /// After a load that failed: what it got to can be browsed, but nothing is on show.
    void ShowNothing();
    void ShowAt(std::size_t position);
    void Display(const Record* record);
    void SetMode(EditMode newMode);
    void ShowDetails(bool shown);
    void Navigate(int step);
    /// Lets a button's key work without delay: a button's own shortcut shows it pressed for a while first.
    void ClickAtOnce(QPushButton* button);
    /// A record is mostly read while its fields are disabled: their text stays easy to read.
    void KeepDisabledTextLegible();
    void AdoptHelp();
    void TellWhatFieldsAre();
    /// Tells what is known of the field that has the focus; without one, of that which is clicked next.
    void TellOfField();
    static bool IsField(const QWidget* widget);

    std::vector<Problem> found;
    std::size_t currentIndex = 0;
    EditMode editMode = EditMode::Browsing;
    std::vector<QWidget*> fields;
    std::vector<QMenu*> recordMenus;
};

} // namespace velmora
