#pragma once

#include "records/Library.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// What the library does not give back when it rewrites a file: "3 comments", "1 value carried over from an
/// earlier block". Told from the bytes on disk; empty when the file's records are all it holds.
std::vector<std::string> LossesOf(const Library& library, const std::string& shortName,
                                  std::string_view bytes);

/// What a write of these files will do, as the details of its question: for each the losses and a line by
/// line difference between the disk and what will be written. Texts of code-page bytes, 13 as line break.
std::string WriteDetails(const Library& library, const std::string& folder,
                         const std::vector<std::string>& shortNames);

} // namespace velmora
