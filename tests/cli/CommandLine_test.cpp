#include "CliRun.h"
#include "GameFolder.h"
#include "kinds/Rules.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <regex>
#include <set>

namespace velmora {
namespace {

using ::testing::HasSubstr;
namespace fs = std::filesystem;

TEST(CommandLine, HelpShowsAnExampleOfEachCommand) {
    const CliRun run("--help");
    EXPECT_EQ(run.Status, 0);
    for (const std::string command : {"check", "export", "stats", "format"}) {
        EXPECT_THAT(run.Out, HasSubstr("  velwriter " + command + " ~/Velmora"));
        EXPECT_THAT(CliRun(command, "--help").Out, HasSubstr("Example: velwriter " + command));
    }
    EXPECT_THAT(CliRun("--version").Out, HasSubstr(VELMORA_VERSION));
}

TEST(CommandLine, BadUsageEndsWithStatusTwoAndAMessage) {
    for (const char* line :
         {"", "unknown", "check", "check a b", "format", "check GAME --kind planets",
          "check GAME --format csv", "check GAME --ignore no-such-rule",
          "check GAME --ignore no-title,No-Image", "check GAME --ignore", "check --list-rules --ignore x",
          "check GAME/nowhere", "check GAME/GFX/Comet.pcx", "export GAME --format csv",
          "export GAME --format text", "export GAME --sort size",
          "export GAME --event-file \xE6\x98\x9F.event", "format --check --write a.event"}) {
        SCOPED_TRACE(line);
        std::istringstream stream(line);
        std::vector<std::string> words;
        for (std::string word; stream >> word;)
            words.push_back(ReplaceAll(word, "GAME", VELMORA_SAMPLE));
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(RunVelwriter(words, out, err), 2);
        EXPECT_EQ(out.str(), "");
        EXPECT_THAT(err.str(), ::testing::StartsWith("velwriter: "));
    }
    EXPECT_THAT(CliRun("chekc", VELMORA_SAMPLE).Err, HasSubstr("there is no command chekc;"));
    EXPECT_EQ(CliRun("check", "nosuch\x1Bgame").Err, "velwriter: nosuch\\x1Bgame: no such directory\n");
}

TEST(CommandLine, NothingButFormatWriteWrites) {
    GameFolder game;
    const std::pair<std::string, std::string> files[]{
        {"Data/A.event", GameFolder::Event("Raid") + "Probability 9999999999\r\n"},
        {"Data/UP_Issues/A.UPIssue", "UPISSUE 9!\nENDUPISSUE\n"}};
    for (const auto& [name, bytes] : files)
        game.Write(name, bytes);
    const auto entries = [&] {
        return std::pair(std::distance(fs::recursive_directory_iterator(game.Host()), {}),
                         std::distance(fs::directory_iterator(fs::current_path()), {}));
    };
    const auto before = entries();
    for (const char* command : {"check", "export"})
        CliRun(command, game.Typed());
    CliRun("export", game.Typed(), "--kind", "events", "--format", "csv");
    CliRun("format", game.Typed(files[0].first), game.Typed(files[1].first));
    CliRun("format", "--check", game.Typed(files[1].first));
    EXPECT_EQ(entries(), before) << "no file in the game, no log beside the program";
    for (const auto& [name, bytes] : files)
        EXPECT_EQ(game.Read(name), bytes);
}

TEST(CommandLine, TellsWhenTheOutputCannotBeWritten) {
    struct Full : std::streambuf {
        int overflow(int) override { return traits_type::eof(); }
    } full;
    std::ostream out(&full);
    std::ostringstream err;
    EXPECT_EQ(RunVelwriter({"export", VELMORA_SAMPLE}, out, err), 2);
    EXPECT_THAT(err.str(), HasSubstr("the output could not be written"));
}

TEST(RuleTable, IsListedAndExplained) {
    const CliRun run("check", "--list-rules");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Lines().size(), Rules().size());
    const std::string guide = ReadProjectFile("docs/velwriter.md");
    for (const auto& [name, text] : Rules()) {
        EXPECT_THAT(run.Out, HasSubstr(std::string(name) + " "));
        EXPECT_THAT(guide, HasSubstr("| `" + std::string(name) + "` | " + std::string(text) + " |"));
    }
}

TEST(RuleTable, HoldsEveryRuleOfTheSourcesOnce) {
    std::set<std::string> names{"spelling"}; // of one word, as other texts are
    const std::regex literal("\"([a-z]+(?:-[a-z]+)+)\"");
    for (const std::string folder :
         {"records", "services", "events", "upissues", "sbmodules", "kinds", "cli"})
        for (const auto& entry : fs::directory_iterator(ProjectPath("src/" + folder))) {
            const std::string file = entry.path().filename().string();
            if (file.starts_with("frm") || file.starts_with("Rules."))
                continue;
            const std::string text = ReadProjectFile("src/" + folder + "/" + file);
            for (std::sregex_iterator at(text.begin(), text.end(), literal), end; at != end; ++at)
                names.insert((*at)[1]);
        }
    std::vector<std::string> listed;
    for (const RuleEntry& rule : Rules())
        listed.emplace_back(rule.Name);
    EXPECT_THAT(listed, ::testing::UnorderedElementsAreArray(names));
}

TEST(RuleTable, HelpTextsNameEveryOption) {
    std::string manual = ReadProjectFile("docs/velwriter.1");
    std::erase(manual, '\\');
    const std::string guide = ReadProjectFile("docs/velwriter.md");
    const std::string completion = ReadProjectFile("docs/completion/velwriter.bash");
    const std::regex option("--[a-z-]+");
    std::size_t options = 0;
    for (const std::string command :
         {"check", "export", "import", "stats", "format", "diff", "merge", "git", "lsp"}) {
        const std::string help = CliRun(command, "--help").Out;
        for (std::sregex_iterator at(help.begin(), help.end(), option), end; at != end; ++at, ++options)
            for (const std::string& text : {manual, guide, completion})
                EXPECT_THAT(text, HasSubstr(at->str()));
    }
    EXPECT_GE(options, 10u);
}

} // namespace
} // namespace velmora
