#pragma once

#include <array>
#include <string>
#include <vector>

namespace velmora {

/// What of a file has no place in the records that were read from it.
enum class Loss {
    Comments,
    Unrecognized,
    AfterQuote,
    Blanks,
    Cut,
    Names,
    CarriedOver,
    Repeated,
    Dropped,
    Unfinished,
};

class LossCounts {
  public:
    void Add(Loss loss, bool met = true) { counts[static_cast<std::size_t>(loss)] += met ? 1 : 0; }
    [[nodiscard]] bool Any() const { return counts != decltype(counts){}; }
    /// "3 comments", "1 value carried over from an earlier block".
    [[nodiscard]] std::vector<std::string> Texts() const;

  private:
    std::array<int, static_cast<std::size_t>(Loss::Unfinished) + 1> counts{};
};

} // namespace velmora
