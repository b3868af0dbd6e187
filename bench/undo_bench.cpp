// What a person waits for when a step is undone, up to the painted window.
#include "Desk.h"

#include "events/clsEvent.h"

namespace velmora {
namespace {

/// Undoing or doing again a change of the first `records` events.
void Exchanging(benchmark::State& state, std::size_t records, bool undo, Limit must) {
    Desk desk(state);
    desk.OpenEditor();
    const Library& library = desk.Window().Records();
    Edits::Step step(library, "replacement");
    for (std::size_t at = 0; at < std::min(records, library.Count()); ++at) {
        auto& event = static_cast<clsEvent&>(step.Change(library.NameOf(library.At(at))));
        event.Description += '!';
        event.IsDirty = true;
    }
    desk.Window().Changes().Do(std::move(step));
    const auto exchange = [&](bool back) {
        desk.Choose(back ? "mnuUndo" : "mnuRedo");
        Paint(desk.Window());
    };
    if (!undo)
        exchange(true);
    const double least = LeastTime([&] { exchange(undo); },
                                   [&] {
                                       if (desk.Window().Changes().CanUndo() != undo)
                                           exchange(!undo);
                                   });
    if (desk.Window().Changes().CanUndo() == undo)
        return state.SkipWithError("the step was not exchanged");
    desk.Report(state, least, must);
}

void UndoOne(benchmark::State& state) {
    Exchanging(state, 1, true, {.Milliseconds = 16});
}
VELMORA_MEASURE(UndoOne);

void UndoAll(benchmark::State& state) {
    Exchanging(state, static_cast<std::size_t>(state.range(0)), true, {.Milliseconds = 500});
}
VELMORA_MEASURE(UndoAll);

void RedoAll(benchmark::State& state) {
    Exchanging(state, static_cast<std::size_t>(state.range(0)), false, {.Milliseconds = 1000});
}
VELMORA_MEASURE(RedoAll);

} // namespace
} // namespace velmora
