#include "upissues/UPIssuePreview.h"

#include "services/modWriter.h"
#include "upissues/UPIssueRules.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

/// What the winning option of a type does. "{value}" stands for the option's value, "{1}" for the issue's
/// first value, "{ability}" for the ability and its change, "{government}" for the government of that number.
struct TypeEffect {
    std::int32_t Number;
    std::string_view Words;
};
constexpr TypeEffect Effects[]{
    {1, "number of trade routes {1}"},
    {2, "anomaly ownership in force"},
    {3, "{value} BC per month"},
    {4, "{value} BC per month"},
    {5, "new base attack value {value}"},
    {6, "increased revenue"},
    {7, "freighters protected from attack, {value} % of the money lost to the Trade Federation"},
    {8, "{ability}"},
    {11, "a new colony for the winner"},
    {12, "all major races at war have to make peace"},
    {13, "increased revenue, but the beasties may escape and wreak havoc"},
    {14, "evil civs keep at most {value} trade routes"},
    {16, "at most {value} modules on a starbase"},
    {17, "starbases with assist upgrades help allied ships and planets in the sector"},
    {18, "new government: {government}"},
    {20, "increased production, but a prison break may happen"},
    {21, "a planet becomes the UP headquarters, which increases Influence"},
    {22, "technologies to share: {value}"},
    {25, "Terror Stars are allowed in the Galaxy"},
    {26, "each race pays {value} BC, morale is increased"},
    {28, "{value} BC per month for each starbase"},
    {30, "new base speed {value}"},
    {31, "the leading civ pays everyone else {value} % of its revenue"},
};

constexpr std::array<std::string_view, 5> Governments{"no change", "Imperial", "Republic", "Democracy",
                                                      "Star Federation"};

std::string Government(std::int32_t number) {
    const bool known = number >= 0 && number < static_cast<std::int32_t>(Governments.size());
    return known ? std::string(Governments[static_cast<std::size_t>(number)])
                 : std::to_string(number) + ", which is none";
}

std::string Ability(const clsUPIssue& issue) {
    const std::string& name = NameByNumber(UPIssueAttributes, issue.Value01);
    return name + " " + Signed(issue.Value02) + " " + std::string(AbilityUnit(name));
}

std::string EffectOf(const clsUPIssue& issue, std::int32_t type, std::int32_t value) {
    const auto* found = std::find_if(std::begin(Effects), std::end(Effects),
                                     [&](const TypeEffect& effect) { return effect.Number == type; });
    if (found == std::end(Effects))
        return {};
    std::string words(found->Words);
    for (const auto& [sign, meant] : {std::pair("{value}", std::to_string(value)),
                                      {"{1}", Signed(issue.Value01)},
                                      {"{ability}", Ability(issue)},
                                      {"{government}", Government(value)}})
        words = ReplaceAll(words, sign, meant);
    return words;
}

std::string ForHowLong(const clsUPIssue& issue, const Guidance& guidance) {
    if (guidance.IgnoresYears())
        return {};
    if (issue.YearsInEffect == 0)
        return ", for the rest of the game";
    return ", for " + std::to_string(issue.YearsInEffect) + (issue.YearsInEffect == 1 ? " year" : " years");
}

std::string OptionEffect(const clsUPIssue& issue, std::int32_t type, const Guidance& guidance,
                         std::size_t option) {
    if (guidance.IsYesNo() && option > 0)
        return option == 1 ? "No: nothing changes" : "Ignored by the game";
    return (guidance.IsYesNo() ? "Yes: " : "") + EffectOf(issue, type, issue.*UPIssueOptionValues[option]) +
           ForHowLong(issue, guidance);
}

} // namespace

Preview PreviewUPIssue(const clsUPIssue& issue, const SampleNames& samples) {
    clsUPIssue normal = issue;
    NormalizeUPIssue(normal);
    const std::size_t place = PositionByNumber(UPIssueTypes, issue.UPIssueAttribute);
    const std::int32_t type = UPIssueTypes.ItemAt(place);
    const Guidance guidance = OfferGuidance(type);
    std::array<std::int32_t, 4> codes{};
    for (std::size_t i = 0; i < codes.size(); ++i)
        codes[i] = issue.*UPIssueQuestionSubs[i];
    Preview preview{{}, UPIssueTypes.KeyAt(place), {}};
    preview.Parts.push_back(PreviewText({}, normal.Question, codes, UPIssueSubs(), samples));
    if (guidance.IsAutoListed())
        preview.Parts.push_back(
            {"The major races", {}, EffectOf(issue, type, 0) + ForHowLong(issue, guidance), {}});
    for (std::size_t i = 0; i < UPIssueOptions.size(); ++i) {
        const std::string& text = normal.*UPIssueOptions[i];
        if (text.empty() && issue.*UPIssueOptionValues[i] == 0)
            continue;
        // Nothing but percent signs means anything in an option.
        preview.Parts.push_back(
            {"Option " + std::to_string(i + 1),
             {{TextPiece::Sort::Plain, ReplaceAll(text, "%%", "%")}},
             guidance.IsAutoListed() ? "Ignored by the game" : OptionEffect(issue, type, guidance, i),
             {}});
    }
    return preview;
}

} // namespace velmora
