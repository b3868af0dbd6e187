#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/Files.h"
#include "platform/Process.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::HasSubstr;

TEST(Process, SaysWhyAProgramCannotBeStarted) {
    TempFolder folder;
    folder.Write("data.txt", "no program");
    for (const std::string& name :
         {std::string(), std::string("velmora-no-such-program"), folder / "missing", folder / "data.txt"}) {
        const Failure failure = FailureOf([&] { Process::Start({name, "x"}); });
        EXPECT_EQ(failure.Number, FailureFileNotFound);
        EXPECT_THAT(failure.Description(), HasSubstr("Cannot start " + name));
    }
    EXPECT_EQ(FailureOf([] { Process::Start({}); }).Number, FailureFileNotFound);
}

TEST(Process, KnowsTheSystem) {
    EXPECT_TRUE(Files::FileExists(Process::ExecutablePath()));
    EXPECT_THAT(Files::NameOf(Process::ExecutablePath()), HasSubstr("platform_tests"));
    EXPECT_TRUE(Files::FolderExists(Process::SystemFolder())) << Process::SystemFolder();
    EXPECT_FALSE(Process::ComputerName().empty());
    for (const std::string& folder : {Process::UserDataFolder(), Process::UserConfigFolder()}) {
        EXPECT_EQ(Files::NameOf(folder), "VelmoraWriter");
        EXPECT_TRUE(Files::HostPath(folder).is_absolute()) << folder;
    }
    EXPECT_FALSE(Process::Environment("PATH").empty());
    EXPECT_EQ(Process::Environment("VELMORA_NO_SUCH_VARIABLE"), "");
    Process::Sleep(-1);
    const TempFolder folder;
    const auto free = Process::FreeBytes(folder.Path()).value_or(0);
    EXPECT_GT(free, 0u);
    EXPECT_LE(free, std::filesystem::space(folder.Host()).capacity);
    EXPECT_EQ(Process::FreeBytes(folder / "missing"), std::nullopt);
}

} // namespace
} // namespace velmora
