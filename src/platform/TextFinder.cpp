#include "platform/TextFinder.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

/// How often a byte is met in the game's texts, most often first; those that are not in it are rare.
constexpr std::string_view MetOften = "z0123456789qjx!?\\%;:\"-vkb',.pgwyfmcudlhrsinoate ";

std::size_t Frequency(unsigned char folded) {
    const std::size_t at = MetOften.find(static_cast<char>(folded));
    return at == std::string_view::npos ? 0 : at + 1;
}

std::vector<unsigned char> FormsOf(unsigned char folded) {
    std::vector<unsigned char> forms;
    for (unsigned byte = 0; byte < 256; ++byte)
        if (CodePage::Fold(static_cast<unsigned char>(byte)) == folded)
            forms.push_back(static_cast<unsigned char>(byte));
    return forms;
}

} // namespace

TextFinder::TextFinder(std::string_view text) : folded(CodePage::ToLower(text)) {
    std::vector<Anchor> possible;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        // Some code pages fold a third byte to a letter; such a byte is no anchor.
        const auto forms = FormsOf(static_cast<unsigned char>(folded[i]));
        if (forms.size() <= 2)
            possible.push_back({i, forms.front(), forms.back()});
    }
    std::stable_sort(possible.begin(), possible.end(), [&](const Anchor& left, const Anchor& right) {
        return Frequency(CodePage::Fold(left.Lower)) < Frequency(CodePage::Fold(right.Lower));
    });
    anchored = !possible.empty();
    if (anchored)
        anchors = {possible.front(), possible[possible.size() > 1 ? 1 : 0]};
}

bool TextFinder::MayBeginInBlock(const unsigned char* start) const {
    const Anchor first = anchors[0];
    const Anchor second = anchors[1];
    unsigned char any = 0;
    for (std::size_t i = 0; i < Block; ++i)
        any = static_cast<unsigned char>(any | (first.At(start, i) & second.At(start, i)));
    return any != 0;
}

std::size_t TextFinder::In(std::string_view text, std::size_t from) const {
    if (!anchored)
        return CodePage::FindNoCase(text, folded, from);
    if (text.size() < folded.size() + from)
        return None;
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const std::size_t end = text.size() - folded.size() + 1; // of the places where it can begin
    // The last block may overlap the one before it.
    const bool inLast = end - from < Block || MayBeginInBlock(bytes + end - Block);
    for (std::size_t at = from; at < end;) {
        const std::size_t next = std::min(at + Block, end);
        const bool whole = next - at == Block;
        if (whole ? MayBeginInBlock(bytes + at) : inLast)
            for (; at < next; ++at)
                if ((anchors[0].At(bytes, at) & anchors[1].At(bytes, at)) != 0 &&
                    CodePage::EqualNoCase(text.substr(at, folded.size()), folded))
                    return at;
        at = next;
    }
    return None;
}

} // namespace velmora
