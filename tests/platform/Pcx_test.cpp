#include "platform/Pcx.h"

#include "FailureOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;
using Pixels = std::vector<std::uint32_t>;

constexpr std::uint32_t Black = 0xFF000000;
constexpr std::uint32_t White = 0xFFFFFFFF;

/// The colour of entry i in the palettes below: all components differ.
std::uint32_t Shade(unsigned char i) {
    return Black | (i * 3 % 256) << 16 | (i * 5 % 256) << 8 | (255 - i);
}

std::string Colours(int count) {
    std::string bytes;
    for (int i = 0; i < count; ++i)
        for (const int shift : {16, 8, 0})
            bytes += static_cast<char>(Shade(static_cast<unsigned char>(i)) >> shift & 0xFF);
    return bytes;
}

/// A header whose picture starts at (7, 300): only the distance of the corners counts.
std::string Header(int width, int height, int bits = 8, int planes = 1, int bytesPerLine = 2, int version = 5,
                   int encoding = 1) {
    std::string bytes = "\x0A";
    const auto put = [&bytes](int byte) { bytes += static_cast<char>(byte); };
    for (const int byte : {version, encoding, bits})
        put(byte);
    for (const int word : {7, 300, 7 + width - 1, 300 + height - 1, 0, 0}) {
        put(word & 0xFF);
        put(word >> 8);
    }
    bytes.resize(65);
    for (const int byte : {planes, bytesPerLine & 0xFF, bytesPerLine >> 8})
        put(byte);
    bytes.resize(128);
    return bytes;
}

std::string WithTable(std::string header) {
    return header.replace(16, 48, Colours(16));
}

Pixels Shades(const std::string& indices) {
    Pixels pixels;
    std::transform(indices.begin(), indices.end(), std::back_inserter(pixels), Shade);
    return pixels;
}

TEST(Pcx, DecodesEveryFormAndEndsEarlyWithoutHarm) {
    const std::string palette = '\x0C' + Colours(256);
    struct Form {
        const char* Name;
        std::string File;
        Pixels Expected;
    };
    const Form forms[] = {
        {"256 colours", Header(3, 2, 8, 1, 4) + "\1\2\xC1\xC8\0\xC3\x09\xC1\xFF"s + palette,
         Shades("\1\2\xC8\x09\x09\x09")},
        {"run across lines", Header(2, 3) + "\xC5\7\x08" + palette, Shades("\7\7\7\7\7\x08")},
        {"run of none", Header(2, 1) + "\xC0\x09\3\4" + palette, Shades("\3\4")},
        {"raw", Header(2, 1, 8, 1, 2, 5, 0) + "\xC5\xFF" + palette, Shades("\xC5\xFF")},
        {"greys without a palette", Header(2, 1) + "\x80\x0C", {0xFF808080, 0xFF0C0C0C}},
        {"no palette before version 5", Header(1, 1, 8, 1, 2, 3) + "\x10\0"s + palette, {0xFF101010}},
        {"true colour",
         Header(2, 2, 8, 3, 2) + "\1\2\3\4\5\6\xC2\xFF\xC4\0"s,
         {0xFF010305, 0xFF020406, 0xFFFF0000, 0xFFFF0000}},
        {"true colour with alpha", Header(1, 1, 8, 4, 1) + "\x11\x22\x33\x44", {0xFF112233}},
        {"black and white",
         Header(10, 1, 1) + "\x50\x40",
         {Black, White, Black, White, Black, Black, Black, Black, Black, White}},
        {"two colours", WithTable(Header(3, 1, 1, 1, 1)) + "\x40", Shades("\0\1\0"s)},
        {"four colours", WithTable(Header(5, 1, 2)) + "\x1B\x80", Shades("\0\1\2\3\2"s)},
        {"16 packed colours", WithTable(Header(3, 1, 4)) + "\x0F\xC1\xA0", Shades("\0\x0F\x0A"s)},
        {"16 colours in four planes", WithTable(Header(2, 1, 1, 4, 1)) + "\x80\0\x80\x40"s, Shades("\5\x08")},
        {"the standard 16 colours",
         WithTable(Header(4, 1, 4, 1, 2, 3)) + "\x16\xC1\xF8",
         {0xFF0000AA, 0xFFAA5500, White, 0xFF555555}},
        {"lines shorter than the picture", WithTable(Header(4, 2, 4, 1, 1)) + "\x12\x34",
         Shades("\1\2\0\0\3\4\0\0"s)},
        {"indices that end early", Header(2, 3) + "\5\6\7" + palette, Shades("\5\6\7\0\0\0"s)},
        {"colours that end early", Header(1, 2, 8, 3, 1) + "\x09\x09\x09", {0xFF090909, Black}}};
    for (const auto& [name, file, expected] : forms) {
        SCOPED_TRACE(name);
        const Picture picture = DecodePcx(file);
        EXPECT_EQ(static_cast<std::size_t>(picture.Width * picture.Height), expected.size());
        EXPECT_EQ(picture.Pixels, expected);
        for (std::size_t size = 128; size < file.size(); ++size) {
            const Pixels pixels = DecodePcx(file.substr(0, size)).Pixels;
            EXPECT_EQ(pixels.size(), expected.size()) << size;
            EXPECT_TRUE(std::all_of(pixels.begin(), pixels.end(), [](auto pixel) { return pixel >= Black; }))
                << size;
        }
    }
}

TEST(Pcx, RefusesWhatItCannotRead) {
    const std::string rest(1000, 'x');
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"it is no PCX file", {"GIF89a" + rest, Header(1, 1).substr(0, 127), ""}},
        {"it is of an unknown version", {Header(1, 1, 8, 1, 2, 6), Header(1, 1, 8, 1, 2, 5, 2)}},
        {"it has an unknown number of colours",
         {Header(1, 1, 0), Header(1, 1, 3), Header(1, 1, 16), Header(1, 1, 8, 0), Header(1, 1, 8, 2),
          Header(1, 1, 8, 5), Header(1, 1, 4, 3)}},
        {"it has no area", {Header(0, 1), Header(1, -5), Header(1, 1, 8, 1, 0)}},
        {"it is larger than 4096 x 4096", {Header(4097, 1), Header(1, 4097)}}};
    for (const auto& [reason, files] : cases)
        for (const std::string& file : files) {
            const Failure failure = FailureOf([&] { DecodePcx(file); });
            EXPECT_EQ(failure.Number, FailureInvalidArgument);
            EXPECT_EQ(failure.Description(), "Unable to read the picture: "s + reason);
        }
    EXPECT_EQ(DecodePcx(Header(4096, 4096, 1, 1, 512)).Pixels.size(), 4096u * 4096u);
}

} // namespace
} // namespace velmora
