#include "editor/ProblemModel.h"

#include "editor/QtText.h"
#include "kinds/Rules.h"
#include "platform/CodePage.h"

#include <QApplication>
#include <QIcon>
#include <QStyle>
#include <algorithm>

namespace velmora {

ProblemModel::ProblemModel(const Library& listedLibrary, const ProblemIndex& listed,
                           std::function<bool(const Problem&)> hides, QObject* parent)
    : QAbstractItemModel(parent), library(listedLibrary), problems(listed), isHidden(std::move(hides)) {}

void ProblemModel::SetGrouping(Grouping grouping) {
    by = grouping;
    Rebuild();
}

void ProblemModel::SetFilter(const std::string& line) {
    words.clear();
    for (std::size_t at = 0; (at = line.find_first_not_of(' ', at)) != std::string::npos;) {
        const std::size_t end = std::min(line.find(' ', at), line.size());
        words.emplace_back(line.substr(at, end - at));
        at = end;
    }
    Rebuild();
}

void ProblemModel::SetHiddenShown(bool shown) {
    hiddenShown = shown;
    Rebuild();
}

void ProblemModel::Rebuild() {
    beginResetModel();
    groups.clear();
    counts = {};
    hidden = leftOut = 0;
    for (const ProblemIndex::HolderPtr& holder : problems.All())
        Add(holder, false);
    endResetModel();
}

void ProblemModel::Replace(const ProblemIndex::HolderPtr& before, const ProblemIndex::HolderPtr& after) {
    if (before)
        Remove(before);
    if (after)
        Add(after, true);
}

bool ProblemModel::Matches(const Problem& problem) const {
    return std::all_of(words.begin(), words.end(), [&](const TextFinder& word) {
        for (const std::string_view text :
             {NameOf(problem.Level), problem.Rule, std::string_view(problem.Record), problem.Field,
              std::string_view(problem.Text), std::string_view(problem.File)})
            if (word.In(text) != TextFinder::None)
                return true;
        return false;
    });
}

std::vector<bool> ProblemModel::CountIn(const ProblemIndex::Holder& holder, std::size_t step) {
    std::vector<bool> shown;
    for (const Problem& problem : holder.Problems) {
        const bool hides = isHidden(problem);
        const bool matches = Matches(problem);
        hidden += hides ? step : 0;
        leftOut += !hides && !matches ? step : 0;
        shown.push_back((!hides || hiddenShown) && matches);
        if (shown.back())
            counts[static_cast<std::size_t>(problem.Level)] += step;
    }
    return shown;
}

void ProblemModel::Add(const ProblemIndex::HolderPtr& holder, bool tell) {
    const std::vector<bool> shown = CountIn(*holder, 1);
    for (std::size_t i = 0; i < shown.size(); ++i)
        if (shown[i])
            Insert(GroupOf(holder->Problems[i], tell), {holder, i}, tell);
}

std::size_t ProblemModel::PlaceOf(const Row& row) const {
    return row.Holder->Record.empty() ? 0 : library.IndexOf(row.Holder->Record) + 1;
}

void ProblemModel::Insert(Group& group, Row row, bool tell) {
    const std::size_t place = PlaceOf(row);
    auto at = group.Rows.end();
    if (at != group.Rows.begin() && PlaceOf(group.Rows.back()) > place)
        at = std::upper_bound(group.Rows.begin(), group.Rows.end(), place,
                              [this](std::size_t of, const Row& other) { return of < PlaceOf(other); });
    const int number = static_cast<int>(at - group.Rows.begin());
    if (tell)
        beginInsertRows(IndexOf(group), number, number);
    group.Rows.insert(at, std::move(row));
    if (!tell)
        return;
    endInsertRows();
    if (by != NotAtAll)
        emit dataChanged(IndexOf(group), IndexOf(group));
}

void ProblemModel::Remove(const ProblemIndex::HolderPtr& holder) {
    CountIn(*holder, static_cast<std::size_t>(-1));
    const auto isOf = [&](const Row& row) { return row.Holder == holder; };
    for (std::size_t i = groups.size(); i-- > 0;) {
        Group& group = *groups[i];
        const auto first = std::find_if(group.Rows.begin(), group.Rows.end(), isOf);
        if (first == group.Rows.end())
            continue;
        const auto last = std::find_if_not(first, group.Rows.end(), isOf);
        beginRemoveRows(IndexOf(group), static_cast<int>(first - group.Rows.begin()),
                        static_cast<int>(last - group.Rows.begin()) - 1);
        group.Rows.erase(first, last);
        endRemoveRows();
        if (by == NotAtAll)
            continue;
        if (!group.Rows.empty()) {
            emit dataChanged(IndexOf(group), IndexOf(group));
            continue;
        }
        beginRemoveRows({}, group.At, group.At);
        groups.erase(groups.begin() + group.At);
        NumberGroups();
        endRemoveRows();
    }
}

void ProblemModel::NumberGroups() {
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i]->At = static_cast<int>(i);
}

