// How the list of problems looks.
#include "editor/ProblemPanel.h"
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "editor/Workbench.h"
#include "kinds/QuickFixes.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>

namespace velmora {

namespace {

/// Once there are more rows than that, groups come closed: nobody reads them all, and laying them out takes
/// time.
constexpr std::size_t MostRowsOpened = 500;

} // namespace

void ProblemPanel::BuildPanel() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    auto* line = new QHBoxLayout;
    layout->addLayout(line);
    groupBy = new QComboBox(this);
    groupBy->setObjectName(QStringLiteral("cboGroupBy"));
    groupBy->setAccessibleName(tr("Group problems"));
    groupBy->addItems({tr("By file"), tr("By rule"), tr("Not grouped")});
    line->addWidget(groupBy);
    connect(groupBy, &QComboBox::currentIndexChanged, this, [this](int grouping) {
        Renew([&] { model->SetGrouping(static_cast<ProblemModel::Grouping>(grouping)); });
    });
    filter = new QLineEdit(this);
    filter->setObjectName(QStringLiteral("txtProblemFilter"));
    filter->setAccessibleName(tr("Filter problems"));
    filter->setPlaceholderText(tr("Words of severity, rule, record, field, text or file"));
    filter->setClearButtonEnabled(true);
    line->addWidget(filter, 1);
    connect(filter, &QLineEdit::textChanged, this,
            [this](const QString& text) { Renew([&] { model->SetFilter(FromQt(text)); }); });
    count = new QLabel(this);
    count->setObjectName(QStringLiteral("lblProblemCount"));
    count->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    line->addWidget(count);
    connect(count, &QLabel::linkActivated, this,
            [this] { Renew([this] { model->SetHiddenShown(!model->HiddenShown()); }); });
    BuildTree();
    layout->addWidget(tree, 1);
}

void ProblemPanel::BuildTree() {
    tree = new QTreeView(this);
    tree->setObjectName(QStringLiteral("tvwProblems"));
    tree->setAccessibleName(tr("Problems"));
    tree->setModel(model);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setAlternatingRowColors(true);
    tree->setTabKeyNavigation(false);
    tree->setExpandsOnDoubleClick(false);
    tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree->installEventFilter(this);
    tree->header()->setObjectName(QStringLiteral("hdrProblems"));
    const int letter = tree->fontMetrics().averageCharWidth();
    const int widths[] = {30, 22, 20, 16};
    for (int column = 0; column < ProblemModel::TextColumn; ++column)
        tree->setColumnWidth(column, letter * widths[column]);
    connect(tree, &QAbstractItemView::clicked, this, &ProblemPanel::Jump);
    connect(tree, &QAbstractItemView::doubleClicked, this, &ProblemPanel::Enter);
    BuildCommands();
}

void ProblemPanel::BuildCommands() {
    tree->setContextMenuPolicy(Qt::ActionsContextMenu);
    fix = AddCommand("mnuQuickFix", tr("&Quick Fix"), [this] { FixCurrent(); });
    fix->setVisible(editCommand != nullptr);
    hides = {AddCommand("mnuHideProblem", tr("&Hide This One"), [this] { Hide(IgnoreFile::Scope::One); }),
             AddCommand("mnuHideRuleInFile", tr("Hide This Rule In This &File"),
                        [this] { Hide(IgnoreFile::Scope::InFile); }),
             AddCommand("mnuHideRule", tr("Hide This Rule &Everywhere"),
                        [this] { Hide(IgnoreFile::Scope::Everywhere); })};
    showAgain = AddCommand("mnuShowProblemAgain", tr("&Show Again"), [this] { ShowAgain(); });
    UpdateCommands();
}

