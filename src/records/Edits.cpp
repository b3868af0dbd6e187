#include "records/Edits.h"

#include "platform/CodePage.h"
#include "platform/ContentHash.h"
#include "platform/Failure.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace velmora {

namespace {

bool Holds(const std::vector<std::string>& names, std::string_view name) {
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& held) { return CodePage::EqualNoCase(held, name); });
}

} // namespace

Edits::Step::Step(const Library& subject, std::string name) : library(&subject), stepName(std::move(name)) {}

std::vector<std::string> Edits::Step::RecordNames() const {
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (const Entry& entry : entries)
        names.push_back(entry.Name);
    return names;
}

bool Edits::Step::Touches(std::string_view name) const {
    return std::any_of(entries.begin(), entries.end(),
                       [&](const Entry& entry) { return CodePage::EqualNoCase(entry.Name, name); });
}

Record& Edits::Step::Change(std::string_view name) {
    const Record* record = library->Find(name);
    if (!record)
        throw Failure(FailureInvalidArgument, "No record is named " + std::string(name));
    return *entries.emplace_back(Entry{library->NameOf(*record), library->Kind.Copy(*record)}).Other;
}

Record& Edits::Step::Add(const std::string& name, const std::string& folder, const std::string& shortName) {
    auto record = library->Kind.Make();
    library->Kind.Name.SetText(*record, name);
    record->OrigNumber = library->Kind.Number(*record) =
        static_cast<std::int32_t>(library->Count() + ++additions);
    record->FileName = folder + shortName;
    record->ShortName = shortName;
    record->IsBeingAdded = true;
    return *entries.emplace_back(Entry{name, std::move(record)}).Other;
}

void Edits::Step::Remove(std::string_view name) {
    entries.emplace_back(Entry{std::string(name), nullptr});
}

Record& Edits::Step::Move(std::string_view name, const std::string& folder, const std::string& oldFile,
                          const std::string& newFile) {
    Record& record = Change(name);
    record.ShortName = newFile;
    record.FileName = folder + newFile;
    record.IsDirty = true;
    NoteLosing(oldFile);
    NoteFile(newFile);
    return record;
}

Record& Edits::Step::MoveBack(std::string_view name, const Record& onDisk) {
    Record& record = Change(name);
    record.ShortName = onDisk.ShortName;
    record.FileName = onDisk.FileName;
    movesBack = true;
    return record;
}

const Edits::Step& Edits::StepAt(std::size_t at) const {
    return at < done.size() ? done[at] : undone[undone.size() - 1 - (at - done.size())];
}

void Edits::Tell(How how, const Step& step) const {
    Change change{how, step.stepName, {}};
    change.Names.reserve(step.entries.size());
    for (const Entry& entry : step.entries)
        change.Names.emplace_back(entry.Name);
    for (const Listener& listener : listeners)
        listener(change);
}

void Edits::Do(Step step) {
    if (!step.losingFiles.empty()) {
        step.losing = library.filesLosingRecords;
        for (const std::string& file : step.losingFiles)
            if (!Holds(*step.losing, file))
                step.losing->push_back(file);
    }
    Exchange(step);
    if (open) {
        // The commit of a new record: undoing takes the record away, not its commit.
        std::swap(step, *open);
        if (!step.losing)
            step.losing = std::move(open->losing);
        std::move(open->newFiles.begin(), open->newFiles.end(), std::back_inserter(step.newFiles));
        open.reset();
    }
    undone.clear();
    Push(std::move(step));
    Tell(How::Done, done.back());
}

const Record& Edits::Open(Step addition) {
    Exchange(addition);
    open = std::move(addition);
    Tell(How::Opened, *open);
    return *library.Find(open->entries.back().Name);
}

void Edits::TakeBack() {
    if (!open)
        return;
    Step addition = std::move(*open);
    open.reset();
    Exchange(addition);
    Tell(How::TakenBack, addition);
}

