#pragma once

#include "records/Library.h"
#include "services/Catalogues.h"

namespace velmora {

/// The 141 IDs, 0 to 140, that the game has for starbase modules, and which of them are taken. Both lists
/// name each ID by its decimal text.
class ModuleIDPool {
  public:
    ModuleIDPool() { Fill(); }

    /// Makes every ID available again, as each load of the library needs it.
    void Fill();

    /// Gives a loaded module its ID; fits Library::Admit. False for an ID that is taken or negative. One
    /// above the range gives way to the lowest free ID; throws Failure (9) when none is left.
    bool Admit(Record& record, const Library::Report& report);

    Catalogue AvailableSBModuleIDs; ///< ascending
    Catalogue UsedSBModuleIDs;      ///< in the order they were taken

  private:
    void Take(std::int32_t id);
};

} // namespace velmora
