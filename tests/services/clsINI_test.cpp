#include "services/clsINI.h"

#include "FailureOf.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;

class clsINITest : public ::testing::Test {
  protected:
    void SetUp() override { ini.INIFile = folder / "VelWriter.ini"; }

    TempFolder folder;
    clsINI ini;
};

TEST_F(clsINITest, PadsShortValuesAndCutsLongOnes) {
    EXPECT_EQ(ini.GetINIValue("Setup", "Key", 64), std::string(64, '\0')) << "there is no file";
    using Case = std::tuple<std::string, std::int32_t, std::string>;
    for (const auto& [stored, size, read] :
         {Case{"", 64, std::string(64, '\0')}, Case{"1", 64, "1" + std::string(63, '\0')},
          Case{"10", 64, "10"}, Case{"\"1\"", 64, "1" + std::string(63, '\0')},
          Case{std::string(62, 'x'), 64, std::string(62, 'x')},
          Case{std::string(70, 'x'), 64, std::string(62, 'x')},
          Case{std::string(70, 'x'), 72, std::string(70, 'x')}, Case{"10", 4, "10"}, Case{"10", 3, "1\0\0"s},
          Case{"10", 2, "\0\0"s}, Case{"10", 1, "\0"s}, Case{"10", 0, ""}}) {
        folder.Write("VelWriter.ini", "[Setup]\r\nKey=" + stored + "\r\n");
        EXPECT_EQ(ini.GetINIValue("Setup", "Key", size), read) << stored << size;
    }
}

TEST_F(clsINITest, ReadsAndWritesSections) {
    EXPECT_EQ(ini.GetINISection("Setup", 8), std::string(8, '\0'));
    EXPECT_NE(ini.PutINIValue("Setup", "Path", "C:\\"), 0);
    EXPECT_NE(ini.PutINIValue("setup", "PATH", "D:\\"), 0);
    EXPECT_EQ(folder.Read("VelWriter.ini"), "[Setup]\r\nPath=D:\\\r\n");
    EXPECT_NE(ini.PutINISection("Setup", "a=1\0b=2\0"s), 0);
    EXPECT_EQ(folder.Read("VelWriter.ini"), "[Setup]\r\na=1\r\nb=2\r\n");
    using Case = std::pair<std::int32_t, std::string>;
    for (const auto& [size, read] : {Case{64, "a=1\0b=2"s}, Case{11, "a=1\0b=2"s}, Case{9, "a=1\0b="s},
                                     Case{7, "a=1"}, Case{4, "a\0\0\0"s}})
        EXPECT_EQ(ini.GetINISection("Setup", size), read) << size;
    ini.INIFile = folder / "missing/VelWriter.ini";
    EXPECT_EQ(ini.PutINIValue("Setup", "Path", "C:\\"), 0);
    EXPECT_EQ(ini.PutINISection("Setup", "a=1\0"s), 0);
}

TEST_F(clsINITest, NamesAllItsReadsInTheSourceOfAFailure) {
    const auto expectSource = [](const std::string& source, const std::function<void()>& work) {
        const Failure failure = FailureOf(work);
        EXPECT_EQ(failure.Number, FailureInvalidArgument);
        EXPECT_EQ(failure.Description(), "Invalid procedure call or argument");
        EXPECT_NE(failure.Line, 0);
        EXPECT_EQ(failure.Source, source);
    };
    expectSource("clsINI*GetINISection", [&] { (void)ini.GetINISection("Setup", -64); });
    (void)ini.GetINIValue("Setup", "Key", 64);
    (void)ini.PutINIValue("Setup", "Key", "1");
    expectSource("clsINI*GetINISection*GetINIValue*GetINIValue",
                 [&] { (void)ini.GetINIValue("Setup", "Key", -1); });
}

} // namespace
} // namespace velmora
