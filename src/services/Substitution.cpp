#include "services/Substitution.h"

#include "platform/CodePage.h"

#include <algorithm>

namespace velmora {

void AddSubstitutions(std::span<const Substitution> substitutions, Catalogue& subs) {
    for (const Substitution& substitution : substitutions)
        subs.Add(std::string(substitution.Name), substitution.Code);
}

std::string_view HintOf(std::span<const Substitution> substitutions, std::string_view name) {
    const auto found =
        std::find_if(substitutions.begin(), substitutions.end(),
                     [&](const Substitution& entry) { return CodePage::EqualNoCase(entry.Name, name); });
    return found == substitutions.end() ? std::string_view() : found->Hint;
}

} // namespace velmora
