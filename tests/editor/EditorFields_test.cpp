// What the fields of every editor do alike, its zoom dialog, and the names that failures are reported under.
#include "editor/Editors.h"
#include "editor/ModalAnswers.h"
#include "editor/frmZoomTo.h"

namespace velmora {
namespace {

class EditorFields : public EditorTest {
  protected:
    /// The length of a text after typing at its end.
    std::size_t LengthAfterTyping(const std::string& box) {
        Pick(editor.EditItem);
        Enter(box);
        for (const auto modifier : {Qt::NoModifier, Qt::ControlModifier})
            QTest::keyClick(Get<QWidget>(box), Qt::Key_End, modifier);
        QTest::keyClicks(Get<QWidget>(box), QStringLiteral("more"));
        const std::size_t length = Text(box).size();
        Pick("mnuDiscardChanges");
        return length;
    }
};

TEST_P(EditorFields, TellOverlongTextsAndLiftTheirLimits) {
    for (const LongText& text : editor.LongTexts) {
        SCOPED_TRACE(text.Box);
        const std::string full(text.Limit, 'x');
        Put("A", Block("Lengthy", text.Key, full + "%") + Block("Full", text.Key, full));
        Start();
        const std::string notice =
            "Message: The original " + text.Subject +
            " is too long and will display poorly in-game.  It has NOT been shortened, but you "
            "really ought to rewrite it.";
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(notice));
        EXPECT_EQ(Text(text.Box), full + "%%");
        EXPECT_EQ(LengthAfterTyping(text.Box), text.Limit + 6);
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(notice)) << "each time it is shown";
        Click("cmdForward");
        EXPECT_EQ(LengthAfterTyping(text.Box), text.Limit);
        EXPECT_THAT(prompts.Transcript, IsEmpty());
    }
}

TEST_P(EditorFields, CheckALongTextOnLeaving) {
    Start();
    Pick(editor.EditItem);
    for (const LongText& text : editor.LongTexts) {
        SCOPED_TRACE(text.Box);
        Type(text.Box, QStringLiteral("a\"b"));
        QTest::keyClick(Get<QWidget>(text.Box), Qt::Key_Return);
        EXPECT_EQ(Text(text.Box), "a'b");
        const std::string most(text.Limit - 1, 'x');
        for (const auto& [typed, left] : {std::pair{"x", "x"}, std::pair{"%", "%%"}}) {
            SetText(text.Box, most + typed);
            Enter(text.Box);
            Enter(editor.NumberFields[0]);
            EXPECT_EQ(Text(text.Box), most + left);
        }
        const std::string limit = std::to_string(text.Limit);
        EXPECT_THAT(prompts.TakeTranscript(),
                    ElementsAre("Message[Exclamation]: " + text.Label + " text length (" +
                                std::to_string(text.Limit + 1) +
                                ") higher than maximum recommended length (" + limit + ")!"));
    }
}

