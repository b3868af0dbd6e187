#include "services/clsAPIMisc.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <utility>

namespace velmora {
namespace {

TEST(clsAPIMiscPosix, LetsTheCallerWorkWhileTheProgramRuns) {
    TempFolder folder;
    clsAPIMisc misc;
    // The program waits at a pipe for what only its waiting caller can say.
    ASSERT_EQ(::mkfifo((folder / "go").c_str(), 0600), 0);
    bool told = false;
    misc.WhileWaiting = [&] {
        if (!std::exchange(told, true))
            folder.Write("go", "now\n");
    };
    misc.C2Shell("sh -c 'read word < " + (folder / "go") + "; echo > " + (folder / "done") + "'");
    EXPECT_TRUE(folder.Has("done"));
}

} // namespace
} // namespace velmora
