#include "upissues/clsUPIssue.h"

#include "LibraryFixture.h"

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The lines that every file needs before its first block ends.
const std::string Values = "OptionVal01 0\r\nOptionVal02 0\r\nOptionVal03 0\r\n"
                           "OptionVal04 0\r\nOptionVal05 0\r\nOptionVal06 0\r\n";

class UPIssueLibraryTest : public LibraryFixture {
  protected:
    UPIssueLibraryTest() : LibraryFixture(UPIssueKind, "MyUPIssues.upissue") {}
    const clsUPIssue& At(std::size_t at) const { return As<clsUPIssue>(at); }
};

TEST_F(UPIssueLibraryTest, ReadsTheLinesThatPeopleWrite) {
    Put("a.UPIssue", "// Ours\r\n\r\nupissue My Issue\r\n" + Values +
                         "  question \"Shall we?\" or not\r\n"
                         "  Value01 12abc\r\n\r\n// inside\r\n  VALUE02 abc\r\n  value03 2.5\r\n"
                         "  Value04 3.5\r\n  OptionVal02 2.5\r\n  OptionVal03 abc\r\n"
                         "  Colour 5\r\nendupissue\r\n");
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("MyIssue 1"));
    EXPECT_EQ(At(0).Question, "Shall we?");
    EXPECT_THAT((std::vector<std::int32_t>{At(0).Value01, At(0).Value02, At(0).Value03, At(0).Value04,
                                           At(0).OptionVal02, At(0).OptionVal03}),
                ElementsAre(12, 0, 2, 4, 2, 0));
    EXPECT_THAT(texts, ElementsAre("a.UPIssue:3: Unneeded space removed from upissue My Issue. "
                                   "[unneeded-space]",
                                   "a.UPIssue:19: Unrecognized token! a(0) = Colour, sValue = 5, File = "
                                   "a.UPIssue [unrecognized-token]"));
}

TEST_F(UPIssueLibraryTest, CarriesOptionValuesOver) {
    Put("a.UPIssue", Block("One", Values + "OptionVal06 9\r\n") + Block("Two", "OptionVal01 4\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(1).OptionVal06, 9);
    EXPECT_EQ(At(1).OptionVal01, 4);
}

TEST_F(UPIssueLibraryTest, TakesTheLastNameAndEvenNone) {
    Put("a.UPIssue", Values + "ENDUPISSUE\r\nUPISSUE One\r\n" + Block("Two"));
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre(" 1", "Two 2"));
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
    Put("a.UPIssue", Block("One", Values + "OptionVal03 2147483648\r\nOptionVal03 7\r\n"));
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(0).OptionVal03, 7);
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
    EXPECT_THAT(FileNames(), ElementsAre("A.upissue 0", "b.UPIssue 1", "MyUPIssues.upissue 2"));
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

TEST_F(UPIssueLibraryTest, ReadsAndRewritesTheSampleAsItIs) {
    ASSERT_TRUE(LoadSample("Data/UP_Issues"));
    EXPECT_THAT(texts, IsEmpty());
    EXPECT_EQ(library.Records.Count(), 26u);
    EXPECT_EQ(UPIssueKind.Fields[14].Property, "UPIssueAttribute");
    for (const std::string file : {"Council.UPIssue", "Curiosities.UPIssue", "Treasury.UPIssue"}) {
        std::string written;
        for (const std::string& name : library.NamesInFile(file))
            AppendBlock(UPIssueKind, *library.Find(name), written);
        EXPECT_EQ(written, Get(file));
    }
}

} // namespace
} // namespace velmora
