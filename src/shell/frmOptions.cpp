#include "shell/frmOptions.h"

#include "editor/FieldChecks.h"
#include "editor/FormRoutines.h"
#include "editor/QtText.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "services/Prompts.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "services/clsAPIMisc.h"
#include "services/clsRegistry.h"
#include "services/modWriter.h"
#include "ui_frmOptions.h"

#include <QCloseEvent>

namespace velmora {

namespace {

/// A key's value without the padding of short values.
std::string ValueOf(clsINI& ini, const char* key, std::int32_t bufferSize) {
    return ReplaceAll(ini.GetINIValue("Setup", key, bufferSize), std::string(1, '\0'), "");
}

} // namespace

frmOptions::frmOptions(clsINI& iniAccessor, QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::frmOptions>()), ini(iniAccessor) {
    ui->setupUi(this);
    auto* checks = new FieldChecks(this);
    for (LineBox* box : {ui->txtEventFile, ui->txtUPIssue, ui->txtSBModuleFile})
        checks->OnLeave(box, [box] {
            StripIllegalFileChars(box);
            return true;
        });
    connect(ui->cmdDone, &QPushButton::clicked, this, [this] {
        ui->cmdDone->setFocus(Qt::OtherFocusReason); // Enter presses it from a box, which is left then
        close();
    });
    connect(ui->cmdBrowse, &QPushButton::clicked, this,
            [this] { TrapEvent("frmOptions_cmdBrowse_Click", NoInputParms, [this] { Browse(); }); });
}

frmOptions::~frmOptions() = default;

void frmOptions::Show() {
    TrapEvent("frmOptions_Form_Load", NoInputParms, [this] { Load(); });
    SelectAllText(ui->txtVelmoraPath); // the box that has the focus first
    exec();
}

void frmOptions::Load() {
    if (Files::FileExists(ini.INIFile))
        ReadSettingsFile();
    else
        TakeDefaults();
    ShowCopy();
}

std::string frmOptions::StoredPath(clsINI& ini) {
    const std::string whole = PathTexts::FromStoredText(ValueOf(ini, "Path", 32768));
    return Files::FolderExists(whole) ? whole : PathTexts::FromStoredText(ValueOf(ini, "Path", 64));
}

void frmOptions::TellNotStored(const clsINI& ini) {
    gPrompts->Message("The settings could not be stored.  They hold until the program ends.\r" +
                          ini.LastFailure,
                      Icon::Exclamation);
}

void frmOptions::ReadSettingsFile() {
    const auto read = [this](const char* key, const char* whenEmpty) {
        const std::string value = ValueOf(ini, key, 64);
        return value.empty() ? whenEmpty : value;
    };
    copy.Path = StoredPath(ini);
    copy.EventFile = read("Event File", "");
    copy.UPIssueFile = read("UP Issue File", "MyUPIssues");
    copy.AutoBackup = read("AutoBackup", "TRUE");
    copy.SortBy = read("SortBy", "0");
    copy.SBModuleFile = read("SB Module File", "MySBModules");
}

void frmOptions::TakeDefaults() {
    clsRegistry registry;
    copy = {{}, "MyEvents", "MyUPIssues", "MySBModules", "TRUE", "0"};
    copy.Path = PathTexts::FromStoredText(
        registry.GetRegistryText("Software\\Corvane\\Morvath.Net\\Velmora", "Path"));
    if (copy.Path.empty())
        gPrompts->Message(
            "Unable to access the Velmora installation location from the registry, you will need to "
            "enter the path manually.");
}

void frmOptions::ShowCopy() {
    ui->txtVelmoraPath->SetBytes(copy.Path);
    ui->txtEventFile->SetBytes(copy.EventFile);
    ui->txtUPIssue->SetBytes(copy.UPIssueFile);
    ui->txtSBModuleFile->SetBytes(copy.SBModuleFile);
    ui->chkAutoBackup->setChecked(CodePage::EqualNoCase(copy.AutoBackup, "TRUE"));
    (copy.SortBy == "0" ? ui->optSortByFileName : ui->optSortByAlphabetical)->setChecked(true);
}

void frmOptions::TakeControls() {
    if (auto* left = qobject_cast<LineBox*>(focusWidget()); left && left != ui->txtVelmoraPath)
        StripIllegalFileChars(left); // however the dialog is closed
    copy.Path = ui->txtVelmoraPath->Bytes();
    copy.EventFile = ui->txtEventFile->Bytes();
    copy.UPIssueFile = ui->txtUPIssue->Bytes();
    copy.SBModuleFile = ui->txtSBModuleFile->Bytes();
    copy.AutoBackup = ui->chkAutoBackup->isChecked() ? "TRUE" : "FALSE";
    copy.SortBy = ui->optSortByFileName->isChecked() ? "0" : "1";
}

void frmOptions::Browse() {
    clsAPIMisc system;
    if (const std::string folder =
            system.BrowseForFolder("Please locate the Velmora install directory", copy.Path);
        !folder.empty())
        copy.Path = folder;
    ShowCopy();
}

void frmOptions::closeEvent(QCloseEvent* event) {
    // The base would reject the dialog, which asks for its closing again.
    event->setAccepted(!isVisible() || Close());
}

bool frmOptions::Close() {
    bool accepted = false;
    try {
        TakeControls();
        const bool goodPath = CheckPath();
        copy.EventFile = CodePage::ReplaceNoCase(copy.EventFile, ".event", "");
        copy.UPIssueFile = CodePage::ReplaceNoCase(copy.UPIssueFile, ".upissue", "");
        copy.SBModuleFile = CodePage::ReplaceNoCase(copy.SBModuleFile, ".sbmodule", "");
        const bool goodFiles = CheckEventFile() && CheckFileNames();
        accepted = goodPath && goodFiles;
        Store();
    } catch (const Failure& failure) {
        gPrompts->Message(failure.Description(), Icon::Exclamation);
    } catch (const std::exception&) {
        // It ends the steps where it happens; what was written stays.
    }
    return accepted;
}

bool frmOptions::CheckPath() {
    if (Files::FolderExists(copy.Path))
        return true;
    gPrompts->Message("That does not appear to be a valid path!", Icon::Exclamation);
    ui->txtVelmoraPath->setFocus(Qt::OtherFocusReason);
    return false;
}

bool frmOptions::CheckFileNames() {
    for (const auto& [box, name] : {std::pair{ui->txtEventFile, &copy.EventFile},
                                    {ui->txtUPIssue, &copy.UPIssueFile},
                                    {ui->txtSBModuleFile, &copy.SBModuleFile}})
        if (const std::string reason = FileNameRefusal(*name); !reason.empty()) {
            gPrompts->Message(reason, Icon::Information);
            box->setFocus(Qt::OtherFocusReason);
            return false;
        }
    return true;
}

bool frmOptions::CheckEventFile() {
    if (!CodePage::EqualNoCase(copy.EventFile, "coreevents") &&
        !CodePage::EqualNoCase(copy.EventFile, "bonusevents"))
        return true;
    gPrompts->Message(
        "You may not use the chosen event file to save your events in, as it is a Velmora standard "
        "event file.");
    ui->txtEventFile->setFocus(Qt::OtherFocusReason);
    return false;
}

void frmOptions::Store() {
    const auto defaultTo = [](std::string& name, const char* value) {
        if (name.empty())
            name = value;
    };
    defaultTo(copy.EventFile, "MyEvents");
    defaultTo(copy.UPIssueFile, "MyUPIssues");
    defaultTo(copy.SBModuleFile, "MySBModules");
    if (!copy.Path.ends_with('\\') && !copy.Path.ends_with(Files::Separator))
        copy.Path += Files::Separator;
    const std::pair<const char*, std::string> entries[] = {{"Path", PathTexts::StoredText(copy.Path)},
                                                           {"Event File", copy.EventFile},
                                                           {"UP Issue File", copy.UPIssueFile},
                                                           {"SB Module File", copy.SBModuleFile},
                                                           {"AutoBackup", copy.AutoBackup},
                                                           {"SortBy", copy.SortBy}};
    bool stored = true;
    for (const auto& [key, value] : entries)
        stored = ini.PutINIValue("Setup", key, value) != 0 && stored;
    Settings.SetGamePath(copy.Path);
    Settings.EventFile = copy.EventFile + ".event";
    Settings.UPIssueFile = copy.UPIssueFile + ".upissue";
    Settings.SBModuleFile = copy.SBModuleFile + ".sbmodule";
    Settings.AutoBackup = copy.AutoBackup == "TRUE";
    Settings.SortBy = copy.SortBy;
    if (!stored)
        TellNotStored(ini);
}

} // namespace velmora
