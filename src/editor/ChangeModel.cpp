#include "editor/ChangeModel.h"

#include "editor/QtText.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace velmora {

namespace {

/// Two texts from a little before the place where they begin to differ.
struct Excerpts {
    Excerpts(const std::string& before, const std::string& after) {
        constexpr std::size_t kept = 24;
        const auto differs =
            std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first - before.begin();
        const std::size_t skipped = std::max(static_cast<std::size_t>(differs), kept) - kept;
        const QString cut = skipped > 0 ? QStringLiteral("\u2026") : QString();
        Before = cut + ToQt(std::string_view(before).substr(skipped));
        After = cut + ToQt(std::string_view(after).substr(skipped));
    }
    QString Before;
    QString After;
};

/// A tip that is no wider than the screen.
QVariant InLines(const QString& text) {
    constexpr int most = 2000;
    return text.isEmpty() ? QString() : QStringLiteral("<p>%1</p>").arg(text.left(most).toHtmlEscaped());
}

} // namespace

void ChangeModel::Rebuild() {
    beginResetModel();
    groups.clear();
    count = changes.Count();
    std::unordered_map<std::string_view, Group*> known;
    for (std::size_t line = 0; line < count; ++line) {
        Group*& group = known[changes.GroupOf(line)];
        if (!group)
            group =
                groups.emplace_back(std::make_unique<Group>(Group{std::string(changes.GroupOf(line))})).get();
        group->Lines.push_back(static_cast<std::uint32_t>(line));
    }
    std::ranges::sort(groups, [](const auto& one, const auto& other) {
        return CodePage::CompareNoCase(one->Name, other->Name) < 0;
    });
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i]->Row = static_cast<int>(i);
    endResetModel();
}

void ChangeModel::Refresh() {
    if (!groups.empty()) // of the rows below nobody keeps anything
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void ChangeModel::TickAll(bool ticked) {
    for (std::size_t line = 0; line < count; ++line)
        changes.Tick(line, ticked);
    Refresh();
    emit Ticked();
}

std::optional<std::size_t> ChangeModel::LineAt(const QModelIndex& index) const {
    const auto* group = static_cast<const Group*>(index.internalPointer());
    if (!index.isValid() || !group)
        return std::nullopt;
    return group->Lines[static_cast<std::size_t>(index.row())];
}

QModelIndex ChangeModel::Next(const QModelIndex& from, int step) const {
    if (groups.empty())
        return {};
    const auto rowsOf = [this](int group) { return static_cast<int>(GroupAt(group).Lines.size()); };
    const int last = static_cast<int>(groups.size()) - 1;
    const bool isLine = LineAt(from).has_value();
    int group = isLine ? from.parent().row() : from.isValid() ? from.row() : step > 0 ? 0 : last;
    int row = isLine ? from.row() + step : step > 0 ? 0 : from.isValid() ? -1 : rowsOf(last) - 1;
    if (row >= rowsOf(group)) {
        group = group == last ? 0 : group + 1;
        row = 0;
    } else if (row < 0) {
        group = group == 0 ? last : group - 1;
        row = rowsOf(group) - 1;
    }
    return index(row, 0, index(group, 0));
}

QModelIndex ChangeModel::RowOf(const std::string& record, const std::string& field) const {
    for (std::size_t line = 0; line < count; ++line) {
        const auto [name, property] = changes.NamesOf(line);
        if (name != record || property != field)
            continue;
        for (const auto& group : groups) {
            const auto at = std::ranges::lower_bound(group->Lines, line);
            if (at != group->Lines.end() && *at == line)
                return index(static_cast<int>(at - group->Lines.begin()), 0, index(group->Row, 0));
        }
    }
    return {};
}

QModelIndex ChangeModel::index(int row, int column, const QModelIndex& above) const {
    if (row < 0 || column < 0 || column >= columnCount() || row >= rowCount(above))
        return {};
    return createIndex(row, column,
                       above.isValid() ? groups[static_cast<std::size_t>(above.row())].get() : nullptr);
}

QModelIndex ChangeModel::parent(const QModelIndex& child) const {
    const auto* group = static_cast<const Group*>(child.internalPointer());
    return child.isValid() && group ? createIndex(group->Row, 0, nullptr) : QModelIndex();
}

int ChangeModel::rowCount(const QModelIndex& above) const {
    if (!above.isValid())
        return static_cast<int>(groups.size());
    return above.internalPointer() || above.column() != 0
               ? 0
               : static_cast<int>(GroupAt(above.row()).Lines.size());
}

int ChangeModel::columnCount(const QModelIndex& /*parent*/) const {
    return static_cast<int>(columns.size());
}

std::optional<Qt::CheckState> ChangeModel::StateOf(const Group& group) const {
    std::size_t ticked = 0;
    std::size_t possible = 0;
    for (const std::uint32_t line : group.Lines) {
        ticked += changes.IsTicked(line) ? 1 : 0;
        possible += changes.MayTick(line) ? 1 : 0;
    }
    if (possible == 0)
        return std::nullopt;
    return ticked == 0 ? Qt::Unchecked : ticked == possible ? Qt::Checked : Qt::PartiallyChecked;
}

QVariant ChangeModel::GroupData(const Group& group, int role) const {
    if (role == Qt::CheckStateRole)
        return StateOf(group) ? QVariant(*StateOf(group)) : QVariant();
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole || role == Qt::AccessibleTextRole)
        return ToQt(group.Name) + QStringLiteral(" (%1)").arg(group.Lines.size());
    return {};
}

