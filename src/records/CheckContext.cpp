#include "records/CheckContext.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Utf8.h"

namespace velmora {

bool CheckContext::HasPicture(std::string_view image) const {
    const std::string name = Files::NameOf(image);
    if (name.empty())
        return false;
    // A listing spells a name in one way only.
    if (!Utf8::IsAscii(name))
        return Files::FileExists(gamePath + std::string(image));
    const Names& names = FilesOf(Files::FolderOf(image));
    return names.count(CodePage::ToUpper(name)) > 0;
}

std::vector<std::string> CheckContext::Folders() const {
    const std::lock_guard lock(mutex);
    std::vector<std::string> paths;
    for (const auto& [folder, names] : folders)
        paths.push_back(gamePath + folder);
    return paths;
}

const CheckContext::Names& CheckContext::FilesOf(const std::string& folder) const {
    const std::lock_guard lock(mutex);
    const auto [found, isNew] = folders.try_emplace(folder);
    if (!isNew)
        return found->second;
    try {
        const std::string path = gamePath + folder;
        for (const std::string& name : Files::ListFiles(path))
            if (Files::FileExists(Files::Join(path, name)))
                found->second.insert(CodePage::ToUpper(name));
    } catch (const Failure&) {
        // A folder that is missing, or cannot be looked at, has no pictures for the game either.
    }
    return found->second;
}

} // namespace velmora
