#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace velmora {

/// A decoded picture: rows from the top, each pixel 0xFFRRGGBB.
struct Picture {
    int Width = 0;
    int Height = 0;
    std::vector<std::uint32_t> Pixels;
};

/// Decodes a PCX picture (1, 2, 4 or 8 bits a plane, 1 to 4 planes, 16- and 256-colour palettes, 24 bit).
/// Every read is checked against the file's bounds and pictures over 4096 x 4096 are refused: modders trade
/// pictures from anywhere. A picture whose data ends early is filled with its first palette colour (black
/// for 24 bit). Throws Failure (5) with the reason for anything that is no usable PCX picture.
Picture DecodePcx(std::string_view bytes);

} // namespace velmora
