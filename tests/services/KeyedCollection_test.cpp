#include "services/KeyedCollection.h"

#include "FailureOf.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace velmora {
namespace {

using Collection = KeyedCollection<int>;

std::vector<std::string> KeysOf(const Collection& collection) {
    std::vector<std::string> keys;
    for (const auto& [key, item] : collection)
        keys.push_back(key);
    return keys;
}

TEST(KeyedCollection, KeepsOrderAndSpellingAndFindsKeysWithoutRegardToCase) {
    Collection collection;
    for (const char* key : {"zebra", "Caf\xC9", "mouse"})
        EXPECT_TRUE(collection.TryAdd(key, static_cast<int>(collection.Count())));
    EXPECT_EQ(KeysOf(collection), (std::vector<std::string>{"zebra", "Caf\xC9", "mouse"}));
    EXPECT_EQ(collection.KeyAt(1), "Caf\xC9");
    EXPECT_EQ(collection.ItemAt(2), 2);
    EXPECT_EQ(collection.IndexOf("caf\xE9"), 1u);
    ASSERT_NE(collection.Find("CAF\xE9"), nullptr);
    EXPECT_EQ(*collection.Find("CAF\xE9"), 1);
    EXPECT_EQ(collection.Find("cafe"), nullptr);
    EXPECT_EQ(collection.IndexOf(""), Collection::None);
    EXPECT_FALSE(collection.TryAdd("MOUSE", 7));
    EXPECT_EQ(FailureOf([&] { collection.Add("Mouse", 7); }).Number, FailureDuplicateKey);
    EXPECT_EQ(collection.Count(), 3u);
    EXPECT_EQ(*collection.Find("mouse"), 2) << "a key that is taken keeps its item";
}

TEST(KeyedCollection, RemovesAndFindsTheRest) {
    Collection collection;
    for (const char* key : {"a", "b", "c"})
        collection.Add(key, key[0]);
    EXPECT_TRUE(collection.Remove("B"));
    EXPECT_FALSE(collection.Remove("b"));
    EXPECT_EQ(KeysOf(collection), (std::vector<std::string>{"a", "c"}));
    EXPECT_EQ(collection.IndexOf("C"), 1u);
    collection.Add("B", 7);
    EXPECT_EQ(collection.IndexOf("b"), 2u);
    auto entries = collection.TakeAll();
    EXPECT_FALSE(collection.Exists("a"));
    std::swap(entries[0], entries[1]);
    collection.Refill(std::move(entries));
    EXPECT_EQ(KeysOf(collection), (std::vector<std::string>{"c", "a", "B"}));
    EXPECT_EQ(collection.IndexOf("A"), 1u);
    collection.RemoveAll();
    EXPECT_TRUE(collection.Empty());
    EXPECT_FALSE(collection.Exists("a"));
    EXPECT_TRUE(collection.TryAdd("a", 1));
}

TEST(KeyedCollection, FindsEachOfManyKeys) {
    Collection collection;
    constexpr int many = 10000;
    for (int i = 0; i < many; ++i)
        collection.Add("Event_" + std::to_string(i), i);
    for (int i = 0; i < many; ++i) {
        ASSERT_EQ(collection.IndexOf("eVENT_" + std::to_string(i)), static_cast<std::size_t>(i));
        ASSERT_FALSE(collection.TryAdd("EVENT_" + std::to_string(i), 0));
    }
    EXPECT_EQ(collection.Count(), static_cast<std::size_t>(many));
}

} // namespace
} // namespace velmora
