#include "editor/GivenUpDialog.h"

#include "editor/QtText.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace velmora {

GivenUpDialog::GivenUpDialog(const std::vector<Entry>& entries, QWidget* parent)
    : QDialog(parent), tree(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("frmGivenUp"));
    setWindowTitle(tr("Take Up Given-Up Work"));
    resize(560, 380);
    tree->setObjectName(QStringLiteral("tvwGivenUp"));
    tree->setAccessibleName(windowTitle());
    tree->setHeaderHidden(true);
    for (const Entry& entry : entries) {
        auto* top = new QTreeWidgetItem(tree, {ToQt(entry.Title)});
        for (const std::string& line : entry.Lines)
            new QTreeWidgetItem(top, {ToQt(line)});
    }
    tree->setCurrentItem(tree->topLevelItem(0));
    tree->topLevelItem(0)->setExpanded(true);
    auto* label = new QLabel(tr("&Changes that were given up, the latest first:"), this);
    label->setBuddy(tree);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("&Take Up"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(tree, &QTreeWidget::itemActivated, this, &QDialog::accept);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(tree);
    layout->addWidget(buttons);
}

int GivenUpDialog::Choose() {
    if (exec() != Accepted)
        return -1;
    const QTreeWidgetItem* chosen = tree->currentItem();
    return tree->indexOfTopLevelItem(
        const_cast<QTreeWidgetItem*>(chosen && chosen->parent() ? chosen->parent() : chosen));
}

} // namespace velmora
