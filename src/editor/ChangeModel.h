#pragma once

#include "records/ChangeList.h"

#include <QAbstractItemModel>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// Proposed changes for a view, group by group: what each field holds and would hold, what speaks against it,
/// and a tick to take it or leave it. Of long texts it shows the part that differs.
class ChangeModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    enum Column { RecordColumn, FieldColumn, BeforeColumn, AfterColumn, NoteColumn, ColumnCount };

    /// What is shown of each change, and how it is headed.
    using Columns = std::vector<std::pair<Column, QString>>;

    ChangeModel(ChangeList& shownChanges, Columns shownColumns, QObject* parent)
        : QAbstractItemModel(parent), changes(shownChanges), columns(std::move(shownColumns)) {}

    /// The list holds other changes.
    void Rebuild();
    /// The same changes have other ticks and notes.
    void Refresh();
    /// Ticks all that can be made, or none.
    void TickAll(bool ticked);

    /// How many changes there are rows of.
    [[nodiscard]] std::size_t Count() const { return count; }
    /// Nothing for a group.
    [[nodiscard]] std::optional<std::size_t> LineAt(const QModelIndex& index) const;
    /// The change after or before a row, the first after the last; invalid without any.
    [[nodiscard]] QModelIndex Next(const QModelIndex& index, int step) const;
    /// The row of a change; invalid without one.
    [[nodiscard]] QModelIndex RowOf(const std::string& record, const std::string& field) const;

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& child) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

  signals:
    void Ticked();

  private:
    struct Group {
        std::string Name;
        int Row = 0;
        std::vector<std::uint32_t> Lines = {};
    };
    [[nodiscard]] const Group& GroupAt(int row) const { return *groups[static_cast<std::size_t>(row)]; }
    [[nodiscard]] QVariant GroupData(const Group& group, int role) const;
    [[nodiscard]] QVariant LineData(std::size_t line, int column, int role) const;
    /// Nothing for a group of changes that cannot be made.
    [[nodiscard]] std::optional<Qt::CheckState> StateOf(const Group& group) const;

    ChangeList& changes;
    Columns columns;
    std::vector<std::unique_ptr<Group>> groups; // by name
    std::size_t count = 0;
};

} // namespace velmora
