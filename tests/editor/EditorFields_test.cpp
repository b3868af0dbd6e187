// What the fields of every editor do alike, its zoom dialog, and the names that failures are reported under.
#include "editor/Editors.h"
#include "editor/ModalAnswers.h"
#include "editor/frmZoomTo.h"

#include <QAbstractItemView>
#include <QCompleter>

namespace velmora {
namespace {

class EditorFields : public EditorTest {
  protected:
    /// The length of a text after typing at its end.
    std::size_t LengthAfterTyping(const std::string& box) {
        Pick(editItem);
        Enter(box);
        for (const auto modifier : {Qt::NoModifier, Qt::ControlModifier})
            QTest::keyClick(Get<QWidget>(box), Qt::Key_End, modifier);
        QTest::keyClicks(Get<QWidget>(box), QStringLiteral("more"));
        const std::size_t length = Text(box).size();
        Pick("mnuDiscardChanges");
        return length;
    }
    /// What is typed replaces the whole text, for entering a box selects it.
    void TypeOver(const std::string& box, const char* keys) {
        Enter(box);
        QTest::keyClicks(Get<QWidget>(box), QString::fromLatin1(keys));
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

TEST_P(EditorFields, AreAllOnShowBeforeANoticeOfOneOfThem) {
    struct : ScriptedPrompts {
        std::function<std::string()> Look;
        void Message(const std::string&, Icon, const std::string&) override { Transcript.push_back(Look()); }
    } watching;
    watching.Look = [this] { return Shown() + Text(fileBox); };
    const LongText& text = editor.LongTexts.front();
    Put("B", Block("Banana", text.Key, std::string(text.Limit + 1, 'x')));
    Start();
    Click("cmdBack");
    EXPECT_THAT(watching.Transcript, ElementsAre("Banana, 3 of 3, " + FileName("B")));
}

TEST_P(EditorFields, AreEachBoundToTheirControl) {
    Start();
    const auto& form = static_cast<EditorWindow&>(*window).Fields();
    for (const Field& field : editor.Records->Fields) {
        QWidget* control = form.ControlOf(field.Property);
        ASSERT_TRUE(control) << field.Property;
        EXPECT_EQ(form.BindingOf(control)->Shown, &field);
        EXPECT_FALSE(control->isHidden()) << field.Property;
    }
    Strings changed;
    QObject::connect(&form, &velmora::Form::Changed, [&](const Binding& binding) {
        changed.push_back(std::string(binding.Shown->Property) + ": " + binding.Text());
    });
    Click("cmdForward");
    EXPECT_THAT(changed, IsEmpty()) << "by showing another record";
    Pick(editItem);
    Type(textField, QStringLiteral("x"));
    EXPECT_EQ(changed.back(), editor.LongTexts[0].Key + ": x");
    Choose(fileBox, FileName("B"));
    EXPECT_EQ(changed.back(), "ShortName: " + FileName("B"));
    for (const Binding& binding : form.Bindings()) {
        const std::string before = binding.Text();
        binding.SetText(before);
        EXPECT_EQ(binding.Text(), before) << binding.Shown->Property;
    }
}

TEST_P(EditorFields, CheckALongTextOnLeaving) {
    Start();
    Pick(editItem);
    for (const LongText& text : editor.LongTexts) {
        SCOPED_TRACE(text.Box);
        TypeOver(text.Box, "a\"b");
        QTest::keyClick(Get<QWidget>(text.Box), Qt::Key_Return);
        EXPECT_EQ(Text(text.Box), "a'b");
        const std::string most(text.Limit - 1, 'x');
        for (const auto& [typed, left] : {std::pair{"x", "x"}, std::pair{"%", "%%"}}) {
            SetText(text.Box, most + typed);
            Enter(text.Box);
            Enter(editor.NumberFields[0]);
            EXPECT_EQ(Text(text.Box), most + left);
        }
        EXPECT_THAT(prompts.TakeTranscript(), ElementsAre("Message[Exclamation]: " + text.Label +
                                                          " text length (" + std::to_string(text.Limit + 1) +
                                                          ") higher than maximum recommended length (" +
                                                          std::to_string(text.Limit) + ")!"));
    }
}

TEST_P(EditorFields, HoldTheFocusUntilTheyAreNumbers) {
    Start();
    Pick(editItem);
    for (const std::string& number : editor.NumberFields) {
        SCOPED_TRACE(number);
        TypeOver(number, "x");
        EXPECT_EQ(Text(number), "x");
        for (const char* refused : {"x", ""}) {
            Type(number, QString::fromLatin1(refused));
            Get<QWidget>(textField)->setFocus();
            EXPECT_TRUE(Get<QWidget>(number)->hasFocus());
            EXPECT_THAT(prompts.TakeTranscript(),
                        ElementsAre("Message: Sorry, this field must contain a numeric value"));
        }
        Type(number, QStringLiteral("-2.5"));
    }
    Pick("mnuCommitChanges");
    for (const std::string& number : editor.NumberFields)
        EXPECT_EQ(Text(number), "-2") << number;
    EXPECT_THAT(prompts.Transcript, IsEmpty());
}

TEST_P(EditorFields, AreCheckedAfterAVisitToTheMenusAndDropTheClickThatLeaves) {
    Start();
    Pick(editItem);
    const std::string number = editor.NumberFields[0];
    const std::string subs = events ? "cboDescStr_0" : "cboUPIssueSubs_0";
    TypeOver(number, "x");
    QTest::keyClick(Get<QWidget>(number), Qt::Key_F, Qt::AltModifier);
    auto* menu = Get<QMenu>("mnuFile");
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(Get<QWidget>(number)->hasFocus());
    EXPECT_THAT(prompts.Transcript, IsEmpty()) << "not yet left";
    auto* list = Get<ChoiceBox>(subs);
    QTest::mouseClick(list, Qt::LeftButton);
    EXPECT_EQ(prompts.Transcript.size(), 1u);
    EXPECT_TRUE(Get<QWidget>(number)->hasFocus());
    EXPECT_FALSE(list->view()->isVisible());
    TypeOver(number, "1");
    QCoreApplication::processEvents();
    QTest::mouseClick(list, Qt::LeftButton);
    EXPECT_TRUE(list->view()->isVisible());
    list->hidePopup();
}

TEST_P(EditorFields, AreShownByTheZoomDialogsChoice) {
    Put("C", "");
    Start();
    Click("cmdForward");
    const auto zoom = [this](const std::string& item, const std::string& chosen) {
        Strings seen;
        ModalAnswers answers;
        answers.Expect<frmZoomTo>([&](frmZoomTo& dialog) {
            auto* box = dialog.findChild<ChoiceBox*>(QStringLiteral("cboZoomTo"));
            auto* blurb = dialog.findChild<QLabel*>(QStringLiteral("lblBlurb"));
            seen = {FromQt(dialog.windowTitle()), box->Chosen(), FromQt(blurb->text())};
            box->setCurrentIndex(box->findText(ToQt(chosen)));
            seen.push_back(FromQt(blurb->text()));
            dialog.findChild<QAbstractButton*>(QStringLiteral("cmdGo"))->click();
        });
        Pick(item);
        seen.push_back(Shown());
        return seen;
    };
    const std::string byName = "Zoom To " + title + " Name";
    EXPECT_THAT(zoom("mnuZoomTo", "Banana"),
                ElementsAre(byName, "Cherry", "about Cherry", "about Banana", "Banana, 3 of 3, "));
    const std::string byFile = "Zoom To " + title + " File";
    const std::string contained = title + "s contained in this file:\n";
    const std::string inA = contained + "Apple, Cherry";
    EXPECT_THAT(zoom(zoomFileItem, FileName("A")),
                ElementsAre(byFile, FileName("A"), inA, inA, "Apple, 1 of 3, "));
    EXPECT_THAT(zoom(zoomFileItem, FileName("C")),
                ElementsAre(byFile, FileName("A"), inA, contained, "Apple, 1 of 3, "));
}

TEST_P(EditorFields, FailUnderTheNamesOfTheirRoutines) {
    const LongText& text = editor.LongTexts.back();
    const std::string lengthy = Block("Lengthy", text.Key, std::string(text.Limit + 1, 'x'));
    Put("A", Block("Apple") + lengthy);
    Put("B", "");
    Start();
    for (const std::string& item : Strings{"mnuAddNew", "mnuCopyAsNew", "mnuDelete", "mnuRenameThisFile",
                                           moveItem, "mnuViewInstructionsFile"})
        ExpectFailureRoads({{item}});
    for (const std::string& item : editor.ReviewItems)
        ExpectFailureRoads({{item, {"DisplayReview"}}});
    prompts.ExpectAsk("", true);
    Pick("mnuDelete");
    ExpectFailureRoads({{"mnuWriteToFile", {"WriteToFile"}}});
    Pick("mnuDelete");
    for (const char* button : {"cmdForward", "cmdBack"}) {
        ExpectFailureRoads({{button, {"PopulateForm"}}});
        EXPECT_EQ(Text(nameBox), "Lengthy") << "it is on show all the same";
        Click(button);
    }
    prompts.ExpectAsk("", true);
    window->close();
    Put("A", lengthy);
    Reopen();
    ExpectFailureRoads({{"mnuSortAlphabetically", {"SortBy", "PopulateForm"}},
                        {sortByFileItem, {"SortBy", "PopulateForm"}}});
}

TEST_P(EditorFields, AreFoundByAPartOfANameInALongList) {
    std::string many;
    for (int i = 0; i < 200; ++i)
        many += Block("Event" + std::to_string(i));
    Put("C", many);
    for (int i = 0; i < 40; ++i)
        Put("File" + std::to_string(i), "");
    Start();
    Pick(editItem);
    Enter(fileBox);
    QTest::keyClicks(Get<QWidget>(fileBox), QStringLiteral("le31"));
    Pick("mnuCommitChanges");
    EXPECT_EQ(window->Records().Find("Apple")->ShortName, FileName("File31"));
    ModalAnswers answers;
    answers.Expect<frmZoomTo>([](frmZoomTo& dialog) {
        auto* box = dialog.findChild<ChoiceBox*>(QStringLiteral("cboZoomTo"));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("t177"));
        ASSERT_TRUE(box->completer()->popup()->isVisible());
        QTest::keyClick(box->completer()->popup(), Qt::Key_Return);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    });
    Pick("mnuZoomTo");
    EXPECT_EQ(Shown(), "Event177, 181 of 203, ");
}

INSTANTIATE_TEST_SUITE_P(Editors, EditorFields, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
