#pragma once

#include "records/Filter.h"
#include "records/Library.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace velmora {

/// Finds the records of a library that match a filter, a slice at a time, so that whoever types it never
/// waits. The result grows in the library's order.
class Search {
  public:
    /// `rules` may be empty: no record breaks a rule then.
    explicit Search(const Library& searched, RulesOf rules = {})
        : library(searched), rulesOf(std::move(rules)) {}

    /// Begins anew with a filter. What was found is looked at alone when the filter only got narrower.
    void Begin(Filter newFilter);
    /// Begins anew with the same filter: the library is another one.
    void Restart();
    /// Looks at records until the time is up, but at some in any case; true when all have been looked at.
    bool Work(std::chrono::microseconds time);
    [[nodiscard]] bool Done() const { return next >= library.Count() && nextEarlier == earlier.size(); }

    [[nodiscard]] const Filter& Current() const { return filter; }
    /// Positions of the records found so far, in order.
    [[nodiscard]] const std::vector<std::uint32_t>& Found() const { return found; }
    [[nodiscard]] bool Matches(const Record& record) const {
        return filter.Matches(library.Kind, record, rulesOf);
    }
    /// Puts a record among those found or takes it out; only once the search is done.
    void Put(std::size_t position);
    void Drop(std::size_t position);

  private:
    void LookAt(std::size_t position);

    const Library& library;
    RulesOf rulesOf;
    Filter filter;
    std::vector<std::uint32_t> found;
    std::vector<std::uint32_t> earlier; // to be looked at first; all lie before `next`
    std::size_t nextEarlier = 0;
    std::size_t next = 0; // position of the first record that no search since the last restart has looked at
};

} // namespace velmora
