#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The dictionaries that words are looked up in. One thread at a time.
class Speller {
  public:
    /// Opens dictionaries by their names ("en_US"), each in the first folder that has it. Those that cannot
    /// be made use of are left out, and Trouble tells of the first.
    Speller(const std::vector<std::string>& names, const std::vector<std::string>& folders);
    ~Speller();

    /// Where dictionaries are looked for: in the folder that DICPATH names, or else beside the program and
    /// where the system has its own.
    static std::vector<std::string> Folders();
    /// The names of all dictionaries there are.
    static std::vector<std::string> Installed(const std::vector<std::string>& folders);

    /// One line that says what is to be installed or repaired; empty when nothing is.
    [[nodiscard]] const std::string& Trouble() const { return trouble; }
    /// True when no dictionary could be opened: every word counts as known.
    [[nodiscard]] bool Empty() const { return open.empty(); }
    /// True when any of the dictionaries has the word.
    [[nodiscard]] bool Knows(std::string_view word) const;
    /// Words that may have been meant, the likeliest first; only such as the code page can hold.
    [[nodiscard]] std::vector<std::string> Suggest(std::string_view word) const;

  private:
    class Dictionary;
    /// Why a dictionary cannot be made use of; empty when it can.
    std::string Open(const std::string& name, const std::vector<std::string>& folders);

    std::vector<std::unique_ptr<Dictionary>> open;
    std::string trouble;
};

} // namespace velmora
