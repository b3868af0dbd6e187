#include "platform/Attempts.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"

#include <algorithm>
#include <cerrno>
#include <dirent.h>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace velmora::Files {

const char Separator = '/';

namespace {

using Path = std::filesystem::path;

bool IsAbsence(int code) {
    return code == ENOENT || code == ENOTDIR;
}

/// True also where the host cannot tell: whoever makes use of the path will be told.
bool MayExist(const Path& path) {
    struct ::stat facts {};
    return ::lstat(path.c_str(), &facts) == 0 || !IsAbsence(errno);
}

const dirent* NextEntry(DIR* open) {
    errno = 0;
    return ::readdir(open);
}

/// The entry of a folder that a path component means: the one whose text it is, else the first in
/// alphabetical order that differs in letter case only.
std::optional<std::string> FindEntry(const Path& folder, std::string_view component) {
    const auto closeFolder = [](DIR* open) { ::closedir(open); };
    const std::unique_ptr<DIR, decltype(closeFolder)> open(::opendir(folder.empty() ? "." : folder.c_str()),
                                                           closeFolder);
    std::optional<std::string> best;
    // A folder that may be passed through but not listed holds what it is known to hold.
    if (!open && (IsAbsence(errno) || errno == EACCES))
        return best;
    while (const dirent* entry = open ? NextEntry(open.get()) : nullptr) {
        const std::string text = PathTexts::FromHostText(entry->d_name);
        if (text == component)
            return entry->d_name;
        if (CodePage::EqualNoCase(text, component) && (!best || entry->d_name < *best))
            best = entry->d_name;
    }
    if (errno != 0)
        throw FailureFor({errno, std::generic_category()}, "list", folder, Wanted::Folder);
    return best;
}

} // namespace

bool NameFits(std::string_view folder, std::string_view name) {
    constexpr std::size_t most = 255; // some file systems count characters, and tell more than they take
    const long told = ::pathconf(HostPath(folder).c_str(), _PC_NAME_MAX);
    return PathTexts::ToHostText(name).size() <=
           (told > 0 ? std::min(static_cast<std::size_t>(told), most) : most);
}

Path HostPath(std::string_view path) {
    const auto components = PathTexts::Components(path);
    const Path root = path.find_first_of("/\\") == 0 ? "/" : "";
    Path asWritten = root;
    for (const auto component : components)
        asWritten /= PathTexts::HostName(component);
    if (MayExist(asWritten))
        return asWritten;
    Path found = root;
    for (const auto component : components) {
        const Path name = PathTexts::HostName(component);
        const auto entry = MayExist(found / name) ? std::nullopt : FindEntry(found, component);
        found /= entry ? Path(*entry) : name;
    }
    return found;
}

} // namespace velmora::Files