void Edits::Push(Step step) {
    step.bytes = BytesOf(step);
    bytes += step.bytes;
    done.push_back(std::move(step));
    while (done.size() > 1 && (done.size() > limits.Steps || bytes > limits.Bytes)) {
        bytes -= done.front().bytes;
        done.pop_front();
    }
}

void Edits::Undo() {
    if (!CanUndo())
        return;
    Step step = std::move(done.back());
    done.pop_back();
    bytes -= step.bytes;
    Exchange(step);
    undone.push_back(std::move(step));
    Tell(How::Undone, undone.back());
}

void Edits::Redo() {
    if (!CanRedo())
        return;
    Step step = std::move(undone.back());
    undone.pop_back();
    Exchange(step);
    Push(std::move(step));
    Tell(How::Redone, done.back());
}

void Edits::Exchange(Step& step) {
    std::vector<std::string> losing = library.filesLosingRecords;
    if (step.losing)
        std::swap(library.filesLosingRecords, *step.losing);
    bool placed = false;
    for (Entry& entry : step.entries) {
        auto* live = library.records.Find(entry.Name);
        placed |= (live == nullptr) != (entry.Other == nullptr);
        if (!live || !entry.Other)
            continue;
        Record& other = *entry.Other;
        other.OrigNumber = (*live)->OrigNumber;
        library.Kind.Number(other) = library.Kind.Number(**live);
        other.FileOnDisk = (*live)->FileOnDisk;
        other.HeaderLine = (*live)->HeaderLine;
        std::swap(*live, entry.Other);
        NoteFileLeft(**live, true);
    }
    if (placed)
        ExchangePlaces(step);
    ExchangeFiles(step);
    if (std::exchange(step.movesBack, false)) // the lists are exchanged from now on
        std::erase_if(library.filesLosingRecords,
                      [this](const std::string& file) { return !LosesRecord(file); });
    if (!step.losing && library.filesLosingRecords != losing)
        step.losing = std::move(losing);
}

void Edits::NoteFileLeft(const Record& record, bool stays) {
    const std::string onDisk(library.FileOnDiskOf(record));
    if (onDisk.empty())
        return;
    if (!stays)
        library.removedRecords.TryAdd(library.NameOf(record), onDisk);
    if ((!stays || !CodePage::EqualNoCase(record.ShortName, onDisk)) &&
        !Holds(library.filesLosingRecords, onDisk))
        library.filesLosingRecords.push_back(onDisk);
}

bool Edits::LosesRecord(const std::string& file) const {
    for (const auto& [name, record] : library)
        if (!CodePage::EqualNoCase(record.ShortName, file) &&
            CodePage::EqualNoCase(library.FileOnDiskOf(record), file))
            return true;
    return std::any_of(library.removedRecords.begin(), library.removedRecords.end(),
                       [&](const auto& removed) { return CodePage::EqualNoCase(removed.second, file); });
}

void Edits::ExchangeFiles(Step& step) {
    auto& files = library.files;
    if (std::exchange(step.filesListed, !step.filesListed)) {
        // The last ones only: records know the files before them by their places.
        for (std::size_t last = files.Count(); last > 0; last = files.Count()) {
            const std::string& name = files.KeyAt(last - 1);
            if (!Holds(step.newFiles, name) || library.knownFiles.Exists(name))
                return;
            files.Remove(std::string(name));
        }
        return;
    }
    std::erase_if(step.newFiles, [&](const std::string& name) { return files.Exists(name); });
    for (const std::string& name : step.newFiles)
        library.PlaceOf(name);
}

