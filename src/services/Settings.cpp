#include "services/Settings.h"

#include "platform/Process.h"

namespace velmora {

std::string HelpFile(const std::string& name) {
    const std::string programFolder = Files::FolderOf(Process::ExecutablePath());
    const std::string sharedFolder = programFolder + "../share/velmora-writer/";
    for (const std::string& path : {ProgramFile(name), programFolder + name, sharedFolder + name})
        if (Files::FileExists(path))
            return path;
    return ProgramFile(name);
}

} // namespace velmora
