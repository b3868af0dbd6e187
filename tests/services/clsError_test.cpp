#include "services/clsError.h"

#include "FailureOf.h"
#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <gmock/gmock.h>

#include <regex>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const std::string Rule(55, '*');
const std::regex DatePattern(R"(\d{1,2}/\d{1,2}/\d{4} \d{1,2}:\d\d:\d\d [AP]M)");

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

    /// The only file whose name starts so, its times replaced by TIME; empty when there is none.
    [[nodiscard]] std::string Read(const std::string& start) const {
        for (const std::string& name : Files::ListFiles(folder.Path()))
            if (name.starts_with(start))
                return std::regex_replace(folder.Read(name), DatePattern, "TIME");
        return {};
    }
    [[nodiscard]] std::string Log() const { return Read("error.log"); }
    [[nodiscard]] std::string ErrorFile() const { return Read("Err[0-0]"); }
    /// What the last dialog shows of the failure.
    [[nodiscard]] std::string Shown() const {
        const ErrorDetails& shown = prompts.Errors.back();
        return std::to_string(shown.Number) + " " + shown.Description + " " + shown.Source + " " +
               shown.Parameters + " " + ReplaceAll(shown.CallStack, "\r\n", "|");
    }

    TempFolder folder;
    clsError handler;
    ScriptedPrompts prompts;
};

void FailThreeDeep() {
    TrapEvent("load", NoInputParms, [] {
        Trap("init", {"3"}, [] {
            Trap("parse", {"A.event", "two"}, [] { throw Failure(6, "Overflow", "Velmora", 42); });
        });
    });
}

TEST_F(ErrorHandling, ShowsTheInnermostFailureOnceAndWritesLogAndErrorFile) {
    handler.UserName = "Ada";
    handler.UserNumber = 7;
    prompts.UserNote = "I said \"go\"";
    FailThreeDeep();
    ASSERT_EQ(prompts.Errors.size(), 1u);
    EXPECT_EQ(Shown(), "6 Overflow Velmora <A.event>,<two> load|init|parse|");
    const ErrorDetails& shown = prompts.Errors.front();
    EXPECT_EQ(shown.Line, 42);
    EXPECT_TRUE(std::regex_match(shown.Time, DatePattern)) << shown.Time;
    EXPECT_TRUE(shown.OfferDetails && shown.CollectUserInput);
    const std::string record =
        Rule + "\r\n\r\nTHE FOLLOWING ERROR WAS CAUGHT:\r\n\r\nApplication: " + handler.AppExeName() +
        "\r\nError Source: Velmora\r\nError Number: 6\r\nError Description: Overflow\r\n"
        "Date and Time: TIME\r\nUser: 7 Ada\r\nUser Message: I said go\r\n"
        "Call Stack: \r\n\tload\r\n\tinit\r\n\tparse\r\n" +
        Rule;
    EXPECT_EQ(Log(), record + "\r\n");
    const std::string file = ErrorFile();
    EXPECT_TRUE(std::regex_search(file, std::regex(R"(^20\d{12}\d{1,3},)"))) << file;
    EXPECT_EQ(file.substr(file.find(',')),
              ",0,0,\"7-Ada\",TIME,\"" + record + "\"," + handler.AppExeName() +
                  ",Velmora,6,\"Overflow\",\"load*init*parse\",\"I said \"go\"\"\r\n");
}

