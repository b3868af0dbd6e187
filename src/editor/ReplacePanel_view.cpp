// How the dock that finds and replaces looks, and what it tells.
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/ReplacePanel.h"
#include "editor/Workbench.h"
#include "kinds/PlayerTexts.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

namespace velmora {

void ReplacePanel::BuildPanel() {
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    inputs = BuildInputs();
    layout->addWidget(inputs, 2);
    BuildFields();
    layout->addWidget(fields, 1);
    layout->addWidget(BuildHits(), 4);
}

QLineEdit* ReplacePanel::AddText(const char* name, const QString& label) {
    auto* box = new QLineEdit(inputs);
    box->setObjectName(QString::fromLatin1(name));
    box->setAccessibleName(label);
    box->setClearButtonEnabled(true);
    box->installEventFilter(this);
    connect(box, &QLineEdit::textChanged, this, &ReplacePanel::Begin);
    static_cast<QFormLayout*>(inputs->layout())->addRow(label, box);
    return box;
}

QCheckBox* ReplacePanel::AddCheck(const char* name, const QString& text) {
    auto* box = new QCheckBox(text, inputs);
    box->setObjectName(QString::fromLatin1(name));
    connect(box, &QCheckBox::toggled, this, &ReplacePanel::Begin);
    static_cast<QFormLayout*>(inputs->layout())->addRow({}, box);
    return box;
}

QWidget* ReplacePanel::BuildInputs() {
    inputs = new QWidget(this);
    auto* layout = new QFormLayout(inputs);
    layout->setContentsMargins({});
    layout->setVerticalSpacing(3);
    find = AddText("txtFind", tr("Find"));
    fault = new QLabel(inputs);
    fault->setObjectName(QStringLiteral("lblFindFault"));
    fault->setWordWrap(true);
    layout->addRow({}, fault);
    replace = AddText("txtReplace", tr("Replace with"));
    replace->setToolTip(tr("With a regular expression \\0 is the hit, \\1 to \\9 are its groups."));
    matchCase = AddCheck("chkMatchCase", tr("Match case"));
    wholeWord = AddCheck("chkWholeWord", tr("Whole word"));
    regExp = AddCheck("chkRegExp", tr("Regular expression"));
    regExp->setToolTip(tr("The line break \\n stands in the texts as two characters: look for \\\\n."));
    scope = new QComboBox(inputs);
    scope->setObjectName(QStringLiteral("cboScope"));
    scope->setAccessibleName(tr("Where to look"));
    scope->addItems({tr("The whole library"), tr("Filtered list of records"), tr("This file")});
    connect(scope, &QComboBox::currentIndexChanged, this, &ReplacePanel::Begin);
    layout->addRow(tr("In"), scope);
    return inputs;
}

void ReplacePanel::BuildFields() {
    fields = new QListWidget(this);
    fields->setObjectName(QStringLiteral("lstFields"));
    fields->setAccessibleName(tr("Fields to look in"));
    library.Kind.ForEachField([&](const Field& field) {
        if (field.Type != FieldType::Text)
            return;
        auto* item = new QListWidgetItem(ToQt(field.Property), fields);
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
    });
    TickTextsOfPlayers();
    fields->setCurrentRow(0);
    connect(fields, &QListWidget::itemChanged, this, &ReplacePanel::Begin);
}

void ReplacePanel::TickTextsOfPlayers() {
    const auto texts = PlayerTextsOf(library.Kind);
    for (int row = 0; row < fields->count(); ++row) {
        QListWidgetItem* item = fields->item(row);
        const bool isRead = std::ranges::any_of(
            texts, [&](const PlayerText& text) { return ToQt(text.Shown->Property) == item->text(); });
        item->setCheckState(isRead ? Qt::Checked : Qt::Unchecked);
    }
}

void ReplacePanel::BuildTree() {
    tree = new QTreeView(this);
    tree->setObjectName(QStringLiteral("tvwHits"));
    tree->setAccessibleName(tr("Hits"));
    tree->setModel(model);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setAlternatingRowColors(true);
    tree->setTabKeyNavigation(false);
    tree->installEventFilter(this);
    tree->header()->setObjectName(QStringLiteral("hdrHits"));
    const int letter = tree->fontMetrics().averageCharWidth();
    const int widths[] = {28, 18, 44, 44};
    for (int column = 0; column < ChangeModel::NoteColumn; ++column)
        tree->setColumnWidth(column, letter * widths[column]);
    connect(tree, &QAbstractItemView::clicked, this, &ReplacePanel::GoTo);
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& to) {
                if (const auto line = model->LineAt(to))
                    current = replacement.NamesOf(*line);
            });
    tree->setContextMenuPolicy(Qt::ActionsContextMenu);
    const auto add = [this](const char* name, const QString& text, bool ticked) {
        auto* tick = new QAction(text, tree);
        tick->setObjectName(QString::fromLatin1(name));
        connect(tick, &QAction::triggered, this, [this, ticked] { model->TickAll(ticked); });
        tree->addAction(tick);
    };
    add("mnuTickAllHits", tr("Tick &All"), true);
    add("mnuTickNoHit", tr("Tick &None"), false);
}

