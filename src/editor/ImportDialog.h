#pragma once

#include "kinds/Import.h"

#include <QDialog>
#include <cstddef>
#include <string>
#include <vector>

class QLabel;
class QPushButton;
class QTreeView;

namespace velmora {

class ImportModel;

/// Shows what a table would change, row by row, before anything does. Rows that are new or changed can be
/// left out; those that are refused or in conflict say why.
class ImportDialog : public QDialog {
    Q_OBJECT

  public:
    explicit ImportDialog(const Import& table, QWidget* parent = nullptr);

    /// True for a row that is ticked.
    [[nodiscard]] bool Wants(const Import::Row& row) const;
    [[nodiscard]] std::size_t CountWanted() const;

  private:
    void BuildTree();
    void TellCount();

    const Import& import;
    ImportModel* model;
    QTreeView* tree;
    QLabel* count;
    QPushButton* take;
};

} // namespace velmora
