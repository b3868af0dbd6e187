#include "platform/CodePage.h"
#include "platform/HostCodePage_posix.h"
#include "platform/HostDate.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <tuple>

namespace velmora {
namespace {

using HostCodePage::TableOf;

TEST(HostCodePage, KnowsSingleByteSets) {
    using Case = std::tuple<const char*, unsigned char, char32_t>;
    for (const auto& [set, byte, character] :
         {Case{"ISO-8859-2", 0xB1, 0x0105}, Case{"WINDOWS-1251", 0xC6, 0x0416}, Case{"KOI8-R", 0xF6, 0x0416},
          Case{"ISO-8859-15", 0xA4, 0x20AC}, Case{"WINDOWS-1252", '~', U'~'}})
        EXPECT_EQ(TableOf(set).value_or(HostCodePage::Table{})[byte], character) << set;
    for (const char* set : {"UTF-8", "ANSI_X3.4-1968", "SHIFT_JIS", "EUC-JP", "GB18030", "BIG5", "UTF-16",
                            "UTF-7", "ISO-2022-JP", "EBCDIC-US", "no such set", ""})
        EXPECT_FALSE(TableOf(set)) << set << " is left to the stand-in";
}

TEST(HostCodePage, FillsGapsSoThatEveryByteHasACharacterOfItsOwn) {
    for (const char* set : {"ISO-8859-3", "ISO-8859-7", "ISO-8859-8", "WINDOWS-1251", "WINDOWS-1253",
                            "WINDOWS-1255", "TIS-620", "CP437", "WINDOWS-1252"}) {
        SCOPED_TRACE(set);
        auto table = TableOf(set);
        ASSERT_TRUE(table);
        CodePage::FillGaps(*table);
        EXPECT_EQ(std::set<char32_t>(table->begin(), table->end()).size(), 256u);
        for (int byte = 0; set == std::string("WINDOWS-1252") && byte < 256; ++byte)
            EXPECT_EQ((*table)[byte], CodePage::ToUnicode(static_cast<unsigned char>(byte))) << byte;
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
