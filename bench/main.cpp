// Runs the measurements and prints them as one table.
#include "Measure.h"

#include <QApplication>
#include <QLoggingCategory>
#include <cstdio>

namespace {

class Table : public benchmark::BenchmarkReporter {
  public:
    bool ReportContext(const Context& context) override {
        std::printf("%d processors at %.0f MHz; each time is the shortest of several runs\n\n",
                    context.cpu_info.num_cpus, context.cpu_info.cycles_per_second / 1e6);
        std::printf("%-22s %8s %11s %14s %7s %11s\n", "what", "records", "ms", "yardstick ms", "ratio",
                    "must");
        return true;
    }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs)
            run.error_occurred ? PrintError(run) : Print(run);
        std::fflush(stdout);
    }

  private:
    static void PrintError(const Run& run) {
        std::printf("%-22s FAILED: %s\n", run.run_name.function_name.c_str(), run.error_message.c_str());
    }

    static void Print(const Run& run) {
        const auto counter = [&](const char* name) {
            const auto found = run.counters.find(name);
            return found == run.counters.end() ? 0 : found->second.value;
        };
        const double ms = run.GetAdjustedRealTime();
        std::printf("%-22s %8s %11.3f", run.run_name.function_name.c_str(), run.run_name.args.c_str(), ms);
        if (counter("yardstick_ms") > 0)
            std::printf(" %14.3f %7.2f", counter("yardstick_ms"), counter("ratio"));
        else
            std::printf(" %14s %7s", "", "");
        PrintLimit(counter("must_ms"), ms, "ms");
        PrintLimit(counter("must_ratio"), counter("ratio"), "x");
        if (counter("first_ms") > 0)
            std::printf("   the first time %.0f ms", counter("first_ms"));
        if (counter("peak_ratio") > 0)
            std::printf("   peak memory %.2f x the files", counter("peak_ratio"));
        std::printf("\n");
    }

    static void PrintLimit(double must, double measured, const char* unit) {
        if (must > 0)
            std::printf("  <= %g %s%s", must, unit, measured <= must ? "" : "  MISSED");
    }
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QLoggingCategory::setFilterRules(QStringLiteral("*.warning=false")); // what this platform cannot do
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    Table table;
    benchmark::RunSpecifiedBenchmarks(&table);
    return 0;
}