ProblemModel::Group& ProblemModel::GroupOf(const Problem& problem, bool tell) {
    const std::string name = by == ByFile   ? problem.File
                             : by == ByRule ? std::string(problem.Rule)
                                            : std::string();
    const auto at = std::lower_bound(groups.begin(), groups.end(), name,
                                     [](const auto& group, const std::string& wanted) {
                                         return CodePage::CompareNoCase(group->Name, wanted) < 0;
                                     });
    if (at != groups.end() && CodePage::EqualNoCase((*at)->Name, name))
        return **at;
    const int number = static_cast<int>(at - groups.begin());
    const bool telling = tell && by != NotAtAll;
    if (telling)
        beginInsertRows({}, number, number);
    Group& group = **groups.insert(at, std::make_unique<Group>(Group{name}));
    NumberGroups();
    if (telling)
        endInsertRows();
    return group;
}

const ProblemModel::Row* ProblemModel::RowAt(const QModelIndex& index) const {
    const auto* group = static_cast<const Group*>(index.internalPointer());
    const auto at = static_cast<std::size_t>(index.row());
    return index.isValid() && group && at < group->Rows.size() ? &group->Rows[at] : nullptr;
}

const Problem* ProblemModel::ProblemAt(const QModelIndex& index) const {
    const Row* row = RowAt(index);
    return row ? &row->Told() : nullptr;
}

QModelIndex ProblemModel::RowOf(const Problem& problem) const {
    QModelIndex similar;
    int best = -1;
    for (const auto& group : groups)
        for (std::size_t i = 0; i < group->Rows.size(); ++i) {
            const Problem& other = group->Rows[i].Told();
            if (other.Record != problem.Record || (problem.Record.empty() && other.Text != problem.Text))
                continue;
            const int likeness =
                (other.Rule == problem.Rule ? 2 : 0) + (other.Field == problem.Field ? 1 : 0);
            if (likeness > best) {
                best = likeness;
                similar = createIndex(static_cast<int>(i), 0, group.get());
            }
        }
    return similar;
}

QModelIndex ProblemModel::Next(const QModelIndex& index, int step) const {
    if (groups.empty() || groups.front()->Rows.empty())
        return {};
    const int count = static_cast<int>(groups.size());
    const QModelIndex above = index.parent();
    const bool isRow = RowAt(index) != nullptr;
    const int group = !index.isValid() ? (step > 0 ? count - 1 : 0)
                      : by == NotAtAll ? 0
                                       : (isRow ? above : index).row();
    const int rows = static_cast<int>(groups[static_cast<std::size_t>(group)]->Rows.size());
    int row = isRow ? index.row() + step : step > 0 ? (index.isValid() ? 0 : rows) : -1;
    int next = group;
    if (row < 0 || row >= rows) {
        next = (group + step + count) % count;
        row = step > 0 ? 0 : static_cast<int>(groups[static_cast<std::size_t>(next)]->Rows.size()) - 1;
    }
    return createIndex(row, 0, groups[static_cast<std::size_t>(next)].get());
}

