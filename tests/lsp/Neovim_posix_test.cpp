#include "SoundRecords.h"
#include "TempFolder.h"
#include "cli/CliRun.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace velmora {
namespace {

/// What the manual tells people to put into their init.lua.
std::string LinesForNeovim() {
    std::string lines;
    bool met = false;
    for (const std::string& line : Split(ReadProjectFile("docs/velwriter.md"), "\n"))
        if (line.starts_with("Neovim "))
            met = true;
        else if (met && line.starts_with("    "))
            lines += line + '\n';
        else if (met && !lines.empty())
            break;
    return lines;
}

TEST(Neovim, IsServedFromOpeningToStopping) {
    TempFolder game;
    game.Write("GFX/P.pcx", "picture");
    clsEvent raid = SoundEvent("Raid");
    raid.GoodAttribute = 1;
    game.Write("Data/A.event", raid.GenerateEventString(false));
    raid.Title = "Caf\xE9";
    game.Write("Data/B.event", raid.GenerateEventString(false));
    raid.EventName = "Other";
    raid.Title = "\x93Ow\x94"; // no letters in Latin-1
    game.Write("Data/Latin1.event", raid.GenerateEventString(false));
    game.Write("Data/A.SBModule", "//\r\nSBMOD 1 Ring\r\nENDSBMOD\r\n");
    game.Write("Data/B.SBModule", "SBMOD 2 Choir\r\n  Module_Requirement  \"Ring\"\r\nENDSBMOD\r\n");

    game.Write("init.lua", LinesForNeovim());
    const std::string line =
        "cd '" + game.Host().string() +
        "' && export HOME=$PWD VELMORA_SAID=$PWD/said && "
        "PATH=$(dirname '" VELWRITER "'):$PATH nvim -u init.lua -i NONE --headless -n -c "
        "'luafile " VELMORA_SAMPLE "/../../tests/lsp/neovim.lua' >nvim.log 2>&1 </dev/null";
    EXPECT_EQ(std::system(line.c_str()), 0);
    EXPECT_EQ(game.Read("said"),
              "encoding cp1252 dos\n"
              "opened 42:duplicate-event\n"
              "renamed \n"
              "typed 5:unrecognized-token\n"
              "hover GoodAttribute 1: Max Pop Growth / Affects this planet's Pop Growth\n"
              "symbols Peace\n"
              "formatted   Title              \"Caf\xC3\xA9\"\n"
              "wrong 4:wrong-encoding\n"
              "refused This text is not formatted: it holds a character that the game's code page "
              "lacks. Open the file in that code page (see velwriter.md, lsp), or take the "
              "character out\n"
              "led to A.SBModule SBMOD 1 Ring\n"
              "stopped\n")
        << game.Read("nvim.log");
    raid.EventName = "Peace";
    raid.Title = "Caf\xE9";
    EXPECT_EQ(game.Read("Data/B.event"), raid.GenerateEventString(false)) << "bytes of the code page, CR LF";
}

} // namespace
} // namespace velmora
