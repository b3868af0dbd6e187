#include "CliRun.h"
#include "GameFolder.h"
#include "cli/OutputText.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <regex>
#include <tuple>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

/// Lines of a check of the sample with its path cut short, the same on every host.
std::string WithoutSamplePath(std::string text) {
    const std::string sample = OutputText::Path(VELMORA_SAMPLE);
    const std::string separator(1, Files::Separator);
    text = ReplaceAll(text, sample + separator + "Data" + separator, "Velmora/Data/");
    return ReplaceAll(text, "UP_Issues" + separator, "UP_Issues/");
}

TEST(CheckCommand, PrintsTheSamplesFaults) {
    const CliRun run("check", VELMORA_SAMPLE);
    EXPECT_EQ(run.Status, 1);
    EXPECT_EQ(run.Err, "");
    ExpectGolden("check-sample.txt", WithoutSamplePath(run.Out));
    EXPECT_EQ(CliRun("check", VELMORA_SAMPLE, "--kind", "upissues").Status, 0);
    EXPECT_EQ(CliRun("check", VELMORA_SAMPLE, "--kind", "events").Status, 1);
}

using Fault = std::tuple<std::size_t, std::string, std::string>;

/// The planted faults that the sample's own table tells of.
std::vector<Fault> FaultsOfTheTable() {
    const std::string readme = ReadProjectFile("sample/README.md");
    const std::regex row(R"(\| (\d+) \| (warning|error) \| `(.*)` \| [^|]* \|)");
    std::vector<Fault> faults;
    for (std::sregex_iterator at(readme.begin(), readme.end(), row), end; at != end; ++at)
        faults.emplace_back(std::stoul((*at)[1]), (*at)[2], ReplaceAll((*at)[3].str(), "<CR>", "\r"));
    return faults;
}

TEST(CheckCommand, FindsExactlyThePlantedFaults) {
    std::vector<Fault> found;
    const Json json = CliRun("check", VELMORA_SAMPLE, "--format", "json").Parsed();
    for (const Json& message : json["messages"]) {
        EXPECT_EQ(message["file"], "Glitches.event");
        found.emplace_back(message["line"], "warning", message["text"]);
    }
    for (const Json& record : json["reasons"])
        for (const Json& reason : record["reasons"])
            found.emplace_back(record["line"], "error",
                               record["name"].get<std::string>() + ": " + reason.get<std::string>());
    EXPECT_THAT(found, ::testing::UnorderedElementsAreArray(FaultsOfTheTable()));
    EXPECT_THAT(found, ::testing::SizeIs(::testing::Gt(20u)));
    EXPECT_THAT(json["errors"], IsEmpty());
}

TEST(CheckCommand, PassesRecordsThatAreSoundAsTheyAreShown) {
    GameFolder game;
    clsEvent event = GameFolder::SoundEvent("Raid");
    event.GoodOption = "100% sure";
    event.GoodOptStr01 = 3; // stands for nothing
    event.MoralityWeight = 99;
    event.Image = "gfx/RAID.PCX";
    game.Write("Data/A.event", event.GenerateEventString(false));
    game.Write("Data/UP_Issues/B.UPIssue", GameFolder::Issue("Tax"));
    const CliRun run("check", game.Typed());
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Out + run.Err, "");
    EXPECT_EQ(CliRun("check", game.Typed(), "--format", "json").Parsed(),
              Json::parse(R"({"messages":[],"reasons":[],"errors":[]})"));
    event.Image.clear();
    game.Write("Data/A.event", event.GenerateEventString(false));
    EXPECT_THAT(CliRun("check", game.Typed(), "--kind", "events").Lines(),
                ElementsAre(HasSubstr("A.event:2: error: Raid: Unable to locate specified image file. "
                                      "[no-image]")));
}

TEST(CheckCommand, CountsAnUnknownTypeOfIssueAsTheFirst) {
    GameFolder game;
    clsUPIssue issue = GameFolder::SoundIssue("Tax");
    issue.UPIssueAttribute = 999;
    issue.OptionVal01 = 0;
    game.Write("Data/UP_Issues/A.UPIssue", issue.GenerateUPIssueString(false));
    const Json reasons = CliRun("check", game.Typed(), "--format", "json").Parsed()["reasons"];
    EXPECT_EQ(reasons, Json::parse(R"([{"kind":"upissue","file":"A.UPIssue","line":2,"name":"Tax",
        "reasons":["None of the Option Value fields have been filled in."],"rules":["no-option-values"]}])"));
}

