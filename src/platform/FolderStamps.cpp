#include "platform/FolderStamps.h"

#include "platform/Files.h"

namespace velmora::Files {

namespace fs = std::filesystem;

void FolderStamps::Add(const std::string& folder, bool withFiles) {
    const auto [known, isNew] = folders.try_emplace(folder, withFiles);
    if (!isNew && known->second >= withFiles)
        return; // what has changed since then is still to be told
    known->second = withFiles;
    Look(folder, withFiles, last);
}

FolderStamps::Changes FolderStamps::Changed() {
    Stamps now;
    for (const auto& [folder, withFiles] : folders)
        Look(folder, withFiles, now);
    Changes changes;
    const auto note = [&](const fs::path& path, const Stamp& stamp) {
        if (stamp.IsFolder)
            changes.AnyFolder = true;
        else
            changes.Files.push_back(path);
    };
    for (const auto& [path, stamp] : now)
        if (const auto before = last.find(path); before == last.end() || before->second != stamp)
            note(path, stamp);
    for (const auto& [path, stamp] : last)
        if (!now.contains(path))
            note(path, stamp);
    last = std::move(now);
    return changes;
}

void FolderStamps::Look(const std::string& folder, bool withFiles, Stamps& stamps) {
    // What cannot be looked at counts as missing.
    std::error_code ignored;
    const fs::path host = HostPath(folder);
    // The files tell what came and went; the folder's time would tell of every temporary, too. Its size is
    // no sign of anything.
    const HostFiles::Stamp stamp{withFiles ? fs::exists(host, ignored) : HostFiles::StampOf(host).Time, 0};
    stamps[host] = {stamp, true};
    if (!withFiles)
        return;
    for (fs::directory_iterator at(host, ignored), end; !ignored && at != end; at.increment(ignored)) {
        std::error_code gone;
        if (at->is_regular_file(gone))
            stamps[at->path()] = {HostFiles::StampOf(at->path()), false};
    }
}

} // namespace velmora::Files
