#include "TempFolder.h"
#include "platform/Files.h"
#include "platform/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <cstdlib>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {
namespace {

using ::testing::HasSubstr;

/// Sets an environment variable for one test.
class Variable {
  public:
    Variable(const char* name, const char* value) : Name(name) {
        if (const char* old = std::getenv(name)) {
            Old = old;
        }
        value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~Variable() { Old ? ::setenv(Name, Old->c_str(), 1) : ::unsetenv(Name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* Name;
    std::optional<std::string> Old;
};

/// A pipe with a name: reading it waits, without polling, until a started program has written and closed it.
std::string ReadPipe(const std::filesystem::path& pipe) {
    std::ifstream file(pipe, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Process, StartsWithoutWaitingAndPassesArgumentsUnchanged) {
    TempFolder folder;
    ASSERT_EQ(::mkfifo((folder.Host() / "pipe").c_str(), 0600), 0);
    folder.Write("Tool.sh", "#!/bin/sh\nprintf '%s|' \"$@\" > \"$1\"\n");
    ASSERT_EQ(::chmod((folder.Host() / "Tool.sh").c_str(), 0700), 0);
    // Only a caller that does not wait gets round to reading what the program wants to write.
    Process::Start({folder.Path() + "\\TOOL.sh", folder / "pipe", "a b", "", "$HOME \"'\\", "caf\xE9"});
    EXPECT_EQ(ReadPipe(folder.Host() / "pipe"),
              (folder.Host() / "pipe").string() + "|a b||$HOME \"'\\|caf\xC3\xA9|");
}

TEST(Process, FindsProgramsOnThePath) {
    TempFolder folder;
    ASSERT_EQ(::mkfifo((folder.Host() / "pipe").c_str(), 0600), 0);
    Process::Start({"sh", "-c", "echo $0 > \"$1\"", "here", folder / "pipe"});
    EXPECT_EQ(ReadPipe(folder.Host() / "pipe"), "here\n");
}

TEST(Process, LeavesNoChildBehind) {
    Process::Start({"true"});
    EXPECT_THROW(Process::Start({"velmora-no-such-program"}), std::exception);
    errno = 0;
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(Process, RunsACommandLineToItsEnd) {
    TempFolder folder;
    const std::string file = folder / "out";
    Process::RunAndWait("echo one > '" + file + "'; echo caf\xE9 >> '" + file + "'", std::nullopt);
    EXPECT_EQ(folder.Read("out"), "one\ncaf\xC3\xA9\n");
    Process::RunAndWait("exit 3", 1);
    Process::RunAndWait("velmora-no-such-program 2> '" + file + "'", std::nullopt);
    EXPECT_THAT(folder.Read("out"), HasSubstr("velmora-no-such-program"));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST(Process, KeepsTheCallerAliveWhileItWaits) {
    TempFolder folder;
    int calls = 0;
    // The command ends only when the waiting caller has been called back.
    const auto release = [&] {
        if (++calls == 2) {
            folder.Write("go", "");
        }
    };
    Process::RunAndWait("until [ -e '" + (folder / "go") + "' ]; do sleep 0.01; done; : > '" +
                            (folder / "done") + "'",
                        std::nullopt, release);
    EXPECT_GE(calls, 2);
    EXPECT_TRUE(folder.Has("done"));
}

TEST(Process, FindsTheUsersFolders) {
    struct Case {
        const char* Data;
        const char* Config;
        const char* Home;
        std::string DataFolder;
        std::string ConfigFolder;
    };
    for (const Case& each : {Case{"/d", "/c/", "/home/u", "/d/VelmoraWriter", "/c/VelmoraWriter"},
                             Case{nullptr, nullptr, "/home/u", "/home/u/.local/share/VelmoraWriter",
                                  "/home/u/.config/VelmoraWriter"},
                             Case{"", "relative", "/home/u", "/home/u/.local/share/VelmoraWriter",
                                  "/home/u/.config/VelmoraWriter"},
                             Case{nullptr, nullptr, "/home/\xC3\xA9", "/home/\xE9/.local/share/VelmoraWriter",
                                  "/home/\xE9/.config/VelmoraWriter"}}) {
        const Variable data("XDG_DATA_HOME", each.Data);
        const Variable config("XDG_CONFIG_HOME", each.Config);
        const Variable home("HOME", each.Home);
        EXPECT_EQ(Process::UserDataFolder(), each.DataFolder);
        EXPECT_EQ(Process::UserConfigFolder(), each.ConfigFolder);
    }
    const Variable home("HOME", nullptr);
    EXPECT_TRUE(Files::HostPath(Process::UserDataFolder()).is_absolute());
}

TEST(Process, ReadsTheEnvironmentInTheCodePage) {
    const Variable variable("VELMORA_TEST", "caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(Process::Environment("VELMORA_TEST"), "caf\xE9 \x80");
}

} // namespace
} // namespace velmora
