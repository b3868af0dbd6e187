#include "platform/ProfileStrings.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/TextLines.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace velmora::ProfileStrings {

namespace {

using TextLines::Stripped;
using Lines = std::vector<std::string>;

constexpr std::size_t None = static_cast<std::size_t>(-1);

struct Entry {
    std::string_view Key;
    std::string_view Value; ///< as stored, quotes included
};

/// Lines of one section, without its header.
struct Range {
    std::size_t Begin = None;
    std::size_t End = None;
    [[nodiscard]] bool Missing() const { return Begin == None; }
};

std::optional<std::string_view> SectionName(std::string_view line) {
    line = Stripped(line);
    const std::size_t end = line.find(']');
    if (line.empty() || line.front() != '[' || end == std::string_view::npos)
        return std::nullopt;
    return Stripped(line.substr(1, end - 1));
}

std::optional<Entry> EntryOf(std::string_view line) {
    const std::size_t equals = line.find('=');
    const std::string_view key = Stripped(line.substr(0, equals));
    if (equals == std::string_view::npos || key.empty() || key.front() == ';')
        return std::nullopt;
    return Entry{key, Stripped(line.substr(equals + 1))};
}

std::string_view WithoutQuotes(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

Range FindSection(const Lines& lines, std::string_view section) {
    Range range;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const auto name = SectionName(lines[i]);
        if (!name)
            continue;
        if (!range.Missing())
            return {range.Begin, i};
        if (CodePage::EqualNoCase(*name, Stripped(section)))
            range = {i + 1, lines.size()};
    }
    return range;
}

std::size_t FindEntry(const Lines& lines, Range range, std::string_view key) {
    for (std::size_t i = range.Begin; i < range.End; ++i) {
        const auto entry = EntryOf(lines[i]);
        if (entry && CodePage::EqualNoCase(entry->Key, Stripped(key)))
            return i;
    }
    return None;
}

/// End of a section's own lines: blank lines before the next header belong to the gap between them.
std::size_t EndOfText(const Lines& lines, Range range) {
    while (range.End > range.Begin && Stripped(lines[range.End - 1]).empty())
        --range.End;
    return range.End;
}

/// Throws for a file that is there but cannot be read: it must not be taken for an empty one.
Lines Load(std::string_view file) {
    if (!Files::FileExists(file))
        return {};
    const std::string bytes = Files::ReadWhole(file);
    const auto lines = TextLines::Split(bytes);
    return {lines.begin(), lines.end()};
}

void Save(const Lines& lines, std::string_view file) {
    std::string bytes;
    for (const std::string& line : lines)
        bytes += line + "\r\n";
    Files::ReplaceSafely(file, bytes);
}

Lines LoadOrNothing(std::string_view file) {
    try {
        return Load(file);
    } catch (const Failure&) {
        return {};
    }
}

/// Changes the lines of a file and saves them if that made a difference.
template <class Change>
void Rewrite(std::string_view file, const Change& change) {
    const Lines old = Load(file);
    Lines lines = old;
    change(lines);
    if (lines != old || !Files::FileExists(file))
        Save(lines, file);
}

/// A text that fits into one line: line breaks in it would end the entry and begin another.
std::string OneLine(std::string_view text) {
    std::string line(text.substr(0, text.find('\0')));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return line;
}

Range AddSection(Lines& lines, std::string_view section) {
    lines.push_back('[' + OneLine(section) + ']');
    return {lines.size(), lines.size()};
}

void InsertAt(Lines& lines, std::size_t at, const Lines& added) {
    lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), added.begin(), added.end());
}

void SetEntry(Lines& lines, std::string_view section, std::string_view key, std::string_view value) {
    Range range = FindSection(lines, section);
    if (range.Missing())
        range = AddSection(lines, section);
    const std::size_t at = FindEntry(lines, range, key);
    const std::string text = OneLine(value);
    if (at == None)
        InsertAt(lines, EndOfText(lines, range), {OneLine(key) + '=' + text});
    else if (EntryOf(lines[at])->Value != Stripped(text))
        lines[at] = lines[at].substr(0, lines[at].find('=') + 1) + text;
}

Lines EntriesOf(std::string_view data) {
    Lines entries;
    while (!data.empty() && data.front() != '\0') {
        const std::string_view entry = data.substr(0, data.find('\0'));
        entries.push_back(OneLine(entry));
        data.remove_prefix(std::min(data.size(), entry.size() + 1));
    }
    return entries;
}

} // namespace

std::string Read(std::string_view section, std::string_view key, std::string_view fallback, std::size_t size,
                 std::string_view file) {
    const Lines lines = LoadOrNothing(file);
    const Range range = FindSection(lines, section);
    const std::size_t at = range.Missing() ? None : FindEntry(lines, range, key);
    std::string_view value = fallback.substr(0, fallback.find_last_not_of(" \t") + 1);
    if (at != None)
        value = WithoutQuotes(EntryOf(lines[at])->Value);
    return std::string(value.substr(0, size == 0 ? 0 : size - 1));
}

void Write(std::string_view section, std::string_view key, std::string_view value, std::string_view file) {
    Rewrite(file, [&](Lines& lines) { SetEntry(lines, section, key, value); });
}

std::string ReadSection(std::string_view section, std::size_t size, std::string_view file) {
    const Lines lines = LoadOrNothing(file);
    const Range range = FindSection(lines, section);
    std::string entries;
    for (std::size_t i = range.Begin; !range.Missing() && i < range.End; ++i)
        if (const auto entry = EntryOf(lines[i]))
            entries.append(entry->Key).append("=").append(entry->Value).push_back('\0');
    return entries.substr(0, size < 2 ? 0 : size - 2);
}

void WriteSection(std::string_view section, std::string_view data, std::string_view file) {
    Rewrite(file, [&](Lines& lines) {
        Range range = FindSection(lines, section);
        if (range.Missing())
            range = AddSection(lines, section);
        const auto begin = lines.begin() + static_cast<std::ptrdiff_t>(range.Begin);
        lines.erase(begin, lines.begin() + static_cast<std::ptrdiff_t>(EndOfText(lines, range)));
        InsertAt(lines, range.Begin, EntriesOf(data));
    });
}

} // namespace velmora::ProfileStrings
