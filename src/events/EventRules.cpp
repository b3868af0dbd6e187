#include "events/EventRules.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "services/Substitution.h"

#include <algorithm>

namespace velmora {

using E = clsEvent;

const std::array<EventText, 4> EventTexts{{
    {"Description", &E::Description, "Description", 540, 4, 0, 4, "description-length"},
    {"Good Option", &E::GoodOption, "GoodOption", 200, 2, 4, 2, "option-length"},
    {"Neutral Option", &E::NeutralOption, "NeutralOption", 200, 2, 6, 2, "option-length"},
    {"Evil Option", &E::EvilOption, "EvilOption", 200, 2, 8, 2, "option-length"},
}};

const std::array<std::int32_t clsEvent::*, 10> EventSubstitutions{
    &E::DescStr01,    &E::DescStr02,       &E::DescStr03,       &E::DescStr04,    &E::GoodOptStr01,
    &E::GoodOptStr02, &E::NeutralOptStr01, &E::NeutralOptStr02, &E::EvilOptStr01, &E::EvilOptStr02};

namespace {

constexpr std::array<Substitution, 7> Substitutions{{
    {"Nothing", 0, ""},
    {"Player Name", 1, "What the player typed in at the start of the game"},
    {"Empire Name", 2, "Name of the human race"},
    {"Planet Name", 7, "Name of the planet"},
    {"Evil Value", 9, "Random value of the EVIL option"},
    {"Neutral Value", 10, "Random value of the NEUTRAL option"},
    {"Good Value", 11, "Random value of the GOOD option"},
}};

std::array<std::int32_t, 4> SetSubstitutions(const clsEvent& event, const EventText& text,
                                             const Catalogue& subs) {
    std::array<std::int32_t, 4> codes{};
    for (std::size_t i = 0; i < text.Boxes; ++i) {
        const std::int32_t number = event.*EventSubstitutions[text.FirstBox + i];
        codes[i] = subs.ItemAt(PositionByNumber(subs, number));
    }
    return codes;
}

} // namespace

void BuildWildCardSubs(Catalogue& subs) {
    AddSubstitutions(Substitutions, subs);
}

const Catalogue& EventSubs() {
    static const struct Subs : Catalogue {
        Subs() { BuildWildCardSubs(*this); }
    } subs;
    return subs;
}

std::string_view EventSubstitutionHint(std::string_view name) {
    return HintOf(Substitutions, name);
}

const Catalogue& EventAttributes(std::int32_t eventType) {
    return eventType != 0 ? RandomEventAttributes : ColonialEventAttributes;
}

std::string_view AttributeUnit(std::int32_t attribute) {
    switch (attribute) {
    case 200:
        return "BC";
    case 103:
        return "Moves";
    case 119:
        return "Routes";
    default:
        return "%";
    }
}

bool IsReservedEventFile(std::string_view shortName) {
    return CodePage::EqualNoCase(shortName, "CoreEvents.event") ||
           CodePage::EqualNoCase(shortName, "BonusEvents.event");
}

std::int32_t LegalMoralityWeight(std::int32_t weight) {
    return std::clamp(weight, 1, 5);
}

void NormalizeEvent(clsEvent& event) {
    for (const EventText& text : EventTexts)
        NormalizeWildCards(event.*text.Text);
    event.MoralityWeight = LegalMoralityWeight(event.MoralityWeight);
}

std::vector<Problem> CheckEvent(const clsEvent& event, bool hasPicture, const Catalogue& subs) {
    std::vector<Problem> problems;
    const auto demand = [&](bool met, std::string_view rule, std::string_view field, const char* text) {
        if (!met)
            problems.push_back(Reason(rule, field, text));
    };
    demand(!event.Title.empty(), "no-title", "Title", "No Title text set, please specify a title.");
    demand(hasPicture, "no-image", "Image", "Unable to locate specified image file.");
    demand(!event.Description.empty(), "no-description", "Description",
           "No Description text set, please specify a Description.");
    demand(!event.GoodOption.empty(), "no-good-option", "GoodOption",
           "No Good option text set, please specify a Good option.");
    demand(!event.NeutralOption.empty(), "no-neutral-option", "NeutralOption",
           "No Neutral option text set, please specify a Neutral option.");
    demand(!event.EvilOption.empty(), "no-evil-option", "EvilOption",
           "No Evil option text set, please specify a Evil option.");
    for (const EventText& text : EventTexts)
        CheckWildCards(event.*text.Text, text.MaximumWildCards, text.Label,
                       SetSubstitutions(event, text, subs), problems, text.Field);
    return problems;
}

std::vector<Problem> CheckEvent(const clsEvent& event, const std::string& picturePath,
                                const Catalogue& subs) {
    return CheckEvent(event, Files::FileExists(picturePath), subs);
}

void CheckEventLengths(const clsEvent& event, std::vector<Problem>& problems) {
    for (const EventText& text : EventTexts)
        CheckLength(event.*text.Text, text.MaximumLength, text.Label, text.LengthRule, text.Field, problems);
}

std::string ImageForRecord(std::string_view path, std::string_view gamePath) {
    std::string image = CodePage::ReplaceNoCase(path, gamePath, "");
    if (image.find("\\\\") == std::string::npos)
        image = ReplaceAll(image, "\\", "\\\\");
    return image;
}

std::string ChosenImage(std::string path, std::string gamePath) {
    std::ranges::replace(path, '/', '\\');
    std::ranges::replace(gamePath, '/', '\\');
    return ImageForRecord(path, gamePath);
}

} // namespace velmora
