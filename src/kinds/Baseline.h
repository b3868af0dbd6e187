#pragma once

#include "services/Problem.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace velmora {

/// What a problem is known by wherever its line moves to, in UTF-8: rule, file, record and field, parted by
/// tabs. Where record or field do not apply its text tells it from others.
std::string KeyOf(const Problem& problem);

/// Problems that were there before, so that only new ones are told. A file holds one a line, as KeyOf has
/// it, sorted; a problem that is there three times stands in it three times.
class Baseline {
  public:
    /// Throws Failure when the file cannot be read.
    void Read(const std::string& path);
    /// True for a problem that was there before; each of them covers one.
    bool Cover(const Problem& problem);

    void Add(const Problem& problem);
    [[nodiscard]] std::size_t Count() const;
    /// Replaces the file as a whole. Throws Failure and changes nothing when it cannot be.
    void Write(const std::string& path) const;

  private:
    std::map<std::string, std::size_t, std::less<>> known; ///< how often by key
};

} // namespace velmora
