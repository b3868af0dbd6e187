#pragma once

#include "kinds/GameWords.h"
#include "platform/CodePage.h"
#include "records/Library.h"
#include "services/Speller.h"
#include "services/Words.h"

#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace velmora {

/// The rule of texts with words that nobody knows.
inline constexpr std::string_view SpellingRule = "spelling";

/// Which words of a game's texts are known: those of the dictionaries, the game's vocabulary, the names of
/// its records, and those of `velmora.dic`. Any thread may ask.
class Spelling {
  public:
    explicit Spelling(const std::vector<std::string>& dictionaries = {"en_US", "en_GB"},
                      const std::vector<std::string>& folders = Speller::Folders());

    /// What keeps words from being looked up, in one line; empty when nothing does.
    [[nodiscard]] const std::string& Trouble() const { return speller.Trouble(); }
    /// True when no dictionary could be opened: every word counts as known.
    [[nodiscard]] bool Empty() const { return speller.Empty(); }
    /// Reads the game's own words. Throws Failure when that cannot be done; they are none then.
    void ReadWords(const std::string& gameDirectory);
    /// What is wrong with the file of the game's own words.
    [[nodiscard]] std::vector<Problem> BrokenLines() const;
    [[nodiscard]] const std::string& WordsPath() const { return words.Path(); }
    /// Adds to the game's own words. Throws Failure and changes nothing when it cannot be.
    void AddWords(const std::vector<std::string>& added);
    /// Makes the game's vocabulary known. To be called where the catalogues are built and released: opening
    /// dictionaries is meant for another thread.
    void LearnVocabulary();
    /// Makes the names of a library's records known.
    void Learn(const Library& library);
    /// Makes the names of records known, and no others; meant for another thread when there are many.
    void LearnOnly(const std::vector<std::string>& recordNames);
    /// Follows a record that may have come or gone; true when other words are known now.
    bool Follow(std::string_view recordName, bool exists);

    [[nodiscard]] bool Knows(std::string_view word);
    [[nodiscard]] std::vector<WordPlace> UnknownIn(std::string_view text);
    /// Words that may have been meant, the likeliest first.
    [[nodiscard]] std::vector<std::string> Suggest(std::string_view word) const;
    /// Appends a note for each text of a record that holds unknown words.
    void Check(const RecordKind& kind, const Record& record, std::vector<Problem>& problems);

  private:
    /// The words of the names of records.
    class NameWords {
      public:
        bool Follow(std::string_view name, bool exists);
        [[nodiscard]] bool Has(const std::string& smallWord) const { return counts.count(smallWord) > 0; }

      private:
        struct HashNoCase {
            using is_transparent = void;
            std::size_t operator()(std::string_view name) const { return CodePage::HashNoCase(name); }
        };
        struct EqualNoCase {
            using is_transparent = void;
            bool operator()(std::string_view one, std::string_view other) const {
                return CodePage::EqualNoCase(one, other);
            }
        };
        std::unordered_set<std::string, HashNoCase, EqualNoCase> names;
        std::unordered_map<std::string, std::size_t> counts; ///< of the names that hold a word
    };

    void LearnWords(std::string_view text);
    [[nodiscard]] bool IsOfGame(const std::string& smallWord) const;
    [[nodiscard]] bool LookUp(std::string_view word);

    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    mutable std::mutex mutex;
    Speller speller;
    GameWords words;
    NameWords names;
    std::unordered_set<std::string> learned;                            ///< vocabulary, in small letters
    std::unordered_map<std::string, bool, Hash, std::equal_to<>> known; ///< what was looked up
};

} // namespace velmora
