#include "editor/DialogPrompts.h"
#include "editor/QtText.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/Registry.h"
#include "services/Settings.h"
#include "shell/RunningProgram.h"
#include "shell/frmWriter.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QIcon>

namespace {

/// Where settings, logs and backups live: the directory asked for, the executable's, or, where that cannot be
/// written to or belongs to an uninstaller, the user's own.
std::string HomeDirectory(const QString& asked) {
    using namespace velmora;
    if (!asked.isEmpty())
        return PathFromQt(asked);
    const std::string beside = PathFromQt(QCoreApplication::applicationDirPath());
    const bool installed = Files::FileExists(Files::Join(beside, "uninstall.exe"));
    return !installed && Files::WriteRefusal(beside).empty() ? beside : Process::UserDataFolder();
}

/// Makes the directory. Where that fails it says so: to the terminal, and to who started the program without
/// one.
bool MadeHome(const std::string& home, bool asked) {
    using namespace velmora;
    try {
        Files::CreateFolder(home);
        return true;
    } catch (const Failure& failure) {
        const std::string text =
            "The directory of settings, logs and backups cannot be made:\r" + failure.Description();
        qCritical("%s", qUtf8Printable(LinesToQt(text)));
        if (!asked || Files::Separator == '\\')
            gPrompts->Message(text, Icon::Critical);
        return false;
    }
}

void DressApplication() {
    QApplication::setApplicationName(QStringLiteral("VelmoraWriter"));
    QApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("velmora-writer"));
    QIcon icon(QStringLiteral(":/velmora-writer-48.png"));
    icon.addFile(QStringLiteral(":/velmora-writer-256.png"));
    QApplication::setWindowIcon(icon);
    // Editors come and go while the main window is hidden.
    QApplication::setQuitOnLastWindowClosed(false);
}

void Describe(QCommandLineParser& options) {
    options.setApplicationDescription(QStringLiteral("Editor for the content files of the game Velmora"));
    options.addHelpOption();
    options.addVersionOption();
    options.addOption({QStringLiteral("edit"),
                       QStringLiteral("Opens an editor at once: events, upissues or sbmodules."),
                       QStringLiteral("editor")});
    options.addOption({QStringLiteral("home"),
                       QStringLiteral("Directory of settings, logs, backups and help texts."),
                       QStringLiteral("directory")});
    options.addPositionalArgument(QStringLiteral("file"),
                                  QStringLiteral("Opens this content file of a game in its editor."),
                                  QStringLiteral("[file]"));
}

/// A path that also holds for a program that was started elsewhere.
std::string WholePath(const QString& path) {
    return velmora::PathFromQt(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    DressApplication();
    QCommandLineParser options;
    Describe(options);
    options.process(application);
    const QStringList files = options.positionalArguments();
    const bool edit = options.isSet(QStringLiteral("edit"));
    if (files.size() + (edit ? 1 : 0) > 1)
        options.showHelp(2);
    const std::string file = files.isEmpty() ? std::string() : WholePath(files.first());

    velmora::DialogPrompts prompts;
    velmora::gPrompts = &prompts;
    velmora::ProgramDirectory = HomeDirectory(options.value(QStringLiteral("home")));
    if (!MadeHome(velmora::ProgramDirectory, options.isSet(QStringLiteral("home"))))
        return 1;
    velmora::RunningProgram running;
    if (!running.Begin(file))
        return 0;

    for (const std::string& line : velmora::HostRegistry()->BrokenLines())
        qWarning("%s (makes no sense; kept as it stands)", velmora::CodePage::ToUtf8(line).c_str());

    velmora::frmWriter writer;
    QObject::connect(&running, &velmora::RunningProgram::Requested, &writer, [&](const std::string& asked) {
        velmora::frmWriter::ComeToFront();
        if (!asked.empty())
            writer.OpenFile(asked);
    });
    writer.Load();
    if (!file.empty())
        writer.OpenFile(file);
    else if (!edit)
        writer.show();
    else if (!writer.OpenEditor(options.value(QStringLiteral("edit"))))
        options.showHelp(2);
    return QApplication::exec();
}
