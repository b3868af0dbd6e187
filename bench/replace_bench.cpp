// What finding and replacing take: hits without a window, replacing up to the painted one.
#include "Desk.h"

#include "editor/RegExpMatcher.h"
#include "records/Replacement.h"

namespace velmora {
namespace {

constexpr std::chrono::milliseconds Slice{6};

/// A library and what is to be replaced in it.
struct Bench {
    explicit Bench(const benchmark::State& state) {
        const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
        LoadInto(Loaded, files);
        Context = std::make_shared<CheckContext>(files.Game);
    }
    void Begin(std::shared_ptr<const Matcher> what) {
        Replacement::Request request{std::move(what), {}, {}};
        for (const Field& field : EventKind.Fields)
            if (field.Type == FieldType::Text && field.Property != "Image")
                request.Fields.push_back(&field);
        Found.Begin(std::move(request), Context);
    }
    /// All hits, not yet checked.
    void Find(const std::shared_ptr<const Matcher>& what) {
        Begin(what);
        while (!Found.Found())
            Found.Work(Slice);
    }
    void Check() {
        while (!Found.Work(Slice)) {
        }
    }

    Library Loaded{EventKind};
    Edits Changes{Loaded};
    Replacement Found{Loaded};
    std::shared_ptr<const CheckContext> Context;
};

void Finding(benchmark::State& state, const std::shared_ptr<const Matcher>& what, double must) {
    Bench bench(state);
    Tell(state, LeastTime([&] { bench.Find(what); }), {.Milliseconds = must});
    if (bench.Found.Count() < bench.Loaded.Count() / 2)
        state.SkipWithError("not all hits were found");
}

/// A word that stands in nearly every text.
void FindHits(benchmark::State& state) {
    Finding(state, std::make_shared<TextMatcher>("planet", "world", TextMatcher::How{}), 200);
}
VELMORA_MEASURE(FindHits);

void FindRegExp(benchmark::State& state) {
    Finding(state,
            std::make_shared<RegExpMatcher>(QStringLiteral("\\b(plan|colo)\\w+"), "\\1x", TextMatcher::How{}),
            1000);
}
VELMORA_MEASURE(FindRegExp);

/// The checks of all lines; nobody waits for them.
void CheckHits(benchmark::State& state) {
    Bench bench(state);
    const auto what = std::make_shared<TextMatcher>("planet", "world", TextMatcher::How{});
    Tell(state, LeastTime([&] { bench.Check(); }, [&] { bench.Find(what); }), {});
}
VELMORA_MEASURE(CheckHits);

/// The event editor with the dock that replaces open.
class ReplacingDesk : public Desk {
  public:
    /// Finds a word that stands in nearly every text.
    explicit ReplacingDesk(const benchmark::State& state) : Desk(state) {
        OpenEditor();
        Pick("mnuFindReplace");
        Get<QLineEdit>("txtReplace")->setText(QStringLiteral("world"));
        Get<QLineEdit>("txtFind")->setText(QStringLiteral("planet"));
    }
    void Settle() {
        const auto told = [this] { return Text("lblReplaceState"); };
        while (told().find("searching") != std::string::npos || told().find("checking") != std::string::npos)
            QCoreApplication::processEvents();
    }
    double Replace() {
        Settle();
        return SecondsOf([&] {
            Click("cmdReplace");
            Paint(*window);
        });
    }
    double Undo() {
        Settle();
        return SecondsOf([&] {
            Pick("mnuUndo");
            Paint(*window);
        });
    }
    bool HasReplaced() { return Text("lblReplaceState").starts_with("Replaced"); }
};

/// Replacing in nearly all records, or undoing that, from the button to the painted window.
void Replacing(benchmark::State& state, bool undone) {
    ReplacingDesk desk(state);
    bool done = true;
    const double least = LeastOf([&] {
        const double replacing = desk.Replace();
        done = done && desk.HasReplaced();
        const double undoing = desk.Undo();
        return undone ? undoing : replacing;
    });
    if (!done || desk.Window().Changes().NextRedo().Count() < desk.Events / 2)
        return state.SkipWithError("not all was replaced");
    desk.Report(state, least, {.Milliseconds = undone ? 500.0 : 1000.0});
}

void ReplaceAllHits(benchmark::State& state) {
    Replacing(state, false);
}
VELMORA_MEASURE(ReplaceAllHits);
void UndoReplacing(benchmark::State& state) {
    Replacing(state, true);
}
VELMORA_MEASURE(UndoReplacing);

} // namespace
} // namespace velmora
