#include "Fault.h"
#include "TempFolder.h"
#include "platform/FileLock.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace velmora {
namespace {

TEST(FileLockPosix, EndsWithItsHolderHoweverThatEnds) {
    const TempFolder folder;
    const std::string path = folder / "a.lock";
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const FileLock held(path);
        while (::write(ready[1], "x", 1) == 1)
            ::pause();
        ::_exit(1);
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    EXPECT_FALSE(FileLock::Try(path));
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    EXPECT_TRUE(folder.Has("a.lock"));
    EXPECT_TRUE(FileLock::Try(path));
    ::close(ready[0]);
    ::close(ready[1]);
}

TEST(FileLockPosix, IsFreeThoughItsFileCannotBeRemovedAndIsNoneWithoutAName) {
    const TempFolder folder;
    const std::string path = folder / "a.lock";
    const Fault refused("unlink", 0, EIO);
    for (int round = 0; round < 2; ++round)
        EXPECT_TRUE(FileLock::Try(path));
    const auto held = FileLock::Try(path);
    std::filesystem::remove(folder.Host() / "a.lock");
    EXPECT_TRUE(FileLock::Try(path)) << "another program made its own file";
}

} // namespace
} // namespace velmora
