#include "lsp/Line.h"

#include "platform/CodePage.h"
#include "records/LineGrammar.h"

#include <algorithm>
#include <cmath>

namespace velmora::lsp {

namespace {

/// No block has more lines: what is wanted of it is near.
constexpr std::size_t LongestBlock = 500;

} // namespace

Line::Line(const OpenFile& open, Position position) : file(open), kind(*open.Kind->Kind) {
    const std::string_view text = file.Text.Line(position.Line);
    Before = text.substr(0, std::min(position.Character, text.size()));
    std::string scratch;
    KeyValue parts;
    if (SplitLine(text, kind.ValuesKeepBlanks, scratch, parts)) {
        KeyField = FieldOf(parts.Key);
        Value = TrimBlanks(parts.Value);
    }
    ReadBlock(position.Line);
}

void Line::ReadBlock(std::size_t line) {
    std::string scratch;
    KeyValue parts;
    const auto read = [&](std::size_t at, std::string_view stop) {
        if (!SplitLine(file.Text.Line(at), kind.ValuesKeepBlanks, scratch, parts))
            return true;
        if (CodePage::EqualNoCase(parts.Key, kind.Header) || CodePage::EqualNoCase(parts.Key, kind.End)) {
            IsInBlock = IsInBlock || (stop == kind.Header && CodePage::EqualNoCase(parts.Key, stop));
            return false;
        }
        if (const Field* field = FieldOf(parts.Key))
            given.emplace_back(field, TrimBlanks(parts.Value));
        return true;
    };
    for (std::size_t at = line; at > 0 && line - at < LongestBlock && read(at - 1, kind.Header); --at) {
    }
    for (std::size_t at = line + 1; at - line < LongestBlock && read(at, kind.End); ++at) {
    }
}

const Field* Line::FieldOf(std::string_view key) const {
    const auto found = std::ranges::find_if(
        kind.Fields, [&](const Field& field) { return CodePage::EqualNoCase(field.Key, key); });
    return found == kind.Fields.end() ? nullptr : &*found;
}

std::int32_t Line::NumberInBlock(std::string_view property) const {
    for (const auto& [field, value] : given)
        if (field->Property == property) {
            const double number = kind.ReadNumber(value);
            return std::abs(number) < 1e9 ? static_cast<std::int32_t>(number) : 0;
        }
    return 0;
}

bool Line::HasKey(const Field& field) const {
    return std::ranges::any_of(given, [&](const auto& entry) { return entry.first == &field; });
}

} // namespace velmora::lsp
