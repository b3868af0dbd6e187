#include "shell/RunningProgram.h"

#include "editor/QtText.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "services/Prompts.h"
#include "services/Settings.h"

#include <QDeadlineTimer>

namespace velmora {

namespace {

/// Where a start leaves what it asks: the desktop's leave to come to the front, a line feed, the file.
std::string RequestPath() {
    return ProgramFile("VelmoraWriter.request");
}

constexpr const char* Leave = "XDG_ACTIVATION_TOKEN";

} // namespace

bool RunningProgram::Begin(const std::string& file) {
    if (Take())
        return true;
    if (file.empty() &&
        !gPrompts->Ask({"Velmora Writer is running already, with the settings and backups in\r" +
                        ProgramDirectory + "\r\rBring it to the front?  No starts a second one beside it."}))
        return true;
    if (HandOver(file))
        return false;
    return Take() || gPrompts->Ask({"The Velmora Writer that is running does not answer.  Start a second one "
                                    "beside it?"});
}

bool RunningProgram::Take() {
    try {
        auto taken = FileLock::Try(ProgramFile("VelmoraWriter.lock"));
        if (!taken)
            return false;
        lock.emplace(std::move(*taken));
    } catch (const Failure&) {
        return true; // where nothing can be locked every program runs alone
    }
    connect(&watcher, &QFileSystemWatcher::directoryChanged, this, &RunningProgram::TakeRequest);
    watcher.addPath(PathToQt(ProgramDirectory));
    QMetaObject::invokeMethod(this, &RunningProgram::TakeRequest, Qt::QueuedConnection);
    return true;
}

bool RunningProgram::HandOver(const std::string& file) {
    Process::LetOthersComeToFront();
    try {
        Files::ReplaceSafely(RequestPath(), Process::Environment(Leave) + '\n' + file,
                             {.Readers = Files::Sharing::Private});
        for (const QDeadlineTimer deadline(Patience); !deadline.hasExpired(); Process::Sleep(20))
            if (!Files::FileExists(RequestPath()))
                return true;
        Files::DeleteFile(RequestPath());
    } catch (const Failure&) {
        // told as no answer
    }
    return false;
}

void RunningProgram::TakeRequest() {
    try {
        if (!Files::FileExists(RequestPath()))
            return;
        const std::string request = Files::ReadWhole(RequestPath(), Files::Sharing::Private);
        Files::DeleteFile(RequestPath());
        const std::size_t end = request.find('\n');
        if (end == std::string::npos)
            return;
        qputenv(Leave, QByteArray::fromStdString(request.substr(0, end)));
        emit Requested(request.substr(end + 1));
    } catch (const Failure&) {
        // whoever asked is told that nobody answers
    }
}

} // namespace velmora
