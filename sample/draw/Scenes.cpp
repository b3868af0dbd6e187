#include "Scenes.h"

namespace velmora {

const std::vector<Scene>& Scenes() {
    // Every kind of picture that the game shows occurs, so that a viewer can be tried on the sample alone.
    static const std::vector<Scene> scenes{
        {"Asteroids", 320, 200, PcxKind::Palette, DrawAsteroids},
        {"BlackHole", 320, 200, PcxKind::Palette, DrawBlackHole},
        {"Blueprint", 320, 200, PcxKind::Mono, DrawBlueprint},
        {"Colony", 320, 200, PcxKind::Palette, DrawColony},
        {"Comet", 320, 200, PcxKind::Palette, DrawComet},
        {"Comms", 320, 200, PcxKind::Sixteen, DrawComms},
        {"Council", 320, 200, PcxKind::Palette, DrawCouncil},
        {"Derelict", 320, 200, PcxKind::Palette, DrawDerelict},
        {"Fleet", 320, 200, PcxKind::Palette, DrawFleet},
        {"IceWorld", 320, 200, PcxKind::Palette, DrawIceWorld},
        {"Jungle", 320, 200, PcxKind::Palette, DrawJungle},
        {"Laboratory", 320, 200, PcxKind::Palette, DrawLaboratory},
        {"Market", 320, 200, PcxKind::Palette, DrawMarket},
        {"Monument", 320, 200, PcxKind::Palette, DrawMonument},
        {"Nebula", 320, 200, PcxKind::TrueColour, DrawVeilNebula},
        {"Ocean", 320, 200, PcxKind::Palette, DrawOcean},
        {"Pirates", 320, 200, PcxKind::Palette, DrawPirates},
        {"Poster", 320, 200, PcxKind::Palette, DrawPoster},
        {"RingedWorld", 320, 200, PcxKind::Palette, DrawRingedWorld},
        {"Robot", 320, 200, PcxKind::Palette, DrawRobot},
        {"Starbase_Med01", 240, 200, PcxKind::Palette, DrawStarbase},
        {"Station", 320, 200, PcxKind::Palette, DrawStation},
        {"Supernova", 320, 200, PcxKind::TrueColour, DrawSupernova},
        {"Treasury", 320, 200, PcxKind::Palette, DrawTreasury},
        {"UnitedPlanets_small", 160, 120, PcxKind::Palette, DrawEmblem},
        {"Volcano", 320, 200, PcxKind::Palette, DrawVolcano},
        {"Whale", 320, 200, PcxKind::Palette, DrawWhale},
    };
    return scenes;
}

} // namespace velmora
