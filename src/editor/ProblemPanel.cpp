#include "editor/ProblemPanel.h"

#include "editor/QtText.h"
#include "editor/RecordList.h"
#include "editor/RecordWindow.h"
#include "editor/Workbench.h"
#include "kinds/QuickFixes.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "services/Settings.h"
#include "services/Trap.h"

#include <QAction>
#include <QKeyEvent>
#include <QTreeView>

namespace velmora {

namespace {

/// A slice leaves most of a frame to those who type.
constexpr std::chrono::milliseconds Slice{5};

bool IsSame(const Problem& one, const Problem& other) {
    return one.Rule == other.Rule && one.Record == other.Record && one.Field == other.Field &&
           one.File == other.File;
}

} // namespace

ProblemPanel::ProblemPanel(RecordWindow& recordWindow, Workbench& bench, RecordList& list, QAction* edit)
    : QWidget(&recordWindow), window(recordWindow), records(list), workbench(bench),
      library(recordWindow.Records()), editCommand(edit), index(library),
      model(new ProblemModel(
          library, index, [this](const Problem& problem) { return ignored.Hides(problem); }, this)) {
    BuildPanel();
    AddToWorkbench();
    FollowWindow();
    FollowRows();
    records.SetRules([this](const Record& record) { return RulesOf(record); });
}

void ProblemPanel::FollowWindow() {
    index.OnChange([this](const auto& before, const auto& after) { Replace(before, after); });
    window.Changes().OnChange([this](const Edits::Change& change) { FollowChange(change); });
    connect(&window, &RecordWindow::LibraryRead, this, &ProblemPanel::Begin);
    connect(&window, &RecordWindow::Closed, this, &ProblemPanel::End);
    connect(&window, &RecordWindow::LibrarySorted, this, [this] {
        Renew([this] { model->Rebuild(); });
        if (!index.Done())
            index.Restart();
    });
    connect(&window, &RecordWindow::RecordShown, this, [this] { jumped.reset(); });
    connect(&window, &RecordWindow::ModeChanged, this, &ProblemPanel::FollowMode);
    connect(&window.Fields(), &Form::Changed, this, [this] {
        if (window.Mode() != EditMode::Browsing)
            typed.start();
    });
    slices.setInterval(0);
    connect(&slices, &QTimer::timeout, this, &ProblemPanel::WorkOn);
    typed.setSingleShot(true);
    connect(&typed, &QTimer::timeout, this, &ProblemPanel::CheckDraft);
    window.installEventFilter(this);
}

void ProblemPanel::CheckAlso(RecordCheck check) {
    wanted.reset();
    if (!check && !index.ChecksMore())
        return;
    wanted = std::move(check);
    if (index.Done())
        BeginMore();
}

void ProblemPanel::BeginMore() {
    index.SetMore(std::move(*wanted));
    wanted.reset();
    index.Restart();
    slices.start();
}

void ProblemPanel::Begin() {
    index.SetMore({});
    index.Begin(Settings.GamePath);
    try {
        ignored.Read(Settings.GamePath);
        TakeFound();
    } catch (const Failure& failure) {
        std::vector<Problem> found = window.FoundInLoading();
        found.push_back({LoadFailureRule, failure.Description(), Severity::Error});
        index.SetFound(std::move(found));
    }
    Renew([this] { model->Rebuild(); });
    rulesChanged = true;
    slices.start();
    WorkOn();
}

void ProblemPanel::TakeFound() {
    std::vector<Problem> found = window.FoundInLoading();
    found.insert(found.end(), ignored.Broken().begin(), ignored.Broken().end());
    index.SetFound(std::move(found));
}

void ProblemPanel::End() {
    slices.stop();
    index.Begin({});
    index.SetFound({});
    Renew([this] { model->Rebuild(); });
}

void ProblemPanel::WorkOn() {
    if (index.Work(Slice)) {
        slices.stop();
        TellChanges();
        if (wanted)
            BeginMore();
    }
    TellCounts();
}

void ProblemPanel::TellChanges() {
    if (!index.Done())
        slices.start();
    else if (std::exchange(rulesChanged, false))
        records.RulesChanged();
    TellCounts();
}

void ProblemPanel::FollowChange(const Edits::Change& change) {
    if (change.Kind == Edits::How::Reread)
        return;
    index.Follow(change);
    TellChanges();
}

void ProblemPanel::Replace(const ProblemIndex::HolderPtr& before, const ProblemIndex::HolderPtr& after) {
    rulesChanged = true;
    const auto current = before ? Current() : std::nullopt;
    model->Replace(before, after);
    if (!current || !CodePage::EqualNoCase(current->Record, before->Record))
        return;
    if (const QModelIndex row = model->RowOf(*current); row.isValid())
        MakeCurrent(row);
}

void ProblemPanel::FollowMode() {
    jumped.reset();
    typed.stop();
    if (window.Mode() == EditMode::Browsing)
        index.DropDraft();
    else
        CheckDraft();
    TellChanges();
    QTimer::singleShot(0, this, &ProblemPanel::UpdateCommands); // the command to edit follows later
}

void ProblemPanel::CheckDraft() {
    const Record* record = library.Find(window.ShownRecordName());
    if (window.Mode() == EditMode::Browsing || !record)
        return;
    const auto draft = library.Kind.Copy(*record);
    window.Fields().ReadWhatConverts(*draft);
    index.SetDraft(*draft);
    TellChanges();
}

std::vector<std::string_view> ProblemPanel::RulesOf(const Record& record) const {
    std::vector<std::string_view> rules;
    index.ForEachOf(library.NameOf(record), [&](const Problem& problem) {
        if (!ignored.Hides(problem))
            rules.push_back(problem.Rule);
    });
    return rules;
}

std::optional<Problem> ProblemPanel::Current() const {
    const Problem* problem = model->ProblemAt(tree->currentIndex());
    return problem ? std::optional(*problem) : std::nullopt;
}

void ProblemPanel::Step(int step) {
    const QModelIndex next = model->Next(tree->currentIndex().siblingAtColumn(0), step);
    if (!next.isValid())
        return;
    const Problem* problem = model->ProblemAt(next);
    if (window.Mode() == EditMode::Browsing ||
        CodePage::EqualNoCase(problem->Record, window.ShownRecordName()))
        MakeCurrent(next);
    Jump(next);
}

void ProblemPanel::Jump(const QModelIndex& row) {
    if (!model->ProblemAt(row))
        return;
    const Problem problem = *model->ProblemAt(row); // showing a record may replace it
    const bool isShown = CodePage::EqualNoCase(problem.Record, window.ShownRecordName());
    if (window.Mode() != EditMode::Browsing) {
        QWidget* control = isShown ? window.Fields().ControlOf(problem.Field) : nullptr;
        if (control)
            control->setFocus(Qt::OtherFocusReason);
        else if (!isShown)
            window.ShowHint(tr("Commit or discard first"));
        return;
    }
    const std::size_t position = library.IndexOf(problem.Record);
    if (position == Library::None) {
        window.ShowHint(PlaceOf(problem) + ": " + problem.Text);
        return;
    }
    if (!isShown && !window.GoTo(position))
        return;
    workbench.Mark({problem.Field});
    jumped = problem;
}

void ProblemPanel::Enter(const QModelIndex& row) {
    const Problem* problem = model->ProblemAt(row);
    if (!problem)
        tree->setExpanded(row.siblingAtColumn(0), !tree->isExpanded(row.siblingAtColumn(0)));
    else if (jumped && IsSame(*jumped, *problem))
        EditJumped();
    else
        Jump(row);
}

void ProblemPanel::EditJumped() {
    if (!editCommand || !editCommand->isEnabled())
        return;
    QWidget* control = window.Fields().ControlOf(jumped->Field);
    editCommand->trigger();
    if (!control || window.Mode() == EditMode::Browsing)
        return;
    control->setFocus(Qt::OtherFocusReason);
    window.ScrollTo(control);
}

bool ProblemPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return QWidget::eventFilter(watched, event);
    if (watched == tree) {
        Enter(tree->currentIndex());
        return true;
    }
    if (!jumped)
        return QWidget::eventFilter(watched, event);
    EditJumped(); // nothing that has the focus had a use for the key
    return true;
}

