#pragma once

#include "platform/Files.h"
#include "records/Draft.h"
#include "records/Edits.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace velmora {

/// Keeps the committed, unwritten edits of a library on disk, so that a crash does not take them.
///
/// The file tells its kind and data directory and then holds an entry an edit: where the record belongs, its
/// flags and its block. An entry carries its length and a checksum; of several for one record the last
/// counts. So an edit costs what its record costs, however large the library is.
class Journal {
  public:
    /// What an earlier run left.
    struct Leftover {
        KeyedCollection<std::unique_ptr<Record>> Records; ///< the last state of each, key: its name
        std::vector<std::string> RemovedRecords;
        std::vector<std::string> FilesLosingRecords;
        std::optional<Draft> Typed; ///< and not committed
        std::string Complaint;      ///< why the file, or its rest, cannot be made use of; mostly empty
        [[nodiscard]] bool Empty() const { return Records.Empty() && RemovedRecords.empty() && !Typed; }
    };

    explicit Journal(const Library& subject) : library(subject) {}

    /// Where the journal of a data directory is: a crash may have left that of another one at this path.
    [[nodiscard]] std::string PathFor(const std::string& usualPath, const std::string& dataFolder) const;
    /// Turns to the journal of a data directory and reads what it holds. Nothing is noted until Begin.
    void Find(const std::string& journalPath, const std::string& dataFolder, Leftover& found);
    /// Reads any journal of a data directory.
    static void Read(const RecordKind& kind, const std::string& journalPath, const std::string& dataFolder,
                     Leftover& found);
    /// Copies the journal under a dated name beside it and returns that name. One that cannot be read is
    /// renamed.
    [[nodiscard]] std::string KeepCopy() const;
    /// The step that gives the library the edits that were left: records known by name change in their place,
    /// others are added at the end.
    [[nodiscard]] Edits::Step TakeUp(const Leftover& found) const;

    // Trouble with the disk never reaches the edits: it is returned as a text, once until the next Find.

    /// From now on edits are noted. What the library holds unwritten replaces what the file held.
    std::string Begin();
    /// Notes what the records of these names are now.
    std::string Note(const std::vector<std::string_view>& names);
    /// Notes what is typed, in place of what was noted before; nullptr when nothing is.
    std::string NoteDraft(const Draft* draft);
    /// Writes a journal of its own of what is typed, and of what is committed and unwritten if that is
    /// wanted.
    void WriteCopy(const std::string& copyPath, const std::string& dataFolder, const Draft* draft,
                   bool committed) const;
    /// Removes the journal, or voids it where the host does not let it go: its edits are written, or given
    /// up. Trouble is told each time.
    std::string Remove();

  private:
    /// False when there is nothing to note.
    [[nodiscard]] bool Holds() const { return !draftNoted.empty() || library.AnyPending(); }
    /// Has the file hold what is to be noted: by appending the news where that will do.
    std::string Keep(const Files::Pieces& news, bool anew = false);
    void Rewrite();
    /// Writes the whole file anew, what is typed at its end.
    void RewriteWith(const Files::Pieces& pieces);
    [[nodiscard]] std::string DraftEntry(const Draft& draft) const;
    void RemoveFile();
    void AppendState(std::string_view name, std::string& text);
    void AppendEdit(const Record& record, std::string& text);
    [[nodiscard]] bool AnyLosingTakenBack() const;
    /// Runs work on the file; the text of its failure when it is the first.
    template <class Work>
    std::string Attempt(const Work& work);

    const Library& library;
    std::string path;
    std::string folder;
    std::unordered_set<std::string> losingNoted;
    KeyedCollection<bool> noted; // records with an entry
    std::string draftNoted;      // the entry of what is typed
    bool noting = false;
    bool whole = false; ///< the file holds everything unwritten: appending will do
    bool complained = false;
};

} // namespace velmora
