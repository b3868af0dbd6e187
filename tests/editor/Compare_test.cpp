// File, Compare With Folder: what another folder has differently, seen by field and taken in one step.
#include "editor/Editors.h"
#include "editor/ModalAnswers.h"

#include <QLabel>
#include <QPushButton>
#include <QTreeView>

namespace velmora {
namespace {

class CompareTest : public EditorTest {
  protected:
    void PutThere(const std::string& base, const std::string& text) {
        temp.Write(other + FileName(base), text);
    }
    /// Picks a folder; the dialog that shows the differences is answered by `answer`.
    void CompareWith(const std::string& folder, const std::function<void(QDialog&)>& answer) {
        prompts.ExpectPickFolder("Compare with a folder", temp / folder);
        ModalAnswers answers;
        if (answer)
            answers.Expect<QDialog>(answer);
        Pick("mnuCompareWith");
        window->activateWindow(); // as a window manager would
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    static QTreeView& TreeOf(const QDialog& dialog) {
        return *dialog.findChild<QTreeView*>(QStringLiteral("tvwCompare"));
    }
    static std::string StateOf(const QDialog& dialog) {
        return FromQt(dialog.findChild<QLabel*>(QStringLiteral("lblCompareState"))->text());
    }
    static void Press(QDialog& dialog, const char* button) {
        QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
    }
    /// "changed: Apple (1) > Title | about Apple | sweet | note", and "[ ]" or "[x]" before what can be
    /// ticked.
    static Strings RowsOf(const QDialog& dialog) {
        const auto& model = *TreeOf(dialog).model();
        Strings rows;
        for (int group = 0; group < model.rowCount(); ++group) {
            const QModelIndex above = model.index(group, 0);
            for (int row = 0; row < model.rowCount(above); ++row) {
                std::string text = FromQt(above.data().toString()) + " >";
                for (int column = 0; column < model.columnCount(); ++column)
                    text += (column == 0 ? " " : " | ") +
                            FromQt(model.index(row, column, above).data().toString());
                const QModelIndex line = model.index(row, 0, above);
                const bool ticked = line.data(Qt::CheckStateRole).toInt() == Qt::Checked;
                const bool tickable = line.flags().testFlag(Qt::ItemIsUserCheckable);
                rows.push_back((!tickable ? "" : ticked ? "[x] " : "[ ] ") + text);
            }
        }
        return rows;
    }
    /// Ticks a row by its key, as those do who use no mouse.
    static void TickRow(QDialog& dialog, const std::string& group, int row = -1) {
        QTreeView& tree = TreeOf(dialog);
        const auto found = tree.model()->match(tree.model()->index(0, 0), Qt::DisplayRole, ToQt(group), 1,
                                               Qt::MatchStartsWith);
        ASSERT_FALSE(found.isEmpty()) << group;
        tree.setCurrentIndex(row < 0 ? found[0] : tree.model()->index(row, 0, found[0]));
        QTest::keyClick(&tree, Qt::Key_Space);
    }

    const std::string other = "Other" + editor.Folder.substr(4);
    const std::string textKey = editor.LongTexts[0].Key;
    const std::string secondKey = editor.LongTexts[1].Key;
    const std::string secondText = events ? "Talk" : "Yes"; ///< of a sound record
};

TEST_P(CompareTest, TakesFieldsAndWholeRecordsInOneStep) {
    PutThere("A", Block("Apple", textKey, "sweet 5%") + Block("Damson"));
    PutThere("C", Block("Cherry"));
    Start();
    CompareWith("Other/", [&](QDialog& dialog) {
        EXPECT_THAT(
            RowsOf(dialog),
            ElementsAre(StartsWith("[ ] added: Damson (1) > whole record |  | file: A."),
                        "[ ] changed: Apple (1) > " + textKey + " | about Apple | sweet 5%% | ",
                        "[ ] changed: Cherry (1) > file | " + FileName("A") + " | " + FileName("C") + " | ",
                        ::testing::AllOf(StartsWith("removed: Banana (1) > whole record | file: B."),
                                         ::testing::EndsWith(" |  | only here; nothing is deleted"))));
        EXPECT_EQ(StateOf(dialog), "2 changed, 1 only there, 1 only here, 0 the same.");
        auto* take = dialog.findChild<QPushButton*>(QStringLiteral("cmdTake"));
        EXPECT_FALSE(take->isEnabled()) << "nothing is taken unasked";
        TickRow(dialog, "changed: Apple", 0);
        TickRow(dialog, "added: Damson");
        TickRow(dialog, "changed: Cherry");
        TickRow(dialog, "removed: Banana");
        EXPECT_EQ(take->text(), QStringLiteral("&Take 3"));
        QTest::mouseClick(take, Qt::LeftButton);
    });
    EXPECT_EQ(Text("lblEditStatus"), "Took 3 differences; Undo gives them back");
    EXPECT_EQ(Text(textField), "sweet 5%%");
    EXPECT_EQ(Shown(), "Apple, 1 of 4, " + edited);
    const Library& library = window->Records();
    EXPECT_EQ(library.Find("Cherry")->ShortName, FileName("C"));
    EXPECT_EQ(BlockOf(library.Kind, *library.Find("Damson")), Block("Damson"));
    EXPECT_EQ(OnDisk(FileName("A")), Block("Apple") + Block("Cherry")) << "before the write";
    Write();
    EXPECT_EQ(OnDisk(FileName("A")), Block("Apple", textKey, "sweet 5%%") + Block("Damson"));
    EXPECT_EQ(OnDisk(FileName("C")), Block("Cherry"));
    Pick("mnuUndo");
    EXPECT_EQ(Text("lblEditStatus"), "Undone: taking of 3 differences");
    EXPECT_EQ(Text(textField), "about Apple");
    EXPECT_FALSE(library.Exists("Damson"));
}

TEST_P(CompareTest, TakesOneFieldOfSeveralAndTellsOfProblems) {
    std::string changed = Block("Apple", secondKey, "Sweet");
    changed.replace(changed.find("about Apple"), 11, "%s");
    PutThere("A", changed + Block("Cherry"));
    Start();
    CompareWith("Other/" + editor.Folder.substr(5), [&](QDialog& dialog) {
        const std::string told = "] changed: Apple (2) > ";
        const Strings rows = RowsOf(dialog);
        ASSERT_EQ(rows.size(), 3u);
        EXPECT_THAT(rows[0], HasSubstr(told + textKey + " | about Apple | %s | "));
        EXPECT_THAT(rows[0], HasSubstr("[wild-card-count]"));
        EXPECT_THAT(rows[1], ::testing::EndsWith(told + secondKey + " | " + secondText + " | Sweet | "));
        Press(dialog, "cmdTickAll");
        EXPECT_EQ(RowsOf(dialog)[1].substr(2), rows[1].substr(2)) << "a problem stands at what brings it";
        EXPECT_THAT(StateOf(dialog), HasSubstr("What is ticked would bring a problem to 1."));
        Press(dialog, "cmdTickNone");
        TickRow(dialog, "changed: Apple", 1);
        EXPECT_THAT(StateOf(dialog), ::testing::Not(HasSubstr("problem")));
        Press(dialog, "cmdTake");
    });
    EXPECT_EQ(BlockOf(window->Records().Kind, *window->Records().Find("Apple")),
              Block("Apple", secondKey, "Sweet"));
}

TEST_P(CompareTest, NamesWhatCannotBeComparedOrTaken) {
    const std::string header(editor.Records->Header);
    PutThere("A", Block("apple") + Block("Cherry", textKey, "sour") + header + " Unfinished\r\n");
    PutThere("B", Broken());
    PutThere("C", Block("Cherry"));
    PutThere("D", std::string("no\0text", 7));
    PutThere("CoreEvents", Block("Damson"));
    Start();
    prompts.ExpectAsk("", true);
    Pick("mnuDelete");
    CompareWith("Other/", [&](QDialog& dialog) {
        const Strings rows = RowsOf(dialog);
        ASSERT_EQ(rows.size(), 9u);
        EXPECT_THAT(rows[0],
                    events ? HasSubstr("added: Damson (1) >") : HasSubstr("[ ] added: Damson (1) >"));
        EXPECT_THAT(rows[0], events ? HasSubstr("CoreEvents.event is the game's own") : HasSubstr(""));
        EXPECT_THAT(rows[1],
                    HasSubstr("changed: Apple (2) > " + word + "Name | Apple | apple | a record keeps"));
        EXPECT_THAT(rows[2], HasSubstr("the record is marked for deletion"));
        EXPECT_EQ(rows[3], "[ ] changed: Cherry (1) > " + textKey + " | about Cherry | sour | ");
        EXPECT_THAT(rows[4], StartsWith("not compared: " + FileName("A") + " (1) > fault |  |  | Line "));
        EXPECT_THAT(rows[5], HasSubstr("Overflow (file " + FileName("B") + ", line 2"));
        EXPECT_THAT(rows[6],
                    HasSubstr("not compared: " + FileName("C") + " (1) > fault |  |  | Cherry is in A"));
        EXPECT_THAT(rows[7],
                    HasSubstr("not compared: " + FileName("D") + " (1) > fault |  |  | This is no text"));
        EXPECT_THAT(rows[8], HasSubstr("removed: Banana"));
        Press(dialog, "cmdTickAll");
        EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("cmdTake"))->text(),
                  events ? QStringLiteral("&Take 1") : QStringLiteral("&Take 2"));
        EXPECT_THAT(StateOf(dialog), HasSubstr("4 faults in its files."));
        dialog.reject();
    });
}

TEST_P(CompareTest, ChangesNothingUnasked) {
    PutThere("A", Block("Apple", textKey, "sweet"));
    Start();
    CompareWith("Other/", [](QDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(Text(textField), "about Apple");
    CompareWith("Game/", {});
    EXPECT_EQ(Text("lblEditStatus"), "No record differs from those of " + temp / "Game/");
    CompareWith("Home/", {});
    EXPECT_THAT(prompts.Transcript.back(), HasSubstr("There is no " + FileName("") + " file"));
    EXPECT_EQ(prompts.PickedFrom, (Strings{temp / "Game/", temp / "Other", temp / "Game"}));
    prompts.ExpectPickFolder("Compare with a folder", "");
    Pick("mnuCompareWith");
    EXPECT_FALSE(window->Records().AnyPending());
    EditText("typed");
    EXPECT_FALSE(Enabled("mnuCompareWith")) << "while a record is edited";
}

INSTANTIATE_TEST_SUITE_P(Editors, CompareTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
