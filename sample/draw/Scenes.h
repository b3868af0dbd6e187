#pragma once

#include "Canvas.h"
#include "PcxWriter.h"

#include <vector>

namespace velmora {

/// One picture of the sample game: its file name without extension, its size in pixels and how it is drawn.
struct Scene {
    const char* Name;
    int Width, Height;
    PcxKind Kind;
    void (*Draw)(Canvas&);
};

/// Every picture of the sample game.
const std::vector<Scene>& Scenes();

// Deep space
void DrawAsteroids(Canvas& canvas);
void DrawBlackHole(Canvas& canvas);
void DrawComet(Canvas& canvas);
void DrawVeilNebula(Canvas& canvas);
void DrawRingedWorld(Canvas& canvas);
void DrawSupernova(Canvas& canvas);
void DrawWhale(Canvas& canvas);

// Ships and stations
void DrawBlueprint(Canvas& canvas);
void DrawDerelict(Canvas& canvas);
void DrawFleet(Canvas& canvas);
void DrawPirates(Canvas& canvas);
void DrawStation(Canvas& canvas);
void DrawStarbase(Canvas& canvas);

// Landscapes
void DrawColony(Canvas& canvas);
void DrawIceWorld(Canvas& canvas);
void DrawJungle(Canvas& canvas);
void DrawMonument(Canvas& canvas);
void DrawOcean(Canvas& canvas);
void DrawVolcano(Canvas& canvas);
void DrawComms(Canvas& canvas);

// Halls, streets and emblems
void DrawCouncil(Canvas& canvas);
void DrawLaboratory(Canvas& canvas);
void DrawMarket(Canvas& canvas);
void DrawPoster(Canvas& canvas);
void DrawRobot(Canvas& canvas);
void DrawTreasury(Canvas& canvas);
void DrawEmblem(Canvas& canvas);

} // namespace velmora
