// What is undone, redone, typed and given up, in both editors.
#include "editor/Editors.h"
#include "editor/FieldMark.h"

#include <QListWidget>
#include <QTimer>
#include <QTreeView>
#include <QTreeWidget>
#include <filesystem>
#include <random>

namespace velmora {
namespace {

class UndoTest : public EditorTest {
  protected:
    UndoTest() { Start(); }
    void Crash() {
        window.reset();
        Start();
    }
    std::string Hint() { return Text("lblEditStatus"); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QTest::keyClick(window->focusWidget() ? window->focusWidget() : window.get(), key, modifiers);
    }
    void LetDraftBeKept() {
        Get<QTimer>("tmrDraft")->start(0);
        ASSERT_TRUE(QTest::qWaitFor([this] { return temp.Has(journal); }));
        QCoreApplication::processEvents();
    }
    void Append(const QString& text) {
        Enter(textField);
        Press(Qt::Key_End);
        QTest::keyClicks(Get<QWidget>(textField), text);
    }
    /// Chooses the latest work that was given up; returns what was offered.
    Strings TakeUpLatest() {
        Strings offered;
        QTimer::singleShot(0, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_TRUE(dialog);
            auto* top = dialog->findChild<QTreeWidget*>()->topLevelItem(0);
            for (int i = 0; i < top->childCount(); ++i)
                offered.push_back(FromQt(top->child(i)->text(0)));
            dialog->accept();
        });
        Pick("mnuTakeUpGivenUp");
        return offered;
    }
    /// What all fields hold.
    std::string Fields() {
        std::string all;
        for (const Binding& binding : window->Fields().Bindings())
            all += binding.Text() + "|";
        return all;
    }

    const std::string journal = "Home/" + std::string(editor.Records->Word) + "s.journal";
    const std::string number = editor.NumberFields[0];
    const std::string property = editor.LongTexts[0].Key;
};

TEST_P(UndoTest, GoesBackAndForthOverTheLibrary) {
    EXPECT_FALSE(Enabled("mnuUndo"));
    Commit("changed");
    EXPECT_EQ(window->focusWidget(), Get<QWidget>("cmdForward")); // no box that takes Ctrl+Z for itself
    Click("cmdForward");
    prompts.ExpectAsk("", true);
    Pick("mnuDelete");
    Press(Qt::Key_Z);
    EXPECT_EQ(Hint(), "Undone: deletion of Cherry");
    EXPECT_EQ(Shown(), "Cherry, 2 of 3, ");
    Press(Qt::Key_Z);
    EXPECT_EQ(Hint(), "Undone: commit of Apple");
    EXPECT_EQ(Shown() + Text(textField), "Apple, 1 of 3, about Apple");
    EXPECT_EQ(window->findChildren<FieldMark*>().size(), 1);
    EXPECT_FALSE(window->Records().AnyPending());
    EXPECT_FALSE(Enabled("mnuUndo"));
    Press(Qt::Key_Y);
    EXPECT_EQ(Hint(), "Redone: commit of Apple");
    EXPECT_EQ(Text(textField), "changed");
    Write();
    Press(Qt::Key_Z);
    EXPECT_EQ(Shown(), "Apple, 1 of 3, " + edited);
    Write();
    EXPECT_EQ(OnDisk(FileName("A")), Block("Apple") + Block("Cherry"));
}

TEST_P(UndoTest, EndsWithAWordWhereAnotherProgramChangedTheRecord) {
    Commit("changed");
    Write();
    Put("A", Block("Apple", property, "by another") + Block("Cherry"));
    Pick("mnuReadAgain");
    EXPECT_EQ(Hint(), "Undo goes back no further: Apple is no longer what it was here");
    EXPECT_FALSE(Enabled("mnuUndo"));
}

TEST_P(UndoTest, GoesFromFieldToFieldWhileEditing) {
    Pick(editItem);
    EXPECT_FALSE(Enabled("mnuUndo"));
    const std::string start = Fields();
    Append(" one two");
    Type(number, "7");
    const int other = Get<ChoiceBox>(fileBox)->currentIndex() == 0 ? 1 : 0;
    Get<ChoiceBox>(fileBox)->setCurrentIndex(other);
    Append(" 5%");
    Enter(number);
    EXPECT_EQ(Text(textField), "about Apple one two 5%%");
    const std::string end = Fields();
    Strings texts;
    for (; Enabled("mnuUndo"); texts.push_back(Text(textField) + "|" + Text(number)))
        Press(Qt::Key_Z);
    EXPECT_EQ(Fields(), start);
    EXPECT_TRUE(Get<QWidget>(textField)->hasFocus());
    EXPECT_EQ(texts[0], "about Apple one two 5%|7") << "what the program changes is a step";
    EXPECT_THAT(texts[1], StartsWith("about Apple one two")) << "a word";
    EXPECT_THAT(texts[texts.size() - 3], StartsWith("about Apple one |"));
    while (Enabled("mnuRedo"))
        Press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Fields(), end);
    EXPECT_TRUE(Enabled(textField));
}

