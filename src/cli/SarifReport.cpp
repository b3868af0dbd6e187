#include "cli/PlacedReport.h"
#include "kinds/Baseline.h"
#include "kinds/Rules.h"
#include "platform/ContentHash.h"
#include "services/modWriter.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdio>
#include <unordered_map>

namespace velmora {

namespace {

/// GitHub takes no file with more.
constexpr std::size_t MostResults = 25000;

std::string HexOf(const char* form, unsigned long long number) {
    char digits[20];
    std::snprintf(digits, sizeof digits, form, number);
    return digits;
}

std::string Uri(const std::string& path) {
    std::string uri = path.starts_with('/') ? "file://" : path.substr(1, 2) == ":/" ? "file:///" : "";
    for (const char c : path)
        if (std::isalnum(static_cast<unsigned char>(c)) != 0 ||
            std::string_view("/-._~:").find(c) != std::string_view::npos)
            uri += c;
        else
            uri += HexOf("%%%02llX", static_cast<unsigned char>(c));
    return uri;
}

Json RuleToJson(const RuleEntry& rule) {
    const Json text{{"text", rule.Game}};
    return {{"id", rule.Name}, {"shortDescription", text}, {"fullDescription", text}, {"help", text}};
}

class SarifReport : public PlacedReport {
  public:
    SarifReport(std::ostream& stream, const GameLoader& gameLoader) : PlacedReport(gameLoader), out(stream) {
        for (const RuleEntry& rule : Rules())
            places.try_emplace(rule.Name, places.size());
    }

    void Finish() override {
        Json rules = Json::array();
        for (const RuleEntry& rule : Rules())
            rules.push_back(RuleToJson(rule));
        const Json driver{{"name", "velwriter"}, {"semanticVersion", VELMORA_VERSION}, {"rules", rules}};
        Json notices = Json::array();
        const std::size_t left = CutOff();
        if (left > 0)
            notices.push_back({{"level", "warning"},
                               {"message", {{"text", "and " + std::to_string(left) + " more findings"}}}});
        const Json invocation{{"executionSuccessful", !AnyFailed()}, {"toolExecutionNotifications", notices}};
        out << R"({"$schema":"https://json.schemastore.org/sarif-2.1.0.json","version":"2.1.0","runs":[{)"
            << "\n\"tool\":" << Json{{"driver", driver}}.dump() << ",\n\"invocations\":[" << invocation.dump()
            << "],\n\"columnKind\":\"utf16CodeUnits\",\n\"results\":[";
        const char* before = "\n";
        for (const Severity level : {Severity::Error, Severity::Warning, Severity::Note})
            for (const std::string& result : results[static_cast<std::size_t>(level)]) {
                out << before << result;
                before = ",\n";
            }
        out << "\n]}]}\n";
    }

  protected:
    void Take(const KindEntry& kind, const Problem& problem, const std::string& text) override {
        ++found;
        auto& list = results[static_cast<std::size_t>(problem.Level)];
        const std::string key = KeyOf(problem);
        const std::size_t times = ++met[key];
        if (list.size() == MostResults)
            return;
        const Json message{{"text", JsonName(ReplaceAll(text, "\r", "\n"))}};
        const Json region{{"startLine", std::max<std::size_t>(problem.Line, 1)}};
        const Json place{{"artifactLocation", {{"uri", Uri(PathOf(kind, problem))}}}, {"region", region}};
        const std::string hash = HexOf("%016llx", HashOf(key).Odd) + ":" + std::to_string(times);
        list.push_back(Json{{"ruleId", problem.Rule},
                            {"ruleIndex", places.at(problem.Rule)},
                            {"level", NameOf(problem.Level)},
                            {"message", message},
                            {"locations", Json::array({{{"physicalLocation", place}}})},
                            {"partialFingerprints", {{"primaryLocationLineHash", hash}}}}
                           .dump(-1, ' ', false, Json::error_handler_t::replace));
    }

  private:
    /// Drops what is beyond the limit, the least grave first, and tells how much that was.
    std::size_t CutOff() {
        std::size_t room = MostResults;
        for (const Severity level : {Severity::Error, Severity::Warning, Severity::Note}) {
            auto& list = results[static_cast<std::size_t>(level)];
            list.resize(std::min(list.size(), room));
            room -= list.size();
        }
        return found - (MostResults - room);
    }

    std::ostream& out;
    std::unordered_map<std::string_view, std::size_t> places; ///< of the rules
    std::unordered_map<std::string, std::size_t> met;         ///< how often by key
    std::array<std::vector<std::string>, 3> results;          ///< by severity
    std::size_t found = 0;
};

} // namespace

std::unique_ptr<CheckReport> MakeSarifReport(std::ostream& out, const GameLoader& loader) {
    return std::make_unique<SarifReport>(out, loader);
}

} // namespace velmora
