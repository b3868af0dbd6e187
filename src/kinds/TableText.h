#pragma once

#include <string>

namespace velmora {

/// A file of text as UTF-8, whatever program wrote it: UTF-8 or UTF-16 with a byte order mark; without one
/// UTF-8 where it is that, else the code page.
std::string TableText(const std::string& bytes);

} // namespace velmora
