#include "upissues/UPIssueRules.h"

#include "LibraryFixture.h"

#include <set>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

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

    void MakeAutoListed() {
        issue = {};
        issue.UPIssueAttribute = GalacticOlympics;
        issue.Question = "Who shall hold the games?";
    }
    std::vector<std::string> Rules() const { return RulesOf(CheckUPIssue(issue, subs)); }
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

TEST_F(UPIssueRulesTest, GuideEveryTypeOfTheCatalogue) {
    ASSERT_EQ(UPIssueTypes.Count(), 23u);
    std::set<std::string> autoListed;
    for (const auto& [name, number] : UPIssueTypes) {
        const std::string caption = OfferGuidance(number).Caption;
        EXPECT_FALSE(caption.empty()) << name;
        if (caption.find("Auto-lists") != std::string::npos)
            autoListed.insert(name);
    }
    EXPECT_THAT(autoListed, ElementsAre("Ability power-up", "Free colony", "Galactic Olympics",
                                        "Galactic Zoo", "Prison Planet", "UP Headquarters"));
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

TEST_F(UPIssueRulesTest, AcceptASoundIssue) {
    EXPECT_THAT(Rules(), IsEmpty());
    MakeAutoListed();
    EXPECT_THAT(Rules(), IsEmpty());
}

TEST_F(UPIssueRulesTest, ListEveryReasonInOrder) {
    issue = {};
    issue.UPIssueAttribute = WarfareTax;
    issue.QuestionStr04 = 1;
    std::vector<std::string> texts;
    for (const Reason& reason : CheckUPIssue(issue, subs))
        texts.push_back(reason.Text + " [" + reason.Rule + "]");
    EXPECT_THAT(texts,
                ElementsAre("No Question text set, please specify the question before the UP High Council. "
                            "[no-question]",
                            "None of the Option text fields have been filled in. [no-options]",
                            "None of the Option Value fields have been filled in. [no-option-values]",
                            "No wild cards in the Question text, but Wild Card subs were set. "
                            "[wild-cards-missing]",
                            "1 Wild Card Sub boxes were set, but there are 0 '%s' character groupings in the "
                            "Question text. [wild-card-count]"));
}

TEST_F(UPIssueRulesTest, ForbidOptionsWhereTheGameListsTheRaces) {
    MakeAutoListed();
    issue.Option06 = "Yes";
    std::vector<Reason> reasons = CheckUPIssue(issue, subs);
    ASSERT_EQ(reasons.size(), 1u);
    EXPECT_EQ(reasons[0].Text,
              "The Option text fields have been filled in, but this is not necessary when the "
              "choices are auto-listed.");
    EXPECT_EQ(reasons[0].Rule, "unneeded-options");
    issue.Option06.clear();
    issue.OptionVal01 = 1;
    issue.OptionVal02 = -1;
    reasons = CheckUPIssue(issue, subs);
    ASSERT_EQ(reasons.size(), 1u) << "values of different sign do not cancel out";
    EXPECT_EQ(reasons[0].Text, "The Option Value fields have been filled in, but this is not necessary when "
                               "the choices are auto-listed.");
    EXPECT_EQ(reasons[0].Rule, "unneeded-option-values");
}

TEST_F(UPIssueRulesTest, DemandOptionsElsewhere) {
    issue.OptionVal06 = 0;
    EXPECT_THAT(Rules(), ElementsAre("no-option-values"));
    issue.Option03.clear();
    issue.OptionVal01 = std::numeric_limits<std::int32_t>::min();
    EXPECT_THAT(Rules(), ElementsAre("no-options"));
}

TEST_F(UPIssueRulesTest, ObeyTheGuidanceOnShow) {
    EXPECT_THAT(RulesOf(CheckUPIssue(issue, "AUTO-LISTS all", 0.25, subs)),
                ElementsAre("unneeded-options", "unneeded-option-values"));
    EXPECT_THAT(RulesOf(CheckUPIssue(issue, "", 0, subs)), ElementsAre("no-option-values"));
}

TEST_F(UPIssueRulesTest, TakeAnUnknownTypeForTheFirst) {
    issue.UPIssueAttribute = 9;
    EXPECT_THAT(Rules(), IsEmpty());
    MakeAutoListed();
    issue.UPIssueAttribute = 32;
    EXPECT_THAT(Rules(), ElementsAre("no-options", "no-option-values"));
}

TEST_F(UPIssueRulesTest, CountWildCardsAgainstTheFourBoxes) {
    issue.QuestionStr02 = 3;
    EXPECT_THAT(Rules(), ElementsAre("wild-card-placement", "wild-card-count"))
        << "a code of no substitution is nothing";
    issue.Question = "%s %s %S %s %s";
    issue.QuestionStr02 = issue.QuestionStr03 = issue.QuestionStr04 = 1;
    EXPECT_THAT(Rules(), ElementsAre("too-many-wild-cards"));
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
