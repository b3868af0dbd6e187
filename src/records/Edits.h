#pragma once

#include "records/Library.h"

#include <algorithm>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The one door through which the records of a library change.
///
/// A change is a named step: of each record that it touches, what the record is on the other side of it, or
/// that there is none. Doing, undoing and redoing are the same exchange of the two sides. Steps know records
/// by their names, so they outlive the reading of the files after a write.
class Edits {
  public:
    /// A step in the making. It works on copies: nothing shows before Do, and a step that is given up, as by
    /// a failure, leaves no trace.
    class Step {
      public:
        Step(const Library& subject, std::string name);

        [[nodiscard]] const std::string& Name() const { return stepName; }
        [[nodiscard]] std::size_t Count() const { return entries.size(); }
        [[nodiscard]] const std::string& RecordName(std::size_t at) const { return entries[at].Name; }
        /// Names of the records that it touches.
        [[nodiscard]] std::vector<std::string> RecordNames() const;
        [[nodiscard]] bool Touches(std::string_view name) const;

        /// A copy of a record, to be changed; each record at most once. Throws Failure (5) for a name that
        /// the library lacks.
        Record& Change(std::string_view name);
        /// A new record at the end of the list, owned by a file: numbers and IsBeingAdded set.
        Record& Add(const std::string& name, const std::string& folder, const std::string& shortName);
        void Remove(std::string_view name);
        /// Notes that a file gives away a record: it is written again.
        void NoteLosing(const std::string& shortName) { losingFiles.push_back(shortName); }
        /// Lists a file that may be new.
        void NoteFile(const std::string& shortName) { newFiles.push_back(shortName); }
        /// Gives one record to another file; `oldFile` is noted as losing it.
        Record& Move(std::string_view name, const std::string& folder, const std::string& oldFile,
                     const std::string& newFile);
        /// Gives one record back to the file that holds it on disk, which then loses no record any more
        /// unless others left it.
        Record& MoveBack(std::string_view name, const Record& onDisk);

      private:
        friend class Edits;
        struct Entry {
            std::string Name;
            std::unique_ptr<Record> Other;        // nullptr: there is no such record on the other side
            std::size_t Position = Library::None; // when it was last in the list
            std::string Behind = {};              // the record before it then
        };

        const Library* library;
        std::string stepName;
        std::vector<Entry> entries;
        std::size_t additions = 0;
        std::vector<std::string> losingFiles;
        std::vector<std::string> newFiles;
        bool filesListed = false;
        bool movesBack = false;
        std::optional<std::vector<std::string>> losing; // the list on the other side, where it differs
        std::size_t bytes = 0;
    };

    enum class How {
        Done,
        Undone,
        Redone,
        Opened,     ///< a record that is not yet committed was added
        TakenBack,  ///< it was given up
        Normalized, ///< a record took the form in which it is shown
        Reread,     ///< the library was read from disk; any record may be another one
    };
    struct Change {
        How Kind;
        std::string_view StepName;
        std::vector<std::string_view> Names; ///< of the records it touched; empty when Reread
    };
    using Listener = std::function<void(const Change&)>;

    /// How much of the history is kept; its newest step always is.
    struct Limits {
        std::size_t Steps = 1000;
        std::size_t Bytes = std::size_t{64} << 20;
    };

    explicit Edits(Library& subject) : Edits(subject, Limits()) {}
    Edits(Library& subject, Limits historyLimits) : library(subject), limits(historyLimits) {}
    Edits(const Edits&) = delete;
    Edits& operator=(const Edits&) = delete;

    /// Is told of every change after it happened, in the order of registration.
    void OnChange(Listener listener) { listeners.push_back(std::move(listener)); }

    void Do(Step step);
    /// Adds a record that is not yet committed. It becomes a step of the history with the next Do, which must
    /// be its commit; TakeBack gives it up.
    const Record& Open(Step addition);
    void TakeBack();

    [[nodiscard]] bool CanUndo() const { return !done.empty() && !open; }
    [[nodiscard]] bool CanRedo() const { return !undone.empty() && !open; }
    /// The step that Undo or Redo would exchange.
    [[nodiscard]] const Step& NextUndo() const { return done.back(); }
    [[nodiscard]] const Step& NextRedo() const { return undone.back(); }
    [[nodiscard]] std::size_t StepsDone() const { return done.size(); }
    [[nodiscard]] std::size_t StepsUndone() const { return undone.size(); }
    /// A step of the history, the oldest first, those undone at its end.
    [[nodiscard]] const Step& StepAt(std::size_t at) const;
    void Undo();
    void Redo();

    /// What a record is on disk, as far as the history tells.
    struct DiskRecord {
        bool Known = false;
        const velmora::Record* State = nullptr; ///< nullptr where the disk has none
    };
    [[nodiscard]] DiskRecord OnDisk(std::string_view name) const;

    // The commands of the editors that need more than one call of a step.

    /// Sets a record's mark for deletion or takes it away.
    void ToggleDeletion(const std::string& name);
    /// Gives every record of a file to another file.
    void RenameFile(const std::string& oldFile, const std::string& newFile);
    /// Gives a record the form in which it is shown, without a step: it is no edit.
    void Normalize(std::size_t position);

    /// Writes files (Library::WriteFiles); after a success no file is losing a record. Returns the dated
    /// copies.
    std::vector<std::string> Write(const std::string& folder, const std::vector<std::string>& shortNames,
                                   const Library::MissingCopy& goOnWithoutCopy = {});
    /// Empties and reads the library. The history goes on, as far as its records are on disk what they were
    /// here; the names of those that are not are returned, for they end the history before them.
    std::vector<std::string> Reread(const std::function<void()>& read);
    /// Forgets which files are losing records: they are to be read again as they are.
    void GiveUp() { library.filesLosingRecords.clear(); }
    /// Forgets the history.
    void Forget();

  private:
    using Entry = Step::Entry;
    using RecordList = std::vector<KeyedCollection<std::unique_ptr<Record>>::Entry>;
    /// What a record should be on disk.
    struct DiskState {
        std::optional<ContentHash> Hash; ///< none where there is no record
        bool GivenUp = false;            ///< it was changed here, and that is not written
    };

    void Exchange(Step& step);
    void ExchangePlaces(Step& step);
    void ExchangeFiles(Step& step);
    /// Puts records back where they were in the list.
    void Merge(RecordList& list, std::vector<Entry*>& arriving) const;
    void Insert(RecordList& list, Entry& entry) const;
    /// A record on disk that no longer belongs there has to be written away.
    void NoteFileLeft(const Record& record, bool stays);
    /// True when a record that the file holds on disk has left it.
    [[nodiscard]] bool LosesRecord(const std::string& file) const;
    void Push(Step step);
    void Tell(How how, const Step& step) const;

    template <class Visit>
    void ForEachStep(const Visit& visit) {
        std::for_each(done.begin(), done.end(), visit);
        std::for_each(undone.begin(), undone.end(), visit);
    }
    [[nodiscard]] DiskState ExpectedOf(const std::string& name, bool saved) const;
    [[nodiscard]] std::optional<ContentHash> HashOfShown(const Record* record) const;
    void ForgetBefore(const std::vector<std::string>& changed);
    void FollowDisk(Step& step) const;
    [[nodiscard]] std::size_t BytesOf(const Step& step) const;

    Library& library;
    Limits limits;
    std::vector<Listener> listeners;
    std::deque<Step> done;
    std::vector<Step> undone;
    std::optional<Step> open;
    std::size_t bytes = 0; // of the steps done
    bool written = false;  // the disk holds what the library does
};

} // namespace velmora
