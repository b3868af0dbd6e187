#include "cli/OutputText.h"
#include "cli/PlacedReport.h"
#include "services/modWriter.h"

#include <array>
#include <cstddef>

namespace velmora {

namespace {

/// How many annotations of each severity a step may have; GitHub drops the others without a word.
constexpr std::size_t MostShown = 10;

std::string EscapedProperty(const std::string& text) {
    return ReplaceAll(ReplaceAll(ReplaceAll(text, "%", "%25"), ":", "%3A"), ",", "%2C");
}

class GitHubReport : public PlacedReport {
  public:
    GitHubReport(std::ostream& stream, const GameLoader& gameLoader)
        : PlacedReport(gameLoader), out(stream) {}

    void Finish() override {
        for (const Severity level : {Severity::Error, Severity::Warning, Severity::Note})
            for (const std::string& line : lines[static_cast<std::size_t>(level)])
                out << line << '\n';
        if (more > 0)
            out << "and " << more << " more\n";
    }

  protected:
    void Take(const KindEntry& kind, const Problem& problem, const std::string& text) override {
        auto& shown = lines[static_cast<std::size_t>(problem.Level)];
        if (shown.size() == MostShown) {
            ++more;
            return;
        }
        const std::string_view command = problem.Level == Severity::Note ? "notice" : NameOf(problem.Level);
        std::string line = "::" + std::string(command) + " file=" + EscapedProperty(PathOf(kind, problem));
        if (problem.Line > 0)
            line += ",line=" + std::to_string(problem.Line);
        line += ",title=" + std::string(problem.Rule) + "::";
        shown.push_back(line + ReplaceAll(OutputText::OneLine(text), "%", "%25"));
    }

  private:
    std::ostream& out;
    std::array<std::vector<std::string>, 3> lines; ///< by severity
    std::size_t more = 0;
};

} // namespace

std::unique_ptr<CheckReport> MakeGitHubReport(std::ostream& out, const GameLoader& loader) {
    return std::make_unique<GitHubReport>(out, loader);
}

} // namespace velmora
