#include "records/Journal.h"

#include "platform/CodePage.h"
#include "platform/ContentHash.h"
#include "platform/Failure.h"
#include "platform/TimeText.h"
#include "records/BlockReader.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <filesystem>

namespace velmora {

namespace {

constexpr std::string_view LineEnd = "\r\n";
constexpr std::string_view Deleted = "DELETED";
constexpr std::string_view AsOnDisk = "CLEAN ";
constexpr std::string_view Removed = "REMOVED ";
constexpr std::string_view Typing = "DRAFT ";
constexpr std::string_view NothingTyped = "DRAFT\r\n";
constexpr std::string_view Void = "VOID\r\n"; ///< an entry: what stands before it is written or given up

constexpr std::size_t PieceSize = 1 << 20;

const Files::Placing JustForTheUser{.Readers = Files::Sharing::Private};

std::string FirstLines(const RecordKind& kind, const std::string& folder) {
    return "VELMORA JOURNAL 2 " + std::string(kind.Word) + "\r\nFOLDER " + folder + "\r\n";
}

/// Tells a torn entry from a whole one.
std::string Checksum(std::string_view text) {
    char digits[17];
    std::snprintf(digits, sizeof digits, "%016llx", static_cast<unsigned long long>(HashOf(text).Odd));
    return digits;
}

bool Skip(std::string_view& text, std::string_view start) {
    const bool starts = text.starts_with(start);
    text.remove_prefix(starts ? start.size() : 0);
    return starts;
}

std::string_view TakeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find(LineEnd));
    text.remove_prefix(std::min(text.size(), line.size() + LineEnd.size()));
    return line;
}

/// The content of the entry at the front; nothing when it is torn.
std::string_view TakeEntry(std::string_view& text) {
    std::string_view line = TakeLine(text);
    std::size_t size = 0;
    if (!Skip(line, "ENTRY "))
        return {};
    const char* const end = std::from_chars(line.data(), line.data() + line.size(), size).ptr;
    line.remove_prefix(static_cast<std::size_t>(end - line.data()));
    const std::string_view content = text.substr(0, size);
    if (content.size() != size || !Skip(line, " ") || line != Checksum(content))
        return {};
    text.remove_prefix(size);
    return content;
}

void AppendEntry(std::string_view entry, std::string& text) {
    text.append("ENTRY " + std::to_string(entry.size()) + ' ' + Checksum(entry) + "\r\n").append(entry);
}

/// Writes the text once that is worth it.
void PassOn(std::string& text, const std::function<void(std::string_view)>& write) {
    if (text.size() < PieceSize)
        return;
    write(text);
    text.clear();
}

std::unique_ptr<Record> ReadBlock(const RecordKind& kind, std::string_view block) {
    std::unique_ptr<Record> read;
    const ProblemSink silent = [](const Problem&) {};
    BlockReader reader(kind, {}, silent,
                       [&](std::unique_ptr<Record> record, std::size_t) { read = std::move(record); });
    reader.Read(block);
    return read;
}

/// The bytes that a line "WORD ... SIZE" is followed by; takes the size off that line.
std::string_view TakeSized(std::string_view& line, std::string_view& text) {
    const std::size_t blank = line.rfind(' ');
    std::size_t size = 0;
    std::from_chars(line.data() + blank + 1, line.data() + line.size(), size);
    line = line.substr(0, blank);
    const std::string_view sized = text.substr(0, size);
    text.remove_prefix(sized.size());
    Skip(text, LineEnd);
    return sized;
}

bool ReadDraft(const RecordKind& kind, std::string_view entry, Journal::Leftover& found) {
    Draft draft;
    draft.Adding = Skip(entry, "NEW ");
    Skip(entry, draft.Adding ? "" : "OLD ");
    draft.Name = TakeLine(entry);
    draft.File = TakeLine(entry);
    while (!entry.empty()) {
        std::string_view line = TakeLine(entry);
        const std::string_view bytes = TakeSized(line, entry);
        if (line == "BLOCK")
            draft.Base = ReadBlock(kind, bytes);
        else
            draft.Texts.emplace_back(line, bytes);
    }
    const bool whole = draft.Base != nullptr;
    if (whole)
        found.Typed = std::move(draft);
    return whole;
}

bool ReadEdit(const RecordKind& kind, std::string_view file, std::string_view entry,
              Journal::Leftover& found) {
    const bool deleted = entry.starts_with(Deleted);
    if (deleted)
        TakeLine(entry);
    while (Skip(entry, "LOSING "))
        found.FilesLosingRecords.emplace_back(TakeLine(entry));
    std::unique_ptr<Record> record = ReadBlock(kind, entry);
    if (!record)
        return false;
    record->ShortName = file;
    record->ToBeDeleted = deleted;
    const std::string& name = kind.NameOf(*record);
    std::erase(found.RemovedRecords, name);
    if (auto* earlier = found.Records.Find(name))
        *earlier = std::move(record);
    else
        found.Records.Add(name, std::move(record));
    return true;
}