QWidget* ReplacePanel::BuildHits() {
    auto* side = new QWidget(this);
    auto* layout = new QVBoxLayout(side);
    layout->setContentsMargins({});
    BuildTree();
    layout->addWidget(tree, 1);
    auto* line = new QHBoxLayout;
    layout->addLayout(line);
    button = new QPushButton(side);
    button->setObjectName(QStringLiteral("cmdReplace"));
    connect(button, &QPushButton::clicked, this, &ReplacePanel::ReplaceTicked);
    line->addWidget(button, 0, Qt::AlignLeft);
    state = new QLabel(side);
    state->setObjectName(QStringLiteral("lblReplaceState"));
    state->setTextFormat(Qt::RichText);
    state->setWordWrap(true);
    state->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    connect(state, &QLabel::linkActivated, this, &ReplacePanel::FollowLink);
    line->addWidget(state, 1);
    return side;
}

void ReplacePanel::AddToWorkbench() {
    workbench.AddDock("dckReplace", tr("Find And Replace"), this, Qt::BottomDockWidgetArea, "mnuShowReplace");
    workbench.KeepColumns(tree->header());
    next = workbench.AddItem("mnuNextHit", tr("Next Hi&t"), Qt::Key_F3);
    previous = workbench.AddItem("mnuPreviousHit", tr("Previo&us Hit"), Qt::SHIFT | Qt::Key_F3);
    connect(next, &QAction::triggered, this, [this] { Step(1); });
    connect(previous, &QAction::triggered, this, [this] { Step(-1); });
}

void ReplacePanel::Tell() {
    const Replacement::Totals sum = replacement.Sum();
    for (QAction* step : {next, previous})
        step->setEnabled(sum.Hits > 0);
    fault->setVisible(!fault->text().isEmpty());
    const auto text = sum.TickedRecords == 1
                          ? tr("Replace %1 in 1 record").arg(sum.TickedHits)
                          : tr("Replace %1 in %2 records").arg(sum.TickedHits).arg(sum.TickedRecords);
    button->setText(text);
    button->setEnabled(command->isEnabled() && replacement.Done() && sum.TickedHits > 0);
    QString told = FoundText(sum);
    if (replaced) {
        told = tr("Replaced %1. <a href=\"undo\">Undo</a>").arg(*replaced);
        if (library.Exists(origin))
            told += QStringLiteral(" \u00B7 <a href=\"back\">") +
                    tr("Back to %1").arg(ToQt(origin).toHtmlEscaped()) + QStringLiteral("</a>");
    }
    state->setText(told);
    state->setVisible(!told.isEmpty()); // Tab shall not stop at nothing
}

QString ReplacePanel::FoundText(const Replacement::Totals& sum) const {
    if (find->text().isEmpty() || !fault->text().isEmpty())
        return {};
    QStringList told;
    const QString hits = sum.Hits == 1 ? tr("1 hit") : tr("%1 hits").arg(sum.Hits);
    told << (sum.Records == 1 ? tr("%1 in 1 record").arg(hits)
                              : tr("%1 in %2 records").arg(hits).arg(sum.Records));
    if (!replacement.Found())
        told << tr("searching, %1 %")
                    .arg(100 * replacement.Searched() / std::max<std::size_t>(1, library.Count()));
    else if (!replacement.Done())
        told << tr("checking...");
    if (sum.Refused > 0)
        told << tr("%1 refused").arg(sum.Refused);
    if (sum.WithProblems > 0)
        told << tr("%1 with a new problem").arg(sum.WithProblems);
    return told.join(QStringLiteral(", ")) + GivenUpText();
}

QString ReplacePanel::GivenUpText() const {
    const auto& places = replacement.GivenUp();
    if (places.empty() || places.front().Position >= library.Count())
        return {};
    const QString first = ToQt(library.NameOf(library.At(places.front().Position))) + QStringLiteral(", ") +
                          ToQt(replacement.FieldOf(places.front()));
    const QString texts = places.size() == 1 ? first : tr("%1 and %2 more").arg(first).arg(places.size() - 1);
    return tr(". Too much work for this expression, not searched to the end: ") + texts.toHtmlEscaped();
}

} // namespace velmora
