#include "editor/CompareDialog.h"

#include "editor/ChangeModel.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace velmora {

namespace {

/// With more lines than that the records come closed: laying rows out takes time.
constexpr std::size_t MostLinesOpened = 500;

} // namespace

CompareDialog::CompareDialog(FolderComparison& shownComparison, const QString& folder, QWidget* parent)
    : QDialog(parent), comparison(shownComparison),
      model(new ChangeModel(comparison,
                            {{ChangeModel::FieldColumn, tr("Field")},
                             {ChangeModel::BeforeColumn, tr("This library")},
                             {ChangeModel::AfterColumn, tr("The other folder")},
                             {ChangeModel::NoteColumn, tr("Note")}},
                            this)),
      tree(new QTreeView(this)), state(new QLabel(this)), take(nullptr) {
    setObjectName(QStringLiteral("frmCompare"));
    setWindowTitle(tr("Compare With %1").arg(folder));
    state->setObjectName(QStringLiteral("lblCompareState"));
    state->setWordWrap(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    for (const auto& [name, text, ticked] : {std::tuple("cmdTickAll", tr("Tick &All"), true),
                                             std::tuple("cmdTickNone", tr("Tick &None"), false)}) {
        auto* button = buttons->addButton(text, QDialogButtonBox::ActionRole);
        button->setObjectName(QString::fromLatin1(name));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, model, [this, ticked = ticked] { model->TickAll(ticked); });
    }
    take = buttons->addButton(tr("&Take"), QDialogButtonBox::AcceptRole);
    take->setObjectName(QStringLiteral("cmdTake"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    model->Rebuild();
    BuildTree();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tree, 1);
    layout->addWidget(state);
    layout->addWidget(buttons);
    connect(model, &ChangeModel::Ticked, this, &CompareDialog::Tell);
    Tell();
    resize(940, 520);
}

void CompareDialog::BuildTree() {
    tree->setObjectName(QStringLiteral("tvwCompare"));
    tree->setAccessibleName(tr("Differences"));
    tree->setWhatsThis(
        tr("Each record that differs, and below it each field: what it holds here, and in the other "
           "folder. A tick takes the other folder's value, or a record that only the other folder "
           "has. Space ticks; a record's tick is that of all its fields. What stands under Note "
           "would be wrong with the record then, or says why it cannot be taken."));
    tree->setModel(model);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setAlternatingRowColors(true);
    tree->setTabKeyNavigation(false);
    const int letter = tree->fontMetrics().averageCharWidth();
    const int widths[] = {36, 40, 40};
    for (int column = 0; column < 3; ++column)
        tree->setColumnWidth(column, letter * widths[column]);
    if (model->Count() <= MostLinesOpened) {
        for (int record = 0; record < model->rowCount(); ++record)
            tree->setFirstColumnSpanned(record, {}, true);
        tree->expandAll();
    }
    tree->setCurrentIndex(model->index(0, 0));
    // A note tells of all that is ticked of a record.
    connect(model, &ChangeModel::Ticked, tree->viewport(), qOverload<>(&QWidget::update));
}

void CompareDialog::Tell() {
    const FolderComparison::Totals sum = comparison.Sum();
    QString text = tr("%1 changed, %2 only there, %3 only here, %4 the same.")
                       .arg(sum.Changed)
                       .arg(sum.Added)
                       .arg(sum.Removed)
                       .arg(sum.Same);
    if (sum.Faults > 0)
        text +=
            sum.Faults == 1 ? tr("  1 fault in its files.") : tr("  %1 faults in its files.").arg(sum.Faults);
    if (sum.WithProblems > 0)
        text += tr("  What is ticked would bring a problem to %1.").arg(sum.WithProblems);
    state->setText(text);
    take->setText(tr("&Take %1").arg(sum.Ticked));
    take->setEnabled(sum.Ticked > 0);
}

} // namespace velmora
