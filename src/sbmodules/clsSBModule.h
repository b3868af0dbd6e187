#pragma once

#include "records/RecordKind.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// One part from which the game's starbases are built.
class clsSBModule : public Record {
  public:
    std::int32_t SBModuleID = 0; ///< 0 to 140, no two modules share one
    std::string SBModuleName;
    std::string DisplayName;
    std::string Model; ///< a code of StarbaseModels
    std::string Description;
    std::int32_t ModuleSize = 0; ///< a number of SBModuleTiers
    std::string LocalAbility;    ///< a code of SBModuleAbilities
    std::int32_t LocalAbilityValue = 0;
    std::int32_t ModuleType = 0; ///< a number of SBModuleTypes

    std::int32_t SBModuleNumber = 0; ///< 1-based position in the viewer's order

    /// Adds a technology that the module needs, unless the list holds it already (in any letter case).
    void TechRequirement(std::string_view text);
    /// The same for another module that must stand before this one.
    void ModuleRequirement(std::string_view text);
    void ClearTechRequirements() { techRequirements.clear(); }
    void ClearModuleRequirements() { moduleRequirements.clear(); }
    [[nodiscard]] const std::vector<std::string>& TechRequirements() const { return techRequirements; }
    [[nodiscard]] const std::vector<std::string>& ModuleRequirements() const { return moduleRequirements; }
    /// Fills the list with the requirements in the order they came; with one empty text when there are none.
    void GetTechRequirements(std::vector<std::string>& requirements) const;
    void GetModuleRequirements(std::vector<std::string>& requirements) const;

    /// Always empty: starbase module files are only read.
    [[nodiscard]] std::string GenerateModuleString() const { return {}; }
    [[nodiscard]] std::string_view AddingStatus() const override { return "ADDING THIS MODULE"; }

  private:
    std::vector<std::string> techRequirements;
    std::vector<std::string> moduleRequirements;
};

/// Starbase module files: "*.SBModule" in the data directory.
extern const RecordKind SBModuleKind;

} // namespace velmora
