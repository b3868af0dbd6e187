#include "TempFolder.h"
#include "platform/Process.h"

#include <gtest/gtest.h>

#include <thread>

namespace velmora {
namespace {

TEST(Process, RunsACommandLineToItsEndAndKeepsTheCallerAlive) {
    TempFolder folder;
    Process::RunAndWait("velmora-no-such-program", std::nullopt);
    Process::RunAndWait("cmd.exe /c echo one>" + (folder / "out"), std::nullopt);
    EXPECT_EQ(folder.Read("out"), "one\r\n");
    int calls = 0;
    // The command ends only when the waiting caller has been called back.
    folder.Write("wait.bat", ":again\r\n@if not exist \"%~dp0go\" goto again\r\n@echo x>\"%~dp0done\"\r\n");
    Process::RunAndWait("cmd.exe /c " + (folder / "wait.bat"), 0, [&] {
        if (++calls == 2)
            folder.Write("go", "");
    });
    EXPECT_GE(calls, 2);
    EXPECT_TRUE(folder.Has("done"));
}

TEST(Process, StartsWithArgumentsUnchanged) {
    TempFolder folder;
    std::filesystem::create_directory(folder.Host() / "a b");
    Process::Start({Process::ExecutablePath(), "--gtest_list_tests", "--gtest_filter=No\"such\\\"test\\",
                    "--gtest_output=json:" + folder.Path() + "a b\\"});
    // The list of tests goes into the folder only when every argument arrived whole.
    while (std::filesystem::is_empty(folder.Host() / "a b"))
        std::this_thread::yield();
}

} // namespace
} // namespace velmora
