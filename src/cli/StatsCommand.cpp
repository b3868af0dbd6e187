#include "cli/Commands.h"
#include "cli/JsonDocument.h"
#include "cli/OutputText.h"
#include "kinds/Statistics.h"
#include "records/CheckRecords.h"

namespace velmora {

namespace {

void PrintAsText(const KindEntry& kind, const Statistics& statistics,
                 const std::vector<Statistics::Table>& tables, std::ostream& out) {
    out << kind.Option << ": " << statistics.Records() << '\n';
    for (const Statistics::Table& table : tables) {
        out << "  " << table.Title << '\n';
        for (const Statistics::Bar& bar : table.Bars) {
            const std::string count = std::to_string(bar.Count);
            out << std::string(10 - std::min<std::size_t>(count.size(), 10), ' ') << count << "  "
                << OutputText::OneLine(bar.Label) << (bar.Detail.empty() ? "" : ", ") << bar.Detail << '\n';
        }
    }
}

Json ToJson(const Statistics& statistics, const std::vector<Statistics::Table>& tables) {
    Json json{{"records", statistics.Records()}};
    for (const Statistics::Table& table : tables) {
        Json rows = Json::array();
        for (const Statistics::Bar& bar : table.Bars) {
            Json row{{"name", JsonName(bar.Label)}, {"count", bar.Count}};
            if (!bar.Detail.empty())
                row["detail"] = bar.Detail;
            rows.push_back(std::move(row));
        }
        json[std::string(table.Key)] = std::move(rows);
    }
    return json;
}

} // namespace

ExitStatus RunStats(const StatsOptions& options, std::ostream& out, std::ostream& err) {
    GameLoader loader(options.Game.Directory, options.Game.Own);
    const CheckContext context(loader.GamePath());
    Json json = Json::object();
    for (const KindEntry* kind : options.Game.Kinds) {
        Statistics statistics(*kind->Kind);
        Library library(*kind->Kind);
        loader.Load(*kind, library, [&](const Problem& problem) { statistics.AddProblem(problem.Rule); });
        for (const auto& [name, record] : library)
            statistics.Add(record);
        CheckRecords(library, context, [&](const Record&, const std::vector<Problem>& problems) {
            for (const Problem& problem : problems)
                statistics.AddProblem(problem.Rule);
        });
        const auto tables = statistics.Tables(loader.GamePath());
        if (options.AsJson)
            json[std::string(kind->Option)] = ToJson(statistics, tables);
        else
            PrintAsText(*kind, statistics, tables, out);
    }
    if (options.AsJson)
        out << json.dump(1, ' ', false, Json::error_handler_t::replace) << '\n';
    return loader.Report(err) ? ExitWell : ExitFailure;
}

} // namespace velmora
