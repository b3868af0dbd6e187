#include "cli/RecordJson.h"

namespace velmora {

namespace {

Json FieldToJson(const Field& field, const Record& record) {
    if (field.Type == FieldType::Text)
        return JsonText(field.TextOf(record));
    if (field.Type != FieldType::List)
        return field.NumberOf(record);
    Json entries = Json::array();
    for (const std::string& entry : field.ListOf(record))
        entries.push_back(JsonText(entry));
    return entries;
}

std::string CsvText(const std::string& text) {
    if (text.find_first_of(",\"\r\n") == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted += '"';
}

std::string CsvCell(const Json& value) {
    if (value.is_string())
        return CsvText(value.get_ref<const std::string&>());
    if (!value.is_array())
        return value.dump();
    std::string joined;
    for (const Json& entry : value)
        joined += (joined.empty() ? "" : "; ") + entry.get_ref<const std::string&>();
    return CsvText(joined);
}

} // namespace

Json RecordToJson(const KindEntry& kind, const Record& record) {
    const RecordKind& recordKind = *kind.Kind;
    Json::object_t properties;
    properties.reserve(recordKind.Fields.size() + 5);
    // Straight to the end: looking each name up first would cost more than all the rest.
    const auto add = [&](std::string_view name, Json value) {
        properties.emplace_back(std::string(name), std::move(value));
    };
    add(recordKind.Name.Property, FieldToJson(recordKind.Name, record));
    recordKind.ForEachField([&](const Field& field) { add(field.Property, FieldToJson(field, record)); });
    add("ShortName", JsonName(record.ShortName));
    add(kind.NumberProperty, recordKind.NumberOf(record));
    add("OrigNumber", record.OrigNumber);
    return properties;
}

std::string CsvRow(const Json& record) {
    std::string row;
    for (const auto& [name, value] : record.items())
        row.append(row.empty() ? "" : ",").append(CsvCell(value));
    return row;
}

std::string CsvHeader(const Json& record) {
    std::string row;
    for (const auto& [name, value] : record.items())
        row.append(row.empty() ? "" : ",").append(CsvText(name));
    return row;
}

} // namespace velmora
