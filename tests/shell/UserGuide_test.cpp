// The user guide: where every window offers it, and how its pages are read.
#include "editor/EditorFixture.h"
#include "events/frmEvents.h"
#include "sbmodules/frmSBModules.h"
#include "shell/frmWriter.h"
#include "upissues/frmUPIssues.h"

#include <QPointer>
#include <QTextBlock>
#include <QTextBrowser>

namespace velmora {
namespace {

class UserGuideTest : public WindowTest {
  protected:
    static void UseTheRealPages() { ProgramDirectory = std::string(VELMORA_SAMPLE) + "/../../docs"; }

    /// The guide, if it is open.
    static QWidget* Guide() {
        for (QWidget* shown : QApplication::topLevelWidgets())
            if (shown->isVisible() && shown->objectName() == QLatin1String("frmUserGuide"))
                return shown;
        return nullptr;
    }
    static void Close() {
        ASSERT_TRUE(Guide());
        QTest::keyClick(Guide(), Qt::Key_Escape);
        EXPECT_FALSE(Guide());
    }
    /// The command stands behind a separator at the end of the window's Help menu, and opens the guide.
    static void ExpectOfferedBy(const QWidget& window) {
        SCOPED_TRACE(FromQt(window.objectName()));
        const QList<QAction*> items = window.findChild<QMenu*>(QStringLiteral("mnuHelp"))->actions();
        ASSERT_GE(items.size(), 3);
        EXPECT_TRUE(items[items.size() - 2]->isSeparator());
        EXPECT_EQ(items.last()->objectName(), QStringLiteral("mnuUserGuide"));
        items.last()->trigger();
        Close();
    }
};

TEST_F(UserGuideTest, IsAtTheEndOfEveryHelpMenu) {
    UseTheRealPages();
    Open<frmEvents>();
    ExpectOfferedBy(*window);
    Open<frmUPIssues>();
    ExpectOfferedBy(*window);
    Open<frmSBModules>();
    ExpectOfferedBy(*window);
    ExpectOfferedBy(frmWriter());
}

TEST_F(UserGuideTest, LeadsFromPageToPageByKeyboard) {
    UseTheRealPages();
    Open<frmEvents>();
    Pick("mnuUserGuide");
    const QPointer<QWidget> guide = Guide();
    ASSERT_TRUE(guide && QTest::qWaitForWindowActive(guide));
    auto* pages = guide->findChild<QTextBrowser*>();
    const auto expectPage = [&](const char* file, const char* heading) {
        EXPECT_EQ(pages->source().fileName(), QLatin1String(file));
        EXPECT_EQ(pages->document()->firstBlock().text(), QLatin1String(heading));
    };
    const auto click = [&](const char* button) {
        guide->findChild<QAbstractButton*>(QLatin1String(button))->click();
    };
    expectPage("index.md", "User guide");
    QTest::keyClick(pages, Qt::Key_Tab);
    QTest::keyClick(pages, Qt::Key_Return);
    expectPage("first-steps.md", "Your first event in five minutes");
    const auto picture =
        pages->loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("images/options.png")));
    EXPECT_GT(picture.value<QImage>().width(), 100);
    click("cmdBack");
    expectPage("index.md", "User guide");
    click("cmdForward");
    expectPage("first-steps.md", "Your first event in five minutes");
    Pick("mnuUserGuide");
    EXPECT_EQ(Guide(), guide) << "one of it is enough";
    click("cmdContents");
    expectPage("index.md", "User guide");
    Close();
}

/// What the first page has one do, from the copy on.
TEST_F(UserGuideTest, LeadsToAFirstEventWithoutAProblem) {
    const std::string sample = VELMORA_SAMPLE;
    for (const char* file : {"Data/Pirates.event", "GFX/Fleet.pcx"})
        temp.Write(std::string("Game/") + file, Files::ReadWhole(sample + "/" + file));
    Open<frmEvents>();
    while (Text("txtEventName") != "BorrowedBattleship" && Text("lblWhereWeAt") != "12 of 12")
        Click("cmdForward");
    prompts.TakeTranscript(); // notices of long texts on the way
    prompts.ExpectInput("", "MyFirstEvent");
    Pick("mnuCopyAsNew");
    for (const char* box :
         {"txtTitle", "txtDescription", "txtGoodOption", "txtNeutralOption", "txtEvilOption"})
        Type(box, QStringLiteral("Mine"));
    Pick("mnuCommitChanges");
    EXPECT_TRUE(Enabled("mnuEditThisEvent")) << "committed";
    EXPECT_THAT(prompts.Transcript, ::testing::SizeIs(1)) << "no reason against it";
    prompts.ExpectAsk("", true);
    Pick("mnuWriteToFile");
    EXPECT_THAT(temp.Read("Game/Data/MyEvents.event"), HasSubstr("EVENT MyFirstEvent\r\n"));
    EXPECT_THAT(prompts.Questions.back().Text, HasSubstr("\r\rMyEvents.event\r\r"));
}

TEST_F(UserGuideTest, SaysWhereItIsNotInstalled) {
    Open<frmEvents>();
    Pick("mnuUserGuide");
    ASSERT_TRUE(Guide());
    EXPECT_EQ(FromQt(Guide()->findChild<QTextBrowser*>()->toPlainText()),
              "The user guide is not installed:\n" + ProgramFile(Files::Join("guide", "index.md")));
    Close();
}

} // namespace
} // namespace velmora
