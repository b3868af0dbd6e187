#include "services/clsError.h"

#include "FailureOf.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <new>
#include <regex>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string Rule(55, '*');
const std::string DatePattern = R"(\d{1,2}/\d{1,2}/\d{4} \d{1,2}:\d\d:\d\d [AP]M)";

/// An error handler as the program sets it up, with its files in a folder of its own.
class ErrorHandling : public ::testing::Test {
  protected:
    void SetUp() override {
        handler.LogFile = folder / "error.log";
        handler.SetMsgOutputDIR(folder.Path());
        handler.Unattended = false;
        handler.CollectUserInput = true;
        gErrHandler = &handler;
    }
    void TearDown() override { gErrHandler = nullptr; }

    /// A file with its times replaced by TIME; the error file for "". Empty when there is none.
    [[nodiscard]] std::string Read(std::string name) const {
        for (const std::string& found : Files::ListFiles(folder.Path()))
            if (name.empty() && found.starts_with("Err[0-0]"))
                name = found;
        return name.empty() ? "" : std::regex_replace(folder.Read(name), std::regex(DatePattern), "TIME");
    }
    [[nodiscard]] std::string Log() const { return Read("error.log"); }

    TempFolder folder;
    clsError handler;
    ScriptedPrompts prompts;
};

void FailThreeDeep() {
    TrapEvent("frmEvents_Form_Load", NoInputParms, [] {
        Trap("frmEvents_InitForm", {"3"}, [] {
            Trap("frmEvents_ParseOutEventFile", {"A.event", "two"},
                 [] { throw Failure(FailureOverflow, "Overflow", "Velmora", 42); });
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

TEST_F(ErrorHandling, LogsTheFailureAndWritesTheErrorFile) {
    using Case = std::tuple<std::string, std::int32_t, std::string, std::string>;
    for (const auto& [user, number, inLog, inFile] :
         {Case{"", 0, "<No information>", "0-"}, Case{"Ada", 7, "7 Ada", "7-Ada"}}) {
        handler.UserName = user;
        handler.UserNumber = number;
        prompts.UserNote = "I said \"go\"";
        FailThreeDeep();
        const std::string record =
            Rule + "\r\n\r\nTHE FOLLOWING ERROR WAS CAUGHT:\r\n\r\nApplication: " + handler.AppExeName() +
            "\r\nError Source: Velmora\r\nError Number: 6\r\nError Description: Overflow\r\n"
            "Date and Time: TIME\r\nUser: " +
            inLog +
            "\r\nUser Message: I said go\r\nCall Stack: \r\n\tfrmEvents_Form_Load\r\n\tfrmEvents_InitForm\r\n"
            "\tfrmEvents_ParseOutEventFile\r\n" +
            Rule;
        EXPECT_EQ(Log(), record + "\r\n");
        const std::string file = Read("");
        EXPECT_TRUE(std::regex_search(file, std::regex(R"(^20\d{12}\d{1,3},)"))) << file;
        EXPECT_EQ(file.substr(file.find(',')),
                  ",0,0,\"" + inFile + "\",TIME,\"" + record + "\"," + handler.AppExeName() +
                      ",Velmora,6,\"Overflow\","
                      "\"frmEvents_Form_Load*frmEvents_InitForm*frmEvents_ParseOutEventFile\","
                      "\"I said \"go\"\"\r\n");
        for (const std::string& name : Files::ListFiles(folder.Path()))
            Files::DeleteFile(folder / name);
    }
}

TEST_F(ErrorHandling, ReportsAFailureInTheEventRoutineItself) {
    const std::int32_t line = __LINE__ + 1;
    const auto fail = [] { throw Failure(13, "Type mismatch"); };
    EXPECT_FALSE(TrapEvent("frmEvents_mnuZoom_Click", NoInputParms, fail));
    EXPECT_EQ(prompts.Errors.front().CallStack, "frmEvents_mnuZoom_Click\r\n");
    EXPECT_EQ(prompts.Errors.front().Parameters, "<NO INPUT PARMS>");
    EXPECT_EQ(prompts.Errors.front().Line, line);
    EXPECT_THAT(Log(),
                HasSubstr("User Message: <None given>\r\nCall Stack: \r\n\tfrmEvents_mnuZoom_Click\r\n" +
                          Rule + "\r\n"));
}

TEST_F(ErrorHandling, SplitsTheTraceOutOfTheSource) {
    TrapEvent("event", NoInputParms,
              [] { Trap("A", NoInputParms, [] { throw Failure(5, "bad", "S*X*Y"); }); });
    EXPECT_EQ(prompts.Errors.front().Source, "S");
    EXPECT_EQ(prompts.Errors.front().CallStack, "event\r\nA\r\nX\r\nY\r\n");
    EXPECT_THAT(Log(), HasSubstr("Call Stack: \r\n\tevent\r\n\tX\r\n\tY\r\n\tA\r\n" + Rule));
    EXPECT_THAT(Log(), HasSubstr("Error Source: S\r\n"));
    EXPECT_THAT(Read(""), HasSubstr(",\"event*A*X*Y\","));
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("event", "A"));
}

TEST_F(ErrorHandling, RaisesMinusOneFromARoutineThatIsNotTopLevelAndForgetsWhatIsSwallowed) {
    const Failure failure = FailureOf([] { Trap("A", NoInputParms, [] { throw Failure(5, "bad", "S"); }); });
    EXPECT_EQ(failure.Number, FailureAlreadyReported);
    EXPECT_EQ(failure.Source, "clsError");
    EXPECT_EQ(failure.Description(), "");
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_FALSE(folder.Has("error.log"));
    FailThreeDeep();
    TrapEvent("next", {"p"}, [] { throw Failure(7, "Other"); });
    ASSERT_EQ(prompts.Errors.size(), 2u);
    EXPECT_EQ(prompts.Errors[0].CallStack,
              "frmEvents_Form_Load\r\nfrmEvents_InitForm\r\nfrmEvents_ParseOutEventFile\r\n");
    EXPECT_EQ(prompts.Errors[1].CallStack, "next\r\n");
    EXPECT_EQ(prompts.Errors[1].Description, "Other");
    EXPECT_EQ(Split(Log(), "THE FOLLOWING ERROR WAS CAUGHT:").size(), 3u);
}

TEST_F(ErrorHandling, ShowsAReportWithNothingPendingAsNumber0) {
    FailThreeDeep();
    handler.HandleError("event", 9, -1, "ignored", "ignored", {"ignored"}, true);
    const ErrorDetails& shown = prompts.Errors.back();
    EXPECT_EQ(shown.Number, 0);
    EXPECT_EQ(shown.Line, 0);
    EXPECT_EQ(shown.Description + shown.Source + shown.Parameters, "");
    EXPECT_THAT(Log(), HasSubstr("Error Number: 0\r\nError Description: \r\n"));
}

TEST_F(ErrorHandling, ShowsNoDialogUnattendedOrWithoutPrompts) {
    gPrompts = nullptr;
    FailThreeDeep();
    gPrompts = &prompts;
    handler.Unattended = true;
    FailThreeDeep();
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_EQ(Split(Log(), "User Message: <Unattended Execution>\r\n").size(), 3u);
    EXPECT_THAT(Read(""), HasSubstr(",\"<Unattended Execution>\"\r\n"));
    const clsError fresh;
    EXPECT_TRUE(fresh.Unattended) << "a new one is silent";
    EXPECT_EQ(fresh.LogFile + fresh.MsgOutputDIR(), "");
}

TEST_F(ErrorHandling, GivesUpFilesThatCannotBeWritten) {
    folder.Write("taken/in_the_way", "");
    for (const std::string& log : {std::string(), folder / "missing/error.log", folder / "taken"}) {
        handler.LogFile = log;
        handler.SetMsgOutputDIR(log.empty() ? log : folder / "missing");
        EXPECT_NO_THROW(FailThreeDeep());
    }
    EXPECT_EQ(prompts.Errors.size(), 3u);
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(ErrorHandling, TakesOtherExceptionsAsFailures) {
    TrapEvent("event", NoInputParms, [] { throw std::out_of_range("position 5 of 3"); });
    TrapEvent("event", NoInputParms, [] { throw std::bad_alloc(); });
    TrapEvent("event", NoInputParms, [] { throw 5; });
    EXPECT_THAT(prompts.Transcript, ElementsAre("Error[51]: position 5 of 3", "Error[7]: Out of memory",
                                                "Error[51]: Unknown failure"));
    EXPECT_EQ(prompts.Errors.front().Line, 0);
}

TEST(Trap, PassesResultsAndWithoutHandlerFailures) {
    EXPECT_EQ(Trap("A", NoInputParms, [] { return 5; }), 5);
    EXPECT_TRUE(TrapEvent("event", NoInputParms, [] {}));
    EXPECT_THROW(Trap("A", NoInputParms, [] { throw std::out_of_range("x"); }), std::out_of_range);
    EXPECT_THROW(TrapEvent("event", NoInputParms, [] { throw std::out_of_range("x"); }), std::out_of_range);
    EXPECT_EQ(ParameterText(true) + ParameterText(false), "TrueFalse");
}

} // namespace
} // namespace velmora
