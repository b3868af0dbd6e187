#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace velmora {

/// What checks ask of the game beside a record. Several threads may ask at once.
class CheckContext {
  public:
    /// `gameDirectory` ends in a separator.
    explicit CheckContext(std::string gameDirectory) : gamePath(std::move(gameDirectory)) {}

    /// True when a picture, named as records name it, is a file below the game directory. Each folder is
    /// listed once and counts as it was then.
    [[nodiscard]] bool HasPicture(std::string_view image) const;
    /// The folders that pictures were looked for in so far, there or not.
    [[nodiscard]] std::vector<std::string> Folders() const;

  private:
    using Names = std::unordered_set<std::string>;
    const Names& FilesOf(const std::string& folder) const;

    std::string gamePath;
    mutable std::mutex mutex;
    mutable std::unordered_map<std::string, Names> folders; ///< names in capitals
};

} // namespace velmora
