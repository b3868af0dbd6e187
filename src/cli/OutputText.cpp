#include "cli/OutputText.h"

#include "platform/Files.h"
#include "platform/PathTexts.h"

namespace velmora::OutputText {

namespace {

bool IsLineBreak(char c) {
    return c == '\r' || c == '\n';
}

bool IsControl(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte < ' ' || byte == 0x7F;
}

void AppendEscaped(char c, std::string& line) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    line.append("\\x").append(1, digits[byte / 16]).append(1, digits[byte % 16]);
}

/// File names hold line breaks and escape sequences on some hosts; a terminal must not obey them.
std::string WithoutControls(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!IsControl(text[i]))
            line += text[i];
        else if (!IsLineBreak(text[i]))
            AppendEscaped(text[i], line);
        else if (i + 1 == text.size() || !IsLineBreak(text[i + 1]))
            line += "; ";
    }
    return line;
}

} // namespace

std::string OneLine(std::string_view text) {
    return WithoutControls(PathTexts::ToHostText(text));
}

std::string Name(std::string_view name) {
    return WithoutControls(PathTexts::ToHostText(name));
}

std::string Path(std::string_view path) {
    const std::u8string utf8 = Files::HostPath(path).u8string();
    return WithoutControls({reinterpret_cast<const char*>(utf8.data()), utf8.size()});
}

std::string TypedPath(const std::string& utf8) {
    return Files::PathText(std::u8string(utf8.begin(), utf8.end()));
}

} // namespace velmora::OutputText
