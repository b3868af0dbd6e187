// How long looking up words takes, of a record on show and of a whole library.
#include "BenchLibrary.h"
#include "Measure.h"

#include "events/clsEvent.h"
#include "kinds/Spelling.h"
#include "services/Catalogues.h"

#include <QtGlobal>

namespace velmora {
namespace {

/// A spelling that knows the names of a library, whose words it has yet to look up.
std::unique_ptr<Spelling> SpellingOf(const Library& library) {
    qunsetenv("DICPATH"); // the windows' benchmarks hide the dictionaries
    auto spelling = std::make_unique<Spelling>();
    spelling->LearnVocabulary();
    spelling->Learn(library);
    return spelling;
}

void SpellLibrary(benchmark::State& state) {
    BuildCatalogues();
    Library library(EventKind);
    LoadInto(library, LibraryOf(static_cast<std::size_t>(state.range(0))));
    std::unique_ptr<Spelling> spelling = SpellingOf(library);
    if (!spelling->Trouble().empty())
        return state.SkipWithError(spelling->Trouble().c_str());
    std::vector<Problem> notes;
    const auto check = [&] {
        notes.clear();
        for (const auto& [name, record] : library)
            spelling->Check(EventKind, record, notes);
    };
    const double least = LeastTime(check, [&] { spelling = SpellingOf(library); });
    if (spelling->Knows("xyzzq")) // the generated texts hold no unknown word
        return state.SkipWithError("nothing was looked up");
    Tell(state, least, {.Milliseconds = 10'000});
}
VELMORA_MEASURE(SpellLibrary);

/// All words of a record for the first time.
void SpellRecord(benchmark::State& state) {
    BuildCatalogues();
    Library library(EventKind);
    LoadInto(library, LibraryOf(static_cast<std::size_t>(state.range(0))));
    std::unique_ptr<Spelling> spelling;
    std::vector<Problem> notes;
    const double least = LeastTime([&] { spelling->Check(EventKind, library.At(0), notes); },
                                   [&] { spelling = SpellingOf(library); });
    if (!spelling->Trouble().empty())
        return state.SkipWithError(spelling->Trouble().c_str());
    Tell(state, least, {.Milliseconds = 16});
}
VELMORA_MEASURE(SpellRecord);

} // namespace
} // namespace velmora
