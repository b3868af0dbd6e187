#pragma once

#include <functional>
#include <string>

namespace velmora {

/// Starts the host's text viewer on a file (Notepad on Windows, the desktop's default elsewhere) without
/// waiting. False when none can be started; `failed` is called later when the one that was started ends
/// without having shown the file, where the host tells.
bool OpenInHostTextViewer(const std::string& path, const std::function<void()>& failed);

} // namespace velmora
