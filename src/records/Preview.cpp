#include "records/Preview.h"

#include "platform/CodePage.h"

#include <algorithm>

namespace velmora {

namespace {

using Sort = TextPiece::Sort;

std::string Filling(const std::string& name, const SampleNames& samples) {
    const auto sample = samples.find(name);
    return sample == samples.end() || sample->second.empty() ? "[" + CodePage::ToUpper(name) + "]"
                                                             : sample->second;
}

void Show(TextPiece& piece, const Catalogue& substitutions, const SampleNames& samples) {
    switch (piece.Is) {
    case Sort::Plain:
        piece.Text = ShownPlain(piece.Text);
        break;
    case Sort::Filled:
        piece.Text = Filling(piece.Text, samples);
        break;
    case Sort::Unset:
        piece.Text = Filling(NameByNumber(substitutions, 0), {});
        break;
    case Sort::Surplus:
        piece.Text = "[]";
        break;
    }
}

} // namespace

PreviewPart PreviewText(std::string_view heading, std::string_view text, std::span<const std::int32_t> codes,
                        const Catalogue& substitutions, const SampleNames& samples) {
    WildCardNames names;
    for (const std::int32_t code : codes) {
        const std::size_t position = PositionByNumber(substitutions, code);
        names.push_back(substitutions.ItemAt(position) == 0 ? std::string() : substitutions.KeyAt(position));
    }
    PreviewPart part{std::string(heading), CutAtWildCards(text, names), {}, {}};
    for (std::size_t card = part.Text.size() / 2; card < names.size(); ++card)
        if (!names[card].empty())
            part.Notes.push_back(names[card] + " is set, but there is no wild card #" +
                                 std::to_string(card + 1));
    for (TextPiece& piece : part.Text)
        Show(piece, substitutions, samples);
    std::erase_if(part.Text, [](const TextPiece& piece) { return piece.Text.empty(); });
    return part;
}

std::string Signed(std::int32_t number) {
    return (number > 0 ? "+" : "") + std::to_string(number);
}

} // namespace velmora
