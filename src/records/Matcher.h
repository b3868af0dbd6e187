#pragma once

#include "platform/TextFinder.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace velmora {

/// What is looked for in texts, and what is to stand in its place.
class Matcher {
  public:
    Matcher() = default;
    Matcher(const Matcher&) = delete;
    Matcher& operator=(const Matcher&) = delete;
    virtual ~Matcher() = default;

    using Visit = std::function<void(std::size_t at, std::size_t length, std::string_view with)>;

    /// Calls `visit` for each hit in a text, from left to right, none overlapping another. False when it took
    /// too much work to go through the whole text.
    virtual bool ForEachHit(std::string_view text, const Visit& visit) const = 0;
};

/// A text as it is.
class TextMatcher : public Matcher {
  public:
    struct How {
        bool MatchCase = false;
        bool WholeWord = false;
    };
    TextMatcher(std::string what, std::string with, How how);

    bool ForEachHit(std::string_view text, const Visit& visit) const override;

  private:
    [[nodiscard]] bool IsHit(std::string_view text, std::size_t at) const;

    std::string sought;
    std::string replacing;
    How how;
    TextFinder finder;
};

/// True where no letter, digit or underscore of a text touches a place from before, or from behind. The line
/// break "\n" is none of the word that it stands before.
bool WordMayBegin(std::string_view text, std::size_t at);
bool WordMayEnd(std::string_view text, std::size_t at);

} // namespace velmora
