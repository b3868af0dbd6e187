#pragma once

#include "platform/FileLock.h"
#include "records/Journal.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// An editor's journal: offers what a crash left, keeps every edit as it is made, tells of trouble once.
class UnwrittenWork {
  public:
    explicit UnwrittenWork(Edits& libraryEdits, const Library& editedLibrary);

    /// To be called after loading: asks whether to take up what an earlier run left. True when it was taken
    /// up. While another program has the journal, edits are not kept.
    bool Offer(const std::string& usualPath, const std::string& folder);
    /// Forgets everything: it is written, or the user gave it up.
    void Drop();

    /// Keeps what is typed, in place of what was kept before; nullptr when nothing is.
    void KeepDraft(const Draft* typed);
    /// What was typed over a record, where Offer or TakeUp took such up; it is for its window to show again.
    [[nodiscard]] std::optional<Draft> TakeDraft() { return std::exchange(draft, std::nullopt); }

    /// Keeps what is about to be given up in a dated journal, the newest 20 of which stay: what is typed and,
    /// if that is wanted, what is committed and unwritten.
    void KeepGivenUp(const Draft* typed, bool committed) const;
    struct GivenUp {
        std::string Path;
        std::string Date; ///< "20251231-235959"
        std::unique_ptr<Journal::Leftover> Work;
    };
    /// What was given up of this data directory, the latest first.
    [[nodiscard]] std::vector<GivenUp> ListGivenUp() const;
    /// Takes such work up as one step.
    void TakeUp(const GivenUp& work);

  private:
    [[nodiscard]] std::vector<std::string> GivenUpNames() const;
    void WriteGivenUp(const Draft* typed, bool committed) const;
    void TakeUp(const Journal& from, Journal::Leftover& found);
    [[nodiscard]] std::string KeepAside() const;
    void Keep(const Edits::Change& change);
    bool Lock(const std::string& path);
    [[nodiscard]] bool AskToTakeUp(const Journal::Leftover& found) const;
    static void TellTrouble(const std::string& trouble, const std::string& reason);

    Edits& edits;
    const Library& library;
    Journal journal;
    std::string base; ///< "events", as its journals' names begin
    std::string givenUpFolder;
    std::string dataFolder;
    std::optional<Draft> draft;
    std::optional<FileLock> lock;
};

} // namespace velmora
