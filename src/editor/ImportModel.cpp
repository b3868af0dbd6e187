#include "editor/ImportModel.h"

#include "editor/QtText.h"
#include "records/WordDiff.h"

#include <algorithm>

namespace velmora {

namespace {

bool CanBeTaken(const Import::Row& row) {
    return row.Is == Import::Outcome::New || row.Is == Import::Outcome::Changed;
}

QString WordOf(Import::Outcome outcome) {
    switch (outcome) {
    case Import::Outcome::New:
        return ImportModel::tr("new");
    case Import::Outcome::Changed:
        return ImportModel::tr("changed");
    case Import::Outcome::Conflict:
        return ImportModel::tr("conflict");
    default:
        return ImportModel::tr("refused");
    }
}

std::string ChangesOf(const Import::Row& row) {
    if (!CanBeTaken(row))
        return row.Reason + (row.Rule.empty() ? "" : " [" + std::string(row.Rule) + "]");
    std::string text;
    for (const Import::FieldChange& change : row.Changes)
        if (!change.Before.empty() || !change.After.empty())
            text.append(text.empty() ? "" : "; ")
                .append(change.Property)
                .append(": ")
                .append(row.Is == Import::Outcome::New ? change.After
                                                       : DiffWords(change.Before, change.After));
    return text;
}

} // namespace

ImportModel::ImportModel(const Import& table, QObject* parent)
    : QAbstractTableModel(parent), rows(table.Rows()) {
    for (const Import::Row& row : rows)
        wanted.push_back(CanBeTaken(row));
}

std::size_t ImportModel::CountWanted() const {
    return static_cast<std::size_t>(std::ranges::count(wanted, true));
}

int ImportModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows.size());
}

int ImportModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ImportModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == OutcomeColumn ? tr("Row") : section == RecordColumn ? tr("Record") : tr("Changes");
}

QString ImportModel::TextOf(const Import::Row& row, int column) const {
    return column == OutcomeColumn  ? WordOf(row.Is)
           : column == RecordColumn ? ToQt(row.Name)
                                    : ToQt(ChangesOf(row));
}

QVariant ImportModel::data(const QModelIndex& index, int role) const {
    const auto at = static_cast<std::size_t>(index.row());
    const Import::Row& row = rows[at];
    if (role == Qt::CheckStateRole && index.column() == OutcomeColumn && CanBeTaken(row))
        return wanted[at] ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::AccessibleTextRole && index.column() == OutcomeColumn)
        return tr("%1, %2, %3").arg(WordOf(row.Is), TextOf(row, RecordColumn), TextOf(row, ChangesColumn));
    if (role == Qt::DisplayRole)
        return TextOf(row, index.column());
    if (role == Qt::ToolTipRole && index.column() == ChangesColumn)
        return QStringLiteral("<p>%1</p>").arg(TextOf(row, ChangesColumn).left(2000).toHtmlEscaped());
    return {};
}

Qt::ItemFlags ImportModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool tickable =
        index.column() == OutcomeColumn && CanBeTaken(rows[static_cast<std::size_t>(index.row())]);
    return tickable ? flags | Qt::ItemIsUserCheckable : flags;
}

bool ImportModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::CheckStateRole || !flags(index).testFlag(Qt::ItemIsUserCheckable))
        return false;
    wanted[static_cast<std::size_t>(index.row())] = value.toInt() == Qt::Checked;
    emit dataChanged(index, index, {role});
    return true;
}

} // namespace velmora
