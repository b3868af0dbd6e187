#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "kinds/Kinds.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/TextLines.h"
#include "records/CheckContext.h"
#include "records/LineGrammar.h"
#include "records/Merge.h"
#include "records/RecordFile.h"
#include "services/modWriter.h"

#include <algorithm>
#include <future>
#include <set>

namespace velmora {

namespace {

/// Version control hands over files under names of its own: then the first header tells the kind.
const KindEntry* KindOfText(std::string_view bytes) {
    std::string scratch;
    KeyValue parts;
    while (!bytes.empty())
        if (SplitLine(TextLines::Take(bytes), true, scratch, parts))
            for (const KindEntry& entry : Kinds())
                if (CodePage::EqualNoCase(parts.Key, entry.Kind->Header))
                    return &entry;
    return nullptr;
}

/// What is wrong with a file by itself and with some of its records, each in words that stay the same
/// wherever it stands. Pictures are not looked for: their game may be elsewhere.
std::set<std::string> ProblemsOf(const RecordKind& kind, const std::string& bytes,
                                 const std::vector<std::string>& checked) {
    std::set<std::string> found;
    const auto note = [&](const std::string& record, const Problem& problem) {
        if (problem.Rule != "no-image")
            found.insert((record.empty() ? "" : record + ": ") + problem.Text + " [" +
                         std::string(problem.Rule) + "]");
    };
    RecordFile file;
    file.Read(kind, bytes, {}, [&](const Problem& problem) { note(problem.Record, problem); });
    const CheckContext nowhere("");
    for (const std::string& name : checked) {
        const RecordFile::Part* part = kind.Check ? file.Parts.Find(name) : nullptr;
        if (!part)
            continue;
        const std::unique_ptr<Record> record = kind.Copy(part->Content());
        if (kind.Normalize)
            kind.Normalize(*record);
        std::vector<Problem> problems;
        kind.Check(*record, nowhere, problems);
        for (const Problem& problem : problems)
            note(name, problem);
    }
    return found;
}

/// Those of the result that neither side has. A record that a side has as it is has none.
std::vector<std::string> NewProblems(const RecordKind& kind, const MergeResult& result,
                                     const std::string& ours, const std::string& theirs) {
    std::vector<std::string> fresh;
    const std::set<std::string> found = ProblemsOf(kind, result.Text, result.Joined);
    if (found.empty())
        return fresh;
    const std::set<std::string> mine = ProblemsOf(kind, ours, result.Joined);
    const std::set<std::string> other = ProblemsOf(kind, theirs, result.Joined);
    for (const std::string& problem : found)
        if (!mine.contains(problem) && !other.contains(problem))
            fresh.push_back(problem);
    return fresh;
}

std::string Told(const MergeConflict& conflict) {
    return conflict.Name + ": " +
           (conflict.Fields.empty() ? "one side has another record, or none"
                                    : "both sides changed " + Join(conflict.Fields, ", "));
}

} // namespace

ExitStatus RunMerge(const MergeOptions& options, std::ostream& err) {
    const auto read = [](const std::string& path) {
        return std::async(std::launch::async, [&path] { return Files::ReadWhole(path); });
    };
    auto baseRead = read(options.Base);
    auto ourRead = read(options.Ours);
    auto theirRead = read(options.Theirs);
    const std::string base = baseRead.get();
    const std::string ours = ourRead.get();
    const std::string theirs = theirRead.get();
    const std::string& name = options.Name.empty() ? options.Out : options.Name;
    const KindEntry* entry = KindOfFile(name);
    for (const std::string* side : {&ours, &theirs, &base})
        entry = entry ? entry : KindOfText(*side);
    if (!entry)
        throw Failure(FailureInvalidArgument, name + ": no file of events, UP issues or modules");
    const MergeResult result = [&] {
        try {
            return Merge(*entry->Kind, base, ours, theirs);
        } catch (const Failure& failure) { // version control hands over names that say nothing
            throw Failure(failure.Number, name + ": " + failure.Description(), failure.Source, failure.Line);
        }
    }();
    std::vector<std::string> lines;
    for (const MergeConflict& conflict : result.Conflicts)
        lines.push_back("conflict: " + Told(conflict));
    // The disk takes its time.
    auto problems = std::async(std::launch::async, [&] {
        return lines.empty() ? NewProblems(*entry->Kind, result, ours, theirs) : std::vector<std::string>();
    });
    Files::ReplaceSafely(options.Out, result.Text);
    for (const std::string& problem : problems.get())
        lines.push_back("new: " + problem);
    for (const std::string& line : lines)
        err << "velwriter: " << OutputText::Path(name) << ": " << OutputText::OneLine(line) << '\n';
    return lines.empty() ? ExitWell : ExitFound;
}

} // namespace velmora
