#include "sbmodules/clsSBModule.h"

#include "platform/CodePage.h"
#include "services/Catalogues.h"
#include "services/Numbers.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

using M = clsSBModule;

constexpr std::array<Field, 9> SBModuleFields{
    TextField<&M::DisplayName>("Name", 1, false, "DisplayName"),
    TextField<&M::Model>("Model"),
    ListField<&M::TechRequirements, &M::TechRequirement, &M::ClearTechRequirements>("Tech_Requirement",
                                                                                    "TechRequirements"),
    ListField<&M::ModuleRequirements, &M::ModuleRequirement, &M::ClearModuleRequirements>(
        "Module_Requirement", "ModuleRequirements"),
    TextField<&M::Description>("Description"),
    NumberField<&M::ModuleSize>("ModuleSize"),
    TextField<&M::LocalAbility>("LocalAbility"),
    NumberField<&M::LocalAbilityValue>("LocalAbilityValue"),
    NumberField<&M::ModuleType>("Type", 1, false, "ModuleType"),
};

std::string AbilityOf(const M& module) {
    const std::size_t ability = PositionByCode(SBModuleAbilities, module.LocalAbility);
    return SBModuleAbilities.KeyAt(ability) + " " + Signed(module.LocalAbilityValue);
}

Preview PreviewModule(const Record& record, const SampleNames& /*samples*/) {
    const auto& module = static_cast<const M&>(record);
    return {{},
            module.DisplayName,
            {{{}, {{TextPiece::Sort::Plain, ShownPlain(module.Description)}}, AbilityOf(module), {}}}};
}

RecordKind MakeSBModuleKind() {
    RecordKind kind;
    kind.Word = "sbmodule";
    kind.Window = "frmSBModules";
    kind.NameWord = "SBModule";
    kind.Header = "SBMOD";
    kind.End = "ENDSBMOD";
    kind.Extension = ".SBModule";
    kind.BackupMark = "SBModule";
    kind.LoadRoutine = "LoadCurrentSBModules";
    kind.ParseRoutine = "ParseOutSBModuleFile";
    kind.ReorderRoutine = "ReorderSBModules";
    kind.MissingFolderText = "Unable to acces the Velmora Data directory!";
    kind.DuplicateText = "Duplicate SBModule found!  SBModuleName = ";
    kind.DuplicateRule = "duplicate-sbmodule";
    kind.ValuesKeepBlanks = true;
    kind.ReadNumber = LeadingDecimal;
    kind.HeaderNumber = NumberField<&M::SBModuleID>("SBMOD", 1, false, "SBModuleID");
    kind.Fields = SBModuleFields;
    kind.Name = TextField<&M::SBModuleName>("SBMOD", 1, false, "SBModuleName");
    kind.Title = TextField<&M::DisplayName>("Name", 1, false, "DisplayName");
    kind.TitleWord = "Display Name";
    kind.TypeOf = [](const Record& record) -> std::string_view {
        return NameByNumber(SBModuleTypes, static_cast<const M&>(record).ModuleType);
    };
    kind.Number = [](Record& record) -> std::int32_t& { return static_cast<M&>(record).SBModuleNumber; };
    kind.PreviewOf = PreviewModule;
    kind.Makes<M>();
    return kind;
}

void AddUnlessHeld(std::vector<std::string>& list, std::string_view text) {
    if (std::none_of(list.begin(), list.end(),
                     [&](const std::string& entry) { return CodePage::EqualNoCase(entry, text); }))
        list.emplace_back(text);
}

void CopyOrOneEmpty(const std::vector<std::string>& list, std::vector<std::string>& requirements) {
    requirements = list;
    if (requirements.empty())
        requirements.emplace_back();
}

} // namespace

const RecordKind SBModuleKind = MakeSBModuleKind();

void clsSBModule::TechRequirement(std::string_view text) {
    AddUnlessHeld(techRequirements, text);
}

void clsSBModule::ModuleRequirement(std::string_view text) {
    AddUnlessHeld(moduleRequirements, text);
}

void clsSBModule::GetTechRequirements(std::vector<std::string>& requirements) const {
    CopyOrOneEmpty(techRequirements, requirements);
}

void clsSBModule::GetModuleRequirements(std::vector<std::string>& requirements) const {
    CopyOrOneEmpty(moduleRequirements, requirements);
}

} // namespace velmora
