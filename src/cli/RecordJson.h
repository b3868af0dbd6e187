#pragma once

#include "cli/JsonDocument.h"
#include "kinds/Kinds.h"

#include <string>

namespace velmora {

/// A field's value: a string, a number or a list.
Json FieldToJson(const Field& field, const Record& record);

/// Every content property of a record by its name, then its file and its numbers.
Json RecordToJson(const KindEntry& kind, const Record& record);

/// One row of comma-separated values for a record's JSON: its values, or its property names for the header.
std::string CsvRow(const Json& record);
std::string CsvHeader(const Json& record);

} // namespace velmora