QModelIndex ProblemModel::IndexOf(const Group& group) const {
    return by == NotAtAll ? QModelIndex() : createIndex(group.At, 0, nullptr);
}

QModelIndex ProblemModel::index(int row, int column, const QModelIndex& above) const {
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(above))
        return {};
    if (above.isValid())
        return createIndex(row, column, groups[static_cast<std::size_t>(above.row())].get());
    return createIndex(row, column, by == NotAtAll ? groups.front().get() : nullptr);
}

QModelIndex ProblemModel::parent(const QModelIndex& child) const {
    const auto* group = static_cast<const Group*>(child.internalPointer());
    return child.isValid() && group ? IndexOf(*group) : QModelIndex();
}

int ProblemModel::rowCount(const QModelIndex& above) const {
    if (!above.isValid())
        return by != NotAtAll   ? static_cast<int>(groups.size())
               : groups.empty() ? 0
                                : static_cast<int>(groups.front()->Rows.size());
    if (above.internalPointer() || above.column() != 0)
        return 0;
    return static_cast<int>(groups[static_cast<std::size_t>(above.row())]->Rows.size());
}

int ProblemModel::columnCount(const QModelIndex& /*parent*/) const {
    return ColumnCount;
}

QVariant ProblemModel::TextOf(const Row& row, int column) const {
    const Problem& problem = row.Told();
    switch (column) {
    case SeverityColumn:
        return ToQt(NameOf(problem.Level)) + (row.Holder->Uncommitted ? tr(", not committed") : QString()) +
               (hiddenShown && isHidden(problem) ? tr(", hidden") : QString());
    case RuleColumn:
        return ToQt(problem.Rule);
    case RecordColumn:
        return ToQt(problem.Record);
    case FieldColumn:
        return ToQt(problem.Field);
    default:
        return ToQt(problem.Text).replace(QLatin1Char('\r'), QLatin1Char(' '));
    }
}

QString ProblemModel::SpokenText(const Row& row) const {
    QStringList texts;
    for (int column = 0; column < ColumnCount; ++column)
        if (const QString text = TextOf(row, column).toString(); !text.isEmpty())
            texts << text;
    return texts.join(QStringLiteral(", "));
}

QVariant ProblemModel::data(const QModelIndex& index, int role) const {
    const Row* row = RowAt(index);
    if (!row) {
        if (!index.isValid() || index.column() != 0 ||
            (role != Qt::DisplayRole && role != Qt::AccessibleTextRole))
            return {};
        const Group& group = *groups[static_cast<std::size_t>(index.row())];
        return (group.Name.empty() ? tr("no file") : ToQt(group.Name)) +
               QStringLiteral(" (%1)").arg(group.Rows.size());
    }
    const Problem& problem = row->Told();
    if (role == Qt::DisplayRole)
        return TextOf(*row, index.column());
    if (role == Qt::AccessibleTextRole && index.column() == SeverityColumn)
        return SpokenText(*row);
    if (role == Qt::ToolTipRole)
        return LinesToQt(problem.Text + "\r\r" + velmora::PlaceOf(problem) + "\r" + GameRule(problem.Rule));
    if (role == Qt::DecorationRole && index.column() == SeverityColumn)
        return QApplication::style()->standardIcon(
            problem.Level == Severity::Error     ? QStyle::SP_MessageBoxCritical
            : problem.Level == Severity::Warning ? QStyle::SP_MessageBoxWarning
                                                 : QStyle::SP_MessageBoxInformation);
    return {};
}

QVariant ProblemModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> names{tr("Severity"), tr("Rule"), tr("Record"), tr("Field"),
                                                 tr("Text")};
    return names[static_cast<std::size_t>(section)];
}

Qt::ItemFlags ProblemModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    if (RowAt(index))
        flags |= Qt::ItemNeverHasChildren;
    return flags;
}

} // namespace velmora
