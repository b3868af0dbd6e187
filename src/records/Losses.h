#pragma once

#include "records/Library.h"

#include <string>
#include <vector>

namespace velmora {

/// What a write of these files will do, as the details of its question: for each the losses and a line by
/// line difference between the disk and what will be written. Texts of code-page bytes, 13 as line break.
/// `drops` becomes true where a file loses something or is deleted.
std::string WriteDetails(const Library& library, const std::string& folder,
                         const std::vector<std::string>& shortNames, bool* drops = nullptr);

} // namespace velmora