void Edits::ExchangePlaces(Step& step) {
    std::vector<std::pair<std::size_t, Entry*>> leaving;
    std::vector<Entry*> arriving;
    for (Entry& entry : step.entries) {
        const std::size_t at = library.records.IndexOf(entry.Name);
        if (at == Library::None && entry.Other) {
            arriving.push_back(&entry);
            library.removedRecords.Remove(entry.Name);
        }
        if (at != Library::None && !entry.Other)
            leaving.emplace_back(at, &entry);
    }
    const auto isNew = [](const Entry* entry) { return entry->Position == Library::None; };
    if (leaving.empty() && std::all_of(arriving.begin(), arriving.end(), isNew)) {
        for (Entry* entry : arriving)
            library.records.Add(entry->Name, std::move(entry->Other));
        return;
    }
    auto list = library.records.TakeAll();
    for (auto& [at, entry] : leaving) {
        entry->Position = at;
        entry->Behind = at > 0 ? list[at - 1].first : std::string();
        NoteFileLeft(*list[at].second, false);
    }
    for (auto& [at, entry] : leaving)
        entry->Other = std::move(list[at].second);
    std::erase_if(list, [](const auto& item) { return !item.second; });
    Merge(list, arriving);
    library.records.Refill(std::move(list));
    library.Reorder();
}

void Edits::Merge(RecordList& list, std::vector<Entry*>& arriving) const {
    std::stable_sort(arriving.begin(), arriving.end(),
                     [](const Entry* one, const Entry* other) { return one->Position < other->Position; });
    RecordList merged;
    merged.reserve(list.size() + arriving.size());
    std::vector<Entry*> strangers; // what stood around them has changed
    auto next = arriving.begin();
    const auto takeFitting = [&] {
        for (; next != arriving.end() && (*next)->Position <= merged.size(); ++next)
            if ((merged.empty() ? std::string() : merged.back().first) == (*next)->Behind)
                merged.emplace_back((*next)->Name, std::move((*next)->Other));
            else
                strangers.push_back(*next);
    };
    for (auto& item : list) {
        takeFitting();
        merged.push_back(std::move(item));
    }
    takeFitting();
    for (; next != arriving.end(); ++next)
        (*next)->Position == Library::None
            ? void(merged.emplace_back((*next)->Name, std::move((*next)->Other)))
            : strangers.push_back(*next);
    list = std::move(merged);
    for (Entry* entry : strangers)
        Insert(list, *entry);
}

void Edits::Insert(RecordList& list, Entry& entry) const {
    auto place = list.end();
    if (library.alphabetical) {
        place = std::find_if(list.begin(), list.end(), [&](const auto& item) {
            return CodePage::CompareNoCase(item.first, entry.Name) > 0;
        });
    } else {
        place = std::find_if(list.begin(), list.end(), [&](const auto& item) {
            return CodePage::EqualNoCase(item.first, entry.Behind);
        });
        place = place != list.end()
                    ? place + 1
                    : list.begin() + static_cast<std::ptrdiff_t>(std::min(entry.Position, list.size()));
    }
    list.emplace(place, entry.Name, std::move(entry.Other));
}

void Edits::ToggleDeletion(const std::string& name) {
    const bool marked = library.Find(name) && library.Find(name)->ToBeDeleted;
    Step step(library, (marked ? "un-deletion of " : "deletion of ") + name);
    Record& record = step.Change(name);
    record.ToBeDeleted = !marked;
    record.IsDirty = true;
    Do(std::move(step));
}

void Edits::RenameFile(const std::string& oldFile, const std::string& newFile) {
    Step step(library, "renaming of " + oldFile + " to " + newFile);
    for (const std::string& name : library.NamesInFile(oldFile)) {
        Record& record = step.Change(name);
        record.ShortName = newFile;
        record.IsDirty = true;
    }
    step.NoteLosing(oldFile);
    step.NoteFile(newFile);
    Do(std::move(step));
}

void Edits::Normalize(std::size_t position) {
    const Record& record = library.At(position);
    if (!library.Kind.Normalize)
        return;
    auto shown = library.Kind.Copy(record);
    library.Kind.Normalize(*shown);
    if (SameContent(library.Kind, record, *shown))
        return;
    Step step(library, {});
    step.Change(library.NameOf(record));
    library.records.ItemAt(position) = std::move(shown);
    Tell(How::Normalized, step);
}

} // namespace velmora
