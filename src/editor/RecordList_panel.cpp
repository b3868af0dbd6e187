// How the list of records looks, and what its keys do.
#include "editor/QtText.h"
#include "editor/RecordList.h"
#include "editor/RecordWindow.h"
#include "editor/UnwrittenFooter.h"
#include "editor/Workbench.h"
#include "records/Csv.h"
#include "services/Prompts.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

namespace velmora {

void RecordList::BuildPanel(bool editable) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(BuildFilterLine());
    count = new QLabel(this);
    count->setObjectName(QStringLiteral("lblFilterCount"));
    layout->addWidget(count);
    BuildTree();
    layout->addWidget(tree, 1);
    if (!editable)
        return;
    footer = new UnwrittenFooter(library, this);
    layout->addWidget(footer);
}

QWidget* RecordList::BuildFilterLine() {
    auto* line = new QWidget(this);
    auto* layout = new QHBoxLayout(line);
    layout->setContentsMargins({});
    filter = new QLineEdit(line);
    filter->setObjectName(QStringLiteral("txtFilter"));
    filter->setAccessibleName(tr("Filter records"));
    filter->setPlaceholderText(tr("Words, \"a phrase\", -not, file: title: state: type: rule:"));
    filter->setToolTip(tr("Lists the records in which all these words stand (Ctrl+L)."));
    filter->setClearButtonEnabled(true);
    filter->installEventFilter(this);
    layout->addWidget(filter);
    auto* help = new QToolButton(line);
    help->setObjectName(QStringLiteral("cmdFilterHelp"));
    help->setText(QStringLiteral("?"));
    help->setAccessibleName(tr("What the filter understands"));
    help->setToolTip(help->accessibleName());
    help->setFocusPolicy(Qt::TabFocus);
    connect(help, &QToolButton::clicked, this, &RecordList::TellOfFilter);
    layout->addWidget(help);
    return line;
}

void RecordList::BuildTree() {
    tree = new QTreeView(this);
    tree->setObjectName(QStringLiteral("tvwRecords"));
    tree->setAccessibleName(tr("Records"));
    tree->setModel(model);
    tree->setRootIsDecorated(false);
    tree->setItemsExpandable(false);
    tree->setUniformRowHeights(true);
    tree->setAllColumnsShowFocus(true);
    tree->setAlternatingRowColors(true);
    tree->setTabKeyNavigation(false);
    tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    tree->setSelectionBehavior(QAbstractItemView::SelectRows);
    tree->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    tree->installEventFilter(this);
    const int letter = tree->fontMetrics().averageCharWidth();
    for (int column = 0; column < model->columnCount(); ++column) {
        const QString heading = model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        const bool wide = heading == tr("Name") || heading == ToQt(library.Kind.TitleWord);
        tree->setColumnWidth(column,
                             std::max(letter * (wide ? 20 : 10), tree->header()->sectionSizeHint(column)));
        tree->setColumnHidden(column, column >= model->FirstExtraColumn());
    }
    BuildColumnMenu();
    tree->setContextMenuPolicy(Qt::ActionsContextMenu); // which the keyboard opens too
    QAction* copy = AddCommand("mnuCopyAsCsv", tr("&Copy As CSV"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &RecordList::CopyAsCsv);
}

void RecordList::BuildColumnMenu() {
    QHeaderView* header = tree->header();
    header->setObjectName(QStringLiteral("hdrRecords"));
    auto* menu = new QMenu(tr("C&olumns"), tree);
    menu->setObjectName(QStringLiteral("mnuColumns"));
    for (int column = 0; column < model->columnCount(); ++column) {
        QAction* item =
            menu->addAction(model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString());
        item->setCheckable(true);
        connect(item, &QAction::triggered, header,
                [header, column](bool on) { header->setSectionHidden(column, !on); });
    }
    connect(menu, &QMenu::aboutToShow, header, [menu, header] {
        const bool last = header->hiddenSectionCount() + 1 == header->count(); // it stays
        for (int column = 0; column < header->count(); ++column) {
            QAction* item = menu->actions()[column];
            item->setChecked(!header->isSectionHidden(column));
            item->setEnabled(!last || !item->isChecked());
        }
    });
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QWidget::customContextMenuRequested, menu,
            [menu, header](const QPoint& where) { menu->popup(header->mapToGlobal(where)); });
    tree->addAction(menu->menuAction());
}

