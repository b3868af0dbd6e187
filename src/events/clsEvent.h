#pragma once

#include "records/RecordKind.h"

#include <cstdint>
#include <string>

namespace velmora {

/// One happening that the game can put before a player, with a good, a neutral and an evil answer.
class clsEvent : public Record {
  public:
    std::string EventName;
    std::string Title;
    std::string Description; ///< may hold four "%s" wild cards
    std::string Image;       ///< path below the game directory, backslashes doubled
    std::string GoodOption;  ///< each answer may hold two "%s"
    std::string NeutralOption;
    std::string EvilOption;
    std::int32_t EventType = 0;     ///< 0 colonial, 1 random
    std::int32_t GoodAttribute = 0; ///< numbers of RandomEventAttributes or ColonialEventAttributes
    std::int32_t NeutralAttribute = 0;
    std::int32_t EvilAttribute = 0;
    std::int32_t GoodValue = 0;
    std::int32_t NeutralValue = 0;
    std::int32_t EvilValue = 0;
    std::int32_t GoodPopChange = 0; ///< millions
    std::int32_t NeutralPopChange = 0;
    std::int32_t EvilPopChange = 0;
    std::int32_t MoralityWeight = 0; ///< 1 (a lot) to 5 (a little)
    std::int32_t Probability = 0;
    std::int32_t DescStr01 = 0; ///< substitution codes, 0 for none
    std::int32_t DescStr02 = 0;
    std::int32_t DescStr03 = 0;
    std::int32_t DescStr04 = 0;
    std::int32_t GoodOptStr01 = 0;
    std::int32_t GoodOptStr02 = 0;
    std::int32_t NeutralOptStr01 = 0;
    std::int32_t NeutralOptStr02 = 0;
    std::int32_t EvilOptStr01 = 0;
    std::int32_t EvilOptStr02 = 0;

    std::int32_t EventNumber = 0; ///< 1-based position in the editor's order

    /// The event's block of file text. The argument has no effect.
    [[nodiscard]] std::string GenerateEventString(bool) const;
    [[nodiscard]] std::string_view AddingStatus() const override { return "ADDING THIS EVENT"; }
};

/// Event files: "*.event" in the data directory.
extern const RecordKind EventKind;

} // namespace velmora
