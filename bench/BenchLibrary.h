#pragma once

#include "events/clsEvent.h"
#include "records/Library.h"

#include <cstddef>
#include <string>
#include <vector>

namespace velmora {

/// A generated game on disk, its events in three forms, made once a process and size, gone at its end.
struct BenchLibrary {
    std::string Game;   ///< the game's directory
    std::string Folder; ///< its data directory
    std::vector<std::string> EventPaths;
    std::vector<std::string> XmlPaths; ///< the same events, for other parsers
    std::vector<std::string> JsonPaths;
    std::size_t Bytes = 0; ///< of all event files
};

/// `events` sound events of about 1.5 KB each, 200 to a file.
const BenchLibrary& LibraryOf(std::size_t events);

/// Empties the library and loads the files into it.
void LoadInto(Library& library, const BenchLibrary& files);

/// Reads the files and counts the newlines in them: the yardstick of loading.
std::size_t CountNewlines(const std::vector<std::string>& paths);

} // namespace velmora
