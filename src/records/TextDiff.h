#pragma once

#include <string>
#include <string_view>

namespace velmora {

/// The lines that differ, each followed by 13: "- old" and "+ new", with "@ LINE" before each group, LINE
/// counted in the old text. Cut after some hundred lines, and said so. Texts with very long differences are
/// told as all old and all new lines.
std::string DiffLines(std::string_view before, std::string_view after);

} // namespace velmora
