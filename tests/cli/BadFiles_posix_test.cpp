#include "CliRun.h"
#include "GameFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>
#include <sys/stat.h>

namespace velmora {
namespace {

using ::testing::HasSubstr;

namespace fs = std::filesystem;

/// Each puts something at a path that cannot be read as a file, whoever runs the test.
struct Obstacle {
    const char* Case;
    void (*Put)(const fs::path& path);
};

class ObstacleTest : public ::testing::TestWithParam<Obstacle> {};

TEST_P(ObstacleTest, EndsItsKindAndIsNamed) {
    GameFolder game;
    game.Write("Data/A.event", "Colour red\r\n");
    GetParam().Put(game.Host() / "Data" / "B.event");
    game.Write("Data/C.event", "Colour blue\r\n");
    game.Write("Data/UP_Issues/A.UPIssue", "Colour green\r\n");
    const CliRun run("check", game.Typed(), "--format", "json");
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Err, HasSubstr("Data/B.event: Cannot read"));
    const Json json = run.Parsed();
    ASSERT_EQ(json["messages"].size(), 2u);
    EXPECT_EQ(json["messages"][0]["file"], "A.event");
    EXPECT_EQ(json["messages"][1]["file"], "A.UPIssue");
    ASSERT_EQ(json["errors"].size(), 1u);
    EXPECT_EQ(json["errors"][0]["file"], "B.event");
    EXPECT_EQ(json["errors"][0]["routines"].size(), 4u);
    EXPECT_EQ(CliRun("format", game.Typed("Data/B.event")).Status, 2);
}

INSTANTIATE_TEST_SUITE_P(
    Obstacles, ObstacleTest,
    ::testing::Values(
        Obstacle{"broken link", [](const fs::path& path) { fs::create_symlink("nowhere.event", path); }},
        Obstacle{"circular link", [](const fs::path& path) { fs::create_symlink(path.filename(), path); }},
        Obstacle{"pipe", [](const fs::path& path) { EXPECT_EQ(::mkfifo(path.c_str(), 0600), 0); }}),
    [](const auto& tested) {
        std::string name = tested.param.Case;
        std::replace(name.begin(), name.end(), ' ', '_');
        return name;
    });

TEST(BadFiles, NamesThatNoCodePageHoldsArePrintedAsTheyAre) {
    GameFolder game;
    game.Write("Data/\xE6\x98\x9F \xC3\xA9.event", "Colour red\r\n");
    EXPECT_THAT(CliRun("check", game.Typed()).Out, HasSubstr("Data/\xE6\x98\x9F \xC3\xA9.event:1: warning:"));
    const Json json = CliRun("export", game.Typed()).Parsed();
    EXPECT_EQ(json["messages"][0]["file"], "\xE6\x98\x9F \xC3\xA9.event");
}

TEST(BadFiles, ANameWithALineBreakStaysOnItsLine) {
    GameFolder game;
    game.Write("Data/a\nb\x1B.event", "Colour red\r\n");
    const CliRun run("check", game.Typed());
    ASSERT_EQ(run.Lines().size(), 1u) << run.Out;
    EXPECT_THAT(run.Out, HasSubstr("Data/a; b\\x1B.event:1: warning:"));
}

} // namespace
} // namespace velmora