QVariant ChangeModel::LineData(std::size_t line, int column, int role) const {
    if (role == Qt::CheckStateRole && column == 0)
        return !changes.MayTick(line) ? QVariant() : changes.IsTicked(line) ? Qt::Checked : Qt::Unchecked;
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleTextRole)
        return {};
    const ChangeList::Proposal change = changes.At(line);
    const Excerpts excerpts(change.Before, change.After);
    const std::array<QString, ColumnCount> texts{ToQt(change.Record), ToQt(change.Field), excerpts.Before,
                                                 excerpts.After, ToQt(change.Note)};
    if (role == Qt::AccessibleTextRole && column == 0) {
        QStringList spoken(texts.begin(), texts.end());
        spoken.removeAll(QString());
        return spoken.join(QStringLiteral(", "));
    }
    const Column shown = columns[static_cast<std::size_t>(column)].first;
    if (role == Qt::ToolTipRole && (shown == BeforeColumn || shown == AfterColumn))
        return InLines(ToQt(shown == BeforeColumn ? change.Before : change.After));
    return role == Qt::ToolTipRole ? InLines(texts[shown]) : QVariant(texts[shown]);
}

QVariant ChangeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (const auto line = LineAt(index))
        return LineData(*line, index.column(), role);
    return index.column() == 0 ? GroupData(GroupAt(index.row()), role) : QVariant();
}

bool ChangeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != 0)
        return false;
    const bool ticked = value.toInt() != Qt::Unchecked;
    const auto line = LineAt(index);
    const QModelIndex group = line ? index.parent() : index;
    if (line)
        changes.Tick(*line, ticked);
    else
        for (const std::uint32_t each : GroupAt(group.row()).Lines)
            changes.Tick(each, ticked);
    emit dataChanged(group, group);
    emit dataChanged(this->index(0, 0, group), this->index(rowCount(group) - 1, columnCount() - 1, group));
    emit Ticked();
    return true;
}

QVariant ChangeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return columns[static_cast<std::size_t>(section)].second;
}

Qt::ItemFlags ChangeModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const auto line = LineAt(index);
    if (line)
        flags |= Qt::ItemNeverHasChildren;
    if (index.column() == 0 && data(index, Qt::CheckStateRole).isValid())
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

} // namespace velmora
