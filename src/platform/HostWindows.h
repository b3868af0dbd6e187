#pragma once

// The system header renames these to its own functions; ours keep their names.
#include <windows.h>
#undef CopyFile
#undef DeleteFile

#include "platform/PathTexts.h"

#include <string>
#include <string_view>

namespace velmora {

inline std::wstring ToWide(std::string_view text) {
    return PathTexts::HostName(text).native();
}

inline std::string FromWide(const std::wstring& text) {
    return PathTexts::NameText(text);
}

} // namespace velmora