QAction* ProblemPanel::AddCommand(const char* name, const QString& text, const std::function<void()>& run) {
    auto* action = new QAction(text, tree);
    action->setObjectName(QString::fromLatin1(name));
    tree->addAction(action);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void ProblemPanel::AddToWorkbench() {
    workbench.AddDock("dckProblems", tr("Problems"), this, Qt::BottomDockWidgetArea, "mnuShowProblems");
    workbench.KeepColumns(tree->header());
    steps = {workbench.AddItem("mnuNextProblem", tr("Next Pro&blem"), Qt::Key_F4),
             workbench.AddItem("mnuPreviousProblem", tr("Pre&vious Problem"), Qt::SHIFT | Qt::Key_F4)};
    connect(steps[0], &QAction::triggered, this, [this] { Step(1); });
    connect(steps[1], &QAction::triggered, this, [this] { Step(-1); });
}

void ProblemPanel::FollowRows() {
    const auto openGroup = [this](int row) {
        const QModelIndex group = model->index(row, 0);
        if (model->ProblemAt(group))
            return;
        tree->setFirstColumnSpanned(row, {}, true);
        tree->setExpanded(group, model->Count() <= MostRowsOpened);
    };
    connect(model, &QAbstractItemModel::modelReset, this, [this, openGroup] {
        for (int row = 0; row < model->rowCount() && !model->ProblemAt(model->index(row, 0)); ++row)
            openGroup(row);
    });
    connect(model, &QAbstractItemModel::rowsInserted, this, [openGroup](const QModelIndex& above, int row) {
        if (!above.isValid())
            openGroup(row);
    });
    connect(tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ProblemPanel::UpdateCommands);
}

void ProblemPanel::Renew(const std::function<void()>& change) {
    if (const auto current = Current())
        kept = current;
    change();
    if (kept)
        if (const QModelIndex row = model->RowOf(*kept); row.isValid())
            MakeCurrent(row);
    TellCounts();
    UpdateCommands();
}

void ProblemPanel::MakeCurrent(const QModelIndex& row) {
    if (row.parent().isValid())
        tree->expand(row.parent());
    tree->setCurrentIndex(row);
}

void ProblemPanel::TellCounts() {
    for (QAction* step : steps)
        step->setEnabled(model->rowCount() > 0);
    QStringList parts;
    const auto add = [&](Severity severity, const QString& one, const QString& many) {
        if (const std::size_t number = model->Count(severity); number > 0)
            parts << QStringLiteral("%1 %2").arg(number).arg(number == 1 ? one : many);
    };
    add(Severity::Error, tr("error"), tr("errors"));
    add(Severity::Warning, tr("warning"), tr("warnings"));
    add(Severity::Note, tr("note"), tr("notes"));
    if (parts.empty())
        parts << tr("No problems");
    if (model->LeftOut() > 0)
        parts << tr("%1 filtered out").arg(model->LeftOut());
    if (model->Hidden() > 0)
        parts << tr("%1 hidden").arg(model->Hidden()) +
                     QStringLiteral(", <a href=\"hidden\">%1</a>")
                         .arg(model->HiddenShown() ? tr("hide") : tr("show"));
    if (!index.Done())
        parts << tr("checking");
    const QString text = parts.join(QStringLiteral(", "));
    if (count->text() == text)
        return;
    count->setText(text);
    count->setFocusPolicy(model->Hidden() > 0 ? Qt::StrongFocus : Qt::NoFocus);
}

void ProblemPanel::UpdateCommands() {
    const auto problem = Current();
    const bool isHidden = problem && ignored.Hides(*problem);
    for (QAction* hide : hides)
        hide->setEnabled(problem && !isHidden && problem->Rule != BrokenIgnoreLineRule);
    showAgain->setEnabled(isHidden);
    const Record* record = problem ? library.Find(problem->Record) : nullptr;
    const bool changeable =
        record && editCommand && editCommand->isEnabled() && window.Mode() == EditMode::Browsing;
    const auto found =
        changeable ? QuickFixOf(library.Kind, *record, *problem, index.Context()) : std::nullopt;
    fix->setEnabled(found.has_value());
    fix->setText(found ? ToQt(found->Name) : tr("&Quick Fix"));
}

} // namespace velmora