TEST_F(ErrorHandling, SplitsTheTraceOutOfTheSource) {
    const std::int32_t line = __LINE__ + 1;
    const auto fail = [] { throw Failure(5, "bad", "S*X*Y"); };
    EXPECT_FALSE(TrapEvent("event", {"p"}, [&] { Trap("A", NoInputParms, fail); }));
    EXPECT_EQ(Shown(), "5 bad S <NO INPUT PARMS> event|A|X|Y|");
    EXPECT_EQ(prompts.Errors.front().Line, line);
    EXPECT_THAT(Log(), HasSubstr("User: <No information>\r\nUser Message: <None given>\r\nCall Stack: \r\n"
                                 "\tevent\r\n\tX\r\n\tY\r\n\tA\r\n" +
                                 Rule));
    EXPECT_THAT(ErrorFile(), HasSubstr(",0,0,\"0-\",TIME,"));
    EXPECT_THAT(ErrorFile(), HasSubstr(",S,5,\"bad\",\"event*A*X*Y\","));
    EXPECT_THAT(handler.LastCallStack(), ElementsAre("event", "A"));
}

TEST_F(ErrorHandling, RaisesMinusOneFromARoutineThatIsNotTopLevelAndForgetsWhatIsSwallowed) {
    const Failure failure = FailureOf([] { Trap("A", NoInputParms, [] { throw Failure(5, "bad", "S"); }); });
    EXPECT_EQ(failure.Number, FailureAlreadyReported);
    EXPECT_EQ(failure.Source + failure.Description(), "clsError");
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_FALSE(folder.Has("error.log"));
    TrapEvent("next", {"p"}, [] { throw Failure(7, "Other", "S"); });
    EXPECT_EQ(Shown(), "7 Other S <p> next|");
    handler.HandleError("nothing pending", 9, -1, "ignored", "ignored", {"ignored"}, true);
    EXPECT_EQ(Shown(), "0    nothing pending|");
    EXPECT_EQ(prompts.Errors.back().Line, 0);
    EXPECT_EQ(Split(Log(), "THE FOLLOWING ERROR WAS CAUGHT:").size(), 3u);
}

TEST_F(ErrorHandling, ShowsNoDialogUnattendedOrWithoutPrompts) {
    gPrompts = nullptr;
    FailThreeDeep();
    gPrompts = &prompts;
    handler.Unattended = true;
    FailThreeDeep();
    EXPECT_TRUE(prompts.Transcript.empty());
    EXPECT_EQ(Split(Log(), "User Message: <Unattended Execution>\r\n").size(), 3u);
    EXPECT_THAT(ErrorFile(), HasSubstr(",\"<Unattended Execution>\"\r\n"));
    EXPECT_TRUE(clsError().Unattended) << "a new one is silent";
}

TEST_F(ErrorHandling, GivesUpFilesThatCannotBeWritten) {
    folder.Write("taken/in_the_way", "");
    for (const std::string& log : {std::string(), folder / "missing/error.log", folder / "taken"}) {
        handler.LogFile = log;
        handler.SetMsgOutputDIR(log.empty() ? log : folder / "missing");
        EXPECT_NO_THROW(FailThreeDeep());
    }
    EXPECT_EQ(handler.MsgOutputDIR(), folder / "missing" + Files::Separator);
    EXPECT_EQ(prompts.Errors.size(), 3u);
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(ErrorHandling, TakesOtherExceptionsAsFailuresAndPassesThemOnWithoutHandler) {
    const auto fail = [] { throw std::out_of_range("position 5 of 3"); };
    TrapEvent("event", NoInputParms, fail);
    TrapEvent("event", NoInputParms, [] { throw std::bad_alloc(); });
    TrapEvent("event", NoInputParms, [] { throw 5; });
    EXPECT_THAT(prompts.Transcript, ElementsAre("Error[51]: position 5 of 3", "Error[7]: Out of memory",
                                                "Error[51]: Unknown failure"));
    EXPECT_EQ(prompts.Errors.front().Line, 0);
    gErrHandler = nullptr;
    EXPECT_THROW(TrapEvent("event", NoInputParms, fail), std::out_of_range);
    EXPECT_TRUE(TrapEvent("event", NoInputParms, [] {}));
    EXPECT_EQ(Trap("A", NoInputParms, [] { return ParameterText(true) + ParameterText(false); }),
              "TrueFalse");
}

} // namespace
} // namespace velmora
