#pragma once

#include "records/CheckContext.h"
#include "records/RecordKind.h"
#include "services/Problem.h"

#include <memory>
#include <optional>
#include <string>

namespace velmora {

/// A change of a record that puts a problem right.
struct QuickFix {
    std::string Name; ///< "Move the substitution up"
    std::unique_ptr<Record> Fixed;
};

/// The fix of a problem of a record, where there is one right answer only.
std::optional<QuickFix> QuickFixOf(const RecordKind& kind, const Record& record, const Problem& problem,
                                   const CheckContext& context);

} // namespace velmora
