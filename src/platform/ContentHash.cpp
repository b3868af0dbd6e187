#include "platform/ContentHash.h"

#include <cstring>

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
    ContentHash hash{bytes.size(), 1, 2};
    std::size_t at = 0;
    // Two sums at a time: neither waits for the other.
    for (; at + 16 <= bytes.size(); at += 16) {
        hash.Even = Mix(hash.Even, Word(bytes, at));
        hash.Odd = Mix(hash.Odd, Word(bytes, at + 8));
    }
    for (; at < bytes.size(); ++at)
        hash.Odd = Mix(hash.Odd, static_cast<unsigned char>(bytes[at]));
    // A change that one sum misses by chance shows in the other.
    hash.Even = Mix(hash.Even, hash.Odd);
    hash.Odd = Mix(hash.Odd, hash.Even);
    return hash;
}

} // namespace velmora
