#include "cli/OutputText.h"

#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "platform/Utf8.h"

#include <cstdio>

namespace velmora::OutputText {

namespace {

bool IsLineBreak(char c) {
    return c == '\r' || c == '\n';
}

/// A terminal obeys these, or is led to show a line's end before its beginning.
bool IsUnsafe(char32_t c) {
    return c < U' ' || (c >= 0x7F && c < 0xA0) || c == 0x61C || c == 0x200E || c == 0x200F ||
           (c >= 0x2028 && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
}

void AppendEscaped(char32_t c, std::string& line) {
    char escape[8];
    std::snprintf(escape, sizeof escape, c < 0x100 ? "\\x%02X" : "\\u%04X", static_cast<unsigned>(c));
    line += escape;
}

/// File names hold line breaks and escape sequences on some hosts; a terminal must not obey them.
std::string WithoutControls(std::string_view text) {
    std::string line;
    line.reserve(text.size());
    while (!text.empty()) {
        if (IsLineBreak(text.front())) {
            text.remove_prefix(1);
            if (text.empty() || !IsLineBreak(text.front()))
                line += "; ";
            continue;
        }
        const std::string_view before = text;
        const auto character = Utf8::TakeCharacter(text);
        if (!character) { // no UTF-8: a name's raw byte
            AppendEscaped(static_cast<unsigned char>(text.front()), line);
            text.remove_prefix(1);
        } else if (IsUnsafe(*character)) {
            AppendEscaped(*character, line);
        } else {
            line += before.substr(0, before.size() - text.size());
        }
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
