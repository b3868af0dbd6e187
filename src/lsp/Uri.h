#pragma once

#include <string>
#include <string_view>

namespace velmora::lsp {

/// The core's text of the path that a "file:" address names; empty for any other address.
std::string PathOfUri(std::string_view uri);
/// The address of a file.
std::string UriOf(std::string_view path);

} // namespace velmora::lsp
