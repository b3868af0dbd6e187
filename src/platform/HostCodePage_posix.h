#pragma once

#include "platform/HostCodePage.h"

namespace velmora::HostCodePage {

/// The table of a character set by the name that the host knows it by. Nothing when the host does not know
/// it, when it takes more than one byte a character, or when it is no extension of ASCII.
std::optional<Table> TableOf(const char* characterSet);

} // namespace velmora::HostCodePage
