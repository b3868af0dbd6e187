#include "Cosmos.h"
#include "Scenes.h"

#include <cmath>
#include <numbers>

namespace velmora {

namespace {

constexpr float Turn = 2 * std::numbers::pi_v<float>;

/// A glass dome with lit houses inside.
void DrawDome(Canvas& canvas, Point foot, float radius, std::uint32_t seed) {
    Random random(seed);
    canvas.Glow({foot.X, foot.Y - radius * 0.3F}, radius * 1.9F, Hex(0xFFC878), 0.35F);
    for (float x = -0.7F; x < 0.65F; x += 0.16F) {
        const float top = foot.Y - radius * random.Between(0.2F, 0.75F * std::sqrt(1 - x * x));
        const float left = foot.X + x * radius;
        canvas.Box({left, top}, {left + radius * 0.13F, foot.Y}, Hex(0x2C2A3E));
        for (float y = top + 2; y < foot.Y - 2; y += 3)
            if (random.Between(0, 1) > 0.35F)
                canvas.Box({left + radius * 0.03F, y}, {left + radius * 0.1F, y + 1.5F}, Hex(0xFFD98A));
    }
    canvas.PaintBox(
        {foot.X - radius, foot.Y - radius}, {foot.X + radius, foot.Y}, [=](Point p, Colour below) {
            const float x = (p.X - foot.X) / radius, y = (p.Y - foot.Y) / radius, d = std::hypot(x, y);
            if (d > 1)
                return below;
            const float glint = std::exp(-std::pow(std::hypot(x + 0.45F, y + 0.62F) / 0.2F, 2.0F));
            const bool rib = std::fmod(std::abs(std::atan2(x, -y)) + 0.1F, 0.42F) < 0.03F;
            return Mix(below, Hex(0x9FDCFF), 0.1F + 0.55F * std::pow(d, 6.0F) + (rib ? 0.18F : 0.0F)) +
                   Hex(0xFFFFFF) * (glint * 0.7F);
        });
    canvas.Box({foot.X - radius * 1.04F, foot.Y - 1}, {foot.X + radius * 1.04F, foot.Y + 3}, Hex(0x4A4658));
}

void DrawMushroom(Canvas& canvas, Point foot, float height, float cap, Colour colour) {
    const Point top{foot.X + height * 0.08F, foot.Y - height};
    canvas.PaintPolygon({{foot.X - cap * 0.16F, foot.Y},
                         {top.X - cap * 0.1F, top.Y},
                         {top.X + cap * 0.1F, top.Y},
                         {foot.X + cap * 0.16F, foot.Y}},
                        [=](Point p, Colour) {
                            return Mix(Hex(0xD8E8D0), Hex(0x1E3A34),
                                       Smooth(foot.X - cap * 0.2F, foot.X + cap * 0.3F, p.X));
                        });
    canvas.Glow({top.X, top.Y}, cap * 2, colour, 0.45F);
    canvas.PaintBox(
        {top.X - cap, top.Y - cap * 0.75F}, {top.X + cap, top.Y + cap * 0.2F}, [=](Point p, Colour below) {
            const float x = (p.X - top.X) / cap, y = (p.Y - top.Y) / cap;
            const bool inside = y < 0 ? std::hypot(x, y / 0.72F) < 1 : std::hypot(x, y / 0.16F) < 1;
            if (!inside)
                return below;
            const float spot = Smooth(0.68F, 0.76F, Noise(x * 4 + cap, y * 5, 0, 263));
            const float light = y > 0 ? 0.35F : 0.55F - 0.5F * x - 0.5F * y;
            return Mix(colour, Hex(0xFFFFFF), spot * 0.8F) * light + colour * 0.15F;
        });
}

void DrawFern(Canvas& canvas, Point foot, float size, float lean, Colour colour) {
    for (float t = 0; t < 1; t += 0.05F) {
        const Point at{foot.X + lean * size * t * t, foot.Y - size * t};
        const float leaf = size * 0.42F * (1 - t);
        canvas.Polygon({at, {at.X - leaf, at.Y - leaf * 0.35F}, {at.X, at.Y - 1.5F}}, colour);
        canvas.Polygon({at, {at.X + leaf, at.Y - leaf * 0.45F}, {at.X, at.Y - 1.5F}}, colour);
    }
}

/// Water from a line downwards: the sky above mirrored, broken by waves.
void DrawWater(Canvas& canvas, float shore, Colour deep, Point sun, Colour glitter, std::uint32_t seed) {
    canvas.PaintBox({0, shore}, {canvas.Width(), canvas.Height()}, [=](Point p, Colour) {
        const float depth = (p.Y - shore) / 60;
        const float wave = Clouds(p.X / (14 + 50 * depth), p.Y / (2 + 6 * depth), 0, seed, 4);
        const float path = std::exp(-std::pow((p.X - sun.X) / (16 + depth * 34), 2.0F));
        const float sparkle = Smooth(0.5F, 0.62F, wave) * path;
        return Mix(deep, deep * 2.2F, Smooth(0.35F, 0.7F, wave) * 0.6F) + glitter * (sparkle * 0.9F);
    });
}

/// A beam of light from a lamp, fading with distance.
void DrawBeam(Canvas& canvas, Point lamp, float angle, float spread, float reach) {
    canvas.Paint([=](Point p, Colour below) {
        const float dx = p.X - lamp.X, dy = p.Y - lamp.Y;
        const float along = dx * std::cos(angle) + dy * std::sin(angle);
        if (along <= 0)
            return below;
        const float across = std::abs(dy * std::cos(angle) - dx * std::sin(angle)) / (2 + along * spread);
        return below + Hex(0xFFE9B0) * (0.6F * std::exp(-across * across * 3) * std::exp(-along / reach));
    });
}

} // namespace

void DrawColony(Canvas& canvas) {
    DrawSky(canvas, Hex(0x1A1440), Hex(0xE07A5A));
    DrawStars(canvas, 251, 150, 80);
    const Planet giant{
        {236, 58}, 40, {-0.6F, 0.3F, 0.6F}, GasGiant(253, Hex(0xF2C89A), Hex(0x8A5A78), 6), Hex(0xE0906A)};
    DrawRing(canvas, giant, 0.3F, Hex(0xE8C8B0), false);
    DrawPlanet(canvas, giant);
    DrawRing(canvas, giant, 0.3F, Hex(0xE8C8B0), true);
    canvas.Glow({40, 132}, 120, Hex(0xFFD08A), 0.6F);
    DrawHills(canvas, 255, 132, 34, 60, Hex(0x7A4468), Hex(0x5A3058));
    DrawHills(canvas, 257, 148, 22, 40, Hex(0x4E2A50), Hex(0x2C1836));
    DrawDome(canvas, {214, 162}, 26, 259);
    DrawDome(canvas, {66, 170}, 34, 261);
    DrawHills(canvas, 263, 172, 9, 70, Hex(0x2E1A34), Hex(0x0C0614));
    DrawDome(canvas, {140, 184}, 46, 265);
    canvas.Line({280, 178}, {280, 128}, 2.5F, Hex(0x1A1020));
    canvas.Glow({280, 128}, 10, Hex(0xFF4030), 1.2F);
}

void DrawIceWorld(Canvas& canvas) {
    DrawSky(canvas, Hex(0x040A1E), Hex(0x123A52));
    DrawStars(canvas, 271, 260, 120);
    canvas.Paint([](Point p, Colour below) {
        Colour light;
        for (const float fold : {0.0F, 1.0F, 2.0F}) {
            const float hem = 84 - fold * 20 + 40 * (Clouds(p.X / 85, fold * 7, 0, 273, 3) - 0.5F);
            const float up = hem - p.Y;
            const float ray = 0.3F + 0.9F * Clouds(p.X / 5, fold, 0, 275, 3);
            const float curtain = Smooth(-4, 4, up) * std::exp(-std::max(0.0F, up) / 26) * ray;
            light = light + Mix(Hex(0x38F0A0), Hex(0x9A50F0), Smooth(6, 60, up)) * (curtain * 0.75F);
        }
        return below + light;
    });
    DrawHills(canvas, 277, 122, 44, 44, Hex(0xB4D8EC), Hex(0x3A6A90));
    DrawHills(canvas, 279, 138, 20, 30, Hex(0x6A9CBC), Hex(0x2A5274));
    DrawWater(canvas, 146, Hex(0x0E3048), {150, 0}, Hex(0x5AF0B4), 281);
    for (const Point at : {Point{40, 160}, {246, 166}, {286, 152}}) {
        canvas.Polygon({{at.X - 20, at.Y + 4},
                        {at.X - 8, at.Y - 16},
                        {at.X + 4, at.Y - 8},
                        {at.X + 12, at.Y - 22},
                        {at.X + 22, at.Y + 4}},
                       Hex(0xD8F0FA));
        canvas.Polygon({{at.X + 2, at.Y + 4}, {at.X + 12, at.Y - 22}, {at.X + 22, at.Y + 4}}, Hex(0x7AB0D0));
    }
    DrawHills(canvas, 283, 188, 10, 40, Hex(0xE8F6FC), Hex(0x8AB4D0));
    // The drill tower of the crew that knocked.
    canvas.Polygon({{150, 182}, {162, 128}, {164, 128}, {176, 182}, {172, 182}, {163, 140}, {154, 182}},
                   Hex(0x16242E));
    for (float y = 140; y < 182; y += 9)
        canvas.Line({163 - (y - 128) * 0.22F, y}, {163 + (y - 128) * 0.22F, y}, 1, Hex(0x16242E));
    canvas.Glow({163, 128}, 14, Hex(0xFFB84A), 1.3F);
}

void DrawJungle(Canvas& canvas) {
    DrawSky(canvas, Hex(0x0A2430), Hex(0x4A8A78));
    canvas.Glow({226, 34}, 130, Hex(0xE8F0B0), 0.6F);
    for (int layer = 0; layer < 3; ++layer) {
        const float depth = static_cast<float>(layer) / 2;
        Random random(291 + static_cast<unsigned>(layer));
        for (float x = -10; x < 330; x += random.Between(16, 38)) {
            const float sway = random.Between(-6, 6);
            const Colour bark = Mix(Hex(0x3E7466), Hex(0x0E2A26), depth);
            canvas.Line({x, 200}, {x + sway, 0}, 3 + depth * 5, bark);
            canvas.Ellipse({x + sway, 4 + depth * 6}, 22 + random.Between(0, 14), 13 + depth * 10, bark);
        }
        canvas.Paint([=](Point p, Colour below) {
            const float mist = Clouds(p.X / 70, p.Y / 22, depth * 5, 297, 4) * Smooth(60, 190, p.Y);
            return Mix(below, Hex(0x8AD0B8), mist * 0.5F * (1 - depth * 0.7F));
        });
    }
    DrawMushroom(canvas, {58, 186}, 92, 42, Hex(0xE05A8A));
    DrawMushroom(canvas, {240, 180}, 70, 34, Hex(0x5AC8E0));
    DrawMushroom(canvas, {152, 190}, 44, 26, Hex(0xF0A040));
    DrawMushroom(canvas, {104, 194}, 26, 14, Hex(0x9A70F0));
    DrawMushroom(canvas, {286, 194}, 34, 17, Hex(0xE05A8A));
    Random random(299);
    for (int i = 0; i < 26; ++i)
        DrawFern(canvas, {random.Between(0, 320), 202}, random.Between(14, 36), random.Between(-0.5F, 0.5F),
                 Mix(Hex(0x0A201A), Hex(0x1A4030), random.Between(0, 1)));
    for (int i = 0; i < 30; ++i) {
        const Point at{random.Between(0, 320), random.Between(50, 185)};
        canvas.Glow(at, 5, Hex(0xD8FFB0), 0.8F);
    }
}

void DrawMonument(Canvas& canvas) {
    DrawSky(canvas, Hex(0x0A0E24), Hex(0x2E3A66));
    DrawNebula(canvas, 311, Hex(0x5A4AA8), 120, 0.6F);
    DrawStars(canvas, 312, 340, 160);
    const Point lamp{206, 46};
    DrawBeam(canvas, lamp, 3.02F, 0.1F, 150);
    DrawBeam(canvas, lamp, -0.12F, 0.1F, 150);
    DrawHills(canvas, 315, 150, 26, 50, Hex(0x2A2E4E), Hex(0x161A30));
    canvas.PaintPolygon({{198, 58}, {214, 58}, {226, 166}, {186, 166}}, [](Point p, Colour) {
        const bool band = std::fmod(p.Y + 2, 28.0F) < 14;
        const float side = Smooth(188, 228, p.X);
        return Mix(band ? Hex(0xF0E8DC) : Hex(0xB8483C), Hex(0x1A1A30), side);
    });
    canvas.Box({194, 56}, {218, 59}, Hex(0x20243A));
    canvas.Box({200, 40}, {212, 56}, Hex(0xFFF2C0));
    canvas.Polygon({{197, 40}, {206, 30}, {215, 40}}, Hex(0x20243A));
    canvas.Glow(lamp, 46, Hex(0xFFE9B0), 1.3F);
    for (const float x : {30.0F, 66.0F, 102.0F}) {
        const float tall = 36 + x * 0.22F;
        canvas.Polygon({{x, 176}, {x + 2, 176 - tall}, {x + 15, 172 - tall}, {x + 18, 176}}, Hex(0x1C2038));
        canvas.Polygon({{x + 10, 176}, {x + 11, 173.5F - tall}, {x + 15, 172 - tall}, {x + 18, 176}},
                       Hex(0x4A5078));
    }
    DrawHills(canvas, 317, 178, 16, 60, Hex(0x14162A), Hex(0x05060E));
    // Somebody asked for a bench.
    canvas.Box({152, 171}, {172, 173}, Hex(0x05060E));
    canvas.Line({154, 172}, {154, 182}, 1.2F, Hex(0x05060E));
    canvas.Line({170, 172}, {170, 182}, 1.2F, Hex(0x05060E));
}

void DrawOcean(Canvas& canvas) {
    DrawSky(canvas, Hex(0x1E3A78), Hex(0xFFC890));
    canvas.Paint([](Point p, Colour below) {
        const float cloud = Clouds(p.X / 90, p.Y / 16, 0, 331, 5);
        return Mix(below, Hex(0xFFE4C8), 0.75F * Smooth(0.52F, 0.7F, cloud) * Smooth(10, 90, p.Y));
    });
    DrawPlanet(
        canvas,
        {{72, 50}, 27, {0.7F, 0.4F, 0.4F}, BarrenWorld(333, Hex(0xF4E8E0), Hex(0xA08AA0)), Hex(0x6A7AB0)});
    DrawPlanet(
        canvas,
        {{124, 28}, 10, {0.7F, 0.4F, 0.4F}, BarrenWorld(335, Hex(0xFFD8B0), Hex(0xA87860)), Hex(0x6A7AB0)});
    canvas.Glow({228, 116}, 120, Hex(0xFFE9A8), 0.9F);
    canvas.Disc({228, 112}, 13, Hex(0xFFF8DC));
    DrawWater(canvas, 118, Hex(0x12406A), {228, 0}, Hex(0xFFD890), 337);
    canvas.Polygon({{40, 148}, {132, 148}, {144, 156}, {28, 156}}, Hex(0x5A4A48));
    canvas.Box({28, 156}, {144, 160}, Hex(0x2A2430));
    canvas.Polygon({{62, 148}, {86, 86}, {110, 148}}, Hex(0xD8DEE8));
    canvas.Polygon({{86, 86}, {110, 148}, {90, 148}}, Hex(0x8A94A8));
    canvas.Disc({84, 118}, 5, Hex(0x1E3A58));
    canvas.Glow({126, 146}, 10, Hex(0xFF5040), 1.0F);
    // The court has come up to look.
    for (const Point at : {Point{196, 170}, {238, 178}, {276, 166}}) {
        for (const float side : {-1.0F, 1.0F}) {
            canvas.Arc({at.X + side * 9, at.Y - 2}, 6, 7, side < 0 ? Turn * 0.5F : Turn * 0.75F,
                       side < 0 ? Turn * 0.8F : Turn * 1.0F, 2.4F, Hex(0xC0402C));
            canvas.Disc({at.X + side * 3, at.Y - 9}, 1.6F, Hex(0xFFF0E0));
            canvas.Disc({at.X + side * 3, at.Y - 9}, 0.7F, Hex(0x000000));
        }
        canvas.Ellipse(at, 11, 6, Hex(0xD8543A));
        canvas.Ellipse({at.X, at.Y - 2}, 8, 3, Hex(0xF08A60));
    }
}

void DrawVolcano(Canvas& canvas) {
    DrawSky(canvas, Hex(0x14060A), Hex(0x7A2412));
    canvas.Paint([](Point p, Colour below) {
        const float ash = Clouds(p.X / 46, p.Y / 30, 0, 351, 6);
        const float plume =
            std::exp(-std::pow((p.X - 158 - (70 - p.Y) * 0.5F) / (26 + (100 - p.Y) * 0.55F), 2.0F));
        const float thick = Smooth(0.36F, 0.6F, ash) * (0.25F + plume * 0.8F) * Smooth(130, 60, p.Y);
        return Mix(below, Mix(Hex(0x2A1414), Hex(0xD0562A), Smooth(10, 90, p.Y) * plume * ash), thick);
    });
    canvas.Glow({160, 74}, 90, Hex(0xFF7A20), 1.1F);
    DrawHills(canvas, 353, 160, 24, 40, Hex(0x34120E), Hex(0x1E0A0A));
    canvas.PaintPolygon(
        {{44, 186}, {138, 76}, {148, 82}, {160, 78}, {172, 83}, {182, 76}, {276, 186}}, [](Point p, Colour) {
            const float rock = Clouds(p.X / 9, p.Y / 9, 0, 355, 5);
            const float down = (p.Y - 76) / 110;
            const float flow = std::abs(p.X - 160 - 30 * (Clouds(p.Y / 26, 0, 0, 357, 3) - 0.5F) * down * 3);
            const float side = std::abs(p.X - 160 + down * 46 - 20 * (Clouds(p.Y / 20, 9, 0, 359, 3) - 0.5F));
            const float lava = std::max(Smooth(5 + down * 3, 1, flow), Smooth(3.5F, 0.5F, side));
            const Colour stone = Mix(Hex(0x1C0C0C), Hex(0x5A2A20), rock * Smooth(260, 100, p.X));
            return Mix(stone, Mix(Hex(0xFF5A10), Hex(0xFFE080), lava * rock), lava) +
                   Hex(0xFF5A10) * (0.25F * Smooth(26, 0, flow));
        });
    DrawHills(canvas, 361, 184, 12, 50, Hex(0x140808), Hex(0x060304));
    Random random(363);
    for (int i = 0; i < 70; ++i) {
        const float angle = random.Between(-2.5F, -0.64F), reach = random.Between(6, 62);
        const Point at{160 + std::cos(angle) * reach, 78 + std::sin(angle) * reach};
        canvas.Glow(at, 3.4F, Hex(0xFFB040), 1.0F);
    }
}

void DrawComms(Canvas& canvas) {
    DrawSky(canvas, Hex(0x0A1040), Hex(0xE06A50));
    DrawStars(canvas, 371, 160, 110);
    DrawHills(canvas, 373, 158, 26, 60, Hex(0x3A2050), Hex(0x201030));
    for (const float ring : {26.0F, 42.0F, 58.0F, 74.0F})
        canvas.Arc({212, 62}, ring, ring, -0.95F, 0.15F, 1.6F, Hex(0xFFE08A), 0.9F - ring / 110);
    canvas.Polygon({{138, 186}, {158, 112}, {172, 112}, {192, 186}, {182, 186}, {165, 126}, {148, 186}},
                   Hex(0x100818));
    for (float y = 132; y < 184; y += 13)
        canvas.Line({165 - (y - 106) * 0.34F, y + 6}, {165 + (y - 106) * 0.34F, y - 4}, 1.6F, Hex(0x100818));
    std::vector<Point> dish;
    for (float t = -1; t <= 1.01F; t += 0.1F)
        dish.push_back({t, 0.55F * (1 - t * t)});
    canvas.Polygon(Placed(dish, {176, 94}, 62, 0.72F), Hex(0xE8E0E8));
    for (Point& p : dish)
        p = {p.X * 0.94F, p.Y * 0.5F};
    canvas.Polygon(Placed(dish, {176, 94}, 62, 0.72F), Hex(0x6A5A80));
    const auto arm = [](Point p) { return Placed({p}, {176, 94}, 62, 0.72F)[0]; };
    canvas.Line(arm({-0.7F, 0.1F}), arm({0, -0.72F}), 1.6F, Hex(0x100818));
    canvas.Line(arm({0.7F, 0.1F}), arm({0, -0.72F}), 1.6F, Hex(0x100818));
    canvas.Disc(arm({0, -0.74F}), 5, Hex(0xFF5040));
    DrawHills(canvas, 377, 186, 8, 40, Hex(0x100818), Hex(0x08040C));
    canvas.Box({44, 166}, {84, 192}, Hex(0x100818));
    canvas.Box({52, 172}, {60, 180}, Hex(0xFFE08A));
    canvas.Box({68, 172}, {76, 180}, Hex(0xFFE08A));
}

} // namespace velmora
