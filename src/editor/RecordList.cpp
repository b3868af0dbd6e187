#include "editor/RecordList.h"

#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/UnwrittenFooter.h"

#include <QAction>
#include <QApplication>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <algorithm>

namespace velmora {

namespace {
/// What is looked at in one go between keys.
constexpr std::chrono::milliseconds Slice{3};
} // namespace

RecordList::RecordList(RecordWindow& recordWindow, Workbench& workbench, bool editable)
    : QWidget(&recordWindow), window(recordWindow), library(window.Records()),
      model(new RecordListModel(library, editable, this)) {
    BuildPanel(editable);
    AddToWorkbench(workbench, editable);
    FollowWindow();
}

void RecordList::FollowWindow() {
    slices.setInterval(0);
    connect(&slices, &QTimer::timeout, this, &RecordList::WorkOn);
    window.Changes().OnChange([this](const Edits::Change& change) { FollowChange(change); });
    connect(&window, &RecordWindow::RecordShown, this, &RecordList::FollowShown);
    connect(&window, &RecordWindow::LibrarySorted, this, &RecordList::Restart);
    connect(&window, &RecordWindow::Closed, this, [this] {
        filter->clear();
        Restart();
    });
    connect(filter, &QLineEdit::textChanged, this, &RecordList::FilterTyped);
    connect(tree, &QTreeView::clicked, this, [this] {
        if (QApplication::keyboardModifiers() == Qt::NoModifier) // or it selects several
            ShowCurrent();
    });
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& to) {
                if (const Record* record = to.isValid() && !settling ? model->RecordAt(to.row()) : nullptr) {
                    chosenName = library.NameOf(*record);
                    emit Pointed(chosenName);
                }
            });
    connect(tree->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &RecordList::SelectionChanged);
    if (footer)
        connect(footer, &UnwrittenFooter::Pressed, this, &RecordList::PressWrite);
}

void RecordList::FilterTyped() {
    wantedName = chosenName;
    model->Begin(Filter(FromQt(filter->text()), &library.Kind));
    Settle();
    emit FilterChanged();
}

void RecordList::Restart() {
    wantedName = chosenName;
    model->Restart();
    Settle();
}

void RecordList::RulesChanged() {
    wantedName = chosenName;
    model->RulesChanged();
    Settle();
    emit RulesTold();
}

std::vector<std::string_view> RecordList::BrokenRules(const Record& record) const {
    return model->Rules() ? model->Rules()(record) : std::vector<std::string_view>{};
}

void RecordList::FilterBy(const QString& line) {
    parentWidget()->show(); // the dock
    parentWidget()->raise();
    filter->setText(line);
}

void RecordList::WorkOn() {
    model->Work(Slice);
    Settle();
}

void RecordList::Finish() {
    while (!model->Work(std::chrono::seconds(1))) {
    }
    Settle();
}

void RecordList::Settle() {
    const bool done = model->Complete();
    done ? slices.stop() : slices.start();
    TellCount();
    if (model->rowCount() == 0)
        return;
    const int row = model->RowOf(library.IndexOf(wantedName));
    settling = true;
    if (row >= 0 && (!model->IsStray(row) || model->Matches() == 0))
        MakeCurrent(row);
    else if (!tree->currentIndex().isValid() || model->IsStray(tree->currentIndex().row()))
        MakeCurrent(model->IsStray(0) && model->Matches() > 0 ? 1 : 0);
    settling = false;
    if (done)
        wantedName.clear();
}

void RecordList::MakeCurrent(int row) {
    if (row == tree->currentIndex().row())
        return;
    const QModelIndex current = model->index(row, 0);
    tree->selectionModel()->setCurrentIndex(current,
                                            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    tree->scrollTo(current);
}

void RecordList::FollowChange(const Edits::Change& change) {
    if (footer)
        footer->Follow(change);
    wantedName = chosenName;
    settling = true; // a row that goes takes the current place with it
    const bool followed = change.Kind != Edits::How::Reread && model->Follow(change.Names);
    settling = false;
    followed ? Settle() : Restart();
}

void RecordList::FollowShown() {
    if (library.Count() != model->Known())
        Restart();
    const std::string name = window.ShownRecordName();
    model->SetShown(name.empty() ? Library::None : window.CurrentIndex());
    if (name != shownName) {
        chosenName = name;
        if (const int row = model->RowOf(window.CurrentIndex()); row >= 0)
            MakeCurrent(row);
    }
    shownName = name;
    TellCount();
}

void RecordList::TellCount() {
    const std::size_t all = library.Count();
    const QString more = model->Complete() ? QString() : QStringLiteral("...");
    count->setText(model->Filtering() ? tr("%1%2 of %3").arg(model->Matches()).arg(more).arg(all)
                   : all == 1         ? tr("1 record")
                                      : tr("%1 records").arg(all));
}

void RecordList::ShowCurrent() {
    Finish();
    const QModelIndex current = tree->currentIndex();
    if (!current.isValid())
        return;
    const std::size_t position = model->PositionAt(current.row());
    if (position < library.Count() && (window.ShownRecordName().empty() || position != window.CurrentIndex()))
        window.GoTo(position);
}

void RecordList::Step(int direction, const std::function<bool(const Record&)>& wanted) {
    Finish();
    const int rows = model->rowCount();
    const int shownRow = shownName.empty() ? -1 : model->RowOf(window.CurrentIndex());
    int row = shownRow >= 0 ? shownRow : direction > 0 ? rows - 1 : 0;
    for (int i = 0; i < rows; ++i) {
        row = (row + rows + direction) % rows;
        const Record* record = model->RecordAt(row);
        if (record && wanted(*record)) {
            if (row != shownRow)
                window.GoTo(model->PositionAt(row));
            return;
        }
    }
    window.ShowHint(tr("No record in the list has a problem or is not written"));
}

std::vector<std::string> RecordList::SelectedNames() const {
    std::vector<int> rows;
    for (const QModelIndex& index : tree->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    std::vector<std::string> names;
    for (const int row : rows)
        if (const Record* record = model->RecordAt(row))
            names.push_back(library.NameOf(*record));
    return names;
}

void RecordList::PressWrite() {
    auto* write = window.findChild<QAction*>(QStringLiteral("mnuWriteToFile"));
    if (window.Mode() != EditMode::Browsing)
        window.ShowHint(tr("Commit or discard first"));
    else if (write->isEnabled())
        write->trigger();
}

} // namespace velmora
