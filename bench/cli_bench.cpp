// What `velwriter` takes for whole libraries: time, beside a newline scan of the same files, and memory.
#include "TempFolder.h"
#include "cli/CommandLine.h"
#include "events/clsEvent.h"

#include <benchmark/benchmark.h>

#include <cstring>
#include <ctime>
#include <fstream>
#include <malloc.h>
#include <map>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>
#include <vector>

namespace velmora {
namespace {

/// Processor time: what else the machine does then changes little.
double Seconds() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// A game directory of sound events of about 1.4 KB each, a thousand to a file.
struct Game {
    explicit Game(std::size_t events) {
        Folder.Write("GFX/Raid.pcx", "picture");
        Folder.Write("Data/UP_Issues/Own.UPIssue", "");
        std::string text;
        for (std::size_t i = 0; i < events; ++i) {
            Event.EventName = "Event" + std::to_string(i);
            AppendBlock(EventKind, Event, text);
            if (i % 1000 == 999 || i + 1 == events)
                WriteFile("Data/F" + std::to_string(1000 + i / 1000) + ".event", text);
        }
    }

    void WriteFile(const std::string& name, std::string& text) {
        Folder.Write(name, text);
        Bytes += text.size();
        Names.push_back(name);
        text.clear();
    }

    static clsEvent MakeEvent() {
        clsEvent event;
        event.Title = "Strange lights over the moons";
        for (int i = 0; i < 14; ++i)
            event.Description += "Something bright circles the planet. ";
        event.Image = "Gfx\\\\Raid.pcx";
        event.GoodOption = std::string(90, 'g');
        event.NeutralOption = std::string(80, 'n');
        event.EvilOption = std::string(90, 'e');
        event.MoralityWeight = 3;
        return event;
    }

    TempFolder Folder;
    clsEvent Event = MakeEvent();
    std::vector<std::string> Names;
    std::size_t Bytes = 0;
};

const Game& GameOf(std::size_t events) {
    static std::map<std::size_t, std::unique_ptr<Game>> games;
    auto& game = games[events];
    if (!game)
        game = std::make_unique<Game>(events);
    return *game;
}

double ScanSeconds(const Game& game) {
    const double start = Seconds();
    for (const std::string& name : game.Names) {
        const std::string bytes = Files::ReadWhole(game.Folder / name);
        std::size_t lines = 0;
        for (std::string_view rest = bytes; const void* end = std::memchr(rest.data(), '\n', rest.size());
             ++lines)
            rest.remove_prefix(static_cast<std::size_t>(static_cast<const char*>(end) - rest.data()) + 1);
        benchmark::DoNotOptimize(lines);
    }
    return Seconds() - start;
}

/// Peak of the resident memory since the last reset, in bytes.
double PeakMemory() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return 1024 * std::stod(line.substr(6));
    return 0;
}
void ResetPeakMemory() {
    malloc_trim(0); // what earlier runs have freed is not theirs to count
    std::ofstream("/proc/self/clear_refs") << "5";
}

struct Discard : std::streambuf {
    int overflow(int c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

void Velwriter(benchmark::State& state, const char* command) {
    const Game& game = GameOf(static_cast<std::size_t>(state.range(0)));
    Discard nowhere;
    std::ostream out(&nowhere);
    ScanSeconds(game); // finds the files uncached
    const double scan = ScanSeconds(game);
    ResetPeakMemory();
    const double start = Seconds();
    for (auto _ : state) {
        if (RunVelwriter({command, game.Folder.Path(), "--kind", "events"}, out, out) != 0)
            state.SkipWithError("the game is not sound");
    }
    state.counters["ratio_to_scan"] = (Seconds() - start) / static_cast<double>(state.iterations()) / scan;
    state.counters["MB"] = static_cast<double>(game.Bytes) / 1e6;
    state.counters["peak_MB"] = PeakMemory() / 1e6;
    state.SetBytesProcessed(static_cast<std::int64_t>(game.Bytes) * state.iterations());
}

BENCHMARK_CAPTURE(Velwriter, check, "check")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Velwriter, export, "export")
    ->Arg(1000)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace velmora

BENCHMARK_MAIN();
