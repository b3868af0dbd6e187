#pragma once

#include "platform/ContentHash.h"
#include "records/LossCounts.h"
#include "records/RecordKind.h"
#include "services/KeyedCollection.h"
#include "services/Problem.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

struct FileBytes;

/// Where a kind's files live and what loading does with them.
struct LoadRequest {
    std::string Folder;       ///< data directory, with trailing separator
    std::string BackupFolder; ///< where backup copies go, with trailing separator
    std::string OwnFile;      ///< the user's own target file, listed even before it exists
    bool MakeBackups = false; ///< the caller allows backups
    bool AutoBackup = false;  ///< the user wants them
    ProblemSink Problems;
    std::function<void(const std::string& file, std::size_t done, std::size_t total)> Reading;
    /// Asked of each file's bytes before they are read; false leaves the file's records out.
    std::function<bool(const std::string& file, std::string_view bytes)> Accept;
};

/// All records of one kind: read from a folder of files, kept in order, written back file by file.
/// Failures travel under the kind's own routine names.
class Library {
  public:
    explicit Library(const RecordKind& recordKind) : Kind(recordKind) {}

    const RecordKind& Kind;

    [[nodiscard]] std::size_t Count() const { return records.Count(); }
    [[nodiscard]] bool Empty() const { return records.Empty(); }
    [[nodiscard]] bool Exists(std::string_view name) const { return records.Exists(name); }
    /// Position of a name, None when it is missing.
    [[nodiscard]] std::size_t IndexOf(std::string_view name) const { return records.IndexOf(name); }
    static constexpr std::size_t None = KeyedCollection<std::unique_ptr<Record>>::None;
    [[nodiscard]] const Record& At(std::size_t position) const { return *records.ItemAt(position); }
    /// The record of a name, nullptr when there is none.
    [[nodiscard]] const Record* Find(std::string_view name) const;
    [[nodiscard]] const std::string& NameOf(const Record& record) const { return Kind.NameOf(record); }
    /// The file that holds the record on disk; empty while none does.
    [[nodiscard]] std::string_view FileOnDiskOf(const Record& record) const;
    [[nodiscard]] std::vector<std::string> Names() const;
    [[nodiscard]] bool AnyDirty() const;
    /// True when the disk does not hold what the library does.
    [[nodiscard]] bool AnyPending() const { return AnyDirty() || !removedRecords.Empty(); }

    /// Walks through the records in the editor's order: `for (const auto& [name, record] : library)`.
    class Iterator;
    [[nodiscard]] Iterator begin() const;
    [[nodiscard]] Iterator end() const;

    /// File name to 0-based position in load order.
    [[nodiscard]] const KeyedCollection<std::int32_t>& FileList() const { return files; }
    /// Records on disk that an undone step took away, with their files.
    [[nodiscard]] const KeyedCollection<std::string>& RemovedRecords() const { return removedRecords; }
    /// Files that a committed record was moved away from.
    [[nodiscard]] const std::vector<std::string>& FilesLosingRecords() const { return filesLosingRecords; }

    using Report = std::function<void(std::string_view rule, std::string text)>;
    /// Asked of each record before it is added; false drops it. May change it and report problems of the
    /// number in its header.
    using Admission = std::function<bool(Record&, const Report&)>;
    Admission Admit;

    /// Reads every file of the folder in path order, after backing it up. A file that is no text
    /// (TextFault.h) is told, left out and never written to. False, with a problem, when the folder does not
    /// exist. A failure leaves the records completed so far.
    bool Load(const LoadRequest& request);
    /// Reads one file, named by its full path.
    void ParseFile(const LoadRequest& request, const std::string& path);
    void Clear();

    /// Mode 0 restores load order, any other sorts by name. Renumbers.
    void SortBy(std::int32_t mode);
    /// Numbers the records by position, from 1.
    void Reorder();

