#include "cli/Checking.h"
#include "cli/OutputText.h"
#include "platform/Failure.h"
#include "records/CheckRecords.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

std::unique_ptr<CheckReport> MakeReport(CheckFormat format, std::ostream& out, const GameLoader& loader) {
    switch (format) {
    case CheckFormat::Json:
        return MakeJsonReport(out);
    case CheckFormat::GitHub:
        return MakeGitHubReport(out, loader);
    case CheckFormat::Sarif:
        return MakeSarifReport(out, loader);
    default:
        return MakeTextReport(out, loader);
    }
}

void TellBroken(const std::string& path, const std::vector<Problem>& lines, std::ostream& err) {
    for (const Problem& line : lines)
        err << "velwriter: " << OutputText::Path(path) << ':' << line.Line << ": " << line.Text << " ["
            << line.Rule << "]\n";
}

} // namespace

Checking::Checking(const CheckOptions& chosen, std::ostream& out)
    : options(chosen), loader(chosen.Game.Directory, chosen.Game.Own),
      report(MakeReport(chosen.Format, out, loader)) {
    ReadKnown();
}

Checking::Checking(const CheckOptions& chosen, std::unique_ptr<CheckReport> ownReport)
    : options(chosen), loader(chosen.Game.Directory, chosen.Game.Own), report(std::move(ownReport)) {
    ReadKnown();
}

void Checking::ReadKnown() {
    if (options.ReadIgnoreFile)
        ignored.Read(loader.GamePath());
    if (!options.BaselineFile.empty())
        baseline.Read(options.BaselineFile);
    if (!options.Dictionaries.empty())
        OpenSpelling();
}

void Checking::OpenSpelling() {
    spelling = std::make_unique<Spelling>(options.Dictionaries);
    spelling->LearnVocabulary();
    if (!spelling->Trouble().empty())
        throw Failure(FailureFileNotFound, spelling->Trouble());
    spelling->ReadWords(loader.GamePath());
}

ExitStatus Checking::Run(std::ostream& err) {
    report->Begin(CheckReport::Section::Messages);
    for (const KindEntry* kind : options.Game.Kinds)
        Load(*kind);
    report->Begin(CheckReport::Section::Reasons);
    for (std::size_t i = 0; spelling && i < libraries.size(); ++i)
        spelling->Learn(*libraries[i]);
    for (std::size_t i = 0; i < libraries.size(); ++i)
        Check(*options.Game.Kinds[i], *libraries[i]);
    report->Begin(CheckReport::Section::Errors);
    for (const LoadError& error : loader.Errors())
        if (!IsIgnored(error.Told))
            report->Add(error);
    report->Finish();
    TellBroken(ignored.Path(), ignored.Broken(), err);
    if (spelling)
        TellBroken(spelling->WordsPath(), spelling->BrokenLines(), err);
    if (!loader.Report(err))
        return ExitFailure;
    if (!options.NewBaselineFile.empty())
        baseline.Write(options.NewBaselineFile);
    return foundAny ? ExitFound : ExitWell;
}

std::vector<std::unique_ptr<Library>> Checking::TakeLibraries() {
    return std::exchange(libraries, {});
}

bool Checking::CheckAgain(const KindEntry& kind, const std::string& path,
                          const std::vector<std::string>& names) {
    Library library(*kind.Kind);
    std::vector<Problem> messages;
    LoadRequest request;
    request.Problems = [&](const Problem& problem) { messages.push_back(problem); };
    try {
        library.ParseFile(request, path);
    } catch (const Failure&) {
        return false;
    }
    if (library.Names() != names ||
        std::ranges::any_of(messages, [](const Problem& problem) { return problem.Rule == LoadFailureRule; }))
        return false;
    for (const Problem& message : messages)
        if (!IsIgnored(message))
            report->Add(kind, message);
    Check(kind, library);
    return true;
}

/// Findings of a new baseline go there, but for failures, which keep it from being written.
bool Checking::IsIgnored(const Problem& problem) {
    if (options.Ignored.count(std::string(problem.Rule)) > 0 || ignored.Hides(problem))
        return true;
    if (options.NewBaselineFile.empty())
        return !options.BaselineFile.empty() && baseline.Cover(problem);
    if (problem.Rule != LoadFailureRule)
        baseline.Add(problem);
    return true;
}

void Checking::Load(const KindEntry& kind) {
    libraries.push_back(std::make_unique<Library>(*kind.Kind));
    loader.Load(kind, *libraries.back(), [&](const Problem& message) {
        if (IsIgnored(message))
            return;
        report->Add(kind, message);
        foundAny = true;
    });
}

void Checking::Check(const KindEntry& kind, const Library& library) {
    RecordCheck more;
    if (spelling)
        more = [&](const Record& record, std::vector<Problem>& problems) {
            spelling->Check(*kind.Kind, record, problems);
        };
    const RecordCheck tell = [&](const Record& record, std::vector<Problem>& problems) {
        std::erase_if(problems, [&](const Problem& problem) { return IsIgnored(problem); });
        report->Add(kind, record, problems);
        foundAny |= std::any_of(problems.begin(), problems.end(),
                                [](const Problem& problem) { return problem.Level != Severity::Note; });
    };
    CheckRecords(library, context, tell, more);
}

ExitStatus RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    return options.Watch ? RunWatch(options, out, err) : Checking(options, out).Run(err);
}

} // namespace velmora
