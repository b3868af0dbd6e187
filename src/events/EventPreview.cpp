#include "events/EventPreview.h"

#include "events/EventRules.h"
#include "platform/CodePage.h"

#include <array>
#include <cstdlib>

namespace velmora {

namespace {

using E = clsEvent;

struct Answer {
    std::string_view Heading;
    std::string_view Value; ///< the substitution that stands for its value
    std::int32_t E::*Attribute;
    std::int32_t E::*By;
    std::int32_t E::*PopChange;
};
constexpr std::array<Answer, 3> Answers{{
    {"Good answer", "Good Value", &E::GoodAttribute, &E::GoodValue, &E::GoodPopChange},
    {"Neutral answer", "Neutral Value", &E::NeutralAttribute, &E::NeutralValue, &E::NeutralPopChange},
    {"Evil answer", "Evil Value", &E::EvilAttribute, &E::EvilValue, &E::EvilPopChange},
}};

std::string EffectOf(const E& event, const Answer& answer) {
    const Catalogue& attributes = EventAttributes(event.EventType);
    const std::size_t attribute = PositionByNumber(attributes, event.*answer.Attribute);
    std::string effect;
    if (const std::int32_t number = attributes.ItemAt(attribute); number != 0)
        effect = attributes.KeyAt(attribute) + " " + Signed(event.*answer.By) + " " +
                 std::string(AttributeUnit(number));
    if (const std::int32_t change = event.*answer.PopChange; change != 0)
        effect += (effect.empty() ? "Population " : ", population ") + Signed(change) + " million";
    return effect.empty()
               ? "No effect"
               : effect + (event.EventType == 1 ? " for the entire civilization" : " on this colony");
}

} // namespace

Preview PreviewEvent(const clsEvent& event, const SampleNames& samples) {
    SampleNames filled = samples;
    if (!samples.empty())
        for (const Answer& answer : Answers)
            if (std::string& sample = filled[std::string(answer.Value)]; sample.empty())
                sample = std::to_string(std::abs(std::int64_t{event.*answer.By}));
    E normal = event;
    NormalizeEvent(normal);
    Preview preview{event.Image, event.Title, {}};
    for (std::size_t i = 0; i < EventTexts.size(); ++i) {
        const EventText& text = EventTexts[i];
        std::array<std::int32_t, 4> codes{};
        for (std::size_t box = 0; box < text.Boxes; ++box)
            codes[box] = normal.*EventSubstitutions[text.FirstBox + box];
        preview.Parts.push_back(PreviewText(i == 0 ? std::string_view() : Answers[i - 1].Heading,
                                            normal.*text.Text, std::span(codes).first(text.Boxes),
                                            EventSubs(), filled));
        if (i > 0)
            preview.Parts.back().Effect = EffectOf(normal, Answers[i - 1]);
    }
    return preview;
}

} // namespace velmora
