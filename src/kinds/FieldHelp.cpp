#include "kinds/FieldHelp.h"

#include "kinds/PlayerTexts.h"
#include "kinds/Rules.h"

#include <algorithm>
#include <string_view>

namespace velmora {

namespace {

/// What a field means, and the rules that are about it. A "#" stands for any digit.
struct Meaning {
    std::string_view Kind; ///< empty for any
    std::string_view Property;
    std::string_view Text;
    std::string_view Rules = {}; ///< separated by blanks
};

constexpr std::string_view WildCardRules =
    "too-many-wild-cards wild-cards-missing wild-card-placement wild-card-count";
constexpr std::string_view Answer = "One of the three answers that a player can give.";
constexpr std::string_view Attribute =
    "What this answer changes: an attribute of the whole civilization for a "
    "random event, of this colony for a colonial one.";
constexpr std::string_view Value =
    "By how much this answer changes its attribute, in the unit beside it. The game randomizes it.";
constexpr std::string_view Population =
    "How many million people this answer adds or takes away. The game randomizes it.";
constexpr std::string_view Substitution =
    "What stands in the place of this \"%s\" of the text: a name or a value of the running game.";

constexpr std::string_view Unused = "The game does not use it. What the file holds is kept.";
constexpr std::string_view Detail = "A detail that some types need; the caption beside it says what goes in.";

constexpr Meaning Meanings[] = {
    {"event", "EventName", "The name by which the game and its files know the event.",
     "illegal-name duplicate-event"},
    {"upissue", "UPIssueName", "The name by which the game and its files know the issue.",
     "illegal-name duplicate-upissue"},
    {"sbmodule", "SBModuleName", "The name by which the game and its files know the module.",
     "illegal-name duplicate-sbmodule"},
    {"", "ShortName", "The file that holds the record.", "case-twin-files"},
    {"event", "Title", "The title of the event. The game seems not to show it.", "no-title"},
    {"event", "Description", "What has happened, as the player reads it.", "no-description"},
    {"event", "Image", "The picture beside the text.", "no-image"},
    {"event", "EventType",
     "Colonial events (0) affect one planet and occur when it is colonized, random events (1) the whole "
     "civilization."},
    {"event", "GoodOption", Answer, "no-good-option"},
    {"event", "NeutralOption", Answer, "no-neutral-option"},
    {"event", "EvilOption", Answer, "no-evil-option"},
    {"event", "GoodAttribute", Attribute},
    {"event", "NeutralAttribute", Attribute},
    {"event", "EvilAttribute", Attribute},
    {"event", "GoodValue", Value},
    {"event", "NeutralValue", Value},
    {"event", "EvilValue", Value},
    {"event", "GoodPopChange", Population},
    {"event", "NeutralPopChange", Population},
    {"event", "EvilPopChange", Population},
    {"event", "MoralityWeight", "How much the choice affects the player's morality: 1 is a lot, 5 a little."},
    {"event", "Probability", "The probability of the event. The game does not use it."},
    {"event", "DescStr0#", Substitution, WildCardRules},
    {"event", "GoodOptStr0#", Substitution, WildCardRules},
    {"event", "NeutralOptStr0#", Substitution, WildCardRules},
    {"event", "EvilOptStr0#", Substitution, WildCardRules},
    {"upissue", "Question", "What the council is asked.", "no-question"},
    {"upissue", "SubQuestion", Unused},
    {"upissue", "Option0#", "An answer to choose from. \"\\n\" makes no line break in it.",
     "no-options unneeded-options"},
    {"upissue", "OptionVal0#",
     "The value that applies if this option wins. What it means depends on the type.",
     "no-option-values unneeded-option-values"},
    {"upissue", "UPIssueAttribute", "What the vote is about."},
    {"upissue", "AppliesTo", Unused},
    {"upissue", "Prereq", Unused},
    {"upissue", "Probability", Unused},
    {"upissue", "YearsInEffect",
     "For how many years the outcome applies, 0 for the rest of the game. Some types ignore it."},
    {"upissue", "Value01", Detail},
    {"upissue", "Value02", Detail},
    {"upissue", "Value03", Unused},
    {"upissue", "Value04", Unused},
    {"upissue", "QuestionStr0#", Substitution, WildCardRules},
    {"upissue", "HowAIWouldVote", "How the computer players vote."},
    {"sbmodule", "SBModuleID", "The number by which the game knows the module.",
     "duplicate-id id-out-of-range"},
    {"sbmodule", "DisplayName", "The name that the player reads."},
    {"sbmodule", "Model", "How the module looks on the starbase."},
    {"sbmodule", "TechRequirements", "The technologies that the module needs."},
    {"sbmodule", "ModuleRequirements", "The modules that must stand before this one."},
    {"sbmodule", "Description", "What the player reads of the module."},
    {"sbmodule", "ModuleSize", "The tier of the module."},
    {"sbmodule", "LocalAbility", "What the module improves."},
    {"sbmodule", "LocalAbilityValue", "By how much it improves that."},
    {"sbmodule", "ModuleType", "The kind of module."},
};

bool Fits(std::string_view pattern, std::string_view property) {
    return std::ranges::equal(pattern, property, [](char expected, char c) {
        return expected == '#' ? c >= '0' && c <= '9' : expected == c;
    });
}

void AppendRules(std::string_view names, std::string& text) {
    while (!names.empty()) {
        const std::size_t end = std::min(names.find(' '), names.size());
        text += '\r' + GameRule(names.substr(0, end));
        names.remove_prefix(std::min(end + 1, names.size()));
    }
}

std::string ValueOf(const RecordKind& kind, const Field& field) {
    if (field.Type == FieldType::List)
        return "texts, a line each";
    if (field.Type != FieldType::Text)
        return "a whole number of 32 bits";
    const auto texts = PlayerTextsOf(kind);
    const auto found = std::ranges::find_if(
        texts, [&](const PlayerText& text) { return text.Shown->Property == field.Property; });
    if (found == texts.end() || found->Limit == 0)
        return "a text of any length";
    return "a text, shown well up to " + std::to_string(found->Limit) + " characters";
}

} // namespace

std::string FieldHelp(const RecordKind& kind, const Field& field) {
    const auto* meaning = std::ranges::find_if(Meanings, [&](const Meaning& known) {
        return (known.Kind.empty() || known.Kind == kind.Word) && Fits(known.Property, field.Property);
    });
    if (meaning == std::end(Meanings))
        return {};
    std::string text(meaning->Text);
    if (field.Property == "ShortName")
        text += "\rNo key in the file.";
    else if (field.Property == kind.Name.Property ||
             (kind.HeaderNumber && field.Property == kind.HeaderNumber->Property))
        text +=
            "\rIn the file it stands behind " + std::string(field.Key) + ", in the first line of the block.";
    else
        text += "\rKey in the file: " + std::string(field.Key) + ", " + ValueOf(kind, field) + ".";
    AppendRules(meaning->Rules, text);
    return text;
}

} // namespace velmora
