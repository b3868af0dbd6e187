#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"

#include <dirent.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>

namespace velmora::Files {

const char Separator = '/';

namespace {

using Path = std::filesystem::path;

bool Exists(const Path& path) {
    struct ::stat facts {};
    return ::lstat(path.c_str(), &facts) == 0;
}

/// The entry of a folder that a path component means: the one whose text it is, else the first in
/// alphabetical order that differs in letter case only.
std::optional<std::string> FindEntry(const Path& folder, std::string_view component) {
    const auto closeFolder = [](DIR* open) { ::closedir(open); };
    const std::unique_ptr<DIR, decltype(closeFolder)> open(::opendir(folder.empty() ? "." : folder.c_str()),
                                                           closeFolder);
    std::optional<std::string> best;
    while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
        const std::string text = PathTexts::FromHostText(entry->d_name);
        if (text == component)
            return entry->d_name;
        if (CodePage::EqualNoCase(text, component) && (!best || entry->d_name < *best))
            best = entry->d_name;
    }
    return best;
}

} // namespace

Path HostPath(std::string_view path) {
    const auto components = PathTexts::Components(path);
    const Path root = path.find_first_of("/\\") == 0 ? "/" : "";
    Path asWritten = root;
    for (const auto component : components)
        asWritten /= PathTexts::HostName(component);
    if (Exists(asWritten))
        return asWritten;
    Path found = root;
    for (const auto component : components) {
        const Path name = PathTexts::HostName(component);
        const auto entry = Exists(found / name) ? std::nullopt : FindEntry(found, component);
        found /= entry ? Path(*entry) : name;
    }
    return found;
}

} // namespace velmora::Files
