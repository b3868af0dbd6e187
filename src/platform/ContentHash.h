#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace velmora {

/// Tells whether a file's content is still the one it was. Two contents of one size share it by chance once
/// in 2^64 cases; it does not withstand someone who sets out to make two of them.
struct ContentHash {
    std::size_t Size = 0;
    std::uint64_t Even = 0;
    std::uint64_t Odd = 0;
    bool operator==(const ContentHash&) const = default;
};

ContentHash HashOf(std::string_view bytes);

} // namespace velmora
