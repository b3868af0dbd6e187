// The program itself, started a second time.
#include "shell/RunningProgram.h"

#include "TempFolder.h"
#include "editor/QtText.h"
#include "services/Settings.h"

#include <QProcess>
#include <QTest>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(SecondStart, HandsItsFileToTheFirst) {
    const TempFolder temp;
    ProgramDirectory = temp / "Home";
    Files::CreateFolder(ProgramDirectory);
    RunningProgram first;
    std::string requested;
    QObject::connect(&first, &RunningProgram::Requested, [&](const std::string& file) { requested = file; });
    ASSERT_TRUE(first.Begin(""));

    QProcess second;
    second.setWorkingDirectory(PathToQt(temp.Path()));
    second.start(QStringLiteral(VELMORA_WRITER),
                 {QStringLiteral("-platform"), QStringLiteral("offscreen"), QStringLiteral("--home"),
                  QStringLiteral("Home"), QStringLiteral("Game/../A.event")});
    EXPECT_TRUE(QTest::qWaitFor([&] { return second.state() == QProcess::NotRunning; }, 20000));
    EXPECT_EQ(second.exitCode(), 0) << second.readAllStandardError().toStdString();
    EXPECT_EQ(requested, temp / "A.event");
}

} // namespace
} // namespace velmora
