#include "services/BubbleSort.h"
#include "services/Catalogues.h"
#include "services/KeyedCollection.h"

#include "FailureOf.h"

#include <gmock/gmock.h>

#include <random>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;
using ::testing::Pointee;

/// A key and where it stood.
using Numbered = std::pair<std::int32_t, std::size_t>;

/// The game's sort, pass by pass, up to and including the index `upper`.
void SortByPasses(std::vector<Numbered>& list, bool descending, std::size_t upper) {
    for (std::size_t limit = upper, lastSwap = 0; limit > 0; limit = lastSwap) {
        lastSwap = 0;
        for (std::size_t j = 0; j < limit; ++j)
            if ((list[j].first > list[j + 1].first) != descending) {
                std::swap(list[j], list[j + 1]);
                lastSwap = j;
            }
    }
}

TEST(BubbleSort, GivesTheOrderOfThePassesEqualsIncluded) {
    std::mt19937 random(1);
    for (std::size_t round = 0; round < 4000; ++round) {
        std::vector<Numbered> list(round % 40);
        for (std::size_t i = 0; i < list.size(); ++i)
            list[i] = {static_cast<std::int32_t>(random() % (1 + round % 59)) - 20, i};
        auto expected = list;
        const bool descending = random() % 2 == 1;
        const std::size_t upper = list.empty() ? HighestIndex : random() % list.size();
        SortByPasses(expected, descending, list.empty() ? 0 : upper);
        BubbleSortBy(list, &Numbered::first, descending, upper + 1 == list.size() ? HighestIndex : upper);
        ASSERT_EQ(list, expected) << "round " << round;
    }
}

TEST(BubbleSort, ComparesTextsWithoutRegardToCaseAndNumbersByValue) {
    std::vector<std::string> texts{"Same", "b", "same", "SAME", "C"};
    BubbleSort(texts);
    EXPECT_EQ(texts, (std::vector<std::string>{"b", "C", "Same", "same", "SAME"}));
    BubbleSort(texts, true, 2);
    EXPECT_EQ(texts, (std::vector<std::string>{"Same", "C", "b", "same", "SAME"}));
    std::vector<std::int32_t> numbers{10, -2147483647 - 1, 9, 2147483647, -1};
    BubbleSort(numbers);
    EXPECT_EQ(numbers, (std::vector<std::int32_t>{-2147483647 - 1, -1, 9, 10, 2147483647}));
    EXPECT_EQ(FailureOf([&] { BubbleSort(numbers, true, 5); }).Number, FailureSubscript);
    EXPECT_EQ(numbers.back(), 2147483647) << "a list that is too short stays as it is";
}

TEST(KeyedCollection, KeepsOrderAndSpellingAndFindsKeysWithoutRegardToCase) {
    KeyedCollection<int> collection;
    EXPECT_FALSE(collection.Exists("zebra"));
    for (const char* key : {"zebra", "Caf\xC9", "mouse"})
        EXPECT_TRUE(collection.TryAdd(key, key[0]));
    EXPECT_FALSE(collection.TryAdd("MOUSE", 7));
    EXPECT_EQ(FailureOf([&] { collection.Add("Mouse", 7); }).Number, FailureDuplicateKey);
    EXPECT_EQ(collection.KeyAt(1), "Caf\xC9");
    EXPECT_EQ(collection.ItemAt(2), 'm') << "a key that is taken keeps its item";
    EXPECT_THAT(collection.Find("caf\xE9"), Pointee('C'));
    EXPECT_EQ(collection.Find("cafe"), nullptr);
    EXPECT_TRUE(collection.Remove("ZEBRA"));
    EXPECT_FALSE(collection.Remove("zebra"));
    EXPECT_EQ(collection.IndexOf("MOUSE"), 1u);
    collection.Add("Zebra", 7);
    auto entries = collection.TakeAll();
    EXPECT_FALSE(collection.Exists("mouse"));
    std::swap(entries[0], entries[1]);
    collection.Refill(std::move(entries));
    EXPECT_THAT(std::vector(collection.begin(), collection.end()),
                ElementsAre(Pair("mouse", 'm'), Pair("Caf\xC9", 'C'), Pair("Zebra", 7)));
    EXPECT_EQ(collection.IndexOf("caf\xC9"), 1u);
    collection.RemoveAll();
    EXPECT_TRUE(collection.Empty());
    EXPECT_TRUE(collection.TryAdd("mouse", 1));
}

