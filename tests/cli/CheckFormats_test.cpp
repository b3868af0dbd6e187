#include "CliRun.h"
#include "GameFolder.h"
#include "kinds/Rules.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <random>
#include <regex>
#include <set>

namespace velmora {
namespace {

namespace fs = std::filesystem;
using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// Twelve events without title, whose good answers are too long, and two lines that make no sense.
GameFolder& Troubled(GameFolder& game) {
    std::string text = "Colour red\r\nColour \"blue, 100%\"\r\n";
    for (int i = 0; i < 12; ++i) {
        clsEvent event = SoundEvent("E" + std::to_string(i));
        event.Title.clear();
        event.GoodOption.assign(201, 'x');
        text += event.GenerateEventString(false);
    }
    game.Write("Data/A b,1.event", text);
    return game;
}

TEST(CheckFormats, GitHubsAnnotationsTellErrorsFirstAndHowManyMore) {
    GameFolder game;
    const CliRun run("check", Troubled(game).Typed(), "--format", "github");
    EXPECT_EQ(run.Status, 1);
    const std::vector<std::string> lines = run.Lines();
    ASSERT_EQ(lines.size(), 10u + 2u + 10u + 1u);
    EXPECT_THAT(lines[0], AllOf(StartsWith("::error file="), HasSubstr("Data/A b%2C1.event,line=6,"),
                                EndsWith("title=no-title::E0: No Title text set, please specify a title.")));
    EXPECT_THAT(lines[11], AllOf(StartsWith("::warning file="),
                                 HasSubstr("line=2,title=unrecognized-token::"), HasSubstr("blue, 100%25")));
    EXPECT_THAT(lines[12], AllOf(StartsWith("::notice file="), HasSubstr("title=option-length::E0: ")));
    EXPECT_EQ(lines[22], "and 4 more");
}

void ExpectForm(const std::string& text, const char* form) {
    EXPECT_TRUE(std::regex_match(text, std::regex(form))) << text;
}

/// What GitHub demands of a document.
void ExpectFitForGitHub(const Json& document) {
    EXPECT_EQ(document["version"], "2.1.0");
    EXPECT_THAT(document["$schema"], HasSubstr("sarif-2.1.0"));
    const Json& run = document["runs"][0];
    EXPECT_EQ(run["tool"]["driver"]["name"], "velwriter");
    const Json& rules = run["tool"]["driver"]["rules"];
    for (const Json& rule : rules)
        for (const char* text : {"shortDescription", "fullDescription", "help"})
            EXPECT_NE(rule[text]["text"], "") << rule;
    std::set<std::string> fingerprints;
    for (const Json& result : run["results"]) {
        EXPECT_EQ(rules[result["ruleIndex"].get<std::size_t>()]["id"], result["ruleId"]);
        EXPECT_NE(result["message"]["text"], "");
        const Json& place = result["locations"][0]["physicalLocation"];
        EXPECT_GE(place["region"]["startLine"], 1);
        ExpectForm(place["artifactLocation"]["uri"], "[-A-Za-z0-9/._~:%]+");
        const std::string print = result["partialFingerprints"]["primaryLocationLineHash"];
        ExpectForm(print, "[0-9a-f]+:[0-9]+");
        EXPECT_TRUE(fingerprints.insert(print).second) << print;
    }
}

TEST(CheckFormats, SarifIsWhatCodeScanningTakes) {
    GameFolder game;
    const auto resultsOf = [&] {
        const CliRun run("check", game.Typed(), "--format", "sarif");
        EXPECT_EQ(run.Status, 1);
        const Json document = run.Parsed();
        ExpectFitForGitHub(document);
        return document["runs"][0]["results"];
    };
    Troubled(game);
    const Json results = resultsOf();
    ASSERT_EQ(results.size(), 26u);
    EXPECT_EQ(results[0]["level"], "error");
    EXPECT_EQ(results[25]["level"], "note");
    EXPECT_THAT(results[0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"].get<std::string>(),
                AllOf(StartsWith("file:///"), EndsWith("/Data/A%20b%2C1.event")));
    game.Write("Data/A b,1.event", "// moved down\r\n\r\n" + game.Read("Data/A b,1.event"));
    EXPECT_EQ(Values(resultsOf(), "partialFingerprints"), Values(results, "partialFingerprints"))
        << "they do not follow the line";
    game.Write("Data/B.event", std::string(1, '\0'));
    const CliRun failed("check", game.Typed(), "--format", "sarif");
    EXPECT_EQ(failed.Status, 2);
    EXPECT_EQ(failed.Parsed()["runs"][0]["invocations"][0]["executionSuccessful"], false);
}

TEST(CheckFormats, PathsStartAtTheCurrentDirectory) {
    const fs::path before = fs::current_path();
    GameFolder game;
    fs::current_path(Troubled(game).Host());
    const CliRun github("check", ".", "--format", "github");
    const CliRun sarif("check", ".", "--format", "sarif");
    fs::current_path(before);
    EXPECT_THAT(github.Out, StartsWith("::error file=Data/A b%2C1.event,line=6,"));
    EXPECT_EQ(sarif.Parsed()["runs"][0]["results"][0]["locations"][0]["physicalLocation"]["artifactLocation"]
                            ["uri"],
              "Data/A%20b%2C1.event");
}

TEST(CheckFormats, ABaselineLeavesOnlyWhatIsNew) {
    GameFolder game;
    Troubled(game);
    const std::string known = game.Typed("known.txt");
    const CliRun kept("check", game.Typed(), "--write-baseline", known);
    EXPECT_EQ(kept.Status, 0);
    EXPECT_EQ(kept.Out, "");
    const auto check = [&] { return CliRun("check", game.Typed(), "--baseline", known); };
    EXPECT_EQ(check().Status, 0);
    EXPECT_EQ(check().Out, "");
    clsEvent fresh = SoundEvent("Fresh");
    fresh.EvilOption.clear();
    game.Write("Data/A b,1.event",
               fresh.GenerateEventString(false) + game.Read("Data/A b,1.event") + "Colour red\r\n");
    EXPECT_THAT(check().Lines(), ElementsAre(HasSubstr("Colour, sValue = red"), HasSubstr("Fresh: No Evil")))
        << "the second of a kind is new, be there one already";
    EXPECT_EQ(check().Status, 1);
    game.Write("Data/B.event", std::string(1, '\0'));
    const std::string before = game.Read("known.txt");
    EXPECT_EQ(CliRun("check", game.Typed(), "--write-baseline", known).Status, 2);
    EXPECT_EQ(game.Read("known.txt"), before) << "what was not read to its end is no baseline";
    for (const char* more : {"--baseline", "--watch"})
        EXPECT_EQ(CliRun("check", game.Typed(), "--write-baseline", known, more, known).Status, 2);
    EXPECT_EQ(CliRun("check", game.Typed(), "--baseline", game.Typed("none"), "--watch").Status, 2);
}

/// An output that acts each time it is flushed and is closed when there is nothing more to do.
struct Acting : std::stringbuf {
    std::vector<std::function<void()>> Acts;
    std::vector<std::string> Rounds;

    int sync() override {
        Rounds.push_back(str());
        str({});
        if (Rounds.size() > Acts.size())
            return -1;
        Acts[Rounds.size() - 1]();
        return 0;
    }
};

TEST(CheckFormats, WatchingChecksAgainAfterEachChange) {
    GameFolder game;
    game.Write("Data/A.event", GameFolder::Event("Raid"));
    Acting acting;
    acting.Acts = {[&] { fs::remove(game.Host() / "GFX/P.pcx"); },
                   [&] { game.Write("Data/B.event", "Colour red\r\n"); },
                   [&] { game.Write("velwriter.ignore", "rule:no-image\r\n"); },
                   [&] { game.Write("Data/B.event", "Colour green\r\n"); },
                   [&] { fs::remove_all(game.Host() / "Data"); }};
    std::ostream out(&acting);
    std::ostringstream err;
    EXPECT_EQ(RunVelwriter({"check", game.Typed(), "--watch", "--kind", "events"}, out, err), 2);
    const auto round = [](const std::string& findings) {
        return AllOf(StartsWith("velwriter: checking\n"), HasSubstr(findings),
                     EndsWith("\nvelwriter: waiting for changes\n"));
    };
    EXPECT_EQ(acting.Rounds[0], "velwriter: checking\nvelwriter: waiting for changes\n");
    EXPECT_THAT(acting.Rounds,
                ElementsAre(round(""), round("[no-image]"), round("= red, "), round("[unrecognized-token]"),
                            round("= green, "), round("[no-data-directory]")));
    EXPECT_EQ(acting.Rounds[3].find("no-image"), std::string::npos);
    EXPECT_EQ(CliRun("check", game.Typed(), "--watch", "--format", "json").Status, 2);
}

std::vector<std::string> SortedLines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (!line.starts_with("velwriter: "))
            lines.push_back(line);
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(CheckFormats, WatchingFindsWhatAFreshCheckFinds) {
    GameFolder game;
    std::mt19937 random(1);
    std::string remark = "// ";
    const auto change = [&] {
        remark += '.'; // no two states are of one size
        const std::string file = "Data/" + std::string(1, static_cast<char>('A' + random() % 3)) + ".event";
        std::string text = remark + "\r\n";
        for (const char* name : {"Raid", "Stay", "RAID", "Long"})
            if (random() % 3 != 0) {
                clsEvent event = SoundEvent(name);
                event.Title = random() % 2 == 0 ? "" : "T";
                event.GoodOptStr01 = random() % 3 == 0;
                text += event.GenerateEventString(false) + (random() % 3 == 0 ? "Colour red\r\n" : "");
            }
        if (random() % 8 == 0 && game.Has(file))
            fs::remove(game.Host() / file);
        else
            game.Write(file, random() % 8 == 0 ? text + "Probability 9999999999\r\n" : text);
        if (random() % 8 == 0)
            game.Write("velwriter.ignore", random() % 2 == 0 ? "rule:no-title #" + remark : "");
    };
    game.Write("Data/A.event", "");
    Acting acting;
    for (int round = 0; round < 40; ++round)
        acting.Acts.emplace_back([&, round] {
            EXPECT_EQ(SortedLines(acting.Rounds.back()),
                      SortedLines(CliRun("check", game.Typed(), "--kind", "events").Out))
                << "round " << round;
            change();
        });
    std::ostream out(&acting);
    std::ostringstream err;
    EXPECT_EQ(RunVelwriter({"check", game.Typed(), "--watch", "--kind", "events"}, out, err), 2);
}

/// The findings that a matcher of docs/ takes out of an output, as its numbers name them.
std::vector<std::string> Matched(const Json& pattern, const std::vector<std::string>& lines) {
    const std::regex regexp(pattern["regexp"].get<std::string>());
    std::vector<std::string> found;
    std::smatch parts;
    for (const std::string& line : lines)
        if (std::regex_match(line, parts, regexp)) {
            const auto part = [&](const char* key) { return parts[pattern[key].get<std::size_t>()].str(); };
            found.push_back(part("file") + ":" + part("line") + ": " + part("severity") + ": " +
                            part("message") + " [" + part("code") + "]");
            EXPECT_TRUE(IsRule(part("code"))) << line;
            const std::string file = part("file");
            EXPECT_TRUE(fs::exists(std::u8string(file.begin(), file.end()))) << line;
        }
    return found;
}

TEST(ProblemMatchers, TakeEveryFindingOfTheSample) {
    std::vector<std::string> lines = CliRun("check", VELMORA_SAMPLE).Lines();
    ASSERT_GE(lines.size(), 20u);
    const Json task = Json::parse(ReadProjectFile("docs/integration/tasks.json"))["tasks"][0];
    EXPECT_EQ(Matched(task["problemMatcher"]["pattern"], lines), lines);
    const Json ends = task["problemMatcher"]["background"];
    for (const auto& [key, line] : {std::pair("beginsPattern", "velwriter: checking"),
                                    std::pair("endsPattern", "velwriter: waiting for changes")})
        EXPECT_TRUE(std::regex_match(line, std::regex(ends[key].get<std::string>())));
    const Json matcher = Json::parse(ReadProjectFile("docs/integration/github-matcher.json"));
    std::erase_if(lines, [](const std::string& line) { return line.find(": note: ") != std::string::npos; });
    EXPECT_EQ(Matched(matcher["problemMatcher"][0]["pattern"][0], lines), lines);
}

} // namespace
} // namespace velmora
