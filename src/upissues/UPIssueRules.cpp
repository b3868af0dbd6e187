#include "upissues/UPIssueRules.h"

#include "platform/CodePage.h"
#include "services/Substitution.h"

#include <algorithm>
#include <cmath>

namespace velmora {

using U = clsUPIssue;

const std::array<std::string clsUPIssue::*, 6> UPIssueOptions{&U::Option01, &U::Option02, &U::Option03,
                                                              &U::Option04, &U::Option05, &U::Option06};
const std::array<std::int32_t clsUPIssue::*, 6> UPIssueOptionValues{
    &U::OptionVal01, &U::OptionVal02, &U::OptionVal03, &U::OptionVal04, &U::OptionVal05, &U::OptionVal06};
const std::array<std::int32_t clsUPIssue::*, 4> UPIssueQuestionSubs{&U::QuestionStr01, &U::QuestionStr02,
                                                                    &U::QuestionStr03, &U::QuestionStr04};

namespace {

constexpr std::array<Substitution, 5> Substitutions{{
    {"Nothing", 0, ""},
    {"Player Name", 1, "What the player typed in at the start of the game"},
    {"Empire Name", 2, "Name of the human race"},
    {"Selected Race", 5, "The race this issue targets, not always applicable"},
    {"Planet Name", 7, "The planet this issue targets, not always applicable"},
}};

constexpr std::string_view YesNo = "#1 + #2 = Yes/No, #3-#6 ignored.\r";
constexpr std::string_view AutoRaces = "\rAuto-lists major races as the options.";
constexpr std::string_view YearsIgnored = "Years In Effect ignored with this setting.";
constexpr std::string_view AutoListed = "Auto-lists";

struct TypeGuidance {
    std::int32_t Number;
    std::array<std::string_view, 4> Pieces;        ///< joined into the caption
    std::array<std::string_view, 2> ValueCaptions; ///< empty where the type does not use the value
    bool ShowsAbilityBox = false;
};

constexpr TypeGuidance Guidances[]{
    {1, {YesNo, YearsIgnored}, {"# of trade routes to alter."}},
    {2, {YesNo}, {}},
    {3, {"BC per month value taken from winning OptVal."}, {}},
    {4, {"BC per month value taken from winning OptVal."}, {}},
    {5, {"New base attack value taken from winning OptVal."}, {}},
    {6, {"Increased revenue for specified number of years.", AutoRaces}, {}},
    {7,
     {"Freighters protected from attack.  Percentage of money lost to the Trade Federation taken from "
      "winning OptVal."},
     {}},
    {8,
     {"Affects the specified civ-wide ability.", "\r", YearsIgnored, AutoRaces},
     {"Choose the ability to power-up.", "Strength of new ability."},
     true},
    {11, {"Winning civ gets a new colony, use PlanetName to specify which one.", AutoRaces}, {}},
    {12, {YesNo, "All major races at war have to make peace."}, {}},
    {13,
     {"Increases revenue, but there's a chance the beasties will escape and wreak havoc.", AutoRaces},
     {}},
    {14, {"Evil civs are forced to suspend some trading, route limit taken from winning OptVal."}, {}},
    {16,
     {"Number of modules allowed on a starbase is restricted, module limit taken from winning OptVal."},
     {}},
    {17, {YesNo, "Starbases with assist upgrades will help allied ships/planets in the sector."}, {}},
    {18,
     {"New gov't from OptVal (0=No change, 1=Imperial, 2=Republic, 3=Democracy, 4=Star Federation)."},
     {}},
    {20, {"Increased production, but there's a chance of a Prison Break.", AutoRaces}, {}},
    {21, {"A planet is chosen as the UP HQ, increasing Influence.", AutoRaces}, {}},
    {22,
     {"Each player has to exchange technology secrets.  Number of techs to share taken from winning "
      "OptVal."},
     {}},
    {25, {YesNo, "Will Terror Stars be allowed in the Galaxy?"}, {}},
    {26,
     {"Each race puts money towards an event, morale is increased for the specified number of years.  BC "
      "value taken from winning OptVal."},
     {}},
    {28, {"BC per month (per Starbase) value taken from winning OptVal."}, {}},
    {30, {"New base speed taken from winning OptVal."}, {}},
    {31,
     {"Whoever is winning (use Selected Race) has to pay everyone else a % of their revenue, value taken "
      "from winning OptVal."},
     {}},
};

bool IsAutoListing(std::string_view caption) {
    return CodePage::FindNoCase(caption, AutoListed) != std::string_view::npos;
}

bool HasOptions(const clsUPIssue& issue) {
    return std::any_of(UPIssueOptions.begin(), UPIssueOptions.end(),
                       [&](auto option) { return !(issue.*option).empty(); });
}

void CheckOptions(bool autoListed, bool hasOptions, bool hasValues, std::vector<Problem>& problems) {
    const auto demand = [&](bool met, std::string_view rule, std::string_view field, const char* text) {
        if (!met)
            problems.push_back(Reason(rule, field, text));
    };
    demand(autoListed || hasOptions, "no-options", "Option01",
           "None of the Option text fields have been filled in.");
    demand(autoListed || hasValues, "no-option-values", "OptionVal01",
           "None of the Option Value fields have been filled in.");
    demand(!autoListed || !hasOptions, "unneeded-options", "Option01",
           "The Option text fields have been filled in, but this is not necessary when the choices are "
           "auto-listed.");
    demand(!autoListed || !hasValues, "unneeded-option-values", "OptionVal01",
           "The Option Value fields have been filled in, but this is not necessary when the choices are "
           "auto-listed.");
}

} // namespace

void BuildUPIssueSubstitutions(Catalogue& subs) {
    AddSubstitutions(Substitutions, subs);
}

const Catalogue& UPIssueSubs() {
    static const struct Subs : Catalogue {
        Subs() { BuildUPIssueSubstitutions(*this); }
    } subs;
    return subs;
}

std::string_view UPIssueSubstitutionHint(std::string_view name) {
    return HintOf(Substitutions, name);
}

Guidance OfferGuidance(std::int32_t number) {
    Guidance guidance;
    const auto* found = std::find_if(std::begin(Guidances), std::end(Guidances),
                                     [&](const TypeGuidance& entry) { return entry.Number == number; });
    if (found == std::end(Guidances))
        return guidance;
    for (const std::string_view piece : found->Pieces)
        guidance.Caption += piece;
    for (std::size_t i = 0; i < found->ValueCaptions.size(); ++i)
        if (!found->ValueCaptions[i].empty()) {
            guidance.ValueCaptions[i] = found->ValueCaptions[i];
            guidance.LeftAligned[i] = true;
        }
    guidance.ShowsAbilityBox = found->ShowsAbilityBox;
    return guidance;
}

bool Guidance::IsAutoListed() const {
    return IsAutoListing(Caption);
}

bool Guidance::IsYesNo() const {
    return Caption.starts_with(YesNo);
}

bool Guidance::IgnoresYears() const {
    return Caption.find(YearsIgnored) != std::string::npos;
}

std::string_view AbilityUnit(std::string_view ability) {
    if (CodePage::EqualNoCase(ability, "Ship Speed"))
        return "moves";
    if (CodePage::EqualNoCase(ability, "No Of Trade Routes"))
        return "routes";
    return "percent";
}

void NormalizeUPIssue(clsUPIssue& issue) {
    NormalizeWildCards(issue.Question);
    NormalizeWildCards(issue.SubQuestion);
    for (const auto option : UPIssueOptions)
        NormalizeWildCards(issue.*option);
}

std::vector<Problem> CheckUPIssue(const clsUPIssue& issue, std::string_view guidanceCaption,
                                  double optionValueSum, const Catalogue& subs) {
    std::vector<Problem> problems;
    if (issue.Question.empty())
        problems.push_back(
            Reason("no-question", "Question",
                   "No Question text set, please specify the question before the UP High Council."));
    const bool autoListed = IsAutoListing(guidanceCaption);
    CheckOptions(autoListed, HasOptions(issue), optionValueSum != 0, problems);
    std::array<std::int32_t, 4> codes{};
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = subs.ItemAt(PositionByNumber(subs, issue.*UPIssueQuestionSubs[i]));
    CheckWildCards(issue.Question, UPIssueMaximumWildCards, UPIssueQuestionLimit.Label, codes, problems,
                   "Question");
    return problems;
}

std::vector<Problem> CheckUPIssue(const clsUPIssue& issue, const Catalogue& subs) {
    const std::int32_t type = UPIssueTypes.ItemAt(PositionByNumber(UPIssueTypes, issue.UPIssueAttribute));
    double sum = 0;
    for (const auto value : UPIssueOptionValues)
        sum += std::abs(static_cast<double>(issue.*value));
    return CheckUPIssue(issue, OfferGuidance(type).Caption, sum, subs);
}

void CheckUPIssueLengths(const clsUPIssue& issue, std::vector<Problem>& problems) {
    static constexpr std::array<std::string_view, 6> fields{"Option01", "Option02", "Option03",
                                                            "Option04", "Option05", "Option06"};
    const auto check = [&](const std::string& text, const UPIssueTextLimit& limit, std::string_view field) {
        CheckLength(text, limit.MaximumLength, limit.Label, limit.Rule, field, problems);
    };
    check(issue.Question, UPIssueQuestionLimit, "Question");
    for (std::size_t i = 0; i < fields.size(); ++i)
        check(issue.*UPIssueOptions[i], UPIssueOptionLimit, fields[i]);
}

} // namespace velmora
