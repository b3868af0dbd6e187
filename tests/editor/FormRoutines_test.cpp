#include "editor/FormRoutines.h"

#include <QListWidget>
#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(FormRoutinesTest, LoadsAListFromAnArray) {
    QListWidget list;
    LoadListFromArray(&list, {"Shields", "", "Armou\xE9r", "Lasers"}, "lasers");
    ASSERT_EQ(list.count(), 3);
    EXPECT_EQ(list.item(1)->text(), QStringLiteral("Armouér"));
    EXPECT_EQ(list.currentRow(), 2);
    LoadListFromArray(&list, {"Shields", ""}, "");
    ASSERT_EQ(list.count(), 1);
    EXPECT_TRUE(list.selectedItems().isEmpty());
}

} // namespace
} // namespace velmora
