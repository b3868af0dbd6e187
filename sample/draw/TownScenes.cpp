#include "Cosmos.h"
#include "Scenes.h"

#include <cmath>
#include <numbers>

namespace velmora {

namespace {

constexpr float Turn = 2 * std::numbers::pi_v<float>;

/// A round-bottomed flask half full of something that glows.
void DrawFlask(Canvas& canvas, Point foot, float radius, Colour brew) {
    const Point c{foot.X, foot.Y - radius};
    canvas.Glow(c, radius * 2.4F, brew, 0.5F);
    canvas.Box({c.X - radius * 0.28F, c.Y - radius * 2}, {c.X + radius * 0.28F, c.Y}, Hex(0xBFE0F0), 0.35F);
    canvas.Box({c.X - radius * 0.4F, c.Y - radius * 2.1F}, {c.X + radius * 0.4F, c.Y - radius * 1.95F},
               Hex(0xE8F6FC), 0.8F);
    canvas.PaintBox({c.X - radius, c.Y - radius}, {c.X + radius, c.Y + radius}, [=](Point p, Colour below) {
        const float x = (p.X - c.X) / radius, y = (p.Y - c.Y) / radius, d = std::hypot(x, y);
        if (d > 1)
            return below;
        const float bubble = Smooth(0.78F, 0.84F, Noise(x * 5, y * 5, radius, 401));
        const Colour inside =
            y > -0.1F ? brew * (0.55F + 0.5F * y + 0.7F * bubble) : Mix(below, Hex(0xBFE0F0), 0.2F);
        const float glint = std::exp(-std::pow(std::hypot(x + 0.4F, y + 0.45F) / 0.18F, 2.0F));
        return Mix(inside, Hex(0xDFF4FF), 0.6F * std::pow(d, 8.0F)) + Hex(0xFFFFFF) * (glint * 0.8F);
    });
}

/// A person seen from behind, in a hood, as everybody is who attends the council.
void DrawDelegate(Canvas& canvas, Point seat, float size, Colour robe) {
    canvas.Ellipse({seat.X, seat.Y}, size * 0.95F, size * 0.8F, robe);
    canvas.Box({seat.X - size * 0.95F, seat.Y}, {seat.X + size * 0.95F, seat.Y + size}, robe);
    canvas.Disc({seat.X, seat.Y - size * 0.95F}, size * 0.52F, robe * 1.25F);
}

void DrawTier(Canvas& canvas, float level, float seats, std::uint32_t seed) {
    const Point c{160, 96};
    const float radiusX = 90 + level * 42, radiusY = 26 + level * 26, size = 3.4F + level * 2.5F;
    Random random(seed);
    for (float i = 0; i < seats; ++i) {
        const float angle = 0.25F + (Turn / 2 - 0.5F) * (i + 0.5F) / seats;
        const Colour robes[] = {Hex(0x6A3040), Hex(0x30506A), Hex(0x3A5A3A), Hex(0x6A5A30), Hex(0x4A3A6A)};
        const Colour robe = robes[static_cast<int>(random.Between(0, 4.99F))];
        DrawDelegate(canvas, {c.X + radiusX * std::cos(angle), c.Y + radiusY * std::sin(angle)}, size,
                     Mix(robe, Hex(0x0A0814), level * 0.24F));
    }
    canvas.Arc({c.X, c.Y + size}, radiusX, radiusY, 0.02F, Turn / 2 - 0.02F, size * 1.2F,
               Mix(Hex(0x5A4A66), Hex(0x140E1C), level * 0.3F));
    canvas.Arc({c.X, c.Y + size * 0.4F}, radiusX, radiusY, 0.02F, Turn / 2 - 0.02F, 1.1F,
               Mix(Hex(0xD8B070), Hex(0x3A2A20), level * 0.28F));
}

void DrawAwning(Canvas& canvas, float left, float right, float top, Colour stripe) {
    canvas.PaintPolygon(
        {{left + 6, top}, {right - 6, top}, {right, top + 18}, {left, top + 18}}, [=](Point p, Colour) {
            const bool odd = static_cast<int>((p.X - left) / (right - left) * 9) % 2 != 0;
            return (odd ? stripe : Hex(0xF4E6C8)) * (0.6F + 0.4F * Smooth(top + 18, top, p.Y));
        });
    for (float i = 0; i < 9; ++i)
        canvas.Disc({left + (i + 0.5F) * (right - left) / 9, top + 18}, (right - left) / 18,
                    static_cast<int>(i) % 2 ? stripe * 0.6F : Hex(0xF4E6C8) * 0.6F);
}

void DrawShopper(Canvas& canvas, Point foot, float size, Colour colour) {
    canvas.Polygon({{foot.X - size * 0.36F, foot.Y},
                    {foot.X - size * 0.2F, foot.Y - size * 0.75F},
                    {foot.X + size * 0.2F, foot.Y - size * 0.75F},
                    {foot.X + size * 0.36F, foot.Y}},
                   colour);
    canvas.Disc({foot.X, foot.Y - size * 0.86F}, size * 0.16F, colour * 1.4F);
}

/// Coins lying flat on one another, seen from a little above.
void DrawCoins(Canvas& canvas, Point foot, float radius, int count, std::uint32_t seed) {
    Random random(seed);
    for (int i = 0; i < count; ++i) {
        const Point c{foot.X + random.Between(-1.2F, 1.2F), foot.Y - static_cast<float>(i) * radius * 0.24F};
        canvas.Ellipse({c.X, c.Y + radius * 0.2F}, radius, radius * 0.34F, Hex(0x7A4E10));
        canvas.PaintBox({c.X - radius, c.Y - radius * 0.34F}, {c.X + radius, c.Y + radius * 0.34F},
                        [=](Point p, Colour below) {
                            const float x = (p.X - c.X) / radius, y = (p.Y - c.Y) / radius / 0.34F,
                                        d = std::hypot(x, y);
                            if (d > 1)
                                return below;
                            const float shine = std::exp(-std::pow((x + y * 0.5F + 0.35F) / 0.28F, 2.0F));
                            const float rim = d > 0.82F ? 0.2F : 0.0F;
                            return Mix(Hex(0xC8861E), Hex(0xFFE890), shine + rim);
                        });
    }
}

void DrawSparkle(Canvas& canvas, Point c, float size) {
    canvas.Glow(c, size, Hex(0xFFF4C0), 1);
    canvas.Polygon(
        {{c.X - size, c.Y}, {c.X, c.Y - size * 0.12F}, {c.X + size, c.Y}, {c.X, c.Y + size * 0.12F}},
        Hex(0xFFFFFF), 0.9F);
    canvas.Polygon(
        {{c.X, c.Y - size}, {c.X - size * 0.12F, c.Y}, {c.X, c.Y + size}, {c.X + size * 0.12F, c.Y}},
        Hex(0xFFFFFF), 0.9F);
}

std::vector<Point> Star(Point c, float outer, float inner, int points) {
    std::vector<Point> corners;
    for (int i = 0; i < points * 2; ++i) {
        const float angle = Turn * static_cast<float>(i) / static_cast<float>(points * 2) - Turn / 4,
                    radius = i % 2 ? inner : outer;
        corners.push_back({c.X + radius * std::cos(angle), c.Y + radius * std::sin(angle)});
    }
    return corners;
}

/// Metal with a soft light from the upper left, for parts of machines.
Colour Metal(Point p, Point c, float reach, Colour tint) {
    const float light = 0.75F - (p.X - c.X) / reach * 0.45F - (p.Y - c.Y) / reach * 0.35F;
    return tint * (light + 0.1F * (Noise(p.X / 2, p.Y * 1.5F, 0, 443) - 0.5F));
}

void DrawHouses(Canvas& canvas) {
    Random random(433);
    for (int row = 0; row < 2; ++row)
        for (float x = -10; x < 330; x += random.Between(16, 30)) {
            const float width = random.Between(12, 24),
                        top = random.Between(30, 96) + static_cast<float>(row) * 26;
            const Colour wall = row ? Hex(0x2A1E3C) : Hex(0x402A50);
            canvas.Box({x, top}, {x + width, 170}, wall);
            canvas.Ellipse({x + width / 2, top}, width / 2, random.Between(3, 12), wall);
            for (float y = top + 4; y < 140; y += 5)
                for (float w = x + 2; w < x + width - 2; w += 4)
                    if (random.Between(0, 1) > 0.6F)
                        canvas.Box({w, y}, {w + 1.8F, y + 2.4F}, row ? Hex(0xFFC870) : Hex(0xC88A6A));
        }
}

void DrawStalls(Canvas& canvas) {
    Random random(434);
    const Colour stripes[] = {Hex(0xC83A3A), Hex(0x2E7A8A), Hex(0xD88A2A), Hex(0x6A4A9A)};
    for (int i = 0; i < 4; ++i) {
        const float left = 6 + static_cast<float>(i) * 79;
        canvas.Box({left + 4, 134}, {left + 68, 172}, Hex(0x5A3A30));
        canvas.Glow({left + 36, 146}, 30, Hex(0xFFD080), 0.7F);
        for (float x = left + 9; x < left + 64; x += 7)
            canvas.Disc({x, 158}, random.Between(2, 3.6F),
                        Mix(stripes[(i + 1) % 4], Hex(0xFFE080), random.Between(0, 1)));
        canvas.Box({left + 4, 160}, {left + 68, 174}, Hex(0x7A5240));
        DrawAwning(canvas, left, left + 72, 116, stripes[i]);
    }
}

void DrawLanterns(Canvas& canvas) {
    for (float x = 0; x < 320; x += 16) {
        const float y = 98 + 10 * std::sin(x / 320 * Turn);
        canvas.Line({x, y - 4}, {x + 16, 98 + 10 * std::sin((x + 16) / 320 * Turn) - 4}, 0.7F, Hex(0x100818));
        canvas.Glow({x + 8, y}, 14, Hex(0xFFC060), 0.8F);
        canvas.Ellipse({x + 8, y}, 3, 4, Hex(0xFFE8B0));
    }
}

void DrawEye(Canvas& canvas, Point eye) {
    canvas.Disc(eye, 18, Hex(0x3A4250));
    canvas.Disc(eye, 15, Hex(0x0A0E14));
    canvas.Glow(eye, 30, Hex(0x50D8FF), 0.9F);
    canvas.Disc(eye, 8.5F, Hex(0x50D8FF));
    canvas.Disc(eye, 4, Hex(0xE8FFFF));
    canvas.Disc({eye.X - 4, eye.Y - 5}, 2, Hex(0xFFFFFF));
}

} // namespace

void DrawCouncil(Canvas& canvas) {
    DrawSky(canvas, Hex(0x1C1428), Hex(0x0A0812));
    canvas.PaintPolygon({{104, 92}, {104, 40}, {128, 14}, {160, 4}, {192, 14}, {216, 40}, {216, 92}},
                        [](Point p, Colour) { return Mix(Hex(0x0A1438), Hex(0x3A5AA8), p.Y / 92); });
    Random random(405);
    for (int i = 0; i < 60; ++i)
        canvas.Disc({random.Between(108, 212), random.Between(40, 90)}, random.Between(0.3F, 0.9F),
                    Hex(0xE8F0FF), 0.9F);
    DrawPlanet(canvas, {{166, 50},
                        26,
                        {-0.6F, -0.4F, 0.6F},
                        LivingWorld(407, Hex(0x1E5AA0), Hex(0x5A8A3E), Hex(0xFFFFFF)),
                        Hex(0x6FB4FF)});
    for (const float x : {104.0F, 132.0F, 160.0F, 188.0F, 216.0F})
        canvas.Line({x, 8 + std::abs(x - 160) * 0.6F}, {x, 94}, 2.2F, Hex(0x2E2438));
    for (float side = -1; side <= 1; side += 2)
        for (float i = 0; i < 3; ++i) {
            const float x = 160 + side * (80 + i * 34);
            canvas.PaintBox({x - 7, 0}, {x + 7, 150}, [=](Point p, Colour) {
                return Mix(Hex(0x5A4A6A), Hex(0x16101E), Smooth(x - 8, x + 7, side < 0 ? p.X : 2 * x - p.X));
            });
            canvas.Polygon({{x - 5, 18}, {x + 5, 18}, {x + 5, 62}, {x, 70}, {x - 5, 62}},
                           i == 1 ? Hex(0x2E5A8A) : Hex(0x8A2E3E));
            canvas.Polygon(Star({x, 38}, 4, 1.8F, 5), Hex(0xE8C878));
        }
    canvas.Ellipse({160, 112}, 74, 20, Hex(0x2A2036));
    canvas.Polygon({{138, 0}, {182, 0}, {204, 114}, {116, 114}}, Hex(0xBFD8FF), 0.12F);
    canvas.Ellipse({160, 112}, 40, 10, Hex(0x6A88B8), 0.5F);
    canvas.Glow({160, 104}, 60, Hex(0x9FC8FF), 0.4F);
    canvas.Polygon({{152, 112}, {155, 88}, {165, 88}, {168, 112}}, Hex(0xE8DCC8));
    canvas.Disc({160, 84}, 3.6F, Hex(0xF0D8B8));
    canvas.Box({148, 98}, {172, 101}, Hex(0x8A6A3A));
    for (float level = 0; level < 4; ++level)
        DrawTier(canvas, level, 15 - level * 1.5F, 411 + static_cast<unsigned>(level));
}

void DrawLaboratory(Canvas& canvas) {
    DrawSky(canvas, Hex(0x10202C), Hex(0x1C3440));
    canvas.Paint([](Point p, Colour below) {
        const bool joint = std::fmod(p.X, 40.0F) < 1 || std::fmod(p.Y, 34.0F) < 1;
        return joint ? below * 0.7F : below + Hex(0x3A6A7A) * (0.25F * Clouds(p.X / 20, p.Y / 20, 0, 421));
    });
    const Point atom{160, 62};
    canvas.Glow(atom, 110, Hex(0x50D8FF), 0.55F);
    for (float turn = 0; turn < 3; ++turn) {
        std::vector<Point> orbit;
        for (float a = 0; a < Turn; a += 0.05F)
            orbit.push_back(Placed({{std::cos(a), 0.32F * std::sin(a)}}, atom, 52, turn * Turn / 6)[0]);
        for (std::size_t i = 0; i < orbit.size(); ++i)
            canvas.Line(orbit[i], orbit[(i + 1) % orbit.size()], 1, Hex(0x7FE8FF), 0.9F);
        const Point electron = orbit[20 + static_cast<std::size_t>(turn) * 31];
        canvas.Glow(electron, 9, Hex(0xFFFFFF), 1);
        canvas.Disc(electron, 2.2F, Hex(0xE8FFFF));
    }
    canvas.Disc(atom, 6, Hex(0xFFD070));
    canvas.Disc({atom.X - 2, atom.Y - 2}, 3, Hex(0xFFF4D0));
    canvas.Polygon({{122, 150}, {148, 84}, {172, 84}, {198, 150}}, Hex(0x50D8FF), 0.13F);
    canvas.Ellipse({160, 150}, 40, 7, Hex(0x0E1A24));
    canvas.Ellipse({160, 148}, 34, 5, Hex(0x7FE8FF), 0.8F);
    canvas.Box({0, 152}, {320, 164}, Hex(0x8A9AA4));
    canvas.Box({0, 152}, {320, 154}, Hex(0xD8E4EA));
    canvas.Box({0, 164}, {320, 200}, Hex(0x24343E));
    for (float x = 14; x < 320; x += 62)
        canvas.Box({x, 170}, {x + 50, 196}, Hex(0x32464F));
    DrawFlask(canvas, {40, 152}, 19, Hex(0x5AE07A));
    DrawFlask(canvas, {88, 152}, 12, Hex(0xF05AA0));
    DrawFlask(canvas, {234, 152}, 14, Hex(0xFFB03A));
    DrawFlask(canvas, {284, 152}, 22, Hex(0x8A70FF));
}

void DrawMarket(Canvas& canvas) {
    DrawSky(canvas, Hex(0x140E30), Hex(0x6A3A5A));
    DrawStars(canvas, 431, 160, 90);
    DrawPlanet(
        canvas,
        {{256, 38}, 22, {-0.6F, -0.3F, 0.6F}, GasGiant(432, Hex(0xF4D0A0), Hex(0xB0705A), 6), Hex(0xF0B080)});
    DrawHouses(canvas);
    canvas.Box({0, 150}, {320, 200}, Hex(0x3A2638));
    canvas.Glow({160, 170}, 200, Hex(0xFFB060), 0.45F);
    DrawStalls(canvas);
    DrawLanterns(canvas);
    Random random(435);
    for (int i = 0; i < 17; ++i)
        DrawShopper(canvas, {random.Between(6, 314), random.Between(184, 200)}, random.Between(20, 30),
                    Mix(Hex(0x1A1024), Hex(0x3E2844), random.Between(0, 1)));
}

void DrawPoster(Canvas& canvas) {
    const Point c{112, 132};
    canvas.Paint([=](Point p, Colour) {
        const float angle = std::atan2(p.Y - c.Y, p.X - c.X);
        const bool ray = std::fmod(angle + Turn, Turn / 18) < Turn / 36;
        return (ray ? Hex(0xE0432C) : Hex(0xF2DFB4)) * (0.96F + 0.06F * Noise(p.X, p.Y, 0, 445));
    });
    canvas.Disc(c, 58, Hex(0x1C2A44));
    canvas.Arc(c, 58, 58, 0, Turn, 4, Hex(0xF2DFB4));
    const auto place = [](const std::vector<Point>& corners) {
        return Placed(corners, {190, 92}, 62, -0.72F);
    };
    canvas.Polygon(place({{-1.1F, -0.14F}, {-2.4F, -0.5F}, {-1.9F, 0}, {-2.4F, 0.5F}, {-1.1F, 0.14F}}),
                   Hex(0xF2A03C));
    canvas.Polygon(place({{-0.5F, -0.2F}, {-1.3F, -0.72F}, {-1.15F, -0.18F}}), Hex(0xE0432C));
    canvas.Polygon(place({{-0.5F, 0.2F}, {-1.3F, 0.72F}, {-1.15F, 0.18F}}), Hex(0x8A2018));
    canvas.Polygon(place({{-1.15F, -0.22F},
                          {0.4F, -0.3F},
                          {0.9F, -0.18F},
                          {1.4F, 0},
                          {0.9F, 0.18F},
                          {0.4F, 0.3F},
                          {-1.15F, 0.22F}}),
                   Hex(0x1C2A44));
    canvas.Polygon(place({{-1.15F, -0.22F}, {0.4F, -0.3F}, {0.9F, -0.18F}, {1.4F, 0}, {-1.15F, 0}}),
                   Hex(0x3C5482));
    canvas.Disc(place({{0.45F, 0}})[0], 9, Hex(0xF2DFB4));
    canvas.Disc(place({{0.45F, 0}})[0], 6, Hex(0x1C2A44));
    canvas.Polygon(Star({48, 44}, 26, 10.5F, 5), Hex(0x1C2A44));
    canvas.Polygon(Star({48, 44}, 20, 8, 5), Hex(0xF2DFB4));
    canvas.Box({0, 176}, {320, 200}, Hex(0x1C2A44));
    for (float x = 14; x < 310; x += 22)
        canvas.Polygon(Star({x, 188}, 6, 2.6F, 5), Hex(0xF2DFB4));
    canvas.Box({0, 174}, {320, 176}, Hex(0xF2A03C));
}

void DrawRobot(Canvas& canvas) {
    DrawSky(canvas, Hex(0x1A2438), Hex(0x3A2A3A));
    canvas.Paint([](Point p, Colour below) {
        const bool grid = std::fmod(p.X, 16.0F) < 0.6F || std::fmod(p.Y, 16.0F) < 0.6F;
        return grid ? below + Hex(0x2A4A6A) * 0.35F : below;
    });
    canvas.Glow({160, 90}, 150, Hex(0x4AA8D8), 0.5F);
    const auto metal = [&](const std::vector<Point>& corners, Point c, float reach, Colour tint) {
        canvas.PaintPolygon(corners, [=](Point p, Colour) { return Metal(p, c, reach, tint); });
    };
    metal({{72, 200}, {88, 158}, {128, 146}, {192, 146}, {232, 158}, {248, 200}}, {160, 176}, 90,
          Hex(0xA8623C));
    canvas.Box({138, 132}, {182, 150}, Hex(0x2A2E38));
    for (float y = 134; y < 148; y += 4)
        canvas.Box({138, y}, {182, y + 1.5F}, Hex(0x6A7484));
    metal({{104, 42}, {118, 28}, {202, 28}, {216, 42}, {216, 118}, {200, 138}, {120, 138}, {104, 118}},
          {160, 84}, 74, Hex(0xC8CED8));
    for (const float side : {-1.0F, 1.0F}) {
        metal({{160 + side * 56, 66}, {160 + side * 70, 70}, {160 + side * 70, 98}, {160 + side * 56, 102}},
              {160, 84}, 74, Hex(0x9A8A6A));
        DrawEye(canvas, {160 + side * 27, 74});
    }
    // One eyebrow up: he has been asked to work on a Saturday.
    canvas.Line({116, 52}, {148, 56}, 4, Hex(0x4A5260));
    canvas.Line({172, 50}, {204, 42}, 4, Hex(0x4A5260));
    canvas.Box({130, 108}, {190, 124}, Hex(0x1A1E26));
    for (float x = 134; x < 188; x += 8)
        canvas.Box({x, 110}, {x + 5, 122}, Hex(0xFFB84A), 0.5F + 0.5F * Noise(x, 0, 0, 447));
    canvas.Line({160, 28}, {160, 8}, 2.4F, Hex(0x6A7484));
    canvas.Glow({160, 8}, 16, Hex(0xFF5040), 1.2F);
    canvas.Disc({160, 8}, 4, Hex(0xFF7060));
    for (const Point rivet :
         {Point{112, 48}, {208, 48}, {112, 114}, {208, 114}, {104, 170}, {216, 170}, {124, 160}, {196, 160}})
        canvas.Disc(rivet, 2, Hex(0x4A5260));
    canvas.Disc({160, 178}, 11, Hex(0x2A2E38));
    canvas.Polygon(Star({160, 178}, 9, 4, 5), Hex(0xFFD070));
}

void DrawTreasury(Canvas& canvas) {
    DrawSky(canvas, Hex(0x1A1420), Hex(0x2E2018));
    const Point door{160, 84};
    canvas.Paint([=](Point p, Colour below) {
        const float x = p.X - door.X, y = p.Y - door.Y, d = std::hypot(x, y), angle = std::atan2(y, x);
        if (d > 88)
            return below + Hex(0x4A3A30) * (0.35F * Clouds(p.X / 30, p.Y / 8, 0, 451));
        const float sheen = 0.5F + 0.5F * std::cos(angle * 2 + 1.2F);
        const bool groove = std::abs(d - 78) < 1.2F || std::abs(d - 54) < 1.0F || std::abs(d - 24) < 1.0F;
        const Colour steel = Mix(Hex(0x3A4048), Hex(0xA8B0BA), sheen * (d > 78 ? 0.6F : 1.0F));
        return groove ? steel * 0.4F : steel * (0.85F + 0.15F * Noise(d * 1.5F, 0, 0, 453));
    });
    for (float i = 0; i < 16; ++i) {
        const float angle = Turn * i / 16;
        canvas.Disc({door.X + 66 * std::cos(angle), door.Y + 66 * std::sin(angle)}, 5, Hex(0x2A3038));
        canvas.Disc({door.X + 66 * std::cos(angle) - 1, door.Y + 66 * std::sin(angle) - 1}, 3.6F,
                    Hex(0xB8C0CA));
    }
    for (float i = 0; i < 3; ++i) {
        const float angle = Turn * i / 6 + 0.3F;
        const Point out{40 * std::cos(angle), 40 * std::sin(angle)};
        canvas.Line({door.X - out.X, door.Y - out.Y}, {door.X + out.X, door.Y + out.Y}, 5, Hex(0xB08A3A));
        canvas.Disc({door.X - out.X, door.Y - out.Y}, 5, Hex(0xE8C878));
        canvas.Disc({door.X + out.X, door.Y + out.Y}, 5, Hex(0xE8C878));
    }
    canvas.Disc(door, 10, Hex(0xE8C878));
    canvas.Disc(door, 5, Hex(0x6A4A18));
    canvas.Glow({160, 190}, 170, Hex(0xFFC050), 0.4F);
    const struct {
        float X, Y;
        int Count;
    } stacks[] = {{30, 160, 9}, {292, 162, 12}, {70, 166, 5}, {254, 168, 7}, {112, 176, 8}, {212, 178, 4},
                  {48, 186, 7}, {276, 188, 5},  {90, 192, 3}, {164, 190, 6}, {236, 194, 3}, {132, 196, 2}};
    std::uint32_t seed = 455;
    for (const auto& stack : stacks)
        DrawCoins(canvas, {stack.X, stack.Y}, 19, stack.Count, seed++);
    for (const Point at : {Point{22, 120}, {286, 106}, {118, 140}, {166, 164}, {222, 164}})
        DrawSparkle(canvas, at, 9);
}

void DrawEmblem(Canvas& canvas) {
    const Point c{80, 58};
    canvas.Paint([=](Point p, Colour) {
        return Mix(Hex(0x2E5AA8), Hex(0x0A1434), std::hypot(p.X - c.X, p.Y - c.Y) / 96);
    });
    DrawStars(canvas, 471, 70);
    for (const float side : {-1.0F, 1.0F})
        for (float t = 0; t < 1; t += 0.085F) {
            const float angle = Turn / 4 - side * (0.35F + t * 2.2F);
            const Point leaf{c.X + 46 * std::cos(angle), c.Y + 46 * std::sin(angle)};
            canvas.Polygon(
                Placed({{-1, 0}, {0, -0.34F}, {1.1F, 0}, {0, 0.34F}}, leaf, 6, angle - side * 1.1F),
                Hex(0xE8C878));
            canvas.Polygon(Placed({{-1, 0}, {0, -0.34F}, {1.1F, 0}, {0, 0.34F}},
                                  {leaf.X * 0.9F + c.X * 0.1F, leaf.Y * 0.9F + c.Y * 0.1F}, 5,
                                  angle - side * 2.0F),
                           Hex(0xB8923E));
        }
    canvas.Glow(c, 44, Hex(0x9FC8FF), 0.5F);
    canvas.Arc(c, 31, 31, 0, Turn, 1.2F, Hex(0xE8F0FF), 0.8F);
    const Colour worlds[] = {Hex(0x5AA8F0), Hex(0xE06A4A), Hex(0x6AC86A),
                             Hex(0xE8C05A), Hex(0xB07AE0), Hex(0x8AE0D8)};
    for (int i = 0; i < 6; ++i) {
        const float angle = Turn * static_cast<float>(i) / 6 - Turn / 4;
        const Colour world = worlds[i];
        DrawPlanet(canvas, {{c.X + 31 * std::cos(angle), c.Y + 31 * std::sin(angle)},
                            6.5F,
                            {-0.6F, -0.5F, 0.6F},
                            [=](Direction) { return world; },
                            Hex(0xFFFFFF) * 0.4F});
    }
    canvas.Polygon(Star(c, 18, 7, 8), Hex(0xFFF4D0));
    canvas.Polygon(Star(c, 11, 5, 8), Hex(0xFFC850));
    // The ribbon bears no words, since the members could not agree on a language.
    canvas.Polygon({{34, 106}, {126, 106}, {134, 112}, {126, 117}, {34, 117}, {26, 112}}, Hex(0x8A2E3E));
    canvas.Box({34, 108}, {126, 109}, Hex(0xE8C878));
    canvas.Box({34, 114}, {126, 115}, Hex(0xE8C878));
}

} // namespace velmora
