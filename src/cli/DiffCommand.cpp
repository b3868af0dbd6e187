#include "cli/Commands.h"
#include "cli/JsonDocument.h"
#include "cli/OutputText.h"
#include "cli/RecordJson.h"
#include "kinds/Kinds.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "records/Comparison.h"
#include "records/WordDiff.h"

#include <algorithm>

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

void Add(RecordSide& side, const KindEntry& kind, const std::string& path) {
    if (path != NoFile)
        side.AddFile(*kind.Kind, path);
}

std::string TextOf(const RecordSide::Fault& fault) {
    return OutputText::Name(fault.File) + ": " + OutputText::OneLine(fault.Text);
}

/// One run of `diff`.
class Comparing {
  public:
    Comparing(const DiffOptions& chosen, std::ostream& stream) : options(chosen), out(stream) {}

    ExitStatus Run() {
        for (const KindEntry& kind : Kinds()) {
            RecordSide before;
            RecordSide after;
            if (folders) {
                for (const std::string& path : FilesOf(kind, options.Before))
                    before.AddFile(*kind.Kind, path);
                for (const std::string& path : FilesOf(kind, options.After))
                    after.AddFile(*kind.Kind, path);
            } else if (KindOfBoth(options) == &kind) {
                Add(before, kind, options.Before);
                Add(after, kind, options.After);
                for (const RecordSide* side : {&before, &after}) // two files are better compared by line then
                    if (!side->Faults.empty())
                        throw Failure(FailureInvalidArgument, TextOf(side->Faults.front()));
            }
            Tell(*kind.Kind, before, after);
        }
        if (options.AsJson)
            out << Json{{"records", records}, {"notes", notes}}.dump() << '\n';
        return differs ? ExitFound : ExitWell;
    }

  private:
    void Tell(const RecordKind& kind, const RecordSide& before, const RecordSide& after) {
        const std::size_t told = records.size() + notes.size();
        for (const RecordDifference& difference : Compare(kind, before, after))
            if (!difference.After)
                Tell(kind, "removed", '-', difference);
            else if (!difference.Before)
                Tell(kind, "added", '+', difference);
            else if (!difference.Fields.empty() || folders)
                TellChange(kind, difference);
        if (OrderDiffers(before, after))
            Note("the " + std::string(kind.Word) + " records stand in another order");
        if (told == records.size() + notes.size() && BytesDiffer(before, after))
            Note("the " + std::string(kind.Word) + " files differ in spacing, comments or the like only");
        if (told != records.size() + notes.size())
            for (const RecordSide* side : {&before, &after})
                std::for_each(side->Faults.begin(), side->Faults.end(),
                              [this](const auto& fault) { Note(TextOf(fault)); });
    }

    void TellChange(const RecordKind& kind, const RecordDifference& difference) {
        const RecordSide::Entry& before = *difference.Before;
        const RecordSide::Entry& after = *difference.After;
        Json& entry = Tell(kind, "changed", '~', difference);
        if (difference.Moved && folders && !options.AsJson)
            out << "    File: " << DiffOf(before.File, after.File) << '\n';
        for (const Field* field : difference.Fields) {
            const Json old = FieldToJson(*field, *before.Content);
            const Json now = FieldToJson(*field, *after.Content);
            entry["fields"].push_back({{"field", field->Property}, {"before", old}, {"after", now}});
            if (!options.AsJson)
                out << "    " << field->Property << ": " << Changed(*field, old, now, before, after) << '\n';
        }
    }

    static std::string Changed(const Field& field, const Json& old, const Json& now,
                               const RecordSide::Entry& before, const RecordSide::Entry& after) {
        return field.TextOf ? DiffOf(field.TextOf(*before.Content), field.TextOf(*after.Content))
                            : old.dump() + " -> " + now.dump();
    }
    static std::string DiffOf(std::string_view before, std::string_view after) {
        return OutputText::OneLine(DiffWords(before, after));
    }

    Json& Tell(const RecordKind& kind, std::string_view change, char sign,
               const RecordDifference& difference) {
        const auto* before = difference.Before;
        const auto* after = difference.After;
        const RecordSide::Entry& entry = after ? *after : *before;
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
    const bool folders = Files::FolderExists(options.Before);
    std::ostream& out;
    Json records = Json::array();
    Json notes = Json::array();
    bool differs = false;
};

} // namespace

ExitStatus RunDiff(const DiffOptions& options, std::ostream& out) {
    const bool folders = Files::FolderExists(options.Before);
    if (folders != Files::FolderExists(options.After)) {
        const std::string& other = folders ? options.After : options.Before;
        throw Failure(FailureInvalidArgument, Files::FileExists(other)
                                                  ? "a file and a folder cannot be compared"
                                                  : other + ": no such file or directory");
    }
    if (!folders && !KindOfBoth(options))
        throw Failure(FailureInvalidArgument,
                      "these are no two files of one kind: " + options.Before + ", " + options.After);
    return Comparing(options, out).Run();
}

} // namespace velmora
