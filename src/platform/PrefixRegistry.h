#pragma once

#include "platform/Registry.h"

#include <optional>
#include <string>
#include <string_view>

/// The registry text that a Windows compatibility layer keeps in its prefix ("system.reg"). It is read only.
///
///     [Software\\Corvane\\Velmora] 1700000000
///     #time=1da1a2b3c4d5e6f
///     "Path"="C:\\Games\\Velmora"
///     "Home"=str(2):"%ProgramFiles%\\Velmora"
///
/// Keys are paths below the local machine. Texts are UTF-8 with escapes, numbers stand as in REGEDIT4. Lines
/// that make no sense are passed over.
namespace velmora::PrefixRegistry {

bool KeyExists(std::string_view text, std::string_view key);

/// Nothing when key or value is missing, or for a text that is kept as plain numbers.
std::optional<RegistryValue> Read(std::string_view text, std::string_view key, std::string_view name);

} // namespace velmora::PrefixRegistry
