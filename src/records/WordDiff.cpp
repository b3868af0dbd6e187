#include "records/WordDiff.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace velmora {

namespace {

constexpr std::size_t MostCells = 1'000'000;

using Words = std::vector<std::string_view>;

/// Words with the blanks behind them.
Words WordsOf(std::string_view text) {
    Words words;
    while (!text.empty()) {
        const std::size_t end = text.find_first_not_of(' ', std::min(text.find(' '), text.size()));
        words.push_back(text.substr(0, end));
        text.remove_prefix(words.back().size());
    }
    return words;
}

std::string TextOf(const Words& words, std::size_t from, std::size_t to) {
    std::string text;
    for (std::size_t i = from; i < to; ++i)
        text += words[i];
    return text;
}

void AppendChange(const std::string& gone, const std::string& come, std::string& text) {
    if (!gone.empty())
        text += "[-" + gone + "-]";
    if (!come.empty())
        text += "{+" + come + "+}";
}

/// The words between those that both begin and end with.
void AppendMiddle(const Words& a, const Words& b, std::string& text) {
    std::vector<std::vector<std::uint32_t>> common(a.size() + 1, std::vector<std::uint32_t>(b.size() + 1));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            common[i][j] =
                a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    std::size_t i = 0;
    std::size_t j = 0;
    std::string gone;
    std::string come;
    while (i < a.size() || j < b.size()) {
        if (i < a.size() && j < b.size() && a[i] == b[j]) {
            AppendChange(gone, come, text);
            gone.clear();
            come.clear();
            text += a[i];
            ++i, ++j;
        } else if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1])) {
            gone += a[i++];
        } else {
            come += b[j++];
        }
    }
    AppendChange(gone, come, text);
}

} // namespace

std::string DiffWords(std::string_view before, std::string_view after) {
    Words a = WordsOf(before);
    Words b = WordsOf(after);
    std::size_t head = 0;
    while (head < a.size() && head < b.size() && a[head] == b[head])
        ++head;
    std::size_t tail = 0;
    while (tail < a.size() - head && tail < b.size() - head &&
           a[a.size() - 1 - tail] == b[b.size() - 1 - tail])
        ++tail;
    std::string text = TextOf(a, 0, head);
    const std::string end = TextOf(a, a.size() - tail, a.size());
    a = Words(a.begin() + static_cast<std::ptrdiff_t>(head), a.end() - static_cast<std::ptrdiff_t>(tail));
    b = Words(b.begin() + static_cast<std::ptrdiff_t>(head), b.end() - static_cast<std::ptrdiff_t>(tail));
    if ((a.size() + 1) * (b.size() + 1) <= MostCells)
        AppendMiddle(a, b, text);
    else
        AppendChange(TextOf(a, 0, a.size()), TextOf(b, 0, b.size()), text);
    return text + end;
}

} // namespace velmora
