// File, Import: a table that was edited elsewhere, seen before it is taken, and taken back in one step.
#include "editor/Editors.h"
#include "editor/ModalAnswers.h"

#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>

namespace velmora {
namespace {

class ImportTest : public EditorTest {
  protected:
    /// Picks this table; the dialog that shows it is answered by `answer`.
    void Take(const std::string& table, const std::function<void(QDialog&)>& answer) {
        temp.Write("table.csv", table);
        prompts.ExpectPickFile("Import a table", temp / "table.csv");
        ModalAnswers answers;
        if (answer)
            answers.Expect<QDialog>(answer);
        Pick("mnuImport");
        window->activateWindow(); // as a window manager would
        EXPECT_TRUE(QTest::qWaitForWindowActive(window.get()));
    }
    static Strings RowsOf(const QDialog& dialog) {
        const auto* model = dialog.findChild<QTreeView*>(QStringLiteral("tvwImport"))->model();
        Strings rows;
        for (int row = 0; row < model->rowCount(); ++row)
            rows.push_back(FromQt(model->index(row, 0).data(Qt::AccessibleTextRole).toString()));
        return rows;
    }
    std::string Header() { return (events ? "EventName," : "UPIssueName,") + textKey; }

    const std::string textKey = editor.LongTexts[0].Key;
};

TEST_P(ImportTest, ShowsEachRowAndTakesThoseTickedInOneStep) {
    Start();
    const auto actions = Get<QMenu>("mnuFile")->actions();
    const auto at = actions.indexOf(Get<QAction>("mnuImport"));
    ASSERT_EQ(actions.size(), at + 4);
    EXPECT_EQ(actions[at + 1], Get<QAction>("mnuCompareWith"));
    EXPECT_TRUE(actions[at + 2]->isSeparator());
    EXPECT_EQ(actions[at + 3], Get<QAction>("mnuExit"));
    const std::string table =
        Header() + ",Colour\nApple,sweet,x\nBanana,yellow,x\nCherry,\"a \"\"b\"\"\",x\n";
    Take(table, [&](QDialog& dialog) {
        EXPECT_THAT(RowsOf(dialog),
                    ElementsAre(HasSubstr("changed, Apple, " + textKey + ": "),
                                HasSubstr("changed, Banana, "),
                                HasSubstr("refused, Cherry, " + textKey + ": it holds a double quote")));
        EXPECT_THAT(FromQt(dialog.findChild<QLabel*>(QStringLiteral("lblImportState"))->text()),
                    ::testing::AllOf(HasSubstr("0 new, 2 changed, 1 refused"), HasSubstr("Colour")));
        auto* model = dialog.findChild<QTreeView*>(QStringLiteral("tvwImport"))->model();
        EXPECT_TRUE(model->setData(model->index(1, 0), Qt::Unchecked, Qt::CheckStateRole));
        EXPECT_FALSE(model->setData(model->index(2, 0), Qt::Checked, Qt::CheckStateRole));
        auto* import = dialog.findChild<QPushButton*>(QStringLiteral("cmdImport"));
        EXPECT_EQ(import->text(), QStringLiteral("&Import 1"));
        QTest::mouseClick(import, Qt::LeftButton);
    });
    EXPECT_EQ(Text(textField), "sweet");
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    EXPECT_EQ(Text("lblEditStatus"), "Imported 1 row; Undo takes them back");
    Pick("mnuUndo");
    EXPECT_EQ(Text("lblEditStatus"), "Undone: import of 1 row");
    EXPECT_EQ(Text(textField), "about Apple");
    EXPECT_FALSE(window->Records().AnyPending());
}

TEST_P(ImportTest, ChangesNothingUnasked) {
    Start();
    Take(Header() + "\nApple,sweet\n", [](QDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(Text(textField), "about Apple");
    Take(Header() + "\nApple,about Apple\n", {});
    EXPECT_EQ(Text("lblEditStatus"), "Nothing to import: 1 row without a change");
    Take("no,table\n", {});
    EXPECT_THAT(prompts.Transcript.back(), HasSubstr("names no column"));
    EXPECT_FALSE(window->Records().AnyPending());
    EditText("typed");
    EXPECT_FALSE(Enabled("mnuImport")) << "while a record is edited";
}

INSTANTIATE_TEST_SUITE_P(Editors, ImportTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