TEST_P(EditorFields, HoldTheFocusUntilTheyAreNumbers) {
    Start();
    Pick(editor.EditItem);
    for (const std::string& number : editor.NumberFields) {
        SCOPED_TRACE(number);
        for (const char* refused : {"", "x"}) {
            Type(number, QString::fromLatin1(refused));
            Get<QWidget>(editor.TextField)->setFocus();
            EXPECT_TRUE(Get<QWidget>(number)->hasFocus());
            EXPECT_THAT(prompts.TakeTranscript(),
                        ElementsAre("Message: Sorry, this field must contain a numeric value"));
        }
        Type(number, QStringLiteral("-2.5"));
        Enter(editor.TextField);
    }
    Pick("mnuCommitChanges");
    for (const std::string& number : editor.NumberFields)
        EXPECT_EQ(Text(number), "-2") << number;
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_P(EditorFields, SelectTheirTextsOnEntry) {
    Start();
    Pick(editor.EditItem);
    for (const LongText& text : editor.LongTexts) {
        Enter(text.Box);
        auto* box = Get<QWidget>(text.Box);
        auto* lines = qobject_cast<TextBox*>(box);
        EXPECT_EQ(
            FromQt(lines ? lines->textCursor().selectedText() : qobject_cast<LineBox*>(box)->selectedText()),
            Text(text.Box))
            << text.Box;
    }
    for (const std::string& number : editor.NumberFields) {
        Enter(number);
        EXPECT_EQ(FromQt(Get<LineBox>(number)->selectedText()), Text(number)) << number;
    }
}

TEST_P(EditorFields, AreShownByTheZoomDialogsChoice) {
    Put("C", "");
    Start();
    Click("cmdForward");
    const std::string contained = editor.Title + "s contained in this file:\n";
    struct {
        std::string Item;
        std::string What;
        std::string First;
        std::string FirstBlurb;
        std::string Chosen; ///< empty closes the dialog
        std::string Blurb;
        std::string Shown;
    } const cases[]{
        {"mnuZoomTo", "Name", "Cherry", "about Cherry", "Banana", "about Banana", "Banana, 3 of 3, "},
        {"mnuZoomTo", "Name", "Banana", "about Banana", "", "", "Banana, 3 of 3, "},
        {zoomFileItem, "File", FileName("A"), contained + "Apple, Cherry", FileName("A"),
         contained + "Apple, Cherry", "Apple, 1 of 3, "},
        {zoomFileItem, "File", FileName("A"), contained + "Apple, Cherry", FileName("B"),
         contained + "Banana", "Banana, 3 of 3, "},
        {zoomFileItem, "File", FileName("A"), contained + "Apple, Cherry", FileName("C"), contained,
         "Banana, 3 of 3, "},
    };
    for (const auto& zoom : cases) {
        ModalAnswers answers;
        answers.Expect<frmZoomTo>([&](frmZoomTo& dialog) {
            auto* box = dialog.findChild<ChoiceBox*>(QStringLiteral("cboZoomTo"));
            auto* blurb = dialog.findChild<QLabel*>(QStringLiteral("lblBlurb"));
            EXPECT_EQ(FromQt(dialog.windowTitle()), "Zoom To " + editor.Title + " " + zoom.What);
            EXPECT_EQ(box->Chosen() + ": " + FromQt(blurb->text()), zoom.First + ": " + zoom.FirstBlurb);
            if (zoom.Chosen.empty()) {
                dialog.close();
                return;
            }
            box->setCurrentIndex(box->findText(ToQt(zoom.Chosen)));
            EXPECT_EQ(FromQt(blurb->text()), zoom.Blurb);
            dialog.findChild<QAbstractButton*>(QStringLiteral("cmdGo"))->click();
        });
        Pick(zoom.Item);
        EXPECT_EQ(Shown(), zoom.Shown) << zoom.Item << " " << zoom.Chosen;
    }
}

TEST_P(EditorFields, FailUnderTheNamesOfTheirRoutines) {
    const LongText& text = editor.LongTexts.back();
    const std::string lengthy = Block("Lengthy", text.Key, std::string(text.Limit + 1, 'x'));
    Put("A", Block("Apple") + lengthy);
    Put("B", "");
    Start();
    ExpectFailureRoads({{"cmdForward", {"PopulateForm"}},
                        {"cmdBack", {"PopulateForm"}},
                        {"mnuAddNew"},
                        {"mnuCopyAsNew"},
                        {"mnuDelete"},
                        {"mnuRenameThisFile"},
                        {moveItem},
                        {"mnuViewInstructionsFile"}});
    for (const std::string& item : editor.ReviewItems)
        ExpectFailureRoads({{item, {"DisplayReview"}}});
    Pick(editor.EditItem);
    ReleaseCatalogues();
    ExpectFailureRoads({{"mnuCommitChanges", {"Save" + editor.Word}}});
    BuildCatalogues();
    Pick("mnuDiscardChanges");
    prompts.ExpectAsk("", true);
    Pick("mnuDelete");
    ExpectFailureRoads({{"mnuWriteToFile", {"WriteToFile"}}});
    Pick("mnuDelete");
    prompts.ExpectAsk("", true);
    window->close();
    Put("A", lengthy);
    Reopen();
    ExpectFailureRoads({{"mnuSortAlphabetically", {"SortBy", "PopulateForm"}},
                        {editor.SortByFileItem, {"SortBy", "PopulateForm"}}});
}

INSTANTIATE_TEST_SUITE_P(Editors, EditorFields, EveryEditor, NameOfEditor);

} // namespace
} // namespace velmora
