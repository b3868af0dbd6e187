#include "services/GameText.h"

#include "platform/CodePage.h"
#include "services/modWriter.h"

namespace velmora {

namespace {
constexpr std::string_view WildCard = "%s";
}

std::vector<TextPiece> CutAtWildCards(std::string_view text, std::span<const std::string> names) {
    using Sort = TextPiece::Sort;
    std::vector<TextPiece> pieces;
    std::size_t start = 0;
    std::size_t card = 0;
    for (std::size_t at; (at = CodePage::FindNoCase(text, WildCard, start)) != std::string_view::npos;
         start = at + WildCard.size(), ++card) {
        pieces.push_back({Sort::Plain, std::string(text.substr(start, at - start))});
        if (card >= names.size())
            pieces.push_back({Sort::Surplus, {}});
        else
            pieces.push_back({names[card].empty() ? Sort::Unset : Sort::Filled, names[card]});
    }
    pieces.push_back({Sort::Plain, std::string(text.substr(start))});
    return pieces;
}

std::string ShownPlain(std::string_view text) {
    return CodePage::ReplaceNoCase(ReplaceAll(text, "%%", "%"), "\\n", "\r");
}

std::size_t LengthInGame(std::string_view text) {
    if (text.find('%') == std::string_view::npos)
        return text.size();
    std::string normal(text);
    NormalizeWildCards(normal);
    return normal.size();
}

std::size_t FittingLength(std::string_view text, std::size_t maximum) {
    std::size_t fits = 0;
    for (std::size_t beyond = text.size() + 1; beyond - fits > 1;) {
        const std::size_t middle = fits + (beyond - fits) / 2;
        (LengthInGame(text.substr(0, middle)) <= maximum ? fits : beyond) = middle;
    }
    return fits;
}

std::string LengthOfLimit(std::size_t length, std::size_t maximum) {
    return std::to_string(length) + " of " + std::to_string(maximum) + ", " +
           (length <= maximum ? std::to_string(maximum - length) + " left"
                              : std::to_string(length - maximum) + " too long");
}

} // namespace velmora
