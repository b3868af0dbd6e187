#pragma once

#include "kinds/FolderComparison.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QTreeView;

namespace velmora {

class ChangeModel;

/// Shows how a library and another folder differ, record by record: each field here and there, with a tick to
/// take the other folder's value. Nothing changes before it is accepted.
class CompareDialog : public QDialog {
    Q_OBJECT

  public:
    CompareDialog(FolderComparison& shownComparison, const QString& folder, QWidget* parent = nullptr);

  private:
    void BuildTree();
    void Tell();

    FolderComparison& comparison;
    ChangeModel* model;
    QTreeView* tree;
    QLabel* state;
    QPushButton* take;
};

} // namespace velmora
