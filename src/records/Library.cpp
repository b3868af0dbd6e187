#include "records/Library.h"

#include "platform/Files.h"
#include "records/BlockReader.h"
#include "services/BubbleSort.h"
#include "services/Trap.h"

#include <algorithm>

namespace velmora {

void Library::Clear() {
    Records.RemoveAll();
    Files.RemoveAll();
    knownFiles.RemoveAll();
    caseTwins.RemoveAll();
}

Record* Library::Find(std::string_view name) const {
    const auto* found = Records.Find(name);
    return found ? found->get() : nullptr;
}

bool Library::AnyDirty() const {
    return std::any_of(Records.begin(), Records.end(),
                       [](const auto& entry) { return entry.second->IsDirty; });
}

Record& Library::AddNew(const std::string& name, const std::string& folder, const std::string& shortName) {
    auto record = Kind.Make();
    Kind.Name.SetText(*record, name);
    record->OrigNumber = Kind.Number(*record) = static_cast<std::int32_t>(Records.Count()) + 1;
    record->FileName = folder + shortName;
    record->ShortName = shortName;
    record->IsBeingAdded = true;
    return *Records.Add(name, std::move(record));
}

void Library::Remove(std::string_view name) {
    Records.Remove(name);
}

void Library::SortBy(std::int32_t mode) {
    auto entries = Records.TakeAll();
    using Entry = decltype(entries)::value_type;
    if (mode == 0)
        BubbleSortBy(entries, [](const Entry& entry) { return entry.second->OrigNumber; });
    else
        BubbleSortBy(entries, [](const Entry& entry) -> std::string_view { return entry.first; });
    Records.Refill(std::move(entries));
    Reorder();
}

void Library::Reorder() {
    Trap(Kind.Routine(Kind.ReorderRoutine), NoInputParms, [&] {
        std::int32_t position = 0;
        for (auto& [name, record] : Records)
            Kind.Number(*record) = ++position;
    });
}

void Library::NoteNewFile(const std::string& oldFile, const std::string& newFile) {
    FilesLosingRecords.push_back(oldFile);
    PlaceOf(newFile);
}

std::int32_t Library::PlaceOf(const std::string& shortName) {
    Files.TryAdd(shortName, static_cast<std::int32_t>(Files.Count()) + 1);
    return static_cast<std::int32_t>(Files.IndexOf(shortName));
}

void Library::RenameFile(const std::string& oldFile, const std::string& newFile) {
    for (auto& [name, record] : Records)
        if (CodePage::EqualNoCase(record->ShortName, oldFile)) {
            record->ShortName = newFile;
            record->IsDirty = true;
        }
    NoteNewFile(oldFile, newFile);
}

void Library::MoveRecord(Record& record, const std::string& folder, const std::string& oldFile,
                         const std::string& newFile) {
    NoteNewFile(oldFile, newFile); // first: the old name may be the record's own
    record.ShortName = newFile;
    record.FileName = folder + newFile;
    record.IsDirty = true;
}

std::vector<std::string> Library::NamesInFile(std::string_view shortName) const {
    std::vector<std::string> names;
    for (const auto& [name, record] : Records)
        if (CodePage::EqualNoCase(record->ShortName, shortName))
            names.push_back(name);
    return names;
}

std::size_t Library::FirstInFile(std::string_view shortName) const {
    for (std::size_t i = 0; i < Records.Count(); ++i)
        if (CodePage::EqualNoCase(At(i).ShortName, shortName))
            return i;
    return decltype(Records)::None;
}

} // namespace velmora
