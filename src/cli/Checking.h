#pragma once

#include "cli/Commands.h"
#include "cli/Reports.h"
#include "kinds/Baseline.h"
#include "kinds/IgnoreFile.h"
#include "kinds/Spelling.h"
#include "records/CheckContext.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace velmora {

/// One run of `check`: loads, checks and tells a report.
class Checking {
  public:
    /// `options` has to outlive this.
    Checking(const CheckOptions& chosen, std::ostream& out);
    /// Tells a report of its own.
    Checking(const CheckOptions& chosen, std::unique_ptr<CheckReport> ownReport);

    ExitStatus Run(std::ostream& err);
    [[nodiscard]] bool AnyFailed() const { return !loader.Errors().empty(); }
    [[nodiscard]] const CheckContext& Context() const { return context; }
    /// Hands out what was read, one a kind.
    [[nodiscard]] std::vector<std::unique_ptr<Library>> TakeLibraries();

    /// Checks a file that has changed by itself. False, and nothing is told, when that does not tell all: it
    /// cannot be read, or its records have other names than these.
    bool CheckAgain(const KindEntry& kind, const std::string& path, const std::vector<std::string>& names);

  private:
    void ReadKnown();
    void OpenSpelling();
    [[nodiscard]] bool IsIgnored(const Problem& problem);
    void Load(const KindEntry& kind);
    void Check(const KindEntry& kind, const Library& library);

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

/// Checks again and again, until the output is closed.
ExitStatus RunWatch(const CheckOptions& options, std::ostream& out, std::ostream& err);

} // namespace velmora
