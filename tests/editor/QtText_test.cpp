#include "editor/QtText.h"

#include "TempFolder.h"

#include <QFile>

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(QtTextTest, ConvertsEveryByteThereAndBack) {
    std::string everyByte;
    for (int byte = 0; byte < 256; ++byte)
        everyByte += static_cast<char>(byte);
    EXPECT_EQ(ToQt(everyByte).size(), 256);
    EXPECT_EQ(FromQt(ToQt(everyByte)), everyByte);
    EXPECT_EQ(ToQt("\x80\xE4"), QStringLiteral("€ä"));
    EXPECT_EQ(FromQt(QStringLiteral("a李b\U0001F600")), "a?b?") << "marks what the code page lacks";
}

TEST(QtTextTest, CarriesPathsThatTheCodePageLacks) {
    const TempFolder folder;
    const QString path = PathToQt(folder.Path()) + QStringLiteral("行星.pcx");
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    const std::string core = PathFromQt(path);
    EXPECT_TRUE(Files::FileExists(core));
    EXPECT_EQ(PathToQt(core), path);
}

} // namespace
} // namespace velmora
