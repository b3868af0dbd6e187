#include "services/clsINI.h"

#include "FailureOf.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace velmora {
namespace {

using namespace std::string_literals;

class clsINITest : public ::testing::Test {
  protected:
    void SetUp() override { ini.INIFile = folder / "VelWriter.ini"; }

    TempFolder folder;
    clsINI ini;
};

std::string SourceOfFailure(const std::function<void()>& work) {
    const Failure failure = FailureOf(work);
    EXPECT_EQ(failure.Number, FailureInvalidArgument);
    EXPECT_EQ(failure.Description(), "Invalid procedure call or argument");
    EXPECT_NE(failure.Line, 0);
    return failure.Source;
}

TEST_F(clsINITest, PadsShortValuesAndCutsLongOnes) {
    const struct {
        std::string Stored;
        std::int32_t Size;
        std::string Read;
    } cases[] = {
        {"", 64, std::string(64, '\0')},
        {"1", 64, "1" + std::string(63, '\0')},
        {"10", 64, "10"},
        {"\"1\"", 64, "1" + std::string(63, '\0')},
        {std::string(62, 'x'), 64, std::string(62, 'x')},
        {std::string(70, 'x'), 64, std::string(62, 'x')},
        {std::string(70, 'x'), 72, std::string(70, 'x')},
        {"10", 4, "10"},
        {"10", 3, "1\0\0"s},
        {"10", 2, "\0\0"s},
        {"10", 1, "\0"s},
        {"10", 0, ""},
    };
    for (const auto& value : cases) {
        folder.Write("VelWriter.ini", "[Setup]\r\nKey=" + value.Stored + "\r\n");
        EXPECT_EQ(ini.GetINIValue("Setup", "Key", value.Size), value.Read) << value.Stored << value.Size;
    }
}

TEST_F(clsINITest, GivesAnEmptyBufferForWhatIsMissing) {
    EXPECT_EQ(ini.GetINIValue("Setup", "Key", 64), std::string(64, '\0'));
    EXPECT_EQ(ini.GetINISection("Setup", 8), std::string(8, '\0'));
    folder.Write("VelWriter.ini", "[Setup]\r\nA=1\r\n");
    EXPECT_EQ(ini.GetINIValue("Setup", "Key", 64), std::string(64, '\0'));
    EXPECT_EQ(ini.GetINIValue("Other", "A", 64), std::string(64, '\0'));
}

TEST_F(clsINITest, ReadsWholeSections) {
    folder.Write("VelWriter.ini", "[Setup]\r\na=1\r\nb=2\r\n");
    EXPECT_EQ(ini.GetINISection("Setup", 64), "a=1\0b=2"s);
    EXPECT_EQ(ini.GetINISection("Setup", 11), "a=1\0b=2"s);
    EXPECT_EQ(ini.GetINISection("Setup", 9), "a=1\0b="s);
    EXPECT_EQ(ini.GetINISection("Setup", 7), "a=1");
    EXPECT_EQ(ini.GetINISection("Setup", 4), "a\0\0\0"s);
}

TEST_F(clsINITest, Writes) {
    EXPECT_NE(ini.PutINIValue("Setup", "Path", "C:\\Games\\"), 0);
    EXPECT_NE(ini.PutINIValue("Setup", "SortBy", "0"), 0);
    EXPECT_NE(ini.PutINIValue("setup", "PATH", "D:\\"), 0);
    EXPECT_EQ(folder.Read("VelWriter.ini"), "[Setup]\r\nPath=D:\\\r\nSortBy=0\r\n");
    EXPECT_NE(ini.PutINISection("Setup", "a=1\0b=2\0"s), 0);
    EXPECT_EQ(folder.Read("VelWriter.ini"), "[Setup]\r\na=1\r\nb=2\r\n");
    ini.INIFile = folder / "missing/VelWriter.ini";
    EXPECT_EQ(ini.PutINIValue("Setup", "Path", "C:\\"), 0);
    EXPECT_EQ(ini.PutINISection("Setup", "a=1\0"s), 0);
}

TEST_F(clsINITest, NamesAllItsReadsInTheSourceOfAFailure) {
    const auto failingRead = [&] { (void)ini.GetINIValue("Setup", "Key", -1); };
    EXPECT_EQ(SourceOfFailure(failingRead), "clsINI*GetINIValue");
    (void)ini.GetINIValue("Setup", "Key", 64);
    (void)ini.PutINIValue("Setup", "Key", "1");
    (void)ini.GetINIValue("Setup", "Key", 64);
    EXPECT_EQ(SourceOfFailure(failingRead), "clsINI*GetINIValue*GetINIValue*GetINIValue*GetINIValue");
    clsINI other;
    EXPECT_EQ(SourceOfFailure([&] { (void)other.GetINISection("Setup", -64); }), "clsINI*GetINISection");
    EXPECT_EQ(SourceOfFailure([&] { (void)other.GetINIValue("Setup", "Key", -64); }),
              "clsINI*GetINISection*GetINIValue");
}

} // namespace
} // namespace velmora
