// The dock that shows a record as the player meets it, and the lines that tell how long its texts are.
#include "editor/Editors.h"
#include "sbmodules/frmSBModules.h"

#include <QDockWidget>
#include <QLineEdit>
#include <QTextEdit>
#include <QTreeView>

namespace velmora {
namespace {

class PreviewPanelTest : public EditorTest {
  protected:
    /// What the dock shows, once it shows that.
    void ExpectShown(const std::string& part) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return Preview().find(part) != std::string::npos; }))
            << part << " in " << Preview();
    }
    std::string Preview() { return Get<QTextEdit>("txtPreview")->toPlainText().toStdString(); }
    Strings Marked(const std::string& box) {
        Strings marked;
        const auto collect = [&](auto* control) {
            for (const auto& range : control->Marked(TextMark::TooLong))
                marked.push_back(control->Bytes().substr(static_cast<std::size_t>(range.start),
                                                         static_cast<std::size_t>(range.length)));
        };
        if (auto* line = qobject_cast<LineBox*>(Get<QWidget>(box)))
            collect(line);
        else
            collect(Get<TextBox>(box));
        return marked;
    }
    const std::string firstSub = events ? "cboDescStr_0" : "cboUPIssueSubs_0";
};

TEST_P(PreviewPanelTest, FollowsTheListTheFormAndTheRecordOnShow) {
    Start();
    Get<QDockWidget>("dckRecords")->show();
    Pick("mnuShowPreview");
    ExpectShown("about Apple");
    QTest::keyClick(Get<QTreeView>("tvwRecords"), Qt::Key_Down);
    ExpectShown("about Cherry");
    EXPECT_EQ(Text(nameBox), "Apple");
    Pick(editItem);
    ExpectShown("about Apple");
    Type(textField, QStringLiteral("of %s\\nand 5%"));
    ExpectShown("of \u26A0 [NOTHING] not set\nand 5%");
    Choose(firstSub, "Planet Name");
    ExpectShown("of [PLANET NAME]\nand 5%");
    Pick("mnuUndo");
    ExpectShown("[NOTHING]");
    EXPECT_TRUE(Get<QWidget>("txtPreview")->isEnabled());
    Pick("mnuDiscardChanges");
    ExpectShown("about Apple");
    Click("cmdForward");
    ExpectShown("about Cherry");
    window->close();
}

TEST_P(PreviewPanelTest, FillsWildCardsWithNamesThatAreKept) {
    Put("A", Block("Apple", editor.LongTexts[0].Key, "to %s"));
    Start();
    Pick("mnuShowPreview");
    Pick(editItem);
    Choose(firstSub, "Player Name");
    ExpectShown("to [PLAYER NAME]");
    Click("chkSampleNames");
    ExpectShown("to Ansa Tarn");
    auto* sample = Get<QLineEdit>("txtSample_0");
    sample->setFocus();
    sample->selectAll();
    QTest::keyClicks(sample, QStringLiteral("Bren"));
    ExpectShown("to Bren");
    QTest::keyClick(sample, Qt::Key_Return);
    prompts.ExpectAsk("", true);
    window->close();
    Start();
    EXPECT_EQ(Get<QLineEdit>("txtSample_0")->text(), QStringLiteral("Bren"));
    EXPECT_EQ(Ticked({"chkSampleNames"}), "chkSampleNames");
}

TEST_P(PreviewPanelTest, MeasuresEveryTextAsTheCheckDoes) {
    Strings told;
    const std::size_t shownTexts = events ? 4 : 7;
    Start();
    Pick(editItem);
    for (std::size_t i = 0; i < editor.LongTexts.size(); ++i) {
        const auto& [box, key, label, subject, limit] = editor.LongTexts[i];
        const std::string meter =
            "lblMeter_" + std::to_string(i + 1 == editor.LongTexts.size() ? shownTexts - 1 : i);
        const std::string most = std::to_string(limit);
        SetText(box, std::string(limit - 3, 'a') + "b%");
        EXPECT_EQ(Text(meter), most + " of " + most + ", 0 left");
        EXPECT_THAT(Marked(box), IsEmpty());
        SetText(box, std::string(limit - 1, 'a') + "%zz");
        EXPECT_EQ(Text(meter), std::to_string(limit + 3) + " of " + most + ", 3 too long");
        EXPECT_THAT(Marked(box), ElementsAre("%zz"));
        EXPECT_TRUE(Get<QWidget>(meter)->isVisible());
        SetText(box, "");
        EXPECT_EQ(Text(meter), "0 of " + most + ", " + most + " left");
        EXPECT_THAT(Marked(box), IsEmpty());
    }
    Pick("mnuDiscardChanges");
}

INSTANTIATE_TEST_SUITE_P(Editors, PreviewPanelTest, EveryEditor, ::testing::PrintToStringParamName());

TEST_F(WindowTest, ThePreviewShowsModulesToo) {
    temp.Write(
        "Game/Data/A.SBModule",
        "SBMOD 1 Gun\r\nName \"Big Gun\"\r\nDescription \"Shoots.\\nOften.\"\r\nLocalAbility \"Culture\"\r\n"
        "LocalAbilityValue 5\r\nENDSBMOD\r\n");
    Open<frmSBModules>();
    Pick("mnuShowPreview");
    const auto shown = [this] { return Get<QTextEdit>("txtPreview")->toPlainText().toStdString(); };
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return shown() == "Big Gun\nShoots.\nOften.\n\u2192 Culture Enhancement +5";
    })) << shown();
    EXPECT_EQ(Text("lblMeter_0"), "15 of 500, 485 left");
}

} // namespace
} // namespace velmora
