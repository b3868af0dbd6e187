#include "editor/FormRoutines.h"

#include "ScriptedPrompts.h"
#include "editor/LineBox.h"

#include <QListWidget>
#include <gtest/gtest.h>

namespace velmora {

namespace {

TEST(FormRoutinesTest, LoadsACombo) {
    Catalogue levels;
    for (const auto& [name, number] : {std::pair{"Low", 5}, std::pair{"Middle", 7}, std::pair{"Also", 7}})
        levels.Add(name, number);
    CodeCatalogue models;
    models.Add("Small", "SB01");
    models.Add("Large", "SB02");
    ChoiceBox box;
    for (const auto& [number, chosen] : {std::pair{5, "Low"}, std::pair{7, "Also"}, std::pair{6, "Low"}}) {
        LoadComboByNumber(&box, levels, number);
        EXPECT_EQ(box.Chosen(), chosen) << number;
        EXPECT_EQ(box.count(), 3);
    }
    for (const auto& [code, chosen] : {std::pair{"sb02", "Large"}, std::pair{"SB03", "Small"}}) {
        LoadComboByCode(&box, models, code);
        EXPECT_EQ(box.Chosen(), chosen) << code;
    }
    for (const auto& [name, chosen] : {std::pair{"LARGE", "Large"}, std::pair{"Huge", "Small"}}) {
        LoadComboByName(&box, models, name);
        EXPECT_EQ(box.Chosen(), chosen) << name;
    }
    LoadComboByNumber(&box, Catalogue(), 0);
    EXPECT_EQ(box.count(), 0);
    EXPECT_EQ(box.Chosen(), "");
}

TEST(FormRoutinesTest, LoadsAListFromAnArray) {
    QListWidget list;
    LoadListFromArray(&list, {"Shields", "", "Armou\xE9r", "Lasers"}, "lasers");
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(1)->text(), QStringLiteral("Armouér"));
    EXPECT_EQ(list.currentRow(), 2);
    LoadListFromArray(&list, {"Shields"}, "Lasers");
    ASSERT_EQ(list.count(), 1);
    EXPECT_TRUE(list.selectedItems().isEmpty());
    LoadListFromArray(&list, {"Shields", ""}, "");
    EXPECT_TRUE(list.selectedItems().isEmpty());
}

TEST(FormRoutinesTest, ChecksNumericFields) {
    ScriptedPrompts prompts;
    LineBox box;
    for (const char* numeric : {"-12", "3.5", " 7 ", "1e3"}) {
        box.SetBytes(numeric);
        EXPECT_FALSE(CheckNumericField(&box)) << numeric;
    }
    EXPECT_TRUE(prompts.TakeTranscript().empty());
    for (const char* other : {"", "twelve", "1,2,3x"}) {
        box.SetBytes(other);
        EXPECT_TRUE(CheckNumericField(&box)) << other;
        EXPECT_EQ(prompts.TakeTranscript(),
                  std::vector<std::string>{"Message: Sorry, this field must contain a numeric value"});
    }
}

} // namespace

} // namespace velmora