TEST_P(UndoTest, BringsBackWhatWasDiscarded) {
    EditText("typed");
    Pick("mnuDiscardChanges");
    EXPECT_EQ(Text(textField), "about Apple");
    Press(Qt::Key_Z);
    EXPECT_EQ(window->Mode(), EditMode::Editing);
    EXPECT_EQ(Text(textField), "typed");
    Press(Qt::Key_Z);
    EXPECT_EQ(Text(textField), "");
    Pick("mnuDiscardChanges");
    prompts.ExpectInput("", "Damson");
    Pick("mnuAddNew");
    Type(textField, "new");
    Pick("mnuDiscardChanges");
    EXPECT_EQ(window->Records().Count(), 3u);
    Press(Qt::Key_Z);
    EXPECT_EQ(window->Mode(), EditMode::Adding);
    EXPECT_EQ(Text(nameBox) + Text(textField), "Damsonnew");
}

TEST_P(UndoTest, BringsBackAfterACrashWhatWasTyped) {
    Commit("committed");
    prompts.ExpectInput("", "Damson");
    Pick("mnuAddNew");
    Type(textField, "typed");
    LetDraftBeKept();
    for (int crash = 0; crash < 2; ++crash) {
        prompts.ExpectAsk("", true);
        Crash();
        EXPECT_THAT(prompts.Questions.back().Details,
                    HasSubstr("\rDamson, " + Text(fileBox) + ", typed but"));
        EXPECT_EQ(window->Mode(), EditMode::Adding);
        EXPECT_EQ(Text(nameBox) + " " + Text(textField), "Damson typed");
    }
    Pick("mnuDiscardChanges");
    prompts.ExpectAsk("", true);
    Crash();
    EXPECT_EQ(prompts.Questions.back().Details, "Apple, " + FileName("A"));
    EXPECT_EQ(window->Mode(), EditMode::Browsing);
}

TEST_P(UndoTest, TakesUpWhatClosingGaveUp) {
    Commit("committed");
    Click("cmdForward");
    EditText("typed");
    prompts.ExpectAsk("", true);
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(temp.Has(journal));
    Reopen();
    EXPECT_FALSE(Enabled("mnuUndo"));
    EXPECT_THAT(TakeUpLatest(),
                ElementsAre("Apple: " + property, "Cherry: typed, not committed: " + property));
    EXPECT_EQ(window->Mode(), EditMode::Editing);
    EXPECT_EQ(Text(nameBox) + " " + Text(textField), "Cherry typed");
    Pick("mnuCommitChanges");
    Write();
    EXPECT_EQ(OnDisk(FileName("A")),
              Block("Apple", property, "committed") + Block("Cherry", property, "typed"));
}

TEST_P(UndoTest, KeepsTheNewestTwentyGivenUp) {
    for (int i = 0; i < 22; ++i) {
        Commit("text " + std::to_string(i));
        prompts.ExpectAsk("", true);
        Pick("mnuReadAgain");
    }
    EXPECT_EQ(Files::ListFiles(temp / "Home/GivenUp").size(), 20u);
    TakeUpLatest();
    EXPECT_EQ(Text(textField), "text 21");
    Pick("mnuUndo");
    EXPECT_EQ(Text(textField), "about Apple");
}

