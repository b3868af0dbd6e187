#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/Process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmora {
namespace {

using ::testing::HasSubstr;

TEST(Process, SaysWhyAProgramCannotBeStarted) {
    TempFolder folder;
    folder.Write("data.txt", "no program");
    for (const std::vector<std::string>& commandLine : {std::vector<std::string>{},
                                                        {""},
                                                        {"velmora-no-such-program", "x"},
                                                        {folder / "missing"},
                                                        {folder / "data.txt"}}) {
        const std::string name = commandLine.empty() ? "" : commandLine.front();
        const Failure failure = FailureOf([&] { Process::Start(commandLine); });
        EXPECT_EQ(failure.Number, FailureFileNotFound);
        EXPECT_THAT(failure.Description(), HasSubstr("Cannot start " + name));
    }
}

TEST(Process, KnowsItsOwnProgram) {
    const std::string path = Process::ExecutablePath();
    EXPECT_TRUE(Files::FileExists(path)) << path;
    EXPECT_THAT(Files::NameOf(path), HasSubstr("platform_tests"));
}

TEST(Process, ReadsFreeBytes) {
    TempFolder folder;
    const auto free = Process::FreeBytes(folder.Path());
    ASSERT_TRUE(free);
    EXPECT_LE(*free, std::filesystem::space(folder.Host()).capacity);
    EXPECT_GT(*free, 0u);
    EXPECT_EQ(Process::FreeBytes(folder / "missing"), std::nullopt);
}

TEST(Process, KnowsTheSystem) {
    EXPECT_TRUE(Files::FolderExists(Process::SystemFolder())) << Process::SystemFolder();
    EXPECT_FALSE(Process::ComputerName().empty());
    for (const std::string& folder : {Process::UserDataFolder(), Process::UserConfigFolder()}) {
        EXPECT_EQ(Files::NameOf(folder), "VelmoraWriter");
        EXPECT_TRUE(Files::HostPath(folder).is_absolute()) << folder;
    }
}

TEST(Process, ReadsTheEnvironment) {
    EXPECT_THAT(Process::Environment("PATH"), ::testing::Not(::testing::IsEmpty()));
    EXPECT_EQ(Process::Environment("VELMORA_NO_SUCH_VARIABLE"), "");
}

TEST(Process, DoesNotSleepForLessThanNothing) {
    Process::Sleep(0);
    Process::Sleep(-1);
}

} // namespace
} // namespace velmora
