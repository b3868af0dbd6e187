#include "kinds/Rules.h"

#include "kinds/GameWords.h"
#include "kinds/IgnoreFile.h"
#include "kinds/Spelling.h"
#include "services/Problem.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr std::array<RuleEntry, 36> Table{{
    {"no-data-directory",
     "Events and starbase modules live in the game's Data directory, UP issues in its UP_Issues."},
    {"case-twin-files", "Files whose names differ in letter case only are one file to the game."},
    {"unusable-file-name", "A file's name holds no backslash, which separates folders to the game."},
    {"long-file-name", "A file's name is short enough for its backups (told by the editors only)."},
    {"unneeded-space", "Outside quotes a value is one word; blanks inside it are removed."},
    {"unrecognized-token", "A line begins with a key that the game knows; any other line is ignored."},
    {"illegal-name", "A name is made of A to Z, 0 to 9 and the underscore and does not begin with a digit."},
    {"duplicate-event", "No two events share a name, whatever the letter case; the first one read stays."},
    {"duplicate-upissue",
     "No two UP issues share a name, whatever the letter case; the first one read stays."},
    {"duplicate-sbmodule",
     "No two starbase modules share a name, whatever the letter case; the first one read stays."},
    {"duplicate-id", "No two starbase modules share an ID; the first one read stays."},
    {"id-out-of-range",
     "A starbase module's ID runs from 0 to 140; a higher one gives way to the lowest free ID."},
    {"no-title", "An event has a title."},
    {"no-image", "An event's picture is a file below the game directory."},
    {"no-description", "An event has a description."},
    {"no-good-option", "An event has a text for its good answer."},
    {"no-neutral-option", "An event has a text for its neutral answer."},
    {"no-evil-option", "An event has a text for its evil answer."},
    {"no-question", "A UP issue has a question."},
    {"no-options", "A UP issue offers options, unless its type makes the game list the major races."},
    {"no-option-values",
     "A UP issue's options have values, unless its type makes the game list the major races."},
    {"unneeded-options", "A UP issue whose type makes the game list the major races has no options."},
    {"unneeded-option-values",
     "A UP issue whose type makes the game list the major races has no option values."},
    {"too-many-wild-cards", "A description or question holds up to four \"%s\", an answer two."},
    {"wild-cards-missing", "A substitution is set only for a text that holds a \"%s\"."},
    {"wild-card-placement", "Every \"%s\" has its substitution, the first \"%s\" the first one."},
    {"wild-card-count", "As many substitutions are set as the text holds \"%s\"."},
    {"description-length", "An event's description shows well up to 540 characters."},
    {"option-length",
     "An answer of an event shows well up to 200 characters, an option of a UP issue up to 30."},
    {"question-length", "A UP issue's question shows well up to 530 characters."},
    {ConflictRule, "No conflict that a merge left is to be settled."},
    {UnfinishedBlockRule, "Every block has its end line, or nothing of it is read."},
    {LoadFailureRule,
     "A file that cannot be read, is no text, or holds a number beyond 32 bits is a failure."},
    {BrokenIgnoreLineRule, "Each line of velwriter.ignore names a rule, and what else of it is hidden."},
    {SpellingRule, "Words stand in a dictionary or in velmora.dic, or are names of the game."},
    {BrokenWordLineRule, "Each line of velmora.dic holds one word."},
}};

const RuleEntry* Find(std::string_view name) {
    const auto* found =
        std::find_if(Table.begin(), Table.end(), [&](const RuleEntry& rule) { return rule.Name == name; });
    return found == Table.end() ? nullptr : found;
}

} // namespace

std::span<const RuleEntry> Rules() {
    return Table;
}

bool IsRule(std::string_view name) {
    return Find(name) != nullptr;
}

std::string GameRule(std::string_view name) {
    const RuleEntry* rule = Find(name);
    return rule != nullptr ? std::string(rule->Game) : std::string();
}

} // namespace velmora
