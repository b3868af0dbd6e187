#include "editor/PictureViewer.h"

#include "TempFolder.h"
#include "editor/FormRoutines.h"

#include <QLabel>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace velmora {
namespace {

using namespace std::string_literals;

/// Two pixels side by side, red and blue, in 24 bits.
std::string RedAndBlue() {
    std::string pcx(128, '\0');
    pcx.replace(0, 4, "\x0A\x05\x01\x08"); // run-length encoded, 8 bits a colour
    pcx[8] = 1;                            // last column
    pcx.replace(65, 2, "\x03\x02");        // colours, bytes of a line of each
    return pcx + "\xC1\xFF\0"s + "\0\0"s + "\0\xC1\xFF"s;
}

TEST(PictureViewerTest, ShowsAPictureOrTellsThatThereIsNone) {
    const TempFolder folder;
    folder.Write("good.pcx", RedAndBlue());
    folder.Write("broken.pcx", "no picture at all");
    QWidget window;
    auto* viewer = new PictureViewer(&window);
    auto* instead = new QLabel(&window);
    instead->setObjectName(QStringLiteral("lblUnableToDisplay"));
    QSignalSpy displayed(viewer, &PictureViewer::Displayed);
    for (const char* name : {"good.pcx", "broken.pcx", "good.pcx", "missing.pcx", ""}) {
        const std::string path = folder / name;
        const bool shown = path.ends_with("good.pcx");
        viewer->hide();
        ShowImageFile(viewer, path);
        EXPECT_FALSE(viewer->isHidden()) << path;
        EXPECT_EQ(viewer->HasPicture(), shown) << path;
        EXPECT_EQ(instead->isHidden(), shown) << path;
        ASSERT_EQ(displayed.count(), 1);
        EXPECT_EQ(displayed.takeFirst().first().toBool(), shown) << path;
    }

    viewer->resize(100, 100);
    const QColor around = viewer->grab().toImage().pixelColor(50, 50);
    ShowImageFile(viewer, folder / "good.pcx");
    const QImage seen = viewer->grab().toImage();
    EXPECT_EQ(seen.pixelColor(5, 50), QColor(Qt::red));
    EXPECT_EQ(seen.pixelColor(95, 50), QColor(Qt::blue));
    EXPECT_EQ(seen.pixelColor(50, 5), around) << "it keeps its aspect ratio";
    EXPECT_EQ(seen.pixelColor(50, 95), around);
}

} // namespace
} // namespace velmora
