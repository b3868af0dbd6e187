#include "editor/RecordListModel.h"

#include "editor/QtText.h"

#include <QFont>
#include <algorithm>

namespace velmora {

namespace {

/// From here on a step is followed by looking at all records again.
constexpr std::size_t MostFollowed = 1000;
/// How long a key may take to show its first rows.
constexpr std::chrono::milliseconds FirstSlice{4};

QString StateText(const Record& record) {
    const std::string_view word = StateWord(record);
    if (word.empty())
        return {};
    const QChar sign = word == "new" ? QLatin1Char('+') : word == "deleted" ? QChar(0xD7) : QLatin1Char('*');
    return sign + QLatin1Char(' ') + ToQt(word);
}

QString FieldText(const Field& field, const Record& record) {
    if (field.Type == FieldType::Text)
        return ToQt(field.TextOf(record));
    if (field.Type != FieldType::List)
        return QString::number(field.NumberOf(record));
    QStringList entries;
    for (const std::string& entry : field.ListOf(record))
        entries.append(ToQt(entry));
    return entries.join(QLatin1String("; "));
}

} // namespace

RecordListModel::RecordListModel(const Library& listedLibrary, bool states, QObject* parent)
    : QAbstractItemModel(parent), library(listedLibrary), search(library, [this](const Record& record) {
          return rulesOf ? rulesOf(record) : std::vector<std::string_view>{};
      }) {
    AddColumns(states);
}

void RecordListModel::AddColumns(bool states) {
    const RecordKind& kind = library.Kind;
    if (states)
        columns.push_back({tr("State"), StateText});
    nameColumn = static_cast<int>(columns.size());
    columns.push_back({tr("Name"), [&kind](const Record& record) { return ToQt(kind.NameOf(record)); }});
    columns.push_back(
        {ToQt(kind.TitleWord), [&kind](const Record& record) { return FieldText(kind.Title, record); }});
    columns.push_back({tr("File"), [](const Record& record) { return ToQt(record.ShortName); }});
    columns.push_back({tr("Type"), [&kind](const Record& record) { return ToQt(kind.TypeOf(record)); }});
    columns.push_back({tr("Problems"), [this](const Record& record) {
                           const std::size_t count = ProblemsOf(record);
                           return count == 0 ? QString() : QString::number(count);
                       }});
    firstExtra = static_cast<int>(columns.size());
    AddFieldColumns();
}

void RecordListModel::AddFieldColumns() {
    const RecordKind& kind = library.Kind;
    columns.push_back(
        {tr("Number"), [&kind](const Record& record) { return QString::number(kind.NumberOf(record)); }});
    kind.ForEachField([&](const Field& field) {
        if (field.Property != kind.Title.Property)
            columns.push_back(
                {ToQt(field.Property), [field](const Record& record) { return FieldText(field, record); }});
    });
}

bool RecordListModel::NeedsAttention(const Record& record) const {
    return record.IsDirty || ProblemsOf(record) > 0;
}

template <class Start>
void RecordListModel::Reset(const Start& start) {
    beginResetModel();
    start();
    known = library.Count();
    complete = search.Work(FirstSlice);
    told = search.Found().size();
    stray = Library::None;
    if (shown < known && !search.Matches(library.At(shown)))
        stray = shown;
    endResetModel();
}

void RecordListModel::Begin(Filter filter) {
    Reset([&] { search.Begin(std::move(filter)); });
}

void RecordListModel::Restart() {
    Reset([&] { search.Restart(); });
}

bool RecordListModel::Work(std::chrono::microseconds time) {
    if (library.Count() < known)
        return true; // it is being read again
    complete = search.Work(time);
    // A view lays all its rows out anew, however few are added.
    if (complete || search.Found().size() >= 2 * told)
        TellOfFound();
    return complete;
}

void RecordListModel::TellOfFound() {
    const auto& found = search.Found();
    if (stray != Library::None) {
        const auto before =
            static_cast<std::size_t>(std::lower_bound(found.begin(), found.end(), stray) - found.begin());
        TellUpTo(before, static_cast<int>(told));
    }
    TellUpTo(found.size(), rowCount());
}

void RecordListModel::TellUpTo(std::size_t count, int row) {
    if (count <= told)
        return;
    beginInsertRows({}, row, row + static_cast<int>(count - told) - 1);
    told = count;
    endInsertRows();
}

bool RecordListModel::Follow(const std::vector<std::string_view>& names) {
    const std::size_t count = library.Count();
    if (!complete || count < known)
        return false;
    std::vector<std::size_t> positions;
    std::size_t added = 0;
    for (const std::string_view name : names) {
        positions.push_back(library.IndexOf(name));
        if (positions.back() == Library::None)
            return false;
        added += positions.back() >= known ? 1 : 0;
    }
    // Records that came anywhere but at the end have moved others.
    if (added != count - known)
        return false;
    if (names.size() > MostFollowed) {
        if (Filtering() || added > 0)
            return false;
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
        return true;
    }
    const std::size_t onShow = shown;
    if (stray != Library::None)
        SetShown(Library::None);
    for (const std::size_t position : positions)
        if (position < known)
            FollowRecord(position);
    known = count;
    Work(FirstSlice);
    shown = onShow;
    PlaceStray();
    return true;
}

void RecordListModel::FollowRecord(std::size_t position) {
    const std::size_t at = MatchRow(position);
    const bool was = IsMatchRow(at, position);
    const int row = static_cast<int>(at);
    if (search.Matches(library.At(position))) {
        if (was)
            return RowChanged(row);
        beginInsertRows({}, row, row);
        search.Put(position);
        ++told;
        endInsertRows();
    } else if (was) {
        beginRemoveRows({}, row, row);
        search.Drop(position);
        --told;
        endRemoveRows();
    }
}

void RecordListModel::RulesChanged() {
    if (search.Current().AsksForRules())
        return Restart();
    if (rowCount() > 0)
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void RecordListModel::RowChanged(int row) {
    if (row >= 0)
        emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void RecordListModel::SetShown(std::size_t position) {
    const std::size_t before = shown;
    shown = position;
    if (stray != Library::None) {
        const int row = StrayRow();
        beginRemoveRows({}, row, row);
        stray = Library::None;
        endRemoveRows();
    }
    PlaceStray();
    RowChanged(RowOf(before));
    RowChanged(RowOf(shown));
}

void RecordListModel::PlaceStray() {
    if (shown >= library.Count() || search.Matches(library.At(shown)))
        return;
    const int row = static_cast<int>(MatchRow(shown));
    beginInsertRows({}, row, row);
    stray = shown;
    endInsertRows();
}

std::size_t RecordListModel::MatchRow(std::size_t position) const {
    const auto begin = search.Found().begin();
    const auto end = begin + static_cast<std::ptrdiff_t>(told);
    return static_cast<std::size_t>(std::lower_bound(begin, end, position) - begin);
}

bool RecordListModel::IsMatchRow(std::size_t matchRow, std::size_t position) const {
    return matchRow < told && search.Found()[matchRow] == position;
}

std::size_t RecordListModel::PositionAt(int row) const {
    if (stray != Library::None && row >= StrayRow()) {
        if (row == StrayRow())
            return stray;
        --row;
    }
    return row >= 0 && static_cast<std::size_t>(row) < told ? search.Found()[static_cast<std::size_t>(row)]
                                                            : Library::None;
}

const Record* RecordListModel::RecordAt(int row) const {
    const std::size_t position = PositionAt(row);
    return position < library.Count() ? &library.At(position) : nullptr;
}

int RecordListModel::RowOf(std::size_t position) const {
    if (position == Library::None)
        return -1;
    if (position == stray)
        return StrayRow();
    const std::size_t at = MatchRow(position);
    return IsMatchRow(at, position) ? static_cast<int>(at) + (stray < position ? 1 : 0) : -1;
}

QModelIndex RecordListModel::index(int row, int column, const QModelIndex& /*parent*/) const {
    return createIndex(row, column);
}

QModelIndex RecordListModel::parent(const QModelIndex& /*child*/) const {
    return {};
}

int RecordListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(told + (stray != Library::None ? 1 : 0));
}

int RecordListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

Qt::ItemFlags RecordListModel::flags(const QModelIndex& /*index*/) const {
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

QVariant RecordListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
        return columns.at(static_cast<std::size_t>(section)).Heading;
    return {};
}

QVariant RecordListModel::data(const QModelIndex& index, int role) const {
    const Record* record = RecordAt(index.row());
    if (!record)
        return {};
    if (role == Qt::FontRole && PositionAt(index.row()) == shown) {
        QFont font;
        font.setBold(true);
        font.setItalic(IsStray(index.row()));
        return font;
    }
    if (role == Qt::AccessibleTextRole)
        return SpokenText(index, *record);
    if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
        return {};
    const QString text = columns.at(static_cast<std::size_t>(index.column())).Text(*record);
    if (index.column() != nameColumn || !IsStray(index.row()))
        return text;
    return role == Qt::DisplayRole ? QChar(0x2260) + QLatin1Char(' ') + text
                                   : tr("%1 is on show, but does not match the filter").arg(text);
}

QString RecordListModel::SpokenText(const QModelIndex& index, const Record& record) const {
    QStringList parts;
    if (nameColumn > 0)
        parts.append(ToQt(StateWord(record)));
    parts.append(ToQt(library.Kind.NameOf(record)));
    if (const std::size_t count = ProblemsOf(record); count > 0)
        parts.append(count == 1 ? tr("1 problem") : tr("%1 problems").arg(count));
    if (PositionAt(index.row()) == shown)
        parts.append(IsStray(index.row()) ? tr("on show, does not match") : tr("on show"));
    if (index.column() > nameColumn && index.column() != firstExtra - 1) {
        const Column& column = columns.at(static_cast<std::size_t>(index.column()));
        parts.append(column.Heading + QLatin1Char(' ') + column.Text(record));
    }
    parts.removeAll(QString());
    return parts.join(QLatin1String(", "));
}

} // namespace velmora
