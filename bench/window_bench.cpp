// What a person waits for in the event editor, up to the painted window.
#include "Desk.h"

namespace velmora {
namespace {

void FirstWindow(benchmark::State& state) {
    Desk desk(state);
    const double first = desk.FirstWindowTime();
    const double least = LeastOf([&] { return desk.FirstWindowTime(); });
    desk.Report(state, least, {.Milliseconds = 150});
    state.counters["first_ms"] = first * 1e3;
}
VELMORA_MEASURE(FirstWindow);

/// The same with the list of records.
void FirstWindowWithList(benchmark::State& state) {
    Desk desk(state);
    desk.OpenEditor();
    desk.ShowList();
    const double least = LeastOf([&] { return desk.FirstWindowTime(); });
    if (!desk.ListIsShown())
        return state.SkipWithError("the list was not shown");
    desk.Report(state, least, {.Milliseconds = 150});
}
VELMORA_MEASURE(FirstWindowWithList);

/// A letter that is everywhere, or nowhere: the whole result, or the longest time that a key has to wait.
void Filtering(benchmark::State& state, char key, bool whole) {
    Desk desk(state);
    desk.OpenEditor();
    desk.ShowList();
    const double least = LeastOf([&] {
        const auto [all, longest] = desk.FilterTime(key);
        return whole ? all : longest;
    });
    desk.Report(state, least, {.Milliseconds = whole ? 150.0 : 16.0});
}

void FilterLetter(benchmark::State& state) {
    Filtering(state, 's', true);
}
VELMORA_MEASURE(FilterLetter);
void FilterLetterWait(benchmark::State& state) {
    Filtering(state, 's', false);
}
VELMORA_MEASURE(FilterLetterWait);
void FilterFew(benchmark::State& state) {
    Filtering(state, 'z', true);
}
VELMORA_MEASURE(FilterFew);
void FilterFewWait(benchmark::State& state) {
    Filtering(state, 'z', false);
}
VELMORA_MEASURE(FilterFewWait);

void Show(benchmark::State& state) {
    Desk desk(state);
    EventEditor& editor = desk.OpenEditor();
    const double least = LeastTime([&] {
        editor.PopulateForm(desk.Next());
        Paint(editor);
    });
    desk.Report(state, least, {.Milliseconds = 16});
}
VELMORA_MEASURE(Show);

void Next(benchmark::State& state) {
    Desk desk(state);
    EventEditor& editor = desk.OpenEditor();
    std::size_t presses = 0;
    const double least = LeastTime([&] {
        ++presses;
        QTest::keyClick(&editor, Qt::Key_Right, Qt::AltModifier);
        Paint(editor);
    });
    if (editor.CurrentIndex() != presses % desk.Events)
        return state.SkipWithError("the key did not lead on");
    desk.Report(state, least, {.Milliseconds = 16});
}
VELMORA_MEASURE(Next);

/// The problems of a whole library after loading, or the longest time that a key has to wait meanwhile.
void Checking(benchmark::State& state, bool whole) {
    Desk desk(state);
    desk.ShowProblems();
    const double least = LeastOf([&] {
        static_cast<EventEditor&>(desk.Window()).InitForm();
        const auto [all, longest] = desk.CheckAll();
        return whole ? all : longest;
    });
    if (desk.ProblemLabel() != std::to_string(desk.Events) + " errors")
        return state.SkipWithError("not all problems were found");
    desk.Report(state, least, {.Milliseconds = whole ? 1000.0 : 16.0});
}

void Problems(benchmark::State& state) {
    Checking(state, true);
}
VELMORA_MEASURE(Problems);
void ProblemsWait(benchmark::State& state) {
    Checking(state, false);
}
VELMORA_MEASURE(ProblemsWait);

void NextProblem(benchmark::State& state) {
    Desk desk(state);
    desk.ShowProblems();
    RecordWindow& editor = desk.Window();
    std::size_t presses = 0;
    const double least = LeastTime([&] {
        ++presses;
        QTest::keyClick(&editor, Qt::Key_F4);
        Paint(editor);
    });
    if (editor.CurrentIndex() != (presses - 1) % desk.Events)
        return state.SkipWithError("the key did not lead on");
    desk.Report(state, least, {.Milliseconds = 16});
}
VELMORA_MEASURE(NextProblem);

void Zoom(benchmark::State& state, const char* item) {
    Desk desk(state);
    desk.OpenEditor();
    desk.Painted.Count = 0;
    const double least = LeastOf([&] { return desk.ZoomTime(item); });
    desk.Report(state, least, {.Milliseconds = 16});
}

void ZoomToName(benchmark::State& state) {
    Zoom(state, "mnuZoomTo");
}
VELMORA_MEASURE(ZoomToName);

void ZoomToFile(benchmark::State& state) {
    Zoom(state, "mnuZoomToEventFile");
}
VELMORA_MEASURE(ZoomToFile);

} // namespace
} // namespace velmora
