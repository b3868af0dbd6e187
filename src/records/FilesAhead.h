#pragma once

#include "platform/ContentHash.h"

#include <array>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace velmora {

/// A file's bytes, or why they could not be read.
struct FileBytes {
    std::string Bytes;
    ContentHash Content;
    std::exception_ptr Failure;

    /// Reads a file, named by its full path, into the memory at hand.
    void Read(const std::string& path);
};

/// Reads files one after the other in a thread of its own, a few ahead of the one that takes them.
class FilesAhead {
  public:
    explicit FilesAhead(std::vector<std::string> filePaths);
    FilesAhead(const FilesAhead&) = delete;
    FilesAhead& operator=(const FilesAhead&) = delete;
    ~FilesAhead() = default;

    /// The next file in order, there until the one after it is asked for.
    const FileBytes& Next();

  private:
    void Run(const std::stop_token& stop);

    const std::vector<std::string> paths;
    std::array<FileBytes, 4> ring; // file i is at i modulo 4
    std::mutex mutex;
    std::condition_variable_any changed;
    std::size_t read = 0;
    std::size_t asked = 0; ///< the last one is still in use
    std::jthread reader;   // last: joined before the rest goes
};

} // namespace velmora
