#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

/// A generated event library on disk, made once a process and size, gone at its end.
struct BenchLibrary {
    std::string Folder;
    std::vector<std::string> Paths;
    std::size_t Bytes = 0;
};

/// `events` events of about 1.5 KB each, 200 to a file.
const BenchLibrary& LibraryOf(std::size_t events);

/// Reads the library's files and counts the newlines in them: the yardstick of loading.
std::size_t CountNewlines(const BenchLibrary& library);

} // namespace velmora
