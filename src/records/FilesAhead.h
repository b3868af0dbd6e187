#pragma once

#include "platform/ContentHash.h"

#include "records/TextFault.h"
#include "records/WrittenBlocks.h"

#include <array>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace velmora {

/// A file's bytes, taken apart, or why they could not be read.
struct FileBytes {
    std::string Bytes;
    ContentHash Content;
    TextFault Fault; ///< Blocks are those of a text only
    WrittenBlocks Blocks;
    std::exception_ptr Failure;

    /// Reads a file, named by its full path, into the memory at hand.
    void Read(const RecordKind& kind, const std::string& path);
};

/// Reads files in a thread of its own, a few ahead of the thread that takes them. That one reads, too,
/// instead of waiting.
class FilesAhead {
  public:
    FilesAhead(const RecordKind& recordKind, std::vector<std::string> filePaths);
    FilesAhead(const FilesAhead&) = delete;
    FilesAhead& operator=(const FilesAhead&) = delete;
    ~FilesAhead() = default;

    /// The next file in order, there until the one after it is asked for.
    const FileBytes& Next();

  private:
    struct Slot {
        FileBytes File;
        std::size_t Ready = 0; ///< 1-based number of the file in it, once that is read
    };
    using Lock = std::unique_lock<std::mutex>;

    void Run(const std::stop_token& stop);
    [[nodiscard]] bool MayBegin() const;
    void ReadOne(Lock& lock);
    Slot& SlotOf(std::size_t file) { return ring[file % ring.size()]; }

    const RecordKind& kind;
    const std::vector<std::string> paths;
    std::array<Slot, 4> ring;
    std::mutex mutex;
    std::condition_variable_any changed;
    std::size_t begun = 0;
    std::size_t asked = 0; ///< the last one is still in use
    std::jthread reader;   // last: joined before the rest goes
};

} // namespace velmora
