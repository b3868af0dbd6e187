#include "editor/FormRoutines.h"

#include "ScriptedPrompts.h"
#include "editor/LineBox.h"

#include <QListWidget>
#include <gtest/gtest.h>

namespace velmora {

namespace {

TEST(FormRoutinesTest, LoadsAComboByNumber) {
    Catalogue levels;
    levels.Add("Low", 5);
    levels.Add("Middle", 7);
    levels.Add("Also Middle", 7);
    ChoiceBox box;
    const std::pair<std::int32_t, const char*> cases[] = {{5, "Low"}, {7, "Also Middle"}, {6, "Low"}};
    for (const auto& [number, chosen] : cases) {
        LoadComboByNumber(&box, levels, number);
        EXPECT_EQ(box.Chosen(), chosen) << number;
        EXPECT_EQ(box.count(), 3);
        EXPECT_EQ(box.itemText(1), QStringLiteral("Middle"));
    }
    LoadComboByNumber(&box, Catalogue(), 0);
    EXPECT_EQ(box.count(), 0);
    EXPECT_EQ(box.Chosen(), "");
}

TEST(FormRoutinesTest, LoadsAComboByCodeAndByName) {
    CodeCatalogue models;
    models.Add("Small", "SB01");
    models.Add("Large", "SB02");
    ChoiceBox box;
    LoadComboByCode(&box, models, "sb02");
    EXPECT_EQ(box.Chosen(), "Large");
    LoadComboByCode(&box, models, "SB03");
    EXPECT_EQ(box.Chosen(), "Small");
    LoadComboByName(&box, models, "LARGE");
    EXPECT_EQ(box.Chosen(), "Large");
    LoadComboByName(&box, models, "Huge");
    EXPECT_EQ(box.Chosen(), "Small");
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
