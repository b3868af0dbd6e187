// Content files that the program is started with, that another start hands over, or that are dropped on it.
#include "editor/QtText.h"
#include "events/frmEvents.h"
#include "kinds/Kinds.h"
#include "platform/Files.h"
#include "sbmodules/frmSBModules.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "services/modWriter.h"
#include "shell/frmWriter.h"
#include "upissues/frmUPIssues.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <filesystem>
#include <optional>

namespace velmora {

namespace {

/// Where a content file lies.
struct GameFile {
    const KindEntry& Kind;
    std::string Game; ///< the game's directory, with trailing separator
    std::string Name;
};

void Refuse(const std::string& text) {
    gPrompts->Message(text, Icon::Exclamation);
}

/// Says why where it is none of a game.
std::optional<GameFile> Locate(const std::string& path) {
    const KindEntry* kind = KindOfFile(path);
    if (!kind) {
        std::vector<std::string> patterns;
        for (const KindEntry& entry : Kinds())
            patterns.push_back("*" + std::string(entry.Kind->Extension));
        Refuse(path + "\ris none of the files that can be opened here: " + Join(patterns, ", "));
        return std::nullopt;
    }
    if (!Files::FileExists(path)) {
        Refuse("There is no file\r" + path);
        return std::nullopt;
    }
    for (const std::string& place : {path, PathFromQt(QFileInfo(PathToQt(path)).canonicalFilePath())})
        if (std::string game = GameAround(*kind, Files::FolderOf(place)); !game.empty())
            return GameFile{*kind, std::move(game), Files::NameOf(place)};
    Refuse("The game reads *" + std::string(kind->Kind->Extension) + " files from the folder " +
           std::string(kind->Folder) + " of its directory.  This one lies elsewhere:\r" + path +
           "\r\rTo edit it, copy it there.");
    return std::nullopt;
}

bool IsInUse(const std::string& game) {
    std::error_code ignored;
    return std::filesystem::equivalent(Files::HostPath(game), Files::HostPath(Settings.GamePath), ignored);
}

bool MayUse(const GameFile& file) {
    return gPrompts->Ask({file.Name + " belongs to the game in\r" + file.Game + "\rIn use is\r" +
                          Settings.GamePath +
                          "\r\rUse the other one until the program ends?  The Options keep theirs."});
}

/// The first content file that is dragged along, empty when there is none.
QString FileOf(const QDropEvent& drag) {
    for (const QUrl& url : drag.mimeData()->urls())
        if (QString path = url.toLocalFile(); KindOfFile(PathFromQt(path)))
            return path;
    return {};
}

/// False where opening the editor anew may help: for another kind, or a file that came since.
bool MayHold(const RecordWindow& editor, const GameFile& file) {
    const Library& records = editor.Records();
    return &records.Kind == file.Kind.Kind &&
           (records.AnyPending() || records.FirstInFile(file.Name) != Library::None);
}

void GoToFirstRecord(RecordWindow& editor, const std::string& file) {
    const std::size_t first = editor.Records().FirstInFile(file);
    if (first == Library::None)
        Refuse("No " + std::string(editor.Records().Kind.NameWord) + " was read from " + file +
               ".  A file that came since is read by File, Read Files Again.");
    else if (first != editor.CurrentIndex() || editor.ShownRecordName().empty())
        editor.GoTo(first);
}

} // namespace

RecordWindow* frmWriter::ShownEditor() const {
    for (RecordWindow* editor :
         {static_cast<RecordWindow*>(events.get()), static_cast<RecordWindow*>(upIssues.get()),
          static_cast<RecordWindow*>(sbModules.get())})
        if (editor && editor->isVisible())
            return editor;
    return nullptr;
}

void frmWriter::OpenFile(const std::string& path) {
    if (QApplication::activeModalWidget() || QApplication::activePopupWidget()) {
        constexpr int soon = 100; // ms
        QTimer::singleShot(soon, this, [this, path] { OpenFile(path); });
        return;
    }
    TrapEvent("frmWriter_OpenFile", {path}, [&] { ShowFile(path); });
    if (!ShownEditor())
        show();
}

void frmWriter::ShowFile(const std::string& path) {
    RecordWindow* editor = ShownEditor();
    if (editor && editor->Mode() != EditMode::Browsing)
        return editor->ShowHint(std::string("Commit or discard first"));
    const std::optional<GameFile> file = Locate(path);
    if (!file)
        return;
    const bool inUse = IsInUse(file->Game);
    if (!inUse && !MayUse(*file))
        return;
    if (!inUse || !editor || !MayHold(*editor, *file)) {
        if (editor && !editor->close())
            return;
        if (!inUse)
            Settings.SetGamePath(file->Game);
        OpenEditor(ToQt(file->Kind.Option));
        editor = ShownEditor();
    }
    if (editor)
        GoToFirstRecord(*editor, file->Name);
}

void frmWriter::ComeToFront() {
    const auto raise = [](QWidget& window) {
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        window.raise();
        window.activateWindow();
    };
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && qobject_cast<QMainWindow*>(window))
            raise(*window);
    if (QWidget* modal = QApplication::activeModalWidget())
        raise(*modal);
}

bool frmWriter::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if ((type != QEvent::DragEnter && type != QEvent::DragMove && type != QEvent::Drop) ||
        !watched->isWidgetType())
        return QMainWindow::eventFilter(watched, event);
    auto& drag = static_cast<QDropEvent&>(*event);
    const QString file = FileOf(drag);
    if (file.isEmpty())
        return QMainWindow::eventFilter(watched, event);
    drag.setDropAction(Qt::CopyAction); // whoever drags would remove a file that is moved
    drag.accept();
    if (type == QEvent::Drop) // later: the other program waits for the drop's end
        QMetaObject::invokeMethod(
            this, [this, file] { OpenFile(PathFromQt(file)); }, Qt::QueuedConnection);
    return true;
}

} // namespace velmora
