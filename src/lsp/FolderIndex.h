#pragma once

#include "kinds/IgnoreFile.h"
#include "kinds/Kinds.h"
#include "platform/HostFiles.h"
#include "records/CheckContext.h"
#include "services/Problem.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace velmora::lsp {

/// A record as the rules of a whole library need it.
struct NamedRecord {
    std::string Name;
    std::size_t HeaderLine = 0; ///< lines count from 1
    std::size_t EndLine = 0;
    std::int32_t Number = 0; ///< that of the header, where the kind has one
};
NamedRecord NamedRecordOf(const RecordKind& kind, const Record& record, std::size_t endLine);

/// What all files of one kind in one folder hold, by name. One of its files can be replaced without the
/// others being looked at.
class FolderIndex {
  public:
    FolderIndex(const KindEntry& kindOfFiles, std::string folderPath);

    const KindEntry& Kind;
    const std::string Folder; ///< with trailing separator

    /// Reads the files that are new or changed on disk and forgets those that are gone; files that a client
    /// has open stay as they are. Pictures and the ignore file are looked at anew.
    void Refresh();
    /// Puts the records of an open file's text in the place of the file's.
    void Open(const std::string& file, std::vector<NamedRecord> records);
    /// From now on the file on disk counts again.
    void Close(const std::string& file);

    /// What is wrong with a file for the sake of the others, or of another record: doubled names and numbers.
    /// The first record of a name gets a note where another file doubles it.
    [[nodiscard]] std::vector<Problem> ProblemsOf(const std::string& file) const;
    /// The first record of a name and its file's name.
    [[nodiscard]] std::optional<std::pair<std::string, NamedRecord>> Find(std::string_view name) const;
    [[nodiscard]] std::vector<std::string> Names() const;

    [[nodiscard]] const CheckContext& Context() const { return *context; }
    [[nodiscard]] bool Hides(const Problem& problem) const { return ignored.Hides(problem); }
    /// False where no game directory is around the folder: then no picture can be looked for.
    [[nodiscard]] bool IsInGame() const { return !game.empty(); }

  private:
    struct File {
        std::vector<NamedRecord> Records;
        HostFiles::Stamp OnDisk;
        bool IsOpen = false;
    };
    using Key = std::pair<std::string, std::string>; ///< folded name, name: files in the order of loading
    struct Place {
        const Key* Of = nullptr;
        std::size_t At = 0;
        bool operator<(const Place& other) const {
            return std::pair(*Of, At) < std::pair(*other.Of, other.At);
        }
    };

    static Key KeyOf(const std::string& file);
    void Put(const Key& key, std::vector<NamedRecord> records);
    void Read(const Key& key, File& file);
    [[nodiscard]] Problem Doubled(const NamedRecord& record, const std::string& told, std::size_t line,
                                  const std::string& at) const;
    void AddDoubled(const Key& key, const File& file, std::vector<Problem>& problems) const;
    void AddNotAdmitted(const Key& key, std::vector<Problem>& problems) const;

    std::string game; ///< the game's directory, with trailing separator
    std::map<Key, File> files;
    std::unordered_map<std::string, std::set<Place>> places; ///< by folded name of the record
    std::unique_ptr<CheckContext> context;
    IgnoreFile ignored;
};

} // namespace velmora::lsp
