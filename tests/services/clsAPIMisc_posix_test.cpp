#include "services/clsAPIMisc.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(clsAPIMiscPosix, LetsTheCallerWorkWhileTheProgramRuns) {
    TempFolder folder;
    clsAPIMisc misc;
    misc.WhileWaiting = [&] { folder.Write("go", ""); };
    misc.C2Shell("sh -c 'until [ -e " + (folder / "go") + " ]; do :; done; echo > " + (folder / "done") +
                 "'");
    EXPECT_TRUE(folder.Has("done"));
}

} // namespace
} // namespace velmora
