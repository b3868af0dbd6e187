#include "platform/CodePage.h"
#include "platform/HostCodePage_posix.h"
#include "platform/HostDate.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

namespace velmora {
namespace {

using HostCodePage::TableOf;

TEST(HostCodePage, KnowsSingleByteSets) {
    EXPECT_EQ(TableOf("KOI8-R").value_or(HostCodePage::Table{})[0xF6], 0x0416u);
    for (const char* set : {"UTF-8", "ANSI_X3.4-1968", "SHIFT_JIS", "EUC-JP", "GB18030", "UTF-16", "UTF-7",
                            "ISO-2022-JP", "EBCDIC-US", "no such set", ""})
        EXPECT_FALSE(TableOf(set)) << set << " is left to the stand-in";
}

TEST(HostCodePage, FillsGapsSoThatEveryByteHasACharacterOfItsOwn) {
    for (const char* set : {"ISO-8859-3", "WINDOWS-1253", "WINDOWS-1255", "TIS-620", "WINDOWS-1252"}) {
        auto table = TableOf(set).value_or(HostCodePage::Table{});
        CodePage::FillGaps(table);
        EXPECT_EQ(std::set<char32_t>(table.begin(), table.end()).size(), 256u) << set;
        for (int byte = 0; set == std::string("WINDOWS-1252") && byte < 256; ++byte)
            EXPECT_EQ(table[byte], CodePage::ToUnicode(static_cast<unsigned char>(byte))) << byte;
    }
}

TEST(HostDate, LeavesTheFormOpenWithoutACustom) {
    for (const char* locale : {"POSIX", "C.UTF-8", "no such locale", "C"}) {
        ::setenv("LC_ALL", locale, 1);
        EXPECT_EQ(HostDate(0), std::nullopt) << locale;
    }
}

} // namespace
} // namespace velmora
