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
#include <tuple>
#include <unistd.h>

namespace velmora {
namespace {

using ::testing::HasSubstr;

/// Sets an environment variable for one test.
class Variable {
  public:
    Variable(const char* variable, const char* value) : name(variable) {
        if (const char* was = std::getenv(name))
            old = was;
        value != nullptr ? ::setenv(name, value, 1) : ::unsetenv(name);
    }
    ~Variable() { old ? ::setenv(name, old->c_str(), 1) : ::unsetenv(name); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

  private:
    const char* name;
    std::optional<std::string> old;
};

/// Has a program write into a pipe with a name. Reading that waits, without polling, until the program has
/// written and closed it; so only a caller that does not wait for the program gets round to reading.
std::string StartAndRead(const TempFolder& folder, const std::vector<std::string>& commandLine) {
    EXPECT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    Process::Start(commandLine);
    return folder.Read("pipe");
}

TEST(Process, StartsWithoutWaitingAndPassesArgumentsUnchanged) {
    TempFolder folder;
    folder.Write("Tool.sh", "#!/bin/sh\nprintf '%s|' \"$@\" > \"$1\"\n");
    ASSERT_EQ(::chmod((folder / "Tool.sh").c_str(), 0700), 0);
    EXPECT_EQ(StartAndRead(folder, {folder.Path() + "\\TOOL.sh", folder / "pipe", "a b", "", "$HOME \"'\\",
                                    "caf\xE9"}),
              folder / "pipe" + "|a b||$HOME \"'\\|caf\xC3\xA9|");
}

TEST(Process, FindsProgramsOnThePath) {
    TempFolder folder;
    EXPECT_EQ(StartAndRead(folder, {"sh", "-c", "echo $0 > \"$1\"", "here", folder / "pipe"}), "here\n");
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

TEST(Process, FindsTheUsersFolders) {
    using Case = std::tuple<const char*, const char*, const char*, std::string, std::string>;
    for (const auto& [data, config, home, dataFolder, configFolder] :
         {Case{"/d", "/c/", "/home/u", "/d", "/c"},
          Case{nullptr, nullptr, "/home/\xC3\xA9", "/home/\xE9/.local/share", "/home/\xE9/.config"},
          Case{"", "relative", "/home/u", "/home/u/.local/share", "/home/u/.config"}}) {
        const Variable first("XDG_DATA_HOME", data);
        const Variable second("XDG_CONFIG_HOME", config);
        const Variable third("HOME", home);
        EXPECT_EQ(Process::UserDataFolder(), dataFolder + "/VelmoraWriter");
        EXPECT_EQ(Process::UserConfigFolder(), configFolder + "/VelmoraWriter");
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
