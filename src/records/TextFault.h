#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velmora {

/// Why a file's bytes are no text, with the line; an empty text for a file that is one. A power cut can leave
/// a file of zeros, and reading one as a text would take minutes.
struct TextFault {
    std::size_t Line = 0;
    std::string Text; ///< "This is no text file: a NUL byte in line 2"
};
TextFault FindTextFault(std::string_view bytes);

} // namespace velmora