TEST(KeyedCollection, FindsEachOfManyKeys) {
    KeyedCollection<int> collection;
    constexpr std::size_t many = 10000;
    for (std::size_t i = 0; i < many; ++i)
        collection.Add("Event_" + std::to_string(i), 0);
    for (std::size_t i = 0; i < many; ++i)
        ASSERT_EQ(collection.IndexOf("eVENT_" + std::to_string(i)), i);
}

std::string ListOf(const Catalogue& catalogue) {
    std::string list;
    for (const auto& [name, number] : catalogue)
        list += name + ' ' + std::to_string(number) + ", ";
    return list;
}

TEST(Catalogues, HoldTheirEntriesInTheGamesOrderHoweverOftenTheyAreBuilt) {
    BuildCatalogues();
    BuildCatalogues();
    EXPECT_THAT((std::vector{UPIssueAttributes.Count(), RandomEventAttributes.Count(), UPIssueTypes.Count(),
                             AIVoteBehaviours.Count(), SBModuleAbilities.Count()}),
                ElementsAre(26, 28, 23, 8, 11));
    EXPECT_EQ(ListOf(ColonialEventAttributes),
              "No Effect 0, Max Pop Growth 1, Morale Bonus 2, Social Prod Bonus 3, Planet Quality Bonus 4, "
              "Economic Bonus 5, Research Bonus 9, Starship Quality Bonus 10, Cash-o-la 200, ");
    EXPECT_EQ(ListOf(SBModuleTypes), "Military 1, Economic 2, Cultural 3, Defensive 4, Mining 5, ");
    EXPECT_EQ(ListOf(SBModuleTiers), "First Tier 1, Second Tier 2, Third Tier 3, ");
    EXPECT_EQ(*StarbaseModels.Find("Standard Starbase"), "Starbase01");
    ReleaseCatalogues();
    EXPECT_TRUE(RandomEventAttributes.Empty() && SBModuleTiers.Empty() && StarbaseModels.Empty() &&
                SBModuleAbilities.Empty());
}

TEST(Catalogues, FindNumbersNamesAndHintsAndTheFirstEntryForTheUnknown) {
    BuildCatalogues();
    using Case = std::pair<const char*, std::int32_t>;
    for (const auto& [name, number] :
         {Case{"Economic", 0}, Case{"No Of Trade Routes", 19}, Case{"Ship Range", 22}, Case{"loyalty", 27}}) {
        EXPECT_THAT(UPIssueAttributes.Find(name), Pointee(number)) << name;
        EXPECT_THAT(RandomEventAttributes.Find(name), Pointee(number + 100)) << name;
    }
    for (const auto& [name, number] : {Case{"Ability power-up", 8}, Case{"Standardized Gov't", 18},
                                       Case{"- BCs, + Morale", 26}, Case{"Screw the leading civ", 31}})
        EXPECT_THAT(UPIssueTypes.Find(name), Pointee(number)) << name;
    EXPECT_THAT(AIVoteBehaviours.Find("Vote self if losing, otherwise friend"), Pointee(7));
    EXPECT_FALSE(UPIssueAttributes.Exists("No Effect") || UPIssueAttributes.Exists("Cash-o-la"));
    EXPECT_EQ(NameByNumber(RandomEventAttributes, 120), "No Effect");
    EXPECT_EQ(NameByNumber(RandomEventAttributes, 200), "Cash-o-la");
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "mining"), 3u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "TerrorStar"), 10u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "Resource Mining"), 0u);
    EXPECT_EQ(PositionByName(SBModuleTiers, "SECOND TIER"), 1u);
    EXPECT_EQ(PositionByName(SBModuleAbilities, "nowhere"), 0u);
    SBModuleTiers.Add("Other Tier", 2);
    EXPECT_EQ(NameByNumber(SBModuleTiers, 2), "Other Tier") << "the last of equal items";
    EXPECT_EQ(AttributeHint("interest rates"), "Affects terms offered when buying things");
    EXPECT_EQ(AttributeHint("nowhere"), "");
    for (const Catalogue* catalogue : {&RandomEventAttributes, &ColonialEventAttributes})
        for (const auto& [name, number] : *catalogue)
            EXPECT_EQ(AttributeHint(name).empty(), name == "No Effect") << name;
    ReleaseCatalogues();
}

} // namespace
} // namespace velmora
