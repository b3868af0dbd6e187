#pragma once

#include <string>

namespace velmora {

/// Starts the host's text viewer on a file (Notepad on Windows, the desktop's default elsewhere) without
/// waiting. False when none can be started.
bool OpenInHostTextViewer(const std::string& path);

} // namespace velmora
