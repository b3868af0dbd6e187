#include "CliRun.h"
#include "GameFolder.h"
#include "cli/OutputText.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <regex>

namespace velmora {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;

/// Lines of a check of the sample with its path cut short, the same on every host.
std::string WithoutSamplePath(std::string text) {
    const std::string separator(1, Files::Separator);
    text =
        ReplaceAll(text, OutputText::Path(VELMORA_SAMPLE) + separator + "Data" + separator, "Velmora/Data/");
    return ReplaceAll(text, "UP_Issues" + separator, "UP_Issues/");
}

TEST(CheckCommand, PrintsThePlantedFaultsOfTheSampleAndNoOthers) {
    const CliRun run("check", VELMORA_SAMPLE);
    EXPECT_EQ(run.Status, 1);
    EXPECT_EQ(run.Err, "");
    ExpectGolden("check-sample.txt", WithoutSamplePath(run.Out));
    std::size_t planted = 0;
    const std::string readme = ReadProjectFile("sample/README.md");
    const std::regex row(R"(\| (\d+) \| (warning|error) \| `(.*)` \| [^|]* \|)");
    for (std::sregex_iterator at(readme.begin(), readme.end(), row), end; at != end; ++at, ++planted) {
        const std::string text = std::regex_replace((*at)[3].str(), std::regex("(<CR>)+"), "; ");
        EXPECT_THAT(run.Out, HasSubstr(at->format(":$1: $2: ") + text + " ["));
    }
    const std::vector<std::string> lines = run.Lines();
    const auto isNote = [](const std::string& line) { return line.find(": note: ") != std::string::npos; };
    EXPECT_EQ(planted, lines.size() - std::count_if(lines.begin(), lines.end(), isNote));
    EXPECT_EQ(CliRun("check", VELMORA_SAMPLE, "--kind", "upissues").Status, 0);
    EXPECT_EQ(CliRun("check", VELMORA_SAMPLE, "--kind", "events").Status, 1);
}

TEST(CheckCommand, ChecksRecordsAsTheyAreShown) {
    GameFolder game;
    clsEvent event = SoundEvent("Raid");
    event.GoodOption = "100% sure";
    event.GoodOptStr01 = 3; // stands for nothing
    event.MoralityWeight = 99;
    event.Image = "gfx/p.PCX";
    clsUPIssue issue = SoundIssue("Tax");
    issue.UPIssueAttribute = 999; // counts as the first type
    const auto checkAsJson = [&] {
        game.Write("Data/A.event", event.GenerateEventString(false));
        game.Write("Data/UP_Issues/A.UPIssue", issue.GenerateUPIssueString(false));
        return CliRun("check", game.Typed(), "--format", "json");
    };
    EXPECT_EQ(checkAsJson().Out, "{\n\"messages\":[],\n\"reasons\":[],\n\"errors\":[],\n\"notes\":[]\n}\n");
    event.Image.clear();
    issue.OptionVal01 = 0;
    EXPECT_EQ(checkAsJson().Parsed()["reasons"], Json::parse(R"([
        {"kind":"event","file":"A.event","line":2,"name":"Raid",
         "reasons":["Unable to locate specified image file."],"rules":["no-image"],
         "findings":[{"kind":"event","file":"A.event","line":6,"rule":"no-image",
                      "text":"Unable to locate specified image file.","name":"Raid","field":"Image",
                      "severity":"error"}]},
        {"kind":"upissue","file":"A.UPIssue","line":2,"name":"Tax",
         "reasons":["None of the Option Value fields have been filled in."],"rules":["no-option-values"],
         "findings":[{"kind":"upissue","file":"A.UPIssue","line":14,"rule":"no-option-values",
                      "text":"None of the Option Value fields have been filled in.","name":"Tax",
                      "field":"OptionVal01","severity":"error"}]}])"));
}

TEST(CheckCommand, PutsEachFindingAtTheLineOfItsField) {
    GameFolder game;
    const std::string sound = ReplaceAll(GameFolder::Event("Base"), "\r\n", "\n");
    const auto start = static_cast<int>(std::count(sound.begin(), sound.end(), '\n'));
    const auto at = [&](int line, const std::string& rest) {
        return HasSubstr("A.event:" + std::to_string(start + line) + ": " + rest);
    };
    game.Write("Data/A.event", sound + "EVENT One\n// remark\n\n  title\t\"\"\nTitle \"\"\nEvilOption \"" +
                                   std::string(199, 'x') +
                                   "%\"\nGoodOptStr01 1\nGoodOption \"\"\nENDEVENT\n"
                                   "EVENT Two\nGoodOption \"ok\"\nENDEVENT\nENDEVENT\nEVENT base\nENDEVENT\n"
                                   "EVENT Open\nTitle \"x\"\n");
    const CliRun run("check", game.Typed());
    EXPECT_THAT(run.Lines(),
                ElementsAre(at(13, "warning: Duplicate event found!  EventName = Two"),
                            at(15, "warning: Duplicate event found!  EventName = base"),
                            at(16, "error: This block has no ENDEVENT [unfinished-block]"),
                            at(5, "error: One: No Title text set"), at(8, "error: One: No Good option"),
                            at(8, "error: One: No wild cards in the Good Option"),
                            at(8, "error: One: 1 Wild Card"),
                            at(6, "note: One: Evil Option text length (201) higher than maximum recommended "
                                  "length (200)! [option-length]"),
                            at(10, "error: Two: No Title text set"),
                            at(11, "error: Two: No wild cards in the Good Option"),
                            at(11, "error: Two: 1 Wild Card"), at(10, "note: Two: Evil Option text")))
        << "a value carried over stands at the header of the record that has it";
    game.Write("Data/A.event", sound + "EVENT One\nEvilOption \"" + std::string(201, 'x') + "\"\nENDEVENT\n");
    const CliRun noted("check", game.Typed(), "--format", "json");
    EXPECT_EQ(noted.Status, 0) << "a note is no fault";
    EXPECT_THAT(Values(noted.Parsed()["notes"], "line"), ElementsAre(start + 2));
    EXPECT_THAT(Values(noted.Parsed()["notes"], "severity"), ElementsAre("note"));
    const CliRun inside("check", game.Typed("Data"));
    EXPECT_EQ(inside.Status, 2);
    EXPECT_THAT(inside.Err, HasSubstr("the directory that holds Data"));
}

TEST(CheckCommand, LeavesOutIgnoredRules) {
    GameFolder game;
    clsEvent event = SoundEvent("Raid");
    event.Title.clear();
    event.EvilOption.clear();
    game.Write("Data/A.event", event.GenerateEventString(false) + "Colour red\r\n");
    EXPECT_EQ(CliRun("check", game.Typed()).Lines().size(), 3u);
    EXPECT_THAT(CliRun("check", game.Typed(), "--ignore", "no-title").Lines(),
                ElementsAre(HasSubstr("[unrecognized-token]"), HasSubstr("[no-evil-option]")));
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
    ExpectGolden("check-failures.json", run.Out);
    EXPECT_THAT(
        CliRun("check", game.Typed(), "--kind", "events").Lines(),
        ElementsAre(AllOf(HasSubstr("A, line 3.event:46: error: Overflow"), EndsWith("[load-failure]"))));
    const CliRun ignoring("check", game.Typed(), "--kind", "events", "--ignore", "load-failure");
    EXPECT_EQ(ignoring.Status, 2) << "a failure is not ignored away";
    EXPECT_EQ(ignoring.Out, "");
    EXPECT_THAT(ignoring.Err, HasSubstr("A, line 3.event: Overflow"));
}

TEST(CheckCommand, TellsOfMissingDirectories) {
    GameFolder game;
    std::filesystem::remove_all(game.Host() / "Data");
    const CliRun nothing("check", game.Typed());
    EXPECT_EQ(nothing.Status, 2) << "nothing could be looked at";
    EXPECT_THAT(nothing.Err, HasSubstr("Data: no such directory"));
    EXPECT_THAT(nothing.Out, HasSubstr("Unable to acces the Velmora Data directory! [no-data-directory]"));

    game.Write("Data/A.event", "");
    const CliRun some("check", game.Typed());
    EXPECT_EQ(some.Status, 1);
    EXPECT_THAT(some.Err, HasSubstr("UP_Issues: no such directory"));
    EXPECT_THAT(some.Lines(), ElementsAre(HasSubstr(":0: warning: Unable to acces the Velmora Data\\UP_Issue "
                                                    "directory! [no-data-directory]")));
    EXPECT_EQ(CliRun("check", game.Typed(), "--ignore", "no-data-directory").Status, 0);
    EXPECT_EQ(CliRun("export", game.Typed()).Status, 0);
}

TEST(CheckCommand, NamesWhatIsNoTextFileAndReadsTheOthers) {
    using Case = std::pair<std::string, std::string>;
    const std::string large(std::size_t{17} << 20, ' ');
    for (const auto& [bytes, text] :
         {Case{std::string("EVENT A\r\n\0ENDEVENT\r\n", 20), "a NUL byte in line 2"},
          Case{large, "a line of 17825792 bytes in line 1"}, Case{"EVENT A\n" + large + "\n", "in line 2"}}) {
        GameFolder game;
        game.Write("Data/A.event", bytes);
        game.Write("Data/B.event", "Colour red\r\n");
        game.Write("Data/x.EVENT/inner.event", "Colour red\r\n");
        const CliRun run("check", game.Typed(), "--format", "json");
        EXPECT_EQ(run.Status, 2);
        EXPECT_THAT(run.Err, HasSubstr(OutputText::Path(game / "Data/A.event") + ": This is no text file: "));
        EXPECT_THAT(run.Err, HasSubstr(text));
        EXPECT_THAT(run.Err, HasSubstr(OutputText::Path(game / "Data/x.EVENT") + ": This is a directory"));
        const Json json = run.Parsed();
        EXPECT_THAT(Values(json["messages"], "file"), ElementsAre("B.event"));
        EXPECT_THAT(Values(json["errors"], "file"), ElementsAre("A.event", "x.EVENT"));
        EXPECT_THAT(Values(json["errors"], "number"), ElementsAre(321, 75));
        EXPECT_THAT(Values(json["errors"], "routines"), ::testing::Each(Json::array()));
    }
}

TEST(CheckCommand, PrintsOneFindingALine) {
    GameFolder game;
    game.Write("Data/A.event", "EVENT 9!\r\nA\rB\x1B[2J \"x\"\r\n");
    EXPECT_THAT(CliRun("check", game.Typed()).Lines(),
                ElementsAre(HasSubstr("It will be removed.; Final revised Event name is now: Nine."),
                            HasSubstr("a(0) = A; B\\x1B[2J, sValue = x"), HasSubstr("no ENDEVENT")));
    EXPECT_EQ(OutputText::OneLine("a\x81\t\x80"), "a\\x81\\x09\xE2\x82\xAC");
    const Json json = CliRun("check", game.Typed(), "--format", "json").Parsed();
    EXPECT_THAT(json["messages"][0]["text"].get<std::string>(), HasSubstr("removed.\r\rFinal"));
}

} // namespace
} // namespace velmora