/// False when it tells of no record.
bool ReadEntry(const RecordKind& kind, std::string_view entry, Journal::Leftover& found) {
    if (entry == Void) {
        found.Records.RemoveAll();
        found.RemovedRecords.clear();
        found.FilesLosingRecords.clear();
        found.Typed.reset();
        return true;
    }
    if (entry == NothingTyped) {
        found.Typed.reset();
        return true;
    }
    if (Skip(entry, Typing))
        return ReadDraft(kind, entry, found);
    std::string_view file = TakeLine(entry);
    if (const bool removed = Skip(file, Removed); removed || Skip(file, AsOnDisk)) {
        found.Records.Remove(file);
        if (removed)
            found.RemovedRecords.emplace_back(file);
        return !file.empty();
    }
    return Skip(file, "FILE ") && ReadEdit(kind, file, entry, found);
}

} // namespace

void Journal::Find(const std::string& journalPath, const std::string& dataFolder, Leftover& found) {
    path = journalPath;
    folder = dataFolder;
    noting = whole = complained = false;
    noted.RemoveAll();
    draftNoted.clear();
    Read(library.Kind, path, folder, found);
    std::erase_if(found.RemovedRecords, [this](const std::string& name) { return !library.Exists(name); });
}

std::string Journal::PathFor(const std::string& usualPath, const std::string& dataFolder) const {
    const std::size_t dot = usualPath.rfind('.');
    std::string own =
        usualPath.substr(0, dot) + '-' + Checksum(CodePage::ToLower(dataFolder)) + usualPath.substr(dot);
    if (Files::FileExists(own))
        return own;
    try {
        const std::string bytes =
            Files::FileExists(usualPath) ? Files::ReadWhole(usualPath, Files::Sharing::Private) : "";
        std::string_view text = bytes;
        const std::string first = FirstLines(library.Kind, dataFolder);
        const bool others =
            Skip(text, std::string_view(first).substr(0, first.find(LineEnd) + LineEnd.size())) &&
            text.starts_with("FOLDER ") && !bytes.starts_with(first);
        return others ? own : usualPath;
    } catch (const Failure&) {
        return usualPath;
    }
}

void Journal::Read(const RecordKind& kind, const std::string& journalPath, const std::string& dataFolder,
                   Leftover& found) {
    std::string bytes;
    try {
        if (!Files::FileExists(journalPath))
            return;
        bytes = Files::ReadWhole(journalPath, Files::Sharing::Private);
    } catch (const Failure& failure) {
        found.Complaint = "Unwritten edits cannot be read.  " + failure.Description();
        return;
    }
    std::string_view text = bytes;
    if (!Skip(text, FirstLines(kind, dataFolder))) {
        found.Complaint = "There are unwritten edits in " + journalPath +
                          " that do not belong to this data directory or cannot be read.";
        return;
    }
    while (!text.empty() && found.Complaint.empty())
        if (!ReadEntry(kind, TakeEntry(text), found))
            found.Complaint = "Not all unwritten edits in " + journalPath + " can be read.";
}

std::string Journal::KeepCopy() const {
    std::string copy = path + DateMark(std::time(nullptr));
    while (Files::FileExists(copy))
        copy += '+';
    try {
        Files::ReplaceSafely(copy, Files::ReadWhole(path, Files::Sharing::Private), JustForTheUser);
    } catch (const Failure&) {
        std::error_code refused;
        std::filesystem::rename(Files::HostPath(path), Files::HostPath(copy), refused);
        if (refused)
            throw;
    }
    return copy;
}

Edits::Step Journal::TakeUp(const Leftover& found) const {
    Edits::Step step(library, "taking up unwritten edits");
    for (const auto& [name, left] : found.Records) {
        Record& record = library.Exists(name) ? step.Change(name) : step.Add(name, folder, left->ShortName);
        CopyContent(library.Kind, *left, record);
        if (library.Kind.Normalize)
            library.Kind.Normalize(record);
        record.ShortName = left->ShortName;
        record.FileName = folder + left->ShortName;
        record.IsBeingAdded = false;
        record.IsDirty = true;
        record.ToBeDeleted = left->ToBeDeleted;
        step.NoteFile(left->ShortName);
    }
    for (const std::string& name : found.RemovedRecords)
        step.Remove(name);
    const auto& losing = library.FilesLosingRecords();
    for (const std::string& file : found.FilesLosingRecords)
        if (std::find(losing.begin(), losing.end(), file) == losing.end())
            step.NoteLosing(file);
    return step;
}

template <class Work>
std::string Journal::Attempt(const Work& work) {
    try {
        work();
        return {};
    } catch (const Failure& failure) {
        whole = false;
        return std::exchange(complained, true) ? "" : failure.Description();
    }
}

std::string Journal::Begin() {
    noting = true;
    return Keep({}, true);
}

