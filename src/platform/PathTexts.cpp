#include "platform/PathTexts.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace velmora::PathTexts {

std::string FromHostText(std::string_view text) {
    if (Utf8::IsAscii(text))
        return std::string(text);
    // A code-page text that reads as UTF-8 would be taken for raw bytes on the way back.
    auto converted = CodePage::FromUtf8(text);
    const bool usable = converted && !Utf8::IsBeyondAscii(*converted);
    return usable ? std::move(*converted) : std::string(text);
}

std::string ToHostText(std::string_view text) {
    return Utf8::IsAscii(text) || Utf8::IsBeyondAscii(text) ? std::string(text) : CodePage::ToUtf8(text);
}

std::filesystem::path HostName(std::string_view component) {
    const std::string utf8 = ToHostText(component);
    return {std::u8string(utf8.begin(), utf8.end())};
}

std::string NameText(const std::filesystem::path& name) {
    const std::u8string utf8 = name.u8string();
    return FromHostText({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

std::vector<std::string_view> Components(std::string_view path) {
    std::vector<std::string_view> components;
    std::size_t begin = path.find_first_not_of("/\\");
    while (begin != std::string_view::npos) {
        const std::size_t end = std::min(path.find_first_of("/\\", begin), path.size());
        components.push_back(path.substr(begin, end - begin));
        begin = path.find_first_not_of("/\\", end);
    }
    return components;
}

} // namespace velmora::PathTexts

namespace velmora::Files {

std::string PathText(const std::filesystem::path& path) {
    // Read anew, since GCC 12 leaves a path's components as they were written.
    const std::filesystem::path preferred(std::filesystem::path(path).make_preferred().native());
    std::string text;
    for (const auto& component : preferred) {
        // A second separator beside a root's would start a network path.
        if (!text.empty() && text.back() != Separator && !component.has_root_directory())
            text += Separator;
        text += PathTexts::NameText(component);
    }
    return text;
}

std::string NameOf(std::string_view path) {
    return std::string(path.substr(path.find_last_of("/\\") + 1));
}

std::string FolderOf(std::string_view path) {
    return std::string(path.substr(0, path.find_last_of("/\\") + 1));
}

std::string Join(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && path.back() != '/' && path.back() != '\\')
        path += Separator;
    return path.append(name);
}

} // namespace velmora::Files
