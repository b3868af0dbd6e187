#include "kinds/QuickFixes.h"

#include "events/EventRules.h"
#include "upissues/UPIssueRules.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

/// The substitutions of a record's text, in the order of its wild cards.
std::vector<std::int32_t*> SubstitutionsOf(const RecordKind& kind, Record& record, std::string_view field) {
    std::vector<std::int32_t*> subs;
    if (&kind == &EventKind) {
        for (const EventText& text : EventTexts)
            for (std::size_t i = 0; text.Field == field && i < text.Boxes; ++i)
                subs.push_back(&(static_cast<clsEvent&>(record).*EventSubstitutions[text.FirstBox + i]));
    } else if (&kind == &UPIssueKind && field == "Question") {
        for (const auto member : UPIssueQuestionSubs)
            subs.push_back(&(static_cast<clsUPIssue&>(record).*member));
    }
    return subs;
}

bool IsOfWildCards(const Problem& problem) {
    return problem.Rule.starts_with("wild-");
}

/// True when a record's wild cards and substitutions of a text go together.
bool Fits(const RecordKind& kind, const Record& record, std::string_view field, const CheckContext& context) {
    std::vector<Problem> left;
    kind.Check(record, context, left);
    return std::ranges::none_of(left, [&](const Problem& problem) {
        return problem.Field == field && (IsOfWildCards(problem) || problem.Rule == "too-many-wild-cards");
    });
}

} // namespace

std::optional<QuickFix> QuickFixOf(const RecordKind& kind, const Record& record, const Problem& problem,
                                   const CheckContext& context) {
    if (!IsOfWildCards(problem))
        return std::nullopt;
    auto fixed = kind.Copy(record);
    const auto subs = SubstitutionsOf(kind, *fixed, problem.Field);
    // What is set is kept, unless there is nothing that it could stand for.
    std::vector<std::int32_t> set;
    for (const std::int32_t* sub : subs)
        if (*sub != 0)
            set.push_back(*sub);
    for (std::size_t i = 0; i < subs.size(); ++i)
        *subs[i] = i < set.size() ? set[i] : 0;
    if (Fits(kind, *fixed, problem.Field, context))
        return QuickFix{"Move the substitution up", std::move(fixed)};
    fixed = kind.Copy(record);
    const auto last = SubstitutionsOf(kind, *fixed, problem.Field);
    for (auto sub = last.rbegin(); sub != last.rend(); ++sub) {
        *(*sub) = 0;
        if (Fits(kind, *fixed, problem.Field, context))
            return QuickFix{"Drop the substitution without wild card", std::move(fixed)};
    }
    return std::nullopt;
}

} // namespace velmora
