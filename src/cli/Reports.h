#pragma once

#include "cli/GameLoader.h"
#include "cli/JsonDocument.h"
#include "kinds/Kinds.h"
#include "services/Problem.h"

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

/// Prints problems one a line: "PATH:LINE: error|warning|note: TEXT [RULE]". Line 0 stands for the whole
/// file.
class ProblemLines {
  public:
    ProblemLines(std::ostream& stream, const std::string& folderPath);

    /// `before` stands in front of the text.
    void Print(const Problem& problem, const std::string& before = {});

  private:
    std::ostream& out;
    std::string folder; ///< as it is shown, with trailing separator
};

Json ProblemToJson(const Problem& problem);
Json ErrorToJson(const LoadError& error);

/// What `check` has found, in the order of its sections: messages, reasons, errors.
class CheckReport {
  public:
    enum class Section { Messages, Reasons, Errors };

    virtual ~CheckReport() = default;
    virtual void Begin(Section section) = 0;
    virtual void Add(const KindEntry& kind, const Problem& message) = 0;
    /// Those of one record.
    virtual void Add(const KindEntry& kind, const Record& record, const std::vector<Problem>& problems) = 0;
    virtual void Add(const LoadError& error) = 0;
    virtual void Finish() = 0;
};

std::unique_ptr<CheckReport> MakeTextReport(std::ostream& out, const GameLoader& loader);
std::unique_ptr<CheckReport> MakeJsonReport(std::ostream& out);
/// Annotations as GitHub's runners take them from what a step prints: errors first, of each severity as many
/// as are shown, then one line that tells how many more there are.
std::unique_ptr<CheckReport> MakeGitHubReport(std::ostream& out, const GameLoader& loader);
/// One document of SARIF 2.1.0, as GitHub's code scanning takes it: errors first, paths below the current
/// directory; what a finding's line does not change is its fingerprint.
std::unique_ptr<CheckReport> MakeSarifReport(std::ostream& out, const GameLoader& loader);

} // namespace velmora
