#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "cli/Reports.h"
#include "kinds/Baseline.h"
#include "kinds/IgnoreFile.h"
#include "kinds/Spelling.h"
#include "platform/FolderStamps.h"
#include "records/CheckRecords.h"

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>

namespace velmora {

namespace {

/// Short beside the 0.3 s in which a change is to show, long enough to leave the processor idle.
constexpr std::chrono::milliseconds BetweenLooks{50};

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

/// One run of `check`.
class Checking {
  public:
    Checking(const CheckOptions& chosen, std::ostream& out)
        : options(chosen), loader(chosen.Game.Directory, chosen.Game.Own),
          report(MakeReport(chosen.Format, out, loader)) {
        if (options.ReadIgnoreFile)
            ignored.Read(loader.GamePath());
        if (!options.BaselineFile.empty())
            baseline.Read(options.BaselineFile);
        if (!options.Dictionaries.empty())
            OpenSpelling();
    }

    ExitStatus Run(std::ostream& err) {
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

    [[nodiscard]] const CheckContext& Context() const { return context; }

  private:
    /// Findings of a new baseline go there, but for failures, which keep it from being written.
    [[nodiscard]] bool IsIgnored(const Problem& problem) {
        if (options.Ignored.count(std::string(problem.Rule)) > 0 || ignored.Hides(problem))
            return true;
        if (options.NewBaselineFile.empty())
            return !options.BaselineFile.empty() && baseline.Cover(problem);
        if (problem.Rule != LoadFailureRule)
            baseline.Add(problem);
        return true;
    }

    void OpenSpelling() {
        spelling = std::make_unique<Spelling>(options.Dictionaries);
        if (!spelling->Trouble().empty())
            throw Failure(FailureFileNotFound, spelling->Trouble());
        spelling->ReadWords(loader.GamePath());
    }

    static void TellBroken(const std::string& path, const std::vector<Problem>& lines, std::ostream& err) {
        for (const Problem& line : lines)
            err << "velwriter: " << OutputText::Path(path) << ':' << line.Line << ": " << line.Text << " ["
                << line.Rule << "]\n";
    }

    void Load(const KindEntry& kind) {
        libraries.push_back(std::make_unique<Library>(*kind.Kind));
        loader.Load(kind, *libraries.back(), [&](const Problem& message) {
            if (IsIgnored(message))
                return;
            report->Add(kind, message);
            foundAny = true;
        });
    }

    void Check(const KindEntry& kind, const Library& library) {
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

    const CheckOptions& options;
    GameLoader loader;
    IgnoreFile ignored;
    Baseline baseline;
    std::unique_ptr<Spelling> spelling; ///< none where it is not asked for
    CheckContext context{loader.GamePath()};
    std::unique_ptr<CheckReport> report;
    std::vector<std::unique_ptr<Library>> libraries; ///< one a kind
    bool foundAny = false;
};

/// Has watched what decides over the findings, but for the folders of pictures.
Files::FolderStamps StampsOf(const GameChoice& game) {
    const GameLoader loader(game.Directory, game.Own);
    Files::FolderStamps stamps;
    stamps.Add(loader.GamePath(), true); // velwriter.ignore
    for (const KindEntry* kind : game.Kinds)
        stamps.Add(loader.FolderOf(*kind), true);
    return stamps;
}

/// Checks again and again. The lines around each round tell an editor where its findings begin and end.
ExitStatus Watch(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    if (!options.BaselineFile.empty())
        Baseline().Read(options.BaselineFile);
    for (;;) {
        // Before anything is read: what changes meanwhile has to show.
        Files::FolderStamps stamps = StampsOf(options.Game);
        out << "velwriter: checking\n";
        try {
            Checking checking(options, out);
            checking.Run(err);
            for (const std::string& folder : checking.Context().Folders())
                stamps.Add(folder, false);
        } catch (const std::exception& exception) {
            err << "velwriter: " << OutputText::OneLine(exception.what()) << '\n';
        }
        out << "velwriter: waiting for changes\n";
        err.flush();
        if (!out.flush())
            return ExitFailure;
        while (!stamps.Changed())
            std::this_thread::sleep_for(BetweenLooks);
    }
}

} // namespace

ExitStatus RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    return options.Watch ? Watch(options, out, err) : Checking(options, out).Run(err);
}

} // namespace velmora
