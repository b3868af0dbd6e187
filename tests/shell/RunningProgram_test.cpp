// A second start with the home of a running program.
#include "shell/RunningProgram.h"

#include "ScriptedPrompts.h"
#include "TempFolder.h"
#include "services/Settings.h"

#include <QTest>
#include <QThread>

#include <gmock/gmock.h>

#include <memory>

namespace velmora {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class RunningProgramTest : public ::testing::Test {
  protected:
    RunningProgramTest() {
        ProgramDirectory = temp / "Home";
        Files::CreateFolder(ProgramDirectory);
        QObject::connect(&first, &RunningProgram::Requested,
                         [this](const std::string& file) { requested.push_back(file); });
    }
    ~RunningProgramTest() override { RunningProgram::Patience = usualPatience; }

    /// Another start, while this program's events run; whether it goes on by itself.
    static bool GoesOn(const std::string& file) {
        bool goesOn = true;
        const std::unique_ptr<QThread> second(
            QThread::create([&] { goesOn = RunningProgram().Begin(file); }));
        second->start();
        EXPECT_TRUE(QTest::qWaitFor([&] { return second->isFinished(); }, 20000));
        return goesOn;
    }

    TempFolder temp;
    ScriptedPrompts prompts;
    std::chrono::milliseconds usualPatience = RunningProgram::Patience;
    std::vector<std::string> requested;
    RunningProgram first;
};

TEST_F(RunningProgramTest, TakesOverWhatLaterStartsAreFor) {
    EXPECT_TRUE(first.Begin("not for itself"));
    const std::string file = temp / "A file\nof two lines.event";
    EXPECT_FALSE(GoesOn(file));
    prompts.ExpectAsk("", true);
    EXPECT_FALSE(GoesOn(""));
    EXPECT_THAT(requested, ElementsAre(file, ""));
    prompts.ExpectAsk("", false);
    EXPECT_TRUE(GoesOn(""));
    EXPECT_THAT(prompts.Questions.back().Text, HasSubstr(ProgramDirectory));
    EXPECT_EQ(requested.size(), 2u);
}

TEST_F(RunningProgramTest, KeepsNobodyOffWhenItDoesNotAnswerOrIsGone) {
    RunningProgram::Patience = std::chrono::milliseconds(50);
    {
        RunningProgram hung;
        EXPECT_TRUE(hung.Begin(""));
        for (const bool startAll : {false, true}) {
            prompts.ExpectAsk("", startAll);
            EXPECT_EQ(first.Begin("A.event"), startAll);
            EXPECT_THAT(prompts.TakeTranscript(), ElementsAre(HasSubstr("does not answer")));
        }
    }
    EXPECT_TRUE(first.Begin("A.event"));
    QCoreApplication::processEvents();
    EXPECT_THAT(requested, IsEmpty()) << "what nobody answered is gone";
    EXPECT_EQ(temp.EntryCount(), 1);
}

} // namespace
} // namespace velmora
