#pragma once

#include "records/RecordKind.h"
#include "services/Problem.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The copies of a kind's files in the backup folder: of each file as it was first and last loaded, and dated
/// ones of what a rewrite would drop. None is more open than its file. Where the host's file names are too
/// short for a copy's, the copy gets a shortened one.
class Backups {
  public:
    using Copying = std::function<void(const std::string& file, std::size_t done, std::size_t total)>;

    Backups(const RecordKind& recordKind, std::string backupFolder)
        : kind(recordKind), folder(std::move(backupFolder)) {}

    /// Makes the first copy of files that have none, and the latest copy of all. `names` are short names in
    /// load order; where two have the same base the second keeps its whole name. All copies last once it
    /// returns; the first failure ends it.
    void KeepLoaded(const std::string& dataFolder, const std::vector<std::string>& names,
                    const Copying& copying, const ProblemSink& problems) const;

    /// Keeps bytes that stand in a file under a dated name, and of the file's dated copies the newest 20.
    /// Returns the copy's path, empty without a backup folder.
    [[nodiscard]] std::string KeepDated(const std::string& path, std::string_view bytes) const;

  private:
    [[nodiscard]] std::string Fitting(const std::string& base, std::string_view longestEnding) const;
    void DropOldCopies(const std::string& base, const std::string& justMade) const;

    const RecordKind& kind;
    std::string folder; ///< with trailing separator
};

} // namespace velmora
