#include "upissues/clsUPIssue.h"

#include "LibraryFixture.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;

/// The lines that every file needs before its first block ends.
const std::string Values = "OptionVal01 0\r\nOptionVal02 0\r\nOptionVal03 0\r\n"
                           "OptionVal04 0\r\nOptionVal05 0\r\nOptionVal06 0\r\n";

class UPIssueLibraryTest : public LibraryFixture {
  protected:
    UPIssueLibraryTest() : LibraryFixture(UPIssueKind, "MyUPIssues.upissue") {}
    const clsUPIssue& At(std::size_t at) const { return As<clsUPIssue>(at); }
};

TEST_F(UPIssueLibraryTest, CarriesOptionValuesOverAndTakesTheLastNameOrNone) {
    Put("a.UPIssue",
        Values + "OptionVal06 9\r\nENDUPISSUE\r\nUPISSUE One\r\n" + Block("Two", "OptionVal01 4\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre(" 1", "Two 2"));
    EXPECT_EQ(At(1).OptionVal06, 9);
    EXPECT_EQ(At(1).OptionVal01, 4);
}

TEST_F(UPIssueLibraryTest, EndsLoadingWhereAnOptionValueWasNeverGiven) {
    Put("a.UPIssue", Block("One", Values));
    Put("b.UPIssue", Block("Two", Values.substr(0, Values.find("OptionVal06"))));
    Put("c.UPIssue", Block("Three", Values));
    EXPECT_THAT(LoadFailing(),
                ElementsAre("13 Type mismatch (file b.UPIssue, line 7, key OptionVal06 was never given) "
                            "<b.UPIssue>",
                            "frmUPIssues_Form_Load", "frmUPIssues_LoadCurrentUPIssues",
                            "frmUPIssues_ParseOutUPIssueFile"));
    EXPECT_THAT(Names(), ElementsAre("One 1"));
}

TEST_F(UPIssueLibraryTest, TurnsOptionValuesIntoNumbersOnlyWhenTheBlockEnds) {
    Put("a.UPIssue",
        Block("One", Values + "OptionVal02 abc\r\nOptionVal03 2147483648\r\noptionval03 2.5\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(0).OptionVal02, 0);
    EXPECT_EQ(At(0).OptionVal03, 2);
    Put("a.UPIssue", Block("One", Values + "OptionVal03 -2147483649\r\nPrereq 1\r\n"));
    EXPECT_EQ(LoadFailing().front(), "6 Overflow (file a.UPIssue, line 10, key OptionVal03) <a.UPIssue>");
    Put("a.UPIssue", Block("One", Values + "Prereq 2147483648\r\nPrereq 1\r\n"));
    EXPECT_EQ(LoadFailing().front(), "6 Overflow (file a.UPIssue, line 8, key Prereq) <a.UPIssue>");
}

TEST_F(UPIssueLibraryTest, TellsItsKindInReportsOnNames) {
    Put("A.upissue", Block("Alpha", Values));
    Put("b.UPIssue", Block("ALPHA", Values) + Block("2Fast"));
    Put("x.event", "EVENT X\r\nENDEVENT\r\n");
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("Alpha 1", "TwoFast 2"));
    EXPECT_EQ(At(1).OrigNumber, 2) << "a dropped record uses no number up";
    EXPECT_THAT(texts,
                ElementsAre("b.UPIssue:8: Duplicate UPIssue found!  UPIssueName = ALPHA, File = b.UPIssue "
                            "[duplicate-upissue]",
                            "b.UPIssue:9: Illegal UP Issue name found, the first character in the name can "
                            "not be numeric, the name 2Fast will be converted.  1 will become One, 2 will "
                            "become Two, etc.||Final revised UP Issue name is now: TwoFast. [illegal-name]"));
}

TEST_F(UPIssueLibraryTest, GivesBackEveryByteOfGeneratedRecords) {
    ExpectEveryByteBack(20);
}

} // namespace
} // namespace velmora
