#include "CliRun.h"
#include "GameFolder.h"
#include "cli/OutputText.h"
#include "platform/PathTexts.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace velmora {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(BadFiles, EndTheirKindAndAreNamed) {
    using Obstacle = void (*)(const fs::path& path);
    for (const Obstacle put :
         {Obstacle([](const fs::path& path) { fs::create_symlink("nowhere.event", path); }),
          Obstacle([](const fs::path& path) { fs::create_symlink(path.filename(), path); }),
          Obstacle([](const fs::path& path) { ::mkfifo(path.c_str(), 0600); })}) {
        GameFolder game;
        for (const char* name : {"Data/A.event", "Data/C.event", "Data/UP_Issues/A.UPIssue"})
            game.Write(name, "Colour red\r\n");
        put(game.Host() / "Data" / "B.event");
        const CliRun run("check", game.Typed(), "--format", "json");
        EXPECT_EQ(run.Status, 2);
        EXPECT_THAT(run.Err, HasSubstr("Data/B.event: Cannot read"));
        const Json json = run.Parsed();
        EXPECT_THAT(Values(json["messages"], "file"), ElementsAre("A.event", "A.UPIssue"));
        EXPECT_THAT(Values(json["errors"], "file"), ElementsAre("B.event"));
        EXPECT_EQ(json["errors"][0]["routines"].size(), 4u);
        EXPECT_EQ(CliRun("format", game.Typed("Data/B.event")).Status, 2);
    }
}

TEST(BadFiles, OddNamesArePrintedAsTheyAreOnOneLine) {
    GameFolder game;
    game.Write("Data/\xE6\x98\x9F \xC3\xA9.event", "Colour red\r\n");
    game.Write("Data/a\nb\x1B.event", "Colour red\r\n");
    EXPECT_THAT(CliRun("check", game.Typed()).Lines(),
                ElementsAre(HasSubstr("Data/a; b\\x1B.event:1: warning:"),
                            HasSubstr("Data/\xE6\x98\x9F \xC3\xA9.event:1: warning:")));
    const Json message = CliRun("export", game.Typed()).Parsed()["messages"][1];
    EXPECT_EQ(message["file"], "\xE6\x98\x9F \xC3\xA9.event");
    EXPECT_THAT(message["text"].get<std::string>(),
                ::testing::EndsWith("File = \xE6\x98\x9F \xC3\xA9.event"));
    EXPECT_THAT(CliRun("check", game.Typed()).Lines()[1],
                HasSubstr("File = \xE6\x98\x9F \xC3\xA9.event [unrecognized-token]"));
    EXPECT_EQ(OutputText::Name(PathTexts::FromHostText(std::string("a\xE2\x80") + "\xAE\xC2\x9B")),
              "a\\u202E\\x9B");
}

} // namespace
} // namespace velmora
