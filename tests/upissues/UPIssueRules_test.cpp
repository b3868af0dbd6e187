#include "upissues/UPIssueRules.h"

#include <gmock/gmock.h>

#include <limits>
#include <type_traits>

namespace velmora {
namespace {

using ::testing::ElementsAre;

/// A sound issue of a type with options.
class UPIssueRulesTest : public ::testing::Test {
  protected:
    UPIssueRulesTest() {
        BuildCatalogues();
        BuildUPIssueSubstitutions(subs);
        issue.UPIssueAttribute = 3; // has options
        issue.Question = "Shall the %s pay for %s?";
        issue.QuestionStr01 = 5;
        issue.QuestionStr02 = 7;
        issue.Option03 = "Yes";
        issue.OptionVal06 = -5;
    }
    ~UPIssueRulesTest() override { ReleaseCatalogues(); }

    template <class Value>
    static clsUPIssue With(clsUPIssue issue, Value clsUPIssue::*member, std::type_identity_t<Value> value) {
        issue.*member = std::move(value);
        return issue;
    }
    static std::string RulesOf(const std::vector<Problem>& reasons) {
        std::string rules;
        for (const Problem& reason : reasons)
            rules.append(reason.Rule).append(" ");
        return rules;
    }

    Catalogue subs;
    clsUPIssue issue;
};

/// The types with their captions, those of the values that they use, and "+" for the box of abilities.
const std::string EveryGuidance = R"(
1 #1 + #2 = Yes/No, #3-#6 ignored.|Years In Effect ignored with this setting. [1: # of trade routes to alter.]
2 #1 + #2 = Yes/No, #3-#6 ignored.|
3 BC per month value taken from winning OptVal.
4 BC per month value taken from winning OptVal.
5 New base attack value taken from winning OptVal.
6 Increased revenue for specified number of years.|Auto-lists major races as the options.
7 Freighters protected from attack.  Percentage of money lost to the Trade Federation taken from winning OptVal.
8 Affects the specified civ-wide ability.|Years In Effect ignored with this setting.|Auto-lists major races as the options. [1: Choose the ability to power-up.] [2: Strength of new ability.]+
11 Winning civ gets a new colony, use PlanetName to specify which one.|Auto-lists major races as the options.
12 #1 + #2 = Yes/No, #3-#6 ignored.|All major races at war have to make peace.
13 Increases revenue, but there's a chance the beasties will escape and wreak havoc.|Auto-lists major races as the options.
14 Evil civs are forced to suspend some trading, route limit taken from winning OptVal.
16 Number of modules allowed on a starbase is restricted, module limit taken from winning OptVal.
17 #1 + #2 = Yes/No, #3-#6 ignored.|Starbases with assist upgrades will help allied ships/planets in the sector.
18 New gov't from OptVal (0=No change, 1=Imperial, 2=Republic, 3=Democracy, 4=Star Federation).
20 Increased production, but there's a chance of a Prison Break.|Auto-lists major races as the options.
21 A planet is chosen as the UP HQ, increasing Influence.|Auto-lists major races as the options.
22 Each player has to exchange technology secrets.  Number of techs to share taken from winning OptVal.
25 #1 + #2 = Yes/No, #3-#6 ignored.|Will Terror Stars be allowed in the Galaxy?
26 Each race puts money towards an event, morale is increased for the specified number of years.  BC value taken from winning OptVal.
28 BC per month (per Starbase) value taken from winning OptVal.
30 New base speed taken from winning OptVal.
31 Whoever is winning (use Selected Race) has to pay everyone else a % of their revenue, value taken from winning OptVal.
)";

TEST(OfferGuidance, ExplainsEveryType) {
    std::string seen = "\n";
    for (std::int32_t number = -1; number < 40; ++number) {
        const Guidance guidance = OfferGuidance(number);
        std::string line = ReplaceAll(guidance.Caption, "\r", "|");
        for (std::size_t i = 0; i < guidance.ValueCaptions.size(); ++i) {
            const std::string caption(guidance.ValueCaptions[i]);
            EXPECT_EQ(guidance.LeftAligned[i], caption != "not used") << number;
            if (guidance.LeftAligned[i])
                line += " [" + std::to_string(i + 1) + ": " + caption + "]";
        }
        if (guidance.ShowsAbilityBox)
            line += "+";
        if (!line.empty())
            seen += std::to_string(number) + " " + line + "\n";
    }
    EXPECT_EQ(seen, EveryGuidance);
}

TEST_F(UPIssueRulesTest, NameTheSubstitutionsInOrder) {
    std::vector<std::string> seen;
    for (const auto& [name, code] : subs)
        seen.push_back(std::to_string(code) + " " + name + ": " + std::string(UPIssueSubstitutionHint(name)));
    EXPECT_THAT(seen,
                ElementsAre("0 Nothing: ", "1 Player Name: What the player typed in at the start of the game",
                            "2 Empire Name: Name of the human race",
                            "5 Selected Race: The race this issue targets, not always applicable",
                            "7 Planet Name: The planet this issue targets, not always applicable"));
    EXPECT_EQ(UPIssueSubstitutionHint("Good Value"), "");
}

TEST(UPIssueRules, MeasureAbilitiesInTheirUnits) {
    EXPECT_EQ(AbilityUnit("Ship Speed"), "moves");
    EXPECT_EQ(AbilityUnit("no of trade routes"), "routes");
    EXPECT_EQ(AbilityUnit("Luck"), "percent");
}

TEST_F(UPIssueRulesTest, GiveEveryReasonInOrder) {
    using I = clsUPIssue;
    clsUPIssue races;
    races.UPIssueAttribute = 6; // lists the races
    races.Question = "Who shall hold the games?";
    const clsUPIssue four = With(With(issue, &I::QuestionStr03, 1), &I::QuestionStr04, 1);
    const clsUPIssue valued = With(issue, &I::OptionVal06, std::numeric_limits<std::int32_t>::min());
    using Case = std::tuple<const char*, clsUPIssue, std::string>;
    for (const auto& [what, checked, rules] :
         {Case{"sound", issue, ""}, Case{"sound where the game lists the races", races, ""},
          Case{"empty but for a box", With(clsUPIssue(), &I::QuestionStr04, 1),
               "no-question no-options no-option-values wild-cards-missing wild-card-count "},
          Case{"the least value", With(valued, &I::Option03, ""), "no-options "},
          Case{"an option", With(races, &I::Option06, "Yes"), "unneeded-options "},
          Case{"values that do not cancel out", With(With(races, &I::OptionVal01, 1), &I::OptionVal02, -1),
               "unneeded-option-values "},
          Case{"an unknown type, taken for the first", With(races, &I::UPIssueAttribute, 32),
               "no-options no-option-values "},
          Case{"a code of no substitution, which is nothing", With(issue, &I::QuestionStr02, 3),
               "wild-card-placement wild-card-count "},
          Case{"five wild cards", With(four, &I::Question, "%s %s %S %s %s"), "too-many-wild-cards "}})
        EXPECT_EQ(RulesOf(CheckUPIssue(checked, subs)), rules) << what;
    EXPECT_EQ(RulesOf(CheckUPIssue(issue, "AUTO-LISTS all", 0.25, subs)),
              "unneeded-options unneeded-option-values ")
        << "the guidance on show rules";
}

} // namespace
} // namespace velmora
