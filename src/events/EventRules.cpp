#include "events/EventRules.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "services/Substitution.h"

#include <algorithm>

namespace velmora {

using E = clsEvent;

const std::array<EventText, 4> EventTexts{{
    {"Description", &E::Description, 540, 4, 0, 4, "description-length"},
    {"Good Option", &E::GoodOption, 200, 2, 4, 2, "option-length"},
    {"Neutral Option", &E::NeutralOption, 200, 2, 6, 2, "option-length"},
    {"Evil Option", &E::EvilOption, 200, 2, 8, 2, "option-length"},
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

std::string_view EventSubstitutionHint(std::string_view name) {
    return HintOf(Substitutions, name);
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

std::vector<Reason> CheckEvent(const clsEvent& event, const std::string& picturePath, const Catalogue& subs) {
    std::vector<Reason> reasons;
    if (event.Title.empty())
        reasons.push_back({"No Title text set, please specify a title.", "no-title"});
    if (!Files::FileExists(picturePath))
        reasons.push_back({"Unable to locate specified image file.", "no-image"});
    if (event.Description.empty())
        reasons.push_back({"No Description text set, please specify a Description.", "no-description"});
    if (event.GoodOption.empty())
        reasons.push_back({"No Good option text set, please specify a Good option.", "no-good-option"});
    if (event.NeutralOption.empty())
        reasons.push_back(
            {"No Neutral option text set, please specify a Neutral option.", "no-neutral-option"});
    if (event.EvilOption.empty())
        reasons.push_back({"No Evil option text set, please specify a Evil option.", "no-evil-option"});
    for (const EventText& text : EventTexts)
        CheckWildCards(event.*text.Text, text.MaximumWildCards, text.Label,
                       SetSubstitutions(event, text, subs), reasons);
    return reasons;
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
