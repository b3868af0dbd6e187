#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Whole folders of the host.
namespace velmora::Files {

/// Copies a folder with everything in it to a place that is still free, times included; no copy is more open
/// than its file. It is made beside its place under a name that ends in ".incomplete", so that one whose
/// program is killed never passes for whole. What cannot be read (a broken link, a pipe, a folder without
/// permission) is left out and returned, each as its path with the reason. `copying` is told each file before
/// it is copied; when anything else fails, what was copied is removed before the failure is thrown.
std::vector<std::string> CopyTree(std::string_view from, std::string_view to,
                                  const std::function<void(const std::string& file)>& copying = {});

/// Sum of the sizes of all files in a folder and below that CopyTree would copy.
std::uint64_t TreeSize(std::string_view folder);

} // namespace velmora::Files
