#include "shell/frmWriter.h"

#include "editor/QtText.h"
#include "editor/UserGuide.h"
#include "events/frmEvents.h"
#include "platform/FileTrees.h"
#include "platform/Files.h"
#include "platform/Process.h"
#include "platform/TimeText.h"
#include "sbmodules/frmSBModules.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "services/modWriter.h"
#include "shell/frmOptions.h"
#include "ui_frmWriter.h"
#include "upissues/frmUPIssues.h"

#include <QApplication>
#include <QCloseEvent>

namespace velmora {

frmWriter::frmWriter(QWidget* parent) : QMainWindow(parent), ui(std::make_unique<Ui::frmWriter>()) {
    ui->setupUi(this);
    ui->mnuSBModules->setEnabled(false);
    connect(ui->mnuExit, &QAction::triggered, this, &QWidget::close);
    connect(ui->mnuEvents, &QAction::triggered, this, [this] { OpenEditor(QStringLiteral("events")); });
    connect(ui->mnuSBModules, &QAction::triggered, this, [this] { OpenEditor(QStringLiteral("sbmodules")); });
    connect(ui->mnuUPIssues, &QAction::triggered, this, [this] { OpenEditor(QStringLiteral("upissues")); });
    connect(ui->mnuOptions, &QAction::triggered, this, [this] { frmOptions(iniAccessor, this).Show(); });
    connect(ui->mnuBackupDataDirectory, &QAction::triggered, this, [this] {
        TrapEvent("frmWriter_mnuBackupDataDirectory_Click", NoInputParms, [this] { BackupDataDirectory(); });
    });
    connect(ui->mnuReleaseNotes, &QAction::triggered, this, [] {
        TrapEvent("frmWriter_mnuReleaseNotes_Click", NoInputParms,
                  [] { gPrompts->ShowTextFile(HelpFile("ReleaseNotes.txt")); });
    });
    UserGuide::AddTo(*ui->mnuHelp);
    setAcceptDrops(true);
    qApp->installEventFilter(this);
    gErrHandler = &errorHandler;
}

frmWriter::~frmWriter() {
    if (gErrHandler == &errorHandler)
        gErrHandler = nullptr;
}

void frmWriter::Load() {
    TrapEvent("frmWriter_Form_Load", NoInputParms, [this] {
        Settings.IniFilePath = ProgramFile("VelWriter.ini");
        iniAccessor.INIFile = Settings.IniFilePath;
        ConfigureErrorHandler();
        if (Files::FileExists(Settings.IniFilePath))
            ReadSettings();
        else
            ConfirmOptions();
        setWindowTitle(QStringLiteral("Velmora Writer v." VELMORA_VERSION));
        BuildCatalogues();
        Settings.BackupPath = ProgramFile("BackupData") + Files::Separator;
        Files::CreateFolder(Settings.BackupPath);
    });
}

void frmWriter::ConfigureErrorHandler() {
    errorHandler.LogFile = ProgramFile("VelmoraEventWriter.log");
    errorHandler.SetMsgOutputDIR(ProgramDirectory);
    errorHandler.CollectUserInput = true;
    errorHandler.OfferDetails = true;
    errorHandler.Unattended = false;
}

std::string frmWriter::Setting(const char* key) {
    return ReplaceAll(iniAccessor.GetINIValue("Setup", key, 64), std::string(1, '\0'), "");
}

std::string frmWriter::Setting(const char* key, const std::string& whenEmpty, const std::string& written) {
    std::string value = Setting(key);
    if (!value.empty())
        return value;
    iniAccessor.PutINIValue("Setup", key, written);
    return whenEmpty;
}

void frmWriter::ReadSettings() {
    Settings.SetGamePath(frmOptions::StoredPath(iniAccessor));
    const std::string eventFile = Setting("Event File");
    Settings.EventFile = eventFile + ".event";
    Settings.UPIssueFile = Setting("UP Issue File", "MyUPIssues", "MyUpIssues") + ".upissue";
    Settings.AutoBackup = CodePage::EqualNoCase(Setting("AutoBackup", "TRUE", "TRUE"), "TRUE");
    Settings.SortBy = Setting("SortBy", "0", "0");
    Settings.SBModuleFile = Setting("SB Module File", "MySBModules", "MySBModules") + ".SBModule";
    if (!iniAccessor.LastFailure.empty())
        frmOptions::TellNotStored(iniAccessor);
    if (Settings.GamePath.empty() || eventFile.empty())
        ConfirmOptions();
}

void frmWriter::ConfirmOptions() {
    gPrompts->Message("Please confirm the Event Writer Options.");
    frmOptions(iniAccessor, this).Show();
}

template <class Window>
void frmWriter::Show(std::unique_ptr<Window>& window) {
    if (!window) {
        window = std::make_unique<Window>();
        window->setAcceptDrops(true);
        connect(window.get(), &RecordWindow::Closed, this, &QWidget::show);
    }
    hide();
    window->Open();
}

bool frmWriter::OpenEditor(const QString& name) {
    if (name == QLatin1String("events")) {
        Show(events);
        TellReadOnly(Settings.DataPath);
    } else if (name == QLatin1String("upissues")) {
        Show(upIssues);
        TellReadOnly(Settings.UPIssuePath);
    } else if (name == QLatin1String("sbmodules")) {
        Show(sbModules);
    } else {
        return false;
    }
    return true;
}

void frmWriter::TellReadOnly(const std::string& folder) {
    if (!Files::FolderExists(folder))
        return; // the editor has told
    if (const std::string reason = Files::WriteRefusal(folder); !reason.empty())
        gPrompts->Message(
            "Nothing can be written to " + folder + "\r" + reason +
                "\r\rTo edit, copy the game to a folder of yours and choose that in the Options.",
            Icon::Information);
}

void frmWriter::closeEvent(QCloseEvent* event) {
    event->accept();
    ReleaseCatalogues();
    QApplication::quit();
}

void frmWriter::BackupDataDirectory() {
    const std::string target = Settings.GamePath + "DATA DIR " + TimeText(std::time(nullptr), "%Y-%m-%d");
    const bool exists = Files::FolderExists(target);
    if (!gPrompts->Ask({"This will create a copy of " + Settings.DataPath + "\rThis copy will be named " +
                            target + "\rProceed?",
                        false, exists ? "A copy of this name exists already.  It will not be replaced." : "",
                        exists}))
        return;
    if (exists) {
        gPrompts->Message("The directory " + target + " already exists!  Operation cancelled.",
                          Icon::Critical);
        return;
    }
    CopyDataDirectory(Settings.GamePath + "Data", target);
}

void frmWriter::CopyDataDirectory(const std::string& source, const std::string& target) {
    const std::uint64_t needed = Files::TreeSize(source);
    if (const auto free = Process::FreeBytes(Settings.GamePath); free && *free < needed) {
        gPrompts->Message("The copy needs " + std::to_string(needed) + " bytes, but only " +
                              std::to_string(*free) + " are free.  Operation cancelled.",
                          Icon::Critical);
        return;
    }
    std::vector<std::string> leftOut;
    {
        const auto progress = gPrompts->StartProgress("Backup Data Directory");
        leftOut =
            Files::CopyTree(source, target, [&](const std::string& file) { progress->Working(file, 0, 0); });
    }
    if (!leftOut.empty())
        gPrompts->Message("These could not be read and are not in the copy:\r" + Join(leftOut, "\r"),
                          Icon::Exclamation);
    gPrompts->Message("Operation complete!");
}

} // namespace velmora