    /// Names of the records of a file, in order.
    [[nodiscard]] std::vector<std::string> NamesInFile(std::string_view shortName) const;
    /// Position of the first record of a file, KeyedCollection::None without one.
    [[nodiscard]] std::size_t FirstInFile(std::string_view shortName) const;

    /// Short names of the files that hold an edited record or lost one, as first met, told apart by case.
    [[nodiscard]] std::vector<std::string> FilesToWrite() const;
    using MissingCopy = std::function<bool(const std::string& reason)>;
    /// Rewrites files from their records in list order, those marked for deletion left out; a file left
    /// without records is deleted. A file that gains a record is written before the one that loses it. Names
    /// that differ in case only mean one file. A failure tells which files were written; the records stay
    /// such that writing the same files again does the rest.
    /// Before a rewrite that drops something (LossesOf) or replaces what another program wrote, a dated copy
    /// of the file goes to the backup folder of the last load; where it cannot be made `goOnWithoutCopy` is
    /// asked, once a save, with the reason. Returns the paths of the copies. Files whose names differ in case
    /// only on disk are never written.
    std::vector<std::string> WriteFiles(const std::string& folder, const std::vector<std::string>& shortNames,
                                        const MissingCopy& goOnWithoutCopy = {});
    /// What a file's rewrite drops of these bytes, which stand in it.
    [[nodiscard]] LossCounts LossesOf(const std::string& shortName, std::string_view bytes) const;
    /// Files whose content on disk is not what was last read or written here, and those that cannot be looked
    /// at.
    struct OutsideChanges {
        std::vector<std::string> Changed;
        std::vector<std::string> Unreadable;
    };
    /// Looks at some files. Never fails.
    [[nodiscard]] OutsideChanges ChangedOutside(const std::string& folder,
                                                const std::vector<std::string>& shortNames) const;
    /// The same for all files that were read or written.
    [[nodiscard]] OutsideChanges ChangedOutside(const std::string& folder) const;

  private:
    friend class Edits; // the only writer of records and lists, beside loading

    class Writer;
    std::vector<std::string> ListFiles(const LoadRequest& request);
    void ReportCaseTwins(const LoadRequest& request, const std::vector<std::string>& names);
    void NoteContent(const std::string& shortName, const ContentHash& content, const LossCounts& losses = {});
    void ParseFile(const LoadRequest& request, const std::string& path, const FileBytes& file);
    /// False for a record that is dropped.
    bool Take(std::unique_ptr<Record> record, const std::string& path, const std::string& fileName,
              std::size_t line, const ProblemSink& problems);

    /// A file as it was last read or written.
    struct KnownFile {
        ContentHash Content;
        LossCounts Losses; ///< of writing it again
    };
    /// Position of a file in the list, where it is added when it is not there yet.
    std::int32_t PlaceOf(const std::string& shortName);

    KeyedCollection<std::unique_ptr<Record>> records; // key: the record's name
    KeyedCollection<std::int32_t> files;
    std::vector<std::string> filesLosingRecords;
    KeyedCollection<std::string> removedRecords;
    bool alphabetical = false; // how they were last sorted
    KeyedCollection<KnownFile> knownFiles;
    KeyedCollection<std::string> notWritten; // files that are left alone, with the reason
    std::string backupFolder;                // of the last load
};

/// Where a walk through a library is.
class Library::Iterator {
  public:
    using Position = decltype(std::declval<const KeyedCollection<std::unique_ptr<Record>>&>().begin());
    explicit Iterator(Position start) : at(start) {}

    std::pair<const std::string&, const Record&> operator*() const { return {at->first, *at->second}; }
    Iterator& operator++() {
        ++at;
        return *this;
    }
    bool operator==(const Iterator&) const = default;

  private:
    Position at;
};

inline Library::Iterator Library::begin() const {
    return Iterator(records.begin());
}
inline Library::Iterator Library::end() const {
    return Iterator(records.end());
}

} // namespace velmora
