#pragma once

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "services/Trap.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace velmora {

/// Negative, 0 or positive: texts without regard to case, numbers by value.
inline int CompareForSort(std::string_view left, std::string_view right) {
    return CodePage::CompareNoCase(left, right);
}
inline int CompareForSort(std::int32_t left, std::int32_t right) {
    return left < right ? -1 : left > right;
}

/// True when two elements of a list compare equal.
template <class Element, class Compare>
bool HasEquals(std::span<const Element> list, const Compare& compare) {
    std::vector<const Element*> order;
    for (const Element& element : list)
        order.push_back(&element);
    std::sort(order.begin(), order.end(), [&](const auto* l, const auto* r) { return compare(*l, *r) < 0; });
    return std::adjacent_find(order.begin(), order.end(), [&](const auto* l, const auto* r) {
               return compare(*l, *r) == 0;
           }) != order.end();
}

/// The passes of the bubble sort in descending order. Equal elements change places in every pass that meets
/// them, so only the passes themselves tell the order of equals.
template <class Element, class Compare>
void DescendingPasses(std::span<Element> list, const Compare& compare) {
    for (std::size_t limit = list.size() - 1, lastSwap = 0; limit > 0; limit = lastSwap) {
        lastSwap = 0;
        for (std::size_t j = 0; j < limit; ++j)
            if (compare(list[j], list[j + 1]) <= 0) {
                std::swap(list[j], list[j + 1]);
                lastSwap = j;
            }
    }
}

inline constexpr std::size_t HighestIndex = static_cast<std::size_t>(-1);

/// The sort of lists by key, in place, up to and including the index `upper`. The result is that of the
/// classic bubble sort, the order of equals included: ascending keeps it, descending shuffles it the way the
/// passes of the bubble sort do. Throws Failure (9) when the list has no element `upper`.
template <class Element, class Key>
void BubbleSortBy(std::vector<Element>& list, const Key& key, bool descending = false,
                  std::size_t upper = HighestIndex) {
    Trap("modWriter_BubbleSort", NoInputParms, [&] {
        if (upper != HighestIndex && upper >= list.size())
            throw Failure(FailureSubscript, "Subscript out of range");
        const std::span<Element> part(list.data(), upper == HighestIndex ? list.size() : upper + 1);
        const auto compare = [&](const Element& left, const Element& right) {
            return CompareForSort(std::invoke(key, left), std::invoke(key, right));
        };
        if (!descending) {
            std::stable_sort(part.begin(), part.end(),
                             [&](const Element& l, const Element& r) { return compare(l, r) < 0; });
            return;
        }
        if (HasEquals<Element>(part, compare))
            DescendingPasses(part, compare);
        else
            std::sort(part.begin(), part.end(),
                      [&](const Element& l, const Element& r) { return compare(l, r) > 0; });
    });
}

/// Sorts a list of texts or numbers.
template <class Element>
void BubbleSort(std::vector<Element>& list, bool descending = false, std::size_t upper = HighestIndex) {
    BubbleSortBy(list, std::identity{}, descending, upper);
}

} // namespace velmora
