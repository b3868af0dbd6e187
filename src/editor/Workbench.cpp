#include "editor/Workbench.h"

#include "editor/FieldMark.h"
#include "editor/QtText.h"
#include "editor/RecordWindow.h"
#include "services/Settings.h"

#include <QAction>
#include <QApplication>
#include <QDockWidget>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScreen>
#include <QSettings>
#include <QStyle>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <algorithm>
#include <map>

namespace velmora {

namespace {

// Of a screen, from which there is room beside the form: for the records, and for everything.
constexpr int WidthForRecords = 1340;
constexpr int WidthForAll = 1600;
constexpr int SideWidth = 320;
constexpr int HeightBelow = 320;
constexpr int TitleBar = 40;
constexpr std::size_t LongestHistory = 1000;
constexpr int LayoutVersion = 1;

QIcon IconOf(const char* name) {
    struct Known {
        const char* Name;
        QStyle::StandardPixmap Drawn;
    };
    static constexpr Known icons[] = {{"document-new", QStyle::SP_FileIcon},
                                      {"document-edit", QStyle::SP_FileDialogDetailedView},
                                      {"dialog-ok-apply", QStyle::SP_DialogApplyButton},
                                      {"dialog-cancel", QStyle::SP_DialogCancelButton},
                                      {"edit-undo", QStyle::SP_ArrowBack},
                                      {"edit-redo", QStyle::SP_ArrowForward},
                                      {"edit-delete", QStyle::SP_TrashIcon},
                                      {"document-save", QStyle::SP_DialogSaveButton}};
    const auto* found = std::find_if(std::begin(icons), std::end(icons),
                                     [&](const Known& icon) { return std::string_view(icon.Name) == name; });
    const QIcon drawn =
        found != std::end(icons) ? QApplication::style()->standardIcon(found->Drawn) : QIcon();
    return QIcon::fromTheme(QString::fromLatin1(name), drawn);
}

} // namespace

Workbench::Workbench(RecordWindow& recordWindow)
    : QObject(&recordWindow), window(recordWindow), menu(new QMenu(Workbench::tr("&View"), &recordWindow)),
      toolbar(new QToolBar(Workbench::tr("Toolbar"), &recordWindow)), endOfDocks(menu->addSeparator()) {
    menu->setObjectName(QStringLiteral("mnuView"));
    auto* help = window.findChild<QMenu*>(QStringLiteral("mnuHelp"));
    window.menuBar()->insertMenu(help ? help->menuAction() : nullptr, menu);
    toolbar->setObjectName(QStringLiteral("tbrMain"));
    toolbar->setAccessibleName(toolbar->windowTitle());
    toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    toolbar->setIconSize({16, 16});
    toolbar->hide();
    window.addToolBar(toolbar);
    QAction* showToolbar = toolbar->toggleViewAction();
    showToolbar->setObjectName(QStringLiteral("mnuShowToolbar"));
    showToolbar->setText(tr("&Toolbar"));
    menu->insertAction(endOfDocks, showToolbar);
    AddHistory();
    connect(AddItem("mnuResetLayout", tr("Reset &Layout")), &QAction::triggered, this, [this] {
        window.restoreState(firstState, LayoutVersion);
        GiveRoom();
        for (const Columns& columns : keptColumns)
            columns.Header->restoreState(columns.First);
    });
    window.installEventFilter(this);
}

void Workbench::AddHistory() {
    goBack = AddItem("mnuGoBack", tr("&Back To Record Shown Before"));
    goForward = AddItem("mnuGoForward", tr("&Forward To Record Shown After"));
    connect(goBack, &QAction::triggered, this, &Workbench::GoBack);
    connect(goForward, &QAction::triggered, this, &Workbench::GoForward);
    auto* lastOne = AddItem("mnuGoToLastEdited", tr("Record Last &Edited"), Qt::ALT | Qt::Key_Home);
    connect(lastOne, &QAction::triggered, this, &Workbench::GoToLastEdited);
    menu->addSeparator();
    connect(&window, &RecordWindow::RecordShown, this, &Workbench::NoteShown);
    connect(&window, &RecordWindow::ModeChanged, this, &Workbench::Unmark);
    window.Changes().OnChange([this](const Edits::Change& change) {
        if (change.Kind == Edits::How::Done && change.Names.size() == 1)
            lastEdited = change.Names.front();
    });
    UpdateHistory();
}

QDockWidget* Workbench::AddDock(const char* name, const QString& title, QWidget* panel,
                                Qt::DockWidgetArea area, const char* action, const QKeySequence& key) {
    auto* dock = new QDockWidget(title, &window);
    dock->setObjectName(QString::fromLatin1(name));
    dock->setAccessibleName(title);
    dock->setWidget(panel);
    dock->hide();
    window.addDockWidget(area, dock);
    docks.push_back(dock);
    QAction* toggle = dock->toggleViewAction();
    toggle->setObjectName(QString::fromLatin1(action));
    toggle->setShortcut(key);
    // To the front of those that share its place.
    connect(toggle, &QAction::triggered, dock, [dock](bool on) { on ? dock->raise() : void(); });
    menu->insertAction(endOfDocks, toggle);
    return dock;
}

void Workbench::KeepColumns(QHeaderView* header) {
    keptColumns.push_back({header, header->saveState()});
}

QString Workbench::KeyOf(const Columns& columns) {
    return columns.Header->objectName() + QLatin1Char('-') + QString::number(columns.Header->count());
}

QAction* Workbench::AddItem(const char* name, const QString& text, const QKeySequence& key) {
    QAction* item = menu->addAction(text);
    item->setObjectName(QString::fromLatin1(name));
    item->setShortcut(key);
    return item;
}

void Workbench::AddTools(const std::vector<std::pair<const char*, const char*>>& actionsAndIcons) {
    for (const auto& [name, icon] : actionsAndIcons) {
        if (*name == '\0') {
            toolbar->addSeparator();
            continue;
        }
        auto* action = window.findChild<QAction*>(QString::fromLatin1(name));
        if (!action)
            continue;
        action->setIcon(IconOf(icon));
        action->setIconVisibleInMenu(false);
        toolbar->addAction(action);
    }
}

std::unique_ptr<QSettings> Workbench::Store(const QString& group) {
    auto store = std::make_unique<QSettings>(PathToQt(ProgramFile("workbench.ini")), QSettings::IniFormat);
    store->beginGroup(group);
    return store;
}

void Workbench::Restore() {
    if (!firstState.isEmpty())
        return;
    for (QWidget* box : window.findChildren<QWidget*>())
        if (box->inherits("QLineEdit") || box->inherits("QPlainTextEdit"))
            box->installEventFilter(this);
    LayOutFirst();
    firstState = window.saveState(LayoutVersion);
    const auto store = Store(window.objectName());
    const bool left = store->status() == QSettings::NoError && store->contains(QStringLiteral("state"));
    // Being shown changes what a layout is saved as.
    QTimer::singleShot(0, this, [this, left] {
        if (!left)
            GiveRoom();
        openedState = window.saveState(LayoutVersion);
        for (Columns& columns : keptColumns)
            columns.Opened = columns.Header->saveState();
    });
    for (const Columns& columns : keptColumns)
        columns.Header->restoreState(store->value(KeyOf(columns)).toByteArray());
    if (!left)
        return;
    window.restoreGeometry(store->value(QStringLiteral("geometry")).toByteArray());
    window.restoreState(store->value(QStringLiteral("state")).toByteArray(), LayoutVersion);
}

void Workbench::Save() const {
    if (openedState.isEmpty())
        return;
    const auto store = Store(window.objectName());
    for (const Columns& columns : keptColumns)
        if (const QByteArray state = columns.Header->saveState(); state != columns.Opened)
            store->setValue(KeyOf(columns), state);
    const QByteArray state = window.saveState(LayoutVersion);
    if (state == openedState)
        return;
    store->setValue(QStringLiteral("state"), state);
    store->setValue(QStringLiteral("geometry"), window.saveGeometry());
}

void Workbench::LayOutFirst() {
    const QSize room = window.screen()->availableSize();
    const bool all = room.width() >= WidthForAll;
    std::map<Qt::DockWidgetArea, QDockWidget*> first;
    for (QDockWidget* dock : docks) {
        const bool records = dock->objectName() == QLatin1String("dckRecords");
        dock->setVisible(all || (records && room.width() >= WidthForRecords));
        // Side by side they would be too small to read; the preview is looked at all the time.
        if (dock->objectName() == QLatin1String("dckPreview"))
            continue;
        if (const auto [place, isFirst] = first.emplace(window.dockWidgetArea(dock), dock); !isFirst)
            window.tabifyDockWidget(place->second, dock);
    }
    toolbar->setVisible(all);
    if (room.width() < WidthForRecords || docks.empty())
        return;
    window.resize(window.width() + (all ? 2 * SideWidth : SideWidth),
                  all ? std::min(window.height() + HeightBelow, room.height() - TitleBar) : window.height());
}

void Workbench::GiveRoom() {
    QList<QDockWidget*> sides;
    for (QDockWidget* dock : docks) {
        if (dock->isVisible() && window.dockWidgetArea(dock) != Qt::BottomDockWidgetArea)
            sides.append(dock);
        // Of those that share a place, the first to be in front.
        const QList<QDockWidget*> sharing = window.tabifiedDockWidgets(dock);
        if (std::ranges::none_of(docks.begin(), std::ranges::find(docks, dock),
                                 [&](QDockWidget* other) { return sharing.contains(other); }))
            dock->raise();
    }
    window.resizeDocks(sides, QList<int>(sides.size(), SideWidth), Qt::Horizontal);
}

void Workbench::Mark(const std::vector<std::string_view>& properties) {
    Unmark();
    for (const std::string_view property : properties)
        if (QWidget* control = window.Fields().ControlOf(property)) {
            marks.emplace_back(new FieldMark(control));
            if (marks.size() == 1)
                window.ScrollTo(control);
        }
}

void Workbench::Unmark() {
    for (const QPointer<FieldMark>& mark : marks)
        delete mark;
    marks.clear();
}

void Workbench::NoteShown() {
    Unmark();
    const std::string name = window.ShownRecordName();
    if (!name.empty() && !going && (shown.empty() || shown[at] != name)) {
        shown.resize(shown.empty() ? 0 : at + 1);
        if (shown.size() == LongestHistory)
            shown.erase(shown.begin());
        shown.push_back(name);
        at = shown.size() - 1;
    }
    UpdateHistory();
}

void Workbench::UpdateHistory() {
    goBack->setEnabled(at > 0);
    goForward->setEnabled(at + 1 < shown.size());
}

void Workbench::GoAlong(int step) {
    // What is gone is passed over.
    for (std::size_t next = at; step < 0 ? next > 0 : next + 1 < shown.size();) {
        next += static_cast<std::size_t>(step);
        if (!window.Records().Exists(shown[next]))
            continue;
        going = true;
        if (window.GoTo(window.Records().IndexOf(shown[next])))
            at = next;
        going = false;
        break;
    }
    UpdateHistory();
}

void Workbench::GoToLastEdited() {
    if (window.Records().Exists(lastEdited))
        window.GoTo(window.Records().IndexOf(lastEdited));
}

bool Workbench::IsOwnCommand(const QKeyEvent& event) const {
    // On some desktops boxes take these for themselves: to the end of the line, delete the rest of it.
    const QKeyCombination key = event.keyCombination();
    if (key != (Qt::CTRL | Qt::Key_E) && key != (Qt::CTRL | Qt::Key_K))
        return false;
    const QList<QAction*> actions = window.findChildren<QAction*>();
    return std::any_of(actions.begin(), actions.end(), [&](const QAction* action) {
        return action->isEnabled() && action->shortcuts().contains(QKeySequence(key));
    });
}

bool Workbench::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride && IsOwnCommand(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return true;
    }
    if (event->type() == QEvent::ChildPolished) // the window makes tabs of docks that lie upon each other
        if (auto* tabs = qobject_cast<QTabBar*>(static_cast<QChildEvent*>(event)->child()))
            tabs->setAccessibleName(tr("Panels"));
    if (event->type() == QEvent::MouseButtonPress) {
        const Qt::MouseButton button = static_cast<QMouseEvent*>(event)->button();
        if (button == Qt::BackButton || button == Qt::ForwardButton) {
            GoAlong(button == Qt::BackButton ? -1 : 1);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

} // namespace velmora
