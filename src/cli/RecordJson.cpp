#include "cli/RecordJson.h"

#include "records/Csv.h"

namespace velmora {

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

namespace {

std::string Joined(const Json& values, const char* separator, std::string (*textOf)(const Json&)) {
    std::string joined;
    const char* before = "";
    for (const Json& value : values) {
        joined.append(before).append(textOf(value));
        before = separator; // also behind an empty text
    }
    return joined;
}

std::string CsvCell(const Json& value) {
    if (value.is_string())
        return Csv::Cell(value.get_ref<const std::string&>());
    if (!value.is_array())
        return value.dump();
    return Csv::Cell(Joined(value, "; ", [](const Json& entry) { return entry.get<std::string>(); }));
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
    return Joined(record, ",", CsvCell);
}

std::string CsvHeader(const Json& record) {
    Json names = Json::array();
    for (const auto& [name, value] : record.items())
        names.push_back(name);
    return CsvRow(names);
}

} // namespace velmora