TEST(CheckCommand, LeavesOutIgnoredRules) {
    GameFolder game;
    clsEvent event = GameFolder::SoundEvent("Raid");
    event.Title.clear();
    event.EvilOption.clear();
    game.Write("Data/A.event", event.GenerateEventString(false) + "Colour red\r\n");
    EXPECT_EQ(CliRun("check", game.Typed()).Lines().size(), 3u);
    const CliRun one("check", game.Typed(), "--ignore", "no-title");
    EXPECT_THAT(one.Lines(), ElementsAre(HasSubstr("[unrecognized-token]"), HasSubstr("[no-evil-option]")));
    const CliRun json("check", game.Typed(), "--ignore", "no-evil-option,unrecognized-token", "--format",
                      "json");
    EXPECT_THAT(json.Parsed()["messages"], IsEmpty());
    EXPECT_EQ(json.Parsed()["reasons"][0]["rules"], Json::array({"no-title"}));
    const CliRun all("check", "--ignore", "no-evil-option", "--ignore", "unrecognized-token,no-title",
                     game.Typed());
    EXPECT_EQ(all.Status, 0);
    EXPECT_EQ(all.Out, "");
}

TEST(CheckCommand, AFailureEndsItsKindOnlyAndNamesItsRoutines) {
    GameFolder game;
    game.Write("Data/A, line 3.event",
               GameFolder::Event("First") + "EVENT Second\r\nProbability 9999999999\r\n");
    game.Write("Data/B.event", "EVENT Third\r\nColour red\r\n");
    game.Write("Data/UP_Issues/A.UPIssue", GameFolder::Issue("Tax") + "UPISSUE Two\r\nColour red\r\n");
    game.Write("Data/UP_Issues/B.UPIssue", "ENDUPISSUE\r\n");
    for (int id = 0; id <= 141; ++id)
        game.Write("Data/A.SBModule", game.Read("Data/A.SBModule") + "SBMOD " + std::to_string(id) + " M" +
                                          std::to_string(id) + "\r\nENDSBMOD\r\n");
    const CliRun run("check", game.Typed(), "--format", "json", "--ignore", "id-out-of-range");
    EXPECT_EQ(run.Status, 2);
    const Json json = run.Parsed();
    ASSERT_EQ(json["messages"].size(), 1u) << run.Out << "the files after the failure are not read";
    EXPECT_EQ(json["messages"][0]["file"], "A.UPIssue");
    ASSERT_EQ(json["errors"].size(), 3u);
    const auto routines = [](const std::string& window, const char* load, const char* parse) {
        return Json::array({window + "_Form_Load", window + "_InitForm", window + load, window + parse});
    };
    using Case = std::tuple<std::string, std::string, int, Json>;
    std::size_t at = 0;
    for (const auto& [kind, file, number, names] :
         {Case{"event", "A, line 3.event", 6,
               routines("frmEvents", "_LoadCurrentEvents", "_ParseOutEventFile")},
          Case{"upissue", "B.UPIssue", 13, // an option value was never given
               routines("frmUPIssues", "_LoadCurrentUPIssues", "_ParseOutUPIssueFile")},
          Case{"sbmodule", "A.SBModule", 9,
               routines("frmSBModules", "_LoadCurrentSBModules", "_ParseOutSBModuleFile")}}) {
        const Json& error = json["errors"][at++];
        EXPECT_EQ(error["kind"], kind);
        EXPECT_EQ(error["file"], file);
        EXPECT_EQ(error["number"], number);
        EXPECT_EQ(error["routines"], names);
    }
    EXPECT_THAT(json["errors"][0]["description"].get<std::string>(), StartsWith("Overflow"));
    EXPECT_THAT(CliRun("check", game.Typed(), "--kind", "events").Lines(),
                ElementsAre(::testing::AllOf(HasSubstr("A, line 3.event:46: error: Overflow"),
                                             ::testing::EndsWith("[load-failure]"))));
    const CliRun ignoring("check", game.Typed(), "--kind", "events", "--ignore", "load-failure");
    EXPECT_EQ(ignoring.Status, 2) << "a failure is not ignored away";
    EXPECT_EQ(ignoring.Out, "");
    EXPECT_THAT(ignoring.Err, HasSubstr("A, line 3.event: Overflow"));
}

