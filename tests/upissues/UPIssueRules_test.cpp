#include "upissues/UPIssueRules.h"

#include "LibraryFixture.h"

#include <set>

namespace velmora {
namespace {

using ::testing::ElementsAre;

constexpr std::int32_t WarfareTax = 3;
constexpr std::int32_t GalacticOlympics = 6;

/// A sound issue of a type with options.
class UPIssueRulesTest : public ::testing::Test {
  protected:
    UPIssueRulesTest() {
        BuildCatalogues();
        BuildUPIssueSubstitutions(subs);
        issue.UPIssueAttribute = WarfareTax;
        issue.Question = "Shall the %s pay for %s?";
        issue.QuestionStr01 = 5;
        issue.QuestionStr02 = 7;
        issue.Option03 = "Yes";
        issue.OptionVal06 = -5;
    }
    ~UPIssueRulesTest() override { ReleaseCatalogues(); }

    static clsUPIssue AutoListed() {
        clsUPIssue issue;
        issue.UPIssueAttribute = GalacticOlympics;
        issue.Question = "Who shall hold the games?";
        return issue;
    }
    template <class Value>
    static clsUPIssue With(clsUPIssue issue, Value clsUPIssue::*member, std::type_identity_t<Value> value) {
        issue.*member = std::move(value);
        return issue;
    }
    static std::vector<std::string> RulesOf(const std::vector<Reason>& reasons) {
        std::vector<std::string> rules;
        for (const Reason& reason : reasons)
            rules.push_back(reason.Rule);
        return rules;
    }

