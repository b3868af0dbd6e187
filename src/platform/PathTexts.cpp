#include "platform/PathTexts.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace velmora::PathTexts {

namespace {

/// Stands in front of a character that the code page lacks. No name holds it, and no text has it in front of
/// such bytes.
constexpr char Escape = '\x7F';

} // namespace

std::string FromHostText(std::string_view text) {
    if (Utf8::IsAscii(text))
        return std::string(text);
    std::string core;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view before = rest;
        const auto character = Utf8::TakeCharacter(rest);
        if (!character)
            return std::string(text);
        if (const auto byte = CodePage::FromUnicode(*character))
            core += static_cast<char>(*byte);
        else
            core.append(1, Escape).append(before.substr(0, before.size() - rest.size()));
    }
    return core;
}

std::string ToHostText(std::string_view text) {
    std::string utf8;
    std::size_t escape = 0;
    while ((escape = text.find(Escape)) != std::string_view::npos) {
        std::string_view rest = text.substr(escape + 1);
        const auto character = Utf8::TakeCharacter(rest);
        const bool escaped = character && *character >= 0x80 && !CodePage::FromUnicode(*character);
        utf8 += CodePage::ToUtf8(text.substr(0, escape + (escaped ? 0 : 1)));
        if (escaped)
            Utf8::Append(utf8, *character);
        text = escaped ? rest : text.substr(escape + 1);
    }
    return utf8 + CodePage::ToUtf8(text);
}

std::string StoredText(std::string_view path) {
    const std::string utf8 = ToHostText(path);
    // A code-page text that reads as UTF-8 would be taken for that on the way back.
    auto stored = CodePage::FromUtf8(utf8);
    return stored && !Utf8::IsBeyondAscii(*stored) ? *std::move(stored) : utf8;
}

std::string FromStoredText(std::string_view stored) {
    return Utf8::IsBeyondAscii(stored) ? FromHostText(stored) : std::string(stored);
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
