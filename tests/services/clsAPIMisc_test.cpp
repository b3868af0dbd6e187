#include "services/clsAPIMisc.h"

#include "FailureOf.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "platform/Process.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>

namespace velmora {
namespace {

#ifdef _WIN32
const std::string CopyCommand = "cmd /c copy ";
#else
const std::string CopyCommand = "cp ";
#endif

/// Prompts whose folder picker breaks down once `Broken` is set.
struct BreakingPrompts : ScriptedPrompts {
    std::function<void()> Broken;
    std::string PickFolder(const std::string& title) override {
        if (Broken)
            Broken();
        return ScriptedPrompts::PickFolder(title);
    }
};

TEST(clsAPIMisc, RunsACommandToItsEnd) {
    TempFolder folder;
    folder.Write("a.txt", "content");
    clsAPIMisc().C2Shell(CopyCommand + (folder / "a.txt") + ' ' + (folder / "b.txt"));
    EXPECT_EQ(folder.Read("b.txt"), "content");
    clsAPIMisc().C2Shell(CopyCommand + (folder / "a.txt") + ' ' + (folder / "c.txt"), std::int16_t{0});
    EXPECT_EQ(folder.Read("c.txt"), "content");
    clsAPIMisc().C2Shell("velmora-no-such-program");
}

TEST(clsAPIMisc, KnowsTheSystem) {
    clsAPIMisc misc;
    misc.GoToSleep(0);
    EXPECT_EQ(misc.WindowsDirectory(), Process::SystemFolder());
    EXPECT_EQ(misc.ComputerName(), Process::ComputerName());
}

TEST(clsAPIMisc, GivesFreeSpaceInMillions) {
    TempFolder folder;
    const double free = clsAPIMisc().GetFreeDiskSpace(folder.Path());
    EXPECT_GT(free, 0);
    EXPECT_LE(free, static_cast<double>(std::filesystem::space(folder.Host()).capacity) / 1e6 + 0.1);
    EXPECT_EQ(clsAPIMisc().GetFreeDiskSpace(folder / "missing"), 0);

    EXPECT_EQ(clsAPIMisc::MillionsOf(2'460'000), 2.5);
    EXPECT_EQ(clsAPIMisc::MillionsOf(2'440'000), 2.4);
    EXPECT_EQ(clsAPIMisc::MillionsOf(49'999), 0);
    EXPECT_EQ(clsAPIMisc::MillionsOf(7'000'000'000'000), 7'000'000);
}

TEST(clsAPIMisc, BrowsesForAFolder) {
    const std::string sep(1, Files::Separator);
    ScriptedPrompts prompts;
    prompts.ExpectPickFolder("Where?", "C:\\")
        .ExpectPickFolder("Where?", "/games/")
        .ExpectPickFolder("Where?", "/games")
        .ExpectPickFolder("Where?", "");
    clsAPIMisc misc;
    EXPECT_EQ(misc.BrowseForFolder("Where?"), "C:\\");
    EXPECT_EQ(misc.BrowseForFolder("Where?"), "/games/");
    EXPECT_EQ(misc.BrowseForFolder("Where?"), "/games" + sep);
    EXPECT_EQ(misc.BrowseForFolder("Where?"), "");
}

TEST(clsAPIMisc, NamesAllItsOperationsInTheSourceOfAFailure) {
    BreakingPrompts prompts;
    prompts.ExpectPickFolder("", "");
    clsAPIMisc misc;
    (void)misc.BrowseForFolder("Where?");
    prompts.Broken = [] { throw Failure(FailureDeviceError, "No picker", "elsewhere", 17); };
    const Failure second = FailureOf([&] { (void)misc.BrowseForFolder("Where?"); });
    EXPECT_EQ(second.Number, FailureDeviceError);
    EXPECT_EQ(second.Description(), "No picker");
    EXPECT_EQ(second.Source, "clsAPIMisc*BrowseForFolder*BrowseForFolder");
    EXPECT_EQ(second.Line, 17);

    misc.GoToSleep(0);
    (void)misc.WindowsDirectory();
    (void)misc.ComputerName();
    (void)misc.GetFreeDiskSpace("");
    misc.C2Shell("velmora-no-such-program");
    prompts.Broken = [] { throw std::runtime_error("broken"); };
    const Failure last = FailureOf([&] { (void)misc.BrowseForFolder("Where?"); });
    EXPECT_EQ(last.Number, FailureAutomation);
    EXPECT_EQ(last.Description(), "broken");
    EXPECT_EQ(last.Source,
              "clsAPIMisc*BrowseForFolder*BrowseForFolder*GoToSleep*WindowsDirectory*ComputerName"
              "*GetFreeDiskSpace*C2Shell*BrowseForFolder");
}

} // namespace
} // namespace velmora
