#include "Canvas.h"

#include <cmath>
#include <cstddef>

namespace velmora {

namespace {

float Hash(int x, int y, int z, std::uint32_t seed) {
    std::uint32_t h = seed * 374761393U + static_cast<std::uint32_t>(x) * 668265263U +
                      static_cast<std::uint32_t>(y) * 2246822519U +
                      static_cast<std::uint32_t>(z) * 3266489917U;
    h = (h ^ h >> 15) * 2246822519U;
    h = (h ^ h >> 13) * 3266489917U;
    return static_cast<float>((h ^ h >> 16) & 0xFFFFFF) / 16777216.0F;
}

float Lerp(float a, float b, float t) {
    return a + (b - a) * t;
}

} // namespace

float Noise(float x, float y, float z, std::uint32_t seed) {
    const float fx = std::floor(x), fy = std::floor(y), fz = std::floor(z);
    const int ix = static_cast<int>(fx), iy = static_cast<int>(fy), iz = static_cast<int>(fz);
    const float tx = Smooth(0, 1, x - fx), ty = Smooth(0, 1, y - fy), tz = Smooth(0, 1, z - fz);
    const auto row = [&](int dy, int dz) {
        return Lerp(Hash(ix, iy + dy, iz + dz, seed), Hash(ix + 1, iy + dy, iz + dz, seed), tx);
    };
    return Lerp(Lerp(row(0, 0), row(1, 0), ty), Lerp(row(0, 1), row(1, 1), ty), tz);
}

float Clouds(float x, float y, float z, std::uint32_t seed, int octaves) {
    float sum = 0, weight = 0.5F, total = 0;
    for (int i = 0; i < octaves; ++i) {
        sum += Noise(x, y, z, seed + static_cast<std::uint32_t>(i)) * weight;
        total += weight;
        weight *= 0.5F;
        x *= 2.03F, y *= 2.03F, z *= 2.03F;
    }
    return sum / total;
}

float Random::Between(float low, float high) {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return low + (high - low) * static_cast<float>(state >> 8) / 16777216.0F;
}

Canvas::Canvas(int width, int height)
    : columns(width), rows(height),
      samples(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * Samples * Samples) {}

void Canvas::PaintBox(Point from, Point to, const Shader& shader) {
    const auto first = [](float v) { return std::max(0, static_cast<int>(std::floor(v * Samples))); };
    const int right = std::min(columns * Samples, static_cast<int>(std::ceil(to.X * Samples)));
    const int bottom = std::min(rows * Samples, static_cast<int>(std::ceil(to.Y * Samples)));
    for (int y = first(from.Y); y < bottom; ++y)
        for (int x = first(from.X); x < right; ++x) {
            auto& sample = samples[static_cast<std::size_t>(y) * static_cast<std::size_t>(columns * Samples) +
                                   static_cast<std::size_t>(x)];
            sample = shader(
                {(static_cast<float>(x) + 0.5F) / Samples, (static_cast<float>(y) + 0.5F) / Samples}, sample);
        }
}

void Canvas::Paint(const Shader& shader) {
    PaintBox({0, 0}, {Width(), Height()}, shader);
}

void Canvas::PaintPolygon(const std::vector<Point>& corners, const Shader& shader) {
    Point low = corners.front(), high = corners.front();
    for (const Point& c : corners) {
        low = {std::min(low.X, c.X), std::min(low.Y, c.Y)};
        high = {std::max(high.X, c.X), std::max(high.Y, c.Y)};
    }
    const auto inside = [&](Point p) {
        bool in = false;
        for (std::size_t i = 0, j = corners.size() - 1; i < corners.size(); j = i++) {
            const Point a = corners[i], b = corners[j];
            if ((a.Y > p.Y) != (b.Y > p.Y) && p.X < (b.X - a.X) * (p.Y - a.Y) / (b.Y - a.Y) + a.X)
                in = !in;
        }
        return in;
    };
    PaintBox(low, high, [&](Point p, Colour below) { return inside(p) ? shader(p, below) : below; });
}

void Canvas::Polygon(const std::vector<Point>& corners, Colour colour, float opacity) {
    PaintPolygon(corners, [=](Point, Colour below) { return Mix(below, colour, opacity); });
}

void Canvas::Ellipse(Point c, float radiusX, float radiusY, Colour colour, float opacity) {
    PaintBox({c.X - radiusX, c.Y - radiusY}, {c.X + radiusX, c.Y + radiusY}, [=](Point p, Colour below) {
        return std::hypot((p.X - c.X) / radiusX, (p.Y - c.Y) / radiusY) <= 1 ? Mix(below, colour, opacity)
                                                                             : below;
    });
}

void Canvas::Disc(Point centre, float radius, Colour colour, float opacity) {
    Ellipse(centre, radius, radius, colour, opacity);
}

void Canvas::Box(Point from, Point to, Colour colour, float opacity) {
    PaintBox(from, to, [=](Point, Colour below) { return Mix(below, colour, opacity); });
}

void Canvas::Line(Point a, Point b, float thickness, Colour colour, float opacity) {
    const float length = std::max(0.001F, std::hypot(b.X - a.X, b.Y - a.Y));
    const float dx = (b.Y - a.Y) / length * thickness / 2, dy = (a.X - b.X) / length * thickness / 2;
    Polygon({{a.X + dx, a.Y + dy}, {b.X + dx, b.Y + dy}, {b.X - dx, b.Y - dy}, {a.X - dx, a.Y - dy}}, colour,
            opacity);
}

void Canvas::Arc(Point c, float radiusX, float radiusY, float from, float to, float thickness, Colour colour,
                 float opacity) {
    const int steps = 48;
    std::vector<Point> outline;
    const auto add = [&](int i, float offset) {
        const float angle = from + (to - from) * static_cast<float>(i) / steps;
        outline.push_back(
            {c.X + (radiusX + offset) * std::cos(angle), c.Y + (radiusY + offset) * std::sin(angle)});
    };
    for (int i = 0; i <= steps; ++i)
        add(i, thickness / 2);
    for (int i = steps; i >= 0; --i)
        add(i, -thickness / 2);
    Polygon(outline, colour, opacity);
}

void Canvas::Glow(Point c, float radius, Colour light, float strength) {
    PaintBox({c.X - radius, c.Y - radius}, {c.X + radius, c.Y + radius}, [=](Point p, Colour below) {
        const float fade = std::max(0.0F, 1 - std::hypot(p.X - c.X, p.Y - c.Y) / radius);
        return below + light * (strength * fade * fade * fade);
    });
}

Bitmap Canvas::Finish() const {
    Bitmap bitmap{columns, rows, {}};
    const auto byte = [](float sum) {
        return static_cast<std::uint8_t>(
            std::lround(std::clamp(sum / (Samples * Samples), 0.0F, 1.0F) * 255));
    };
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) {
            Colour sum;
            for (int i = 0; i < Samples * Samples; ++i) {
                const int row = y * Samples + i / Samples, column = x * Samples + i % Samples;
                const Colour s =
                    samples[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns * Samples) +
                            static_cast<std::size_t>(column)];
                sum = sum + Colour{std::min(s.R, 1.0F), std::min(s.G, 1.0F), std::min(s.B, 1.0F)};
            }
            bitmap.Rgb.insert(bitmap.Rgb.end(), {byte(sum.R), byte(sum.G), byte(sum.B)});
        }
    return bitmap;
}

} // namespace velmora