TEST(CheckCommand, TellsOfMissingDirectories) {
    TempFolder folder;
    const std::string typed = Typed(folder);
    const CliRun nothing("check", typed);
    EXPECT_EQ(nothing.Status, 2) << "nothing could be looked at";
    EXPECT_THAT(nothing.Err, HasSubstr("Data: no such directory"));
    EXPECT_THAT(nothing.Out, HasSubstr("Unable to acces the Velmora Data directory! [no-data-directory]"));

    folder.Write("Data/A.event", "");
    const CliRun some("check", typed);
    EXPECT_EQ(some.Status, 1);
    EXPECT_THAT(some.Err, HasSubstr("UP_Issues: no such directory"));
    EXPECT_THAT(some.Lines(), ElementsAre(HasSubstr(":0: warning: Unable to acces the Velmora Data\\UP_Issue "
                                                    "directory! [no-data-directory]")));
    EXPECT_EQ(CliRun("check", typed, "--ignore", "no-data-directory").Status, 0);
    EXPECT_EQ(CliRun("check", typed, "--kind", "events").Status, 0);
}

TEST(CheckCommand, NamesAFileThatIsNoTextAndReadsTheOthers) {
    using Case = std::pair<std::string, std::string>;
    const std::string large(std::size_t{17} << 20, ' ');
    for (const auto& [bytes, text] :
         {Case{std::string("EVENT A\r\n\0ENDEVENT\r\n", 20), "a NUL byte in line 2"},
          Case{std::string("\x0A\x05\x01\x08\0\0", 6), "a NUL byte in line 2"},
          Case{large, "a line of 17825792 bytes in line 1"}, Case{"EVENT A\n" + large + "\n", "in line 2"}}) {
        GameFolder game;
        game.Write("Data/A.event", bytes);
        game.Write("Data/B.event", "Colour red\r\n");
        const CliRun run("check", game.Typed(), "--format", "json");
        EXPECT_EQ(run.Status, 2);
        EXPECT_THAT(run.Err, HasSubstr(OutputText::Path(game / "Data/A.event")));
        EXPECT_THAT(run.Err, HasSubstr(text));
        const Json json = run.Parsed();
        EXPECT_EQ(Values(json["messages"], "file"), (std::vector<Json>{"B.event"}));
        ASSERT_EQ(json["errors"].size(), 1u);
        EXPECT_EQ(json["errors"][0]["file"], "A.event");
        EXPECT_EQ(json["errors"][0]["number"], 321);
        EXPECT_EQ(json["errors"][0]["routines"], Json::array());
    }
}

TEST(CheckCommand, TellsOfADirectoryNamedLikeAFile) {
    GameFolder game;
    game.Write("Data/x.EVENT/inner.event", "Colour red\r\n");
    game.Write("Data/A.event", GameFolder::Event("Raid"));
    const CliRun run("check", game.Typed());
    EXPECT_EQ(run.Status, 2);
    EXPECT_THAT(run.Err, HasSubstr(OutputText::Path(game / "Data/x.EVENT") + ": This is a directory"));
    EXPECT_THAT(run.Lines(), ElementsAre(HasSubstr("x.EVENT:0: error: This is a directory, not a file "
                                                   "[load-failure]")));
}

TEST(CheckCommand, PrintsOneFindingALine) {
    GameFolder game;
    game.Write("Data/A.event", "EVENT 9!\r\nA\rB\x1B[2J \"x\"\r\n");
    const CliRun run("check", game.Typed());
    ASSERT_EQ(run.Lines().size(), 2u) << run.Out;
    EXPECT_THAT(run.Out,
                HasSubstr("It will be removed.; Final revised Event name is now: Nine. [illegal-name]"));
    EXPECT_THAT(run.Lines()[1], HasSubstr("a(0) = A; B\\x1B[2J, sValue = x"));
    const Json json = CliRun("check", game.Typed(), "--format", "json").Parsed();
    EXPECT_THAT(json["messages"][0]["text"].get<std::string>(), HasSubstr("removed.\r\rFinal"));
}

} // namespace
} // namespace velmora
