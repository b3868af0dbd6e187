#include "records/Search.h"

#include <algorithm>

namespace velmora {

void Search::Begin(Filter newFilter) {
    const bool narrower = newFilter.Narrows(filter);
    filter = std::move(newFilter);
    if (!narrower)
        return Restart();
    found.insert(found.end(), earlier.begin() + static_cast<std::ptrdiff_t>(nextEarlier), earlier.end());
    earlier.swap(found);
    nextEarlier = 0;
    found.clear();
}

void Search::Restart() {
    found.clear();
    earlier.clear();
    nextEarlier = 0;
    next = 0;
}

bool Search::Work(std::chrono::microseconds time) {
    using Clock = std::chrono::steady_clock;
    constexpr int batch = 64; // takes some tens of microseconds
    const auto end = Clock::now() + time;
    do {
        for (int i = 0; i < batch && !Done(); ++i)
            LookAt(nextEarlier < earlier.size() ? earlier[nextEarlier++] : next++);
    } while (!Done() && Clock::now() < end);
    return Done();
}

void Search::LookAt(std::size_t position) {
    if (Matches(library.At(position)))
        found.push_back(static_cast<std::uint32_t>(position));
}

void Search::Put(std::size_t position) {
    const auto value = static_cast<std::uint32_t>(position);
    const auto place = std::lower_bound(found.begin(), found.end(), value);
    if (place == found.end() || *place != value)
        found.insert(place, value);
}

void Search::Drop(std::size_t position) {
    const auto value = static_cast<std::uint32_t>(position);
    const auto place = std::lower_bound(found.begin(), found.end(), value);
    if (place != found.end() && *place == value)
        found.erase(place);
}

} // namespace velmora
