#pragma once

#include <string_view>
#include <vector>

/// Lines of text files: those of the game, settings, registry files.
namespace velmora::TextLines {

/// Takes the first line off a text, which must not be empty, and returns it without its end, CR LF or LF.
inline std::string_view Take(std::string_view& text) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

/// The lines of a text without their ends. A text that ends with a line end has no line after it.
inline std::vector<std::string_view> Split(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty())
        lines.push_back(Take(text));
    return lines;
}

/// A text without the blanks and tabs around it.
inline std::string_view Stripped(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

} // namespace velmora::TextLines
