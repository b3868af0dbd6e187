#include "sbmodules/frmSBModules.h"

#include "editor/ChoiceBox.h"
#include "editor/FormRoutines.h"
#include "editor/LengthMeters.h"
#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "editor/PreviewPanel.h"
#include "editor/ProblemPanel.h"
#include "editor/RecordList.h"
#include "editor/StatisticsPanel.h"
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
    AdoptForm(ControlsOf(ui, ui->fraSBModuleDetails, ui->txtSBModuleName, ui->cboSBModuleFile),
              {"mnuEdit", "mnuZoom", "mnuHelp"});
    auto* list = new RecordList(*this, *workbench, false);
    new ProblemPanel(*this, *workbench, *list, nullptr);
    new StatisticsPanel(*this, *workbench, *list);
    form.BindChoice("SBModuleID", ui->cboSBModuleID, ids.UsedSBModuleIDs);
    form.BindText("DisplayName", ui->txtDisplayName);
    form.BindChoice("ModuleType", ui->cboModuleType, SBModuleTypes);
    form.BindCode("Model", ui->cboModel, StarbaseModels);
    form.BindChoice("ModuleSize", ui->cboModuleSize, SBModuleTiers);
    form.BindCode("LocalAbility", ui->cboLocalAbility, SBModuleAbilities);
    form.BindNumber("LocalAbilityValue", ui->txtLocalAbilityValue);
    form.BindText("Description", ui->txtDescription, {500});
    new LengthMeters(*this);
    new PreviewPanel(*this, *workbench, *list);
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
    std::vector<std::string> techs;
    std::vector<std::string> modules;
    if (record) {
        form.Show(*record);
        static_cast<const clsSBModule&>(*record).GetTechRequirements(techs);
        static_cast<const clsSBModule&>(*record).GetModuleRequirements(modules);
    } else {
        form.ShowNothing();
        ui->cboSBModuleID->SetEntries(NamesOf(ids.AvailableSBModuleIDs), -1);
    }
    LoadListFromArray(ui->lstTechRequirements, techs, "");
    LoadListFromArray(ui->lstModuleRequirements, modules, "");
    ui->cboModuleRequirements->SetEntries(record ? library.Names() : std::vector<std::string>(), -1);
}

} // namespace velmora
