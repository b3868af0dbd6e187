#pragma once

#include "kinds/Import.h"

#include <QAbstractTableModel>
#include <cstddef>
#include <vector>

namespace velmora {

/// The rows of a table that is to be imported, with a tick at each that can be taken.
class ImportModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { OutcomeColumn, RecordColumn, ChangesColumn, ColumnCount };

    explicit ImportModel(const Import& table, QObject* parent = nullptr);

    [[nodiscard]] bool IsWanted(std::size_t row) const { return wanted[row]; }
    [[nodiscard]] std::size_t CountWanted() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  private:
    [[nodiscard]] QString TextOf(const Import::Row& row, int column) const;

    const std::vector<Import::Row>& rows;
    std::vector<bool> wanted;
};

} // namespace velmora
