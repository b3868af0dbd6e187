#include "records/RecordKind.h"

#include "services/modWriter.h"

#include <charconv>

namespace velmora {

namespace {

void AppendNumber(std::int32_t number, std::string& text) {
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

void AppendQuoted(const std::string& value, std::string& text) {
    const auto lacks = [&](char c) { return value.find(c) == std::string::npos; };
    const bool asItIs = lacks('"') && lacks('\r') && lacks('\n');
    text += '"';
    if (asItIs)
        text += value;
    else
        text += TextForFile(value);
    text += '"';
}

} // namespace

void AppendBlock(const RecordKind& kind, const Record& record, std::string& text) {
    text += SeparatorLine;
    text.append(kind.Header).append(" ").append(kind.NameOf(record)).append("\r\n");
    text += SeparatorLine;
    if (kind.EmptyLineAfterHeader)
        text += "\r\n";
    for (const Field& field : kind.Fields) {
        text.append("  ").append(field.Key).append(static_cast<std::size_t>(field.Blanks), ' ');
        if (field.Type == FieldType::Text)
            AppendQuoted(field.TextOf(record), text);
        else
            AppendNumber(field.NumberOf(record), text);
        text += field.EmptyLineAfter ? "\r\n\r\n" : "\r\n";
    }
    text.append(kind.End).append("\r\n\r\n\r\n");
}

std::string BlockOf(const RecordKind& kind, const Record& record) {
    std::string text;
    AppendBlock(kind, record, text);
    return text;
}

void CopyContent(const RecordKind& kind, const Record& from, Record& to) {
    for (const Field& field : kind.Fields) {
        if (field.Type == FieldType::Text)
            field.SetText(to, field.TextOf(from));
        else if (field.Type == FieldType::List)
            for (const std::string& entry : field.ListOf(from))
                field.SetText(to, entry);
        else
            field.SetNumber(to, field.NumberOf(from));
    }
}

} // namespace velmora
