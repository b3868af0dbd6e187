// What a person waits for at each key typed into a text.
#include "Desk.h"

namespace velmora {
namespace {

class TypingDesk : public Desk {
  public:
    /// Opens the preview and begins to edit.
    explicit TypingDesk(const benchmark::State& state) : Desk(state) {
        qunsetenv("DICPATH");
        OpenEditor();
        Get<QWidget>("dckPreview")->show();
        Get<QWidget>("txtPreview")->installEventFilter(&Painted);
        Pick("mnuEditThisEvent");
        Enter("txtGoodOption");
        QTest::keyClick(Get<QWidget>("txtGoodOption"), Qt::Key_End);
        QTest::keyClicks(Get<QWidget>("txtGoodOption"), QStringLiteral(" xyzzq"));
        while (Get<TextBox>("txtGoodOption")->Marked(TextMark::Misspelled).isEmpty())
            QCoreApplication::processEvents(); // the dictionaries are being opened
    }
    /// From a key to the painted window; a letter and taking it back by turns.
    double TypeTime() {
        typed = !typed;
        return SecondsOf([this] {
            QTest::keyClick(Get<QWidget>("txtGoodOption"), typed ? Qt::Key_A : Qt::Key_Backspace);
            QCoreApplication::processEvents();
            Paint(Window());
        });
    }
    std::string Meter() { return Text("lblMeter_1"); }

  private:
    bool typed = false;
};

/// A key in a text, with its meter, its unknown words and the preview.
void TypeWithPreview(benchmark::State& state) {
    TypingDesk desk(state);
    const std::string before = desk.Meter();
    desk.TypeTime();
    if (desk.Meter() == before)
        return state.SkipWithError("the meter did not follow");
    desk.Report(state, LeastOf([&] { return desk.TypeTime(); }), {.Milliseconds = 16});
}
VELMORA_MEASURE(TypeWithPreview);

} // namespace
} // namespace velmora
