#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::Files {

/// Replaces (or creates) several files, each as a whole as ReplaceSafely does, but leaves the disk time to
/// write them all before it waits for one, and flushes their folder once for all. Settles what is left when
/// it goes, silently.
class Replacements {
  public:
    Replacements();
    ~Replacements();
    Replacements(const Replacements&) = delete;
    Replacements& operator=(const Replacements&) = delete;

    /// Writes a file beside its place. It is there, and lasts, from Settle on, which then calls `settled`. On
    /// failure the old file is untouched and the temporary is gone.
    void Put(std::string_view path, const Pieces& pieces, std::function<void()> settled = {},
             const Placing& placing = {});
    void Put(std::string_view path, std::string_view bytes, std::function<void()> settled = {},
             const Placing& placing = {}) {
        Put(path, AsPieces(bytes), std::move(settled), placing);
    }
    void Put(std::string_view path, std::string_view bytes, const Placing& placing) {
        Put(path, bytes, {}, placing);
    }

    /// Makes everything put so far last. A file that fails ends it: those put before are settled, those put
    /// after are not replaced. When the folder fails, the old files of all that could not be settled are in
    /// their places again.
    void Settle();

  private:
    struct Pending;
    void FinishOpen();
    void FlushOpen();
    void FinishNext();
    static void FlushFolders(const std::vector<Pending>& replaced);
    static void MakeLast(std::vector<Pending> replaced);
    std::vector<Pending> pending; ///< those finished first
    std::size_t finished = 0;
    std::exception_ptr failure; ///< of the file after those
};

} // namespace velmora::Files
