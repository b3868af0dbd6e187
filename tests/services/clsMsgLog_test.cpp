#include "services/clsMsgLog.h"

#include "FailureOf.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <ctime>
#include <iomanip>
#include <regex>
#include <set>
#include <sstream>

namespace velmora {
namespace {

const std::string DatePattern = R"(\d{1,2}/\d{1,2}/\d{4} \d{1,2}:\d\d:\d\d [AP]M)";

void ExpectMatch(const std::string& text, const std::string& pattern) {
    EXPECT_TRUE(std::regex_match(text, std::regex(pattern))) << text << "\nis not\n" << pattern;
}

TEST(GeneralDate, IsShortDateAndLongTime) {
    const auto dateOf = [](const char* time) {
        std::tm parts{};
        std::istringstream(time) >> std::get_time(&parts, "%Y-%m-%d %H:%M:%S");
        parts.tm_isdst = -1;
        return GeneralDate(std::mktime(&parts));
    };
    EXPECT_EQ(dateOf("2026-11-08 15:04:05"), "11/8/2026 3:04:05 PM");
    EXPECT_EQ(dateOf("2026-01-31 00:00:00"), "1/31/2026 12:00:00 AM");
    EXPECT_EQ(dateOf("2026-01-31 12:59:09"), "1/31/2026 12:59:09 PM");
}

/// A log with its files in a folder of its own.
class clsMsgLogTest : public ::testing::Test {
  protected:
    clsMsgLogTest() {
        log.LogFile = folder / "a.log";
        log.SetMsgOutputDIR(Files::PathText(folder.Host()));
    }
    /// Writes a text; what the caller's text has become.
    std::string Write(std::string text, bool addHeader = false) {
        log.WriteToLogFile(text, addHeader);
        return text;
    }

    TempFolder folder;
    clsMsgLog log{"Writer.exe"};
};

TEST_F(clsMsgLogTest, ShortensLongExecutableNamesAndDrawsItsNumber) {
    EXPECT_EQ(clsMsgLog("Elevenchars.exe").AppExeName(), "Elevenchars.exe");
    EXPECT_EQ(clsMsgLog("TwelveCharac.exe").AppExeName(), "TwelveCharac");
    EXPECT_EQ(clsMsgLog("VelmoraContentFileEditor1.exe").AppExeName(), "VelmoraContentF");
    EXPECT_FALSE(clsMsgLog().AppExeName().empty());
    std::set<std::int32_t> drawn;
    for (int i = 0; i < 2000; ++i)
        drawn.insert(clsMsgLog("x").UniqueID());
    EXPECT_TRUE(*drawn.begin() >= 0 && *drawn.rbegin() <= 1000);
    EXPECT_GT(drawn.size(), 100u);
}

TEST_F(clsMsgLogTest, AppendsLinesWithOrWithoutAHeader) {
    EXPECT_EQ(Write("first \xE9"), "first \xE9");
    EXPECT_EQ(Write("*", true), std::string(43, '*'));
    const std::string number = std::to_string(log.UniqueID());
    const std::string headed = Write("second\r\nline", true);
    EXPECT_EQ(folder.Read("a.log"), "first \xE9\r\n" + std::string(43, '*') + "\r\n" + headed + "\r\n");
    ExpectMatch(headed, " *" + DatePattern + "        Writer\\.exe   " + std::string(4 - number.size(), ' ') +
                            number + "   second\r\nline");
    EXPECT_EQ(headed.find('W'), std::max<std::size_t>(21, headed.find('M') + 1) + 8) << "the date's column";
    for (const std::string& file : {std::string(), folder / "missing/a.log"}) {
        log.LogFile = file;
        EXPECT_EQ(Write("*"), "*");
    }
    EXPECT_EQ(folder.EntryCount(), 1) << "nothing is written without a file or its folder";
    log.LogFile = Files::PathText(folder.Host());
    EXPECT_THROW(Write("x"), Failure);
}

TEST_F(clsMsgLogTest, MaintainsTheSizeOfTheLog) {
    folder.Write("a.log", "12345");
    folder.Write("old/OLDa.log", "older");
    std::string backup = folder / "missing/deeper";
    EXPECT_EQ(FailureOf([&] { log.MaintainLogFile(4, &backup); }).Source, "clsMsgLog_MaintainLogFile");
    backup = folder / "old";
    log.MaintainLogFile(5, &backup);
    EXPECT_EQ(folder.Read("a.log"), "12345");
    log.MaintainLogFile(4, &backup);
    EXPECT_FALSE(folder.Has("a.log"));
    EXPECT_EQ(backup, (folder / "old") + Files::Separator);
    log.MaintainLogFile(0, &backup);
    EXPECT_EQ(folder.Read("old/OLDa.log"), "12345") << "without a log there is nothing to do";
    folder.Write("a.log", "1");
    log.MaintainLogFile(0);
    EXPECT_FALSE(folder.Has("a.log"));
}

TEST_F(clsMsgLogTest, WritesMessageAndErrorFiles) {
    EXPECT_EQ(log.SendMsgFile("one", "two", "id"), "id");
    EXPECT_EQ(log.SendMsgFile("three", "", "id"), "id");
    ExpectMatch(folder.Read("Msg[0-0]id.txt"), "id,0,0," + DatePattern + ",\"one\",\"two\"\r\nid,0,0," +
                                                   DatePattern + ",\"three\",\"\"\r\n");
    EXPECT_TRUE(folder.Has("Msg[0-0]" + log.SendMsgFile("one", "two") + ".txt"));
    log.SendErrFile({"0-", 0, "a\r\nb", "Writer.exe", "Source", 6, "Overflow", "A*B", "my \"note\""}, "id");
    EXPECT_EQ(folder.Read("Err[0-0]id.txt"),
              "id,0,0,\"0-\"," + GeneralDate(0) +
                  ",\"a\r\nb\",Writer.exe,Source,6,\"Overflow\",\"A*B\",\"my \"note\"\"\r\n");
    ExpectMatch(log.SendErrFile({}), R"(20\d{12}\d{1,3})");
    EXPECT_EQ(log.MsgOutputDIR(), folder.Path());
    log.SetMsgOutputDIR(folder / "missing");
    EXPECT_EQ(FailureOf([&] { log.SendMsgFile("one", "two"); }).Source, "clsMsgLog_SendMsgFile");
    EXPECT_EQ(log.SendErrFile({}, "id"), "id") << "it is given up quietly";
    EXPECT_EQ(clsMsgLog().SendMsgFile("one", "two") + clsMsgLog().SendErrFile({}), "");
}

} // namespace
} // namespace velmora
