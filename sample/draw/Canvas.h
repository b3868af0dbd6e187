#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

namespace velmora {

/// A colour with red, green and blue from 0 to 1; light added beyond 1 is clipped when the picture is
/// finished.
struct Colour {
    float R = 0, G = 0, B = 0;
};

inline Colour operator+(Colour a, Colour b) {
    return {a.R + b.R, a.G + b.G, a.B + b.B};
}
inline Colour operator*(Colour a, float f) {
    return {a.R * f, a.G * f, a.B * f};
}
inline Colour Mix(Colour a, Colour b, float t) {
    return a * (1 - t) + b * t;
}

/// A colour from its usual web notation, such as Hex(0xFFD27F).
inline Colour Hex(std::uint32_t rgb) {
    return {static_cast<float>(rgb >> 16 & 255) / 255, static_cast<float>(rgb >> 8 & 255) / 255,
            static_cast<float>(rgb & 255) / 255};
}

/// A place on the canvas in pixels from the upper left corner.
struct Point {
    float X = 0, Y = 0;
};

/// 0 below `from`, 1 above `to`, a soft S-curve between.
inline float Smooth(float from, float to, float x) {
    const float t = std::clamp((x - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3 - 2 * t);
}

/// Smooth random values from 0 to 1 over space, the same for the same seed on every host.
float Noise(float x, float y, float z, std::uint32_t seed);

/// Several octaves of Noise: clouds, rock, coastlines. Values from 0 to 1, mostly near 0.5.
float Clouds(float x, float y, float z, std::uint32_t seed, int octaves = 5);

/// A small random generator; the standard distributions differ from library to library, pictures should not.
class Random {
  public:
    explicit Random(std::uint32_t seed) : state(seed * 2654435761U + 1) {}
    float Between(float low, float high);

  private:
    std::uint32_t state;
};

/// A finished picture: rows from the top, red, green and blue bytes.
struct Bitmap {
    int Width = 0, Height = 0;
    std::vector<std::uint8_t> Rgb;
};

/// A drawing surface. Every pixel is made of 3 x 3 samples, so that edges come out smooth.
class Canvas {
  public:
    using Shader = std::function<Colour(Point, Colour)>;

    Canvas(int width, int height);
    float Width() const { return static_cast<float>(columns); }
    float Height() const { return static_cast<float>(rows); }

    /// Replaces every sample by what the shader makes of its place and present colour.
    void Paint(const Shader& shader);
    /// The same inside a rectangle only.
    void PaintBox(Point from, Point to, const Shader& shader);
    /// The same inside a polygon only.
    void PaintPolygon(const std::vector<Point>& corners, const Shader& shader);

    void Polygon(const std::vector<Point>& corners, Colour colour, float opacity = 1);
    void Ellipse(Point centre, float radiusX, float radiusY, Colour colour, float opacity = 1);
    void Disc(Point centre, float radius, Colour colour, float opacity = 1);
    void Box(Point from, Point to, Colour colour, float opacity = 1);
    void Line(Point from, Point to, float thickness, Colour colour, float opacity = 1);
    /// Draws the outline of an ellipse between two angles in radians.
    void Arc(Point centre, float radiusX, float radiusY, float from, float to, float thickness, Colour colour,
             float opacity = 1);
    /// Adds light that fades to nothing at the radius.
    void Glow(Point centre, float radius, Colour light, float strength = 1);

    Bitmap Finish() const;

  private:
    static constexpr int Samples = 3;
    int columns, rows;
    std::vector<Colour> samples;
};

} // namespace velmora
