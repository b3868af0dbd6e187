#include "editor/HostTextViewer.h"

#include "platform/Failure.h"
#include "platform/Process.h"

namespace velmora {

bool OpenInHostTextViewer(const std::string& path, const std::function<void()>& /*failed*/) {
    try {
        Process::Start({"Notepad", path});
        return true;
    } catch (const Failure&) {
        return false;
    }
}

} // namespace velmora
