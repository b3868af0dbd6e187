#include "cli/Commands.h"
#include "cli/JsonDocument.h"
#include "cli/OutputText.h"
#include "cli/RecordJson.h"
#include "kinds/Kinds.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "records/RecordFile.h"
#include "records/WordDiff.h"

#include <algorithm>
#include <deque>

namespace velmora {

namespace {

/// What git names where a file is not there.
constexpr std::string_view NoFile = "/dev/null";

/// The kind of two files, nullptr when they are not of one.
const KindEntry* KindOfBoth(const DiffOptions& options) {
    const KindEntry* before = KindOfFile(options.Before);
    const KindEntry* after = KindOfFile(options.After);
    return options.Before == NoFile ? after : options.After == NoFile || before == after ? before : nullptr;
}

/// The records of one kind on one side.
struct Side {
    struct Entry {
        const Record* Content;
        std::string File;
    };
    std::deque<RecordFile> Parsed;
    KeyedCollection<std::string_view> Bytes; ///< of each file, key: its name
    KeyedCollection<Entry> Records;
    std::vector<std::string> Faults; ///< what keeps a file's text from being compared

    void Add(const RecordKind& kind, const std::string& path) {
        if (path == NoFile)
            return;
        RecordFile& file = Parsed.emplace_back();
        file.Read(kind, Files::ReadWhole(path));
        const std::string name = Files::NameOf(path);
        if (!file.Fault.empty())
            Faults.push_back(OutputText::Name(name) + ": " + OutputText::OneLine(file.Fault));
        Bytes.TryAdd(name, std::string_view(file.Bytes));
        for (const auto& [record, part] : file.Parts)
            Records.TryAdd(record, Entry{part.Content.get(), name}); // as in the game, the first one counts
    }
    /// Adds the files of a kind from a game directory, or a folder of such files.
    void AddFolder(const KindEntry& kind, const std::string& folder) {
        const std::string below = Files::Join(folder, std::string(kind.Folder));
        const std::string& where = Files::FolderExists(below) ? below : folder;
        std::vector<std::string> names = Files::ListFiles(where);
        std::sort(names.begin(), names.end());
        for (const std::string& name : names)
            if (CodePage::EndsWithNoCase(name, kind.Kind->Extension))
                Add(*kind.Kind, Files::Join(where, name));
    }
    /// The records that both sides have, in the order of this one.
    [[nodiscard]] std::vector<std::string> OrderIn(const Side& other) const {
        std::vector<std::string> order;
        for (const auto& [name, entry] : Records)
            if (other.Records.Exists(name))
                order.push_back(CodePage::ToLower(name));
        return order;
    }
};

/// One run of `diff`.
class Comparing {
  public:
    Comparing(const DiffOptions& chosen, std::ostream& stream) : options(chosen), out(stream) {}

    ExitStatus Run() {
        for (const KindEntry& kind : Kinds()) {
            Side before;
            Side after;
            if (Files::FolderExists(options.Before)) {
                before.AddFolder(kind, options.Before);
                after.AddFolder(kind, options.After);
            } else if (KindOfBoth(options) == &kind) {
                before.Add(*kind.Kind, options.Before);
                after.Add(*kind.Kind, options.After);
                for (const Side* side : {&before, &after}) // two files are better compared by line then
                    if (!side->Faults.empty())
                        throw Failure(FailureInvalidArgument, side->Faults.front());
            }
            Compare(*kind.Kind, before, after);
        }
        if (options.AsJson)
            out << Json{{"records", records}, {"notes", notes}}.dump() << '\n';
        return differs ? ExitFound : ExitWell;
    }

  private:
    void Compare(const RecordKind& kind, const Side& before, const Side& after) {
        const std::size_t told = records.size() + notes.size();
        for (const auto& [name, entry] : before.Records)
            if (const Side::Entry* now = after.Records.Find(name))
                CompareRecord(kind, entry, *now);
            else
                Tell(kind, "removed", '-', entry, &entry, nullptr);
        for (const auto& [name, entry] : after.Records)
            if (!before.Records.Exists(name))
                Tell(kind, "added", '+', entry, nullptr, &entry);
        if (before.OrderIn(after) != after.OrderIn(before))
            Note("the " + std::string(kind.Word) + " records stand in another order");
        if (told == records.size() + notes.size() && BytesDiffer(before, after))
            Note("the " + std::string(kind.Word) + " files differ in spacing, comments or the like only");
        if (told != records.size() + notes.size())
            for (const Side* side : {&before, &after})
                std::for_each(side->Faults.begin(), side->Faults.end(),
                              [this](const auto& fault) { Note(fault); });
    }