TEST_P(UndoTest, RevertsFieldsToTheDiskAndGoesAlongTheHistory) {
    const auto arrow = [this] {
        QCoreApplication::processEvents();
        auto* button = window->findChild<QAbstractButton*>(QString::fromStdString("cmdRevert_" + textField));
        return button && button->isVisible() ? button : nullptr;
    };
    EXPECT_FALSE(arrow());
    EditText("typed");
    ASSERT_TRUE(arrow());
    EXPECT_THAT(FromQt(arrow()->toolTip()), HasSubstr("about Apple"));
    arrow()->click();
    EXPECT_EQ(Text(textField), "about Apple");
    EXPECT_FALSE(arrow());
    Pick("mnuUndo");
    EXPECT_EQ(Text(textField), "typed");
    Pick("mnuCommitChanges");
    Pick("mnuShowDifferences");
    QCoreApplication::processEvents();
    const auto marked =
        Get<QTreeWidget>("tvwDifferences")->findItems(QStringLiteral("\u2260"), Qt::MatchExactly);
    ASSERT_EQ(marked.size(), 1);
    EXPECT_EQ(FromQt(marked[0]->text(2) + marked[0]->text(3)), "about Appletyped");
    EXPECT_TRUE(arrow());
    QTest::keyClick(Get<QTreeWidget>("tvwDifferences"), Qt::Key_Return);
    EXPECT_EQ(Shown() + Text(textField), "Apple, 1 of 3, about Apple");
    EXPECT_FALSE(window->Records().AnyPending());
    Pick("mnuShowUndoHistory");
    QCoreApplication::processEvents();
    auto* list = Get<QListWidget>("lstHistory");
    EXPECT_EQ(list->count(), 3);
    for (const auto& [row, text] : {std::pair(1, "typed"), {0, "about Apple"}, {2, "about Apple"}}) {
        list->setCurrentRow(row);
        emit list->itemClicked(list->item(row));
        EXPECT_EQ(Text(textField), text) << row;
        EXPECT_EQ(list->currentRow(), row);
    }
}

TEST_P(UndoTest, OpensAgainWithThePanelOfDifferencesInFront) {
    Pick("mnuShowDifferences");
    QCoreApplication::processEvents();
    ASSERT_TRUE(Get<QTreeWidget>("tvwDifferences")->isVisible());
    window->close();
    Reopen();
    EXPECT_EQ(Shown(), "Apple, 1 of 3, ");
}

TEST_P(UndoTest, RevertsTheFileOfAMovedRecord) {
    const std::string own = FileName("A");
    const auto moveSelected = [this](int down, const std::string& file) {
        auto* list = Get<QTreeView>("tvwRecords");
        list->setCurrentIndex(list->model()->index(0, 0));
        for (int i = 0; i < down; ++i)
            QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
        prompts.ExpectInput("", file);
        Pick("mnuMoveSelected");
    };
    const auto revert = [this] {
        QCoreApplication::processEvents();
        auto* arrow = window->findChild<QAbstractButton*>(QString::fromStdString("cmdRevert_" + fileBox));
        ASSERT_TRUE(arrow && arrow->isVisible());
        arrow->click();
        QCoreApplication::processEvents();
    };
    moveSelected(1, "New"); // Apple and Cherry leave the file
    const std::string moved = Text(fileBox);
    revert();
    EXPECT_EQ(Text(fileBox), own);
    EXPECT_THAT(window->Records().FilesToWrite(), ::testing::UnorderedElementsAre(moved, own));
    Click("cmdForward");
    revert();
    EXPECT_THAT(window->Records().FilesToWrite(), IsEmpty());
    Pick("mnuUndo");
    EXPECT_EQ(Text(fileBox), moved);
    EXPECT_THAT(window->Records().FilesToWrite(), ::testing::UnorderedElementsAre(moved, own));
    Write();
    EXPECT_THAT(OnDisk(own), AllOf(HasSubstr("Apple"), Not(HasSubstr("Cherry"))));
    EXPECT_THAT(OnDisk(moved), HasSubstr("Cherry"));
}

