#pragma once

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

using Clock = std::chrono::steady_clock;

inline double SecondsSince(Clock::time_point start) {
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
inline void Paint(QWidget& window) {
    while (!window.windowHandle()->isExposed())
        QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents();
    window.repaint();
}

/// The event editor over a generated library.
class Desk : public WindowTest {
  public:
    explicit Desk(const benchmark::State& state) : Events(static_cast<std::size_t>(state.range(0))) {
        Settings.SetGamePath(LibraryOf(Events).Game);
        qputenv("DICPATH", "/no-dictionaries"); // spelling is measured by itself
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
    void Choose(const char* item) { Pick(item); }
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
        Paint(*window);
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

} // namespace velmora
