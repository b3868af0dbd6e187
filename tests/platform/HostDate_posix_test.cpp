#include "platform/HostDate.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace velmora {
namespace {

TEST(HostDate, LeavesTheFormOpenWithoutACustom) {
    for (const char* locale : {"C", "POSIX", "C.UTF-8", "no such locale"}) {
        ::setenv("LC_ALL", locale, 1);
        EXPECT_EQ(HostDate(0), std::nullopt) << locale;
    }
    ::setenv("LC_ALL", "C", 1);
}

} // namespace
} // namespace velmora
