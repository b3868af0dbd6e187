// What a loaded library takes: sorting it, checking it.
#include "BenchLibrary.h"
#include "Measure.h"

#include "cli/CommandLine.h"

#include <filesystem>
#include <fstream>
#include <malloc.h>
#include <ostream>
#include <sstream>
#include <streambuf>
#include <string>

namespace velmora {
namespace {

void SortByName(benchmark::State& state) {
    Library library(EventKind);
    LoadInto(library, LibraryOf(static_cast<std::size_t>(state.range(0))));
    Tell(state, LeastTime([&] { library.SortBy(1); }, [&] { library.SortBy(0); }), {.Milliseconds = 100});
}
VELMORA_MEASURE(SortByName);

/// A line of /proc/self/status, in bytes.
double Memory(const char* line) {
    std::ifstream status("/proc/self/status");
    for (std::string text; std::getline(status, text);)
        if (text.starts_with(line))
            return 1024 * std::stod(text.substr(6));
    return 0;
}

struct Discard : std::streambuf {
    int overflow(int c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void Velwriter(benchmark::State& state, const char* command) {
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    Discard nowhere;
    std::ostream out(&nowhere);
    malloc_trim(0); // what earlier measurements have freed is not these runs'
    std::ofstream("/proc/self/clear_refs") << "5";
    const double before = Memory("VmRSS:");
    int result = 0;
    const double least = LeastTime([&] {
        result |= RunVelwriter({command, files.Game, "--kind", "events"}, out, out);
    });
    if (result != 0)
        return state.SkipWithError("the game is not sound");
    const double peak = Memory("VmHWM:") - before;
    Tell(state, least, {}, LeastTime([&] { benchmark::DoNotOptimize(CountNewlines(files.EventPaths)); }));
    state.counters["peak_ratio"] = peak / static_cast<double>(files.Bytes);
}

void VelwriterCheck(benchmark::State& state) {
    Velwriter(state, "check");
}
VELMORA_MEASURE(VelwriterCheck);

void VelwriterExport(benchmark::State& state) {
    Velwriter(state, "export");
}
VELMORA_MEASURE(VelwriterExport);

void VelwriterStats(benchmark::State& state) {
    Velwriter(state, "stats");
}
VELMORA_MEASURE(VelwriterStats);

/// Taking in a table of all records, in which every tenth title is another.
void VelwriterImport(benchmark::State& state) {
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    const std::string path = files.Game + "bench.csv";
    std::ostringstream table;
    std::ostringstream told;
    RunVelwriter({"export", files.Game, "--kind", "events", "--for", "spreadsheet"}, table, told);
    std::string text = table.str();
    std::size_t rows = 0;
    for (std::size_t at = text.find("\nEvent_"); at != std::string::npos; at = text.find("\nEvent_", at + 1))
        if (++rows % 10 == 0)
            text.insert(text.find(',', at) + 1, "other ");
    std::ofstream(path, std::ios::binary) << text;
    const double least = LeastTime([&] {
        told.str({});
        RunVelwriter({"import", files.Game, path}, told, told);
    });
    std::filesystem::remove(path);
    if (told.str().find(" " + std::to_string(rows / 10) + " changed, 0 refused") == std::string::npos)
        return state.SkipWithError("not all changes were found");
    Tell(state, least, {.Milliseconds = 2000});
}
VELMORA_MEASURE(VelwriterImport);

} // namespace
} // namespace velmora
