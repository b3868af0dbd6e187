#include "platform/Pcx.h"

#include "FailureOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

namespace velmora {
namespace {

constexpr std::uint32_t Black = 0xFF000000;
constexpr std::uint32_t White = 0xFFFFFFFF;

std::string Bytes(std::initializer_list<int> values) {
    std::string bytes;
    for (const int value : values)
        bytes += static_cast<char>(value);
    return bytes;
}

struct Head {
    int Width = 1;
    int Height = 1;
    int Bits = 8;
    int Planes = 1;
    int BytesPerLine = 2;
    int Version = 5;
    int Encoding = 1;
};

void PutWord(std::string& bytes, std::size_t at, int value) {
    bytes[at] = static_cast<char>(value & 0xFF);
    bytes[at + 1] = static_cast<char>(value >> 8);
}

/// A header whose picture starts at (7, 300): only the distance of the corners counts.
std::string Header(const Head& head) {
    std::string bytes(128, '\0');
    bytes[0] = 0x0A;
    bytes[1] = static_cast<char>(head.Version);
    bytes[2] = static_cast<char>(head.Encoding);
    bytes[3] = static_cast<char>(head.Bits);
    PutWord(bytes, 4, 7);
    PutWord(bytes, 6, 300);
    PutWord(bytes, 8, 7 + head.Width - 1);
    PutWord(bytes, 10, 300 + head.Height - 1);
    bytes[65] = static_cast<char>(head.Planes);
    PutWord(bytes, 66, head.BytesPerLine);
    return bytes;
}

/// The colour of entry i in the palettes below: all components differ.
std::uint32_t Shade(unsigned i) {
    return Black | (i * 3 % 256) << 16 | (i * 5 % 256) << 8 | (255 - i);
}

std::string Colours(unsigned count) {
    std::string bytes;
    for (unsigned i = 0; i < count; ++i)
        for (const int shift : {16, 8, 0})
            bytes += static_cast<char>(Shade(i) >> shift & 0xFF);
    return bytes;
}

std::string WithTable(std::string header) {
    return header.replace(16, 48, Colours(16));
}

std::string EndPalette() {
    return '\x0C' + Colours(256);
}

std::string RefusalOf(const std::string& bytes) {
    const Failure failure = FailureOf([&] { DecodePcx(bytes); });
    EXPECT_EQ(failure.Number, FailureInvalidArgument);
    return failure.Description();
}

struct Form {
    const char* Name;
    std::string File;
    std::vector<std::uint32_t> Pixels;
};

std::vector<Form> Forms() {
    const auto shades = [](std::initializer_list<unsigned> indices) {
        std::vector<std::uint32_t> pixels;
        for (const unsigned i : indices)
            pixels.push_back(Shade(i));
        return pixels;
    };
    return {
        {"256 colours",
         Header({3, 2, 8, 1, 4}) + Bytes({1, 2, 0xC1, 200, 0, 0xC3, 9, 0xC1, 255}) + EndPalette(),
         shades({1, 2, 200, 9, 9, 9})},
        {"run across lines", Header({2, 3, 8, 1, 2}) + Bytes({0xC5, 7, 8}) + EndPalette(),
         shades({7, 7, 7, 7, 7, 8})},
        {"run of none", Header({2, 1, 8, 1, 2}) + Bytes({0xC0, 9, 3, 4}) + EndPalette(), shades({3, 4})},
        {"raw", Header({2, 1, 8, 1, 2, 5, 0}) + Bytes({0xC5, 0xFF}) + EndPalette(), shades({0xC5, 0xFF})},
        {"greys without a palette", Header({2, 1, 8, 1, 2}) + Bytes({0x80, 0x0C}), {0xFF808080, 0xFF0C0C0C}},
        {"no palette before version 5",
         Header({1, 1, 8, 1, 2, 3}) + Bytes({0x10, 0}) + EndPalette(),
         {0xFF101010}},
        {"true colour",
         Header({2, 2, 8, 3, 2}) + Bytes({1, 2, 3, 4, 5, 6, 0xC2, 0xFF, 0xC4, 0}),
         {0xFF010305, 0xFF020406, 0xFFFF0000, 0xFFFF0000}},
        {"run across planes", Header({2, 1, 8, 3, 2}) + Bytes({0xC6, 0x21}), {0xFF212121, 0xFF212121}},
        {"true colour with alpha", Header({1, 1, 8, 4, 1}) + Bytes({0x11, 0x22, 0x33, 0x44}), {0xFF112233}},
        {"black and white",
         Header({10, 1, 1, 1, 2}) + Bytes({0x50, 0x40}),
         {Black, White, Black, White, Black, Black, Black, Black, Black, White}},
        {"two colours", WithTable(Header({3, 1, 1, 1, 1})) + Bytes({0x40}), shades({0, 1, 0})},
        {"two colours, version without a table",
         WithTable(Header({2, 1, 1, 1, 1, 3})) + Bytes({0x40}),
         {Black, White}},
        {"four colours", WithTable(Header({5, 1, 2, 1, 2})) + Bytes({0x1B, 0x80}), shades({0, 1, 2, 3, 2})},
        {"16 packed colours", WithTable(Header({3, 1, 4, 1, 2})) + Bytes({0x0F, 0xC1, 0xA0}),
         shades({0, 15, 10})},
        {"16 colours in four planes", WithTable(Header({2, 1, 1, 4, 1})) + Bytes({0x80, 0, 0x80, 0x40}),
         shades({5, 8})},
        {"8 colours in three planes", WithTable(Header({2, 1, 1, 3, 1})) + Bytes({0x40, 0x80, 0x40}),
         shades({2, 5})},
        {"the standard 16 colours",
         WithTable(Header({4, 1, 4, 1, 2, 3})) + Bytes({0x16, 0xC1, 0xF8}),
         {0xFF0000AA, 0xFFAA5500, White, 0xFF555555}},
        {"an empty table tells nothing", Header({2, 1, 4, 1, 1}) + Bytes({0x4F}), {0xFFAA0000, White}},
        {"lines shorter than the picture", WithTable(Header({4, 2, 4, 1, 1})) + Bytes({0x12, 0x34}),
         shades({1, 2, 0, 0, 3, 4, 0, 0})},
        {"indices that end early", Header({2, 3, 8, 1, 2}) + Bytes({5, 6, 7}) + EndPalette(),
         shades({5, 6, 7, 0, 0, 0})},
        {"colours that end early", Header({1, 2, 8, 3, 1}) + Bytes({9, 9, 9}), {0xFF090909, Black}}};
}

TEST(Pcx, DecodesEveryFormAndEndsEarlyWithoutHarm) {
    for (const Form& form : Forms()) {
        SCOPED_TRACE(form.Name);
        const Picture picture = DecodePcx(form.File);
        EXPECT_EQ(static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height),
                  form.Pixels.size());
        EXPECT_EQ(picture.Pixels, form.Pixels);
        for (std::size_t size = 128; size < form.File.size(); ++size) {
            const auto pixels = DecodePcx(form.File.substr(0, size)).Pixels;
            EXPECT_EQ(pixels.size(), form.Pixels.size()) << size;
            EXPECT_TRUE(std::all_of(pixels.begin(), pixels.end(), [](auto pixel) {
                return pixel >> 24 == 0xFF;
            })) << size;
        }
    }
}

TEST(Pcx, RefusesWhatItCannotRead) {
    const std::string rest(1000, 'x');
    const std::pair<std::string, std::vector<Head>> cases[] = {
        {"it is of an unknown version", {{1, 1, 8, 1, 2, 6}, {1, 1, 8, 1, 2, 5, 2}}},
        {"it has an unknown number of colours",
         {{1, 1, 0}, {1, 1, 3}, {1, 1, 16}, {1, 1, 8, 0}, {1, 1, 8, 2}, {1, 1, 8, 5}, {1, 1, 4, 3}}},
        {"it has no area", {{0, 1}, {1, -5}, {1, 1, 8, 1, 0}}},
        {"it is larger than 4096 x 4096", {{4097, 1}, {1, 4097}, {65000, 65000, 8, 1, 65000}}}};
    for (const auto& [reason, heads] : cases)
        for (const Head& head : heads)
            EXPECT_EQ(RefusalOf(Header(head) + rest), "Unable to read the picture: " + reason);
    for (const std::string& file : {"GIF89a" + rest, Header({}).substr(0, 127), std::string()})
        EXPECT_EQ(RefusalOf(file), "Unable to read the picture: it is no PCX file");
    EXPECT_EQ(DecodePcx(Header({4096, 4096, 1, 1, 512})).Pixels.size(), 4096u * 4096u);
}

} // namespace
} // namespace velmora
