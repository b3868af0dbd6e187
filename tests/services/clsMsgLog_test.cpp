#include "services/clsMsgLog.h"

#include "FailureOf.h"
#include "TempFolder.h"
#include "platform/Failure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <regex>
#include <set>
#include <string>

namespace velmora {
namespace {

const std::string DatePattern = R"(\d{1,2}/\d{1,2}/\d{4} \d{1,2}:\d\d:\d\d [AP]M)";

void ExpectMatch(const std::string& text, const std::string& pattern) {
    EXPECT_TRUE(std::regex_match(text, std::regex(pattern))) << text << "\nis not\n" << pattern;
}

std::time_t LocalTime(int year, int month, int day, int hour, int minute, int second) {
    std::tm parts{};
    parts.tm_year = year - 1900;
    parts.tm_mon = month - 1;
    parts.tm_mday = day;
    parts.tm_hour = hour;
    parts.tm_min = minute;
    parts.tm_sec = second;
    parts.tm_isdst = -1;
    return std::mktime(&parts);
}

TEST(GeneralDate, IsShortDateAndLongTime) {
    EXPECT_EQ(GeneralDate(LocalTime(2026, 11, 8, 15, 4, 5)), "11/8/2026 3:04:05 PM");
    EXPECT_EQ(GeneralDate(LocalTime(2026, 1, 31, 0, 0, 0)), "1/31/2026 12:00:00 AM");
    EXPECT_EQ(GeneralDate(LocalTime(2026, 1, 31, 12, 59, 9)), "1/31/2026 12:59:09 PM");
    EXPECT_EQ(GeneralDate(LocalTime(2026, 1, 31, 9, 10, 11)), "1/31/2026 9:10:11 AM");
}

TEST(clsMsgLog, ShortensLongExecutableNames) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"Writer.exe", "Writer.exe"},
        {"Elevenchars.exe", "Elevenchars.exe"},
        {"TwelveCharac.exe", "TwelveCharac"},
        {"VelmoraContentFileEditor1.exe", "VelmoraContentF"}};
    for (const auto& [name, shortened] : cases)
        EXPECT_EQ(clsMsgLog(name).AppExeName(), shortened);
    EXPECT_LE(clsMsgLog().AppExeName().size(), 15u);
    EXPECT_FALSE(clsMsgLog().AppExeName().empty());
}

TEST(clsMsgLog, DrawsItsNumberFrom0To1000) {
    std::set<std::int32_t> drawn;
    for (int i = 0; i < 2000; ++i)
        drawn.insert(clsMsgLog("x").UniqueID());
    EXPECT_GE(*drawn.begin(), 0);
    EXPECT_LE(*drawn.rbegin(), 1000);
    EXPECT_GT(drawn.size(), 100u);
}

TEST(clsMsgLog, EndsItsDirectoryInASeparator) {
    const std::string separator(1, Files::Separator);
    clsMsgLog log;
    log.SetMsgOutputDIR("logs");
    EXPECT_EQ(log.MsgOutputDIR(), "logs" + separator);
    log.SetMsgOutputDIR("logs\\");
    EXPECT_EQ(log.MsgOutputDIR(), "logs\\");
    log.SetMsgOutputDIR("");
    EXPECT_EQ(log.MsgOutputDIR(), "");
}

TEST(clsMsgLog, AppendsLinesAsTheyStand) {
    const TempFolder folder;
    clsMsgLog log;
    log.LogFile = folder / "a.log";
    std::string text = "first \xE9";
    log.WriteToLogFile(text, false);
    text = "second\r\nline";
    log.WriteToLogFile(text, false);
    EXPECT_EQ(folder.Read("a.log"), "first \xE9\r\nsecond\r\nline\r\n");
}

TEST(clsMsgLog, PutsAHeaderInFront) {
    const TempFolder folder;
    clsMsgLog log("Writer.exe");
    log.LogFile = folder / "a.log";
    std::string text = "hello";
    log.WriteToLogFile(text, true);
    EXPECT_EQ(folder.Read("a.log"), text + "\r\n");
    ExpectMatch(text, " *" + DatePattern + R"(        Writer\.exe   [ 0-9]{3}\d   hello)");
    EXPECT_EQ(text.size(), std::max<std::size_t>(21, text.find('M') + 1) + 3 + 15 + 3 + 4 + 3 + 5);
    EXPECT_NE(text.find(" " + std::to_string(log.UniqueID()) + "   hello"), std::string::npos);
}

TEST(clsMsgLog, TurnsAnAsteriskIntoARule) {
    const TempFolder folder;
    clsMsgLog log;
    log.LogFile = folder / "a.log";
    std::string text = "*";
    log.WriteToLogFile(text, true);
    EXPECT_EQ(text, "*******************************************");
    EXPECT_EQ(folder.Read("a.log"), text + "\r\n");
}

