#pragma once

#include "Canvas.h"

namespace velmora {

/// A direction or a place on the unit sphere: x to the right, y down, z towards the viewer.
struct Direction {
    float X = 0, Y = 0, Z = 1;
};

/// A ball in space: its surface colour by place on the unit sphere, lit from one side.
struct Planet {
    Point Centre;
    float Radius = 10;
    Direction Light{-0.6F, -0.5F, 0.62F};
    std::function<Colour(Direction)> Surface;
    Colour Air;
};

using Surface = std::function<Colour(Direction)>;

Surface GasGiant(std::uint32_t seed, Colour light, Colour dark, float bands);
Surface LivingWorld(std::uint32_t seed, Colour sea, Colour land, Colour cloud);
Surface BarrenWorld(std::uint32_t seed, Colour light, Colour dark);

void DrawPlanet(Canvas& canvas, const Planet& planet);
/// One half of a ring around a planet: the far half before the planet is drawn, the near half after it.
void DrawRing(Canvas& canvas, const Planet& planet, float tilt, Colour colour, bool nearHalf);
void DrawSky(Canvas& canvas, Colour top, Colour bottom);
void DrawStars(Canvas& canvas, std::uint32_t seed, int count, float lowest = 1e9F);
void DrawNebula(Canvas& canvas, std::uint32_t seed, Colour light, float scale, float strength);
/// A jagged line of hills from edge to edge, everything below it filled.
void DrawHills(Canvas& canvas, std::uint32_t seed, float base, float height, float scale, Colour top,
               Colour bottom);

/// A ship seen from the side, its nose at +x; scale in pixels for a hull of length 2, angle in radians.
void DrawShip(Canvas& canvas, Point at, float scale, float angle, Colour hull, Colour engine);

/// Corners given for the unit hull, turned, scaled and moved to their place.
std::vector<Point> Placed(const std::vector<Point>& corners, Point at, float scale, float angle);

} // namespace velmora
