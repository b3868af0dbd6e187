#include "platform/ContentHash.h"

#include <cstring>
#include <iterator>

namespace velmora {

namespace {

/// Every bit of the word reaches every bit of the sum.
std::uint64_t Mix(std::uint64_t sum, std::uint64_t word) {
    sum = (sum ^ word) * 0x9E3779B97F4A7C15;
    return sum ^ (sum >> 32);
}

std::uint64_t Word(std::string_view bytes, std::size_t at) {
    std::uint64_t word = 0;
    std::memcpy(&word, bytes.data() + at, sizeof word);
    return word;
}

} // namespace

ContentHash HashOf(std::string_view bytes) {
    // Four sums at a time: none waits for another.
    std::uint64_t sums[4] = {1, 2, 3, 4};
    std::size_t at = 0;
    for (; at + sizeof sums <= bytes.size(); at += sizeof sums)
        for (std::size_t i = 0; i < std::size(sums); ++i)
            sums[i] = Mix(sums[i], Word(bytes, at + i * sizeof(std::uint64_t)));
    ContentHash hash{bytes.size(), Mix(sums[0], sums[2]), Mix(sums[1], sums[3])};
    for (; at < bytes.size(); ++at)
        hash.Odd = Mix(hash.Odd, static_cast<unsigned char>(bytes[at]));
    // A change that one sum misses by chance shows in the other.
    hash.Even = Mix(hash.Even, hash.Odd);
    hash.Odd = Mix(hash.Odd, hash.Even);
    return hash;
}

} // namespace velmora
