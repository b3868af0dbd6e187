#include "kinds/Kinds.h"

#include "events/clsEvent.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "sbmodules/ModuleIDPool.h"
#include "sbmodules/clsSBModule.h"
#include "upissues/clsUPIssue.h"

#include <algorithm>
#include <array>
#include <memory>

namespace velmora {

namespace {

Library::Admission AdmitModules() {
    return [pool = std::make_shared<ModuleIDPool>()](Record& record, const Library::Report& report) {
        return pool->Admit(record, report);
    };
}

const std::array<KindEntry, 3> Entries{{
    {&EventKind, "events", "eventFiles", "EventNumber", "Data/", "--event-file", "MyEvents.event"},
    {&UPIssueKind, "upissues", "upissueFiles", "UPIssueNumber", "Data/UP_Issues/", "--upissue-file",
     "MyUPIssues.upissue"},
    {&SBModuleKind, "sbmodules", "sbmoduleFiles", "SBModuleNumber", "Data/", "--sbmodule-file",
     "MySBModules.SBModule", AdmitModules, false},
}};

} // namespace

std::span<const KindEntry> Kinds() {
    return Entries;
}

std::vector<std::string> FilesOf(const KindEntry& entry, const std::string& folder) {
    const std::string_view below = entry.Folder.substr(entry.Folder.find('/') + 1); // the data directory
    std::string where = folder;
    for (const std::string_view under : {below, entry.Folder})
        if (const std::string path = Files::Join(folder, std::string(under)); Files::FolderExists(path))
            where = path;
    std::vector<std::string> paths;
    for (const std::string& name : Files::ListFiles(where))
        if (CodePage::EndsWithNoCase(name, entry.Kind->Extension))
            paths.push_back(Files::Join(where, name));
    std::ranges::sort(paths);
    return paths;
}

const KindEntry& EntryOf(const RecordKind& kind) {
    return *std::ranges::find(Entries, &kind, &KindEntry::Kind);
}

const KindEntry* KindOfFile(std::string_view path) {
    const auto* found = std::find_if(Entries.begin(), Entries.end(), [&](const KindEntry& entry) {
        return CodePage::EndsWithNoCase(path, entry.Kind->Extension);
    });
    return found == Entries.end() ? nullptr : found;
}

std::string GameAround(const KindEntry& kind, const std::string& folder) {
    std::string slashes = folder;
    std::ranges::replace(slashes, '\\', '/');
    return CodePage::EndsWithNoCase(slashes, "/" + std::string(kind.Folder))
               ? folder.substr(0, folder.size() - kind.Folder.size())
               : std::string();
}

} // namespace velmora
