#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

/// Whole folders of the host.
namespace velmora::Files {

/// Copies a folder with everything in it. `copying` is told each file before it is copied; when anything
/// fails, what was copied is removed again before the failure is thrown.
void CopyTree(std::string_view from, std::string_view to,
              const std::function<void(const std::string& file)>& copying = {});

/// Sum of the sizes of all files in a folder and below.
std::uint64_t TreeSize(std::string_view folder);

} // namespace velmora::Files