QAction* RecordList::AddCommand(const char* name, const QString& text) {
    auto* action = new QAction(text, tree);
    action->setObjectName(QString::fromLatin1(name));
    tree->insertAction(tree->actions().value(0), action);
    return action;
}

void RecordList::AddToWorkbench(Workbench& workbench, bool editable) {
    workbench.AddDock("dckRecords", tr("Records"), this, Qt::LeftDockWidgetArea, "mnuShowRecords");
    workbench.KeepColumns(tree->header());
    const auto add = [&](const char* name, const QString& text, const QKeySequence& key,
                         const std::function<void()>& run) {
        connect(workbench.AddItem(name, text, key), &QAction::triggered, this, run);
    };
    add("mnuFilterRecords", tr("F&ilter Records"), Qt::CTRL | Qt::Key_L, [this] { GoToFilter(); });
    const auto any = [](const Record&) { return true; };
    add("actNextInList", tr("&Next In List"), Qt::CTRL | Qt::Key_Down, [this, any] { Step(1, any); });
    add("actPreviousInList", tr("&Previous In List"), Qt::CTRL | Qt::Key_Up, [this, any] { Step(-1, any); });
    if (!editable)
        return;
    const auto open = [this](const Record& record) { return model->NeedsAttention(record); };
    add("actNextOpen", tr("Next With A Problem Or Not &Written"), Qt::CTRL | Qt::SHIFT | Qt::Key_Down,
        [this, open] { Step(1, open); });
    add("actPreviousOpen", tr("Previous With A Problem &Or Not Written"), Qt::CTRL | Qt::SHIFT | Qt::Key_Up,
        [this, open] { Step(-1, open); });
}

void RecordList::GoToFilter() {
    parentWidget()->show(); // the dock
    parentWidget()->raise();
    QWidget* focused = QApplication::focusWidget();
    if (focused && !isAncestorOf(focused))
        cameFrom = focused;
    filter->setFocus(Qt::ShortcutFocusReason);
    filter->selectAll();
}

void RecordList::Leave() {
    QWidget* home = cameFrom && cameFrom->isVisible() && cameFrom->isEnabled()
                        ? cameFrom.data()
                        : window.findChild<QWidget*>(QStringLiteral("cmdForward"));
    home->setFocus(Qt::OtherFocusReason);
}

void RecordList::TellOfFilter() const {
    const std::string states =
        footer ? "state:edited, state:new, state:deleted - what is not yet written\r" : "";
    gPrompts->Message(
        "Lists the records in which all the words stand, in any field, in capital or small letters.\r\r"
        "\"a phrase\" - words that stand together\r"
        "-word - records without it\r"
        "file:pirates - a part of the file's name\r"
        "title:raid - a part of the title or question\r" +
            states +
            "type:random - a part of the type's name\r"
            "Probability:50 - any other field by its name in the list, a number or choice as a whole\r"
            "rule:no-title - records with a problem of that rule\r\r"
            "Up and Down go through the list, Enter shows the record.  Esc clears the filter, Esc again "
            "leads "
            "back to the form.",
        Icon::Information);
}

bool RecordList::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const auto modifiers = key->modifiers() & ~Qt::KeypadModifier;
        if (modifiers == Qt::NoModifier && KeyPressed(watched, key->key()))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

bool RecordList::KeyPressed(QObject* watched, int key) {
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        ShowCurrent();
        return true;
    case Qt::Key_Escape:
        if (filter->text().isEmpty())
            Leave();
        else
            filter->clear();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        if (watched == tree)
            return false;
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(tree, &press);
        return true;
    }
    default:
        return false;
    }
}

void RecordList::CopyAsCsv() const {
    std::string text = Csv::Header(library.Kind) + "\n";
    for (const std::string& name : SelectedNames())
        text += Csv::Row(library.Kind, *library.Find(name)) + "\n";
    QApplication::clipboard()->setText(ToQt(text));
}

} // namespace velmora
