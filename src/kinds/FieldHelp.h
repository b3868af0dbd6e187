#pragma once

#include "records/RecordKind.h"

#include <string>

namespace velmora {

/// What there is to know of a field: what it means to the game, its key in the file, its limit, the rules
/// that are checked. Lines end with 13.
std::string FieldHelp(const RecordKind& kind, const Field& field);

} // namespace velmora
