#pragma once

#include <ctime>
#include <optional>
#include <string>

namespace velmora {

/// A local time as the host's user writes it: short date, a blank, long time. Nothing where the host has no
/// custom of its own (the "C" locale) or writes it with characters beyond ASCII.
std::optional<std::string> HostDate(std::time_t time);

} // namespace velmora
