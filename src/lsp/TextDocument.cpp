#include "lsp/TextDocument.h"

#include "platform/CodePage.h"
#include "platform/Utf8.h"

#include <algorithm>

namespace velmora::lsp {

namespace {

std::string UnitsOf(std::string_view utf8) {
    std::string units;
    units.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto character = Utf8::TakeCharacter(utf8);
        if (!character) {
            units += '\0';
            utf8.remove_prefix(1);
            continue;
        }
        const auto byte = CodePage::FromUnicode(*character);
        units.append(*character > 0xFFFF ? 2 : 1, static_cast<char>(byte.value_or(0)));
    }
    return units;
}

/// Those of a piece that was replaced give way to others; those behind it move with it.
void Splice(std::vector<std::size_t>& starts, std::size_t begin, std::size_t oldEnd, std::size_t newEnd,
            const std::vector<std::size_t>& found) {
    const auto first = std::lower_bound(starts.begin() + 1, starts.end(), begin);
    const auto last = std::upper_bound(first, starts.end(), oldEnd);
    for (auto behind = last; behind != starts.end(); ++behind)
        *behind = *behind - oldEnd + newEnd;
    starts.insert(starts.erase(first, last), found.begin(), found.end());
}

} // namespace

void TextDocument::Set(std::string_view utf8) {
    bytes.clear();
    starts.assign(1, 0);
    fileLines.assign(1, 0);
    Replace({}, {}, utf8);
}

void TextDocument::Replace(Position from, Position to, std::string_view utf8) {
    const std::size_t begin = OffsetOf(from);
    const std::size_t end = std::max(begin, OffsetOf(to));
    const std::string units = UnitsOf(utf8);
    bytes.replace(begin, end - begin, units);
    FindLines(begin, end, begin + units.size());
}

void TextDocument::FindLines(std::size_t begin, std::size_t oldEnd, std::size_t newEnd) {
    std::vector<std::size_t> found;
    std::vector<std::size_t> foundInFile;
    // A carriage return before the piece may have lost or got its line feed.
    for (std::size_t at = std::max<std::size_t>(begin, 1); at <= newEnd; ++at) {
        const char c = bytes[at - 1];
        if (c != '\n' && (c != '\r' || bytes.compare(at - 1, 2, "\r\n") == 0))
            continue;
        found.push_back(at);
        if (c == '\n')
            foundInFile.push_back(at);
    }
    Splice(starts, begin, oldEnd, newEnd, found);
    Splice(fileLines, begin, oldEnd, newEnd, foundInFile);
}

std::size_t TextDocument::OffsetOf(Position position) const {
    if (position.Line >= starts.size())
        return bytes.size();
    return starts[position.Line] + std::min(position.Character, Line(position.Line).size());
}

Position TextDocument::PositionOf(std::size_t offset) const {
    const auto after = std::upper_bound(starts.begin(), starts.end(), offset);
    const auto line = static_cast<std::size_t>(after - starts.begin()) - 1;
    return {line, offset - starts[line]};
}

std::string_view TextDocument::Line(std::size_t line) const {
    if (line >= starts.size())
        return {};
    const std::size_t end = line + 1 < starts.size() ? starts[line + 1] : bytes.size();
    std::string_view text = std::string_view(bytes).substr(starts[line], end - starts[line]);
    if (line + 1 < starts.size())
        text.remove_suffix(text.ends_with("\r\n") ? 2 : 1);
    return text;
}

std::size_t TextDocument::StartOfFileLine(std::size_t line) const {
    return fileLines[std::min(std::max<std::size_t>(line, 1), fileLines.size()) - 1];
}

std::size_t TextDocument::FileLineOf(std::size_t offset) const {
    return static_cast<std::size_t>(std::upper_bound(fileLines.begin(), fileLines.end(), offset) -
                                    fileLines.begin());
}

} // namespace velmora::lsp
