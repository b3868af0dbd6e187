// Finding a command, and what is known of each field.
#include "editor/Editors.h"
#include "sbmodules/frmSBModules.h"

#include <QLineEdit>
#include <QTreeWidget>
#include <QWhatsThis>

namespace velmora {
namespace {

class CommandSearchTest : public EditorTest {
  protected:
    /// The rows for some words: "Edit > Undo|Ctrl+Z|why it is off".
    Strings Search(const char* words) {
        Pick("mnuCommandSearch");
        auto* line = Get<QLineEdit>("txtCommand");
        QTest::keyClicks(line, QString::fromLatin1(words));
        Strings rows;
        const auto* list = Get<QTreeWidget>("tvwCommands");
        for (int row = 0; row < list->topLevelItemCount(); ++row)
            if (const QTreeWidgetItem* item = list->topLevelItem(row); !item->isHidden())
                rows.push_back(FromQt(item->text(0) + QLatin1Char('|') + item->text(1) + QLatin1Char('|') +
                                      item->text(2)));
        return rows;
    }
    void Press(Qt::Key key) { QTest::keyClick(Get<QWidget>("txtCommand"), key); }
    void Close() {
        Press(Qt::Key_Escape);
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return !window->findChild<QWidget*>(QStringLiteral("dlgCommandSearch")); }));
    }
};

TEST_P(CommandSearchTest, TellsKeysAndWhyACommandIsOff) {
    Start();
    EXPECT_THAT(Search("undo edit"), ElementsAre("Edit > Undo|Ctrl+Z|Nothing was done that could be undone"));
    Close();
    EXPECT_THAT(Search("COMMIT"), ElementsAre(::testing::EndsWith("|No record is being edited")));
    Press(Qt::Key_Return); // it is off
    EXPECT_TRUE(Get<QWidget>("dlgCommandSearch")->isVisible());
    Close();
    EXPECT_THAT(Search("next hit"), ElementsAre("View > Next Hit|F3|Nothing was found to replace"));
    Close();
    EXPECT_THAT(Search("ctrl+e"), ElementsAre(::testing::EndsWith("|Ctrl+E|")));
    Press(Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window->Mode() == EditMode::Editing; }));
    for (const char* off : {"write to file", "copy as new"}) {
        EXPECT_THAT(Search(off),
                    ElementsAre(::testing::EndsWith("|A record is being edited: commit or discard first")));
        Close();
    }
}

TEST_P(CommandSearchTest, GivesEveryCommandThatIsOffAReason) {
    Start();
    for (const bool editing : {false, true}) {
        if (editing)
            Pick(editItem);
        const Strings rows = Search("");
        EXPECT_THAT(rows, Each(::testing::Not(HasSubstr("Not possible now"))));
        EXPECT_GT(rows.size(), 20u);
        Close();
    }
}

TEST_P(CommandSearchTest, EachFieldSaysWhatItIs) {
    Start();
    for (const Binding& binding : window->Fields().Bindings())
        for (const QWidget* control : binding.Controls)
            EXPECT_FALSE(control->whatsThis().isEmpty()) << binding.Shown->Property;
    const LongText& text = editor.LongTexts[0];
    EXPECT_THAT(FromQt(Get<QWidget>(text.Box)->whatsThis()),
                HasSubstr("Key in the file: " + text.Key + ", a text, shown well up to " +
                          std::to_string(text.Limit) + " characters."));
    Pick("mnuWhatsThis"); // no field has the focus: the next click asks
    EXPECT_TRUE(QWhatsThis::inWhatsThisMode());
    QWhatsThis::leaveWhatsThisMode();
    Pick(editItem);
    Enter(text.Box);
    QTest::keyClick(window.get(), Qt::Key_F1, Qt::ShiftModifier);
    const auto shown = [] {
        for (const QWidget* widget : QApplication::topLevelWidgets())
            if (widget->isVisible() && widget->inherits("QWhatsThat"))
                return true;
        return false;
    };
    EXPECT_TRUE(QTest::qWaitFor(shown));
    QWhatsThis::hideText();
}

INSTANTIATE_TEST_SUITE_P(Editors, CommandSearchTest, EveryEditor, ::testing::PrintToStringParamName());

class ModuleHelpTest : public WindowTest {};

TEST_F(ModuleHelpTest, EachFieldSaysWhatItIs) {
    temp.Write("Game/Data/A.SBModule", "SBMOD 1 Gun\r\nENDSBMOD\r\n");
    Open<frmSBModules>();
    for (const Binding& binding : window->Fields().Bindings())
        EXPECT_FALSE(binding.Controls.front()->whatsThis().isEmpty()) << binding.Shown->Property;
    EXPECT_THAT(FromQt(Get<QWidget>("cboSBModuleID")->whatsThis()), HasSubstr("0 to 140"));
    Pick("mnuCommandSearch");
    EXPECT_TRUE(Get<QWidget>("tvwCommands")->isVisible());
}

} // namespace
} // namespace velmora
