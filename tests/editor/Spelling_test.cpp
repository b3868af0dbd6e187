// Unknown words: marked in the boxes, noted among the problems, listed, and made known.
#include "ScratchRegistry.h"
#include "editor/Editors.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QTreeWidget>

namespace velmora {
namespace {

class SpellingTest : public EditorTest {
  protected:
    SpellingTest() : before(qgetenv("DICPATH")) {
        SetEnvironment("DICPATH", temp / "Dictionaries");
        for (const std::string name : {"en_US", "en_GB"}) {
            temp.Write("Dictionaries/" + name + ".aff", "SET UTF-8\nTRY esianrtolcdugmphbyfvkwz\n");
            temp.Write("Dictionaries/" + name + ".dic",
                       "9\nabout\nship\nyes\ntalk\nwait\nraid\nback\ntitle\nanomaly\n");
        }
    }
    ~SpellingTest() override { SetEnvironment("DICPATH", before.toStdString()); }

    Strings Marked() {
        Strings marked;
        const auto* box = Get<TextBox>(textField);
        for (const auto& range : box->Marked(TextMark::Misspelled))
            marked.push_back(box->Bytes().substr(static_cast<std::size_t>(range.start),
                                                 static_cast<std::size_t>(range.length)));
        return marked;
    }
    template <class Condition>
    static void Await(const Condition& condition) {
        EXPECT_TRUE(QTest::qWaitFor(condition));
    }
    /// The context menu of the text at its caret; what it offers of these, and picks one of them.
    Strings Offered(const char* name, bool pick) {
        auto* box = Get<TextBox>(textField);
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QApplication::sendEvent(box, &event);
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        Strings offered;
        for (QAction* action : menu ? menu->actions() : QList<QAction*>())
            if (action->objectName() == QLatin1String(name)) {
                offered.push_back(FromQt(action->text()));
                if (pick && offered.size() == 1)
                    action->trigger();
            }
        if (menu)
            menu->close();
        return offered;
    }
    std::string Label() { return Text("lblSpelling"); }
    const std::string key = editor.LongTexts[0].Key;

