#pragma once

#include "services/KeyedCollection.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The game's vocabulary: nine fixed tables of names and the numbers or codes that its files hold.
namespace velmora {

using Catalogue = KeyedCollection<std::int32_t>;
using CodeCatalogue = KeyedCollection<std::string>;

extern Catalogue UPIssueAttributes;
extern Catalogue RandomEventAttributes;
extern Catalogue ColonialEventAttributes;
extern Catalogue UPIssueTypes;
extern Catalogue AIVoteBehaviours;
extern Catalogue SBModuleTypes;
extern CodeCatalogue StarbaseModels;
extern Catalogue SBModuleTiers;
extern CodeCatalogue SBModuleAbilities;

/// Creates and fills the nine catalogues, from nothing each time.
void BuildCatalogues();
void ReleaseCatalogues();

/// Position of the last entry with this item, 0 (the first entry) when there is none.
std::size_t PositionByNumber(const Catalogue& catalogue, std::int32_t number);
/// The same for codes, without regard to case.
std::size_t PositionByCode(const CodeCatalogue& catalogue, std::string_view code);
/// Position of a name, 0 when it is missing.
template <class Item>
std::size_t PositionByName(const KeyedCollection<Item>& catalogue, std::string_view name) {
    const std::size_t at = catalogue.IndexOf(name);
    return at == KeyedCollection<Item>::None ? 0 : at;
}
/// Name of the entry that shows a number: that of the last with this item, else of the first.
const std::string& NameByNumber(const Catalogue& catalogue, std::int32_t number);

/// The hint shown when an attribute or ability is picked; empty for a name without one.
std::string_view AttributeHint(std::string_view name);

} // namespace velmora