    Catalogue subs;
    clsUPIssue issue;
};

struct GuidanceCase {
    std::int32_t Number;
    std::string Caption;
    std::string Value01 = "not used";
    std::string Value02 = "not used";
    bool ShowsAbilityBox = false;
};

const GuidanceCase GuidanceCases[] = {
    {1, "#1 + #2 = Yes/No, #3-#6 ignored.|Years In Effect ignored with this setting.",
     "# of trade routes to alter."},
    {2, "#1 + #2 = Yes/No, #3-#6 ignored.|"},
    {3, "BC per month value taken from winning OptVal."},
    {4, "BC per month value taken from winning OptVal."},
    {5, "New base attack value taken from winning OptVal."},
    {6, "Increased revenue for specified number of years.|Auto-lists major races as the options."},
    {7, "Freighters protected from attack.  Percentage of money lost to the Trade Federation taken from "
        "winning OptVal."},
    {8,
     "Affects the specified civ-wide ability.|Years In Effect ignored with this setting.|Auto-lists major "
     "races as the options.",
     "Choose the ability to power-up.", "Strength of new ability.", true},
    {11, "Winning civ gets a new colony, use PlanetName to specify which one.|Auto-lists major races as the "
         "options."},
    {12, "#1 + #2 = Yes/No, #3-#6 ignored.|All major races at war have to make peace."},
    {13, "Increases revenue, but there's a chance the beasties will escape and wreak havoc.|Auto-lists major "
         "races as the options."},
    {14, "Evil civs are forced to suspend some trading, route limit taken from winning OptVal."},
    {16, "Number of modules allowed on a starbase is restricted, module limit taken from winning OptVal."},
    {17, "#1 + #2 = Yes/No, #3-#6 ignored.|Starbases with assist upgrades will help allied ships/planets in "
         "the sector."},
    {18, "New gov't from OptVal (0=No change, 1=Imperial, 2=Republic, 3=Democracy, 4=Star Federation)."},
    {20, "Increased production, but there's a chance of a Prison Break.|Auto-lists major races as the "
         "options."},
    {21, "A planet is chosen as the UP HQ, increasing Influence.|Auto-lists major races as the options."},
    {22, "Each player has to exchange technology secrets.  Number of techs to share taken from winning "
         "OptVal."},
    {25, "#1 + #2 = Yes/No, #3-#6 ignored.|Will Terror Stars be allowed in the Galaxy?"},
    {26, "Each race puts money towards an event, morale is increased for the specified number of years.  BC "
         "value taken from winning OptVal."},
    {28, "BC per month (per Starbase) value taken from winning OptVal."},
    {30, "New base speed taken from winning OptVal."},
    {31, "Whoever is winning (use Selected Race) has to pay everyone else a % of their revenue, value taken "
         "from winning OptVal."},
    // No types of the game.
    {0, ""},
    {9, ""},
    {32, ""},
    {-1, ""},
};

TEST(OfferGuidance, ExplainsEveryType) {
    for (const GuidanceCase& expected : GuidanceCases) {
        SCOPED_TRACE(expected.Number);
        const Guidance guidance = OfferGuidance(expected.Number);
        EXPECT_EQ(ReplaceAll(guidance.Caption, "\r", "|"), expected.Caption);
        EXPECT_THAT(guidance.ValueCaptions,
                    ElementsAre(expected.Value01, expected.Value02, "not used", "not used"));
        EXPECT_THAT(guidance.LeftAligned, ElementsAre(expected.Value01 != "not used",
                                                      expected.Value02 != "not used", false, false));
        EXPECT_EQ(guidance.ShowsAbilityBox, expected.ShowsAbilityBox);
    }
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
    EXPECT_EQ(UPIssueSubstitutionHint("EMPIRE NAME"), "Name of the human race");
    EXPECT_EQ(UPIssueSubstitutionHint("Good Value"), "");
}

TEST_F(UPIssueRulesTest, MeasureAbilitiesInTheirUnits) {
    ASSERT_EQ(UPIssueAttributes.Count(), 26u);
    for (const auto& [name, number] : UPIssueAttributes) {
        EXPECT_EQ(AbilityUnit(name), name == "Ship Speed"           ? "moves"
                                     : name == "No Of Trade Routes" ? "routes"
                                                                    : "percent")
            << name;
        EXPECT_THAT(AttributeHint(name), ::testing::StartsWith("Affects ")) << name;
    }
}

TEST_F(UPIssueRulesTest, GiveEveryReasonInOrder) {
    using I = clsUPIssue;
    clsUPIssue empty;
    empty.UPIssueAttribute = WarfareTax;
    clsUPIssue five = issue;
    five.Question = "%s %s %S %s %s";
    five.QuestionStr02 = five.QuestionStr03 = five.QuestionStr04 = 1;
    const clsUPIssue races = AutoListed();
    const std::int32_t least = std::numeric_limits<std::int32_t>::min();
    const struct {
        const char* What;
        clsUPIssue Issue;
        std::vector<std::string> Rules;
    } cases[]{
        {"sound", issue, {}},
        {"sound where the game lists the races", races, {}},
        {"empty but for a box",
         With(empty, &I::QuestionStr04, 1),
         {"no-question", "no-options", "no-option-values", "wild-cards-missing", "wild-card-count"}},
        {"no values", With(issue, &I::OptionVal06, 0), {"no-option-values"}},
        {"the least value", With(With(issue, &I::Option03, ""), &I::OptionVal01, least), {"no-options"}},
        {"an option", With(races, &I::Option06, "Yes"), {"unneeded-options"}},
        {"values that do not cancel out",
         With(With(races, &I::OptionVal01, 1), &I::OptionVal02, -1),
         {"unneeded-option-values"}},
        {"an unknown type, taken for the first", With(issue, &I::UPIssueAttribute, 9), {}},
        {"an unknown type without options",
         With(races, &I::UPIssueAttribute, 32),
         {"no-options", "no-option-values"}},
        {"a code of no substitution, which is nothing",
         With(issue, &I::QuestionStr02, 3),
         {"wild-card-placement", "wild-card-count"}},
        {"five wild cards", five, {"too-many-wild-cards"}},
    };
    for (const auto& [what, checked, rules] : cases)
        EXPECT_EQ(RulesOf(CheckUPIssue(checked, subs)), rules) << what;
}

TEST_F(UPIssueRulesTest, ObeyTheGuidanceOnShow) {
    EXPECT_THAT(RulesOf(CheckUPIssue(issue, "AUTO-LISTS all", 0.25, subs)),
                ElementsAre("unneeded-options", "unneeded-option-values"));
    EXPECT_THAT(RulesOf(CheckUPIssue(issue, "", 0, subs)), ElementsAre("no-option-values"));
}

TEST(UPIssueRules, NormalizesWhatShowingNormalizes) {
    clsUPIssue issue;
    issue.UPIssueName = "100%";
    issue.Question = "100% of %S";
    issue.SubQuestion = "5%";
    for (const auto option : UPIssueOptions)
        issue.*option = "1%";
    NormalizeUPIssue(issue);
    EXPECT_EQ(issue.UPIssueName, "100%");
    EXPECT_EQ(issue.Question, "100%% of %s");
    EXPECT_EQ(issue.SubQuestion, "5%%");
    EXPECT_THAT((std::vector<std::string>{issue.Option01, issue.Option02, issue.Option03, issue.Option04,
                                          issue.Option05, issue.Option06}),
                ::testing::Each("1%%"));
}

class SampleUPIssuesTest : public LibraryFixture {
  protected:
    SampleUPIssuesTest() : LibraryFixture(UPIssueKind, "MyUPIssues.upissue") { BuildCatalogues(); }
    ~SampleUPIssuesTest() override { ReleaseCatalogues(); }
};

TEST_F(SampleUPIssuesTest, AreFitForTheGameAndOfEveryType) {
    ASSERT_TRUE(LoadSample("Data/UP_Issues"));
    Catalogue subs;
    BuildUPIssueSubstitutions(subs);
    std::set<std::int32_t> types;
    for (const auto& [name, record] : library.Records) {
        auto& issue = static_cast<clsUPIssue&>(*record);
        NormalizeUPIssue(issue);
        types.insert(issue.UPIssueAttribute);
        for (const Reason& reason : CheckUPIssue(issue, subs))
            ADD_FAILURE() << name << ": " << reason.Text;
        EXPECT_LE(issue.Question.size(), UPIssueQuestionLimit.MaximumLength) << name;
        for (const auto option : UPIssueOptions)
            EXPECT_LE((issue.*option).size(), UPIssueOptionLimit.MaximumLength) << name;
    }
    EXPECT_EQ(types.size(), UPIssueTypes.Count());
}

} // namespace
} // namespace velmora
