#include "platform/RegistryFile.h"

#include "platform/CodePage.h"
#include "platform/RegistryText.h"
#include "platform/TextLines.h"

#include <algorithm>

namespace velmora {

namespace {

using TextLines::Stripped;

constexpr std::string_view FirstLine = "REGEDIT4";

bool FitsIntoALine(std::string_view text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string_view::npos;
}

bool IsBlankOrComment(std::string_view line) {
    line = Stripped(line);
    return line.empty() || line.front() == ';';
}

/// The key of a "[key]" line; empty when there is none in it.
std::string_view KeyOf(std::string_view line) {
    line = Stripped(line);
    const bool whole = line.size() > 2 && line.front() == '[' && line.back() == ']' && line[1] != '-';
    return whole ? line.substr(1, line.size() - 2) : std::string_view();
}

/// Takes a quoted text off `rest`. Nothing when it is not closed or a backslash stands for itself: that is
/// how paths are mistyped, and guessing would give a wrong one.
std::optional<std::string> TakeQuoted(std::string_view& rest) {
    if (rest.empty() || rest.front() != '"')
        return std::nullopt;
    std::string text;
    for (std::size_t i = 1; i < rest.size(); ++i) {
        if (rest[i] == '"') {
            rest.remove_prefix(i + 1);
            return text;
        }
        if (rest[i] == '\\' && (++i == rest.size() || (rest[i] != '\\' && rest[i] != '"')))
            return std::nullopt;
        text += rest[i];
    }
    return std::nullopt;
}

std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text) {
        if (c == '\\' || c == '"')
            quoted += '\\';
        quoted += c;
    }
    return quoted + '"';
}

std::optional<std::string> TakeName(std::string_view& rest) {
    if (rest.empty() || rest.front() != '@')
        return TakeQuoted(rest);
    rest.remove_prefix(1);
    return std::string();
}

std::optional<RegistryValue> ParseData(std::string_view data) {
    if (data.empty() || data.front() != '"')
        return RegistryText::ParseNumbers(data);
    auto text = TakeQuoted(data);
    if (!text || !data.empty())
        return std::nullopt;
    return RegistryValue{RegistryType::Sz, *text + '\0'};
}

std::string FormatValue(std::string_view name, const RegistryValue& value) {
    const std::string left = (name.empty() ? "@" : Quoted(name)) + '=';
    const std::string_view bytes = value.Bytes;
    const bool plain = value.Type == RegistryType::Sz && !bytes.empty() && bytes.back() == '\0' &&
                       FitsIntoALine(bytes.substr(0, bytes.size() - 1));
    return left + (plain ? Quoted(bytes.substr(0, bytes.size() - 1)) : RegistryText::FormatNumbers(value));
}

struct NamedValue {
    std::string Name;
    RegistryValue Value;
};

std::optional<NamedValue> ParseValue(std::string_view text) {
    auto name = TakeName(text);
    text = Stripped(text);
    if (!name || text.empty() || text.front() != '=')
        return std::nullopt;
    auto value = ParseData(Stripped(text.substr(1)));
    if (!value)
        return std::nullopt;
    return NamedValue{std::move(*name), std::move(*value)};
}

std::string JoinedRaw(const std::vector<std::string_view>& lines, std::size_t at, std::size_t count) {
    std::string raw(lines[at]);
    for (std::size_t i = 1; i < count; ++i)
        raw.append("\r\n").append(lines[at + i]);
    return raw;
}

std::string_view ParentOf(std::string_view key) {
    return key.substr(0, key.rfind('\\'));
}

bool IsRoot(std::string_view key) {
    return !key.empty() && key.find('\\') == std::string_view::npos;
}

} // namespace

RegistryFile::RegistryFile(std::string_view text) : sections(1) {
    const auto lines = TextLines::Split(text);
    for (std::size_t at = 0; at < lines.size();)
        at += ReadLine(lines, at);
}

std::size_t RegistryFile::ReadLine(const std::vector<std::string_view>& lines, std::size_t at) {
    const std::string_view text = lines[at];
    if (Stripped(text).starts_with('[')) {
        sections.push_back({std::string(KeyOf(text)), {}});
        AddLine({std::string(text), sections.back().Key.empty(), {}, {}}, at);
        return 1;
    }
    if (IsBlankOrComment(text) || (sections.size() == 1 && Stripped(text) == FirstLine)) {
        AddLine({std::string(text), false, {}, {}}, at);
        return 1;
    }
    const RegistryText::Value joined = RegistryText::JoinLines(lines, at);
    Line line{JoinedRaw(lines, at, joined.Lines), true, {}, {}};
    auto parsed = sections.back().Key.empty() ? std::nullopt : ParseValue(joined.Text);
    if (parsed)
        line = {std::move(line.Text), false, std::move(parsed->Name), std::move(parsed->Value)};
    AddLine(std::move(line), at);
    return joined.Lines;
}

