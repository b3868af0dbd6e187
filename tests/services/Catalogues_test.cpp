#include "services/Catalogues.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

class Catalogues : public ::testing::Test {
  protected:
    void SetUp() override { BuildCatalogues(); }
    void TearDown() override { ReleaseCatalogues(); }
};

template <class Item>
using Entries = std::vector<std::pair<std::string, Item>>;

template <class Item>
Entries<Item> EntriesOf(const KeyedCollection<Item>& catalogue) {
    return {catalogue.begin(), catalogue.end()};
}

TEST_F(Catalogues, HoldTheirEntriesHoweverOftenTheyAreBuilt) {
    BuildCatalogues();
    const std::pair<const Catalogue*, std::size_t> counts[] = {
        {&UPIssueAttributes, 26}, {&RandomEventAttributes, 28}, {&ColonialEventAttributes, 9},
        {&UPIssueTypes, 23},      {&AIVoteBehaviours, 8},       {&SBModuleTypes, 5},
        {&SBModuleTiers, 3}};
    for (const auto& [catalogue, count] : counts)
        EXPECT_EQ(catalogue->Count(), count) << catalogue->KeyAt(0);
    EXPECT_EQ(StarbaseModels.Count(), 1u);
    EXPECT_EQ(SBModuleAbilities.Count(), 11u);
    ReleaseCatalogues();
    EXPECT_TRUE(RandomEventAttributes.Empty());
    EXPECT_TRUE(SBModuleAbilities.Empty());
}

TEST_F(Catalogues, ListTheShortTablesInTheGamesOrder) {
    EXPECT_EQ(EntriesOf(ColonialEventAttributes), (Entries<std::int32_t>{{"No Effect", 0},
                                                                         {"Max Pop Growth", 1},
                                                                         {"Morale Bonus", 2},
                                                                         {"Social Prod Bonus", 3},
                                                                         {"Planet Quality Bonus", 4},
                                                                         {"Economic Bonus", 5},
                                                                         {"Research Bonus", 9},
                                                                         {"Starship Quality Bonus", 10},
                                                                         {"Cash-o-la", 200}}));
    EXPECT_EQ(EntriesOf(SBModuleTypes),
              (Entries<std::int32_t>{
                  {"Military", 1}, {"Economic", 2}, {"Cultural", 3}, {"Defensive", 4}, {"Mining", 5}}));
    EXPECT_EQ(EntriesOf(SBModuleTiers),
              (Entries<std::int32_t>{{"First Tier", 1}, {"Second Tier", 2}, {"Third Tier", 3}}));
    EXPECT_EQ(EntriesOf(StarbaseModels), (Entries<std::string>{{"Standard Starbase", "Starbase01"}}));
}

TEST_F(Catalogues, FindNumbersOfNamesWithoutRegardToCase) {
    const struct {
        const Catalogue* Table;
        const char* Name;
        std::int32_t Number;
    } cases[] = {
        {&RandomEventAttributes, "cash-o-la", 200},
        {&RandomEventAttributes, "NO EFFECT", 0},
        {&RandomEventAttributes, "No Of Trade Routes", 119},
        {&RandomEventAttributes, "Ship Range", 122},
        {&UPIssueAttributes, "Economic", 0},
        {&UPIssueAttributes, "No Of Trade Routes", 19},
        {&UPIssueAttributes, "Ship Range", 22},
        {&UPIssueAttributes, "loyalty", 27},
        {&UPIssueTypes, "Ability power-up", 8},
        {&UPIssueTypes, "Standardized Gov't", 18},
        {&UPIssueTypes, "- BCs, + Morale", 26},
        {&UPIssueTypes, "Screw the leading civ", 31},
        {&AIVoteBehaviours, "Randomly vote", 0},
        {&AIVoteBehaviours, "Vote self if losing, otherwise friend", 7},
    };
    for (const auto& [table, name, number] : cases) {
        ASSERT_NE(table->Find(name), nullptr) << name;
        EXPECT_EQ(*table->Find(name), number) << name;
    }
    EXPECT_FALSE(UPIssueAttributes.Exists("No Effect"));
    EXPECT_FALSE(UPIssueAttributes.Exists("Cash-o-la"));
}

TEST_F(Catalogues, ShowAnUnknownNumberAsTheirFirstEntry) {
    EXPECT_EQ(NameByNumber(RandomEventAttributes, 120), "No Effect");
    EXPECT_EQ(NameByNumber(RandomEventAttributes, 103), "Ship Speed");
    EXPECT_EQ(NameByNumber(UPIssueTypes, -1), "Change number of trade routes");
    EXPECT_EQ(PositionByNumber(ColonialEventAttributes, 200), 8u);
    EXPECT_EQ(PositionByNumber(ColonialEventAttributes, 6), 0u);
}

TEST_F(Catalogues, SelectTheLastOfEqualItems) {
    Catalogue twice;
    twice.Add("first", 1);
    twice.Add("second", 2);
    twice.Add("third", 2);
    EXPECT_EQ(PositionByNumber(twice, 2), 2u);
    EXPECT_EQ(NameByNumber(twice, 2), "third");
}

TEST_F(Catalogues, SelectByCodeAndByName) {
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "mining"), 3u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "TerrorStar"), 10u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "Resource Mining"), 0u);
    EXPECT_EQ(*SBModuleAbilities.Find("Resource Mining"), "Mining");
    EXPECT_EQ(*SBModuleTypes.Find("Mining"), 5);
    EXPECT_EQ(PositionByName(SBModuleTiers, "SECOND TIER"), 1u);
    EXPECT_EQ(PositionByName(SBModuleAbilities, "nowhere"), 0u);
}

TEST_F(Catalogues, HintAtWhatAnAttributeDoes) {
    EXPECT_EQ(AttributeHint("interest rates"), "Affects terms offered when buying things");
    EXPECT_EQ(AttributeHint("Starship Quality Bonus"),
              "Affects the quality of starships built at this planet");
    EXPECT_EQ(AttributeHint("No Effect"), "");
    EXPECT_EQ(AttributeHint("nowhere"), "");
    for (const Catalogue* catalogue : {&RandomEventAttributes, &ColonialEventAttributes, &UPIssueAttributes})
        for (const auto& [name, number] : *catalogue)
            EXPECT_EQ(AttributeHint(name).empty(), name == "No Effect") << name;
}

} // namespace
} // namespace velmora
