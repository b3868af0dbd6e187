#include "lsp/FolderIndex.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "records/BlockReader.h"

#include <algorithm>

namespace velmora::lsp {

NamedRecord NamedRecordOf(const RecordKind& kind, const Record& record, std::size_t endLine) {
    return {kind.NameOf(record), record.HeaderLine, endLine,
            kind.HeaderNumber ? kind.HeaderNumber->NumberOf(record) : 0};
}

FolderIndex::FolderIndex(const KindEntry& kindOfFiles, std::string folderPath)
    : Kind(kindOfFiles), Folder(std::move(folderPath)), game(GameAround(Kind, Folder)),
      context(std::make_unique<CheckContext>(game)) {}

FolderIndex::Key FolderIndex::KeyOf(const std::string& file) {
    return {CodePage::ToLower(file), file};
}

void FolderIndex::Put(const Key& key, std::vector<NamedRecord> records) {
    const auto at = files.try_emplace(key).first;
    std::vector<NamedRecord>& held = at->second.Records;
    for (std::size_t i = 0; i < held.size(); ++i) {
        const auto found = places.find(CodePage::ToLower(held[i].Name));
        found->second.erase({&at->first, i});
        if (found->second.empty())
            places.erase(found);
    }
    held = std::move(records);
    for (std::size_t i = 0; i < held.size(); ++i)
        places[CodePage::ToLower(held[i].Name)].insert({&at->first, i});
}

void FolderIndex::Refresh() {
    context = std::make_unique<CheckContext>(game);
    std::set<Key> there;
    try {
        if (IsInGame())
            ignored.Read(game);
        for (const std::string& name : Files::ListFiles(Folder))
            if (CodePage::EndsWithNoCase(name, Kind.Kind->Extension) && Files::NameOf(name) == name)
                there.insert(KeyOf(name));
    } catch (const Failure&) {
        // Whatever cannot be looked at holds nothing that could be doubled.
    }
    for (const Key& key : there) {
        File& file = files[key];
        if (!file.IsOpen)
            Read(key, file);
    }
    for (auto at = files.begin(); at != files.end();) {
        const bool gone = !at->second.IsOpen && !there.contains(at->first);
        if (gone)
            Put(at->first, {});
        at = gone ? files.erase(at) : std::next(at);
    }
}

void FolderIndex::Read(const Key& key, File& file) {
    const HostFiles::Stamp stamp = HostFiles::StampOf(Files::HostPath(Folder + key.second));
    if (stamp != HostFiles::Stamp{} && stamp == file.OnDisk)
        return;
    file.OnDisk = stamp;
    std::vector<NamedRecord> records;
    const ProblemSink nobody = [](const Problem&) {};
    BlockReader reader(*Kind.Kind, key.second, nobody,
                       [&](const std::unique_ptr<Record>& record, std::size_t end) {
                           records.push_back(NamedRecordOf(*Kind.Kind, *record, end));
                       });
    try {
        reader.Read(Files::ReadWhole(Folder + key.second));
    } catch (const Failure&) {
        // What was read before it counts, as in loading.
    }
    Put(key, std::move(records));
}

void FolderIndex::Open(const std::string& file, std::vector<NamedRecord> records) {
    files[KeyOf(file)].IsOpen = true;
    Put(KeyOf(file), std::move(records));
}

void FolderIndex::Close(const std::string& file) {
    File& closed = files[KeyOf(file)];
    closed.IsOpen = false;
    closed.OnDisk = {};
    Refresh();
}

Problem FolderIndex::Doubled(const NamedRecord& record, const std::string& told, std::size_t line,
                             const std::string& at) const {
    const RecordKind& kind = *Kind.Kind;
    return {kind.DuplicateRule,
            std::string(kind.DuplicateText) + record.Name + ", File = " + told,
            told == at ? Severity::Warning : Severity::Note,
            kind.Name.Property,
            record.Name,
            kind.Word,
            at,
            line};
}

void FolderIndex::AddDoubled(const Key& key, const File& file, std::vector<Problem>& problems) const {
    for (std::size_t i = 0; i < file.Records.size(); ++i) {
        const NamedRecord& record = file.Records[i];
        const std::set<Place>& all = places.at(CodePage::ToLower(record.Name));
        const bool isFirst = *all.begin()->Of == key && all.begin()->At == i;
        if (!isFirst)
            problems.push_back(Doubled(record, key.second, record.EndLine, key.second));
        else if (*all.rbegin()->Of != key)
            problems.push_back(Doubled(record, all.rbegin()->Of->second, record.HeaderLine, key.second));
    }
}

/// Some kinds admit records by their numbers, one after the other.
void FolderIndex::AddNotAdmitted(const Key& key, std::vector<Problem>& problems) const {
    const RecordKind& kind = *Kind.Kind;
    const Library::Admission admit = Kind.MakeAdmission();
    for (const auto& entry : files)
        for (const NamedRecord& named : entry.second.Records) {
            const Key& at = entry.first;
            const auto record = kind.Make();
            kind.Name.SetText(*record, named.Name);
            kind.HeaderNumber->SetNumber(*record, named.Number);
            record->ShortName = at.second;
            record->HeaderLine = named.HeaderLine;
            const auto report = [&](std::string_view rule, std::string text) {
                if (at == key)
                    problems.push_back({rule, std::move(text), Severity::Warning, kind.HeaderNumber->Property,
                                        named.Name, kind.Word, key.second, named.EndLine});
            };
            admit(*record, report);
        }
}

std::vector<Problem> FolderIndex::ProblemsOf(const std::string& file) const {
    std::vector<Problem> problems;
    const auto at = files.find(KeyOf(file));
    if (at == files.end())
        return problems;
    AddDoubled(at->first, at->second, problems);
    try {
        if (Kind.MakeAdmission)
            AddNotAdmitted(at->first, problems);
    } catch (const Failure& failure) {
        problems.push_back(
            {LoadFailureRule, failure.Description(), Severity::Error, {}, {}, Kind.Kind->Word, file});
    }
    for (auto other = files.lower_bound({at->first.first, ""}); other != at && other != files.end(); ++other)
        problems.push_back({.Rule = "case-twin-files",
                            .Text = "The files " + other->first.second + " and " + file +
                                    " are one file to the game.  Neither will be written to.",
                            .Kind = Kind.Kind->Word,
                            .File = file});
    return problems;
}

std::optional<std::pair<std::string, NamedRecord>> FolderIndex::Find(std::string_view name) const {
    const auto found = places.find(CodePage::ToLower(name));
    if (found == places.end())
        return std::nullopt;
    const Place& first = *found->second.begin();
    return std::pair(first.Of->second, files.at(*first.Of).Records[first.At]);
}

std::vector<std::string> FolderIndex::Names() const {
    std::vector<std::string> names;
    for (const auto& [key, file] : files)
        for (const NamedRecord& record : file.Records)
            names.push_back(record.Name);
    return names;
}

} // namespace velmora::lsp
