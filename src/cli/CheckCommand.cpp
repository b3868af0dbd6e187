#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "cli/Reports.h"
#include "kinds/IgnoreFile.h"
#include "records/CheckRecords.h"

#include <algorithm>
#include <memory>

namespace velmora {

namespace {

/// One run of `check`.
class Checking {
  public:
    Checking(const CheckOptions& chosen, std::ostream& out)
        : options(chosen), loader(chosen.Game.Directory, chosen.Game.Own),
          report(chosen.AsJson ? MakeJsonReport(out) : MakeTextReport(out, loader)) {
        if (options.ReadIgnoreFile)
            ignored.Read(loader.GamePath());
    }

    ExitStatus Run(std::ostream& err) {
        report->Begin(CheckReport::Section::Messages);
        for (const KindEntry* kind : options.Game.Kinds)
            Load(*kind);
        report->Begin(CheckReport::Section::Reasons);
        for (std::size_t i = 0; i < libraries.size(); ++i)
            Check(*options.Game.Kinds[i], *libraries[i]);
        report->Begin(CheckReport::Section::Errors);
        for (const LoadError& error : loader.Errors())
            if (!IsIgnored(error.Told))
                report->Add(error);
        report->Finish();
        for (const Problem& line : ignored.Broken())
            err << "velwriter: " << OutputText::Path(ignored.Path()) << ':' << line.Line << ": " << line.Text
                << " [" << line.Rule << "]\n";
        if (!loader.Report(err))
            return ExitFailure;
        return foundAny ? ExitFound : ExitWell;
    }

  private:
    [[nodiscard]] bool IsIgnored(const Problem& problem) const {
        return options.Ignored.count(std::string(problem.Rule)) > 0 || ignored.Hides(problem);
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
        CheckRecords(library, context, [&](const Record& record, std::vector<Problem>& problems) {
            std::erase_if(problems, [&](const Problem& problem) { return IsIgnored(problem); });
            report->Add(kind, record, problems);
            foundAny |= std::any_of(problems.begin(), problems.end(),
                                    [](const Problem& problem) { return problem.Level != Severity::Note; });
        });
    }

    const CheckOptions& options;
    GameLoader loader;
    IgnoreFile ignored;
    CheckContext context{loader.GamePath()};
    std::unique_ptr<CheckReport> report;
    std::vector<std::unique_ptr<Library>> libraries; ///< one a kind
    bool foundAny = false;
};

} // namespace

ExitStatus RunCheck(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    return Checking(options, out).Run(err);
}

} // namespace velmora
