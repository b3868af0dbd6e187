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

TEST(clsUPIssue, WritesEveryKeyInItsColumn) {
    clsUPIssue issue;
    issue.UPIssueName = "Tax";
    issue.Question = "Q";
    issue.OptionVal01 = -5;
    issue.UPIssueAttribute = 3;
    const std::string line = "//------------------------------------------------------------------------\r\n";
    EXPECT_EQ(issue.GenerateUPIssueString(false), line + "UPISSUE Tax\r\n" + line +
                                                      "\r\n"
                                                      "  Question    \"Q\"\r\n"
                                                      "  SubQuestion \"\"\r\n"
                                                      "  Option01    \"\"\r\n"
                                                      "  Option02    \"\"\r\n"
                                                      "  Option03    \"\"\r\n"
                                                      "  Option04    \"\"\r\n"
                                                      "  Option05    \"\"\r\n"
                                                      "  Option06    \"\"\r\n\r\n"
                                                      "  OptionVal01 -5\r\n"
                                                      "  OptionVal02 0\r\n"
                                                      "  OptionVal03 0\r\n"
                                                      "  OptionVal04 0\r\n"
                                                      "  OptionVal05 0\r\n"
                                                      "  OptionVal06 0\r\n\r\n"
                                                      "  Attribute            3\r\n"
                                                      "  AppliesTo            0\r\n"
                                                      "  Prereq               0\r\n"
                                                      "  Probability          0\r\n"
                                                      "  YearsInEffect        0\r\n\r\n"
                                                      "  Value01     0\r\n"
                                                      "  Value02     0\r\n"
                                                      "  Value03     0\r\n"
                                                      "  Value04     0\r\n\r\n"
                                                      "  QuestionStr01 0\r\n"
                                                      "  QuestionStr02 0\r\n"
                                                      "  QuestionStr03 0\r\n"
                                                      "  QuestionStr04 0\r\n\r\n"
                                                      "  HowAIWouldVote 0\r\n\r\n"
                                                      "ENDUPISSUE\r\n\r\n\r\n");
    EXPECT_EQ(issue.GenerateUPIssueString(true), issue.GenerateUPIssueString(false));
}

TEST(clsUPIssue, TellsThatItIsBeingAdded) {
    clsUPIssue issue;
    issue.IsBeingAdded = issue.IsDirty = true;
    EXPECT_EQ(issue.Status(), "ADDING THIS UP ISSUE");
}

TEST_F(UPIssueLibraryTest, HoldsEachKeyInTheMemberOfItsName) {
    std::string lines;
    for (std::size_t i = 0; i < UPIssueKind.Fields.size(); ++i)
        lines += "\t" + std::string(UPIssueKind.Fields[i].Key) + "  \"" + std::to_string(100 + i) + "\"\r\n";
    Put("a.UPIssue", Block("Tax", lines));
    ASSERT_TRUE(Load());
    EXPECT_THAT(texts, IsEmpty());
    const clsUPIssue& issue = At(0);
    EXPECT_THAT((std::vector<std::string>{issue.UPIssueName, issue.Question, issue.SubQuestion,
                                          issue.Option01, issue.Option02, issue.Option03, issue.Option04,
                                          issue.Option05, issue.Option06}),
                ElementsAre("Tax", "100", "101", "102", "103", "104", "105", "106", "107"));
    EXPECT_THAT((std::vector<std::int32_t>{
                    issue.OptionVal01,   issue.OptionVal02,   issue.OptionVal03,      issue.OptionVal04,
                    issue.OptionVal05,   issue.OptionVal06,   issue.UPIssueAttribute, issue.AppliesTo,
                    issue.Prereq,        issue.Probability,   issue.YearsInEffect,    issue.Value01,
                    issue.Value02,       issue.Value03,       issue.Value04,          issue.QuestionStr01,
                    issue.QuestionStr02, issue.QuestionStr03, issue.QuestionStr04,    issue.HowAIWouldVote}),
                ElementsAre(108, 109, 110, 111, 112, 113, 114, 115, 116, 117, 118, 119, 120, 121, 122, 123,
                            124, 125, 126, 127));
    EXPECT_EQ(UPIssueKind.Fields[14].Property, "UPIssueAttribute");
    EXPECT_FALSE(issue.IsDirty || issue.IsBeingAdded || issue.ToBeDeleted);
}

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

