#pragma once

#include "records/RecordKind.h"

#include <cstdint>
#include <string>

namespace velmora {

/// One question that the game can put before the galactic council, with up to six options to vote on.
class clsUPIssue : public Record {
  public:
    std::string UPIssueName;
    std::string Question;    ///< may hold four "%s" wild cards
    std::string SubQuestion; ///< not yet used by the game
    std::string Option01;
    std::string Option02;
    std::string Option03;
    std::string Option04;
    std::string Option05;
    std::string Option06;
    std::int32_t OptionVal01 = 0; ///< applied when the option wins; for yes or no 1 and 0
    std::int32_t OptionVal02 = 0;
    std::int32_t OptionVal03 = 0;
    std::int32_t OptionVal04 = 0;
    std::int32_t OptionVal05 = 0;
    std::int32_t OptionVal06 = 0;
    std::int32_t UPIssueAttribute = 0; ///< a number of UPIssueTypes: what the winning option does
    std::int32_t AppliesTo = 0;        ///< not used by the game, as Prereq and Probability
    std::int32_t Prereq = 0;
    std::int32_t Probability = 0;
    std::int32_t YearsInEffect = 0; ///< 0 for the rest of the game
    std::int32_t Value01 = 0;       ///< parameter of some types; for "Ability power-up" the ability's number
    std::int32_t Value02 = 0;
    std::int32_t Value03 = 0; ///< not used by the game, as Value04
    std::int32_t Value04 = 0;
    std::int32_t QuestionStr01 = 0; ///< substitution codes, 0 for none
    std::int32_t QuestionStr02 = 0;
    std::int32_t QuestionStr03 = 0;
    std::int32_t QuestionStr04 = 0;
    std::int32_t HowAIWouldVote = 0; ///< a number of AIVoteBehaviours

    std::int32_t UPIssueNumber = 0; ///< 1-based position in the editor's order

    /// The block of file text. The argument has no effect.
    [[nodiscard]] std::string GenerateUPIssueString(bool) const;
    [[nodiscard]] std::string_view AddingStatus() const override { return "ADDING THIS UP ISSUE"; }
};

/// UP issue files: "*.UPIssue" in the data directory's UP_Issues.
extern const RecordKind UPIssueKind;

} // namespace velmora
