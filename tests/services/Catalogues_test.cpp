#include "services/Catalogues.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>
#include <vector>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

class Catalogues : public ::testing::Test {
  protected:
    void SetUp() override { BuildCatalogues(); }
    void TearDown() override { ReleaseCatalogues(); }
};

template <class Item>
std::vector<std::pair<std::string, Item>> EntriesOf(const KeyedCollection<Item>& catalogue) {
    return {catalogue.begin(), catalogue.end()};
}

TEST_F(Catalogues, HoldTheirEntriesInTheGamesOrderHoweverOftenTheyAreBuilt) {
    BuildCatalogues();
    using Counts = std::vector<std::size_t>;
    EXPECT_EQ((Counts{UPIssueAttributes.Count(), RandomEventAttributes.Count(), UPIssueTypes.Count(),
                      AIVoteBehaviours.Count(), SBModuleAbilities.Count()}),
              (Counts{26, 28, 23, 8, 11}));
    EXPECT_THAT(EntriesOf(ColonialEventAttributes),
                ElementsAre(Pair("No Effect", 0), Pair("Max Pop Growth", 1), Pair("Morale Bonus", 2),
                            Pair("Social Prod Bonus", 3), Pair("Planet Quality Bonus", 4),
                            Pair("Economic Bonus", 5), Pair("Research Bonus", 9),
                            Pair("Starship Quality Bonus", 10), Pair("Cash-o-la", 200)));
    EXPECT_THAT(EntriesOf(SBModuleTypes),
                ElementsAre(Pair("Military", 1), Pair("Economic", 2), Pair("Cultural", 3),
                            Pair("Defensive", 4), Pair("Mining", 5)));
    EXPECT_THAT(EntriesOf(SBModuleTiers),
                ElementsAre(Pair("First Tier", 1), Pair("Second Tier", 2), Pair("Third Tier", 3)));
    EXPECT_THAT(EntriesOf(StarbaseModels), ElementsAre(Pair("Standard Starbase", "Starbase01")));
    ReleaseCatalogues();
    EXPECT_TRUE(RandomEventAttributes.Empty());
    EXPECT_TRUE(SBModuleAbilities.Empty());
}

TEST_F(Catalogues, FindNumbersOfNamesWithoutRegardToCase) {
    using Case = std::tuple<const Catalogue*, const char*, std::int32_t>;
    for (const auto& [table, name, number] :
         {Case{&RandomEventAttributes, "cash-o-la", 200}, Case{&RandomEventAttributes, "NO EFFECT", 0},
          Case{&RandomEventAttributes, "No Of Trade Routes", 119},
          Case{&RandomEventAttributes, "Ship Range", 122}, Case{&UPIssueAttributes, "Economic", 0},
          Case{&UPIssueAttributes, "No Of Trade Routes", 19}, Case{&UPIssueAttributes, "Ship Range", 22},
          Case{&UPIssueAttributes, "loyalty", 27}, Case{&UPIssueTypes, "Ability power-up", 8},
          Case{&UPIssueTypes, "Standardized Gov't", 18}, Case{&UPIssueTypes, "- BCs, + Morale", 26},
          Case{&UPIssueTypes, "Screw the leading civ", 31}, Case{&AIVoteBehaviours, "Randomly vote", 0},
          Case{&AIVoteBehaviours, "Vote self if losing, otherwise friend", 7}}) {
        ASSERT_NE(table->Find(name), nullptr) << name;
        EXPECT_EQ(*table->Find(name), number) << name;
    }
    EXPECT_FALSE(UPIssueAttributes.Exists("No Effect"));
    EXPECT_FALSE(UPIssueAttributes.Exists("Cash-o-la"));
}

TEST_F(Catalogues, SelectByNumberCodeAndNameTheFirstEntryForTheUnknown) {
    EXPECT_EQ(NameByNumber(RandomEventAttributes, 120), "No Effect");
    EXPECT_EQ(NameByNumber(RandomEventAttributes, 103), "Ship Speed");
    EXPECT_EQ(NameByNumber(UPIssueTypes, -1), "Change number of trade routes");
    EXPECT_EQ(PositionByNumber(ColonialEventAttributes, 200), 8u);
    EXPECT_EQ(PositionByNumber(ColonialEventAttributes, 6), 0u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "mining"), 3u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "TerrorStar"), 10u);
    EXPECT_EQ(PositionByCode(SBModuleAbilities, "Resource Mining"), 0u);
    EXPECT_EQ(*SBModuleAbilities.Find("Resource Mining"), "Mining");
    EXPECT_EQ(PositionByName(SBModuleTiers, "SECOND TIER"), 1u);
    EXPECT_EQ(PositionByName(SBModuleAbilities, "nowhere"), 0u);
    Catalogue twice;
    twice.Add("first", 1);
    twice.Add("second", 2);
    twice.Add("third", 2);
    EXPECT_EQ(PositionByNumber(twice, 2), 2u) << "the last of equal items";
    EXPECT_EQ(NameByNumber(twice, 2), "third");
}

TEST_F(Catalogues, HintAtWhatAnAttributeDoes) {
    EXPECT_EQ(AttributeHint("interest rates"), "Affects terms offered when buying things");
    EXPECT_EQ(AttributeHint("nowhere"), "");
    for (const Catalogue* catalogue : {&RandomEventAttributes, &ColonialEventAttributes, &UPIssueAttributes})
        for (const auto& [name, number] : *catalogue)
            EXPECT_EQ(AttributeHint(name).empty(), name == "No Effect") << name;
}

} // namespace
} // namespace velmora
