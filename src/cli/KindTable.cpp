#include "cli/KindTable.h"

#include "events/EventRules.h"
#include "events/clsEvent.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "sbmodules/ModuleIDPool.h"
#include "sbmodules/clsSBModule.h"
#include "upissues/UPIssueRules.h"
#include "upissues/clsUPIssue.h"

#include <algorithm>
#include <array>
#include <memory>

namespace velmora {

namespace {

std::vector<Reason> CheckEventRecord(Record& record, CheckContext& context) {
    auto& event = static_cast<clsEvent&>(record);
    NormalizeEvent(event);
    return CheckEvent(event, context.PicturePath(event.Image), context.EventSubs);
}

std::vector<Reason> CheckUPIssueRecord(Record& record, CheckContext& context) {
    auto& issue = static_cast<clsUPIssue&>(record);
    NormalizeUPIssue(issue);
    return CheckUPIssue(issue, context.UPIssueSubs);
}

Library::Admission AdmitModules() {
    return [pool = std::make_shared<ModuleIDPool>()](Record& record, const Library::Report& report) {
        return pool->Admit(record, report);
    };
}

const std::array<KindEntry, 3> Entries{{
    {&EventKind, "events", "eventFiles", "EventNumber", "Data/", "--event-file", "MyEvents.event",
     CheckEventRecord},
    {&UPIssueKind, "upissues", "upissueFiles", "UPIssueNumber", "Data/UP_Issues/", "--upissue-file",
     "MyUPIssues.upissue", CheckUPIssueRecord},
    {.Kind = &SBModuleKind,
     .Option = "sbmodules",
     .FileList = "sbmoduleFiles",
     .NumberProperty = "SBModuleNumber",
     .Folder = "Data/",
     .OwnFileOption = "--sbmodule-file",
     .OwnFile = "MySBModules.SBModule",
     .MakeAdmission = AdmitModules,
     .Written = false},
}};

} // namespace

CheckContext::CheckContext(std::string gameDirectory) : gamePath(std::move(gameDirectory)) {
    BuildWildCardSubs(EventSubs);
    BuildUPIssueSubstitutions(UPIssueSubs);
}

const std::string& CheckContext::PicturePath(const std::string& image) {
    const auto [found, isNew] = pictures.try_emplace(image);
    if (isNew && Files::FileExists(gamePath + image))
        found->second = Files::PathText(Files::HostPath(gamePath + image));
    return found->second;
}

std::span<const KindEntry> Kinds() {
    return Entries;
}

const KindEntry* KindOfFile(std::string_view path) {
    const auto* found = std::find_if(Entries.begin(), Entries.end(), [&](const KindEntry& entry) {
        return CodePage::EndsWithNoCase(path, entry.Kind->Extension);
    });
    return found == Entries.end() ? nullptr : found;
}

} // namespace velmora
