#pragma once

#include "services/Catalogues.h"
#include "services/GameText.h"

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// What the author lets stand in for the substitutions, by their names; empty for their names in brackets.
using SampleNames = std::map<std::string, std::string, std::less<>>;

/// One text of a record as the player meets it.
struct PreviewPart {
    std::string Heading;            ///< "Good answer"; empty for what the record is about
    std::vector<TextPiece> Text;    ///< as the game shows it, wild cards filled in; lines end with 13
    std::string Effect;             ///< what choosing it does, in words
    std::vector<std::string> Notes; ///< substitutions that are set for no wild card
};

/// A record as the player meets it.
struct Preview {
    std::string Picture; ///< as the record names it; empty for a kind whose records have none
    std::string Title;
    std::vector<PreviewPart> Parts;
};

/// A text with a substitution code for each of its boxes, of which 0 means none.
PreviewPart PreviewText(std::string_view heading, std::string_view text, std::span<const std::int32_t> codes,
                        const Catalogue& substitutions, const SampleNames& samples);

/// "+8", "-8", "0".
std::string Signed(std::int32_t number);

} // namespace velmora
