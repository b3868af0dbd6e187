#pragma once

#include <functional>
#include <string_view>
#include <vector>

namespace velmora::Files {

/// Replaces (or creates) several files, each as a whole as ReplaceSafely does, but flushes their folder once
/// for all. Settles what is left when it goes, silently.
class Replacements {
  public:
    Replacements();
    ~Replacements();
    Replacements(const Replacements&) = delete;
    Replacements& operator=(const Replacements&) = delete;

    /// Puts a file in its place, its bytes flushed to disk. It lasts from Settle on, which then calls
    /// `settled`. On failure the old file is untouched and the temporary is gone.
    void Put(std::string_view path, std::string_view bytes, std::function<void()> settled = {});

    /// Makes everything put so far last. On failure the old files of all that could not be settled are in
    /// their places again.
    void Settle();

  private:
    struct Pending;
    static void FlushFolders(const std::vector<Pending>& replaced);
    std::vector<Pending> pending;
};

} // namespace velmora::Files
