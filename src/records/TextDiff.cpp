#include "records/TextDiff.h"

#include "platform/TextLines.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace velmora {

namespace {

using Lines = std::vector<std::string_view>;

constexpr std::size_t MostCells = 10'000'000; ///< of the table of common lines
constexpr int MostLines = 300;

/// Collects the differing lines.
class Listing {
  public:
    void Add(char sign, std::string_view line, std::size_t oldLine) {
        if (shown++ >= MostLines)
            return;
        if (!inGroup)
            text += "@ " + std::to_string(oldLine + 1) + "\r";
        inGroup = true;
        text.append({sign, ' '}).append(line).push_back('\r');
    }
    void Same() { inGroup = false; }
    std::string Text() {
        if (shown > MostLines)
            text += "... and " + std::to_string(shown - MostLines) + " more lines\r";
        return std::move(text);
    }

  private:
    std::string text;
    int shown = 0;
    bool inGroup = false;
};

/// common[i][j]: how many lines a[i..] and b[j..] share in order.
std::vector<std::vector<std::uint32_t>> CommonLines(const Lines& a, const Lines& b) {
    std::vector<std::vector<std::uint32_t>> common(a.size() + 1, std::vector<std::uint32_t>(b.size() + 1));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            common[i][j] =
                a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    return common;
}

void ListMiddle(const Lines& a, const Lines& b, std::size_t firstLine, Listing& listing) {
    std::size_t i = 0;
    std::size_t j = 0;
    if ((a.size() + 1) * (b.size() + 1) <= MostCells) {
        const auto common = CommonLines(a, b);
        while (i < a.size() && j < b.size())
            if (a[i] == b[j]) {
                listing.Same();
                ++i, ++j;
            } else if (common[i + 1][j] >= common[i][j + 1]) {
                listing.Add('-', a[i], firstLine + i);
                ++i;
            } else {
                listing.Add('+', b[j++], firstLine + i);
            }
    }
    for (; i < a.size(); ++i)
        listing.Add('-', a[i], firstLine + i);
    for (; j < b.size(); ++j)
        listing.Add('+', b[j], firstLine + i);
}

} // namespace

std::string DiffLines(std::string_view before, std::string_view after) {
    const Lines a = TextLines::Split(before);
    const Lines b = TextLines::Split(after);
    const auto [differingA, differingB] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    auto endA = a.end();
    auto endB = b.end();
    while (endA != differingA && endB != differingB && *(endA - 1) == *(endB - 1))
        --endA, --endB;
    Listing listing;
    ListMiddle({differingA, endA}, {differingB, endB}, static_cast<std::size_t>(differingA - a.begin()),
               listing);
    return listing.Text();
}

} // namespace velmora
