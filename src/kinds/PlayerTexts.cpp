#include "kinds/PlayerTexts.h"

#include "events/EventRules.h"
#include "services/modWriter.h"
#include "upissues/UPIssueRules.h"

#include <algorithm>

namespace velmora {

namespace {

const Field* FieldOf(const RecordKind& kind, std::string_view property) {
    const auto found = std::ranges::find(kind.Fields, property, &Field::Property);
    return found == kind.Fields.end() ? nullptr : &*found;
}

template <std::size_t Index>
std::vector<std::int32_t> EventSubs(const Record& record) {
    std::vector<std::int32_t> numbers;
    const EventText& text = EventTexts[Index];
    for (std::size_t i = 0; i < text.Boxes; ++i)
        numbers.push_back(static_cast<const clsEvent&>(record).*EventSubstitutions[text.FirstBox + i]);
    return numbers;
}

std::vector<std::int32_t> QuestionSubs(const Record& record) {
    std::vector<std::int32_t> numbers;
    numbers.reserve(std::size(UPIssueQuestionSubs));
    for (const auto member : UPIssueQuestionSubs)
        numbers.push_back(static_cast<const clsUPIssue&>(record).*member);
    return numbers;
}

std::vector<PlayerText> EventPlayerTexts() {
    constexpr std::vector<std::int32_t> (*subs[])(const Record&){EventSubs<0>, EventSubs<1>, EventSubs<2>,
                                                                 EventSubs<3>};
    std::vector<PlayerText> texts{{FieldOf(EventKind, "Title"), "Title"}};
    for (std::size_t i = 0; i < EventTexts.size(); ++i)
        texts.push_back({FieldOf(EventKind, EventTexts[i].Field), EventTexts[i].Label,
                         EventTexts[i].MaximumLength, EventTexts[i].LengthRule, subs[i]});
    return texts;
}

std::vector<PlayerText> IssuePlayerTexts() {
    std::vector<PlayerText> texts;
    for (const Field& field : UPIssueKind.Fields)
        if (field.Property == "Question")
            texts.push_back({&field, "Question", UPIssueQuestionLimit.MaximumLength,
                             UPIssueQuestionLimit.Rule, QuestionSubs});
        else if (field.Property == "SubQuestion")
            texts.push_back({&field, "Sub-question"});
        else if (field.Type == FieldType::Text)
            texts.push_back(
                {&field, field.Property, UPIssueOptionLimit.MaximumLength, UPIssueOptionLimit.Rule});
    return texts;
}

} // namespace

std::span<const PlayerText> PlayerTextsOf(const RecordKind& kind) {
    static const std::vector<PlayerText> events = EventPlayerTexts();
    static const std::vector<PlayerText> issues = IssuePlayerTexts();
    if (&kind == &EventKind)
        return events;
    return &kind == &UPIssueKind ? std::span<const PlayerText>(issues) : std::span<const PlayerText>();
}

std::string SubstitutionNames(const RecordKind& kind, const PlayerText& text, const Record& record) {
    if (text.Substitutions == nullptr)
        return {};
    Catalogue names;
    &kind == &EventKind ? BuildWildCardSubs(names) : BuildUPIssueSubstitutions(names);
    std::vector<std::int32_t> numbers = text.Substitutions(record);
    while (!numbers.empty() && numbers.back() == 0)
        numbers.pop_back();
    std::vector<std::string> told;
    told.reserve(numbers.size());
    for (const std::int32_t number : numbers)
        told.push_back(NameByNumber(names, number));
    return Join(told, ", ");
}

} // namespace velmora
