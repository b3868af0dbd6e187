#pragma once

#include <ctime>
#include <string>

namespace velmora {

/// A time of day and year here, in a form of strftime; at most 63 characters.
inline std::string TimeText(std::time_t time, const char* form) {
    char text[64];
    return {text, std::strftime(text, sizeof text, form, std::localtime(&time))};
}

/// What tells a copy that is kept from others by its date: ".20250131-235959".
inline std::string DateMark(std::time_t time) {
    return TimeText(time, ".%Y%m%d-%H%M%S");
}

} // namespace velmora
