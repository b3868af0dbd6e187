#include "Cosmos.h"

#include <cmath>

namespace velmora {

Surface GasGiant(std::uint32_t seed, Colour light, Colour dark, float bands) {
    return [=](Direction n) {
        const float swirl = Clouds(n.X * 2, n.Y * 6, n.Z * 2, seed) - 0.5F;
        const float band = Clouds(0, n.Y * bands + swirl * 1.4F, 0, seed + 9, 4);
        return Mix(dark, light, Smooth(0.25F, 0.75F, band + swirl * 0.25F));
    };
}

Surface LivingWorld(std::uint32_t seed, Colour sea, Colour land, Colour cloud) {
    return [=](Direction n) {
        const float height = Clouds(n.X * 2.2F, n.Y * 2.2F, n.Z * 2.2F, seed, 6);
        const Colour ground = Mix(land, land * 0.55F, Clouds(n.X * 7, n.Y * 7, n.Z * 7, seed + 20));
        Colour surface = Mix(sea * (0.6F + height), ground, Smooth(0.5F, 0.53F, height));
        surface = Mix(surface, {0.95F, 0.97F, 1}, Smooth(0.8F, 0.95F, std::abs(n.Y)));
        const float cover = Clouds(n.X * 3 + 7, n.Y * 5, n.Z * 3, seed + 40, 6);
        return Mix(surface, cloud, 0.85F * Smooth(0.52F, 0.72F, cover));
    };
}

Surface BarrenWorld(std::uint32_t seed, Colour light, Colour dark) {
    return [=](Direction n) {
        const float rock = Clouds(n.X * 4, n.Y * 4, n.Z * 4, seed, 6);
        const float crater = Noise(n.X * 9, n.Y * 9, n.Z * 9, seed + 5);
        return Mix(dark, light, Smooth(0.3F, 0.7F, rock)) * (1 - 0.35F * Smooth(0.72F, 0.8F, crater));
    };
}

void DrawPlanet(Canvas& canvas, const Planet& planet) {
    const Point c = planet.Centre;
    const float reach = planet.Radius * 1.15F;
    canvas.PaintBox({c.X - reach, c.Y - reach}, {c.X + reach, c.Y + reach}, [&](Point p, Colour below) {
        const float x = (p.X - c.X) / planet.Radius, y = (p.Y - c.Y) / planet.Radius, d = std::hypot(x, y);
        const Direction l = planet.Light;
        if (d > 1) {
            const float lit = Smooth(-0.4F, 0.8F, (x * l.X + y * l.Y) / d);
            const float haze = std::max(0.0F, 1 - (d - 1) / 0.15F);
            return below + planet.Air * (0.5F * lit * haze * haze * haze);
        }
        const float z = std::sqrt(1 - d * d);
        const float day = Smooth(-0.15F, 0.95F, x * l.X + y * l.Y + z * l.Z);
        const float rim = std::pow(1 - z, 3.0F);
        return planet.Surface({x, y, z}) * (0.03F + day) + planet.Air * (rim * day * 0.9F);
    });
}

void DrawRing(Canvas& canvas, const Planet& planet, float tilt, Colour colour, bool nearHalf) {
    const Point c = planet.Centre;
    const float reach = planet.Radius * 2.3F;
    canvas.PaintBox({c.X - reach, c.Y - reach}, {c.X + reach, c.Y + reach}, [&](Point p, Colour below) {
        const float px = p.X - c.X, py = p.Y - c.Y;
        const float x = px * std::cos(tilt) + py * std::sin(tilt);
        const float y = (py * std::cos(tilt) - px * std::sin(tilt)) / 0.26F;
        const float d = std::hypot(x, y) / planet.Radius;
        if ((y > 0) != nearHalf || d < 1.3F || d > 2.25F)
            return below;
        const float gap = 1 - Smooth(0.012F, 0.03F, std::abs(d - 1.86F));
        const float grooves = 0.45F + 0.55F * Noise(d * 34, 0, 0, 77);
        const float edge = Smooth(1.3F, 1.42F, d) * (1 - Smooth(2.15F, 2.25F, d));
        // Light comes from the upper left, so the planet's shadow falls on the far right of the ring.
        const bool inShadow = !nearHalf && x > 0 && std::abs(y) < planet.Radius * 1.9F && d < 1.9F;
        return Mix(below, colour * (inShadow ? 0.25F : 1.0F), 0.85F * edge * grooves * (1 - gap));
    });
}

void DrawSky(Canvas& canvas, Colour top, Colour bottom) {
    canvas.Paint([&](Point p, Colour) { return Mix(top, bottom, p.Y / canvas.Height()); });
}

void DrawStars(Canvas& canvas, std::uint32_t seed, int count, float lowest) {
    Random random(seed);
    const Colour tints[] = {Hex(0xFFFFFF), Hex(0xBFD4FF), Hex(0xFFE2B8), Hex(0xFFC9A8)};
    for (int i = 0; i < count; ++i) {
        const Point at{random.Between(0, canvas.Width()),
                       random.Between(0, std::min(lowest, canvas.Height()))};
        const Colour tint = tints[static_cast<int>(random.Between(0, 3.99F))];
        const float size = std::pow(random.Between(0, 1), 8.0F);
        canvas.Disc(at, 0.35F + size * 0.7F, tint, 0.35F + 0.65F * random.Between(0, 1));
        if (size > 0.5F)
            canvas.Glow(at, 5 + size * 5, tint, 0.5F);
    }
}

void DrawNebula(Canvas& canvas, std::uint32_t seed, Colour light, float scale, float strength) {
    canvas.Paint([&](Point p, Colour below) {
        const float x = p.X / scale, y = p.Y / scale;
        const float warp = Clouds(x, y, 3, seed + 60, 4);
        const float gas = Clouds(x + warp * 1.8F, y - warp * 1.3F, 0, seed, 6);
        return below + light * (strength * std::pow(Smooth(0.38F, 0.85F, gas), 1.5F));
    });
}

void DrawHills(Canvas& canvas, std::uint32_t seed, float base, float height, float scale, Colour top,
               Colour bottom) {
    canvas.PaintBox({0, base - height}, {canvas.Width(), canvas.Height()}, [&](Point p, Colour below) {
        const float ridge = base - height * (Clouds(p.X / scale, 0, 0, seed, 6) * 1.6F - 0.4F);
        if (p.Y < ridge)
            return below;
        return Mix(top, bottom, Smooth(0, canvas.Height() - base + height * 0.5F, p.Y - ridge));
    });
}

std::vector<Point> Placed(const std::vector<Point>& corners, Point at, float scale, float angle) {
    std::vector<Point> placed;
    placed.reserve(corners.size());
    const float c = std::cos(angle) * scale, s = std::sin(angle) * scale;
    for (const Point& p : corners)
        placed.push_back({at.X + p.X * c - p.Y * s, at.Y + p.X * s + p.Y * c});
    return placed;
}

void DrawShip(Canvas& canvas, Point at, float scale, float angle, Colour hull, Colour engine) {
    const auto place = [&](const std::vector<Point>& corners) { return Placed(corners, at, scale, angle); };
    const Point nozzle = place({{-1.02F, 0}})[0];
    canvas.Polygon(place({{-1, -0.1F}, {-2.6F, 0}, {-1, 0.1F}}), engine, 0.45F);
    canvas.Glow(nozzle, scale * 0.9F, engine, 1.2F);
    canvas.Polygon(place({{-0.75F, -0.1F}, {-1.05F, -0.55F}, {-0.8F, -0.55F}, {-0.1F, -0.15F}}), hull * 0.8F);
    canvas.Polygon(place({{-0.75F, 0.1F}, {-1, 0.42F}, {-0.75F, 0.42F}, {-0.1F, 0.15F}}), hull * 0.45F);
    canvas.Polygon(place({{-1, -0.16F}, {0.2F, -0.2F}, {1, 0}, {0.2F, 0.17F}, {-1, 0.16F}}), hull * 0.6F);
    canvas.Polygon(place({{-1, -0.16F}, {0.2F, -0.2F}, {1, 0}, {-1, 0.02F}}), hull);
    canvas.Polygon(place({{-0.1F, -0.2F}, {0.08F, -0.31F}, {0.3F, -0.28F}, {0.4F, -0.16F}}), hull * 0.9F);
    canvas.Polygon(place({{0.14F, -0.27F}, {0.28F, -0.25F}, {0.34F, -0.18F}, {0.16F, -0.19F}}),
                   Hex(0x9FE8FF));
    for (float x = -0.8F; x < 0.1F; x += 0.16F)
        canvas.Disc(place({{x, -0.04F}})[0], scale * 0.025F, Hex(0xFFE9A8));
}

} // namespace velmora
