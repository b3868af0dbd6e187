#include "editor/ReplacePanel.h"

#include "editor/QtText.h"
#include "editor/RecordList.h"
#include "editor/RecordWindow.h"
#include "editor/RegExpMatcher.h"
#include "editor/Workbench.h"
#include "platform/CodePage.h"
#include "services/Settings.h"
#include "services/Trap.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeView>

namespace velmora {

namespace {

/// A slice leaves most of a frame to those who type.
constexpr std::chrono::milliseconds Slice{6};
/// Once there are more lines than that, files come closed: laying rows out takes time.
constexpr std::size_t MostLinesOpened = 500;
constexpr std::size_t LongestNamed = 30;

enum Scope { WholeLibrary, FilteredList, ThisFile };

std::string Quoted(const std::string& text) {
    return '"' + (text.size() <= LongestNamed ? text : text.substr(0, LongestNamed) + "...") + '"';
}

} // namespace

ReplacePanel::ReplacePanel(RecordWindow& recordWindow, Workbench& bench, RecordList& list,
                           QAction* openCommand)
    : QWidget(&recordWindow), window(recordWindow), workbench(bench), records(list),
      library(recordWindow.Records()), command(openCommand), replacement(library),
      model(new ChangeModel(replacement,
                            {{ChangeModel::RecordColumn, tr("Record")},
                             {ChangeModel::FieldColumn, tr("Field")},
                             {ChangeModel::BeforeColumn, tr("Before")},
                             {ChangeModel::AfterColumn, tr("After")},
                             {ChangeModel::NoteColumn, tr("Note")}},
                            this)) {
    BuildPanel();
    AddToWorkbench();
    FollowWindow();
    FollowCommand();
}

void ReplacePanel::FollowWindow() {
    slices.setInterval(0);
    connect(&slices, &QTimer::timeout, this, &ReplacePanel::WorkOn);
    connect(model, &ChangeModel::Ticked, this, &ReplacePanel::Tell);
    connect(model, &ChangeModel::Ticked, tree->viewport(), qOverload<>(&QWidget::update));
    connect(command, &QAction::changed, this, &ReplacePanel::FollowCommand);
    connect(command, &QAction::triggered, this, [this] { Open(); });
    connect(&records, &RecordList::FilterChanged, this, [this] {
        if (scope->currentIndex() == FilteredList)
            Begin();
    });
    window.Changes().OnChange([this](const Edits::Change& change) { FollowChange(change); });
    connect(&window, &RecordWindow::LibraryRead, this, [this] {
        context.reset(); // pictures may have come or gone
        Begin();
    });
    connect(&window, &RecordWindow::Closed, this, &ReplacePanel::Restart);
    connect(&window, &RecordWindow::LibrarySorted, this, &ReplacePanel::Restart);
    connect(&window, &RecordWindow::RecordShown, this, &ReplacePanel::FollowShown);
}

void ReplacePanel::Open() {
    parentWidget()->show(); // the dock
    parentWidget()->raise();
    find->setFocus(Qt::ShortcutFocusReason);
    find->selectAll();
}

void ReplacePanel::Open(const std::string& sought, const std::string& replacing, TextMatcher::How how) {
    {
        const QScopedValueRollback<bool> guard(filling, true);
        find->setText(ToQt(sought));
        replace->setText(ToQt(replacing));
        matchCase->setChecked(how.MatchCase);
        wholeWord->setChecked(how.WholeWord);
        regExp->setChecked(false);
        scope->setCurrentIndex(WholeLibrary);
        TickTextsOfPlayers();
    }
    Open();
    Begin();
}

std::shared_ptr<const Matcher> ReplacePanel::MakeMatcher() {
    fault->clear();
    const TextMatcher::How how{matchCase->isChecked(), wholeWord->isChecked()};
    const std::string with = FromQt(replace->text());
    if (find->text().isEmpty())
        return nullptr;
    if (!regExp->isChecked())
        return std::make_shared<TextMatcher>(FromQt(find->text()), with, how);
    auto matcher = std::make_shared<RegExpMatcher>(find->text(), with, how);
    fault->setText(matcher->Fault());
    return matcher->Fault().isEmpty() ? matcher : nullptr;
}

Replacement::Request ReplacePanel::MakeRequest() {
    Replacement::Request request;
    request.What = MakeMatcher();
    library.Kind.ForEachField([&](const Field& field) {
        for (const QListWidgetItem* item : fields->findItems(ToQt(field.Property), Qt::MatchExactly))
            if (item->checkState() == Qt::Checked)
                request.Fields.push_back(&field);
    });
    if (scope->currentIndex() == FilteredList)
        request.Within = [this](const Record& record) { return records.Lists(record); };
    else if (scope->currentIndex() == ThisFile && !window.ShownRecordName().empty())
        request.Within = [file = library.At(window.CurrentIndex()).ShortName](const Record& record) {
            return CodePage::EqualNoCase(record.ShortName, file);
        };
    return request;
}

void ReplacePanel::Begin() {
    if (filling)
        return;
    replaced.reset();
    if (!context)
        context = std::make_shared<CheckContext>(Settings.GamePath);
    replacement.Begin(MakeRequest(), context);
    ShowLines();
    slices.start();
    WorkOn();
}

void ReplacePanel::Restart() {
    replacement.Restart();
    ShowLines();
    slices.start();
    Tell();
}

void ReplacePanel::WorkOn() {
    if (replacement.Work(Slice))
        slices.stop();
    // A view lays all its rows out anew, however few are added.
    const bool enough = replacement.Found() || replacement.Count() >= 2 * model->Count();
    if (enough && replacement.Count() > model->Count())
        ShowLines();
    else if (!slices.isActive())
        model->Refresh();
    tree->viewport()->update(); // what was checked meanwhile
    Tell();
}

void ReplacePanel::FollowChange(const Edits::Change& change) {
    if (change.Kind == Edits::How::Normalized || change.Kind == Edits::How::Reread)
        return;
    replaced.reset();
    Restart();
}

void ReplacePanel::FollowShown() {
    if (!going)
        origin = window.ShownRecordName();
    if (!going && scope->currentIndex() == ThisFile)
        Begin();
}

void ReplacePanel::FollowCommand() {
    inputs->setEnabled(command->isEnabled());
    Tell();
}

void ReplacePanel::ShowLines() {
    const auto kept = current;
    model->Rebuild();
    if (model->Count() <= MostLinesOpened)
        tree->expandAll();
    for (int row = 0; row < model->rowCount(); ++row)
        tree->setFirstColumnSpanned(row, {}, true);
    if (const QModelIndex row = model->RowOf(kept.first, kept.second); row.isValid())
        MakeCurrent(row);
    current = kept;
}

void ReplacePanel::MakeCurrent(const QModelIndex& row) {
    tree->setExpanded(row.parent(), true);
    tree->setCurrentIndex(row);
    tree->scrollTo(row);
}

void ReplacePanel::Step(int step) {
    const QModelIndex row = model->Next(tree->currentIndex().siblingAtColumn(0), step);
    if (!row.isValid())
        return;
    if (window.Mode() == EditMode::Browsing)
        MakeCurrent(row);
    GoTo(row);
}

void ReplacePanel::GoTo(const QModelIndex& row) {
    const auto line = model->LineAt(row);
    if (!line)
        return;
    const std::size_t position = replacement.PlaceOf(*line).Position;
    const std::string_view field = replacement.NamesOf(*line).second;
    const QScopedValueRollback<bool> guard(going, true);
    const bool isShown = !window.ShownRecordName().empty() && position == window.CurrentIndex();
    if ((isShown && window.Mode() == EditMode::Browsing) || window.GoTo(position))
        workbench.Mark({field});
}

void ReplacePanel::ReplaceTicked() {
    const Replacement::Totals sum = replacement.Sum();
    TrapEvent(library.Kind.Routine("cmdReplace_Click"), NoInputParms, [&] {
        Edits::Step step = replacement.MakeStep("replacement of " + Quoted(FromQt(find->text())) + " by " +
                                                Quoted(FromQt(replace->text())));
        const bool onShow = step.Touches(window.ShownRecordName());
        window.Changes().Do(std::move(step));
        replaced = sum.TickedHits;
        const QScopedValueRollback<bool> guard(going, true);
        if (onShow)
            window.GoTo(window.CurrentIndex());
    });
    find->setFocus(Qt::OtherFocusReason); // the button goes off with the last tick
    Tell();
}

void ReplacePanel::FollowLink(const QString& link) {
    if (link == QLatin1String("undo")) {
        if (auto* undo = window.findChild<QAction*>(QStringLiteral("mnuUndo")); undo && undo->isEnabled())
            undo->trigger();
    } else if (const std::size_t position = library.IndexOf(origin); position != Library::None) {
        window.GoTo(position);
    }
}

void ReplacePanel::Leave() {
    window.findChild<QWidget*>(QStringLiteral("cmdForward"))->setFocus(Qt::OtherFocusReason);
}

bool ReplacePanel::KeyPressed(QObject* watched, int key, Qt::KeyboardModifiers modifiers) {
    if (key == Qt::Key_Escape) {
        Leave();
        return true;
    }
    if ((key != Qt::Key_Return && key != Qt::Key_Enter) || (modifiers & ~Qt::ShiftModifier) != 0)
        return false;
    if (watched == tree)
        GoTo(tree->currentIndex());
    else
        Step((modifiers & Qt::ShiftModifier) != 0 ? -1 : 1);
    return true;
}

bool ReplacePanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (KeyPressed(watched, key->key(), key->modifiers() & ~Qt::KeypadModifier))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace velmora
