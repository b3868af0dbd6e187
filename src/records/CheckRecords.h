#pragma once

#include "records/CheckContext.h"
#include "records/Library.h"

#include <functional>
#include <vector>

namespace velmora {

using RecordCheck = std::function<void(const Record&, std::vector<Problem>&)>;

/// The problems of a record that it had not as it was; all of them where there was none.
std::vector<Problem> NewProblems(const RecordKind& kind, const CheckContext& context, const Record* before,
                                 const Record& after);

/// Checks every record of a library, the work shared out among the processors. `tell` gets the problems of
/// each record that has any, in the library's order, with its name, file and line. `more`, if there is any,
/// may append to them; it runs in the caller's thread.
void CheckRecords(const Library& library, const CheckContext& context, const RecordCheck& tell,
                  const RecordCheck& more = {});

} // namespace velmora
