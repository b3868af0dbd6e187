#include "records/LineGrammar.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

struct LineCase {
    std::string Line;
    std::string Key;
    std::string Value;
    bool UnneededSpace = false;
};

void Check(const LineCase& expected, bool keepBlanks) {
    SCOPED_TRACE(expected.Line);
    std::string scratch;
    KeyValue parts;
    ASSERT_TRUE(SplitLine(expected.Line, keepBlanks, scratch, parts));
    EXPECT_EQ(parts.Key, expected.Key);
    EXPECT_EQ(parts.Value, expected.Value);
    EXPECT_EQ(parts.UnneededSpace, expected.UnneededSpace);
}

TEST(LineGrammar, TakesLinesApart) {
    const LineCase cases[] = {
        {"  Title              \"A Fine Day\"", "Title", "A Fine Day"},
        {"\tTitle \t \t\" kept blanks \"", "Title", " kept blanks "},
        {"Title\t\t\"x\"", "Title", "x"},
        {"Title \"open end", "Title", "open end"},
        {"Title \"first\" and \"second\"", "Title", "first"},
        {"\"nameless\"", "", "nameless"},
        {"EVENT Raid", "EVENT", "Raid"},
        {"  EventType          1  ", "EventType", "1"},
        {"EventType 1 0", "EventType", "10", true},
        {"EVENT My  Raid\tToday", "EVENT", "MyRaidToday", true},
        {"EventType\t1", "EventType", "1"},
        {"\tEventType\t1", "", "EventType1", true},
        {"\tEventType", "", "EventType"},
        {"ENDEVENT", "ENDEVENT", ""},
        {"ENDEVENT\t", "ENDEVENT", ""},
        {"/ / x", "/", "/x", true},
    };
    for (const LineCase& lineCase : cases)
        Check(lineCase, false);
}

TEST(LineGrammar, KeepsOneBlankBeforeEachPieceWhereAsked) {
    const LineCase cases[] = {
        {"Model Starbase01", "Model", " Starbase01"},    {"Name Bastion   Mk\tI", "Name", " Bastion Mk I"},
        {"Model \"Starbase01\"", "Model", "Starbase01"}, {"ENDSBMOD", "ENDSBMOD", ""},
        {"SBMOD 7 Bastion", "SBMOD", " 7 Bastion"},
    };
    for (const LineCase& lineCase : cases)
        Check(lineCase, true);
}

TEST(LineGrammar, SkipsCommentsAndEmptyLines) {
    std::string scratch;
    KeyValue parts;
    for (const char* line : {"", "   ", "//", "// Title \"x\"", "   //----"})
        EXPECT_FALSE(SplitLine(line, false, scratch, parts)) << line;
    EXPECT_TRUE(SplitLine("\t//x", false, scratch, parts)) << "a tab is no blank at the line's start";
}

} // namespace
} // namespace velmora
