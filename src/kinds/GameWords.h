#pragma once

#include "services/Problem.h"

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace velmora {

/// The rule of a line that holds no word.
inline constexpr std::string_view BrokenWordLineRule = "broken-word-line";

/// The game's own words, as `velmora.dic` in the game directory lists them, one a line, shared by whoever
/// works on the game. It is read as people and other programs write such lists: in the code page or in UTF-8,
/// with or without a count in the first line, what follows a "/" or stands behind a "#" left aside.
class GameWords {
  public:
    /// Reads the file of a game directory; one that is missing has no words. Throws Failure when it cannot be
    /// read.
    void Read(const std::string& gameDirectory);
    [[nodiscard]] const std::string& Path() const { return path; }
    /// Letter case aside; a possessive is known with its word.
    [[nodiscard]] bool Knows(std::string_view word) const;
    /// A warning for each line that holds no word, with the file's name and line.
    [[nodiscard]] const std::vector<Problem>& Broken() const { return broken; }

    /// Adds a line a word, the file being read anew and replaced as a whole. Throws Failure and changes
    /// nothing when it cannot be.
    void Add(const std::vector<std::string>& added);

  private:
    void Take(std::string_view content);
    void TakeLine(std::string_view line, std::size_t number);

    std::string path;
    std::unordered_set<std::string> words; ///< in small letters
    std::vector<Problem> broken;
};

} // namespace velmora
