#include "Cosmos.h"
#include "Scenes.h"

#include <cmath>
#include <numbers>

namespace velmora {

namespace {

constexpr float Turn = 2 * std::numbers::pi_v<float>;

Point OnEllipse(Point c, float radiusX, float radiusY, float angle) {
    return {c.X + radiusX * std::cos(angle), c.Y + radiusY * std::sin(angle)};
}

/// A sail of metal cloth on a mast, bellied by the light of the star behind it.
void DrawSail(Canvas& canvas, Point foot, float height, float belly, Colour cloth) {
    std::vector<Point> sail;
    for (float t = 0; t <= 1.01F; t += 0.1F)
        sail.push_back({foot.X + belly * std::sin(t * Turn / 2), foot.Y - height * t});
    sail.push_back({foot.X - belly * 0.25F, foot.Y - height});
    sail.push_back({foot.X - belly * 0.25F, foot.Y});
    canvas.Polygon(sail, cloth);
    canvas.Line(foot, {foot.X, foot.Y - height * 1.15F}, 1, Hex(0x120404));
    for (float t = 0.25F; t < 0.9F; t += 0.25F)
        canvas.Line({foot.X - belly * 0.25F, foot.Y - height * t},
                    {foot.X + belly * std::sin(t * Turn / 2), foot.Y - height * t}, 0.5F, Hex(0x120404),
                    0.6F);
}

void DrawCorsair(Canvas& canvas, Point at, float size, Colour hull, Colour cloth) {
    const auto place = [&](const std::vector<Point>& corners) { return Placed(corners, at, size, -0.06F); };
    for (const float mast : {-0.6F, 0.0F, 0.5F})
        DrawSail(canvas, place({{mast, -0.1F}})[0], size * (0.85F - std::abs(mast) * 0.4F), size * 0.26F,
                 cloth);
    canvas.Polygon(place({{-1.05F, -0.3F},
                          {-0.75F, -0.3F},
                          {-0.68F, -0.1F},
                          {0.7F, -0.1F},
                          {1.35F, -0.32F},
                          {0.85F, 0.12F},
                          {0.5F, 0.26F},
                          {-0.8F, 0.26F}}),
                   hull);
    for (float x = -0.6F; x < 0.7F; x += 0.2F)
        canvas.Disc(place({{x, 0.04F}})[0], size * 0.028F, Hex(0xFFB040));
}

void DrawSkull(Canvas& canvas, Point c, float r, Colour bone, Colour hole) {
    canvas.Line({c.X - r * 1.5F, c.Y + r * 0.3F}, {c.X + r * 1.5F, c.Y + r * 1.5F}, r * 0.3F, bone);
    canvas.Line({c.X + r * 1.5F, c.Y + r * 0.3F}, {c.X - r * 1.5F, c.Y + r * 1.5F}, r * 0.3F, bone);
    canvas.Disc(c, r, bone);
    canvas.Box({c.X - r * 0.55F, c.Y + r * 0.5F}, {c.X + r * 0.55F, c.Y + r * 1.3F}, bone);
    canvas.Disc({c.X - r * 0.4F, c.Y}, r * 0.27F, hole);
    canvas.Disc({c.X + r * 0.4F, c.Y}, r * 0.27F, hole);
    canvas.Polygon(
        {{c.X, c.Y + r * 0.3F}, {c.X - r * 0.14F, c.Y + r * 0.58F}, {c.X + r * 0.14F, c.Y + r * 0.58F}},
        hole);
}

/// A spoked wheel seen at a slant, with lit windows along its rim.
void DrawWheel(Canvas& canvas, Point c, float radiusX, float radiusY, float thickness) {
    for (float a = 0.3F; a < Turn; a += Turn / 6)
        canvas.Line(c, OnEllipse(c, radiusX, radiusY, a), thickness * 0.3F, Hex(0x5C6674));
    canvas.Arc(c, radiusX, radiusY, 0, Turn, thickness, Hex(0x8C98A8));
    canvas.Arc({c.X, c.Y - thickness * 0.25F}, radiusX, radiusY, Turn / 2, Turn, thickness * 0.45F,
               Hex(0xD2DCE8));
    canvas.Arc({c.X, c.Y + thickness * 0.35F}, radiusX, radiusY, 0, Turn / 2, thickness * 0.35F,
               Hex(0x3C4452));
    for (float a = 0; a < Turn; a += Turn / 64)
        canvas.Disc(OnEllipse(c, radiusX, radiusY, a), thickness * 0.11F, Hex(0xFFE08A), 0.9F);
}

void DrawPanel(Canvas& canvas, Point from, Point to) {
    canvas.PaintBox(from, to, [](Point p, Colour) {
        const bool seam = std::fmod(p.X, 6.0F) < 0.7F || std::fmod(p.Y, 6.0F) < 0.7F;
        return seam ? Hex(0x9FB4D8) : Mix(Hex(0x16306C), Hex(0x3460B8), Noise(p.X / 6, p.Y / 6, 0, 5));
    });
}

/// Draws one line of a plan together with its mirror image above the keel line.
void MirrorLine(Canvas& canvas, float keel, Point a, Point b) {
    canvas.Line({a.X, keel - a.Y}, {b.X, keel - b.Y}, 1, Hex(0xFFFFFF));
    canvas.Line({a.X, keel + a.Y}, {b.X, keel + b.Y}, 1, Hex(0xFFFFFF));
}

void DrawGrid(Canvas& canvas) {
    for (float x = 20.5F; x < 320; x += 20)
        for (float y = 0.5F; y < 200; y += 4)
            canvas.Box({x - 0.5F, y - 0.5F}, {x + 0.5F, y + 0.5F}, Hex(0xFFFFFF));
    for (float y = 20.5F; y < 200; y += 20)
        for (float x = 0.5F; x < 320; x += 4)
            canvas.Box({x - 0.5F, y - 0.5F}, {x + 0.5F, y + 0.5F}, Hex(0xFFFFFF));
}

/// The length of the ship and the title block below the plan.
void DrawDimensions(Canvas& canvas) {
    canvas.Box({30, 160}, {295, 161}, Hex(0xFFFFFF));
    for (const float x : {30.0F, 295.0F})
        canvas.Line({x, 152}, {x, 169}, 1, Hex(0xFFFFFF));
    canvas.Polygon({{30, 160.5F}, {38, 157}, {38, 164}}, Hex(0xFFFFFF));
    canvas.Polygon({{295, 160.5F}, {287, 157}, {287, 164}}, Hex(0xFFFFFF));
    canvas.Box({216, 174}, {314, 194}, Hex(0xFFFFFF));
    canvas.Box({217, 175}, {313, 193}, Hex(0x000000));
    // The lettering of the title block is too small to read, as on every plan.
    Random random(5);
    for (float y = 179; y < 191; y += 5)
        for (float x = 221; x < 308; x += random.Between(3, 9))
            canvas.Box({x, y}, {x + 2, y + 2}, Hex(0xFFFFFF));
}

std::vector<Point> OnDerelict(const std::vector<Point>& corners) {
    return Placed(corners, {150, 108}, 74, 0.16F);
}

void DrawDeadWindows(Canvas& canvas) {
    // All her windows are dark but two. Somebody is at home.
    Random random(157);
    for (float x = -1.4F; x < -0.2F; x += 0.09F)
        canvas.Disc(OnDerelict({{x, -0.06F + random.Between(-0.01F, 0.01F)}})[0], 1, Hex(0x1E342C));
    for (const float x : {-0.96F, -0.87F}) {
        canvas.Glow(OnDerelict({{x, -0.06F}})[0], 8, Hex(0xFFB84A), 0.8F);
        canvas.Disc(OnDerelict({{x, -0.06F}})[0], 1.1F, Hex(0xFFD98A));
    }
}

void DrawDebris(Canvas& canvas) {
    Random random(158);
    for (int i = 0; i < 46; ++i) {
        const Point p = OnDerelict({{random.Between(-0.1F, 1.3F), random.Between(-0.9F, 0.9F)}})[0];
        canvas.Polygon(Placed({{-1, -0.4F}, {0.4F, -0.8F}, {1, 0.3F}, {-0.3F, 0.8F}}, p,
                              random.Between(0.6F, 2.6F), random.Between(0, 6)),
                       Hex(0x060C0A));
    }
}

} // namespace

void DrawBlueprint(Canvas& canvas) {
    DrawGrid(canvas);
    const float keel = 86;
    const std::vector<Point> plan{{30, 10},  {46, 22},  {120, 26}, {132, 50}, {186, 58},
                                  {196, 30}, {240, 24}, {286, 6},  {294, 0}};
    std::vector<Point> outline;
    outline.reserve(plan.size() * 2);
    for (const Point& p : plan)
        outline.push_back({p.X, keel - p.Y});
    for (auto p = plan.rbegin(); p != plan.rend(); ++p)
        outline.push_back({p->X, keel + p->Y});
    canvas.Polygon(outline, Hex(0x000000));
    for (std::size_t i = 0; i + 1 < plan.size(); ++i)
        MirrorLine(canvas, keel, plan[i], plan[i + 1]);
    canvas.Line({30, keel - 10}, {30, keel + 10}, 1, Hex(0xFFFFFF));
    for (const float x : {60.0F, 88.0F, 116.0F, 204.0F, 230.0F})
        MirrorLine(canvas, keel, {x, 6}, {x, x < 120 ? 23.0F : 25.0F});
    MirrorLine(canvas, keel, {46, 6}, {262, 6});
    canvas.Arc({160, keel}, 22, 22, 0, Turn, 1, Hex(0xFFFFFF));
    canvas.Arc({160, keel}, 12, 12, 0, Turn, 1, Hex(0xFFFFFF));
    canvas.Arc({262, keel}, 9, 9, 0, Turn, 1, Hex(0xFFFFFF));
    for (const float y : {-18.0F, 0.0F, 18.0F})
        canvas.Polygon({{30, keel + y * 0.5F - 3},
                        {14, keel + y * 0.5F - 5},
                        {14, keel + y * 0.5F + 5},
                        {30, keel + y * 0.5F + 3}},
                       Hex(0xFFFFFF));
    DrawDimensions(canvas);
}

void DrawDerelict(Canvas& canvas) {
    DrawSky(canvas, Hex(0x06110E), Hex(0x0E2420));
    DrawNebula(canvas, 151, Hex(0x3FA07A), 120, 0.9F);
    DrawStars(canvas, 152, 300);
    canvas.Glow({214, 66}, 150, Hex(0x9FE8B8), 0.75F);
    const Colour dark = Hex(0x060C0A), plate = Hex(0x14241E);
    const auto place = OnDerelict;
    for (float x = -0.1F; x < 0.75F; x += 0.13F) {
        const Point top = place({{x, -0.3F}})[0], low = place({{x + 0.05F, 0.3F}})[0];
        canvas.Line(top, low, 2.2F, dark);
    }
    canvas.Line(place({{-0.3F, -0.3F}})[0], place({{0.86F, -0.26F}})[0], 3, dark);
    canvas.Line(place({{-0.3F, 0.3F}})[0], place({{0.8F, 0.28F}})[0], 3, dark);
    canvas.Polygon(place({{0.6F, -0.34F},
                          {1.1F, -0.26F},
                          {1.62F, 0.04F},
                          {1.2F, 0.26F},
                          {0.74F, 0.32F},
                          {0.86F, 0.1F},
                          {0.66F, -0.04F},
                          {0.8F, -0.18F}}),
                   dark);
    canvas.Polygon(place({{-1.5F, -0.36F},
                          {-0.1F, -0.4F},
                          {0.06F, -0.22F},
                          {-0.12F, -0.1F},
                          {0.02F, 0.06F},
                          {-0.16F, 0.2F},
                          {-0.02F, 0.38F},
                          {-1.5F, 0.36F},
                          {-1.64F, 0}}),
                   dark);
    canvas.Polygon(place({{-1.46F, -0.32F}, {-0.14F, -0.36F}, {-0.06F, -0.28F}, {-1.46F, -0.22F}}), plate);
    canvas.Polygon(place({{-1.1F, -0.38F}, {-0.96F, -0.86F}, {-0.74F, -0.86F}, {-0.7F, -0.38F}}), dark);
    canvas.Line(place({{-0.86F, -0.86F}})[0], place({{-0.8F, -1.2F}})[0], 1, dark);
    DrawDeadWindows(canvas);
    DrawDebris(canvas);
}

void DrawFleet(Canvas& canvas) {
    DrawSky(canvas, Hex(0x060812), Hex(0x0E1226));
    DrawNebula(canvas, 171, Hex(0x6A3A86), 130, 0.7F);
    DrawStars(canvas, 172, 320);
    DrawPlanet(canvas, {{96, 296},
                        172,
                        {0.5F, -0.62F, 0.45F},
                        [](Direction n) {
                            static const Surface world =
                                LivingWorld(175, Hex(0x1C5A7A), Hex(0x8A6A3E), Hex(0xFFF4E4));
                            return world({n.X, n.Z, n.Y});
                        },
                        Hex(0x7CC4FF)});
    // Twelve ships, as the story has it: the flagship in front, eleven behind it in two lines.
    for (int i = 5; i >= 1; --i) {
        const float f = static_cast<float>(i);
        DrawShip(canvas, {222 - f * 33, 74 - f * 10.5F}, 15 - f * 1.7F, -0.12F, Hex(0xB8C4D4), Hex(0x4FB0FF));
        DrawShip(canvas, {222 - f * 30, 80 + f * 17}, 15 - f * 0.7F, -0.12F, Hex(0xC8D2E0), Hex(0x4FB0FF));
    }
    DrawShip(canvas, {64, 80}, 9, -0.12F, Hex(0xB8C4D4), Hex(0x4FB0FF));
    DrawShip(canvas, {240, 74}, 34, -0.12F, Hex(0xE4EAF2), Hex(0x66C4FF));
}

void DrawPirates(Canvas& canvas) {
    DrawSky(canvas, Hex(0x1A0408), Hex(0x42100C));
    DrawNebula(canvas, 191, Hex(0xC23A1A), 110, 0.7F);
    DrawStars(canvas, 192, 160);
    canvas.Glow({206, 92}, 190, Hex(0xFF6A2A), 0.9F);
    canvas.PaintBox({126, 12}, {286, 172}, [](Point p, Colour below) {
        const float d = std::hypot(p.X - 206, p.Y - 92) / 66;
        const float boil = Clouds(p.X / 15, p.Y / 15, 0, 195, 5);
        return Mix(Mix(Hex(0xFFE9A0), Hex(0xFF6A20), d * 0.75F + boil * 0.35F), below,
                   Smooth(0.97F, 1.03F, d));
    });
    DrawCorsair(canvas, {262, 84}, 17, Hex(0x2A0A08), Hex(0x4A1410));
    DrawCorsair(canvas, {196, 70}, 24, Hex(0x200706), Hex(0x3C100C));
    DrawCorsair(canvas, {118, 128}, 62, Hex(0x120404), Hex(0x280A08));
    DrawSkull(canvas, {121, 84}, 7.5F, Hex(0xF0D8B0), Hex(0x280A08));
}

void DrawStation(Canvas& canvas) {
    DrawSky(canvas, Hex(0x040812), Hex(0x0A1830));
    DrawNebula(canvas, 211, Hex(0x244A8A), 150, 0.6F);
    DrawStars(canvas, 212, 320);
    DrawPlanet(canvas, {{232, 330},
                        206,
                        {-0.4F, -0.7F, 0.4F},
                        [](Direction n) {
                            static const Surface world =
                                LivingWorld(214, Hex(0x1A5AA0), Hex(0x6E7E3A), Hex(0xFFFFFF));
                            return world({n.X * 1.4F, n.Z, n.Y * 1.4F});
                        },
                        Hex(0x74BCFF)});
    const Point hub{146, 84};
    DrawPanel(canvas, {20, 76}, {70, 92});
    DrawPanel(canvas, {222, 76}, {272, 92});
    canvas.Box({66, 82}, {226, 86}, Hex(0x7A8698));
    DrawWheel(canvas, hub, 62, 27, 9);
    canvas.Box({138, 36}, {154, 136}, Hex(0x6E7A8C));
    canvas.Box({138, 36}, {144, 136}, Hex(0xB8C4D4));
    canvas.Ellipse({146, 36}, 14, 6, Hex(0xA4B0C0));
    canvas.Ellipse({146, 136}, 11, 5, Hex(0x4E5866));
    canvas.Disc(hub, 15, Hex(0x909CAE));
    canvas.Disc({hub.X - 3, hub.Y - 3}, 11, Hex(0xC6D0DE));
    canvas.Line({146, 36}, {146, 12}, 1, Hex(0xC6D0DE));
    canvas.Glow({146, 12}, 9, Hex(0xFF4030), 1.4F);
    DrawShip(canvas, {252, 34}, 8, 2.7F, Hex(0xE0E6EE), Hex(0xFFB25A));
    DrawShip(canvas, {52, 140}, 10, -0.7F, Hex(0xE0E6EE), Hex(0x66C4FF));
}

void DrawStarbase(Canvas& canvas) {
    DrawSky(canvas, Hex(0x05060E), Hex(0x121026));
    DrawNebula(canvas, 231, Hex(0x6A4A1E), 110, 0.8F);
    DrawStars(canvas, 232, 220);
    const Point c{120, 100};
    canvas.Glow(c, 110, Hex(0x5A8AD8), 0.35F);
    for (const float side : {-1.0F, 1.0F}) {
        canvas.Line(c, {c.X + side * 84, c.Y + 18}, 5, Hex(0x5E6A7A));
        canvas.Line({c.X, c.Y - 1.5F}, {c.X + side * 84, c.Y + 16.5F}, 1.5F, Hex(0xA8B4C4));
        canvas.Ellipse({c.X + side * 88, c.Y + 19}, 14, 18, Hex(0x4C5666));
        canvas.Ellipse({c.X + side * 88 - 3, c.Y + 16}, 9, 13, Hex(0x98A4B6));
        canvas.Glow({c.X + side * 88, c.Y + 40}, 12, Hex(0x5AC8FF), 1.1F);
    }
    DrawWheel(canvas, {c.X, c.Y + 10}, 60, 20, 9);
    DrawWheel(canvas, {c.X, c.Y - 24}, 34, 11, 6);
    canvas.PaintPolygon(
        {{110, 22}, {130, 22}, {138, 92}, {132, 176}, {108, 176}, {102, 92}}, [](Point p, Colour) {
            const bool window =
                std::fmod(p.Y, 7.0F) < 1.6F && Noise(p.X / 2.4F, std::floor(p.Y / 7), 0, 239) > 0.55F;
            const Colour metal =
                Mix(Hex(0xD8E0EA), Hex(0x3E4858), Smooth(102, 138, p.X + Noise(p.X / 5, p.Y / 4, 0, 3) * 4));
            return window ? Hex(0xFFDF90) : metal;
        });
    canvas.Polygon({{116, 22}, {120, 2}, {124, 22}}, Hex(0xB4C0D0));
    canvas.Glow({120, 4}, 8, Hex(0xFF4838), 1.3F);
    canvas.Glow({120, 178}, 22, Hex(0x5AC8FF), 1.2F);
    DrawShip(canvas, {196, 46}, 9, 2.9F, Hex(0xE6ECF2), Hex(0xFFB25A));
}

} // namespace velmora
