#include "platform/FileLock.h"

#include "FailureOf.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <utility>

namespace velmora {
namespace {

TEST(FileLock, KeepsOthersOffAndLeavesNothingBehind) {
    TempFolder folder;
    const std::string path = folder / "a.lock";
    folder.Write("a.lock", ""); // of a program that was killed
    for (int round = 0; round < 2; ++round) {
        auto first = FileLock::Try(path);
        ASSERT_TRUE(first);
        EXPECT_FALSE(FileLock::Try(path));
        const FileLock moved(std::move(*first));
        first.reset();
        EXPECT_FALSE(FileLock::Try(path));
    }
    EXPECT_FALSE(folder.Has("a.lock"));
    EXPECT_NE(FailureOf([&] { FileLock::Try(folder / "no/a.lock"); }).Number, 0);
}

} // namespace
} // namespace velmora
