#include "editor/QtText.h"

#include "TempFolder.h"

#include <QFile>

#include <gtest/gtest.h>

namespace velmora {

namespace {

TEST(QtTextTest, ConvertsEveryByteThereAndBack) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string text(1, static_cast<char>(byte));
        EXPECT_EQ(ToQt(text).size(), 1) << byte;
        EXPECT_EQ(FromQt(ToQt(text)), text) << byte;
    }
    EXPECT_EQ(ToQt("\x80\xE4"), QStringLiteral("€ä"));
}

TEST(QtTextTest, MarksWhatTheCodePageLacks) {
    EXPECT_EQ(FromQt(QStringLiteral("a李b\U0001F600")), "a?b?");
}

TEST(QtTextTest, CarriesPathsThatTheCodePageLacks) {
    const TempFolder folder;
    const QString name = QStringLiteral("行星.pcx");
    const QString path = PathToQt(folder / "x").chopped(1) + name;
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    const std::string core = PathFromQt(path);
    EXPECT_TRUE(Files::FileExists(core));
    EXPECT_EQ(PathToQt(core), path);
}

} // namespace

} // namespace velmora
