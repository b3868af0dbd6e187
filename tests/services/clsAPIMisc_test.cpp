#include "services/clsAPIMisc.h"

#include "BrokenPrompts.h"
#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/Process.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace velmora {
namespace {

#ifdef _WIN32
const std::string CopyCommand = "cmd /c copy ";
#else
const std::string CopyCommand = "cp ";
#endif

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
    BrokenPrompts prompts;
    clsAPIMisc misc;
    misc.GoToSleep(0);
    (void)misc.WindowsDirectory();
    (void)misc.ComputerName();
    (void)misc.GetFreeDiskSpace("");
    misc.C2Shell("velmora-no-such-program");
    const Failure failure = FailureOf([&] { (void)misc.BrowseForFolder("Where?"); });
    EXPECT_EQ(failure.Number, FailureAutomation);
    EXPECT_EQ(failure.Description(), "broken");
    EXPECT_EQ(failure.Source,
              "clsAPIMisc*GoToSleep*WindowsDirectory*ComputerName*GetFreeDiskSpace*C2Shell*BrowseForFolder");
}

} // namespace
} // namespace velmora
