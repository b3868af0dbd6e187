#include "services/Settings.h"

#include "platform/Process.h"

namespace velmora {

std::string HelpFile(const std::string& name) {
    const std::string programFolder = Files::FolderOf(Process::ExecutablePath());
    for (const std::string& path :
         {ProgramFile(name), programFolder + name, programFolder + "../share/velmora-writer/" + name})
        if (Files::FileExists(path))
            return path;
    return ProgramFile(name);
}

} // namespace velmora
