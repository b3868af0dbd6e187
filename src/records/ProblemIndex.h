#pragma once

#include "records/CheckContext.h"
#include "records/CheckRecords.h"
#include "records/Edits.h"
#include "services/Problem.h"

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora {

/// All problems of a library, those of loading and those of its records, kept up while it changes. A whole
/// library is checked a slice at a time, so that nobody waits for it.
class ProblemIndex {
  public:
    /// The problems of one record, or those of loading. Never changes: others take its place.
    struct Holder {
        std::string Record = {}; ///< empty for those of loading
        std::string File = {};   ///< the record's
        std::vector<Problem> Problems = {};
        bool Uncommitted = false; ///< they are those of what is being typed
    };
    using HolderPtr = std::shared_ptr<const Holder>;
    /// Told of others in the place of a record's problems; either may be nullptr, for none.
    using Listener = std::function<void(const HolderPtr& before, const HolderPtr& after)>;

    explicit ProblemIndex(const Library& indexed) : library(indexed) {}

    void OnChange(Listener listener) { told = std::move(listener); }
    /// What else is checked of a record, from now on; Restart has it done for all. Its work may take a while.
    void SetMore(RecordCheck check) { more = std::move(check); }
    [[nodiscard]] bool ChecksMore() const { return more != nullptr; }

    /// Begins anew over a library that was read. Nobody is told.
    void Begin(const std::string& gameDirectory);
    /// Takes what loading had to tell. Nobody is told.
    void SetFound(std::vector<Problem> found);
    /// Checks all records once more; what is known stays until it is known better.
    void Restart();
    /// Checks records until the time is up, but some in any case; true when all have been.
    bool Work(std::chrono::microseconds time);
    [[nodiscard]] bool Done() const { return next >= library.Count(); }

    /// To be called after every change: checks the records that it touched. Very many of them are left to
    /// Work, and so are all when a picture has come or gone.
    void Follow(const Edits::Change& change);
    /// Puts the problems of what is being typed in the place of a record's own, until they are dropped.
    void SetDraft(const Record& draft);
    void DropDraft();

    /// nullptr for a record without problems. An empty name stands for loading.
    [[nodiscard]] HolderPtr Of(std::string_view record) const;
    /// Calls `visit` with each problem about a record, those of loading among them.
    template <class Visit>
    void ForEachOf(std::string_view record, const Visit& visit) const;
    /// All that have problems: loading first, then the records in the library's order.
    [[nodiscard]] std::vector<HolderPtr> All() const;
    [[nodiscard]] const CheckContext& Context() const { return *context; }

  private:
    void Check(const Record& record, bool uncommitted = false);
    void Put(std::string_view record, const HolderPtr& after);
    [[nodiscard]] bool PictureChanged(const Record& record) const;

    const Library& library;
    Listener told;
    RecordCheck more;
    std::string gamePath;
    std::unique_ptr<CheckContext> context = std::make_unique<CheckContext>(std::string());
    HolderPtr loading;
    KeyedCollection<std::vector<std::size_t>> loadingOf; // places in loading->Problems by record
    KeyedCollection<HolderPtr> holders;                  // nullptr once a record has none any more
    std::string drafted;
    std::size_t next = 0;
};

template <class Visit>
void ProblemIndex::ForEachOf(std::string_view record, const Visit& visit) const {
    if (const auto* places = loadingOf.Find(record))
        for (const std::size_t place : *places)
            visit(loading->Problems[place]);
    if (const HolderPtr* holder = holders.Find(record); holder && *holder)
        for (const Problem& problem : (*holder)->Problems)
            visit(problem);
}

} // namespace velmora
