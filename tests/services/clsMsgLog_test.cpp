#include "services/clsMsgLog.h"

#include "FailureOf.h"
#include "TempFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
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

std::time_t LocalTime(const std::string& text) {
    std::tm parts{};
    std::istringstream(text) >> std::get_time(&parts, "%Y-%m-%d %H:%M:%S");
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

TEST(GeneralDate, IsShortDateAndLongTime) {
    EXPECT_EQ(GeneralDate(LocalTime("2026-11-08 15:04:05")), "11/8/2026 3:04:05 PM");
    EXPECT_EQ(GeneralDate(LocalTime("2026-01-31 00:00:00")), "1/31/2026 12:00:00 AM");
    EXPECT_EQ(GeneralDate(LocalTime("2026-01-31 12:59:09")), "1/31/2026 12:59:09 PM");
}

/// A log with its files in a folder of its own.
class clsMsgLogTest : public ::testing::Test {
  protected:
    clsMsgLogTest() {
        log.LogFile = folder / "a.log";
        log.SetMsgOutputDIR(folder.Path());
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
    using Case = std::pair<std::string, std::string>;
    for (const auto& [name, shortened] :
         {Case{"", ""}, Case{"Elevenchars.exe", "Elevenchars.exe"}, Case{"TwelveCharac.exe", "TwelveCharac"},
          Case{"VelmoraContentFileEditor1.exe", "VelmoraContentF"}})
        EXPECT_EQ(clsMsgLog(name).AppExeName(), shortened);
    EXPECT_FALSE(clsMsgLog().AppExeName().empty());
    std::set<std::int32_t> drawn;
    for (int i = 0; i < 2000; ++i)
        drawn.insert(clsMsgLog("x").UniqueID());
    EXPECT_GE(*drawn.begin(), 0);
    EXPECT_LE(*drawn.rbegin(), 1000);
    EXPECT_GT(drawn.size(), 100u);
}

TEST_F(clsMsgLogTest, EndsItsDirectoryInASeparator) {
    using Case = std::pair<std::string, std::string>;
    for (const auto& [given, ended] :
         {Case{"logs", std::string("logs") + Files::Separator}, Case{"logs\\", "logs\\"}, Case{"", ""}}) {
        log.SetMsgOutputDIR(given);
        EXPECT_EQ(log.MsgOutputDIR(), ended);
    }
}

TEST_F(clsMsgLogTest, AppendsLinesWithOrWithoutAHeader) {
    EXPECT_EQ(Write("first \xE9"), "first \xE9");
    EXPECT_EQ(Write("*", true), std::string(43, '*'));
    const std::string headed = Write("second\r\nline", true);
    EXPECT_EQ(folder.Read("a.log"), "first \xE9\r\n" + std::string(43, '*') + "\r\n" + headed + "\r\n");
    ExpectMatch(headed, " *" + DatePattern + "        Writer\\.exe   [ 0-9]{3}\\d   second\r\nline");
    EXPECT_EQ(headed.size(), std::max<std::size_t>(21, headed.find('M') + 1) + 3 + 15 + 3 + 4 + 3 + 12);
    EXPECT_THAT(headed, ::testing::HasSubstr(" " + std::to_string(log.UniqueID()) + "   second"));
}

TEST_F(clsMsgLogTest, WritesNothingWithoutFileOrFolderAndPassesOnOtherFailures) {
    for (const std::string& file : {std::string(), folder / "missing/a.log"}) {
        log.LogFile = file;
        EXPECT_EQ(Write("*"), "*");
    }
    EXPECT_EQ(folder.EntryCount(), 0);
    log.LogFile = folder / "a.log";
    folder.Write("a.log/in_the_way", "");
    EXPECT_THROW(Write("x"), Failure);
}

TEST_F(clsMsgLogTest, MaintainsTheSizeOfTheLog) {
    folder.Write("a.log", "12345");
    folder.Write("old/OLDa.log", "older");
    std::string nowhere = folder / "missing/deeper";
    const Failure failure = FailureOf([&] { log.MaintainLogFile(0, &nowhere); });
    EXPECT_EQ(failure.Source, "clsMsgLog_MaintainLogFile");
    EXPECT_NE(failure.Number, 0);
    std::string backup = folder / "old";
    log.MaintainLogFile(5, &backup);
    EXPECT_EQ(folder.Read("a.log"), "12345");
    for (int round = 0; round < 2; ++round) { // the second time there is no log
        log.MaintainLogFile(4 - round, &backup);
        EXPECT_FALSE(folder.Has("a.log"));
        EXPECT_EQ(folder.Read("old/OLDa.log"), "12345");
        EXPECT_EQ(backup, (folder / "old") + Files::Separator);
    }
    folder.Write("a.log", "1");
    log.MaintainLogFile(0);
    EXPECT_FALSE(folder.Has("a.log"));
}

TEST_F(clsMsgLogTest, WritesMessageFiles) {
    EXPECT_EQ(log.SendMsgFile("one", "two", "id"), "id");
    EXPECT_EQ(log.SendMsgFile("three", "", "id"), "id");
    ExpectMatch(folder.Read("Msg[0-0]id.txt"), "id,0,0," + DatePattern + ",\"one\",\"two\"\r\nid,0,0," +
                                                   DatePattern + ",\"three\",\"\"\r\n");
    const std::string made = log.SendMsgFile("one", "two");
    ExpectMatch(made, R"(20\d{12}\d{1,3})");
    EXPECT_TRUE(folder.Has("Msg[0-0]" + made + ".txt"));
    log.SetMsgOutputDIR(folder / "missing");
    EXPECT_EQ(FailureOf([&] { log.SendMsgFile("one", "two"); }).Source, "clsMsgLog_SendMsgFile");
}

TEST_F(clsMsgLogTest, WritesErrorFilesAndGivesThemUpQuietly) {
    const ErrFileRecord error{"0-",         LocalTime("2026-11-08 15:04:05"),
                              "a\r\nb",     "Writer.exe",
                              "Source",     6,
                              "Overflow",   "A*B",
                              "my \"note\""};
    log.SendErrFile(error, "id");
    EXPECT_EQ(folder.Read("Err[0-0]id.txt"),
              "id,0,0,\"0-\",11/8/2026 3:04:05 PM,\"a\r\nb\",Writer.exe,Source,6,"
              "\"Overflow\",\"A*B\",\"my \"note\"\"\r\n");
    ExpectMatch(log.SendErrFile(error), R"(20\d{12}\d{1,3})");
    log.SetMsgOutputDIR(folder / "missing");
    EXPECT_NO_THROW(log.SendErrFile(error));
    EXPECT_FALSE(folder.Has("missing"));
    EXPECT_EQ(clsMsgLog().SendErrFile({}), "");
}

} // namespace
} // namespace velmora
