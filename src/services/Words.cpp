#include "services/Words.h"

#include "platform/CodePage.h"

#include <array>

namespace velmora {

namespace {

enum class Sort : unsigned char { Other, Letter, Apostrophe, NoWord };

std::array<Sort, 256> MakeSorts() {
    std::array<Sort, 256> sorts{};
    for (unsigned value = 0; value < sorts.size(); ++value) {
        const auto byte = static_cast<unsigned char>(value);
        const char32_t character = CodePage::ToUnicode(byte);
        constexpr char32_t sharpS = 0xDF; // has no capital in any code page
        if (CodePage::Fold(byte) != byte || CodePage::Upper(byte) != byte || character == sharpS)
            sorts[value] = Sort::Letter;
        else if (character == U'\'' || character == U'\u2019')
            sorts[value] = Sort::Apostrophe;
        else if ((byte >= '0' && byte <= '9') || byte == '_')
            sorts[value] = Sort::NoWord;
    }
    return sorts;
}

Sort SortOf(char c) {
    static const std::array<Sort, 256> sorts = MakeSorts();
    return sorts[static_cast<unsigned char>(c)];
}

/// Length of the sign of two characters that begins here, 0 when there is none.
std::size_t SignAt(std::string_view text, std::size_t at) {
    if (at + 1 >= text.size())
        return 0;
    const char next = text[at + 1];
    const bool isSign = (text[at] == '%' && (next == '%' || next == 's' || next == 'S')) ||
                        (text[at] == '\\' && (next == 'n' || next == 'N'));
    return isSign ? 2 : 0;
}

/// Adds the word of a stretch, if there is one in it.
void AddWord(std::string_view text, std::size_t from, std::size_t end, std::vector<WordPlace>& words) {
    while (from < end && SortOf(text[from]) == Sort::Apostrophe)
        ++from;
    while (end > from && SortOf(text[end - 1]) == Sort::Apostrophe)
        --end;
    if (end - from < 2)
        return;
    for (std::size_t i = from; i < end; ++i)
        if (SortOf(text[i]) == Sort::NoWord)
            return;
    words.push_back({from, end - from});
}

} // namespace

std::vector<WordPlace> WordsIn(std::string_view text) {
    std::vector<WordPlace> words;
    for (std::size_t at = 0; at < text.size();) {
        if (const std::size_t sign = SignAt(text, at); sign > 0) {
            at += sign;
            continue;
        }
        const std::size_t from = at;
        while (at < text.size() && SortOf(text[at]) != Sort::Other)
            ++at;
        AddWord(text, from, at, words);
        at += at == from ? 1 : 0;
    }
    return words;
}

bool IsLetter(char c) {
    return SortOf(c) == Sort::Letter;
}

} // namespace velmora
