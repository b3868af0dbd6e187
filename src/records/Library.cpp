#include "records/Library.h"

#include "platform/Files.h"
#include "records/BlockReader.h"
#include "services/BubbleSort.h"
#include "services/Trap.h"

#include <algorithm>

namespace velmora {

namespace {

/// True for a record of a file that has this place among the library's.
bool IsIn(const Record& record, std::string_view shortName, std::size_t place) {
    // Only edits part a record from its file on disk; to look at each one's name takes ten times as long.
    if (record.FileOnDisk >= 0 && !record.IsDirty)
        return static_cast<std::size_t>(record.FileOnDisk) == place;
    return CodePage::EqualNoCase(record.ShortName, shortName);
}

} // namespace

void Library::Clear() {
    records.RemoveAll();
    files.RemoveAll();
    removedRecords.RemoveAll();
    knownFiles.RemoveAll();
    notWritten.RemoveAll();
}

const Record* Library::Find(std::string_view name) const {
    const auto* found = records.Find(name);
    return found ? found->get() : nullptr;
}

std::string_view Library::FileOnDiskOf(const Record& record) const {
    return record.FileOnDisk < 0 ? std::string_view()
                                 : files.KeyAt(static_cast<std::size_t>(record.FileOnDisk));
}

std::vector<std::string> Library::Names() const {
    std::vector<std::string> names;
    names.reserve(Count());
    for (const auto& [name, record] : *this)
        names.push_back(name);
    return names;
}

bool Library::AnyDirty() const {
    return std::any_of(records.begin(), records.end(),
                       [](const auto& entry) { return entry.second->IsDirty; });
}

void Library::SortBy(std::int32_t mode) {
    alphabetical = mode != 0;
    auto entries = records.TakeAll();
    using Entry = decltype(entries)::value_type;
    if (mode == 0)
        BubbleSortBy(entries, [](const Entry& entry) { return entry.second->OrigNumber; });
    else
        BubbleSortBy(entries, [](const Entry& entry) -> std::string_view { return entry.first; });
    records.Refill(std::move(entries));
    Reorder();
}

void Library::Reorder() {
    Trap(Kind.Routine(Kind.ReorderRoutine), NoInputParms, [&] {
        std::int32_t position = 0;
        for (auto& [name, record] : records)
            Kind.Number(*record) = ++position;
    });
}

std::int32_t Library::PlaceOf(const std::string& shortName) {
    files.TryAdd(shortName, static_cast<std::int32_t>(files.Count()) + 1);
    return static_cast<std::int32_t>(files.IndexOf(shortName));
}

std::vector<std::string> Library::NamesInFile(std::string_view shortName) const {
    std::vector<std::string> names;
    const std::size_t place = files.IndexOf(shortName);
    for (const auto& [name, record] : *this)
        if (IsIn(record, shortName, place))
            names.push_back(name);
    return names;
}

std::size_t Library::FirstInFile(std::string_view shortName) const {
    const std::size_t place = files.IndexOf(shortName);
    for (std::size_t i = 0; i < Count(); ++i)
        if (IsIn(At(i), shortName, place))
            return i;
    return None;
}

} // namespace velmora
