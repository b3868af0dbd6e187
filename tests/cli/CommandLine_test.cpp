#include "CliRun.h"
#include "GameFolder.h"
#include "cli/RuleTable.h"

#include <gmock/gmock.h>

#include <regex>
#include <set>

namespace velmora {
namespace {

using ::testing::HasSubstr;

TEST(CommandLine, HelpShowsAnExampleOfEachCommand) {
    const CliRun run("--help");
    EXPECT_EQ(run.Status, 0);
    for (const std::string command : {"check", "export", "format"}) {
        EXPECT_THAT(run.Out, HasSubstr("  velwriter " + command + " ~/Velmora"));
        const CliRun own(command, "--help");
        EXPECT_EQ(own.Status, 0);
        EXPECT_THAT(own.Out, HasSubstr("Example: velwriter " + command));
    }
    EXPECT_THAT(CliRun("--version").Out, HasSubstr(VELMORA_VERSION));
}

TEST(CommandLine, BadUsageEndsWithStatusTwoAndAMessage) {
    using Words = std::vector<std::string>;
    const std::string sample = VELMORA_SAMPLE;
    for (const Words& words : {Words{},
                               Words{"unknown"},
                               Words{"check"},
                               Words{"check", "a", "b"},
                               Words{"export"},
                               Words{"format"},
                               Words{"check", sample, "--kind", "planets"},
                               Words{"check", sample, "--format", "csv"},
                               Words{"check", sample, "--ignore", "no-such-rule"},
                               Words{"check", sample, "--ignore", "no-title,No-Image"},
                               Words{"check", sample, "--ignore"},
                               Words{"check", "--list-rules", "--ignore", "x"},
                               Words{"check", sample + "/nowhere"},
                               Words{"check", sample + "/GFX/Comet.pcx"},
                               Words{"export", sample, "--format", "csv"},
                               Words{"export", sample, "--format", "text"},
                               Words{"export", sample, "--sort", "size"},
                               Words{"export", sample, "--event-file", "\xE6\x98\x9F.event"},
                               Words{"format", "--check", "--write", "a.event"},
                               Words{"format", "a.txt"}}) {
        SCOPED_TRACE(::testing::PrintToString(words));
        std::ostringstream out;
        std::ostringstream err;
        EXPECT_EQ(RunVelwriter(words, out, err), 2);
        EXPECT_EQ(out.str(), "");
        EXPECT_THAT(err.str(), ::testing::StartsWith("velwriter: "));
    }
    EXPECT_THAT(CliRun("chekc", sample).Err, HasSubstr("there is no command chekc;"));
    EXPECT_EQ(CliRun("check", "nosuch\x1Bgame").Err, "velwriter: nosuch\\x1Bgame: no such directory\n");
}

TEST(CommandLine, NothingButFormatWriteWrites) {
    GameFolder game;
    game.Write("Data/A.event", GameFolder::Event("Raid") + "Probability 9999999999\r\n");
    game.Write("Data/UP_Issues/A.UPIssue", "UPISSUE 9!\nENDUPISSUE\n");
    const auto before = game.Everything();
    const auto entries = [] {
        return std::distance(std::filesystem::directory_iterator(std::filesystem::current_path()), {});
    };
    const auto beside = entries();
    for (const char* command : {"check", "export"})
        for (const char* format : {"json", command[0] == 'c' ? "text" : "csv"})
            CliRun(command, game.Typed(), "--kind", "events", "--format", format);
    CliRun("export", game.Typed());
    CliRun("format", game.Typed("Data/A.event"), game.Typed("Data/UP_Issues/A.UPIssue"));
    CliRun("format", "--check", game.Typed("Data/A.event"));
    EXPECT_EQ(game.Everything(), before);
    EXPECT_EQ(entries(), beside) << "no log beside the program";
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

std::set<std::string> RuleNames() {
    std::set<std::string> names;
    for (const RuleEntry& rule : Rules())
        names.insert(std::string(rule.Name));
    return names;
}

TEST(RuleTable, IsListedAndExplained) {
    const CliRun run("check", "--list-rules");
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Lines().size(), Rules().size());
    EXPECT_EQ(RuleNames().size(), Rules().size()) << "no name stands twice";
    const std::string guide = ReadProjectFile("docs/velwriter.md");
    for (const RuleEntry& rule : Rules()) {
        EXPECT_THAT(run.Out, HasSubstr(std::string(rule.Name) + " "));
        EXPECT_THAT(guide,
                    HasSubstr("| `" + std::string(rule.Name) + "` | " + std::string(rule.Game) + " |"));
    }
}

/// Names that look like a rule's in the sources of the record core and the program.
std::set<std::string> RulesInSources() {
    std::set<std::string> names;
    const std::regex literal("\"([a-z]+(?:-[a-z]+)+)\"");
    for (const char* folder : {"records", "services", "events", "upissues", "sbmodules", "cli"})
        for (const auto& entry : std::filesystem::recursive_directory_iterator(ProjectPath("src") / folder)) {
            const std::string file = entry.path().filename().string();
            if (file.starts_with("frm") || file.starts_with("RuleTable") || !entry.is_regular_file())
                continue;
            const std::string text = ReadProjectFile("src/" + std::string(folder) + "/" + file);
            for (std::sregex_iterator at(text.begin(), text.end(), literal), end; at != end; ++at)
                names.insert((*at)[1]);
        }
    // Too long a text is told when a window shows it, not by loading or the record check.
    std::erase_if(names, [](const std::string& name) { return name.ends_with("-length"); });
    names.insert(std::string(LoadFailureRule));
    return names;
}

TEST(RuleTable, HoldsEveryRuleOfTheCode) {
    EXPECT_EQ(RulesInSources(), RuleNames());
}

TEST(RuleTable, HelpTextsNameEveryOption) {
    std::string manual = ReadProjectFile("docs/velwriter.1");
    std::erase(manual, '\\');
    const std::string guide = ReadProjectFile("docs/velwriter.md");
    const std::string completion = ReadProjectFile("docs/completion/velwriter.bash");
    const std::regex option("--[a-z-]+");
    std::size_t options = 0;
    for (const std::string command : {"check", "export", "format"}) {
        const std::string help = CliRun(command, "--help").Out;
        for (std::sregex_iterator at(help.begin(), help.end(), option), end; at != end; ++at)
            for (const std::string& text : {manual, guide, completion}) {
                EXPECT_THAT(text, HasSubstr(at->str()));
                ++options;
            }
    }
    EXPECT_GE(options, 30u);
}

} // namespace
} // namespace velmora
