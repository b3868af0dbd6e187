#pragma once

#include "services/Catalogues.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace velmora {

/// Something that a "%s" can stand for.
struct Substitution {
    std::string_view Name;
    std::int32_t Code; ///< what the files hold
    std::string_view Hint;
};

/// Adds the names with their codes to a catalogue.
void AddSubstitutions(std::span<const Substitution> substitutions, Catalogue& subs);
/// The hint shown when a substitution is picked; empty for a name that is none of them.
std::string_view HintOf(std::span<const Substitution> substitutions, std::string_view name);

} // namespace velmora
