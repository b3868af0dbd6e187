#include "services/Catalogues.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <span>

namespace velmora {

Catalogue UPIssueAttributes;
Catalogue RandomEventAttributes;
Catalogue ColonialEventAttributes;
Catalogue UPIssueTypes;
Catalogue AIVoteBehaviours;
Catalogue SBModuleTypes;
CodeCatalogue StarbaseModels;
Catalogue SBModuleTiers;
CodeCatalogue SBModuleAbilities;

namespace {

struct Numbered {
    const char* Name;
    std::int32_t Number;
};
struct Coded {
    const char* Name;
    const char* Code;
};
struct Hinted {
    std::string_view Name;
    std::string_view Hint;
};

constexpr Numbered RandomAttributes[]{
    {"No Effect", 0},
    {"Economic", 100},
    {"Ship Weapons", 101},
    {"Ship Defense", 102},
    {"Ship Speed", 103},
    {"Morale", 104},
    {"Population Growth", 105},
    {"Social Production", 106},
    {"Military Production", 107},
    {"Research", 108},
    {"Influence", 109},
    {"Trade", 110},
    {"Diplomacy", 111},
    {"Ship Hit Points", 112},
    {"Ship Repair", 113},
    {"Sensors", 114},
    {"Espionage", 115},
    {"Soldiering", 116},
    {"Interest Rates", 117},
    {"Planet Quality", 118},
    {"No Of Trade Routes", 119},
    {"Ship Range", 122},
    {"Luck", 123},
    {"Courage", 124},
    {"Creativity", 125},
    {"Government", 126},
    {"Loyalty", 127},
    {"Cash-o-la", 200},
};

/// The abilities of a civilization among the random attributes; issues number them from 0.
constexpr std::int32_t FirstAbility = 100;
constexpr std::int32_t LastAbility = 127;

constexpr Numbered ColonialAttributes[]{
    {"No Effect", 0},         {"Max Pop Growth", 1},          {"Morale Bonus", 2},
    {"Social Prod Bonus", 3}, {"Planet Quality Bonus", 4},    {"Economic Bonus", 5},
    {"Research Bonus", 9},    {"Starship Quality Bonus", 10}, {"Cash-o-la", 200},
};

constexpr Numbered IssueTypes[]{
    {"Change number of trade routes", 1},
    {"Anomaly ownership", 2},
    {"Warfare tax", 3},
    {"Squatters fee, planets", 4},
    {"Armed transports", 5},
    {"Galactic Olympics", 6},
    {"Trade Federation", 7},
    {"Ability power-up", 8},
    {"Free colony", 11},
    {"Galactic Cease-Fire", 12},
    {"Galactic Zoo", 13},
    {"No Evil trade", 14},
    {"SB Module limit", 16},
    {"SB helps allies", 17},
    {"Standardized Gov't", 18},
    {"Prison Planet", 20},
    {"UP Headquarters", 21},
    {"Tech sharing", 22},
    {"Ban Terror Stars", 25},
    {"- BCs, + Morale", 26},
    {"Squatters fee, SBs", 28},
    {"Increased Constructor speed", 30},
    {"Screw the leading civ", 31},
};

constexpr Numbered VoteBehaviours[]{
    {"Randomly vote", 0},
    {"Vote high if winning", 1},
    {"Vote high if losing", 2},
    {"Vote high if of Evil alignment", 3},
    {"Vote high if of Good alignment", 4},
    {"Vote for an enemy, or random civ", 5},
    {"Vote for a friend, or self", 6},
    {"Vote self if losing, otherwise friend", 7},
};

constexpr Numbered ModuleTypes[]{
    {"Military", 1}, {"Economic", 2}, {"Cultural", 3}, {"Defensive", 4}, {"Mining", 5},
};

constexpr Coded Models[]{{"Standard Starbase", "Starbase01"}};

constexpr Numbered Tiers[]{{"First Tier", 1}, {"Second Tier", 2}, {"Third Tier", 3}};

constexpr Coded ModuleAbilities[]{
    {"Ship Attack Assistance", "AttackAssist"},    {"Culture Enhancement", "Culture"},
    {"Ship Defense Assistance", "DefenseAssist"},  {"Resource Mining", "Mining"},
    {"Production Assistance", "ProductionAssist"}, {"Ship Repair Assistance", "RepairAssist"},
    {"Enemy Speed Inhibitor", "SlowEnemies"},      {"Ship Speed Assistance", "SpeedAssist"},
    {"Starbase Defense", "StarbaseDefense"},       {"Trade Enhancement", "Trade"},
    {"Terror Star Component", "TerrorStar"},
};

constexpr Hinted AttributeHints[]{
    {"Economic", "Affects player's Economic ability"},
    {"Ship Weapons", "Affects player's Ship Weapon ability"},
    {"Ship Defense", "Affects player's Ship Defense ability"},
    {"Ship Speed", "Affects player's Ship Speed ability"},
    {"Morale", "Affects Morale on all colonies"},
    {"Population Growth", "Affects Population Growth on all colonies"},
    {"Social Production", "Affects Social Production on all colonies"},
    {"Military Production", "Affects Military Production on all colonies"},
    {"Research", "Affects Research on all colonies"},
    {"Influence", "Affects player's Influence ability"},
    {"Trade", "Affects income earned from Trade"},
    {"Diplomacy", "Affects player's Diplomacy ability"},
    {"Ship Hit Points", "Affects player's Ship Hit Points"},
    {"Ship Repair", "Affects Ship Repair rates"},
    {"Sensors", "Affects player's Sensor range"},
    {"Espionage", "Affects player's Espionage ability"},
    {"Soldiering", "Affects the player's ground troops"},
    {"Interest Rates", "Affects terms offered when buying things"},
    {"Planet Quality", "Affects Planet Quality for player's colonies"},
    {"No Of Trade Routes", "Affects player's number of trade routes"},
    {"Ship Range", "Affects player's Ship Range ability"},
    {"Luck", "Affects most random rolls for this player"},
    {"Courage", "Affects player's Courage ability"},
    {"Creativity", "Affects spontaneous Research completions"},
    {"Government", "Affects how easy it is to win Elections"},
    {"Loyalty", "Affects player's Loyalty ability"},
    {"Cash-o-la", "Affects the player's treasury"},
    {"Max Pop Growth", "Affects this planet's Pop Growth"},
    {"Morale Bonus", "Affects this planet's Morale"},
    {"Social Prod Bonus", "Affects this planet's Social Production"},
    {"Planet Quality Bonus", "Affects this planet's Planet Quality"},
    {"Economic Bonus", "Affects this planet's Economic production"},
    {"Research Bonus", "Affects this planet's Research production"},
    {"Starship Quality Bonus", "Affects the quality of starships built at this planet"},
};

void Fill(Catalogue& catalogue, std::span<const Numbered> entries) {
    for (const auto& [name, number] : entries)
        catalogue.Add(name, number);
}

void Fill(CodeCatalogue& catalogue, std::span<const Coded> entries) {
    for (const auto& [name, code] : entries)
        catalogue.Add(name, code);
}

void FillUPIssueAttributes() {
    for (const auto& [name, number] : RandomAttributes)
        if (number >= FirstAbility && number <= LastAbility)
            UPIssueAttributes.Add(name, number - FirstAbility);
}

template <class Item, class Matches>
std::size_t LastPosition(const KeyedCollection<Item>& catalogue, const Matches& matches) {
    for (std::size_t at = catalogue.Count(); at > 0; --at)
        if (matches(catalogue.ItemAt(at - 1)))
            return at - 1;
    return 0;
}

} // namespace

void BuildCatalogues() {
    ReleaseCatalogues();
    FillUPIssueAttributes();
    Fill(RandomEventAttributes, RandomAttributes);
    Fill(ColonialEventAttributes, ColonialAttributes);
    Fill(UPIssueTypes, IssueTypes);
    Fill(AIVoteBehaviours, VoteBehaviours);
    Fill(SBModuleTypes, ModuleTypes);
    Fill(StarbaseModels, Models);
    Fill(SBModuleTiers, Tiers);
    Fill(SBModuleAbilities, ModuleAbilities);
}

void ReleaseCatalogues() {
    for (Catalogue* catalogue : {&UPIssueAttributes, &RandomEventAttributes, &ColonialEventAttributes,
                                 &UPIssueTypes, &AIVoteBehaviours, &SBModuleTypes, &SBModuleTiers})
        catalogue->RemoveAll();
    StarbaseModels.RemoveAll();
    SBModuleAbilities.RemoveAll();
}

std::size_t PositionByNumber(const Catalogue& catalogue, std::int32_t number) {
    return LastPosition(catalogue, [&](std::int32_t item) { return item == number; });
}

std::size_t PositionByCode(const CodeCatalogue& catalogue, std::string_view code) {
    return LastPosition(catalogue,
                        [&](const std::string& item) { return CodePage::EqualNoCase(item, code); });
}

const std::string& NameByNumber(const Catalogue& catalogue, std::int32_t number) {
    return catalogue.KeyAt(PositionByNumber(catalogue, number));
}

std::string_view AttributeHint(std::string_view name) {
    const auto* found =
        std::find_if(std::begin(AttributeHints), std::end(AttributeHints),
                     [&](const Hinted& entry) { return CodePage::EqualNoCase(entry.Name, name); });
    return found == std::end(AttributeHints) ? std::string_view{} : found->Hint;
}

} // namespace velmora
