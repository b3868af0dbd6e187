#include "records/TextFault.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::size_t LongestLine = std::size_t{16} << 20;

TextFault FaultIn(std::size_t line, const std::string& what) {
    return {line, "This is no text file: " + what + " in line " + std::to_string(line)};
}

} // namespace

TextFault FindTextFault(std::string_view bytes) {
    // Nearly every file is found sound by this one look.
    if (bytes.size() <= LongestLine && bytes.find('\0') == std::string_view::npos)
        return {};
    for (std::size_t number = 1; !bytes.empty(); ++number) {
        const std::string_view line = bytes.substr(0, bytes.find('\n'));
        if (line.size() > LongestLine)
            return FaultIn(number, "a line of " + std::to_string(line.size()) + " bytes");
        if (line.find('\0') != std::string_view::npos)
            return FaultIn(number, "a NUL byte");
        bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
    }
    return {};
}

} // namespace velmora
