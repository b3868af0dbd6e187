#include "sbmodules/ModuleIDPool.h"

#include "platform/Failure.h"
#include "sbmodules/clsSBModule.h"

namespace velmora {

namespace {

constexpr std::int32_t HighestID = 140;

} // namespace

void ModuleIDPool::Fill() {
    AvailableSBModuleIDs.RemoveAll();
    UsedSBModuleIDs.RemoveAll();
    for (std::int32_t id = 0; id <= HighestID; ++id)
        AvailableSBModuleIDs.Add(std::to_string(id), id);
}

bool ModuleIDPool::Admit(Record& record, const Library::Report& report) {
    auto& module = static_cast<clsSBModule&>(record);
    if (module.SBModuleID > HighestID) {
        if (AvailableSBModuleIDs.Empty())
            throw Failure(FailureSubscript, "Subscript out of range (file " + module.ShortName + ", line " +
                                                std::to_string(module.HeaderLine) +
                                                ", no SBModuleID from 0 to 140 is free)");
        const std::int32_t id = AvailableSBModuleIDs.ItemAt(0);
        report("id-out-of-range",
               "SBModuleID (" + std::to_string(module.SBModuleID) +
                   ") above the accepted range (0-140), the ID will be reset to the first available ID (" +
                   std::to_string(id) + ").");
        module.SBModuleID = id;
    } else if (!AvailableSBModuleIDs.Exists(std::to_string(module.SBModuleID))) {
        report("duplicate-id", "Duplicate SBModuleID found!  SBModuleName = " + module.SBModuleName +
                                   ", File = " + module.ShortName);
        return false;
    }
    Take(module.SBModuleID);
    return true;
}

void ModuleIDPool::Take(std::int32_t id) {
    const std::string key = std::to_string(id);
    AvailableSBModuleIDs.Remove(key);
    UsedSBModuleIDs.Add(key, id);
}

} // namespace velmora
