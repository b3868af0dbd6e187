#pragma once

#include "records/Search.h"

#include <QAbstractItemModel>
#include <chrono>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The records of a library that match a filter, in the editor's order, for a view: a row each. It holds
/// positions only. The record on show always has a row, which tells when it does not match.
class RecordListModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    /// `states` is false for a kind that is only read.
    RecordListModel(const Library& listedLibrary, bool states, QObject* parent);

    /// Where the rules come from that each record breaks. The search for one goes on with RulesChanged.
    void SetRules(RulesOf rules) { rulesOf = std::move(rules); }
    [[nodiscard]] const RulesOf& Rules() const { return rulesOf; }
    /// True when a record breaks a rule or is not written.
    [[nodiscard]] bool NeedsAttention(const Record& record) const;

    /// Begins to look for the records that match a filter; rows are there for those found at once.
    void Begin(Filter filter);
    /// Begins anew: the library is another one.
    void Restart();
    /// Goes on looking for some time; true when all rows are there.
    bool Work(std::chrono::microseconds time);
    [[nodiscard]] bool Complete() const { return complete; }
    [[nodiscard]] bool Filtering() const { return !search.Current().Empty(); }
    /// Follows a change of some records. False when it takes more than that: Restart is to be called.
    bool Follow(const std::vector<std::string_view>& names);
    /// Tells the views that other records break rules now.
    void RulesChanged();
    /// Which record is on show; Library::None for none.
    void SetShown(std::size_t position);

    [[nodiscard]] bool MatchesFilter(const Record& record) const { return search.Matches(record); }
    /// How many records match, so far.
    [[nodiscard]] std::size_t Matches() const { return told; }
    /// How many the library had when it was last looked at.
    [[nodiscard]] std::size_t Known() const { return known; }
    /// Position in the library of a row's record.
    [[nodiscard]] std::size_t PositionAt(int row) const;
    /// nullptr for a row whose record is gone, of which the model is yet to be told.
    [[nodiscard]] const Record* RecordAt(int row) const;
    /// Row of a position, -1 without one.
    [[nodiscard]] int RowOf(std::size_t position) const;
    /// True for the row of the record on show that does not match.
    [[nodiscard]] bool IsStray(int row) const { return stray != Library::None && row == StrayRow(); }
    /// Columns from here on are hidden until they are asked for.
    [[nodiscard]] int FirstExtraColumn() const { return firstExtra; }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    struct Column {
        QString Heading;
        std::function<QString(const Record&)> Text;
    };
    void AddColumns(bool states);
    void AddFieldColumns();
    [[nodiscard]] std::size_t ProblemsOf(const Record& record) const {
        return rulesOf ? rulesOf(record).size() : 0;
    }
    [[nodiscard]] QString SpokenText(const QModelIndex& index, const Record& record) const;

    template <class Start>
    void Reset(const Start& start);
    void TellOfFound();
    void TellUpTo(std::size_t count, int row);
    void FollowRecord(std::size_t position);
    void RowChanged(int row);
    void PlaceStray();
    /// The row of a match, or where it would be; `stray` does not count.
    [[nodiscard]] std::size_t MatchRow(std::size_t position) const;
    [[nodiscard]] bool IsMatchRow(std::size_t matchRow, std::size_t position) const;
    [[nodiscard]] int StrayRow() const { return static_cast<int>(MatchRow(stray)); }

    const Library& library;
    RulesOf rulesOf;
    Search search;
    std::vector<Column> columns;
    int nameColumn = 0;
    int firstExtra = 0;
    std::size_t told = 0; // how many of those found the views know of
    std::size_t known = 0;
    bool complete = true;
    std::size_t shown = Library::None;
    std::size_t stray = Library::None; // the one on show, when it does not match
};

} // namespace velmora
