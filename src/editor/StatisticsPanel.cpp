#include "editor/StatisticsPanel.h"

#include "editor/QtText.h"
#include "editor/RecordList.h"
#include "editor/RecordWindow.h"
#include "editor/Workbench.h"
#include "services/Settings.h"

#include <QDockWidget>
#include <QHeaderView>
#include <QPainter>
#include <QStyledItemDelegate>
#include <algorithm>
#include <chrono>
#include <set>

namespace velmora {

namespace {

constexpr std::chrono::milliseconds Slice{5};
constexpr std::chrono::milliseconds Rest{150};
constexpr int CountColumn = 1;

/// Paints a bar below the number of a row.
class BarDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const double share = index.data(StatisticsPanel::ShareRole).toDouble();
        if (share <= 0)
            return;
        QRect bar = option.rect.adjusted(2, 0, -2, -1);
        bar.setTop(bar.bottom() - bar.height() / 6);
        bar.setWidth(std::max(1, static_cast<int>(bar.width() * share)));
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        painter->fillRect(bar,
                          option.palette.color(selected ? QPalette::HighlightedText : QPalette::Highlight));
    }
};

} // namespace

StatisticsPanel::StatisticsPanel(RecordWindow& recordWindow, Workbench& workbench, RecordList& list)
    : window(recordWindow), records(list) {
    setObjectName(QStringLiteral("tvwStatistics"));
    setAccessibleName(tr("Statistics"));
    setToolTip(tr("Enter or a click lists the records of a row."));
    setHeaderLabels({tr("What"), tr("Records")});
    setUniformRowHeights(true);
    setTabKeyNavigation(false);
    setItemDelegateForColumn(CountColumn, new BarDelegate(this));
    setColumnWidth(0, 26 * fontMetrics().averageCharWidth());
    auto* dock = workbench.AddDock("dckStatistics", tr("Statistics"), this, Qt::RightDockWidgetArea,
                                   "mnuShowStatistics");
    soon.setSingleShot(true);
    soon.setInterval(Rest);
    connect(&soon, &QTimer::timeout, this, &StatisticsPanel::Restart);
    connect(&slices, &QTimer::timeout, this, &StatisticsPanel::WorkOn);
    const auto later = [this] { soon.start(); };
    window.Changes().OnChange([this](const Edits::Change& change) {
        slices.stop(); // positions may have moved
        if (change.Kind != Edits::How::Normalized)
            soon.start();
        else if (counting)
            slices.start();
    });
    connect(&window, &RecordWindow::LibraryRead, this, later);
    connect(&records, &RecordList::RulesTold, this, later);
    connect(dock, &QDockWidget::visibilityChanged, this, later);
    connect(&window, &RecordWindow::Closed, this, [this] {
        slices.stop();
        soon.stop();
        counting.reset();
        clear();
    });
    connect(&window, &RecordWindow::LibrarySorted, this, later);
    connect(this, &QTreeWidget::itemActivated, this, &StatisticsPanel::Choose);
    connect(this, &QTreeWidget::itemClicked, this, &StatisticsPanel::Choose);
}

void StatisticsPanel::Restart() {
    if (!isVisible())
        return;
    counting.emplace(window.Records().Kind);
    next = 0;
    slices.start();
}

void StatisticsPanel::WorkOn() {
    using Clock = std::chrono::steady_clock;
    constexpr int batch = 16; // takes some tens of microseconds
    const Library& library = window.Records();
    const auto end = Clock::now() + Slice;
    while (next < library.Count() && Clock::now() < end)
        for (int i = 0; i < batch && next < library.Count(); ++i, ++next) {
            const Record& record = library.At(next);
            counting->Add(record);
            const std::vector<std::string_view> rules = records.BrokenRules(record);
            for (const std::string_view rule : std::set(rules.begin(), rules.end()))
                counting->AddProblem(rule);
        }
    if (next < library.Count())
        return;
    slices.stop();
    Show(counting->Tables(Settings.GamePath));
    counting.reset();
}

void StatisticsPanel::Show(const std::vector<Statistics::Table>& tables) {
    std::set<QString> closed;
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (!topLevelItem(i)->isExpanded())
            closed.insert(topLevelItem(i)->text(0));
    clear();
    for (const Statistics::Table& table : tables) {
        const QString title = ToQt(table.Title);
        auto* top = new QTreeWidgetItem(this, {title});
        std::size_t most = 1;
        for (const Statistics::Bar& bar : table.Bars)
            most = std::max(most, bar.Count);
        for (const Statistics::Bar& bar : table.Bars) {
            const QString label = ToQt(bar.Detail.empty() ? bar.Label : bar.Label + ", " + bar.Detail);
            auto* row = new QTreeWidgetItem(top, {label, QString::number(bar.Count)});
            row->setData(CountColumn, ShareRole, static_cast<double>(bar.Count) / static_cast<double>(most));
            row->setData(0, FilterRole, ToQt(bar.Filter));
            row->setData(0, Qt::AccessibleTextRole,
                         tr("%1: %2, %3").arg(title, label, row->text(CountColumn)));
        }
        top->setExpanded(!closed.contains(title));
    }
    setCurrentItem(topLevelItem(0)); // a list without a current row has once brought a screen reader down
}

void StatisticsPanel::Choose(const QTreeWidgetItem* item) {
    if (const QString line = item->data(0, FilterRole).toString(); !line.isEmpty())
        records.FilterBy(line);
}

} // namespace velmora
