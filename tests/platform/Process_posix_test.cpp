#include "ScratchRegistry.h"
#include "platform/Process.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <sys/stat.h>
#include <sys/wait.h>
#include <tuple>

namespace velmora {
namespace {

TEST(Process, StartsWithoutWaitingAndPassesArgumentsUnchanged) {
    TempFolder folder;
    const std::string pipe = folder / "pipe";
    folder.Write("Tool.sh", "#!/bin/sh\nprintf '%s|' \"$@\" > \"$1\"\n");
    ASSERT_EQ(::chmod((folder / "Tool.sh").c_str(), 0700), 0);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    Process::Start({folder.Path() + "\\TOOL.sh", pipe, "a b", "", "$HOME \"'\\", "caf\xE9"});
    // Writer and reader of a pipe wait for each other: a caller that waited would never get here.
    EXPECT_EQ(folder.Read("pipe"), pipe + "|a b||$HOME \"'\\|caf\xC3\xA9|");
}

TEST(Process, LeavesNoChildBehind) {
    Process::Start({"true"});
    EXPECT_THROW(Process::Start({"velmora-no-such-program"}), std::exception);
    Process::RunAndWait("exit 3", 1);
    errno = 0;
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST(Process, RunsACommandLineToItsEnd) {
    TempFolder folder;
    Process::RunAndWait("(echo one; echo caf\xE9; velmora-none) > '" + (folder / "out") + "' 2>&1", {});
    EXPECT_THAT(folder.Read("out"), ::testing::MatchesRegex("one\ncaf\xC3\xA9\n.*velmora-none.*\n"));
}

TEST(Process, ReadsTheEnvironment) {
    const std::string oldHome = Process::Environment("HOME");
    using Case = std::tuple<const char*, const char*, const char*, std::string, std::string>;
    for (const auto& [data, config, home, dataFolder, configFolder] :
         {Case{"/d", "/c/", "/home/u", "/d", "/c"},
          Case{"", "relative", "/home/\xC3\xA9", "/home/\xE9/.local/share", "/home/\xE9/.config"}}) {
        SetEnvironment("XDG_DATA_HOME", data);
        SetEnvironment("XDG_CONFIG_HOME", config);
        SetEnvironment("HOME", home);
        EXPECT_EQ(Process::UserDataFolder(), dataFolder + "/VelmoraWriter");
        EXPECT_EQ(Process::UserConfigFolder(), configFolder + "/VelmoraWriter");
    }
    SetEnvironment("XDG_CONFIG_HOME", "");
    SetEnvironment("HOME", "");
    EXPECT_TRUE(Process::UserConfigFolder().starts_with('/')) << "without a home named the system knows it";
    SetEnvironment("HOME", oldHome);
    SetEnvironment("VELMORA_TEST", "caf\xC3\xA9 \xE2\x82\xAC");
    EXPECT_EQ(Process::Environment("VELMORA_TEST"), "caf\xE9 \x80");
}

} // namespace
} // namespace velmora
