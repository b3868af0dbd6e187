#pragma once

#include "platform/TextFinder.h"
#include "records/ProblemIndex.h"

#include <QAbstractItemModel>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// The problems of an index for a view: a row each, below a row for each group or without groups.
class ProblemModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum Grouping { ByFile, ByRule, NotAtAll };
    enum Column { SeverityColumn, RuleColumn, RecordColumn, FieldColumn, TextColumn, ColumnCount };

    ProblemModel(const Library& listedLibrary, const ProblemIndex& listed,
                 std::function<bool(const Problem&)> hides, QObject* parent);

    void SetGrouping(Grouping grouping);
    /// Lists only problems in which all words of this line stand.
    void SetFilter(const std::string& line);
    void SetHiddenShown(bool shown);
    [[nodiscard]] bool HiddenShown() const { return hiddenShown; }
    /// Begins anew: the index, the order of the library or what is hidden is another one.
    void Rebuild();
    /// Follows the index.
    void Replace(const ProblemIndex::HolderPtr& before, const ProblemIndex::HolderPtr& after);

    /// How many rows there are of a severity.
    [[nodiscard]] std::size_t Count(Severity severity) const {
        return counts[static_cast<std::size_t>(severity)];
    }
    [[nodiscard]] std::size_t Count() const { return counts[0] + counts[1] + counts[2]; }
    [[nodiscard]] std::size_t Hidden() const { return hidden; }
    /// How many the filter leaves out.
    [[nodiscard]] std::size_t LeftOut() const { return leftOut; }

    /// nullptr for a group.
    [[nodiscard]] const Problem* ProblemAt(const QModelIndex& index) const;
    /// The row of a problem, or of the most similar one of its record; invalid without any.
    [[nodiscard]] QModelIndex RowOf(const Problem& problem) const;
    /// The problem after or before a row, the first after the last; invalid without any.
    [[nodiscard]] QModelIndex Next(const QModelIndex& index, int step) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    struct Row {
        ProblemIndex::HolderPtr Holder;
        std::size_t Ordinal;

        [[nodiscard]] const Problem& Told() const { return Holder->Problems[Ordinal]; }
    };
    struct Group {
        std::string Name;
        int At = 0;
        std::vector<Row> Rows = {};
    };

    void Add(const ProblemIndex::HolderPtr& holder, bool tell);
    void Insert(Group& group, Row row, bool tell);
    void Remove(const ProblemIndex::HolderPtr& holder);
    void NumberGroups();
    Group& GroupOf(const Problem& problem, bool tell);
    [[nodiscard]] std::size_t PlaceOf(const Row& row) const;
    [[nodiscard]] bool Matches(const Problem& problem) const;
    /// Counts a holder's problems in or out; true for each that has a row.
    std::vector<bool> CountIn(const ProblemIndex::Holder& holder, std::size_t by);
    [[nodiscard]] const Row* RowAt(const QModelIndex& index) const;
    [[nodiscard]] QModelIndex IndexOf(const Group& group) const;
    [[nodiscard]] QVariant TextOf(const Row& row, int column) const;
    [[nodiscard]] QString SpokenText(const Row& row) const;

    const Library& library;
    const ProblemIndex& problems;
    std::function<bool(const Problem&)> isHidden;
    Grouping by = ByFile;
    std::vector<TextFinder> words;
    bool hiddenShown = false;
    std::vector<std::unique_ptr<Group>> groups; // by name; a single one without groups
    std::array<std::size_t, 3> counts{};
    std::size_t hidden = 0;
    std::size_t leftOut = 0;
};

} // namespace velmora