void ProblemPanel::Hide(IgnoreFile::Scope scope) {
    const auto problem = Current();
    if (!problem)
        return;
    TrapEvent(library.Kind.Routine("mnuHideProblem_Click"), NoInputParms, [&] {
        ignored.Hide(*problem, scope);
        TakeFound();
    });
    Renew([this] { model->Rebuild(); });
    rulesChanged = true;
    TellChanges();
}

void ProblemPanel::ShowAgain() {
    const auto problem = Current();
    if (!problem)
        return;
    TrapEvent(library.Kind.Routine("mnuShowProblemAgain_Click"), NoInputParms, [&] {
        ignored.Show(*problem);
        TakeFound();
    });
    Renew([this] { model->Rebuild(); });
    rulesChanged = true;
    TellChanges();
}

void ProblemPanel::FixCurrent() {
    const auto problem = Current();
    const Record* record = problem ? library.Find(problem->Record) : nullptr;
    if (!record || !fix->isEnabled())
        return;
    const std::string name = library.NameOf(*record);
    TrapEvent(library.Kind.Routine("mnuQuickFix_Click"), NoInputParms, [&] {
        const auto found = QuickFixOf(library.Kind, *record, *problem, index.Context());
        if (!found)
            return;
        Edits::Step step(library, "quick fix of " + name);
        Record& fixed = step.Change(name);
        CopyContent(library.Kind, *found->Fixed, fixed);
        fixed.IsDirty = true;
        window.Changes().Do(std::move(step));
        if (CodePage::EqualNoCase(name, window.ShownRecordName()))
            window.GoTo(window.CurrentIndex());
    });
}

} // namespace velmora
