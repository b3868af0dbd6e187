#pragma once

#include "platform/CodePage.h"
#include "services/Trap.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace velmora {

/// Negative, 0 or positive: texts without regard to case, numbers by value.
inline int CompareForSort(std::string_view left, std::string_view right) {
    return CodePage::CompareNoCase(left, right);
}
inline int CompareForSort(std::int32_t left, std::int32_t right) { return left < right ? -1 : left > right; }

/// The sort of lists by key, in place. The result is that of the classic bubble sort, the order of equals
/// included: ascending keeps it, descending shuffles it the way the passes of the bubble sort do.
template <class Element, class Key>
void BubbleSortBy(std::vector<Element>& list, const Key& key, bool descending = false) {
    Trap("modWriter_BubbleSort", NoInputParms, [&] {
        const auto compare = [&](const Element& left, const Element& right) {
            return CompareForSort(std::invoke(key, left), std::invoke(key, right));
        };
        if (!descending) {
            std::stable_sort(list.begin(), list.end(),
                             [&](const Element& l, const Element& r) { return compare(l, r) < 0; });
            return;
        }
        auto sorted = list;
        std::sort(sorted.begin(), sorted.end(),
                  [&](const Element& l, const Element& r) { return compare(l, r) > 0; });
        const bool hasEquals = std::adjacent_find(sorted.begin(), sorted.end(), [&](const auto& l, const auto& r) {
                                   return compare(l, r) == 0;
                               }) != sorted.end();
        if (!hasEquals) {
            list = std::move(sorted);
            return;
        }
        // Equal elements change places in every pass that meets them; only the passes themselves tell the order.
        for (std::size_t limit = list.size() - 1, lastSwap = 0; limit > 0; limit = lastSwap) {
            lastSwap = 0;
            for (std::size_t j = 0; j < limit; ++j)
                if (compare(list[j], list[j + 1]) <= 0) {
                    std::swap(list[j], list[j + 1]);
                    lastSwap = j;
                }
        }
    });
}

/// Sorts a list of texts or numbers.
template <class Element> void BubbleSort(std::vector<Element>& list, bool descending = false) {
    BubbleSortBy(list, std::identity{}, descending);
}

} // namespace velmora
