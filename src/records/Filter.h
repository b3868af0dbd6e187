#pragma once

#include "platform/TextFinder.h"
#include "records/RecordKind.h"

#include <functional>
#include <string_view>
#include <vector>

namespace velmora {

/// The state of a record against the disk in one word: "deleted", "new" or "edited"; empty for one that is on
/// disk as it is here.
std::string_view StateWord(const Record& record);

/// Names of the rules that a record breaks.
using RulesOf = std::function<std::vector<std::string_view>(const Record&)>;

/// What a filter line asks of a record: that each of its words stands somewhere in a field, letter case
/// aside. `"a phrase"` is one word, `-word` must not be there, `file:`, `title:` (or question), `state:`,
/// `type:` and `rule:` look in one place only, and so does the name of a field, `Description:`; a number has
/// to be that number, or a choice of that name. Every line has a meaning; what is no such prefix is a word.
class Filter {
  public:
    /// Without a kind no field has a name.
    explicit Filter(std::string_view line = {}, const RecordKind* kind = nullptr);

    /// True when it asks for nothing.
    [[nodiscard]] bool Empty() const { return terms.empty(); }
    [[nodiscard]] bool Matches(const RecordKind& kind, const Record& record, const RulesOf& rulesOf) const;
    [[nodiscard]] bool AsksForRules() const;
    /// True when whatever matches this one matches the other one too.
    [[nodiscard]] bool Narrows(const Filter& other) const;

  private:
    enum class Place { Anywhere, File, Title, State, Type, Rule, OneField };
    struct Term {
        Place In;
        bool Not;
        TextFinder Text;
        bool Numeric;       ///< could stand in a number
        const Field* Named; ///< of OneField

        [[nodiscard]] bool Narrows(const Term& other) const;
        [[nodiscard]] bool StandsIn(const RecordKind& kind, const Record& record,
                                    const RulesOf& rulesOf) const;
        [[nodiscard]] bool StandsAnywhere(const RecordKind& kind, const Record& record) const;
        [[nodiscard]] bool StandsInNamed(const RecordKind& kind, const Record& record) const;
        [[nodiscard]] bool StandsInField(const Field& field, const Record& record) const;
    };
    static Place TakePlace(std::string_view& line);
    /// nullptr where no field's name stands.
    static const Field* TakeField(std::string_view& line, const RecordKind& kind);
    static std::string_view TakeWord(std::string_view& line);

    std::vector<Term> terms;
};

} // namespace velmora
