#pragma once

#include "records/RecordKind.h"
#include "services/GameText.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// A text of a kind's records that players read.
struct PlayerText {
    const Field* Shown;
    std::string_view Label;           ///< "Good Option"
    std::size_t Limit = 0;            ///< recommended length in characters, 0 for none
    std::string_view LengthRule = {}; ///< of the note that it is longer
    /// The numbers of its substitutions in the order of its wild cards, 0 for none; not set without boxes.
    std::vector<std::int32_t> (*Substitutions)(const Record&) = nullptr;
};

/// The texts of a kind that players read, in file order; none for a kind that is only read.
std::span<const PlayerText> PlayerTextsOf(const RecordKind& kind);

/// What a record's substitutions of a text stand for: "Player Name, Nothing"; empty without any.
std::string SubstitutionNames(const RecordKind& kind, const PlayerText& text, const Record& record);

} // namespace velmora
