#include "services/clsError.h"

#include "FailureOf.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "platform/Failure.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <regex>
#include <stdexcept>
#include <string>

namespace velmora {
namespace {

using testing::ElementsAre;

const std::string Rule(55, '*');
const std::string DatePattern = R"(\d{1,2}/\d{1,2}/\d{4} \d{1,2}:\d\d:\d\d [AP]M)";

/// An error handler as the program sets it up, with its files in a folder of its own.
class ErrorHandling : public ::testing::Test {
  protected:
    void SetUp() override {
        handler.LogFile = folder / "error.log";
        handler.Unattended = false;
        handler.CollectUserInput = true;
        gErrHandler = &handler;
    }
    void TearDown() override { gErrHandler = nullptr; }

    /// The log with its time replaced by TIME.
    std::string Log() const {
        return std::regex_replace(folder.Read("error.log"), std::regex("Time: " + DatePattern), "Time: TIME");
    }
    std::string LogLine(const std::string& start) const {
        for (const std::string& line : Split(Log(), "\r\n"))
            if (line.starts_with(start))
                return line.substr(start.size());
        return "no line " + start;
    }
    /// The only error file, with its times replaced by TIME; empty when there is none.
    std::string ErrorFile() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder.Host()))
            if (const auto name = entry.path().filename().string(); name.starts_with("Err[0-0]"))
                return std::regex_replace(folder.Read(name), std::regex(DatePattern), "TIME");
        return {};
    }

    TempFolder folder;
    clsError handler;
    ScriptedPrompts prompts;
};

void FailThreeDeep() {
    TrapEvent("frmEvents_Form_Load", NoInputParms, [] {
        Trap("frmEvents_InitForm", {"3"}, [] {
            Trap("frmEvents_ParseOutEventFile", {"A.event", "two"}, [] {
                Failure failure(FailureOverflow, "Overflow", "Velmora");
                failure.Line = 42;
                throw failure;
            });
        });
    });
}

TEST_F(ErrorHandling, ShowsTheInnermostFailureOnce) {
    FailThreeDeep();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    const ErrorDetails& shown = prompts.Errors.front();
    EXPECT_EQ(shown.Number, 6);
    EXPECT_EQ(shown.Line, 42);
    EXPECT_EQ(shown.Description, "Overflow");
    EXPECT_EQ(shown.Source, "Velmora");
    EXPECT_EQ(shown.CallStack,
              "frmEvents_Form_Load\r\nfrmEvents_InitForm\r\nfrmEvents_ParseOutEventFile\r\n");
    EXPECT_EQ(shown.Parameters, "<A.event>,<two>");
    EXPECT_TRUE(std::regex_match(shown.Time, std::regex(DatePattern))) << shown.Time;
    EXPECT_TRUE(shown.OfferDetails);
    EXPECT_TRUE(shown.CollectUserInput);
    EXPECT_THAT(handler.LastCallStack(),
                ElementsAre("frmEvents_Form_Load", "frmEvents_InitForm", "frmEvents_ParseOutEventFile"));
}

TEST_F(ErrorHandling, LogsTheFailureInItsForm) {
    prompts.UserNote = "I said \"go\"";
    FailThreeDeep();
    EXPECT_EQ(Log(),
              Rule + "\r\n\r\nTHE FOLLOWING ERROR WAS CAUGHT:\r\n\r\nApplication: " + handler.AppExeName() +
                  "\r\nError Source: Velmora\r\nError Number: 6\r\nError Description: Overflow\r\n"
                  "Date and Time: TIME\r\nUser: <No information>\r\nUser Message: I said go\r\n"
                  "Call Stack: \r\n\tfrmEvents_Form_Load\r\n\tfrmEvents_InitForm\r\n"
                  "\tfrmEvents_ParseOutEventFile\r\n" +
                  Rule + "\r\n");
}

