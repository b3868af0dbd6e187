#include "cli/Commands.h"
#include "cli/Reports.h"
#include "cli/RuleTable.h"

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
            CheckRecords(*options.Game.Kinds[i], *libraries[i]);
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
        loader.Load(kind, *libraries.back(), [&](const Finding& message) {
            if (IsIgnored(message.Rule))
                return;
            report->Add(kind, message);
            foundAny = true;
        });
    }

    void CheckRecords(const KindEntry& kind, const Library& library) {
        if (kind.Check == nullptr)
            return;
        for (const auto& [name, record] : library) {
            std::vector<Reason> reasons = kind.Check(*kind.Kind->Copy(record), context);
            std::erase_if(reasons, [&](const Reason& reason) { return IsIgnored(reason.Rule); });
            if (reasons.empty())
                continue;
            report->Add(kind, record, reasons);
            foundAny = true;
        }
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
