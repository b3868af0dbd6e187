#include "records/LineGrammar.h"

#include <gtest/gtest.h>

#include <tuple>

namespace velmora {
namespace {

/// Line, key, value, whether a blank was removed that is not needed.
using Line = std::tuple<std::string, std::string, std::string, bool>;

void Check(const Line& expected, bool keepBlanks) {
    const auto& [line, key, value, unneeded] = expected;
    SCOPED_TRACE(line);
    std::string scratch;
    KeyValue parts;
    ASSERT_TRUE(SplitLine(line, keepBlanks, scratch, parts));
    EXPECT_EQ(parts.Key, key);
    EXPECT_EQ(parts.Value, value);
    EXPECT_EQ(parts.UnneededSpace, unneeded);
}

TEST(LineGrammar, TakesLinesApart) {
    for (const Line& line :
         {Line{"  Title              \"A Fine Day\"", "Title", "A Fine Day", false},
          Line{"\tTitle \t \t\" kept blanks \"", "Title", " kept blanks ", false},
          Line{"Title \"open end", "Title", "open end", false},
          Line{"Title \"first\" and \"second\"", "Title", "first", false},
          Line{"\"nameless\"", "", "nameless", false},
          Line{"  EventType          1  ", "EventType", "1", false},
          Line{"EVENT My  Raid\tToday", "EVENT", "MyRaidToday", true},
          Line{"EventType\t1", "EventType", "1", false}, Line{"\tEventType\t1", "", "EventType1", true},
          Line{"\tEventType", "", "EventType", false}, Line{"ENDEVENT\t", "ENDEVENT", "", false},
          Line{"/ / x", "/", "/x", true}})
        Check(line, false);
}

TEST(LineGrammar, KeepsOneBlankBeforeEachPieceWhereAsked) {
    for (const Line& line : {Line{"SBMOD 7 Bastion", "SBMOD", " 7 Bastion", false},
                             Line{"Name Bastion   Mk\tI", "Name", " Bastion Mk I", false},
                             Line{"Model \"Starbase01\"", "Model", "Starbase01", false},
                             Line{"ENDSBMOD", "ENDSBMOD", "", false}})
        Check(line, true);
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
