#pragma once

#include "services/Problem.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

/// The rule of a line that is not understood.
inline constexpr std::string_view BrokenIgnoreLineRule = "broken-ignore-line";

/// Problems that are not to be shown, as `velwriter.ignore` in the game directory tells them, shared by
/// whoever works on the game:
///
///     rule:no-image                                  # this rule everywhere
///     rule:no-image file:A.event                     # this rule in this file
///     rule:no-image record:Raid field:Image          # this one
///     rule:unneeded-space file:A.event text:"..."    # one that loading tells
///
/// A line hides the problems for which all that it names holds, letter case aside; it has to name a rule. A
/// value with blanks stands in quotes, in which a quote is doubled. A remark follows "#". A line that is none
/// of this hides nothing and stays as it is.
class IgnoreFile {
  public:
    /// How much a new line is to hide.
    enum class Scope { One, InFile, Everywhere };

    /// Reads the file of a game directory; one that is missing hides nothing. Throws Failure when it cannot
    /// be read.
    void Read(const std::string& gameDirectory);
    [[nodiscard]] const std::string& Path() const { return path; }
    [[nodiscard]] bool Hides(const Problem& problem) const;
    /// A warning for each line that is not understood, with the file's name and line.
    [[nodiscard]] const std::vector<Problem>& Broken() const { return broken; }

    /// Adds a line that hides a problem, the file being read anew and replaced as a whole. Throws Failure and
    /// changes nothing when it cannot be.
    void Hide(const Problem& problem, Scope scope);
    /// Takes out the lines that hide a problem, likewise.
    void Show(const Problem& problem);

  private:
    /// What a line names; what it does not name is empty.
    struct Line {
        std::string Rule;
        std::string File;
        std::string Record;
        std::string Field;
        std::string Text;

        [[nodiscard]] bool Holds(const Problem& problem) const;
        [[nodiscard]] std::string* Value(std::string_view key);
    };
    static std::string Parse(std::string_view text, std::optional<Line>& line);
    void Take(std::string bytes);

    std::string path;
    std::string content;
    std::unordered_map<std::string, std::vector<Line>> lines; ///< by rule
    std::vector<Problem> broken;
};

} // namespace velmora