TEST_F(UPIssueLibraryTest, CarriesValuesOverWithinAFileOnly) {
    Put("a.UPIssue", Block("One", Values + "YearsInEffect 8\r\nOption06 \"Six\"\r\nOptionVal06 9\r\n") +
                         Block("Two", "OptionVal01 4\r\n"));
    Put("b.UPIssue", Block("Three", Values));
    ASSERT_TRUE(Load());
    EXPECT_EQ(At(1).YearsInEffect, 8);
    EXPECT_EQ(At(1).Option06, "Six");
    EXPECT_EQ(At(1).OptionVal06, 9);
    EXPECT_EQ(At(1).OptionVal01, 4);
    EXPECT_EQ(At(2).YearsInEffect, 0);
    EXPECT_EQ(At(2).Option06, "");
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

TEST_F(UPIssueLibraryTest, GathersEveryFileOfTheKind) {
    Put("b.UPIssue", Block("ALPHA", Values) + Block("2Fast"));
    Put("A.upissue", Block("Alpha", Values));
    Put("MYUPISSUES.UPIssue", Block("Mine", Values));
    Put("x.UPIssue.txt", Block("X", Values));
    Put("x.UPIssueOld", Block("X", Values));
    Put("x.event", "EVENT X\r\nENDEVENT\r\n");
    ASSERT_TRUE(Load());
    EXPECT_THAT(Names(), ElementsAre("Alpha 1", "TwoFast 2", "Mine 3"));
    EXPECT_THAT(FileNames(), ElementsAre("A.upissue 0", "b.UPIssue 1", "MYUPISSUES.UPIssue 2"));
    EXPECT_EQ(At(1).FileName, data + "b.UPIssue");
    EXPECT_EQ(At(1).ShortName, "b.UPIssue");
    EXPECT_EQ(At(1).OrigNumber, 2) << "a dropped record uses no number up";
    EXPECT_THAT(texts,
                ElementsAre("b.UPIssue:8: Duplicate UPIssue found!  UPIssueName = ALPHA, File = b.UPIssue "
                            "[duplicate-upissue]",
                            "b.UPIssue:9: Illegal UP Issue name found, the first character in the name can "
                            "not be numeric, the name 2Fast will be converted.  1 will become One, 2 will "
                            "become Two, etc.||Final revised UP Issue name is now: TwoFast. [illegal-name]"));
}

TEST_F(UPIssueLibraryTest, ListsTheOwnFileAloneInAnEmptyFolder) {
    ASSERT_TRUE(Load());
    EXPECT_THAT(FileNames(), ElementsAre("MyUPIssues.upissue 0"));
    data += "Elsewhere/";
    EXPECT_FALSE(Load());
    EXPECT_THAT(texts, ElementsAre(":0: Unable to acces the Velmora Data\\UP_Issue directory! "
                                   "[no-data-directory]"));
}

TEST_F(UPIssueLibraryTest, BacksUpUnderTheKindsOwnMark) {
    Put("Tax.upissue", "first");
    Load(true);
    Put("Tax.upissue", "second");
    Load(true);
    EXPECT_EQ(Files::ReadWhole(backups + "Tax.1stUPIssue"), "first");
    EXPECT_EQ(Files::ReadWhole(backups + "Tax.latestUPIssue"), "second");
    EXPECT_EQ(Files::ListFiles(backups).size(), 2u);
}

TEST_F(UPIssueLibraryTest, GivesBackEveryByteOfGeneratedRecords) {
    ExpectEveryByteBack(20);
}

TEST_F(UPIssueLibraryTest, CopiesEveryFieldButTheName) {
    clsUPIssue issue;
    issue.UPIssueName = "One";
    issue.Option06 = "Six";
    issue.OptionVal06 = 6;
    issue.HowAIWouldVote = 7;
    clsUPIssue copy;
    copy.UPIssueName = "Two";
    CopyContent(UPIssueKind, issue, copy);
    issue.UPIssueName = "Two";
    EXPECT_EQ(copy.GenerateUPIssueString(false), issue.GenerateUPIssueString(false));
}

TEST_F(UPIssueLibraryTest, ReadsAndRewritesTheSampleAsItIs) {
    ASSERT_TRUE(LoadSample("Data/UP_Issues"));
    EXPECT_THAT(texts, IsEmpty());
    EXPECT_EQ(library.Records.Count(), 26u);
    for (const std::string file : {"Council.UPIssue", "Curiosities.UPIssue", "Treasury.UPIssue"}) {
        std::string written;
        for (const std::string& name : library.NamesInFile(file))
            AppendBlock(UPIssueKind, *library.Find(name), written);
        EXPECT_EQ(written, Get(file));
    }
}

} // namespace
} // namespace velmora
