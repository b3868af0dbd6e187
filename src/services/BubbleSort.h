#pragma once

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "services/Trap.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace velmora {

/// What an element is compared by, and which one it is.
template <class Key>
struct SortEntry {
    Key Value;
    std::size_t Index;
};

/// The keys of a list, taken once and put side by side: comparing must not run after each element through all
/// of the memory. Texts are folded; they stand in `folded`.
template <class Element, class Key>
auto SortEntriesOf(std::span<Element> list, const Key& key, std::string& folded) {
    constexpr bool isText =
        std::is_convertible_v<std::invoke_result_t<const Key&, const Element&>, std::string_view>;
    std::vector<SortEntry<std::conditional_t<isText, std::string_view, std::int32_t>>> entries;
    entries.reserve(list.size());
    if constexpr (isText) {
        for (const Element& element : list)
            folded += std::string_view(std::invoke(key, element));
        folded = CodePage::ToLower(folded);
        for (std::string_view rest = folded; const Element& element : list) {
            const std::size_t length = std::string_view(std::invoke(key, element)).size();
            entries.push_back({rest.substr(0, length), entries.size()});
            rest.remove_prefix(length);
        }
    } else {
        for (const Element& element : list)
            entries.push_back({std::invoke(key, element), entries.size()});
    }
    return entries;
}

/// The passes of the bubble sort in descending order. Equal elements change places in every pass that meets
/// them, so only the passes themselves tell the order of equals.
template <class Entry>
void DescendingPasses(std::vector<Entry>& list) {
    for (std::size_t limit = list.size() - 1, lastSwap = 0; limit > 0; limit = lastSwap) {
        lastSwap = 0;
        for (std::size_t j = 0; j < limit; ++j)
            if (list[j].Value <= list[j + 1].Value) {
                std::swap(list[j], list[j + 1]);
                lastSwap = j;
            }
    }
}

/// Brings entries into the order of their values; equals keep theirs ascending.
template <class Entry>
void SortEntries(std::vector<Entry>& entries, bool descending) {
    std::vector<Entry> sorted = entries;
    std::sort(sorted.begin(), sorted.end(), [](const Entry& left, const Entry& right) {
        return std::tie(left.Value, left.Index) < std::tie(right.Value, right.Index);
    });
    const auto equal = [](const Entry& left, const Entry& right) { return left.Value == right.Value; };
    if (descending && std::adjacent_find(sorted.begin(), sorted.end(), equal) != sorted.end())
        return DescendingPasses(entries);
    entries = std::move(sorted);
    if (descending)
        std::reverse(entries.begin(), entries.end());
}

inline constexpr std::size_t HighestIndex = static_cast<std::size_t>(-1);

/// The sort of lists by key (a text, compared without regard to case, or a number), in place, up to and
/// including the index `upper`. The result is that of the classic bubble sort, the order of equals included:
/// ascending keeps it, descending shuffles it the way the passes of the bubble sort do. Throws Failure (9)
/// when the list has no element `upper`.
template <class Element, class Key>
void BubbleSortBy(std::vector<Element>& list, const Key& key, bool descending = false,
                  std::size_t upper = HighestIndex) {
    Trap("modWriter_BubbleSort", NoInputParms, [&] {
        if (upper != HighestIndex && upper >= list.size())
            throw Failure(FailureSubscript, "Subscript out of range");
        const std::span<Element> part(list.data(), upper == HighestIndex ? list.size() : upper + 1);
        std::string folded;
        auto entries = SortEntriesOf(part, key, folded);
        SortEntries(entries, descending);
        std::vector<Element> sorted;
        sorted.reserve(part.size());
        for (const auto& entry : entries)
            sorted.push_back(std::move(part[entry.Index]));
        std::move(sorted.begin(), sorted.end(), part.begin());
    });
}

/// Sorts a list of texts or numbers.
template <class Element>
void BubbleSort(std::vector<Element>& list, bool descending = false, std::size_t upper = HighestIndex) {
    BubbleSortBy(list, std::identity{}, descending, upper);
}

} // namespace velmora
