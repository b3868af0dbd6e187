#include "CliRun.h"
#include "GameFolder.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

TEST(StatsCommand, CountsWhatThereIs) {
    GameFolder game;
    clsEvent raid = SoundEvent("Raid");
    raid.EventType = 1;
    raid.MoralityWeight = 9; // counts as 5
    raid.GoodAttribute = raid.EvilAttribute = 104;
    raid.EvilOption = std::string(199, 'x') + "%";
    raid.Title.clear();
    clsEvent calm = SoundEvent("Calm");
    calm.GoodAttribute = 2;
    game.Write("Data/A.event", raid.GenerateEventString(false) + "Colour red\r\n");
    game.Write("Data/B.event", calm.GenerateEventString(false) + GameFolder::Event("Third"));
    game.Write("GFX/Unused.PCX", "");
    game.Write("GFX/notes.txt", "");
    const CliRun run("stats", game.Typed(), "--kind", "events");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Out, "events: 3\n"
                       "  Files\n         2  B.event\n         1  A.event\n"
                       "  Types\n         2  Colonial\n         1  Random\n"
                       "  Problems by rule\n         1  unrecognized-token\n         1  no-title\n"
                       "         1  option-length\n"
                       "  Texts longer than recommended\n         0  Description, longest 11 of 540\n"
                       "         0  Good Option, longest 4 of 200\n"
                       "         0  Neutral Option, longest 4 of 200\n"
                       "         1  Evil Option, longest 201 of 200\n"
                       "  Morality weights\n         2  1\n         0  2\n         0  3\n         0  4\n"
                       "         1  5\n"
                       "  Attributes of good answers\n         1  Morale\n         1  Morale Bonus\n"
                       "         1  No Effect\n"
                       "  Attributes of neutral answers\n         3  No Effect\n"
                       "  Attributes of evil answers\n         2  No Effect\n         1  Morale\n"
                       "  Pictures never used\n         0  GFX\\Unused.PCX\n");
}

TEST(StatsCommand, AgreesWithTheOtherCommandsAboutTheSample) {
    const Json stats = CliRun("stats", VELMORA_SAMPLE, "--format", "json").Parsed();
    const Json all = CliRun("export", VELMORA_SAMPLE).Parsed();
    std::size_t problems = 0;
    for (const char* kind : {"events", "upissues", "sbmodules"}) {
        EXPECT_EQ(stats[kind]["records"], all[kind].size());
        for (const char* table : {"files", "types"}) {
            std::size_t sum = 0;
            for (const Json& row : stats[kind][table])
                sum += row["count"].get<std::size_t>();
            EXPECT_EQ(sum, all[kind].size()) << kind << table;
        }
        for (const Json& row : stats[kind].value("problems", Json::array()))
            problems += row["count"].get<std::size_t>();
    }
    EXPECT_EQ(problems, CliRun("check", VELMORA_SAMPLE).Lines().size());
    std::map<std::string, int> uses;
    for (const Json& event : all["events"])
        ++uses[event["Image"]];
    const auto once =
        std::count_if(uses.begin(), uses.end(), [](const auto& use) { return use.second == 1; });
    EXPECT_EQ(stats["events"]["picturesUsedOnce"].size(), static_cast<std::size_t>(once));
}

} // namespace
} // namespace velmora
