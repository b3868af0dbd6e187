#include "sbmodules/frmSBModules.h"

#include "editor/ChoiceBox.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "editor/TextBox.h"
#include "sbmodules/clsSBModule.h"
#include "services/Catalogues.h"
#include "services/Settings.h"
#include "ui_frmSBModules.h"

#include <QAction>

namespace velmora {

frmSBModules::frmSBModules(QWidget* parent)
    : RecordWindow(SBModuleKind, parent), ui(std::make_unique<Ui::frmSBModules>()) {
    ui->setupUi(this);
    AdoptForm("fraSBModuleDetails", {"mnuEdit", "mnuZoom", "mnuHelp"});
    for (const char* item : {"mnuSortByFileName", "mnuSortAlphabetically"})
        connect(Action(item), &QAction::triggered, Action(item), &QAction::toggle); // picking changes nothing
    library.Admit = [this](Record& record, const Library::Report& report) {
        return ids.Admit(record, report);
    };
}

frmSBModules::~frmSBModules() = default;

void frmSBModules::LoadForm() {
    ShowImageFile(ui->Gvbox1, Settings.GamePath + "\\GFX\\Starbase_Med01.pcx");
}

LoadRequest frmSBModules::Request() const {
    LoadRequest request;
    request.Folder = Settings.DataPath;
    request.OwnFile = Settings.SBModuleFile;
    return request;
}

std::string frmSBModules::UnwrittenQuestion() const {
    return "There are changed SB Modules that have not yet been committed to file, do you still wish to "
           "exit?";
}

void frmSBModules::ShowRecord(const Record* record) {
    ui->txtDescription->SetLimit(500);
    if (!record) {
        ShowNothing();
        return;
    }
    const auto& module = static_cast<const clsSBModule&>(*record);
    LoadComboByNumber(ui->cboSBModuleID, ids.UsedSBModuleIDs, module.SBModuleID);
    ui->txtSBModuleName->SetBytes(module.SBModuleName);
    ui->txtDisplayName->SetBytes(module.DisplayName);
    LoadComboByNumber(ui->cboModuleType, SBModuleTypes, module.ModuleType);
    LoadComboByCode(ui->cboModel, StarbaseModels, module.Model);
    LoadComboByNumber(ui->cboModuleSize, SBModuleTiers, module.ModuleSize);
    LoadComboByCode(ui->cboLocalAbility, SBModuleAbilities, module.LocalAbility);
    ui->txtLocalAbilityValue->SetBytes(std::to_string(module.LocalAbilityValue));
    ui->txtDescription->SetBytes(module.Description);
    std::vector<std::string> requirements;
    module.GetTechRequirements(requirements);
    LoadListFromArray(ui->lstTechRequirements, requirements, "");
    module.GetModuleRequirements(requirements);
    LoadListFromArray(ui->lstModuleRequirements, requirements, "");
    ui->cboModuleRequirements->SetEntries(NamesOf(library.Records), -1);
    LoadComboByName(ui->cboSBModuleFile, library.Files, module.ShortName);
    ui->txtEdited->SetBytes(module.IsDirty ? "YES" : "NO");
}

void frmSBModules::ShowNothing() {
    ui->cboSBModuleID->SetEntries(NamesOf(ids.AvailableSBModuleIDs), -1);
    for (LineBox* box : {ui->txtSBModuleName, ui->txtDisplayName, ui->txtLocalAbilityValue})
        box->SetBytes("");
    ui->txtDescription->SetBytes("");
    ui->cboModuleType->SetEntries(NamesOf(SBModuleTypes), -1);
    ui->cboModel->SetEntries(NamesOf(StarbaseModels), -1);
    ui->cboModuleSize->SetEntries(NamesOf(SBModuleTiers), -1);
    ui->cboLocalAbility->SetEntries(NamesOf(SBModuleAbilities), -1);
    ui->cboSBModuleFile->SetEntries(NamesOf(library.Files), -1);
    ui->txtEdited->SetBytes("NO");
    ui->lstTechRequirements->clear();
    ui->lstModuleRequirements->clear();
    ui->cboModuleRequirements->SetEntries({}, -1);
}

} // namespace velmora
