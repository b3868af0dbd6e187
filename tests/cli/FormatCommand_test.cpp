#include "CliRun.h"
#include "GameFolder.h"
#include "platform/CodePage.h"

#include <gmock/gmock.h>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(FormatCommand, PrintsRecordsAsTheEditorWritesThem) {
    GameFolder game;
    game.Write("A.event",
               "// mine\nevent Raid\nTITLE  \"Caf\xE9\" lost\n\nendevent\nEVENT Two\nProbability 2.5\n"
               "ENDEVENT");
    clsEvent event;
    event.EventName = "Raid";
    event.Title = "Caf\xE9";
    std::string expected = event.GenerateEventString(false);
    event.EventName = "Two";
    event.Probability = 2;
    expected += event.GenerateEventString(false);
    const CliRun run("format", game.Typed("A.event"));
    EXPECT_EQ(run.Status, 0);
    EXPECT_EQ(run.Err, "");
    EXPECT_EQ(run.Out, expected) << "good for a file";
    std::ostringstream shown;
    RunVelwriter({"format", game.Typed("A.event")}, shown, shown, true);
    EXPECT_EQ(shown.str(), CodePage::ToUtf8(expected)) << "good for a terminal";
}

TEST(FormatCommand, LeavesWhatTheGameWroteAlone) {
    for (const std::string name : {"Data/CoreEvents.event", "Data/BonusEvents.event",
                                   "Data/UP_Issues/Council.UPIssue", "Data/UP_Issues/Curiosities.UPIssue"}) {
        const std::string path = std::string(VELMORA_SAMPLE) + "/" + name;
        EXPECT_EQ(CliRun("format", path).Out, ReadProjectFile("sample/Velmora/" + name));
        EXPECT_EQ(CliRun("format", "--check", path).Status, 0);
    }
}

TEST(FormatCommand, WritesAnUntidyFileOnceAndThenLeavesItAlone) {
    using Case = std::pair<std::string, std::string>;
    for (const auto& [name, bytes] :
         {Case{"lf.event", "EVENT A\nENDEVENT\n"},
          Case{"blanks.event", "EVENT A\r\nTitle\t \" x \"\r\n\tColour \"red\"\r\nENDEVENT\r\n"},
          Case{"name.EVENT", "EVENT 3 Moons!\r\nENDEVENT\r\n"},
          Case{"break.event", "EVENT A\r\nTitle \"a\rb\"\r\nENDEVENT\r\n"},
          Case{"carried.event", "EVENT A\r\nImage \"x\"\r\nENDEVENT\r\nEVENT B\r\nENDEVENT\r\n"},
          Case{"issue.upissue", GameFolder::Issue("Tax") + "\r\n// remark\r\n"}}) {
        GameFolder game;
        game.Write(name, bytes);
        const std::string typed = game.Typed(name);
        const CliRun check("format", "--check", typed);
        EXPECT_EQ(check.Status, 1);
        EXPECT_THAT(check.Lines(), ElementsAre(HasSubstr(name)));
        const CliRun printed("format", typed);
        EXPECT_EQ(game.Read(name), bytes) << "only --write writes";
        EXPECT_EQ(CliRun("format", "--write", typed).Status, 0);
        const std::string once = game.Read(name);
        EXPECT_EQ(once, printed.Out);
        EXPECT_EQ(CliRun("format", "--check", typed).Status, 0);
        EXPECT_EQ(CliRun("format", "--write", typed).Out, "") << "nothing to write";
        EXPECT_EQ(game.Read(name), once);
    }
}

TEST(FormatCommand, NeverReplacesAFileThatWouldLoseRecords) {
    using Case = std::pair<std::string, const char*>;
    for (const auto& [bytes, message] :
         {Case{"EVENT A\r\nENDEVENT\r\nEVENT a\r\nENDEVENT\r\n",
               "A.event:4: warning: Duplicate event found!  EventName = a, File = A.event [duplicate-event]"},
          Case{"EVENT A\r\nENDEVENT\r\nEVENT B\r\nTitle \"x\"\r\n",
               "A.event:3: error: This block has no ENDEVENT [unfinished-block]"},
          Case{"EVENT A\r\nEVENT B\r\nENDEVENT\r\n", "A.event:1: error: This block"},
          Case{"// nothing but remarks\r\n", "it holds no record"},
          Case{GameFolder::Issue("Tax"), "Unrecognized token!"}}) {
        GameFolder game;
        game.Write("A.event", bytes);
        game.Write("B.event", "EVENT B\nENDEVENT\n");
        const CliRun run("format", "--write", game.Typed("A.event"), game.Typed("B.event"));
        EXPECT_EQ(run.Status, 2);
        EXPECT_THAT(run.Err, HasSubstr(message));
        EXPECT_THAT(run.Err, HasSubstr("A.event: not written"));
        EXPECT_EQ(game.Read("A.event"), bytes);
        EXPECT_THAT(run.Lines(), ElementsAre(HasSubstr("B.event"))) << "the other file is written";
        EXPECT_EQ(CliRun("format", "--check", game.Typed("A.event")).Status, 1);
        const bool isBroken = std::string(message).find("This block") != std::string::npos;
        EXPECT_EQ(CliRun("format", game.Typed("A.event")).Status, isBroken ? 2 : 0);
    }
}

TEST(FormatCommand, GoesOnAfterAFileThatFails) {
    GameFolder game;
    game.Write("A.event", "Probability 9999999999\r\n");
    game.Write("B.event", std::string("EVENT B\0\r\nENDEVENT\r\n", 19));
    game.Write("C.event/inner", "");
    game.Write("D.event", "EVENT D\nENDEVENT\n");
    game.Write("Empty.event", "");
    const CliRun run("format", "--check", game.Typed("A.event"), game.Typed("B.event"), game.Typed("C.event"),
                     game.Typed("Missing.event"), game.Typed("D.event"), game.Typed("Empty.event"));
    EXPECT_EQ(run.Status, 2);
    for (const char* text : {"A.event: Overflow", "B.event: This is no text file: a NUL byte in line 1",
                             "C.event: Cannot read", "Missing.event: Cannot read"})
        EXPECT_THAT(run.Err, HasSubstr(text));
    EXPECT_THAT(run.Lines(), ElementsAre(HasSubstr("D.event")));
    EXPECT_EQ(CliRun("format", "--write", game.Typed("Empty.event")).Status, 0);
}

TEST(FormatCommand, RefusesOtherFilesBeforeAnyWork) {
    GameFolder game;
    game.Write("A.event", "EVENT A\nENDEVENT\n");
    for (const char* other : {"A.SBModule", "A.txt", "event", "A.event.bak"}) {
        const CliRun run("format", "--write", game.Typed("A.event"), game.Typed(other));
        EXPECT_EQ(run.Status, 2) << other;
        EXPECT_THAT(run.Err, HasSubstr(std::string(other) + ": only .event and .UPIssue files"));
        EXPECT_EQ(game.Read("A.event"), "EVENT A\nENDEVENT\n");
    }
}

} // namespace
} // namespace velmora