TEST_P(UndoTest, SaysNothingAgainOfALongText) {
    const LongText& text = editor.LongTexts[0];
    Put("A", Block("Lengthy", text.Key, std::string(text.Limit + 1, 'x')));
    Start();
    Pick(editItem);
    Append("y");
    Pick("mnuCommitChanges");
    prompts.TakeTranscript();
    Pick("mnuUndo");
    Pick("mnuRedo");
    EXPECT_EQ(Hint(), "Redone: commit of Lengthy");
    EXPECT_THAT(prompts.Transcript, IsEmpty());
    Click("cmdForward");
    Click("cmdBack");
    EXPECT_THAT(prompts.Transcript, ElementsAre(HasSubstr("is too long"))) << "when it comes on show";
}

TEST_P(UndoTest, OffersEachGameItsOwnWork) {
    const auto turnTo = [this](const std::string& game) {
        window.reset();
        Settings.SetGamePath(temp / (game + "/"));
    };
    temp.Write("Other/Data/" + std::string(events ? "" : "UP_Issues/") + FileName("A"), Block("Fig"));
    temp.Write("Other/GFX/P.pcx", "no picture, but there");
    Commit("of the first");
    turnTo("Other");
    Start();
    Commit("of the other");
    for (const auto& [game, shown] :
         {std::pair("Game", "Apple of the first"), {"Other", "Fig of the other"}}) {
        turnTo(game);
        prompts.ExpectAsk("", true);
        Start();
        EXPECT_EQ(Text(nameBox) + " " + Text(textField), shown);
    }
}

TEST_P(UndoTest, OpensBesideAJournalThatCannotBeRead) {
    Commit("of a foreign program");
    window.reset();
    const auto start = [this] {
        prompts.Transcript.clear();
        Start();
        EXPECT_THAT(prompts.Transcript, ElementsAre(HasSubstr("The file is kept as ")));
        EXPECT_THAT(prompts.Errors, IsEmpty());
        EXPECT_EQ(Text(textField), "about Apple");
        window.reset();
    };
    temp.Write(journal, "not a journal");
    start();
    temp.Write("Foreign", "of another");
    std::error_code refused;
    std::filesystem::create_symlink(temp.Host() / "Foreign", temp.Host() / journal, refused);
    if (refused)
        GTEST_SKIP() << "this host makes no links";
    start();
    EXPECT_EQ(temp.Read("Foreign"), "of another") << "no link is followed";
}

/// Commands in any order, undone and redone: what is written is what a library without a history holds.
TEST_P(UndoTest, AgreesWithTheDiskAfterAnyWalk) {
    std::mt19937 random(7);
    const auto state = [this] {
        std::string all;
        for (const auto& [name, record] : window->Records())
            if (!record.ToBeDeleted)
                all += BlockOf(*editor.Records, record);
        return all;
    };
    for (int step = 0; step < 80; ++step) {
        switch (random() % 7) {
        case 0:
        case 1:
            Commit("walk " + std::to_string(step));
            break;
        case 2:
            if (!window->Records().At(window->CurrentIndex()).ToBeDeleted)
                prompts.ExpectAsk("", true);
            Pick("mnuDelete");
            break;
        case 3: {
            if (window->Records().FilesToWrite().empty())
                break;
            const std::string before = state();
            Write();
            EXPECT_EQ(state(), before);
            const auto onDisk = [this](const char* file) {
                return temp.Has(editor.Folder + FileName(file)) ? OnDisk(FileName(file)) : "";
            };
            EXPECT_EQ(onDisk("A") + onDisk("B"), before) << step;
            break;
        }
        case 4:
        case 5:
            if (Enabled("mnuUndo"))
                Pick("mnuUndo");
            break;
        default:
            if (Enabled("mnuRedo"))
                Pick("mnuRedo");
        }
        if (Text("lblWhereWeAt").empty())
            break;
        Click("cmdForward");
    }
}

INSTANTIATE_TEST_SUITE_P(Editors, UndoTest, EveryEditor, ::testing::PrintToStringParamName());

} // namespace
} // namespace velmora
