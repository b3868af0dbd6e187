#include "cli/Commands.h"
#include "cli/Reports.h"
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
          report(chosen.AsJson ? MakeJsonReport(out) : MakeTextReport(out, loader)) {}

    ExitStatus Run(std::ostream& err) {
        report->Begin(CheckReport::Section::Messages);
        for (const KindEntry* kind : options.Game.Kinds)
            Load(*kind);
        report->Begin(CheckReport::Section::Reasons);
        for (std::size_t i = 0; i < libraries.size(); ++i)
            Check(*options.Game.Kinds[i], *libraries[i]);
        report->Begin(CheckReport::Section::Errors);
        for (const LoadError& error : loader.Errors())
            if (!IsIgnored(LoadFailureRule))
                report->Add(error);
        report->Finish();
        if (!loader.Report(err))
            return ExitFailure;
        return foundAny ? ExitFound : ExitWell;
    }

  private:
    [[nodiscard]] bool IsIgnored(std::string_view rule) const {
        return options.Ignored.count(std::string(rule)) > 0;
    }

    void Load(const KindEntry& kind) {
        libraries.push_back(std::make_unique<Library>(*kind.Kind));
        loader.Load(kind, *libraries.back(), [&](const Problem& message) {
            if (IsIgnored(message.Rule))
                return;
            report->Add(kind, message);
            foundAny = true;
        });
    }

    void Check(const KindEntry& kind, const Library& library) {
        CheckRecords(library, context, [&](const Record& record, std::vector<Problem>& problems) {
            std::erase_if(problems, [&](const Problem& problem) { return IsIgnored(problem.Rule); });
            report->Add(kind, record, problems);
            foundAny |= std::any_of(problems.begin(), problems.end(),
                                    [](const Problem& problem) { return problem.Level != Severity::Note; });
        });
    }

    const CheckOptions& options;
    GameLoader loader;
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
