#include "Quantise.h"

#include <limits>

namespace velmora {

namespace {

using Pixels = std::vector<Rgb>;

/// The channel in which the pixels differ most, and by how much.
std::pair<std::size_t, int> WidestChannel(const Pixels& pixels) {
    std::pair<std::size_t, int> widest{0, -1};
    for (std::size_t channel = 0; channel < 3; ++channel) {
        const auto less = [=](const Rgb& a, const Rgb& b) { return a[channel] < b[channel]; };
        const auto [low, high] = std::minmax_element(pixels.begin(), pixels.end(), less);
        const int range = (*high)[channel] - (*low)[channel];
        if (range > widest.second)
            widest = {channel, range};
    }
    return widest;
}

Pixels SplitInHalf(Pixels& pixels, std::size_t channel) {
    const auto middle = pixels.begin() + static_cast<std::ptrdiff_t>(pixels.size() / 2);
    std::nth_element(pixels.begin(), middle, pixels.end(),
                     [=](const Rgb& a, const Rgb& b) { return a[channel] < b[channel]; });
    Pixels upper(middle, pixels.end());
    pixels.erase(middle, pixels.end());
    return upper;
}

Rgb Average(const Pixels& pixels) {
    std::array<std::size_t, 3> sum{};
    for (const Rgb& pixel : pixels)
        for (std::size_t c = 0; c < 3; ++c)
            sum[c] += pixel[c];
    Rgb average{};
    for (std::size_t c = 0; c < 3; ++c)
        average[c] = static_cast<std::uint8_t>((sum[c] + pixels.size() / 2) / pixels.size());
    return average;
}

std::size_t Nearest(const std::vector<Rgb>& palette, const std::array<float, 3>& wanted) {
    std::size_t best = 0;
    float bestDistance = std::numeric_limits<float>::max();
    for (std::size_t i = 0; i < palette.size(); ++i) {
        float distance = 0;
        for (std::size_t c = 0; c < 3; ++c) {
            const float d = wanted[c] - static_cast<float>(palette[i][c]);
            distance += d * d;
        }
        if (distance < bestDistance)
            bestDistance = distance, best = i;
    }
    return best;
}

} // namespace

std::vector<Rgb> ChoosePalette(const Bitmap& bitmap, std::size_t size) {
    std::vector<Pixels> boxes(1);
    for (std::size_t i = 0; i < bitmap.Rgb.size(); i += 3)
        boxes[0].push_back({bitmap.Rgb[i], bitmap.Rgb[i + 1], bitmap.Rgb[i + 2]});
    while (boxes.size() < size) {
        // A wide box of few pixels matters as much as a narrow one of many: the glow of one lamp must
        // survive.
        const auto need = [](const Pixels& box) {
            return static_cast<double>(WidestChannel(box).second) * static_cast<double>(box.size() + 400);
        };
        const auto neediest = std::max_element(
            boxes.begin(), boxes.end(), [&](const Pixels& a, const Pixels& b) { return need(a) < need(b); });
        const auto [channel, range] = WidestChannel(*neediest);
        if (range == 0)
            break;
        auto upper = SplitInHalf(*neediest, channel);
        boxes.push_back(std::move(upper));
    }
    std::vector<Rgb> palette;
    palette.reserve(boxes.size());
    for (const Pixels& box : boxes)
        palette.push_back(Average(box));
    // Dark colours first keeps the most frequent numbers small, and those take one byte in a PCX run.
    std::sort(palette.begin(), palette.end(),
              [](const Rgb& a, const Rgb& b) { return a[0] + a[1] + a[2] < b[0] + b[1] + b[2]; });
    return palette;
}

IndexedBitmap Dither(const Bitmap& bitmap, const std::vector<Rgb>& palette) {
    IndexedBitmap indexed{palette, {}};
    const auto width = static_cast<std::size_t>(bitmap.Width),
               height = static_cast<std::size_t>(bitmap.Height);
    std::vector<float> work(bitmap.Rgb.begin(), bitmap.Rgb.end());
    const auto spread = [&](std::size_t x, std::size_t y, std::size_t c, float error) {
        if (x < width && y < height)
            work[(y * width + x) * 3 + c] += error;
    };
    for (std::size_t y = 0; y < height; ++y)
        for (std::size_t x = 0; x < width; ++x) {
            const std::size_t at = (y * width + x) * 3;
            const std::size_t index = Nearest(palette, {work[at], work[at + 1], work[at + 2]});
            indexed.Pixels.push_back(static_cast<std::uint8_t>(index));
            for (std::size_t c = 0; c < 3; ++c) {
                const float error = work[at + c] - static_cast<float>(palette[index][c]);
                spread(x + 1, y, c, error * 7 / 16);
                spread(x - 1, y + 1, c, error * 3 / 16);
                spread(x, y + 1, c, error * 5 / 16);
                spread(x + 1, y + 1, c, error / 16);
            }
        }
    return indexed;
}

} // namespace velmora
