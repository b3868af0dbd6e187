#include "editor/PictureViewer.h"

#include "TempFolder.h"
#include "editor/FormRoutines.h"

#include <QLabel>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace velmora {

namespace {

/// Two pixels side by side, red and blue, in 24 bits.
std::string RedAndBlue() {
    std::string pcx(128, '\0');
    pcx[0] = 10; // PCX
    pcx[1] = 5;
    pcx[2] = 1; // run-length encoded
    pcx[3] = 8;
    pcx[8] = 1; // last column
    pcx[65] = 3;
    pcx[66] = 2;
    const std::string red("\xC1\xFF\x00", 3);
    const std::string green("\x00\x00", 2);
    const std::string blue("\x00\xC1\xFF", 3);
    return pcx + red + green + blue;
}

class PictureViewerTest : public testing::Test {
  protected:
    PictureViewerTest() {
        auto* layout = new QVBoxLayout(&window);
        layout->addWidget(viewer);
        layout->addWidget(instead);
        instead->setObjectName(QStringLiteral("lblUnableToDisplay"));
        folder.Write("good.pcx", RedAndBlue());
        folder.Write("broken.pcx", "no picture at all");
    }

    TempFolder folder;
    QWidget window;
    PictureViewer* viewer = new PictureViewer;
    QLabel* instead = new QLabel(QStringLiteral("Unable to display picture"));
};

TEST_F(PictureViewerTest, TellsWhetherItHasAPicture) {
    const QSignalSpy displayed(viewer, &PictureViewer::Displayed);
    const std::pair<std::string, bool> cases[] = {
        {folder / "good.pcx", true},     {folder / "broken.pcx", false}, {folder / "good.pcx", true},
        {folder / "missing.pcx", false}, {folder.Path(), false},         {"", false},
    };
    int told = 0;
    for (const auto& [path, shown] : cases) {
        ShowImageFile(viewer, path);
        EXPECT_FALSE(viewer->isHidden()) << path;
        EXPECT_EQ(viewer->HasPicture(), shown) << path;
        EXPECT_EQ(instead->isHidden(), shown) << path;
        ASSERT_EQ(displayed.count(), ++told);
        EXPECT_EQ(displayed.last().first().toBool(), shown) << path;
    }
}

TEST_F(PictureViewerTest, ScalesAndKeepsTheAspectRatio) {
    PictureViewer alone;
    alone.resize(100, 100);
    const QColor around = alone.grab().toImage().pixelColor(50, 5);
    alone.ShowFile(folder / "good.pcx");
    const QImage seen = alone.grab().toImage();
    EXPECT_EQ(seen.pixelColor(5, 50), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(95, 50), QColor(Qt::blue));
    EXPECT_EQ(seen.pixelColor(50, 5), around);
    EXPECT_EQ(seen.pixelColor(50, 95), around);
}

} // namespace

} // namespace velmora