  private:
    QByteArray before;
};

TEST_P(SpellingTest, MarksUnknownWordsAndOffersWhatWasMeant) {
    Put("A", Block("Apple", key, "about shipp"));
    Start();
    Await([this] { return Marked() == Strings{"shipp"}; });
    Pick(editItem);
    Type(textField, QStringLiteral("Apple %s\\nshipp"));
    EXPECT_THAT(Marked(), ElementsAre("shipp"));
    EXPECT_THAT(Offered("mnuSuggestion", true), ::testing::Contains("ship"));
    EXPECT_EQ(Text(textField), "Apple %s\\nship");
    EXPECT_THAT(Marked(), IsEmpty());
    EXPECT_THAT(Offered("mnuSuggestion", false), IsEmpty());
    Type(textField, QStringLiteral("Zorgon"));
    EXPECT_THAT(Marked(), ElementsAre("Zorgon"));
    EXPECT_THAT(Offered("mnuAddWord", true), ElementsAre("Add \"Zorgon\" To The &Game's Words"));
    EXPECT_THAT(Marked(), IsEmpty());
    EXPECT_EQ(temp.Read("Game/velmora.dic"), "Zorgon\r\n");
    Type(textField, QStringLiteral("shipp"));
    Pick("mnuCheckSpelling");
    EXPECT_THAT(Marked(), IsEmpty());
    Pick("mnuCheckSpelling");
    EXPECT_THAT(Marked(), ElementsAre("shipp"));
    Pick("mnuDiscardChanges");
}

TEST_P(SpellingTest, NotesAndListsThemOverAllRecords) {
    Put("A", Block("Apple", key, "shipp abowt shipp") + Block("Cherry", key, "about shipp"));
    Start();
    Get<QDockWidget>("dckProblems")->show();
    Get<QDockWidget>("dckSpelling")->show();
    Await([this] { return Text("lblProblemCount") == "2 notes"; });
    Await([this] { return Label() == "2 unknown words"; });
    auto* tree = Get<QTreeWidget>("tvwWords");
    Strings rows;
    for (int row = 0; row < tree->topLevelItemCount(); ++row)
        for (int column = 0; column < 3; ++column)
            rows.push_back(FromQt(tree->topLevelItem(row)->text(column)));
    EXPECT_THAT(rows, ElementsAre("abowt", "1", "Apple", "shipp", "3", "Apple, Cherry"));
    tree->setCurrentItem(tree->topLevelItem(1));
    Click("cmdAddWord");
    Await([this] { return Label() == "1 unknown word"; });
    Await([this] { return Text("lblProblemCount") == "1 note"; });
    emit tree->itemActivated(tree->topLevelItem(0), 0);
    EXPECT_EQ(Text(nameBox), "Apple");
    auto* scope = Get<QComboBox>("cboScope");
    auto* fields = Get<QListWidget>("lstFields");
    const auto ticks = [fields] {
        std::vector<Qt::CheckState> states;
        for (int row = 0; row < fields->count(); ++row)
            states.push_back(fields->item(row)->checkState());
        return states;
    };
    const auto usual = ticks();
    scope->setCurrentIndex(2);
    for (int row = 0; row < fields->count(); ++row)
        fields->item(row)->setCheckState(usual[row] == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    tree->setCurrentItem(tree->topLevelItem(0));
    Click("cmdReplaceWord");
    EXPECT_EQ(scope->currentIndex(), 0) << "whatever was looked in before";
    EXPECT_EQ(ticks(), usual);
    EXPECT_EQ(Get<QLineEdit>("txtFind")->text() + Get<QLineEdit>("txtReplace")->text(),
              QStringLiteral("abowtabout"));
    Commit("about ship");
    Await([this] { return Label() == "0 unknown words"; });
    Await([this] { return Text("lblProblemCount") == "No problems"; });
    Write();
}

TEST_P(SpellingTest, KnowsTheNamesThatRecordsHaveNow) {
    Put("A", Block("Apple", key, "about Zorgon"));
    Start();
    Await([this] { return Marked() == Strings{"Zorgon"}; });
    prompts.ExpectInput("", "Zorgon");
    Pick("mnuCopyAsNew");
    Await([this] { return Text(nameBox) == "Zorgon" && Marked().empty(); });
    Pick("mnuDiscardChanges");
    EXPECT_THAT(Marked(), ElementsAre("Zorgon"));
    for (const auto& [name, marked] : {std::pair("Zorgon", Strings{}), {"Cherry", Strings{"Zorgon"}}}) {
        Put("C", Block(name));
        Pick("mnuReadAgain");
        Await([&, &words = marked] { return Marked() == words; });
    }
}

TEST_P(SpellingTest, AddsAllSelectedWordsInOneWrite) {
    Put("A", Block("Apple", key, "shipp abowt"));
    const std::string wide("\xFF\xFEZ\0\n\0", 6);
    temp.Write("Game/velmora.dic", wide);
    Start();
    Get<QDockWidget>("dckSpelling")->show();
    Await([this] { return Label() == "2 unknown words"; });
    Get<QTreeWidget>("tvwWords")->selectAll();
    Click("cmdAddWord");
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_THAT(prompts.Errors[0].Description, HasSubstr("UTF-16"));
    EXPECT_EQ(temp.Read("Game/velmora.dic"), wide);
    Await([this] { return Label() == "2 unknown words"; });
    temp.Write("Game/velmora.dic", "");
    Get<QTreeWidget>("tvwWords")->selectAll();
    Click("cmdAddWord");
    Await([this] { return Label() == "0 unknown words"; });
    EXPECT_EQ(temp.Read("Game/velmora.dic"), "abowt\r\nshipp\r\n");
}

TEST_P(SpellingTest, SaysInOneLineWhatIsMissing) {
    Files::DeleteFile(temp / "Dictionaries/en_GB.dic");
    Start();
    Get<QDockWidget>("dckSpelling")->show();
    Await([this] { return Label().starts_with("There is no dictionary en_GB"); });
    auto* choice = Get<QComboBox>("cboDictionaries");
    choice->setCurrentIndex(choice->findText(QStringLiteral("en_US")));
    emit choice->activated(choice->currentIndex());
    Await([this] { return Label() == "0 unknown words"; });
}

INSTANTIATE_TEST_SUITE_P(Editors, SpellingTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
