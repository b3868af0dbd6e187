#pragma once

#include "services/Catalogues.h"
#include "services/modWriter.h"
#include "upissues/clsUPIssue.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What the game demands of a UP issue, and what it makes of each type's values.
namespace velmora {

/// The members behind the six option boxes, the six option value boxes and the four substitution boxes of the
/// question, in box order.
extern const std::array<std::string clsUPIssue::*, 6> UPIssueOptions;
extern const std::array<std::int32_t clsUPIssue::*, 6> UPIssueOptionValues;
extern const std::array<std::int32_t clsUPIssue::*, 4> UPIssueQuestionSubs;

/// A recommended length of a text, in characters, with the name of its rule.
struct UPIssueTextLimit {
    std::string_view Label; ///< "Question" in messages
    std::size_t MaximumLength;
    std::string_view Rule;
};
inline constexpr UPIssueTextLimit UPIssueQuestionLimit{"Question", 530, "question-length"};
inline constexpr UPIssueTextLimit UPIssueOptionLimit{"Option", 30, "option-length"};
inline constexpr std::int32_t UPIssueMaximumWildCards = 4;

/// Fills the catalogue of what a "%s" in a question can stand for.
void BuildUPIssueSubstitutions(Catalogue& subs);
/// The same, filled once.
const Catalogue& UPIssueSubs();
/// The hint for a substitution of a question; empty for any other name.
std::string_view UPIssueSubstitutionHint(std::string_view name);

/// How the game uses the option values, value fields and years of one type of issue.
struct Guidance {
    std::string Caption; ///< lines end with 13; empty for a type without guidance
    std::array<std::string_view, 4> ValueCaptions{"not used", "not used", "not used", "not used"};
    std::array<bool, 4> LeftAligned{}; ///< captions that are centred when false
    bool ShowsAbilityBox = false;      ///< a box of abilities stands in place of the first value field

    /// The game offers the major races as the options.
    [[nodiscard]] bool IsAutoListed() const;
    /// The first option is Yes, the second No, the others are ignored.
    [[nodiscard]] bool IsYesNo() const;
    /// The years in effect mean nothing.
    [[nodiscard]] bool IgnoresYears() const;
};
/// `number` is one of UPIssueTypes.
Guidance OfferGuidance(std::int32_t number);

/// The unit of an ability's strength: "percent", "moves" or "routes".
std::string_view AbilityUnit(std::string_view ability);

/// Doubles lone percent signs in the question, sub-question and options, as leaving their fields does.
void NormalizeUPIssue(clsUPIssue& issue);

/// Every reason that an issue is not fit for the game. Types whose guidance says that the game lists the
/// races itself must not have options or option values; all others must have some. `optionValueSum` is the
/// sum of the absolute option values. Substitution codes that the catalogue lacks count as "Nothing".
std::vector<Problem> CheckUPIssue(const clsUPIssue& issue, std::string_view guidanceCaption,
                                  double optionValueSum, const Catalogue& subs);
/// The same from the record alone; a type that UPIssueTypes lacks counts as its first entry.
std::vector<Problem> CheckUPIssue(const clsUPIssue& issue, const Catalogue& subs);
/// Notes on texts that are longer than recommended once the issue is normalised.
void CheckUPIssueLengths(const clsUPIssue& issue, std::vector<Problem>& problems);

} // namespace velmora
