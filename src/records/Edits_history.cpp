// How the history of edits outlives the files' being written and read again.
#include "platform/CodePage.h"
#include "platform/ContentHash.h"
#include "records/Edits.h"

#include <algorithm>
#include <numeric>

namespace velmora {

std::size_t Edits::BytesOf(const Step& step) const {
    return std::accumulate(step.entries.begin(), step.entries.end(), std::size_t{0},
                           [this](std::size_t sum, const Entry& entry) {
                               sum += sizeof(Entry) + entry.Name.size();
                               if (entry.Other)
                                   for (const Field& field : library.Kind.Fields)
                                       sum += field.Type == FieldType::Text
                                                  ? sizeof(std::string) + field.TextOf(*entry.Other).size()
                                                  : sizeof(std::int32_t);
                               return sum;
                           });
}

std::vector<std::string> Edits::Write(const std::string& folder, const std::vector<std::string>& shortNames,
                                      const Library::MissingCopy& goOnWithoutCopy) {
    std::vector<std::string> copies;
    try {
        copies = library.WriteFiles(folder, shortNames, goOnWithoutCopy);
    } catch (...) {
        // Some files may be written: what was as on disk may be no longer.
        ForEachStep([](Step& step) {
            for (Entry& entry : step.entries)
                if (entry.Other)
                    entry.Other->IsDirty = true;
        });
        throw;
    }
    library.filesLosingRecords.clear();
    library.removedRecords.RemoveAll();
    written = true;
    return copies;
}

std::vector<std::string> Edits::Reread(const std::function<void()>& read) {
    KeyedCollection<DiskState> expected;
    const bool saved = std::exchange(written, false);
    ForEachStep([&](const Step& step) {
        for (const Entry& entry : step.entries)
            expected.TryAdd(entry.Name, ExpectedOf(entry.Name, saved));
    });
    try {
        read();
    } catch (...) {
        Forget();
        throw;
    }
    std::vector<std::string> changed;
    for (const auto& [name, state] : expected)
        if (state.GivenUp || state.Hash != HashOfShown(library.Find(name)))
            changed.push_back(name);
    ForgetBefore(changed);
    ForEachStep([this](Step& step) { FollowDisk(step); });
    Tell(How::Reread, Step(library, {}));
    return changed;
}

Edits::DiskState Edits::ExpectedOf(const std::string& name, bool saved) const {
    const Record* record = library.Find(name);
    if (record && !saved && record->IsDirty)
        return {{}, true};
    return {HashOfShown(record && record->ToBeDeleted ? nullptr : record), false};
}

std::optional<ContentHash> Edits::HashOfShown(const Record* record) const {
    if (!record)
        return std::nullopt;
    const auto shown = library.Kind.Copy(*record);
    if (library.Kind.Normalize)
        library.Kind.Normalize(*shown);
    return HashOf(CodePage::ToLower(record->ShortName) + '\n' + BlockOf(library.Kind, *shown));
}

Edits::DiskRecord Edits::OnDisk(std::string_view name) const {
    const Record* live = library.Find(name);
    if (live && !live->IsDirty)
        return {true, live->IsBeingAdded ? nullptr : live};
    DiskRecord found;
    for (std::size_t at = 0; at < done.size() + undone.size(); ++at)
        for (const Entry& entry : StepAt(at).entries) {
            if (!CodePage::EqualNoCase(entry.Name, name))
                continue;
            if (entry.Other && !entry.Other->IsDirty && !entry.Other->IsBeingAdded)
                return {true, entry.Other.get()};
            if (!entry.Other && at < done.size())
                found.Known = !library.removedRecords.Exists(name);
        }
    return found;
}

void Edits::ForgetBefore(const std::vector<std::string>& changed) {
    KeyedCollection<bool> names;
    for (const std::string& name : changed)
        names.TryAdd(name, true);
    const auto touches = [&](const Step& step) {
        return std::any_of(step.entries.begin(), step.entries.end(),
                           [&](const Entry& entry) { return names.Exists(entry.Name); });
    };
    done.erase(done.begin(), std::find_if(done.rbegin(), done.rend(), touches).base());
    undone.erase(undone.begin(), std::find_if(undone.rbegin(), undone.rend(), touches).base());
}

/// What a step holds is pending, once exchanged, where it is not what is on disk now.
void Edits::FollowDisk(Step& step) const {
    step.losing.reset();
    for (Entry& entry : step.entries) {
        if (!entry.Other)
            continue;
        Record& other = *entry.Other;
        const Record* disk = library.Find(entry.Name);
        other.SetStatus({});
        other.FileOnDisk = disk ? disk->FileOnDisk : -1;
        other.IsDirty = !disk || other.ToBeDeleted || HashOfShown(&other) != HashOfShown(disk);
    }
}

void Edits::Forget() {
    done.clear();
    undone.clear();
    open.reset();
    bytes = 0;
}

} // namespace velmora
