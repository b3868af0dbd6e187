#include "editor/ImportDialog.h"

#include "editor/ImportModel.h"
#include "editor/QtText.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace velmora {

ImportDialog::ImportDialog(const Import& table, QWidget* parent)
    : QDialog(parent), import(table), model(new ImportModel(table, this)), tree(new QTreeView(this)),
      count(new QLabel(this)), take(nullptr) {
    setObjectName(QStringLiteral("frmImport"));
    setWindowTitle(tr("Import"));
    count->setObjectName(QStringLiteral("lblImportState"));
    count->setWordWrap(true);
    BuildTree();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    take = buttons->addButton(tr("&Import"), QDialogButtonBox::AcceptRole);
    take->setObjectName(QStringLiteral("cmdImport"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tree, 1);
    layout->addWidget(count);
    layout->addWidget(buttons);
    connect(model, &QAbstractItemModel::dataChanged, this, &ImportDialog::TellCount);
    TellCount();
    resize(820, 460);
}

void ImportDialog::BuildTree() {
    tree->setObjectName(QStringLiteral("tvwImport"));
    tree->setAccessibleName(tr("What the table changes"));
    tree->setModel(model);
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setTabKeyNavigation(false);
    const int letter = fontMetrics().averageCharWidth();
    tree->setColumnWidth(ImportModel::OutcomeColumn, 14 * letter);
    tree->setColumnWidth(ImportModel::RecordColumn, 22 * letter);
    tree->setCurrentIndex(model->index(0, 0));
}

void ImportDialog::TellCount() {
    const auto of = [this](Import::Outcome outcome) { return QString::number(import.CountOf(outcome)); };
    QString text =
        tr("%1 new, %2 changed, %3 refused, %4 in conflict, %5 the same.")
            .arg(of(Import::Outcome::New), of(Import::Outcome::Changed), of(Import::Outcome::Refused),
                 of(Import::Outcome::Conflict), of(Import::Outcome::Same));
    QStringList columns;
    for (const std::string& column : import.UnknownColumns())
        columns.append(QString::fromStdString(column));
    if (!columns.isEmpty())
        text += tr("  Columns that are not known and left out: %1.").arg(columns.join(QLatin1String(", ")));
    count->setText(text);
    take->setText(tr("&Import %1").arg(CountWanted()));
    take->setEnabled(CountWanted() > 0);
}

bool ImportDialog::Wants(const Import::Row& row) const {
    return model->IsWanted(static_cast<std::size_t>(&row - import.Rows().data()));
}

std::size_t ImportDialog::CountWanted() const {
    return model->CountWanted();
}

} // namespace velmora
