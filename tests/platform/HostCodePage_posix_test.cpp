#include "platform/CodePage.h"
#include "platform/HostCodePage_posix.h"

#include <gtest/gtest.h>

#include <set>

namespace velmora {
namespace {

using HostCodePage::TableOf;

TEST(HostCodePage, KnowsSingleByteSets) {
    struct Case {
        const char* Set;
        unsigned char Byte;
        char32_t Character;
    };
    for (const Case& each : {Case{"ISO-8859-1", 0xE9, 0x00E9}, Case{"ISO-8859-2", 0xB1, 0x0105},
                             Case{"WINDOWS-1251", 0xC6, 0x0416}, Case{"KOI8-R", 0xF6, 0x0416},
                             Case{"ISO-8859-15", 0xA4, 0x20AC}, Case{"ISO-8859-7", 0xE1, 0x03B1}}) {
        SCOPED_TRACE(each.Set);
        const auto table = TableOf(each.Set);
        ASSERT_TRUE(table);
        EXPECT_EQ((*table)[each.Byte], each.Character);
        EXPECT_EQ((*table)['~'], U'~');
    }
}

TEST(HostCodePage, LeavesAllOthersToTheStandIn) {
    for (const char* set : {"UTF-8", "ANSI_X3.4-1968", "SHIFT_JIS", "EUC-JP", "GB18030", "BIG5", "UTF-16",
                            "UTF-7", "ISO-2022-JP", "EBCDIC-US", "no such set", ""}) {
        EXPECT_FALSE(TableOf(set)) << set;
    }
}

TEST(HostCodePage, EveryByteOfEverySetGetsACharacterOfItsOwn) {
    for (const char* set : {"ISO-8859-1", "ISO-8859-3", "ISO-8859-7", "ISO-8859-8", "WINDOWS-1251",
                            "WINDOWS-1252", "WINDOWS-1253", "WINDOWS-1255", "TIS-620", "CP437"}) {
        SCOPED_TRACE(set);
        auto table = TableOf(set);
        ASSERT_TRUE(table);
        CodePage::FillGaps(*table);
        EXPECT_EQ(std::set<char32_t>(table->begin(), table->end()).size(), 256u);
    }
}

TEST(HostCodePage, FillsGapsWithTheControlsOfTheSameNumber) {
    auto table = TableOf("WINDOWS-1252");
    ASSERT_TRUE(table);
    CodePage::FillGaps(*table);
    for (const unsigned byte : {0x81u, 0x8Du, 0x8Fu, 0x90u, 0x9Du}) {
        EXPECT_EQ((*table)[byte], byte);
    }
    for (int byte = 0; byte < 256; ++byte) {
        EXPECT_EQ((*table)[byte], CodePage::ToUnicode(static_cast<unsigned char>(byte))) << byte;
    }
}

} // namespace
} // namespace velmora
