#include "records/Csv.h"

namespace velmora::Csv {

namespace {

std::string FieldCell(const Field& field, const Record& record) {
    if (field.Type == FieldType::Text)
        return Cell(field.TextOf(record));
    if (field.Type != FieldType::List)
        return std::to_string(field.NumberOf(record));
    std::string joined;
    for (const std::string& entry : field.ListOf(record))
        joined.append(joined.empty() ? "" : "; ").append(entry);
    return Cell(joined);
}

} // namespace

std::string Cell(const std::string& text, char separator) {
    if (text.find_first_of("\"\r\n") == std::string::npos && text.find(separator) == std::string::npos)
        return text;
    std::string quoted = "\"";
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    return quoted += '"';
}

std::string Header(const RecordKind& kind) {
    std::string row(kind.Name.Property);
    kind.ForEachField([&](const Field& field) { row.append(",").append(field.Property); });
    return row + ",ShortName";
}

std::string Row(const RecordKind& kind, const Record& record) {
    std::string row = FieldCell(kind.Name, record);
    kind.ForEachField([&](const Field& field) { row.append(",").append(FieldCell(field, record)); });
    return row + ',' + Cell(record.ShortName);
}

} // namespace velmora::Csv
