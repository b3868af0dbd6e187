#include "lsp/Meanings.h"

#include "events/EventRules.h"
#include "sbmodules/clsSBModule.h"
#include "services/Catalogues.h"
#include "upissues/UPIssueRules.h"

#include <algorithm>

namespace velmora::lsp {

namespace {

using HintOf = std::string_view (*)(std::string_view name);

std::vector<Choice> ChoicesIn(const Catalogue& catalogue, HintOf hintOf = AttributeHint) {
    std::vector<Choice> choices;
    for (const auto& [name, number] : catalogue)
        choices.push_back({std::to_string(number), name, std::string(hintOf(name))});
    return choices;
}

std::vector<Choice> ChoicesIn(const CodeCatalogue& catalogue) {
    std::vector<Choice> choices;
    for (const auto& [name, code] : catalogue)
        choices.push_back({'"' + code + '"', name, std::string(AttributeHint(name))});
    return choices;
}

std::vector<Choice> EventChoices(std::string_view field, const NumberOf& numberOf) {
    if (field == "EventType")
        return {{"0", "Colonial", "It befalls one colony"},
                {"1", "Random", "It befalls the whole civilization"}};
    if (field.ends_with("Attribute"))
        return ChoicesIn(numberOf("EventType") != 0 ? RandomEventAttributes : ColonialEventAttributes);
    if (field.find("Str0") == std::string_view::npos)
        return {};
    Catalogue subs;
    BuildWildCardSubs(subs);
    return ChoicesIn(subs, EventSubstitutionHint);
}

std::string LinesOf(std::string text) {
    std::ranges::replace(text, '\r', '\n');
    return text;
}

std::vector<Choice> IssueChoices(std::string_view field, const NumberOf& numberOf) {
    if (field == "UPIssueAttribute") {
        auto types = ChoicesIn(UPIssueTypes);
        for (Choice& type : types)
            type.Hint = LinesOf(OfferGuidance(*UPIssueTypes.Find(type.Name)).Caption);
        return types;
    }
    if (field == "HowAIWouldVote")
        return ChoicesIn(AIVoteBehaviours);
    if (field == "Value01" && OfferGuidance(numberOf("UPIssueAttribute")).ShowsAbilityBox)
        return ChoicesIn(UPIssueAttributes);
    if (!field.starts_with("QuestionStr"))
        return {};
    Catalogue subs;
    BuildUPIssueSubstitutions(subs);
    return ChoicesIn(subs, UPIssueSubstitutionHint);
}

std::vector<Choice> ModuleChoices(std::string_view field) {
    if (field == "ModuleType")
        return ChoicesIn(SBModuleTypes);
    if (field == "ModuleSize")
        return ChoicesIn(SBModuleTiers);
    if (field == "Model")
        return ChoicesIn(StarbaseModels);
    return field == "LocalAbility" ? ChoicesIn(SBModuleAbilities) : std::vector<Choice>();
}

std::string Length(std::string text, std::size_t maximum) {
    NormalizeWildCards(text); // as the check counts
    return std::to_string(text.size()) + " of " + std::to_string(maximum) + " characters";
}

} // namespace

std::vector<Choice> ChoicesOf(const RecordKind& kind, const Field& field, const NumberOf& numberOf) {
    if (&kind == &EventKind)
        return EventChoices(field.Property, numberOf);
    return &kind == &UPIssueKind ? IssueChoices(field.Property, numberOf) : ModuleChoices(field.Property);
}

std::string AboutField(const RecordKind& kind, const Field& field, std::string_view value,
                       const NumberOf& numberOf) {
    const std::string text(value);
    if (&kind == &EventKind) {
        for (const EventText& limited : EventTexts)
            if (limited.Field == field.Property)
                return Length(text, limited.MaximumLength);
        return field.Property == "MoralityWeight" ? "From 1 to 5" : "";
    }
    if (&kind != &UPIssueKind)
        return {};
    if (field.Property == "Question")
        return Length(text, UPIssueQuestionLimit.MaximumLength);
    if (field.Property.starts_with("Option0"))
        return Length(text, UPIssueOptionLimit.MaximumLength);
    if (field.Property.starts_with("Value0"))
        return std::string(OfferGuidance(numberOf("UPIssueAttribute"))
                               .ValueCaptions.at(static_cast<std::size_t>(field.Property.back() - '1')));
    return {};
}

} // namespace velmora::lsp
