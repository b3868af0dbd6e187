#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <functional>

namespace velmora {

using Work = std::function<void()>;

inline double SecondsOf(const Work& work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The shortest of several runs, each of which tells its seconds: whatever else the machine does can only
/// lengthen one. Short work is run more often.
inline double LeastOf(const std::function<double()>& run) {
    double least = 1e9;
    double spent = 0;
    for (int runs = 0; runs < 5 || (spent < 0.3 && runs < 1000); ++runs) {
        const double seconds = run();
        least = std::min(least, seconds);
        spent += seconds;
    }
    return least;
}

/// The same of some work. `prepare` goes before each run and is not measured.
inline double LeastTime(const Work& work, const Work& prepare = {}) {
    return LeastOf([&] {
        if (prepare)
            prepare();
        return SecondsOf(work);
    });
}

/// What a line of the table promises. A limit of 0 promises nothing.
struct Limit {
    double Milliseconds = 0;
    double Ratio = 0; ///< to the yardstick
};

/// Reports one line of the table: a time in seconds and, where there is one, the time of its yardstick.
inline void Tell(benchmark::State& state, double seconds, Limit must, double yardstick = 0) {
    for (auto _ : state)
        state.SetIterationTime(seconds);
    state.counters["yardstick_ms"] = yardstick * 1e3;
    state.counters["ratio"] = yardstick > 0 ? seconds / yardstick : 0;
    state.counters["must_ms"] = must.Milliseconds;
    state.counters["must_ratio"] = must.Ratio;
}

/// Registers a measurement for 1,000, 10,000 and 100,000 records.
#define VELMORA_MEASURE(function)                                                                            \
    BENCHMARK(function)                                                                                      \
        ->RangeMultiplier(10)                                                                                \
        ->Range(1000, 100000)                                                                                \
        ->UseManualTime()                                                                                    \
        ->Iterations(1)                                                                                      \
        ->Unit(benchmark::kMillisecond)

} // namespace velmora
