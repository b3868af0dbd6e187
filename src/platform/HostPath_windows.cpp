#include "platform/Files.h"
#include "platform/PathTexts.h"

#include <algorithm>
#include <string>

namespace velmora::Files {

const char Separator = '\\';

bool NameFits(std::string_view folder, std::string_view name) {
    constexpr std::size_t longestName = 255;
    constexpr std::size_t longestPath = 259;
    const std::size_t length = PathTexts::HostName(name).native().size();
    return length <= longestName && HostPath(folder).native().size() + 1 + length <= longestPath;
}

std::filesystem::path HostPath(std::string_view path) {
    const auto components = PathTexts::Components(path);
    const std::size_t leading = std::min(path.find_first_not_of("/\\"), path.size());
    std::wstring host(std::min(leading, std::size_t{2}), L'\\');
    for (const auto component : components) {
        host += PathTexts::HostName(component).native();
        host += L'\\';
    }
    // A drive letter alone means a current folder of its own; its root needs the separator.
    const bool driveRoot = components.size() == 1 && components[0].ends_with(':') && path.back() != ':';
    if (!components.empty() && !driveRoot)
        host.pop_back();
    return host;
}

} // namespace velmora::Files
