// What finding records takes that match a filter.
#include "BenchLibrary.h"
#include "Measure.h"

#include "records/Search.h"

namespace velmora {
namespace {

/// The whole of a search for a line.
void Filtering(benchmark::State& state, const char* line) {
    Library library(EventKind);
    LoadInto(library, LibraryOf(static_cast<std::size_t>(state.range(0))));
    Search search(library);
    const Work whole = [&] {
        search.Begin(Filter(line));
        while (!search.Work(std::chrono::milliseconds(8))) {
        }
    };
    Tell(state, LeastTime(whole, [&] { search.Begin(Filter()); }), {.Milliseconds = 150});
}

/// A word that is nowhere: every byte is looked at.
void FilterNowhere(benchmark::State& state) {
    Filtering(state, "xylophone");
}
VELMORA_MEASURE(FilterNowhere);

/// One of the letters that are met most often.
void FilterCommon(benchmark::State& state) {
    Filtering(state, "seat");
}
VELMORA_MEASURE(FilterCommon);

/// Several words, and numbers.
void FilterWords(benchmark::State& state) {
    Filtering(state, "the -nothing 12345");
}
VELMORA_MEASURE(FilterWords);

} // namespace
} // namespace velmora