TEST_F(ErrorHandling, WritesTheErrorFile) {
    prompts.UserNote = "my \"note\"";
    handler.SetMsgOutputDIR(folder.Path());
    handler.UserName = "Ada";
    handler.UserNumber = 7;
    FailThreeDeep();
    std::string record = Log();
    record.resize(record.size() - 2);
    const std::string file = ErrorFile();
    EXPECT_TRUE(std::regex_search(file, std::regex(R"(^20\d{12}\d{1,3},)"))) << file;
    EXPECT_EQ(
        file.substr(file.find(',')),
        ",0,0,\"7-Ada\",TIME,\"" + record + "\"," + handler.AppExeName() +
            ",Velmora,6,\"Overflow\",\"frmEvents_Form_Load*frmEvents_InitForm*frmEvents_ParseOutEventFile\","
            "\"my \"note\"\"\r\n");
    EXPECT_EQ(LogLine("User: "), "7 Ada");
}

TEST_F(ErrorHandling, ReportsAFailureInTheEventRoutineItself) {
    EXPECT_FALSE(
        TrapEvent("frmEvents_mnuZoom_Click", NoInputParms, [] { throw Failure(13, "Type mismatch"); }));
    EXPECT_EQ(prompts.Errors.front().CallStack, "frmEvents_mnuZoom_Click\r\n");
    EXPECT_EQ(prompts.Errors.front().Parameters, "<NO INPUT PARMS>");
    EXPECT_EQ(LogLine("User Message: "), "<None given>");
    EXPECT_NE(Log().find("Call Stack: \r\n\tfrmEvents_mnuZoom_Click\r\n" + Rule + "\r\n"), std::string::npos);
}

TEST_F(ErrorHandling, SplitsTheTraceOutOfTheSource) {
    handler.SetMsgOutputDIR(folder.Path());
    TrapEvent("event", NoInputParms,
              [] { Trap("A", NoInputParms, [] { throw Failure(5, "bad", "S*X*Y"); }); });
    EXPECT_EQ(prompts.Errors.front().Source, "S");
    EXPECT_EQ(prompts.Errors.front().CallStack, "event\r\nA\r\nX\r\nY\r\n");
    EXPECT_NE(Log().find("Call Stack: \r\n\tevent\r\n\tX\r\n\tY\r\n\tA\r\n" + Rule), std::string::npos);
    EXPECT_EQ(LogLine("Error Source: "), "S");
    EXPECT_NE(ErrorFile().find(",\"event*A*X*Y\","), std::string::npos);
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("event", "A"));
}

TEST_F(ErrorHandling, RaisesMinusOneFromARoutineThatIsNotTopLevel) {
    const Failure failure = FailureOf([] { Trap("A", NoInputParms, [] { throw Failure(5, "bad", "S"); }); });
    EXPECT_EQ(failure.Number, FailureAlreadyReported);
    EXPECT_EQ(failure.Source, "clsError");
    EXPECT_EQ(failure.Description(), "");
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_FALSE(folder.Has("error.log"));
}

TEST_F(ErrorHandling, ShowsAReportWithNothingPendingAsNumber0) {
    handler.HandleError("event", 9, -1, "ignored", "ignored", {"ignored"}, true);
    const ErrorDetails& shown = prompts.Errors.front();
    EXPECT_EQ(shown.Number, 0);
    EXPECT_EQ(shown.Line, 0);
    EXPECT_EQ(shown.Description + shown.Source + shown.Parameters, "");
    EXPECT_EQ(LogLine("Error Number: "), "0");
    EXPECT_EQ(LogLine("Error Description: "), "");
}

TEST_F(ErrorHandling, ForgetsAFailureOnceItIsReported) {
    FailThreeDeep();
    TrapEvent("next", {"p"}, [] { throw Failure(7, "Other"); });
    ASSERT_EQ(prompts.Errors.size(), 2u);
    EXPECT_EQ(prompts.Errors[1].CallStack, "next\r\n");
    EXPECT_EQ(prompts.Errors[1].Description, "Other");
    EXPECT_EQ(Split(Log(), "THE FOLLOWING ERROR WAS CAUGHT:").size(), 3u);
}

TEST_F(ErrorHandling, ForgetsAFailureThatWasSwallowedOnTheWay) {
    EXPECT_THROW(Trap("swallowed", NoInputParms, [] { throw Failure(5, "bad"); }), Failure);
    FailThreeDeep();
    EXPECT_EQ(prompts.Errors.front().CallStack,
              "frmEvents_Form_Load\r\nfrmEvents_InitForm\r\nfrmEvents_ParseOutEventFile\r\n");
}

