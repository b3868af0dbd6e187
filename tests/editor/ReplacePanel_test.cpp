// The dock that finds and replaces: clicked and typed into.
#include "editor/Editors.h"
#include "editor/FieldMark.h"
#include "editor/RegExpMatcher.h"
#include "editor/ReplacePanel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDockWidget>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTreeView>

namespace velmora {
namespace {

class ReplacePanelTest : public EditorTest {
  protected:
    void Start() {
        Put("A", Block("Apple", textKey, "a red fruit, red") + Block("Cherry", textKey, "Red, too"));
        EditorTest::Start();
        QTest::keyClick(window.get(), Qt::Key_H, Qt::ControlModifier);
        EXPECT_TRUE(Get<QWidget>("txtFind")->hasFocus());
    }
    QTreeView& Tree() { return *Get<QTreeView>("tvwHits"); }
    void Settle() {
        EXPECT_TRUE(QTest::qWaitFor([this] {
            const std::string told = State();
            return told.find("searching") == std::string::npos && told.find("checking") == std::string::npos;
        }));
    }
    void Find(const char* what, const char* with) {
        Type("txtFind", QString::fromLatin1(what));
        Type("txtReplace", QString::fromLatin1(with));
        Settle();
    }
    std::string State() { return Text("lblReplaceState"); }
    std::string Button() { return FromQt(Get<QPushButton>("cmdReplace")->text()); }
    Strings Rows(const QModelIndex& above = {}) {
        Strings rows;
        const QAbstractItemModel& model = *Tree().model();
        for (int row = 0; row < model.rowCount(above); ++row) {
            const QModelIndex index = model.index(row, 0, above);
            const auto ticked = index.data(Qt::CheckStateRole).value<Qt::CheckState>();
            rows.push_back((ticked == Qt::Checked     ? "[x] "
                            : ticked == Qt::Unchecked ? "[ ] "
                                                      : "[-] ") +
                           FromQt(index.data(Qt::AccessibleTextRole).toString()));
            const Strings below = Rows(index);
            rows.insert(rows.end(), below.begin(), below.end());
        }
        return rows;
    }
    /// Clicks the link of this name in the line below the hits.
    void Follow(const char* link) {
        ASSERT_THAT(State(), HasSubstr(std::string("href=\"") + link));
        emit Get<QLabel>("lblReplaceState")->linkActivated(QString::fromLatin1(link));
    }
    [[nodiscard]] std::string TextOf(const char* name) const {
        std::string found;
        const Record& record = *window->Records().Find(name);
        window->Records().Kind.ForEachField([&](const Field& field) {
            if (field.Property == textKey)
                found = field.TextOf(record);
        });
        return found;
    }

