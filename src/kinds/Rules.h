#pragma once

#include <span>
#include <string>
#include <string_view>

namespace velmora {

/// A rule that problems are filed under.
struct RuleEntry {
    std::string_view Name; ///< stable: "unneeded-space"
    std::string_view Game; ///< the rule of the game behind it, in a sentence
};

/// Every rule that loading and the record checks know.
std::span<const RuleEntry> Rules();
bool IsRule(std::string_view name);
/// The rule of the game behind a rule; empty for an unknown one.
std::string GameRule(std::string_view name);

} // namespace velmora
