#include "Cosmos.h"
#include "Scenes.h"

#include <cmath>
#include <numbers>

namespace velmora {

namespace {

constexpr float Turn = 2 * std::numbers::pi_v<float>;

/// A rock with a lumpy outline, lit from the upper left.
void DrawRock(Canvas& canvas, Point c, float radius, std::uint32_t seed, Colour tint) {
    canvas.PaintBox({c.X - radius * 1.4F, c.Y - radius * 1.4F}, {c.X + radius * 1.4F, c.Y + radius * 1.4F},
                    [=](Point p, Colour below) {
                        const float x = (p.X - c.X) / radius, y = (p.Y - c.Y) / radius;
                        const float d = std::max(0.001F, std::hypot(x, y));
                        const float edge = 0.65F + 0.7F * Clouds(x / d * 1.3F, y / d * 1.3F, 0, seed, 3);
                        if (d > edge)
                            return below;
                        const float z = std::sqrt(1 - d * d / (edge * edge));
                        const float bump = Clouds(x * 4, y * 4, 0, seed + 8, 5) - 0.5F;
                        const float light = -0.6F * x / edge - 0.55F * y / edge + 0.5F * z + bump * 0.9F;
                        const float pit = Smooth(0.7F, 0.78F, Noise(x * 3.4F, y * 3.4F, 2, seed + 3));
                        return tint * (0.05F + std::max(0.0F, light)) * (1 - 0.5F * pit);
                    });
}

} // namespace

void DrawAsteroids(Canvas& canvas) {
    DrawSky(canvas, Hex(0x0A0714), Hex(0x191022));
    DrawNebula(canvas, 4, Hex(0xA2562C), 120, 0.75F);
    DrawStars(canvas, 11, 260);
    canvas.Glow({24, 18}, 190, Hex(0xFFD9A0), 0.8F);
    canvas.Disc({24, 18}, 9, Hex(0xFFF6DF));
    Random random(21);
    for (int i = 0; i < 70; ++i) {
        const float depth = static_cast<float>(i) / 70;
        const float x = random.Between(0, 320);
        const Point at{x, 30 + x * 0.42F + random.Between(-55, 55) * (0.4F + depth)};
        DrawRock(canvas, at, 1 + 11 * depth * depth * random.Between(0.4F, 1), 100 + static_cast<unsigned>(i),
                 Mix(Hex(0x6E5A52), Hex(0xC9A788), depth));
    }
    DrawRock(canvas, {212, 132}, 44, 7, Hex(0xD9B896));
    // The treasure map was right after all.
    canvas.Line({196, 112}, {212, 128}, 3, Hex(0xB01E14));
    canvas.Line({212, 112}, {196, 128}, 3, Hex(0xB01E14));
}

void DrawBlackHole(Canvas& canvas) {
    DrawSky(canvas, Hex(0x04050C), Hex(0x0A0612));
    DrawNebula(canvas, 31, Hex(0x3A2A78), 130, 0.5F);
    DrawStars(canvas, 32, 420);
    const Point c{160, 98};
    const auto disc = [&](Point p, float flatten, float inner, float outer) {
        const float x = (p.X - c.X), y = (p.Y - c.Y) / flatten, d = std::hypot(x, y);
        const float angle = std::atan2(y, x);
        const float swirl =
            Clouds(std::cos(angle + d * 0.03F) * 2, std::sin(angle + d * 0.03F) * 2, d * 0.11F, 35);
        const float body = Smooth(inner, inner + 8, d) * (1 - Smooth(outer * 0.45F, outer, d));
        const float approaching = 1.1F - 0.55F * x / outer;
        const Colour heat = Mix(Hex(0xFF7A1E), Hex(0xFFF0C8), Smooth(outer * 0.7F, inner, d));
        return heat * (body * approaching * (0.3F + 1.3F * Smooth(0.3F, 0.75F, swirl)));
    };
    canvas.Glow(c, 190, Hex(0xE0661C), 0.35F);
    // Light from behind is bent over and under the hole: the far disc shows as a ring around it.
    canvas.Paint([&](Point p, Colour below) { return below + disc(p, 0.93F, 38, 66) * 0.75F; });
    canvas.Disc(c, 38, Hex(0x000000));
    canvas.Arc(c, 39, 38, 0, Turn, 1.6F, Hex(0xFFE6B4), 0.9F);
    canvas.Paint([&](Point p, Colour below) {
        const Colour light = disc(p, 0.17F, 47, 150);
        return std::hypot(p.X - c.X, p.Y - c.Y) < 38 && p.Y < c.Y ? below : below + light * 1.15F;
    });
    Random random(39);
    for (int i = 0; i < 14; ++i)
        DrawRock(canvas, {random.Between(10, 110), random.Between(120, 190)}, random.Between(1, 3.5F),
                 300 + static_cast<unsigned>(i), Hex(0xB88A66));
}

void DrawComet(Canvas& canvas) {
    DrawSky(canvas, Hex(0x03060F), Hex(0x0B1730));
    DrawStars(canvas, 51, 340);
    const Point head{92, 122};
    const auto tail = [&](float angle, float spread, Colour light, float strength, std::uint32_t seed) {
        canvas.Paint([=](Point p, Colour below) {
            const float dx = p.X - head.X, dy = p.Y - head.Y;
            const float along = dx * std::cos(angle) + dy * std::sin(angle);
            const float across = dy * std::cos(angle) - dx * std::sin(angle);
            const float breadth = 4 + std::max(0.0F, along) * spread;
            const float streak = 0.4F + 0.9F * Clouds(across / breadth * 5, along / 90, 0, seed, 4);
            const float fade = Smooth(-5, 6, along) * std::exp(-std::max(0.0F, along) / 120);
            return below +
                   light * (strength * fade * streak * std::exp(-across * across / (breadth * breadth)));
        });
    };
    tail(-0.52F, 0.23F, Hex(0xF5E3B6), 0.75F, 53);
    tail(-0.36F, 0.1F, Hex(0x5AB8FF), 1.0F, 55);
    canvas.Glow(head, 46, Hex(0xBDEBFF), 1.1F);
    canvas.Glow(head, 14, Hex(0xFFFFFF), 1.6F);
    // Only the top of this world shows; turned on its side it shows seas there, not the polar ice.
    const Surface world = LivingWorld(58, Hex(0x1E4E8C), Hex(0x4E7A3A), Hex(0xFFFFFF));
    const Surface turned = [&](Direction n) { return world({n.X * 2, n.Z, n.Y * 2}); };
    DrawPlanet(canvas, {{210, 420}, 250, {0.35F, -0.6F, 0.1F}, turned, Hex(0x6FB4FF)});
}

void DrawVeilNebula(Canvas& canvas) {
    DrawSky(canvas, Hex(0x05030C), Hex(0x0A0A1E));
    DrawNebula(canvas, 71, Hex(0x2B6BD8), 150, 1.0F);
    DrawNebula(canvas, 75, Hex(0xE0357E), 110, 1.0F);
    DrawNebula(canvas, 79, Hex(0xFFB25A), 70, 0.55F);
    DrawStars(canvas, 72, 420);
    canvas.Paint([](Point p, Colour below) {
        const float warp = Clouds(p.X / 60, p.Y / 60, 1, 81) * 60;
        const float dust = Clouds((p.X + warp) / 46, p.Y / 110, 0, 83, 6);
        return below * (1 - 0.7F * Smooth(0.54F, 0.74F, dust));
    });
    for (const Point star : {Point{96, 62}, {214, 108}, {248, 44}, {60, 150}}) {
        canvas.Glow(star, 34, Hex(0xCFE4FF), 0.9F);
        canvas.Line({star.X - 13, star.Y}, {star.X + 13, star.Y}, 0.7F, Hex(0xFFFFFF), 0.6F);
        canvas.Line({star.X, star.Y - 13}, {star.X, star.Y + 13}, 0.7F, Hex(0xFFFFFF), 0.6F);
        canvas.Disc(star, 1.8F, Hex(0xFFFFFF));
    }
}

void DrawRingedWorld(Canvas& canvas) {
    DrawSky(canvas, Hex(0x05070F), Hex(0x120B1E));
    DrawNebula(canvas, 91, Hex(0x4A2E8A), 140, 0.6F);
    DrawStars(canvas, 92, 380);
    const Planet giant{
        {150, 104}, 54, {-0.62F, -0.5F, 0.6F}, GasGiant(93, Hex(0xF6DDB0), Hex(0xA8663C), 7), Hex(0xFFD9A0)};
    DrawRing(canvas, giant, -0.32F, Hex(0xE6CDA4), false);
    DrawPlanet(canvas, giant);
    DrawRing(canvas, giant, -0.32F, Hex(0xE6CDA4), true);
    DrawPlanet(canvas,
               {{276, 42}, 14, giant.Light, BarrenWorld(95, Hex(0xD6DCE4), Hex(0x6A7484)), Hex(0x000000)});
    // The second moon is perfectly smooth, which is what worries people.
    DrawPlanet(canvas, {{48, 160}, 10, giant.Light, [](Direction) { return Hex(0xA8E0D0); }, Hex(0x62D8C0)});
}

void DrawSupernova(Canvas& canvas) {
    DrawSky(canvas, Hex(0x060310), Hex(0x0C0618));
    DrawStars(canvas, 111, 380);
    const Point c{168, 88};
    canvas.Paint([&](Point p, Colour below) {
        const float x = p.X - c.X, y = p.Y - c.Y, d = std::max(1.0F, std::hypot(x, y));
        const float rays = Clouds(x / d * 5, y / d * 5, 0, 113, 5);
        const float shreds = Clouds(x / 26, y / 26, d / 40, 115, 6);
        const float shell = std::exp(-std::pow((d - 66 - 34 * (rays - 0.5F)) / (13 + 16 * shreds), 2.0F));
        const Colour gas = Mix(Hex(0xFF3C5A), Hex(0x46C8FF), Smooth(0.35F, 0.65F, shreds));
        const float core = std::exp(-d / 22);
        const float beam = std::pow(rays, 3.0F) * std::exp(-d / 70) * 2.6F;
        return below + gas * (shell * (0.5F + shreds) * 1.1F) + Hex(0xFFC06A) * beam +
               Hex(0xFFF3DC) * (core * 1.6F);
    });
    for (const float angle : {0.1F, 1.67F, 3.24F, 4.81F}) {
        const Point tip{c.X + std::cos(angle) * 130, c.Y + std::sin(angle) * 130};
        canvas.Polygon({{c.X + std::sin(angle) * 1.6F, c.Y - std::cos(angle) * 1.6F},
                        tip,
                        {c.X - std::sin(angle) * 1.6F, c.Y + std::cos(angle) * 1.6F}},
                       Hex(0xFFF6E4), 0.55F);
    }
    canvas.Glow(c, 40, Hex(0xFFFFFF), 1.4F);
    DrawHills(canvas, 117, 186, 14, 46, Hex(0x0A0712), Hex(0x000000));
    for (const float x : {92.0F, 101.0F, 232.0F}) {
        canvas.Disc({x, 176}, 2.4F, Hex(0x08050C));
        canvas.Polygon({{x - 3.4F, 190}, {x - 2.4F, 178}, {x + 2.4F, 178}, {x + 3.4F, 190}}, Hex(0x08050C));
    }
}

void DrawWhale(Canvas& canvas) {
    DrawSky(canvas, Hex(0x041022), Hex(0x0A2A44));
    DrawNebula(canvas, 131, Hex(0x2AA8B8), 130, 0.9F);
    DrawNebula(canvas, 137, Hex(0x7A4AD0), 90, 0.55F);
    DrawStars(canvas, 132, 300);
    const auto back = [](float t) { return 96 - 34 * std::sin(t * 2.55F) * (1 - 0.25F * t) + 26 * t * t; };
    const auto belly = [](float t) {
        return 96 + 36 * std::pow(std::sin(t * 2.9F), 0.8F) * (1 - 0.6F * t) + 24 * t * t;
    };
    std::vector<Point> body;
    for (float t = 0; t <= 1; t += 0.02F)
        body.push_back({58 + 176 * t, back(t)});
    for (const Point tail : {Point{262, 84}, {284, 78}, {272, 104}, {286, 138}, {262, 128}})
        body.push_back(tail);
    for (float t = 1; t >= 0; t -= 0.02F)
        body.push_back({58 + 176 * t, belly(t)});
    canvas.Glow({150, 100}, 150, Hex(0x52D6E6), 0.45F);
    canvas.PaintPolygon(body, [&](Point p, Colour) {
        const float t = (p.X - 58) / 176, depth = (p.Y - back(t)) / std::max(1.0F, belly(t) - back(t));
        const float mottle = Clouds(p.X / 16, p.Y / 16, 0, 139);
        const float stars = Smooth(0.86F, 0.93F, Noise(p.X / 2.2F, p.Y / 2.2F, 0, 141));
        return Mix(Hex(0x1C5C86), Hex(0x06182E), Smooth(0, 0.9F, depth)) * (0.7F + 0.6F * mottle) +
               Hex(0xA8F4FF) * (stars * 0.7F) + Hex(0x58D8F0) * (0.6F * (1 - Smooth(0, 0.14F, depth)));
    });
    for (float i = 0; i < 6; ++i)
        canvas.Arc({96 + i * 1.5F, 84 + i * 5}, 40 - i * 2, 30, 1.2F, 2.6F, 0.8F, Hex(0x7FDCEC), 0.5F);
    canvas.Polygon({{122, 124}, {150, 120}, {146, 158}, {134, 164}}, Hex(0x0E3450));
    canvas.Disc({84, 92}, 2.4F, Hex(0x02060C));
    canvas.Disc({83.4F, 91.4F}, 0.9F, Hex(0xE8FFFF));
    DrawShip(canvas, {60, 34}, 5, 0.25F, Hex(0xC8D4E0), Hex(0xFFB25A));
}

} // namespace velmora
