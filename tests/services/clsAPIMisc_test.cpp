#include "services/clsAPIMisc.h"

#include "BrokenPrompts.h"
#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/Process.h"

#include <gtest/gtest.h>

#ifndef _WIN32
#include <sys/stat.h>
#endif

namespace velmora {
namespace {

#ifndef _WIN32
TEST(clsAPIMisc, RunsACommandToItsEndWhileTheCallerWorks) {
    TempFolder folder;
    clsAPIMisc misc;
    // The program waits at a pipe for what only its waiting caller can say.
    ASSERT_EQ(::mkfifo((folder / "go").c_str(), 0600), 0);
    misc.WhileWaiting = [&, told = false]() mutable {
        if (!std::exchange(told, true))
            folder.Write("go", "now\n");
    };
    misc.C2Shell("sh -c 'read word < " + (folder / "go") + "; echo > " + (folder / "done") + "'");
    EXPECT_TRUE(folder.Has("done"));
}
#endif

TEST(clsAPIMisc, BrowsesForAFolder) {
    ScriptedPrompts prompts;
    for (const std::string picked : {"/games/", "/games", ""}) {
        prompts.ExpectPickFolder("Where?", picked);
        EXPECT_EQ(clsAPIMisc().BrowseForFolder("Where?"), Files::Join(picked, ""));
    }
}

TEST(clsAPIMisc, KnowsTheSystemAndNamesItsOperationsInTheSourceOfAFailure) {
    BrokenPrompts prompts;
    clsAPIMisc misc;
    misc.GoToSleep(0);
    EXPECT_EQ(misc.WindowsDirectory(), Process::SystemFolder());
    EXPECT_EQ(misc.ComputerName(), Process::ComputerName());
    EXPECT_GT(misc.GetFreeDiskSpace(TempFolder().Path()), 0);
    EXPECT_EQ(misc.GetFreeDiskSpace("missing/deeper"), 0);
    EXPECT_EQ(clsAPIMisc::MillionsOf(2'460'000), 2.5);
    EXPECT_EQ(clsAPIMisc::MillionsOf(7'000'000'049'999), 7'000'000);
    misc.C2Shell("velmora-no-such-program");
    const Failure failure = FailureOf([&] { (void)misc.BrowseForFolder("Where?"); });
    EXPECT_EQ(failure.Number, FailureAutomation);
    EXPECT_EQ(failure.Description(), "broken");
    EXPECT_EQ(failure.Source, "clsAPIMisc*GoToSleep*WindowsDirectory*ComputerName*GetFreeDiskSpace*"
                              "GetFreeDiskSpace*C2Shell*BrowseForFolder");
}

} // namespace
} // namespace velmora
