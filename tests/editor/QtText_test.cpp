#include "editor/QtText.h"

#include "TempFolder.h"
#include "platform/PathTexts.h"

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
    for (const char* notEscaped : {"\x7F\xC3\xA9", "\x7F\xE4", "\x7F", "\x7F\x7F"})
        EXPECT_EQ(FromQt(ToQt(notEscaped)), notEscaped);
    const QString mixed = QStringLiteral("é\x7F行 星\U0001F600.pcx");
    EXPECT_EQ(ToQt("\"" + FromQt(mixed) + "\" is \xE9"), u'"' + mixed + QStringLiteral("\" is é"));
}

TEST(QtTextTest, CarriesPathsThatTheCodePageLacks) {
    const TempFolder folder;
    const QString path = PathToQt(folder.Path()) + QChar(Files::Separator) + QStringLiteral("行星.pcx");
    ASSERT_TRUE(QFile(path).open(QIODevice::WriteOnly));
    const std::string core = PathFromQt(path);
    EXPECT_TRUE(Files::FileExists(core));
    EXPECT_EQ(PathToQt(core), path);
    EXPECT_EQ(ToQt(core), path);
    for (const std::string& kept : {core, std::string("C:\\\xC3\xA9"), std::string("\xE9")})
        EXPECT_EQ(PathTexts::FromStoredText(PathTexts::StoredText(kept)), kept);
    EXPECT_EQ(PathTexts::StoredText(core), path.toStdString());
}

} // namespace
} // namespace velmora
