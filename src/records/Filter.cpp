#include "records/Filter.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>
#include <utility>

namespace velmora {

std::string_view StateWord(const Record& record) {
    if (record.ToBeDeleted)
        return "deleted";
    if (record.IsBeingAdded || (record.IsDirty && record.FileOnDisk < 0))
        return "new";
    return record.IsDirty ? "edited" : "";
}

Filter::Filter(std::string_view line, const RecordKind* kind) {
    while (!line.empty()) {
        if (line.front() == ' ') {
            line.remove_prefix(1);
            continue;
        }
        const bool negated = line.front() == '-';
        if (negated)
            line.remove_prefix(1);
        Place place = TakePlace(line);
        const Field* named = place == Place::Anywhere && kind ? TakeField(line, *kind) : nullptr;
        if (named)
            place = Place::OneField;
        const std::string_view word = TakeWord(line);
        // A word that is only begun asks for nothing yet.
        if (!word.empty())
            terms.push_back({place, negated, TextFinder(word),
                             word.find_first_not_of("-0123456789") == std::string_view::npos, named});
    }
}

Filter::Place Filter::TakePlace(std::string_view& line) {
    static constexpr std::array<std::pair<std::string_view, Place>, 5> prefixes{{{"file:", Place::File},
                                                                                 {"title:", Place::Title},
                                                                                 {"state:", Place::State},
                                                                                 {"type:", Place::Type},
                                                                                 {"rule:", Place::Rule}}};
    for (const auto& [prefix, place] : prefixes)
        if (CodePage::EqualNoCase(line.substr(0, prefix.size()), prefix)) {
            line.remove_prefix(prefix.size());
            return place;
        }
    return Place::Anywhere;
}

const Field* Filter::TakeField(std::string_view& line, const RecordKind& kind) {
    const std::string_view name = line.substr(0, line.find(':'));
    const Field* named = nullptr;
    kind.ForEachField([&](const Field& field) {
        if (name.size() < line.size() && CodePage::EqualNoCase(field.Property, name))
            named = &field;
    });
    if (named)
        line.remove_prefix(name.size() + 1);
    return named;
}

std::string_view Filter::TakeWord(std::string_view& line) {
    const bool phrase = !line.empty() && line.front() == '"';
    if (phrase)
        line.remove_prefix(1);
    const std::size_t length = std::min(line.find(phrase ? '"' : ' '), line.size());
    const std::string_view word = line.substr(0, length);
    line.remove_prefix(std::min(length + 1, line.size()));
    return word;
}

bool Filter::Matches(const RecordKind& kind, const Record& record, const RulesOf& rulesOf) const {
    return std::all_of(terms.begin(), terms.end(),
                       [&](const Term& term) { return term.StandsIn(kind, record, rulesOf) != term.Not; });
}

bool Filter::Term::StandsIn(const RecordKind& kind, const Record& record, const RulesOf& rulesOf) const {
    const auto holds = [this](std::string_view text) { return Text.In(text) != TextFinder::None; };
    switch (In) {
    case Place::File:
        return holds(record.ShortName);
    case Place::Title:
        return holds(kind.Title.TextOf(record));
    case Place::State:
        return holds(StateWord(record));
    case Place::Type:
        return holds(kind.TypeOf(record));
    case Place::Rule: {
        const auto rules = rulesOf ? rulesOf(record) : std::vector<std::string_view>{};
        return std::any_of(rules.begin(), rules.end(), holds);
    }
    case Place::OneField:
        return StandsInNamed(kind, record);
    default:
        return StandsAnywhere(kind, record);
    }
}

bool Filter::Term::StandsAnywhere(const RecordKind& kind, const Record& record) const {
    return StandsInField(kind.Name, record) || Text.In(record.ShortName) != TextFinder::None ||
           (kind.HeaderNumber && StandsInField(*kind.HeaderNumber, record)) ||
           std::any_of(kind.Fields.begin(), kind.Fields.end(),
                       [&](const Field& field) { return StandsInField(field, record); });
}

bool Filter::Term::StandsInNamed(const RecordKind& kind, const Record& record) const {
    if (Named->Type == FieldType::Text || Named->Type == FieldType::List)
        return StandsInField(*Named, record);
    return CodePage::EqualNoCase(std::to_string(Named->NumberOf(record)), Text.Folded()) ||
           (kind.ChoiceOf && CodePage::EqualNoCase(kind.ChoiceOf(*Named, record), Text.Folded()));
}

bool Filter::Term::StandsInField(const Field& field, const Record& record) const {
    if (field.Type == FieldType::Text)
        return Text.In(field.TextOf(record)) != TextFinder::None;
    if (field.Type == FieldType::List) {
        const auto& list = field.ListOf(record);
        return std::any_of(list.begin(), list.end(),
                           [this](const std::string& entry) { return Text.In(entry) != TextFinder::None; });
    }
    if (!Numeric)
        return false;
    std::array<char, 11> digits; // NOLINT(cppcoreguidelines-pro-type-member-init): written before it is read
    const char* end = std::to_chars(digits.begin(), digits.end(), field.NumberOf(record)).ptr;
    return Text.In({digits.begin(), end}) != TextFinder::None;
}

bool Filter::AsksForRules() const {
    return std::any_of(terms.begin(), terms.end(), [](const Term& term) { return term.In == Place::Rule; });
}

bool Filter::Narrows(const Filter& other) const {
    return std::all_of(other.terms.begin(), other.terms.end(), [this](const Term& wider) {
        return std::any_of(terms.begin(), terms.end(), [&](const Term& term) { return term.Narrows(wider); });
    });
}

bool Filter::Term::Narrows(const Term& other) const {
    const std::string& longer = Not ? other.Text.Folded() : Text.Folded();
    const std::string& shorter = Not ? Text.Folded() : other.Text.Folded();
    return In == other.In && In != Place::OneField && Not == other.Not &&
           longer.find(shorter) != std::string::npos;
}

} // namespace velmora