TEST(clsMsgLog, WritesNothingWithoutFileOrFolder) {
    const TempFolder folder;
    clsMsgLog log;
    std::string text = "*";
    log.WriteToLogFile(text, false);
    log.LogFile = folder / "missing/a.log";
    log.WriteToLogFile(text, false);
    EXPECT_EQ(text, "*");
    EXPECT_FALSE(folder.Has("missing"));
}

TEST(clsMsgLog, PassesOnAFailureToLog) {
    const TempFolder folder;
    folder.Write("a.log/in_the_way", "");
    clsMsgLog log;
    log.LogFile = folder / "a.log";
    std::string text = "x";
    EXPECT_THROW(log.WriteToLogFile(text, false), Failure);
}

TEST(clsMsgLog, MaintainsTheSizeOfTheLog) {
    const TempFolder folder;
    folder.Write("a.log", "12345");
    folder.Write("old/OLDa.log", "older");
    clsMsgLog log;
    log.LogFile = folder / "a.log";
    std::string backup = folder / "old";
    log.MaintainLogFile(5, &backup);
    EXPECT_TRUE(folder.Has("a.log"));
    log.MaintainLogFile(4, &backup);
    EXPECT_FALSE(folder.Has("a.log"));
    EXPECT_EQ(folder.Read("old/OLDa.log"), "12345");
    EXPECT_EQ(backup, (folder / "old") + Files::Separator);

    log.MaintainLogFile(0, &backup);
    EXPECT_EQ(folder.Read("old/OLDa.log"), "12345");
    folder.Write("a.log", "1");
    log.MaintainLogFile(0);
    EXPECT_FALSE(folder.Has("a.log"));
}

TEST(clsMsgLog, NamesTheRoutineThatCouldNotMaintain) {
    const TempFolder folder;
    folder.Write("a.log", "12345");
    clsMsgLog log;
    log.LogFile = folder / "a.log";
    std::string backup = folder / "missing/deeper";
    const Failure failure = FailureOf([&] { log.MaintainLogFile(0, &backup); });
    EXPECT_EQ(failure.Source, "clsMsgLog_MaintainLogFile");
    EXPECT_NE(failure.Number, 0);
    EXPECT_EQ(folder.Read("a.log"), "12345");
}

TEST(clsMsgLog, WritesMessageFiles) {
    const TempFolder folder;
    clsMsgLog log;
    log.SetMsgOutputDIR(folder.Path());
    EXPECT_EQ(log.SendMsgFile("one", "two", "id"), "id");
    EXPECT_EQ(log.SendMsgFile("three", "", "id"), "id");
    ExpectMatch(folder.Read("Msg[0-0]id.txt"), "id,0,0," + DatePattern + ",\"one\",\"two\"\r\nid,0,0," +
                                                   DatePattern + ",\"three\",\"\"\r\n");

    const std::string made = log.SendMsgFile("one", "two");
    ExpectMatch(made, R"(20\d{12}\d{1,3})");
    EXPECT_TRUE(folder.Has("Msg[0-0]" + made + ".txt"));
}

TEST(clsMsgLog, NamesTheRoutineThatCouldNotSend) {
    const TempFolder folder;
    clsMsgLog log;
    log.SetMsgOutputDIR(folder / "missing");
    EXPECT_EQ(FailureOf([&] { log.SendMsgFile("one", "two"); }).Source, "clsMsgLog_SendMsgFile");
}

TEST(clsMsgLog, WritesErrorFiles) {
    const TempFolder folder;
    clsMsgLog log;
    log.SetMsgOutputDIR(folder.Path());
    const std::time_t time = LocalTime(2026, 11, 8, 15, 4, 5);
    const ErrFileRecord error{"0-", time,       "a\r\nb", "Writer.exe", "Source",
                              6,    "Overflow", "A*B",    "my \"note\""};
    log.SendErrFile(error, "id");
    EXPECT_EQ(folder.Read("Err[0-0]id.txt"),
              "id,0,0,\"0-\",11/8/2026 3:04:05 PM,\"a\r\nb\",Writer.exe,Source,6,"
              "\"Overflow\",\"A*B\",\"my \"note\"\"\r\n");
    ExpectMatch(log.SendErrFile(error), R"(20\d{12}\d{1,3})");
}

TEST(clsMsgLog, GivesUpAnErrorFileQuietly) {
    const TempFolder folder;
    clsMsgLog log;
    EXPECT_EQ(log.SendErrFile({}), "");
    log.SetMsgOutputDIR(folder / "missing");
    EXPECT_NO_THROW(log.SendErrFile({}));
    EXPECT_FALSE(folder.Has("missing"));
}

} // namespace
} // namespace velmora
