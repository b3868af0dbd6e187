#include "CliRun.h"
#include "GameFolder.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <array>
#include <cstdio>

namespace velmora {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

/// A repository of git with one file of events, driven by the real programs.
class GitRepository : public GameFolder {
  public:
    GitRepository() {
        Git("init -q -b main && git config user.name N && git config user.email n@example.org && "
            "git config core.autocrlf false");
        Change("main", "Title", "Title", "start");
    }

    /// The words go to git, in a shell.
    std::string Git(const std::string& words) { return Shell("git " + words); }
    /// Runs the commands of a page of the documentation, which stand behind "$ ", in an empty folder; what it
    /// says that they print has to be found in this order.
    void Play(const std::string& page) {
        std::string script =
            "set -e; mkdir page; cd page; PATH=$(dirname " VELWRITER "):$PATH; SAMPLE='" VELMORA_SAMPLE "'\n";
        std::vector<std::string> printed;
        for (const std::string& line : Split(ReadProjectFile(page), "\n"))
            if (line.starts_with("    $ "))
                script += line.substr(6) + "\n";
            else if (line.starts_with("    "))
                printed.push_back(line.substr(4));
        const std::string output =
            Shell("git config --global user.name N; git config --global user.email n@example.org\n" + script);
        EXPECT_EQ(Status, 0) << output;
        std::size_t at = 0;
        for (const std::string& line : printed) {
            const std::size_t found = output.find(line, at);
            EXPECT_NE(found, std::string::npos) << line << "\n  is not in\n" << output.substr(at);
            at = found == std::string::npos ? at : found + line.size();
        }
    }
    std::string Velwriter(const std::string& words) { return Shell(VELWRITER " " + words); }

    /// Commits the file with one text of its record replaced.
    void Change(const std::string& branch, const std::string& field, const std::string& text,
                const std::string& message) {
        Git("switch -q " + branch);
        clsEvent event = SoundEvent("Raid");
        (field == "Title" ? event.Title : event.Description) = text;
        Write(File, event.GenerateEventString(false));
        Git("add -A && git commit -q -m " + message);
    }
    static constexpr const char* File = "Data/My own.event";
    int Status = 0;

  private:
    std::string Shell(const std::string& line) {
        std::string output;
        std::FILE* pipe = ::popen(("cd '" + Host().string() +
                                   "' && export HOME=$PWD GIT_CONFIG_NOSYSTEM=1 && { " + line + "\n} 2>&1")
                                      .c_str(),
                                  "r");
        std::array<char, 4096> bytes{};
        while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe))
            output.append(bytes.data(), count);
        Status = ::pclose(pipe);
        return output;
    }
};

TEST(GitCommand, MakesGitMergeAndCompareByRecordAndField) {
    GitRepository git;
    const std::string told = git.Velwriter("git --enable");
    ASSERT_EQ(git.Status, 0) << told;
    EXPECT_THAT(told, HasSubstr("merge %O %A %B -o %A --name %P"));
    EXPECT_THAT(told, HasSubstr("*.[eE][vV][eE][nN][tT] diff=velmora merge=velmora"));

    git.Git("branch other");
    git.Change("other", "Description", "They come.", "theirs");
    git.Change("main", "Title", "The raid", "ours");
    // Texts of neighbouring lines: line by line this is a conflict.
    const std::string clean = git.Git("merge other -m both");
    EXPECT_EQ(git.Status, 0) << clean;
    EXPECT_THAT(git.Read(GitRepository::File), HasSubstr("\"The raid\""));
    EXPECT_THAT(git.Read(GitRepository::File), HasSubstr("\"They come.\""));
    EXPECT_THAT(git.Git("diff HEAD~1"), HasSubstr("diff --velwriter Data/My own.event\n~ Raid"));
    EXPECT_EQ(git.Status, 0);
    EXPECT_THAT(git.Git("diff HEAD~1"), HasSubstr("    Description: "));

    git.Git("switch -q other && git reset -q --hard main && git switch -q main");
    git.Change("other", "Title", "A raid", "theirs");
    git.Change("main", "Title", "Raiders", "ours");
    const std::string conflict = git.Git("merge other -m both");
    EXPECT_NE(git.Status, 0);
    EXPECT_THAT(conflict,
                HasSubstr("velwriter: Data/My own.event: conflict: Raid: both sides changed Title"));
    const std::string marked = git.Read(GitRepository::File);
    EXPECT_THAT(marked, ::testing::StartsWith("<<<<<<< ours\r\n"));
    EXPECT_THAT(marked, HasSubstr("\"Raiders\""));
    EXPECT_THAT(marked, HasSubstr("\"A raid\""));
    EXPECT_THAT(git.Git("status --porcelain"), HasSubstr("UU "));
    EXPECT_THAT(git.Git("diff --cached"), HasSubstr("not merged yet"));
    EXPECT_EQ(git.Status, 0);
    EXPECT_THAT(git.Git("diff HEAD"), HasSubstr("+<<<<<<< ours"));
    EXPECT_EQ(git.Status, 0);
}

TEST(GitCommand, ComparesFilesThatComeAndGo) {
    GitRepository git;
    git.Velwriter("git --enable");
    git.Write("Data/New.event", GameFolder::Event("Fresh"));
    git.Git("add -A");
    EXPECT_THAT(git.Git("diff --cached"), HasSubstr("+ Fresh (New.event)"));
    EXPECT_EQ(git.Status, 0);
    EXPECT_THAT(git.Git("diff --cached -R"), HasSubstr("- Fresh (New.event)"));
}

TEST(GitCommand, DoesWhatThePageAboutTeamsSays) {
    GitRepository().Play("docs/working-in-a-team.md");
}

TEST(GitCommand, LeavesNothingBehind) {
    GitRepository git;
    const std::string attributes = ".git/info/attributes";
    for (const std::string before : {"", "*.txt text\n"}) {
        if (!before.empty())
            git.Write(attributes, before);
        const std::string config = git.Read(".git/config");
        EXPECT_EQ(git.Velwriter("git --status"), "not enabled\n");
        EXPECT_NE(git.Status, 0);
        git.Velwriter("git --enable");
        const std::string once = git.Read(attributes);
        git.Velwriter("git --enable");
        EXPECT_EQ(git.Read(attributes), once) << "twice is once";
        EXPECT_THAT(git.Velwriter("git --status"), ::testing::StartsWith("enabled: "));
        EXPECT_EQ(git.Status, 0);
        git.Write(attributes, before);
        EXPECT_THAT(git.Velwriter("git --status"), ::testing::StartsWith("half enabled"));
        git.Velwriter("git --enable; " VELWRITER " git --disable");
        EXPECT_EQ(git.Read(attributes), before);
        EXPECT_EQ(git.Has(attributes), !before.empty());
        EXPECT_THAT(git.Git("config --list --local"), Not(HasSubstr("velmora")));
        EXPECT_FALSE(git.Has(".git/velwriter.config"));
        EXPECT_THAT(git.Read(".git/config"), Not(HasSubstr("velwriter")));
    }
    EXPECT_THAT(CliRun("git").Err, HasSubstr("git needs --enable, --disable or --status"));
    const std::string nowhere = git.Velwriter("git --status; cd / && " VELWRITER " git --enable");
    EXPECT_THAT(nowhere, HasSubstr("git finds no repository here"));
}

} // namespace
} // namespace velmora
