#include "BenchLibrary.h"

#include "events/clsEvent.h"
#include "records/Library.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace velmora {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

void LoadInto(Library& library, const BenchLibrary& files) {
    library.Clear();
    LoadRequest request;
    request.Folder = files.Folder;
    request.OwnFile = "MyEvents.event";
    request.Findings = [](const Finding&) {};
    library.Load(request);
}

/// Loading, beside a newline scan of the same files in the same run.
void Load(benchmark::State& state) {
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    CountNewlines(files); // both sides find the files cached
    double scan = 0;
    double load = 0;
    for (auto _ : state) {
        state.PauseTiming();
        Library library(EventKind);
        const auto scanStart = Clock::now();
        benchmark::DoNotOptimize(CountNewlines(files));
        scan += SecondsSince(scanStart);
        state.ResumeTiming();
        const auto start = Clock::now();
        LoadInto(library, files);
        load += SecondsSince(start);
        if (library.Records.Count() != static_cast<std::size_t>(state.range(0)))
            state.SkipWithError("records are missing");
        state.PauseTiming();
        library.Clear();
        state.ResumeTiming();
    }
    state.counters["ratio_to_scan"] = load / scan;
    state.counters["MB"] = static_cast<double>(files.Bytes) / 1e6;
    state.SetBytesProcessed(static_cast<std::int64_t>(files.Bytes) *
                            static_cast<std::int64_t>(state.iterations()));
}
BENCHMARK(Load)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void SortByName(benchmark::State& state) {
    Library library(EventKind);
    LoadInto(library, LibraryOf(static_cast<std::size_t>(state.range(0))));
    for (auto _ : state) {
        state.PauseTiming();
        library.SortBy(0);
        state.ResumeTiming();
        library.SortBy(1);
    }
}
BENCHMARK(SortByName)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace velmora
