#include "editor/RecordWindow.h"

#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/Workbench.h"
#include "services/ProblemMessages.h"
#include "services/Settings.h"
#include "services/Trap.h"

#include <QAbstractButton>
#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QDockWidget>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <exception>
#include <utility>

namespace velmora {

RecordWindow::RecordWindow(const RecordKind& recordKind, QWidget* parent)
    : QMainWindow(parent), library(recordKind) {}

RecordWindow::~RecordWindow() {
    hide();
    // Their views look into the library, which goes before the window's children do.
    qDeleteAll(findChildren<QDockWidget*>());
}

void RecordWindow::AdoptForm(const RecordControls& shared, const std::vector<const char*>& menusOfRecords) {
    controls = shared;
    form.BindName(controls.Name);
    form.BindFile(controls.File, [this](const std::string& file) { return FilesOffered(file); });
    for (const char* menu : menusOfRecords)
        recordMenus.push_back(Menu(menu));
    for (QWidget* widget : findChildren<QWidget*>())
        if (IsField(widget))
            fields.push_back(widget);
    OnClick("cmdBack", [this] { Navigate(-1); });
    OnClick("cmdForward", [this] { Navigate(1); });
    for (QPushButton* button : {controls.Back, controls.Forward})
        ClickAtOnce(button);
    KeepDisabledTextLegible();
    connect(Action("mnuExit"), &QAction::triggered, this, &QWidget::close);
    workbench = new Workbench(*this); // last: the panels' controls are no fields
    AdoptHelp();
}

void RecordWindow::ClickAtOnce(QPushButton* button) {
    auto* key = new QShortcut(button->shortcut(), this);
    button->setShortcut({});
    connect(key, &QShortcut::activated, button, &QAbstractButton::click);
}

bool RecordWindow::IsField(const QWidget* widget) {
    if (qobject_cast<const QComboBox*>(widget->parentWidget()))
        return false; // the inner parts of a combo box follow it
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
           qobject_cast<const QRadioButton*>(widget) || qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QLabel*>(widget);
}

QAction* RecordWindow::Action(const char* name) const {
    return Find<QAction>(QString::fromLatin1(name));
}
QMenu* RecordWindow::Menu(const char* name) const {
    return Find<QMenu>(QString::fromLatin1(name));
}

void RecordWindow::RunCommand(const std::string& procedure, const std::function<void()>& body) {
    TrapEvent(Routine(procedure), NoInputParms, body);
    UpdateMenus();
}

void RecordWindow::OnClick(const char* control, const std::function<void()>& body, const char* procedure) {
    const std::string routine = procedure ? procedure : std::string(control) + "_Click";
    const auto run = [this, routine, body] { RunCommand(routine, body); };
    const QString name = QString::fromLatin1(control);
    if (auto* action = findChild<QAction*>(name))
        connect(action, &QAction::triggered, this, run);
    else
        connect(Find<QAbstractButton>(name), &QAbstractButton::clicked, this, run);
}

void RecordWindow::Open() {
    currentIndex = 0;
    ShowDetails(true);
    workbench->Restore();
    TellWhatFieldsAre();
    resize(size().boundedTo(screen()->availableSize()));
    show();
    RunCommand("Form_Load", [this] {
        LoadForm();
        InitForm();
    });
}

void RecordWindow::InitForm() {
    Trap(Routine("InitForm"), NoInputParms, [this] {
        const bool alphabetical = Settings.SortBy != "0";
        Action("mnuSortAlphabetically")->setChecked(alphabetical);
        Action(SortByFileItem())->setChecked(!alphabetical);
        const std::vector<std::string> changed = edits.Reread([this] {
            ClearLibrary();
            halfRead = true;
            BeginLoad();
            try {
                Load();
            } catch (const std::exception&) {
                ShowNothing();
                emit LibraryRead();
                throw;
            }
        });
        if (!changed.empty())
            TellOfEndedHistory(changed);
    });
    emit LibraryRead();
}

void RecordWindow::ClearLibrary() {
    library.Clear();
    anyShown = false; // panels that come to sight meanwhile ask
}

void RecordWindow::ShowNothing() {
    currentIndex = 0;
    Display(nullptr);
    SetReadOnly();
}

void RecordWindow::Load() {
    const bool loaded = ReadLibrary();
    halfRead = false;
    ShowDetails(loaded);
    if (Settings.SortBy != "0" && !library.Empty())
        SortBy(1);
    PopulateForm(0);
    SetReadOnly();
    if (loaded)
        EndLoad();
}

bool RecordWindow::ReadLibrary() {
    ProblemMessages messages;
    auto progress = gPrompts->StartProgress(windowTitle().toStdString());
    LoadRequest request = Request();
    request.BackupFolder = Settings.BackupPath;
    request.MakeBackups = true;
    request.AutoBackup = Settings.AutoBackup;
    request.Problems = [&](const Problem& problem) {
        found.push_back(problem);
        messages.Show(problem);
    };
    std::string reading;
    request.Reading = [&](const std::string& file, std::size_t done, std::size_t total) {
        reading = file;
        progress->Working(file, done, total);
    };
    found.clear();
    bool loaded = false;
    std::exception_ptr failure;
    try {
        loaded = library.Load(request);
    } catch (const std::exception& exception) {
        failure = std::current_exception();
        found.push_back(
            {LoadFailureRule, exception.what(), Severity::Error, {}, {}, library.Kind.Word, reading});
    }
    progress.reset();
    messages.Finish(); // shown first, for it often tells what led to a failure
    if (failure)
        std::rethrow_exception(failure);
    return loaded;
}

void RecordWindow::ShowDetails(bool shown) {
    controls.Details->setVisible(shown);
    for (QMenu* menu : recordMenus)
        menu->menuAction()->setEnabled(shown);
}

void RecordWindow::PopulateForm(std::size_t position) {
    Trap(Routine("PopulateForm"), {std::to_string(position)}, [&] {
        ShowAt(position);
        TellOfRecord();
    });
}

void RecordWindow::ShowQuietly(std::size_t position) {
    Trap(Routine("PopulateForm"), {std::to_string(position)}, [&] { ShowAt(position); });
}

void RecordWindow::ShowAt(std::size_t position) {
    const bool empty = library.Empty();
    if (!empty)
        edits.Normalize(position);
    currentIndex = empty ? 0 : position;
    Display(empty ? nullptr : &library.At(position));
}

void RecordWindow::Display(const Record* record) {
    const QString where =
        record ? QStringLiteral("%1 of %2").arg(library.Kind.NumberOf(*record)).arg(library.Count())
               : QString();
    controls.WhereWeAt->setText(where);
    anyShown = record != nullptr;
    ShowRecord(record);
    controls.Edited->SetBytes(record && record->IsDirty ? "YES" : "NO");
    controls.Status->setText(record ? ToQt(record->Status()) : QString());
    ShowHint(BrowsingText());
    emit RecordShown();
}

void RecordWindow::SetMode(EditMode newMode) {
    if (std::exchange(editMode, newMode) != newMode)
        emit ModeChanged();
}

std::string RecordWindow::ShownRecordName() const {
    return anyShown ? library.NameOf(library.At(currentIndex)) : std::string();
}

bool RecordWindow::GoTo(std::size_t position) {
    if (!Browsing()) {
        ShowHint(std::string("Commit or discard first"));
        return false;
    }
    RunCommand("GoTo", [&] { PopulateForm(position); });
    return true;
}

void RecordWindow::ScrollTo(QWidget* control) {
    if (auto* area = findChild<QScrollArea*>(QStringLiteral("scrDetails")))
        area->ensureWidgetVisible(control);
}

std::vector<std::string> RecordWindow::FilesOffered(const std::string& /*shortName*/) const {
    return NamesOf(library.FileList());
}

void RecordWindow::ShowHint(const std::string& text) {
    ShowHint(ToQt(text));
}

void RecordWindow::ShowHint(const QString& text) {
    controls.EditStatus->setText(text);
}

std::string RecordWindow::EditStatus() const {
    return FromQt(controls.EditStatus->text());
}

void RecordWindow::SetReadOnly() {
    Trap(Routine("SetReadOnly"), NoInputParms, [this] {
        SetMode(EditMode::Browsing);
        const bool inForm = controls.Details->isAncestorOf(focusWidget());
        const auto* area = findChild<QScrollArea*>(QStringLiteral("scrDetails"));
        const QPoint place = area->widget()->pos();
        EnableFields(false);
        EnableFrames(false);
        for (QLabel* label :
             {controls.StatusCaption, controls.Status, controls.WhereWeAt, controls.EditStatus})
            label->setEnabled(true);
        EnableNavigation(!library.Empty());
        if (inForm) {
            // The toolkit has handed it on, scrolling, to a panel's box, which takes Undo for its own text.
            controls.Forward->setFocus(Qt::OtherFocusReason);
            area->horizontalScrollBar()->setValue(-place.x());
            area->verticalScrollBar()->setValue(-place.y());
        }
        ShowHint(BrowsingText());
    });
}

void RecordWindow::LeaveBrowsing(EditMode newMode, const std::string& statusText) {
    SetMode(newMode);
    ShowHint(statusText);
    EnableFields(true);
    EnableFrames(true);
    EnableNavigation(false);
}

void RecordWindow::EnableFields(bool enabled) {
    for (QWidget* field : fields)
        field->setEnabled(enabled);
}

void RecordWindow::EnableNavigation(bool enabled) {
    controls.Back->setEnabled(enabled);
    controls.Forward->setEnabled(enabled);
}

void RecordWindow::SortBy(std::int32_t mode) {
    Trap(Routine("SortBy"), {std::to_string(mode)}, [&] {
        library.SortBy(mode);
        emit LibrarySorted();
        PopulateForm(0);
    });
}

void RecordWindow::Navigate(int step) {
    const std::size_t count = library.Count();
    if (count == 0)
        return;
    // With nothing on show the walk begins at the first or the last record.
    const std::size_t from = anyShown ? currentIndex : step > 0 ? count - 1 : 0;
    PopulateForm((from + count + static_cast<std::size_t>(step)) % count);
}

bool RecordWindow::MayClose() {
    const std::string unwritten = UnwrittenRecords();
    if (!Browsing())
        return gPrompts->Ask({"Do you wish to discard your changes and exit?", true, unwritten});
    return unwritten.empty() || gPrompts->Ask({UnwrittenQuestion(), true, unwritten});
}

std::string RecordWindow::UnwrittenRecords() const {
    std::string lines;
    for (const auto& [name, record] : library)
        if (record.IsDirty)
            lines += name + ", " + record.ShortName + (record.ToBeDeleted ? ", to be deleted\r" : "\r");
    for (const auto& [name, file] : library.RemovedRecords())
        lines += std::string(name).append(", ").append(file).append(", removed\r");
    return lines.empty() ? lines : "Committed, but not yet written to file:\r\r" + lines;
}

bool RecordWindow::focusNextPrevChild(bool next) {
    // A dock behind another one of its tabs counts as visible, though nobody sees it.
    const auto isBehind = [](const QWidget* widget) {
        while (widget && !qobject_cast<const QDockWidget*>(widget))
            widget = widget->parentWidget();
        return widget && widget->visibleRegion().isEmpty();
    };
    const QWidget* from = focusWidget();
    do
        if (!QMainWindow::focusNextPrevChild(next))
            return false;
    while (focusWidget() != from && isBehind(focusWidget()));
    return true;
}

void RecordWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && controls.Details)
        KeepDisabledTextLegible();
}

