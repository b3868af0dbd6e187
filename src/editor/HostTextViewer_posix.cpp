#include "editor/HostTextViewer.h"

#include "editor/QtText.h"
#include "platform/Files.h"

#include <QProcess>
#include <QStandardPaths>

namespace velmora {

bool OpenInHostTextViewer(const std::string& path, const std::function<void()>& failed) {
    const bool desktop = qEnvironmentVariableIsSet("DISPLAY") || qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
    const QString opener = QStandardPaths::findExecutable(QStringLiteral("xdg-open"));
    if (!desktop || opener.isEmpty() || !Files::FileExists(path))
        return false;
    // Without a parent: some openers live as long as the viewer, which is not to end with this program.
    auto* process = new QProcess;
    QObject::connect(process, &QProcess::finished, process, [process, failed](int code) {
        process->deleteLater();
        if (code != 0)
            failed();
    });
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->start(opener, {PathToQt(path)});
    if (process->waitForStarted())
        return true;
    delete process;
    return false;
}

} // namespace velmora
