#pragma once

#include <span>
#include <string_view>

namespace velmora {

/// A rule that messages and reasons are filed under.
struct RuleEntry {
    std::string_view Name; ///< stable: "unneeded-space"
    std::string_view Game; ///< the rule of the game behind it, in a sentence
};

/// The name of the rule that every failure is filed under.
inline constexpr std::string_view LoadFailureRule = "load-failure";

/// Every rule that loading and the record checks know.
std::span<const RuleEntry> Rules();
bool IsRule(std::string_view name);

} // namespace velmora
