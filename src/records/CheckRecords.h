#pragma once

#include "records/CheckContext.h"
#include "records/Library.h"

#include <functional>
#include <vector>

namespace velmora {

/// Checks every record of a library, the work shared out among the processors. `tell` gets the problems of
/// each record that has any, in the library's order, with its name, file and line.
void CheckRecords(const Library& library, const CheckContext& context,
                  const std::function<void(const Record&, std::vector<Problem>&)>& tell);

} // namespace velmora
