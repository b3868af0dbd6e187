#pragma once

#include "Canvas.h"

#include <array>
#include <cstddef>

namespace velmora {

using Rgb = std::array<std::uint8_t, 3>;

/// A picture as numbers into a palette.
struct IndexedBitmap {
    std::vector<Rgb> Palette;
    std::vector<std::uint8_t> Pixels;
};

/// The palette of at most `size` colours that serves the picture best (median cut).
std::vector<Rgb> ChoosePalette(const Bitmap& bitmap, std::size_t size);

/// The picture in the palette's colours, the rounding errors spread over the neighbours (Floyd and
/// Steinberg).
IndexedBitmap Dither(const Bitmap& bitmap, const std::vector<Rgb>& palette);

} // namespace velmora
