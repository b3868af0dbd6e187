#pragma once

#include "records/RecordKind.h"

#include <string>

/// Records as comma-separated values: their contents in file order, the name first, the file last.
namespace velmora::Csv {

/// A text as a cell: quoted where it has to be.
std::string Cell(const std::string& text);
std::string Header(const RecordKind& kind);
std::string Row(const RecordKind& kind, const Record& record);

} // namespace velmora::Csv
