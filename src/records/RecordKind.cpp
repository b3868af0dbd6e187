#include "records/RecordKind.h"

#include "services/modWriter.h"

#include <algorithm>
#include <charconv>
#include <type_traits>

namespace velmora {

namespace {

void AppendNumber(std::int32_t number, std::string& text) {
    char digits[12];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

void AppendQuoted(const std::string& value, std::string& text) {
    const auto lacks = [&](char c) { return value.find(c) == std::string::npos; };
    const bool asItIs = lacks('"') && lacks('\r') && lacks('\n') && lacks('\0');
    text += '"';
    if (asItIs)
        text += value;
    else
        text += TextForFile(value);
    text += '"';
}

void AppendLine(const Field& field, const auto& value, std::string& text) {
    text.append("  ").append(field.Key).append(static_cast<std::size_t>(field.Blanks), ' ');
    if constexpr (std::is_same_v<std::decay_t<decltype(value)>, std::string>)
        AppendQuoted(value, text);
    else
        AppendNumber(value, text);
    text += field.EmptyLineAfter ? "\r\n\r\n" : "\r\n";
}

void AppendField(const Field& field, const Record& record, std::string& text) {
    if (field.Type == FieldType::Text)
        AppendLine(field, field.TextOf(record), text);
    else if (field.Type == FieldType::List)
        for (const std::string& entry : field.ListOf(record))
            AppendLine(field, entry, text);
    else
        AppendLine(field, field.NumberOf(record), text);
}

} // namespace

FieldValue Field::Get(const Record& record) const {
    switch (Type) {
    case FieldType::Text:
        return TextOf(record);
    case FieldType::List:
        return ListOf(record);
    default:
        return NumberOf(record);
    }
}

std::string Field::Shown(const Record& record) const {
    return TextOf ? TextOf(record) : ListOf ? Join(ListOf(record), "; ") : std::to_string(NumberOf(record));
}

void Field::Set(Record& record, const FieldValue& value) const {
    switch (Type) {
    case FieldType::Text:
        SetText(record, std::get<std::string>(value));
        break;
    case FieldType::List: {
        const auto& entries = std::get<std::vector<std::string>>(value);
        ClearList(record);
        for (const std::string& entry : entries)
            SetText(record, entry);
        break;
    }
    default:
        SetNumber(record, std::get<std::int32_t>(value));
    }
}

void AppendBlock(const RecordKind& kind, const Record& record, std::string& text) {
    text += SeparatorLine;
    text.append(kind.Header).append(" ");
    if (kind.HeaderNumber) {
        AppendNumber(kind.HeaderNumber->NumberOf(record), text);
        text += ' ';
    }
    text.append(kind.NameOf(record)).append("\r\n");
    text += SeparatorLine;
    if (kind.EmptyLineAfterHeader)
        text += "\r\n";
    for (const Field& field : kind.Fields)
        AppendField(field, record, text);
    text.append(kind.End).append("\r\n\r\n\r\n");
}

std::string BlockOf(const RecordKind& kind, const Record& record) {
    std::string text;
    AppendBlock(kind, record, text);
    return text;
}

bool SameContent(const RecordKind& kind, const Record& one, const Record& other) {
    bool same = true;
    kind.ForEachField([&](const Field& field) {
        if (field.TextOf)
            same = same && field.TextOf(one) == field.TextOf(other);
        else if (field.ListOf)
            same = same && field.ListOf(one) == field.ListOf(other);
        else
            same = same && field.NumberOf(one) == field.NumberOf(other);
    });
    return same;
}

void CopyContent(const RecordKind& kind, const Record& from, Record& to) {
    if (&from != &to)
        kind.ForEachField([&](const Field& field) { field.Set(to, field.Get(from)); });
}

void NormalizeChanges(const RecordKind& kind, const Record* before, Record& after) {
    if (!kind.Normalize)
        return;
    const auto normal = kind.Copy(after);
    kind.Normalize(*normal);
    kind.ForEachField([&](const Field& field) {
        if (!before || field.Get(after) != field.Get(*before))
            field.Set(after, field.Get(*normal));
    });
}

std::unique_ptr<Record> Clone(const RecordKind& kind, const Record& record) {
    return kind.Copy(record);
}

} // namespace velmora
