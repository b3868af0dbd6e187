#include "editor/UndoPanels.h"

#include "editor/EditorWindow.h"
#include "editor/QtText.h"
#include "editor/Workbench.h"

#include <QAction>
#include <QDockWidget>
#include <QEvent>
#include <QHeaderView>
#include <QStyle>
#include <QToolButton>
#include <algorithm>

namespace velmora {

namespace {
constexpr int ArrowSize = 16;
const QString Differs = QStringLiteral("\u2260");
} // namespace

HistoryPanel::HistoryPanel(EditorWindow& editorWindow, Workbench& workbench) : window(editorWindow) {
    setObjectName(QStringLiteral("lstHistory"));
    setAccessibleName(tr("Undo History"));
    setUniformItemSizes(true);
    const auto* dock = workbench.AddDock("dckUndoHistory", tr("Undo History"), this, Qt::RightDockWidgetArea,
                                         "mnuShowUndoHistory");
    connect(dock, &QDockWidget::visibilityChanged, this, &HistoryPanel::Refresh);
    connect(this, &QListWidget::itemActivated, this, &HistoryPanel::GoToCurrent);
    connect(this, &QListWidget::itemClicked, this, &HistoryPanel::GoToCurrent);
    connect(&window, &RecordWindow::RecordShown, this, &HistoryPanel::Refresh);
}

void HistoryPanel::GoToCurrent() {
    window.GoToStep(currentRow());
    Refresh(); // where it may not go, the mark goes back
}

void HistoryPanel::Refresh() {
    if (!isVisible())
        return;
    const Edits& edits = window.Changes();
    const auto steps = static_cast<int>(edits.StepsDone() + edits.StepsUndone());
    while (count() > steps + 1)
        delete takeItem(count() - 1);
    for (int row = 0; row <= steps; ++row) {
        const QString text = row == 0 ? tr("Before all of these")
                                      : ToQt(edits.StepAt(static_cast<std::size_t>(row - 1)).Name());
        row < count() ? item(row)->setText(text) : addItem(text);
    }
    setCurrentRow(static_cast<int>(edits.StepsDone()));
}

DifferencesPanel::DifferencesPanel(EditorWindow& editorWindow, Workbench& workbench) : window(editorWindow) {
    setObjectName(QStringLiteral("tvwDifferences"));
    setAccessibleName(tr("What Differs"));
    setHeaderLabels({QString(), tr("Field"), tr("On Disk"), tr("Committed"), tr("Typed")});
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setColumnWidth(0, fontMetrics().height() * 2);
    const int letter = fontMetrics().averageCharWidth();
    for (const auto& [column, letters] : {std::pair(1, 22), {2, 32}, {3, 32}})
        setColumnWidth(column, letters * letter);
    const auto* dock = workbench.AddDock("dckDifferences", tr("Show What Differs"), this,
                                         Qt::BottomDockWidgetArea, "mnuShowDifferences");
    workbench.KeepColumns(header());
    connect(dock, &QDockWidget::visibilityChanged, this, &DifferencesPanel::Refresh);
    connect(this, &QTreeWidget::itemActivated, this, &DifferencesPanel::RevertRow);
    setToolTip(tr("Enter or a double click gives a field back what stands on disk."));
}

void DifferencesPanel::RevertRow(QTreeWidgetItem* row) {
    const auto fields = window.FieldsOnShow();
    const auto at = static_cast<std::size_t>(indexOfTopLevelItem(row));
    if (at < fields.size())
        window.Revert(*fields[at].Field);
}

void DifferencesPanel::Refresh() {
    if (!isVisible())
        return;
    clear();
    QFont bold = font();
    bold.setBold(true);
    for (const FieldStates& states : window.FieldsOnShow()) {
        const bool differs = states.Differ();
        auto* row = new QTreeWidgetItem(
            this, {differs ? Differs : QString(), ToQt(std::string(states.Field->Shown->Property)),
                   states.OnDisk ? ToQt(*states.OnDisk) : tr("(not there)"), ToQt(states.Committed),
                   window.Mode() == EditMode::Browsing ? QString() : ToQt(states.Typed)});
        for (int column = 0; differs && column < columnCount(); ++column)
            row->setFont(column, bold);
    }
    const auto differing = findItems(Differs, Qt::MatchExactly);
    setCurrentItem(differing.empty() ? topLevelItem(0) : differing.front());
}

RevertArrows::RevertArrows(EditorWindow& editorWindow, QWidget* formArea)
    : QObject(&editorWindow), window(editorWindow), area(formArea) {
    area->installEventFilter(this);
}

QToolButton* RevertArrows::ArrowOf(QWidget* control) {
    for (const Arrow& arrow : arrows)
        if (arrow.Control == control)
            return arrow.Button;
    auto* button = new QToolButton(area);
    button->setObjectName(QStringLiteral("cmdRevert_") + control->objectName());
    button->setAccessibleName(tr("Revert %1").arg(control->accessibleName()));
    button->setIcon(
        QIcon::fromTheme(QStringLiteral("edit-undo"), area->style()->standardIcon(QStyle::SP_ArrowBack)));
    button->setIconSize({ArrowSize - 4, ArrowSize - 4});
    button->setFocusPolicy(Qt::NoFocus); // the field's context menu does the same; the tab order stays
    connect(button, &QToolButton::clicked, this, [this, control] {
        if (const Binding* binding = window.Fields().BindingOf(control))
            window.Revert(*binding);
    });
    arrows.push_back({button, control});
    return button;
}

void RevertArrows::Refresh() {
    std::vector<QToolButton*> wanted;
    for (const FieldStates& states : window.FieldsOnShow())
        if (window.CanRevert(states)) {
            QToolButton* arrow = ArrowOf(states.Field->Controls.front());
            const QString text = ToQt(states.OnDisk->substr(0, 1000)).toHtmlEscaped();
            arrow->setToolTip(QStringLiteral("<p>%1</p>").arg(tr("On disk: %1").arg(text)));
            wanted.push_back(arrow);
        }
    for (const Arrow& arrow : arrows)
        arrow.Button->setVisible(std::ranges::find(wanted, arrow.Button) != wanted.end());
    Place();
}

void RevertArrows::Place() {
    for (const Arrow& arrow : arrows)
        if (arrow.Control && !arrow.Button->isHidden()) {
            const QPoint corner = arrow.Control->mapTo(area, QPoint(arrow.Control->width(), 0));
            arrow.Button->setGeometry(corner.x() - ArrowSize, corner.y() - ArrowSize / 2, ArrowSize,
                                      ArrowSize);
            arrow.Button->raise();
        }
}

bool RevertArrows::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest)
        QMetaObject::invokeMethod(this, &RevertArrows::Place, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

} // namespace velmora
