// What a person waits for in the event editor, up to the painted window.
#include "BenchLibrary.h"
#include "Measure.h"

#include "editor/EditorFixture.h"
#include "events/frmEvents.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <QWindow>
#include <filesystem>

namespace velmora {
namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Tells how long libraries took to load.
struct TimingPrompts : ScriptedPrompts {
    struct Loading : Progress {
        explicit Loading(double& sum) : total(sum) {}
        ~Loading() override { total += SecondsSince(start); }
        void Working(const std::string& /*item*/, std::size_t /*done*/, std::size_t /*total*/) override {}
        double& total;
        Clock::time_point start = Clock::now();
    };
    std::unique_ptr<Progress> StartProgress(const std::string& /*title*/) override {
        return std::make_unique<Loading>(LoadingTime);
    }
    double LoadingTime = 0;
};

struct EventEditor : frmEvents {
    using frmEvents::InitForm;
    using frmEvents::PopulateForm;
};

/// Counts the paintings of a widget and tells when its window had been painted the first time.
struct PaintCount : QObject {
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint && Count++ == 0)
            QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
        return false;
    }
    bool event(QEvent* event) override {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        First = Clock::now();
        return true;
    }
    int Count = 0;
    Clock::time_point First{};
};

/// Lays out and paints a window as a whole, here and now.
void Paint(QWidget& window) {
    while (!window.windowHandle()->isExposed())
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    window.repaint();
}

class Desk : public WindowTest {
  public:
    explicit Desk(const benchmark::State& state) : Events(static_cast<std::size_t>(state.range(0))) {
        Settings.SetGamePath(LibraryOf(Events).Game);
    }
    void TestBody() override {}

    EventEditor& OpenEditor() {
        window = std::make_unique<EventEditor>();
        Reopen();
        auto& editor = static_cast<EventEditor&>(*window);
        Paint(editor);
        Get<QWidget>("lblWhereWeAt")->installEventFilter(&Painted);
        return editor;
    }

    /// From the making of the window to its first painting with a record, the loading left out.
    double FirstWindowTime() {
        window.reset();
        timing.LoadingTime = 0;
        PaintCount painted;
        const auto start = Clock::now();
        window = std::make_unique<EventEditor>();
        Get<QWidget>("lblWhereWeAt")->installEventFilter(&painted);
        window->Open();
        // Not until all is quiet: once painted, the window looks for changes made by other programs.
        while (painted.First == Clock::time_point{})
            QCoreApplication::processEvents();
        Painted.Count += painted.Count;
        return std::chrono::duration<double>(painted.First - start).count() - timing.LoadingTime;
    }

    RecordWindow& Window() { return *window; }
    std::string ProblemLabel() { return Text("lblProblemCount"); }

    /// Opens the list of records, as every later window of this desk.
    void ShowList() {
        Pick("mnuFilterRecords");
        window->close();
        OpenEditor();
        Pick("mnuFilterRecords");
        Get<QWidget>("tvwRecords")->installEventFilter(&Painted);
    }

    bool ListIsShown() { return Get<QWidget>("tvwRecords")->isVisible(); }

    /// From a key in the filter to the whole result, painted; the longest wait of another key meanwhile.
    std::pair<double, double> FilterTime(char key) {
        auto* filter = Get<QLineEdit>("txtFilter");
        filter->clear();
        const auto settle = [&] {
            double longest = 0;
            while (Text("lblFilterCount").find("...") != std::string::npos)
                longest = std::max(longest, SecondsOf([] { QCoreApplication::processEvents(); }));
            return longest;
        };
        settle();
        const auto start = Clock::now();
        QTest::keyClick(filter, key);
        Paint(*window);
        const double first = SecondsSince(start);
        const double longest = std::max(first, settle());
        return {SecondsSince(start), longest};
    }

    /// Opens the list of problems over the same events without their pictures, so that each has one.
    void ShowProblems() {
        Files::CreateFolder(temp / "Bare");
        std::filesystem::create_directory_symlink(Files::HostPath(LibraryOf(Events).Folder),
                                                  Files::HostPath(temp / "Bare/Data"));
        Settings.SetGamePath(temp / "Bare/");
        OpenEditor();
        Get<QWidget>("dckProblems")->show();
        Get<QWidget>("tvwProblems")->installEventFilter(&Painted);
        CheckAll();
    }
    /// From the end of loading until all problems are listed; the longest wait of a key meanwhile.
    std::pair<double, double> CheckAll() {
        double longest = 0;
        const auto start = Clock::now();
        while (Text("lblProblemCount").find("checking") != std::string::npos)
            longest = std::max(longest, SecondsOf([] { QCoreApplication::processEvents(); }));
        return {SecondsSince(start), longest};
    }

    double ZoomTime(const char* item) {
        double seconds = 0;
        const auto start = Clock::now();
        QTimer::singleShot(0, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            dialog->findChild<QLabel*>(QStringLiteral("lblBlurb"))->installEventFilter(&Painted);
            Paint(*dialog);
            seconds = SecondsSince(start);
            dialog->close();
        });
        Pick(item);
        return seconds;
    }

    /// Another record each time, of another file.
    std::size_t Next() { return position = (position + 7919) % Events; }

    void Report(benchmark::State& state, double seconds, Limit must) const {
        if (Painted.Count == 0)
            return state.SkipWithError("nothing was painted");
        Tell(state, seconds, must);
    }

    const std::size_t Events;
    PaintCount Painted;

  private:
    TimingPrompts timing;
    std::size_t position = 0;
};

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
