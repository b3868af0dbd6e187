#include "CliRun.h"
#include "GameFolder.h"
#include "cli/KindTable.h"
#include "platform/CodePage.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

std::vector<std::string> Names(const Json& object) {
    std::vector<std::string> names;
    for (const auto& [name, value] : object.items())
        names.push_back(name);
    return names;
}

TEST(ExportCommand, PrintsOneEntryALine) {
    GameFolder game;
    game.Write("Data/A.event",
               "Colour \"r\xE9\"\r\n" + GameFolder::Event("Raid") + GameFolder::Event("Ruin"));
    game.Write("Data/UP_Issues/A.UPIssue", GameFolder::Issue("Tax"));
    game.Write("Data/UP_Issues/B.UPIssue", "UPISSUE Bad\r\nPrereq 9999999999\r\n");
    game.Write("Data/A.SBModule", "SBMOD 7 Bastion\r\nName Bastion Mk I\r\nTech_Requirement \"Walls\"\r\n"
                                  "Tech_Requirement \"Doors, wide\"\r\nENDSBMOD\r\n");
    ExpectGolden("export.json", CliRun("export", game.Typed()).Out);
    for (const char* kind : {"upissues", "sbmodules"})
        ExpectGolden(std::string("export-") + kind + ".csv",
                     CliRun("export", game.Typed(), "--kind", kind, "--format", "csv").Out);
}

TEST(ExportCommand, PrintsEveryPropertyOfTheFieldTables) {
    const CliRun run("export", VELMORA_SAMPLE);
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Err, "");
    const Json json = run.Parsed();
    std::vector<std::string> lists;
    for (const KindEntry& kind : Kinds()) {
        lists.emplace_back(kind.Option);
        lists.emplace_back(kind.FileList);
        std::vector<std::string> expected{std::string(kind.Kind->Name.Property)};
        if (kind.HeaderNumber)
            expected.emplace_back(kind.HeaderProperty);
        for (const Field& field : kind.Kind->Fields)
            expected.emplace_back(field.Property);
        for (const std::string_view name : {std::string_view("ShortName"), kind.NumberProperty})
            expected.emplace_back(name);
        expected.emplace_back("OrigNumber");
        EXPECT_EQ(Names(json[std::string(kind.Option)][0]), expected);
    }
    lists.insert(lists.end(), {"messages", "errors"});
    EXPECT_EQ(Names(json), lists);
}

TEST(ExportCommand, KeepsEveryByteOfATextAsItStands) {
    GameFolder game;
    clsEvent event = GameFolder::SoundEvent("Raid");
    event.Description.clear();
    for (int byte = 1; byte < 256; ++byte)
        if (byte != '\r' && byte != '\n' && byte != '"')
            event.Description += static_cast<char>(byte);
    event.MoralityWeight = 99;
    event.GoodValue = -2147483647 - 1;
    game.Write("Data/A.event", event.GenerateEventString(false));
    const Json json = CliRun("export", game.Typed()).Parsed();
    EXPECT_EQ(json["events"][0]["Description"], CodePage::ToUtf8(event.Description));
    EXPECT_EQ(json["events"][0]["MoralityWeight"], 99) << "showing would change it, exporting does not";
    EXPECT_EQ(json["events"][0]["GoodValue"], -2147483648LL);
}

TEST(ExportCommand, SortsAndNumbers) {
    GameFolder game;
    game.Write("Data/b.event", GameFolder::Event("Alpha"));
    game.Write("Data/A.EVENT", GameFolder::Event("beta") + GameFolder::Event("Gamma"));
    const Json byFile = CliRun("export", game.Typed(), "--kind", "events").Parsed();
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

TEST(ExportCommand, KeepsWhatWasReadBeforeAFailure) {
    GameFolder game;
    game.Write("Data/A.event", GameFolder::Event("First") + "EVENT Bad\r\nEventType &HFFFFFFFFF\r\n");
    game.Write("Data/UP_Issues/A.UPIssue", GameFolder::Issue("Tax") + "Colour \"x\r\n");
    const CliRun run("export", game.Typed());
    EXPECT_EQ(run.Status, 2);
    const Json json = run.Parsed();
    EXPECT_THAT(Values(json["events"], "EventName"), ElementsAre("First"));
    EXPECT_THAT(json["eventFiles"], IsEmpty()) << "no file was finished";
    EXPECT_EQ(json["upissues"].size(), 1u);
    EXPECT_EQ(json["errors"][0]["file"], "A.event");
}

TEST(ExportCommand, AMissingDirectoryGivesEmptyListsAndItsMessage) {
    TempFolder folder;
    folder.Write("Data/A.event", "");
    const CliRun run("export", Typed(folder));
    EXPECT_EQ(run.Status, 0);
    const Json json = run.Parsed();
    EXPECT_THAT(json["upissues"], IsEmpty());
    EXPECT_THAT(json["upissueFiles"], IsEmpty());
    EXPECT_THAT(Values(json["messages"], "text"),
                ElementsAre("Unable to acces the Velmora Data\\UP_Issue directory!"));
    EXPECT_THAT(CliRun("export", Typed(folder), "--kind", "events", "--format", "csv").Lines(),
                ElementsAre(HasSubstr("EventName,Title,")))
        << "a header without records";
}

TEST(ExportCommand, QuotesCommaSeparatedValues) {
    GameFolder game;
    clsEvent event = GameFolder::SoundEvent("Raid");
    event.Title = "Raid, or 'not'";
    event.GoodOption = "a\\nb";
    game.Write("Data/A.event", "Colour red\r\n" + event.GenerateEventString(false));
    const CliRun run("export", game.Typed(), "--kind", "events", "--format", "csv");
    EXPECT_EQ(run.Status, 0);
    ASSERT_EQ(run.Lines().size(), 2u);
    EXPECT_THAT(run.Lines()[0], ::testing::StartsWith("EventName,Title,Description,Image,EventType,"));
    EXPECT_THAT(run.Lines()[1],
                ::testing::StartsWith("Raid,\"Raid, or 'not'\",They raid %s.,Gfx\\\\Raid.pcx,0,a\\nb,"));
    EXPECT_THAT(run.Lines()[1], ::testing::EndsWith(",A.event,1,1"));
    EXPECT_THAT(run.Err, HasSubstr("A.event:1: warning: Unrecognized token!"));
}

} // namespace
} // namespace velmora