void RegistryFile::AddLine(Line line, std::size_t at) {
    if (line.Broken)
        brokenLines.push_back({at + 1, line.Text});
    sections.back().Lines.push_back(std::move(line));
}

bool RegistryFile::Section::Is(std::string_view key) const {
    return !Key.empty() && CodePage::EqualNoCase(Key, key);
}

std::string RegistryFile::Text() const {
    const auto& first = sections.front().Lines;
    const bool headed = std::any_of(first.begin(), first.end(),
                                    [](const Line& line) { return Stripped(line.Text) == FirstLine; });
    std::string text = headed ? "" : std::string(FirstLine) + "\r\n";
    for (const Section& section : sections)
        for (const Line& line : section.Lines)
            text.append(line.Text).append("\r\n");
    return text;
}

bool RegistryFile::KeyExists(std::string_view key) const {
    return IsRoot(key) || HasSubkeys(key) ||
           std::any_of(sections.begin(), sections.end(),
                       [&](const Section& section) { return section.Is(key); });
}

bool RegistryFile::HasSubkeys(std::string_view key) const {
    return std::any_of(sections.begin(), sections.end(), [&](const Section& section) {
        return section.Key.size() > key.size() && section.Key[key.size()] == '\\' &&
               CodePage::EqualNoCase(std::string_view(section.Key).substr(0, key.size()), key);
    });
}

const RegistryFile::Line* RegistryFile::FindLine(std::string_view key, std::string_view name) const {
    for (auto section = sections.rbegin(); section != sections.rend(); ++section) {
        if (!section->Is(key))
            continue;
        for (auto line = section->Lines.rbegin(); line != section->Lines.rend(); ++line)
            if (line->Value && CodePage::EqualNoCase(line->Name, name))
                return &*line;
    }
    return nullptr;
}

const RegistryValue* RegistryFile::Find(std::string_view key, std::string_view name) const {
    const Line* const line = FindLine(key, name);
    return line == nullptr ? nullptr : &*line->Value;
}

Registry::Created RegistryFile::CreateKey(std::string_view key) {
    if (!FitsIntoALine(key) || key.empty() || key.front() == '-')
        return Registry::Created::Failed;
    if (KeyExists(key))
        return Registry::Created::Existing;
    AddSection(key);
    return Registry::Created::New;
}

bool RegistryFile::DeleteKey(std::string_view key) {
    if (IsRoot(key) || !KeyExists(key) || HasSubkeys(key))
        return false;
    for (std::size_t i = sections.size() - 1; i > 0; --i) {
        if (!sections[i].Is(key))
            continue;
        // Broken lines may be all that is left of something that mattered: they stay.
        for (Line& line : sections[i].Lines)
            if (line.Broken)
                sections[i - 1].Lines.push_back(std::move(line));
        sections.erase(sections.begin() + static_cast<std::ptrdiff_t>(i));
    }
    if (!KeyExists(ParentOf(key)))
        AddSection(ParentOf(key));
    return true;
}

bool RegistryFile::SetValue(std::string_view key, std::string_view name, const RegistryValue& value) {
    if (!KeyExists(key) || !FitsIntoALine(name))
        return false;
    Line line{FormatValue(name, value), false, std::string(name), value};
    if (const Line* const old = FindLine(key, name)) {
        if (*old->Value != value)
            const_cast<Line&>(*old) = std::move(line);
        return true;
    }
    auto& lines = SectionOf(key).Lines;
    auto end = lines.end();
    while (end - lines.begin() > 1 && Stripped(std::prev(end)->Text).empty())
        --end;
    lines.insert(end, std::move(line));
    return true;
}

RegistryFile::Section& RegistryFile::SectionOf(std::string_view key) {
    const auto found = std::find_if(sections.begin(), sections.end(),
                                    [&](const Section& section) { return section.Is(key); });
    return found == sections.end() ? AddSection(key) : *found;
}

RegistryFile::Section& RegistryFile::AddSection(std::string_view key) {
    auto& last = sections.back().Lines;
    if (last.empty() || !Stripped(last.back().Text).empty())
        last.push_back({});
    sections.push_back({std::string(key), {}});
    sections.back().Lines.push_back({'[' + std::string(key) + ']', false, {}, {}});
    return sections.back();
}

} // namespace velmora
