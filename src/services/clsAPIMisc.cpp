#include "services/clsAPIMisc.h"

#include "platform/Files.h"
#include "platform/Process.h"
#include "services/Prompts.h"

#include <cmath>

namespace velmora {

void clsAPIMisc::C2Shell(const std::string& commandLine, std::optional<std::int16_t> windowStyle) {
    trace.Run("C2Shell", [&] { Process::RunAndWait(commandLine, windowStyle, WhileWaiting); });
}

void clsAPIMisc::GoToSleep(std::int32_t milliseconds) {
    trace.Run("GoToSleep", [&] { Process::Sleep(milliseconds); });
}

double clsAPIMisc::GetFreeDiskSpace(const std::string& path) {
    return trace.Run("GetFreeDiskSpace", [&] { return MillionsOf(Process::FreeBytes(path).value_or(0)); });
}

double clsAPIMisc::MillionsOf(std::uint64_t bytes) {
    return std::nearbyint(static_cast<double>(bytes) / 100'000) / 10;
}

std::string clsAPIMisc::WindowsDirectory() {
    return trace.Run("WindowsDirectory", [] { return Process::SystemFolder(); });
}

std::string clsAPIMisc::BrowseForFolder(const std::string& title, const std::string& start) {
    return trace.Run("BrowseForFolder", [&] {
        const std::string folder = gPrompts->PickFolder(title, start);
        return folder.empty() ? folder : Files::Join(folder, "");
    });
}

std::string clsAPIMisc::ComputerName() {
    return trace.Run("ComputerName", [] { return Process::ComputerName(); });
}

} // namespace velmora