void RecordWindow::KeepDisabledTextLegible() {
    const QPalette usual = QGuiApplication::palette();
    const QColor text = usual.color(QPalette::Active, QPalette::WindowText);
    const QColor ground = usual.color(QPalette::Active, QPalette::Window);
    const auto mix = [](int of, int with) { return (7 * of + 3 * with) / 10; };
    const QColor legible(mix(text.red(), ground.red()), mix(text.green(), ground.green()),
                         mix(text.blue(), ground.blue()));
    if (palette().color(QPalette::PlaceholderText) != legible) { // or setting it would lead here for ever
        QPalette whole;
        whole.setColor(QPalette::PlaceholderText, legible);
        setPalette(whole);
    }
    QPalette ofFields;
    ofFields.setColor(QPalette::Disabled, QPalette::WindowText, legible);
    ofFields.setColor(QPalette::Disabled, QPalette::Text, legible);
    controls.Details->setPalette(ofFields);
    ofFields.setColor(QPalette::Disabled, QPalette::ButtonText, legible);
    for (auto* box : controls.Details->findChildren<QComboBox*>())
        box->setPalette(ofFields);
}

void RecordWindow::closeEvent(QCloseEvent* event) {
    if (!isVisible()) {
        event->accept();
        return;
    }
    try {
        if (!MayClose()) {
            event->ignore();
            return;
        }
        KeepWhatIsGivenUp();
        edits.Forget();
        ClearLibrary();
        ReleaseRecords();
    } catch (const std::exception&) {
        // Closing never keeps the user from getting back to the main window.
    }
    editMode = EditMode::Browsing;
    workbench->Save();
    event->accept();
    emit Closed();
}

} // namespace velmora
