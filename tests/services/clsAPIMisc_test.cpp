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
    for (const std::optional<std::int16_t> windowStyle : {std::optional<std::int16_t>(), {std::int16_t{0}}}) {
        clsAPIMisc().C2Shell(CopyCommand + (folder / "a.txt") + ' ' + (folder / "b.txt"), windowStyle);
        EXPECT_EQ(folder.Read("b.txt"), "content");
        Files::DeleteFile(folder / "b.txt");
    }
    clsAPIMisc().C2Shell("velmora-no-such-program");
}

TEST(clsAPIMisc, KnowsTheSystem) {
    TempFolder folder;
    clsAPIMisc misc;
    EXPECT_EQ(misc.WindowsDirectory(), Process::SystemFolder());
    EXPECT_EQ(misc.ComputerName(), Process::ComputerName());
    EXPECT_GT(misc.GetFreeDiskSpace(folder.Path()), 0);
    EXPECT_EQ(misc.GetFreeDiskSpace(folder / "missing"), 0);
    using Case = std::pair<std::uint64_t, double>;
    for (const auto& [bytes, millions] :
         {Case{2'460'000, 2.5}, Case{2'440'000, 2.4}, Case{49'999, 0}, Case{7'000'000'000'000, 7'000'000}})
        EXPECT_EQ(clsAPIMisc::MillionsOf(bytes), millions);
}

TEST(clsAPIMisc, BrowsesForAFolder) {
    ScriptedPrompts prompts;
    clsAPIMisc misc;
    using Case = std::pair<std::string, std::string>;
    for (const auto& [picked, folder] :
         {Case{"C:\\", "C:\\"}, Case{"/games/", "/games/"},
          Case{"/games", std::string("/games") + Files::Separator}, Case{"", ""}}) {
        prompts.ExpectPickFolder("Where?", picked);
        EXPECT_EQ(misc.BrowseForFolder("Where?"), folder);
    }
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
