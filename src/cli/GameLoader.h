#pragma once

#include "kinds/Kinds.h"
#include "records/Library.h"
#include "services/Problem.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <unordered_map>
#include <vector>

namespace velmora {

/// A failure that kept files from being loaded.
struct LoadError {
    const KindEntry* Kind = nullptr;
    Problem Told;     ///< its file is empty when it concerns the folder
    std::string Path; ///< of the file or folder
    std::int32_t Number = 0;
    std::vector<std::string> Routines =
        {}; ///< the call stack, event routine first; empty for a file set aside
};

/// The user's own target files by kind; a kind that is missing has its default.
using OwnFiles = std::unordered_map<const KindEntry*, std::string>;

/// Loads the content files of a game directory as the editor windows do, without backups. Files that are no
/// text and folders named like a file are set aside as errors; any other failure ends its kind's loading.
class GameLoader {
  public:
    GameLoader(const std::string& gameDirectory, OwnFiles ownFiles);

    [[nodiscard]] const std::string& GamePath() const { return gamePath; }
    [[nodiscard]] std::string FolderOf(const KindEntry& entry) const;

    /// Where what a write drops of a file is kept, with trailing separator; empty for nowhere.
    std::string BackupFolder;

    /// Loads one kind; what was read before a failure stays in the library.
    void Load(const KindEntry& entry, Library& library, const ProblemSink& problems);

    [[nodiscard]] const std::vector<LoadError>& Errors() const { return errors; }
    /// Tells of every failure and missing folder. False when anything failed, or nothing could be looked at.
    bool Report(std::ostream& err) const;

  private:
    bool LoadTrapped(const KindEntry& entry, Library& library, const LoadRequest& request,
                     const std::string& file);
    void AddError(const KindEntry& entry, const std::string& file, std::size_t line, std::int32_t number,
                  const std::string& text, std::vector<std::string> routines = {});
    void SetFoldersAside(const KindEntry& entry);

    std::string gamePath;
    OwnFiles own;
    std::vector<LoadError> errors;
    std::vector<std::string> missingFolders;
    std::size_t foldersLoaded = 0;
};

} // namespace velmora
