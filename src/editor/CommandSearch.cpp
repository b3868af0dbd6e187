#include "editor/CommandSearch.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace velmora {

namespace {

enum Column { CommandColumn, KeyColumn, WhyColumn };
constexpr int ActionRole = Qt::UserRole;

QString Plain(QString text) {
    return text.remove(QLatin1Char('&')).remove(QStringLiteral("..."));
}

} // namespace

CommandSearch::CommandSearch(QMainWindow& searchedWindow, const WhyOff& whyOff)
    : QDialog(&searchedWindow), words(new QLineEdit(this)), list(new QTreeWidget(this)) {
    setObjectName(QStringLiteral("dlgCommandSearch"));
    setWindowTitle(tr("Command Search"));
    setAttribute(Qt::WA_DeleteOnClose);
    words->setObjectName(QStringLiteral("txtCommand"));
    words->setAccessibleName(tr("Words of a command"));
    words->setPlaceholderText(tr("Words of a command; Enter runs it"));
    words->installEventFilter(this);
    list->setObjectName(QStringLiteral("tvwCommands"));
    list->setAccessibleName(tr("Commands"));
    list->setHeaderLabels({tr("Command"), tr("Key"), tr("Why it is off")});
    list->setRootIsDecorated(false);
    list->setUniformRowHeights(true);
    list->setAllColumnsShowFocus(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(words);
    layout->addWidget(list);
    AddMenu(searchedWindow.menuBar()->actions(), {}, true, whyOff);
    for (const QWidget* widget : searchedWindow.findChildren<QWidget*>())
        if (widget->contextMenuPolicy() == Qt::ActionsContextMenu)
            AddMenu(widget->actions(), widget->accessibleName(), true, whyOff);
    for (const int column : {CommandColumn, KeyColumn})
        list->resizeColumnToContents(column);
    resize(list->fontMetrics().averageCharWidth() * 110, list->fontMetrics().height() * 26);
    connect(words, &QLineEdit::textChanged, this, &CommandSearch::Filter);
    connect(list, &QTreeWidget::itemActivated, this, &CommandSearch::Run);
    Filter({});
}

void CommandSearch::AddMenu(const QList<QAction*>& actions, const QString& path, bool on,
                            const WhyOff& whyOff) {
    for (QAction* action : actions) {
        if (action->isSeparator() || !action->isVisible() || action->text().isEmpty())
            continue;
        const QString name =
            (path.isEmpty() ? QString() : path + QStringLiteral(" > ")) + Plain(action->text());
        if (const QMenu* menu = action->menu())
            AddMenu(menu->actions(), name, on && action->isEnabled(), whyOff);
        else
            AddCommand(*action, name, on, whyOff);
    }
}

void CommandSearch::AddCommand(QAction& action, const QString& path, bool on, const WhyOff& whyOff) {
    if (action.objectName() == QLatin1String("mnuCommandSearch"))
        return;
    const bool runs = on && action.isEnabled();
    const QString key = action.shortcut().toString(QKeySequence::NativeText);
    auto* item = new QTreeWidgetItem(list, {path, key, runs ? QString() : whyOff(action)});
    item->setData(CommandColumn, ActionRole, QVariant::fromValue(runs ? &action : nullptr));
}

void CommandSearch::Filter(const QString& line) {
    const QStringList asked = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QTreeWidgetItem* first = nullptr;
    for (int row = 0; row < list->topLevelItemCount(); ++row) {
        QTreeWidgetItem* item = list->topLevelItem(row);
        const bool matches = std::all_of(asked.begin(), asked.end(), [&](const QString& word) {
            return item->text(CommandColumn).contains(word, Qt::CaseInsensitive) ||
                   item->text(KeyColumn).contains(word, Qt::CaseInsensitive);
        });
        item->setHidden(!matches);
        if (matches && !first)
            first = item;
    }
    list->setCurrentItem(first);
}

void CommandSearch::Run(QTreeWidgetItem* item) {
    auto* action = item ? item->data(CommandColumn, ActionRole).value<QAction*>() : nullptr;
    if (!action)
        return;
    close(); // the command may ask for the window's attention
    QMetaObject::invokeMethod(action, &QAction::trigger, Qt::QueuedConnection);
}

bool CommandSearch::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        Run(list->currentItem());
        return true;
    }
    if (key != Qt::Key_Up && key != Qt::Key_Down && key != Qt::Key_PageUp && key != Qt::Key_PageDown)
        return QDialog::eventFilter(watched, event);
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(list, &press);
    return true;
}

} // namespace velmora