    const std::string textKey = editor.LongTexts[0].Key;
};

TEST_P(ReplacePanelTest, ReplacesWhatIsTickedAndLeadsBack) {
    Start();
    Click("cmdForward");
    Click("cmdForward");
    Find("red", "blue");
    EXPECT_THAT(Rows(), ElementsAre("[x] " + FileName("A") + " (2)",
                                    "[x] Apple, " + textKey + ", a red fruit, red, a blue fruit, blue",
                                    "[x] Cherry, " + textKey + ", Red, too, blue, too"));
    EXPECT_EQ(State(), "3 hits in 2 records");
    EXPECT_EQ(Button(), "Replace 3 in 2 records");
    QTest::keyClick(Get<QWidget>("txtReplace"), Qt::Key_Return);
    EXPECT_EQ(Text(nameBox), "Apple");
    EXPECT_EQ(window->findChildren<FieldMark*>().size(), 1);
    QTest::keyClick(window.get(), Qt::Key_F3);
    EXPECT_EQ(Text(nameBox), "Cherry");
    QTest::keyClick(window.get(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Text(nameBox), "Apple");
    QTest::keyClick(&Tree(), Qt::Key_Space); // takes the tick away
    EXPECT_EQ(Button(), "Replace 1 in 1 record");
    QTest::keyClick(&Tree(), Qt::Key_Space);
    QTest::mouseClick(Get<QWidget>("cmdReplace"), Qt::LeftButton);
    EXPECT_EQ(State(), "Replaced 3. <a href=\"undo\">Undo</a> \xB7 <a href=\"back\">Back to Banana</a>");
    EXPECT_TRUE(Get<QDockWidget>("dckReplace")->isVisible());
    EXPECT_EQ(Text(textField), "a blue fruit, blue");
    EXPECT_THAT(Rows(), IsEmpty());
    EXPECT_THAT(OnDisk(FileName("A")), HasSubstr("a red fruit, red"));
    EXPECT_EQ(window->Changes().StepsDone(), 1u);
    Follow("back");
    EXPECT_EQ(Text(nameBox), "Banana");
    Follow("undo");
    EXPECT_EQ(TextOf("Apple") + ", " + TextOf("Cherry"), "a red fruit, red, Red, too");
    EXPECT_EQ(Text("lblEditStatus"), "Undone: replacement of \"red\" by \"blue\"");
    Settle();
    EXPECT_EQ(State(), "3 hits in 2 records");
}

TEST_P(ReplacePanelTest, RefusesAndUnticksWhatACommitWouldNotTake) {
    Start();
    Find("red", "\"");
    EXPECT_EQ(State(), "3 hits in 2 records, 2 refused");
    EXPECT_FALSE(Enabled("cmdReplace"));
    Get<QLineEdit>("txtReplace")->setText(QStringLiteral("\u661F"));
    Settle();
    EXPECT_THAT(Rows()[1], ::testing::EndsWith("a character is not in the game's code page"));
    Find("red, too", "");
    EXPECT_THAT(Rows()[1], StartsWith("[ ] Cherry, "));
    EXPECT_THAT(Rows()[1], ::testing::EndsWith(events ? "no-description" : "no-question"));
    EXPECT_EQ(State(), "1 hit in 1 record, 1 with a new problem");
    EXPECT_EQ(Button(), "Replace 0 in 0 records");
    Pick("mnuTickAllHits"); // it may be done all the same
    QTest::mouseClick(Get<QWidget>("cmdReplace"), Qt::LeftButton);
    EXPECT_EQ(TextOf("Cherry"), "");
}

TEST_P(ReplacePanelTest, LooksWhereItIsTold) {
    Start();
    const auto hits = [this] {
        Settle();
        return State();
    };
    Find("a", "b");
    const std::string everywhere = hits();
    Get<QComboBox>("cboScope")->setCurrentIndex(2);
    EXPECT_NE(hits(), everywhere);
    EXPECT_THAT(Rows()[0], StartsWith("[x] " + FileName("A")));
    Get<QComboBox>("cboScope")->setCurrentIndex(1);
    EXPECT_EQ(hits(), everywhere);
    Pick("mnuFilterRecords");
    Type("txtFilter", QStringLiteral("cherry"));
    EXPECT_NE(hits(), everywhere);
    EXPECT_THAT(Rows(), Each(::testing::Not(HasSubstr("Apple"))));
    Get<QComboBox>("cboScope")->setCurrentIndex(0);
    auto* fields = Get<QListWidget>("lstFields");
    for (int row = 0; row < fields->count(); ++row)
        fields->item(row)->setCheckState(Qt::Unchecked);
    EXPECT_EQ(hits(), "0 hits in 0 records");
    EXPECT_EQ(fields->findItems(ToQt(editor.Records->Name.Property), Qt::MatchExactly).size(), 0);
    fields->findItems(ToQt(textKey), Qt::MatchExactly).front()->setCheckState(Qt::Checked);
    Find("RED", "b");
    EXPECT_EQ(hits(), "3 hits in 2 records");
    Get<QCheckBox>("chkMatchCase")->click();
    EXPECT_EQ(hits(), "0 hits in 0 records");
    Get<QCheckBox>("chkMatchCase")->click();
    Find("re", "b");
    Get<QCheckBox>("chkWholeWord")->click();
    EXPECT_EQ(hits(), "0 hits in 0 records");
}

TEST_P(ReplacePanelTest, TakesRegularExpressionsAndStopsThoseThatRunAway) {
    Put("B", Block("Banana", textKey, std::string(40, 'a') + "!"));
    Start();
    Get<QCheckBox>("chkRegExp")->click();
    Type("txtFind", QStringLiteral("(red"));
    EXPECT_THAT(Text("lblFindFault"), HasSubstr("parenthes"));
    EXPECT_TRUE(Get<QWidget>("lblFindFault")->isVisible());
    EXPECT_EQ(State(), "");
    Find("(r)(ed),? too", "\\2\\1\\n");
    EXPECT_EQ(Text("lblFindFault"), "");
    EXPECT_THAT(Rows()[1], HasSubstr("Red, too, edR\\n"));
    Find("^(a+)+$|red", "b");
    EXPECT_THAT(State(), StartsWith("3 hits in 2 records"));
    EXPECT_THAT(State(), HasSubstr("not searched to the end: Banana, " + textKey));
}

TEST_P(ReplacePanelTest, RestsWhileARecordIsEdited) {
    Start();
    Find("red", "blue");
    Pick(editItem);
    EXPECT_FALSE(Enabled("mnuFindReplace") || Enabled("cmdReplace") || Enabled("txtFind"));
    EXPECT_TRUE(Enabled("tvwHits"));
    Pick("mnuNextHit");
    EXPECT_EQ(Text("lblEditStatus"), "Commit or discard first");
    Type(textField, QStringLiteral("a green fruit"));
    Pick("mnuCommitChanges");
    Settle();
    EXPECT_EQ(State(), "1 hit in 1 record");
    static_cast<EditorWindow&>(*window).FindAndReplace().Open("Green", "red", {.WholeWord = true});
    Settle();
    EXPECT_EQ(State(), "1 hit in 1 record");
    QTest::mouseClick(Get<QWidget>("cmdReplace"), Qt::LeftButton);
    EXPECT_EQ(TextOf("Apple"), "a red fruit");
    prompts.ExpectAsk("", true);
    window->close();
    EXPECT_THAT(Rows(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Editors, ReplacePanelTest, EveryEditor, ::testing::PrintToStringParamName());

TEST(RegExpMatcher, FindsAndReplaces) {
    const struct {
        const char* Pattern;
        const char* With;
        TextMatcher::How How;
        const char* Text;
        const char* Result;
    } cases[] = {
        {"b", "x", {}, "aBb", "axx"},
        {"b", "x", {.MatchCase = true}, "aBb", "aBx"},
        {"^", ">", {}, "ab", ">ab"},
        {"$", "<", {}, "ab", "ab<"},
        {"x*", "-", {}, "axb", "-a--b-"},
        {"(a)|b", "[\\1]", {}, "ab", "[a][]"},
        {"\\w+", "<\\0>", {}, "\xE9t\xE9 a", "<\xE9t\xE9> <a>"},
        {"red|reddish", "x", {.WholeWord = true}, "reddish red\\nred", "x x\\nx"},
        {"\\\\n", "\\\\", {}, "a\\nb", "a\\b"},
    };
    for (const auto& [pattern, with, how, text, expected] : cases) {
        SCOPED_TRACE(pattern);
        const RegExpMatcher matcher(QString::fromLatin1(pattern), with, how);
        std::string result;
        std::size_t done = 0;
        const std::string subject = text;
        EXPECT_TRUE(matcher.ForEachHit(subject, [&](std::size_t at, std::size_t length, std::string_view by) {
            result.append(subject, done, at - done).append(by);
            done = at + length;
        }));
        EXPECT_EQ(result.append(subject, done), expected);
    }
    EXPECT_TRUE(RegExpMatcher(QStringLiteral("a("), "", {}).Fault().contains(QStringLiteral("character 3")));
}

TEST(RegExpMatcher, LimitsTheWorkOnAWholeText) {
    std::string bundles;
    std::string words;
    for (int i = 0; i < 30; ++i) {
        bundles += "aaaaaaaaaaaaaa ";
        words += "hello there, ";
    }
    const struct {
        const char* Pattern;
        std::string Text;
        int Hits;
        bool ToTheEnd;
    } cases[] = {
        {"(*LIMIT_MATCH=4000000000)^(a+)+$", std::string(60, 'a') + "!", 0, false},
        {"(a+)+b|.", bundles + "b", 0, false}, // no place takes too long, but all of them do
        {"(a+)+[bc]", bundles + "b", 0, false},
        {"(.*) (.*)x", words + "x ", 1, true}, // takes long at one place only
        {"\\w+(,)", words, 30, true},
    };
    for (const auto& [pattern, text, expected, toTheEnd] : cases) {
        SCOPED_TRACE(pattern);
        int hits = 0;
        const RegExpMatcher matcher(QString::fromLatin1(pattern), "", {});
        EXPECT_EQ(matcher.ForEachHit(text, [&](auto, auto, auto) { ++hits; }), toTheEnd);
        EXPECT_EQ(toTheEnd ? hits : 0, expected);
    }
}

} // namespace
} // namespace velmora
