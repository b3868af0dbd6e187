#pragma once

#include "platform/FileLock.h"
#include "records/Journal.h"

#include <optional>
#include <string>
#include <vector>

namespace velmora {

/// An editor's journal: offers what a crash left, keeps every edit as it is made, tells of trouble once.
class UnwrittenWork {
  public:
    explicit UnwrittenWork(Edits& libraryEdits, const Library& library);

    /// To be called after loading: asks whether to take up what an earlier run left. True when it was taken
    /// up. While another program has the journal, edits are not kept.
    bool Offer(const std::string& path, const std::string& folder);
    /// Forgets everything: it is written, or the user gave it up.
    void Drop();

  private:
    void Keep(const Edits::Change& change);
    bool Lock(const std::string& path);
    [[nodiscard]] bool AskToTakeUp(const Journal::Leftover& found) const;
    static void TellTrouble(const std::string& trouble, const std::string& reason);

    Edits& edits;
    Journal journal;
    std::optional<FileLock> lock;
};

} // namespace velmora
