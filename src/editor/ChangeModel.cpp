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

} // namespace

void ChangeModel::Rebuild() {
    beginResetModel();
    files.clear();
    count = changes.Count();
    std::unordered_map<std::string_view, File*> known;
    for (std::size_t line = 0; line < count; ++line) {
        File*& file = known[changes.FileOf(line)];
        if (!file)
            file = files.emplace_back(std::make_unique<File>(File{std::string(changes.FileOf(line))})).get();
        file->Lines.push_back(static_cast<std::uint32_t>(line));
    }
    std::ranges::sort(files, [](const auto& one, const auto& other) {
        return CodePage::CompareNoCase(one->Name, other->Name) < 0;
    });
    for (std::size_t i = 0; i < files.size(); ++i)
        files[i]->Row = static_cast<int>(i);
    endResetModel();
}

void ChangeModel::Refresh() {
    if (!files.empty()) // of the rows below nobody keeps anything
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void ChangeModel::TickAll(bool ticked) {
    for (std::size_t line = 0; line < count; ++line)
        changes.Tick(line, ticked);
    Refresh();
    emit Ticked();
}

std::optional<std::size_t> ChangeModel::LineAt(const QModelIndex& index) const {
    const auto* file = static_cast<const File*>(index.internalPointer());
    if (!index.isValid() || !file)
        return std::nullopt;
    return file->Lines[static_cast<std::size_t>(index.row())];
}

QModelIndex ChangeModel::Next(const QModelIndex& from, int step) const {
    if (files.empty())
        return {};
    const auto rowsOf = [this](int file) { return static_cast<int>(FileAt(file).Lines.size()); };
    const int last = static_cast<int>(files.size()) - 1;
    const bool isLine = LineAt(from).has_value();
    int file = isLine ? from.parent().row() : from.isValid() ? from.row() : step > 0 ? 0 : last;
    int row = isLine ? from.row() + step : step > 0 ? 0 : from.isValid() ? -1 : rowsOf(last) - 1;
    if (row >= rowsOf(file)) {
        file = file == last ? 0 : file + 1;
        row = 0;
    } else if (row < 0) {
        file = file == 0 ? last : file - 1;
        row = rowsOf(file) - 1;
    }
    return index(row, 0, index(file, 0));
}

QModelIndex ChangeModel::RowOf(const std::string& record, const std::string& field) const {
    for (std::size_t line = 0; line < count; ++line) {
        const auto [name, property] = changes.NamesOf(line);
        if (name != record || property != field)
            continue;
        for (const auto& file : files) {
            const auto at = std::ranges::lower_bound(file->Lines, line);
            if (at != file->Lines.end() && *at == line)
                return index(static_cast<int>(at - file->Lines.begin()), 0, index(file->Row, 0));
        }
    }
    return {};
}

QModelIndex ChangeModel::index(int row, int column, const QModelIndex& above) const {
    if (row < 0 || column < 0 || column >= ColumnCount || row >= rowCount(above))
        return {};
    return createIndex(row, column,
                       above.isValid() ? files[static_cast<std::size_t>(above.row())].get() : nullptr);
}

QModelIndex ChangeModel::parent(const QModelIndex& child) const {
    const auto* file = static_cast<const File*>(child.internalPointer());
    return child.isValid() && file ? createIndex(file->Row, 0, nullptr) : QModelIndex();
}

int ChangeModel::rowCount(const QModelIndex& above) const {
    if (!above.isValid())
        return static_cast<int>(files.size());
    return above.internalPointer() || above.column() != 0
               ? 0
               : static_cast<int>(FileAt(above.row()).Lines.size());
}

int ChangeModel::columnCount(const QModelIndex& /*parent*/) const {
    return ColumnCount;
}

Qt::CheckState ChangeModel::StateOf(const File& file) const {
    std::size_t ticked = 0;
    std::size_t possible = 0;
    for (const std::uint32_t line : file.Lines) {
        ticked += changes.IsTicked(line) ? 1 : 0;
        possible += changes.MayTick(line) ? 1 : 0;
    }
    return ticked == 0 ? Qt::Unchecked : ticked == possible ? Qt::Checked : Qt::PartiallyChecked;
}

QVariant ChangeModel::FileData(const File& file, int role) const {
    if (role == Qt::CheckStateRole)
        return StateOf(file);
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole)
        return ToQt(file.Name) + QStringLiteral(" (%1)").arg(file.Lines.size());
    return {};
}

QVariant ChangeModel::LineData(std::size_t line, int column, int role) const {
    if (role == Qt::CheckStateRole && column == RecordColumn)
        return changes.IsTicked(line) ? Qt::Checked : Qt::Unchecked;
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleTextRole)
        return {};
    const ChangeList::Proposal change = changes.At(line);
    const Excerpts excerpts(change.Before, change.After);
    const std::array<QString, ColumnCount> texts{ToQt(change.Record), ToQt(change.Field), excerpts.Before,
                                                 excerpts.After, ToQt(change.Note)};
    if (role == Qt::AccessibleTextRole && column == RecordColumn) {
        QStringList spoken(texts.begin(), texts.end());
        spoken.removeAll(QString());
        return spoken.join(QStringLiteral(", "));
    }
    if (role == Qt::ToolTipRole && (column == BeforeColumn || column == AfterColumn))
        return ToQt(column == BeforeColumn ? change.Before : change.After);
    return texts[static_cast<std::size_t>(column)];
}

QVariant ChangeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (const auto line = LineAt(index))
        return LineData(*line, index.column(), role);
    return index.column() == 0 ? FileData(FileAt(index.row()), role) : QVariant();
}

bool ChangeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != 0)
        return false;
    const bool ticked = value.toInt() != Qt::Unchecked;
    if (const auto line = LineAt(index)) {
        changes.Tick(*line, ticked);
        emit dataChanged(index, index);
        emit dataChanged(index.parent(), index.parent());
    } else {
        const File& file = FileAt(index.row());
        for (const std::uint32_t each : file.Lines)
            changes.Tick(each, ticked);
        emit dataChanged(index, index);
        emit dataChanged(this->index(0, 0, index),
                         this->index(static_cast<int>(file.Lines.size()) - 1, 0, index));
    }
    emit Ticked();
    return true;
}

QVariant ChangeModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    const std::array<QString, ColumnCount> names{tr("Record"), tr("Field"), tr("Before"), tr("After"),
                                                 tr("Note")};
    return names[static_cast<std::size_t>(section)];
}

Qt::ItemFlags ChangeModel::flags(const QModelIndex& index) const {
    Qt::ItemFlags flags = QAbstractItemModel::flags(index);
    const auto line = LineAt(index);
    if (line)
        flags |= Qt::ItemNeverHasChildren;
    if (index.column() == 0 && (!line || changes.MayTick(*line)))
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

} // namespace velmora