    static bool BytesDiffer(const Side& before, const Side& after) {
        if (before.Bytes.Count() != after.Bytes.Count())
            return true;
        if (before.Bytes.Count() == 1) // two files may have two names
            return before.Bytes.ItemAt(0) != after.Bytes.ItemAt(0);
        return std::any_of(before.Bytes.begin(), before.Bytes.end(), [&](const auto& file) {
            const std::string_view* now = after.Bytes.Find(file.first);
            return !now || *now != file.second;
        });
    }

    void CompareRecord(const RecordKind& kind, const Side::Entry& before, const Side::Entry& after) {
        std::vector<const Field*> changed;
        const auto compare = [&](const Field& field) {
            if (field.Get(*before.Content) != field.Get(*after.Content))
                changed.push_back(&field);
        };
        compare(kind.Name);
        if (!SameContent(kind, *before.Content, *after.Content))
            kind.ForEachField(compare);
        const bool moved =
            Files::FolderExists(options.Before) && !CodePage::EqualNoCase(before.File, after.File);
        if (changed.empty() && !moved)
            return;
        Json& entry = Tell(kind, "changed", '~', after, &before, &after);
        if (moved && !options.AsJson)
            out << "    File: " << DiffOf(before.File, after.File) << '\n';
        for (const Field* field : changed) {
            const Json old = FieldToJson(*field, *before.Content);
            const Json now = FieldToJson(*field, *after.Content);
            entry["fields"].push_back({{"field", field->Property}, {"before", old}, {"after", now}});
            if (!options.AsJson)
                out << "    " << field->Property << ": " << Changed(*field, old, now, before, after) << '\n';
        }
    }

    static std::string Changed(const Field& field, const Json& old, const Json& now,
                               const Side::Entry& before, const Side::Entry& after) {
        return field.TextOf ? DiffOf(field.TextOf(*before.Content), field.TextOf(*after.Content))
                            : old.dump() + " -> " + now.dump();
    }
    static std::string DiffOf(std::string_view before, std::string_view after) {
        return OutputText::OneLine(DiffWords(before, after));
    }

    Json& Tell(const RecordKind& kind, std::string_view change, char sign, const Side::Entry& entry,
               const Side::Entry* before, const Side::Entry* after) {
        differs = true;
        if (!options.AsJson)
            out << sign << ' ' << OutputText::OneLine(kind.NameOf(*entry.Content)) << " ("
                << OutputText::Name(entry.File) << ")\n";
        records.push_back(
            {{"kind", kind.Word}, {"name", JsonText(kind.NameOf(*entry.Content))}, {"change", change}});
        Json& told = records.back();
        if (before)
            told["fileBefore"] = JsonName(before->File);
        if (after)
            told["fileAfter"] = JsonName(after->File);
        told["fields"] = Json::array();
        return told;
    }

    void Note(const std::string& text) {
        differs = true;
        notes.push_back(text);
        if (!options.AsJson)
            out << text << '\n';
    }

    const DiffOptions& options;
    std::ostream& out;
    Json records = Json::array();
    Json notes = Json::array();
    bool differs = false;
};

} // namespace

ExitStatus RunDiff(const DiffOptions& options, std::ostream& out) {
    const bool folders = Files::FolderExists(options.Before);
    if (folders != Files::FolderExists(options.After))
        throw Failure(FailureInvalidArgument, "a file and a folder cannot be compared");
    if (!folders && !KindOfBoth(options))
        throw Failure(FailureInvalidArgument,
                      "these are no two files of one kind: " + options.Before + ", " + options.After);
    return Comparing(options, out).Run();
}

} // namespace velmora