TEST_F(ErrorHandling, ShowsNoDialogUnattended) {
    handler.Unattended = true;
    handler.SetMsgOutputDIR(folder.Path());
    FailThreeDeep();
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_EQ(LogLine("User Message: "), "<Unattended Execution>");
    EXPECT_NE(ErrorFile().find(",\"<Unattended Execution>\"\r\n"), std::string::npos);
}

TEST_F(ErrorHandling, CountsAsUnattendedWithoutPrompts) {
    gPrompts = nullptr;
    FailThreeDeep();
    gPrompts = &prompts;
    EXPECT_EQ(LogLine("User Message: "), "<Unattended Execution>");
}

TEST_F(ErrorHandling, ShowsTheDialogWithoutFiles) {
    handler.LogFile.clear();
    FailThreeDeep();
    EXPECT_EQ(prompts.Errors.size(), 1u);
    EXPECT_TRUE(std::filesystem::is_empty(folder.Host()));
}

TEST_F(ErrorHandling, GivesUpFilesThatCannotBeWritten) {
    const std::string logs[] = {folder / "missing/error.log", folder / "taken"};
    folder.Write("taken/in_the_way", "");
    handler.SetMsgOutputDIR(folder / "missing");
    for (const std::string& log : logs) {
        handler.LogFile = log;
        EXPECT_NO_THROW(FailThreeDeep());
    }
    EXPECT_EQ(prompts.Errors.size(), 2u);
    EXPECT_FALSE(folder.Has("missing"));
}

TEST_F(ErrorHandling, TakesOtherExceptionsAsFailures) {
    TrapEvent("event", NoInputParms, [] { throw std::out_of_range("position 5 of 3"); });
    TrapEvent("event", NoInputParms, [] { throw std::bad_alloc(); });
    TrapEvent("event", NoInputParms, [] { throw 5; });
    EXPECT_EQ(prompts.TakeTranscript(),
              (std::vector<std::string>{"Error[51]: position 5 of 3", "Error[7]: Out of memory",
                                        "Error[51]: Unknown failure"}));
    EXPECT_EQ(prompts.Errors.front().Line, 0);
}

TEST_F(ErrorHandling, TellsTheLineAFailureWasRaisedAt) {
    int line = 0;
    TrapEvent("event", NoInputParms, [&] {
        line = __LINE__ + 1;
        throw Failure(5, "bad");
    });
    EXPECT_EQ(prompts.Errors.front().Line, line);
}

TEST_F(ErrorHandling, NamesTheExecutableWithItsExtension) {
    EXPECT_FALSE(handler.AppExeName().empty());
    EXPECT_EQ(handler.AppExeName(), Files::NameOf(handler.AppExeName()));
    const std::string separator(1, Files::Separator);
    handler.SetMsgOutputDIR("dir");
    EXPECT_EQ(handler.MsgOutputDIR(), "dir" + separator);
    handler.SetMsgOutputDIR("");
    EXPECT_EQ(handler.MsgOutputDIR(), "");
}

TEST(Trap, PassesResultsAndWithoutHandlerFailures) {
    EXPECT_EQ(Trap("A", NoInputParms, [] { return 5; }), 5);
    EXPECT_TRUE(TrapEvent("event", NoInputParms, [] {}));
    EXPECT_THROW(Trap("A", NoInputParms, [] { throw std::out_of_range("x"); }), std::out_of_range);
    EXPECT_THROW(TrapEvent("event", NoInputParms, [] { throw std::out_of_range("x"); }), std::out_of_range);
    EXPECT_EQ(ParameterText(true) + ParameterText(false), "TrueFalse");
}

TEST(clsError, StartsOutSilent) {
    const clsError fresh;
    EXPECT_TRUE(fresh.Unattended);
    EXPECT_TRUE(fresh.OfferDetails);
    EXPECT_FALSE(fresh.CollectUserInput);
    EXPECT_EQ(fresh.LogFile + fresh.MsgOutputDIR() + fresh.UserName, "");
    EXPECT_EQ(fresh.UserNumber, 0);
}

} // namespace
} // namespace velmora
