#pragma once

#include "events/clsEvent.h"
#include "services/Catalogues.h"
#include "services/modWriter.h"

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What the game demands of an event.
namespace velmora {

/// One of the four texts that a player reads: its limits and its substitution boxes.
struct EventText {
    std::string_view Label; ///< "Good Option"
    std::string clsEvent::*Text;
    std::string_view Field;
    std::size_t MaximumLength; ///< recommended, in characters
    std::int32_t MaximumWildCards;
    std::size_t FirstBox; ///< of the ten substitution boxes
    std::size_t Boxes;
    std::string_view LengthRule; ///< rule name of the length warning
};
extern const std::array<EventText, 4> EventTexts;

/// The members behind the ten substitution boxes, in box order.
extern const std::array<std::int32_t clsEvent::*, 10> EventSubstitutions;

/// Fills the catalogue of what a "%s" in an event can stand for.
void BuildWildCardSubs(Catalogue& subs);
/// The same, filled once.
const Catalogue& EventSubs();
/// The hint for a substitution of an event; empty for any other name.
std::string_view EventSubstitutionHint(std::string_view name);

/// What an answer of an event of this type can change.
const Catalogue& EventAttributes(std::int32_t eventType);
/// The unit of an attribute's value: "BC", "Moves", "Routes" or "%".
std::string_view AttributeUnit(std::int32_t attribute);

/// CoreEvents.event and BonusEvents.event are the game's own: their events keep their file.
bool IsReservedEventFile(std::string_view shortName);

/// Morality weights run from 1 to 5; the nearest of them.
std::int32_t LegalMoralityWeight(std::int32_t weight);

/// Doubles lone percent signs in the four texts and makes the morality weight legal, as showing the event
/// does.
void NormalizeEvent(clsEvent& event);

/// Every reason that an event is not fit for the game. Substitution numbers that the catalogue lacks count as
/// "Nothing".
std::vector<Problem> CheckEvent(const clsEvent& event, bool hasPicture, const Catalogue& subs);
/// The same with the path where its picture is looked for.
std::vector<Problem> CheckEvent(const clsEvent& event, const std::string& picturePath, const Catalogue& subs);
/// Notes on texts that are longer than recommended once the event is normalised.
void CheckEventLengths(const clsEvent& event, std::vector<Problem>& problems);

/// A picture's path as an event holds it: relative to the game directory, backslashes doubled once. A path
/// that already holds "Gfx" with doubled backslashes, or any doubled one, is left alone.
std::string ImageForRecord(std::string_view path, std::string_view gamePath);
/// The same for a path that a person chose, whose slashes are backslashes to the game.
std::string ChosenImage(std::string path, std::string gamePath);

} // namespace velmora
