#include "CliRun.h"
#include "GameFolder.h"
#include "platform/CodePage.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

TEST(ExportCommand, PrintsOneEntryALineAndKeepsWhatWasReadBeforeAFailure) {
    GameFolder game;
    game.Write("Data/A.event",
               "Colour \"r\xE9\"\r\n" + GameFolder::Event("Raid") + GameFolder::Event("Ruin"));
    game.Write("Data/UP_Issues/A.UPIssue", GameFolder::Issue("Tax"));
    game.Write("Data/UP_Issues/B.UPIssue", "UPISSUE Bad\r\nPrereq 9999999999\r\n");
    game.Write("Data/A.SBModule", "SBMOD 7 Bastion\r\nName Bastion Mk I\r\nTech_Requirement \"Walls\"\r\n"
                                  "Tech_Requirement \"Doors, wide\"\r\nENDSBMOD\r\n");
    const CliRun run("export", game.Typed());
    EXPECT_EQ(run.Status, 2);
    ExpectGolden("export.json", run.Out);
    for (const char* kind : {"upissues", "sbmodules"})
        ExpectGolden(std::string("export-") + kind + ".csv",
                     CliRun("export", game.Typed(), "--kind", kind, "--format", "csv").Out);
}

TEST(ExportCommand, KeepsEveryByteOfATextAsItStands) {
    GameFolder game;
    clsEvent event = SoundEvent("Raid");
    event.Description.clear();
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n' && byte != '"')
            event.Description += static_cast<char>(byte);
    event.MoralityWeight = 99;
    event.GoodValue = -2147483647 - 1;
    game.Write("Data/A.event", event.GenerateEventString(false));
    const Json shown = CliRun("export", game.Typed()).Parsed()["events"][0];
    EXPECT_EQ(shown["Description"], CodePage::ToUtf8(event.Description));
    EXPECT_EQ(shown["MoralityWeight"], 99) << "showing would change it, exporting does not";
    EXPECT_EQ(shown["GoodValue"], -2147483648LL);
}

TEST(ExportCommand, SortsAndNumbers) {
    GameFolder game;
    game.Write("Data/b.event", GameFolder::Event("Alpha"));
    game.Write("Data/A.EVENT", GameFolder::Event("beta") + GameFolder::Event("Gamma"));
    const Json byFile = CliRun("export", game.Typed()).Parsed();
    EXPECT_THAT(Values(byFile["events"], "EventName"), ElementsAre("beta", "Gamma", "Alpha"));
    EXPECT_THAT(Values(byFile["events"], "EventNumber"), ElementsAre(1, 2, 3));
    const Json byName = CliRun("export", game.Typed(), "--kind", "events", "--sort", "name").Parsed();
    EXPECT_THAT(Values(byName["events"], "EventName"), ElementsAre("Alpha", "beta", "Gamma"));
    EXPECT_THAT(Values(byName["events"], "EventNumber"), ElementsAre(1, 2, 3));
    EXPECT_THAT(Values(byName["events"], "OrigNumber"), ElementsAre(3, 1, 2));
    EXPECT_EQ(byName["eventFiles"], Json::parse(R"([{"name":"A.EVENT","item":0},{"name":"b.event","item":1},
                                                    {"name":"MyEvents.event","item":2}])"));
}

TEST(ExportCommand, ListsTheOwnFiles) {
    GameFolder game;
    const Json json =
        CliRun("export", game.Typed(), "--event-file", "Caf\xC3\xA9.event", "--upissue-file", "Mine.UPIssue")
            .Parsed();
    EXPECT_EQ(json["eventFiles"], Json::parse("[{\"name\":\"Caf\xC3\xA9.event\",\"item\":0}]"));
    EXPECT_EQ(json["upissueFiles"][0]["name"], "Mine.UPIssue");
    EXPECT_EQ(CliRun("export", game.Typed()).Parsed()["upissueFiles"][0]["name"], "MyUPIssues.upissue");
}

TEST(ExportCommand, SeparatesValuesByCommas) {
    GameFolder game;
    clsEvent event = SoundEvent("Raid");
    event.Title = "Raid, or 'not'";
    const auto exportAsCsv = [&] {
        return CliRun("export", game.Typed(), "--kind", "events", "--format", "csv");
    };
    EXPECT_THAT(exportAsCsv().Lines(),
                ElementsAre(StartsWith("EventName,Title,Description,Image,EventType,")))
        << "a header without records";
    game.Write("Data/A.event", "Colour red\r\n" + event.GenerateEventString(false));
    const CliRun run = exportAsCsv();
    EXPECT_EQ(run.Status, 0);
    ASSERT_EQ(run.Lines().size(), 2u);
    EXPECT_THAT(run.Lines()[1], StartsWith("Raid,\"Raid, or 'not'\",about Raid,Gfx\\\\P.pcx,0,Talk,Wait,"));
    EXPECT_THAT(run.Err, HasSubstr("A.event:1: warning: Unrecognized token!"));
    game.Write("Data/A.event", "EVENT\r\nTitle \"x\"\r\nENDEVENT\r\n");
    EXPECT_THAT(exportAsCsv().Lines()[1], StartsWith(",x,,,0,")) << "each value under its name";
    game.Write("Data/A.SBModule", "SBMOD 1 A\r\nTech_Requirement \"\"\r\nTech_Requirement \"b\"\r\nENDSBMOD");
    EXPECT_THAT(CliRun("export", game.Typed(), "--kind", "sbmodules", "--format", "csv").Lines()[1],
                StartsWith("A,1,,,; b,,"));
}

} // namespace
} // namespace velmora