std::string Journal::Keep(const Files::Pieces& news, bool anew) {
    return Attempt([&] {
        if (!Holds()) // no long file of what was undone
            RemoveFile();
        else if (anew || !whole || !Files::FileExists(path))
            Rewrite();
        else
            Files::AppendSafely(path, news, Files::Sharing::Private);
    });
}

std::string Journal::NoteDraft(const Draft* draft) {
    const std::string entry = draft ? DraftEntry(*draft) : std::string();
    if (!noting || entry == draftNoted)
        return {};
    draftNoted = entry;
    std::string text;
    AppendEntry(entry.empty() ? NothingTyped : entry, text);
    return Keep(Files::AsPieces(text));
}

std::string Journal::DraftEntry(const Draft& draft) const {
    const auto sized = [](std::string word, const std::string& bytes) {
        return std::move(word) + ' ' + std::to_string(bytes.size()) + "\r\n" + bytes + "\r\n";
    };
    std::string entry = std::string(Typing) + (draft.Adding ? "NEW " : "OLD ") + draft.Name + "\r\n" +
                        draft.File + "\r\n" + sized("BLOCK", BlockOf(library.Kind, *draft.Base));
    for (const auto& [control, text] : draft.Texts)
        entry += sized(control, text);
    return entry;
}

void Journal::WriteCopy(const std::string& copyPath, const std::string& dataFolder, const Draft* draft,
                        bool committed) const {
    Journal copy(library);
    copy.path = copyPath;
    copy.folder = dataFolder;
    if (draft)
        copy.draftNoted = DraftEntry(*draft);
    committed ? copy.Rewrite() : copy.RewriteWith(Files::AsPieces(FirstLines(library.Kind, dataFolder)));
}

std::string Journal::Note(const std::vector<std::string_view>& names) {
    const auto concerns = [this](std::string_view name) {
        const Record* record = library.Find(name);
        return noted.Exists(name) || (record ? record->IsDirty : library.RemovedRecords().Exists(name));
    };
    if (!noting || std::none_of(names.begin(), names.end(), concerns))
        return {};
    const auto states = [&](const auto& write) {
        std::string text;
        for (const std::string_view name : names) {
            AppendState(name, text);
            PassOn(text, write);
        }
        write(text);
    };
    return Keep(states, AnyLosingTakenBack());
}

std::string Journal::Remove() {
    draftNoted.clear();
    if (!std::exchange(noting, false))
        return {};
    try {
        RemoveFile();
        return {};
    } catch (const Failure& failure) {
        return failure.Description();
    }
}

void Journal::RemoveFile() {
    losingNoted.clear();
    noted.RemoveAll();
    if (!Files::FileExists(path))
        return;
    try {
        Files::DeleteFile(path);
    } catch (const Failure&) {
        if (!Files::FileExists(path))
            throw;
        // It must not be offered again.
        std::string text;
        AppendEntry(Void, text);
        Files::AppendSafely(path, text, Files::Sharing::Private);
    }
}

bool Journal::AnyLosingTakenBack() const {
    const auto& losing = library.FilesLosingRecords();
    return std::any_of(losingNoted.begin(), losingNoted.end(), [&](const std::string& file) {
        return std::find(losing.begin(), losing.end(), file) == losing.end();
    });
}

void Journal::Rewrite() {
    losingNoted.clear();
    noted.RemoveAll();
    RewriteWith([this](const auto& write) {
        std::string text = FirstLines(library.Kind, folder);
        for (const auto& [name, record] : library)
            if (record.IsDirty) {
                AppendEdit(record, text);
                PassOn(text, write);
            }
        for (const auto& [name, file] : library.RemovedRecords())
            AppendState(name, text);
        write(text);
    });
}

void Journal::RewriteWith(const Files::Pieces& pieces) {
    const auto all = [&](const auto& write) {
        pieces(write);
        std::string text;
        if (!draftNoted.empty())
            AppendEntry(draftNoted, text);
        write(text);
    };
    Files::ReplaceSafely(path, all, JustForTheUser);
    whole = true;
}

void Journal::AppendState(std::string_view name, std::string& text) {
    const Record* record = library.Find(name);
    if (record && record->IsDirty)
        AppendEdit(*record, text);
    else if (!record && library.RemovedRecords().Exists(name))
        AppendEntry(std::string(Removed).append(name).append(LineEnd), text);
    else if (noted.Exists(name))
        AppendEntry(std::string(AsOnDisk).append(name).append(LineEnd), text);
}

void Journal::AppendEdit(const Record& record, std::string& text) {
    std::string entry = "FILE " + record.ShortName + "\r\n";
    if (record.ToBeDeleted)
        entry.append(Deleted).append(LineEnd);
    for (const std::string& file : library.FilesLosingRecords())
        if (losingNoted.insert(file).second)
            entry.append("LOSING ").append(file).append(LineEnd);
    AppendBlock(library.Kind, record, entry);
    noted.TryAdd(library.NameOf(record), true);
    AppendEntry(entry, text);
}

} // namespace velmora
