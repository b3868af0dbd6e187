#include "platform/ProfileStrings.h"

#include "FailureOf.h"
#include "TempFolder.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;

class ProfileStringsTest : public ::testing::Test {
  protected:
    void Have(const std::string& bytes) const { folder.Write("VelWriter.ini", bytes); }
    [[nodiscard]] std::string Now() const { return folder.Read("VelWriter.ini"); }
    [[nodiscard]] std::string ReadKey(std::size_t size = 64, const std::string& fallback = "fallback") const {
        return ProfileStrings::Read("Setup", "Key", fallback, size, file);
    }
    void WriteKey(const std::string& value) const { ProfileStrings::Write("Setup", "Key", value, file); }

    TempFolder folder;
    const std::string file = folder / "VelWriter.ini";
};

TEST_F(ProfileStringsTest, ReadsValues) {
    const std::pair<std::string, std::vector<std::string>> cases[] = {
        {"value",
         {"[Setup]\nKey=value", "[SETUP]\r\nkEY=\"value\"\r\n", "[Setup]\r\nKey=value\r\nKey=second",
          " [ Setup ] ; said so\r\n \tKey \t=\t value \t\r\n", "[Setup]\r\nK\0ey=1\r\nKey=value"s}},
        {"fallback",
         {"", "[Setup]\r\nOther=1\r\n[Setup]\r\nKey=second", "[Setup]\r\n;Key=value\r\n[Other]\r\nKey=value",
          "[Setup]\r\nKey", "[Setup\r\nKey=value", "Key=value\r\n[Setup]"}},
        {" \"a=b;c\" ", {"[Setup]\r\nKey= ' \"a=b;c\" ' "}},
        {"\"value'", {"[Setup]\r\nKey=\"value'"}},
        {"\"", {"[Setup]\r\nKey=\"", "[Setup]\r\nKey=\"\"\""}},
        {"", {"[Setup]\r\nKey=\"\"", "[Setup]\r\nKey="}},
        {"a\0b\x81\xFF"s, {"[Setup]\r\nKey=a\0b\x81\xFF"s}}};
    for (const auto& [value, texts] : cases)
        for (const std::string& text : texts) {
            Have(text);
            EXPECT_EQ(ReadKey(), value) << text;
            EXPECT_EQ(Now(), text) << "reading changed the file";
        }
}

TEST_F(ProfileStringsTest, FallsBackAndCutsToTheBuffer) {
    EXPECT_EQ(ReadKey(64, " two words \t "), " two words");
    EXPECT_EQ(ReadKey(64, "  "), "");
    EXPECT_EQ(ReadKey(5), "fall");
    EXPECT_EQ(ProfileStrings::Read("Setup", "Key", "fallback", 64, folder.Path()), "fallback");
    EXPECT_EQ(folder.EntryCount(), 0);
    const std::string whole = std::string(70, 'x') + "y";
    Have("[Setup]\r\nKey=" + whole);
    for (const std::size_t size : {72, 71, 1})
        EXPECT_EQ(ReadKey(size), whole.substr(0, size - 1));
    EXPECT_EQ(ReadKey(0), "");
}

TEST_F(ProfileStringsTest, WritesWhatChanges) {
    for (const auto& [before, after] : std::vector<std::pair<std::string, std::string>>{
             {"[setup]\nKEY = old\nKey=other\n", "[setup]\r\nKEY =new\r\nKey=other\r\n"},
             {"[Setup]\r\n\r\n\r\n[Z]\r\nKey=1\r\n", "[Setup]\r\nKey=new\r\n\r\n\r\n[Z]\r\nKey=1\r\n"},
             {"[Z]\r\nKey=1\r\n\r\n", "[Z]\r\nKey=1\r\n\r\n[Setup]\r\nKey=new\r\n"},
             {"; mine\r\nstray\r\n[Setup]\r\n; note\r\nwhat is this\r\n;Key=no",
              "; mine\r\nstray\r\n[Setup]\r\n; note\r\nwhat is this\r\n;Key=no\r\nKey=new\r\n"},
             {"[Setup]\r\nKey=\"new\"\r\n", "[Setup]\r\nKey=new\r\n"},
             {"[Setup]\nKey =  new \nB='q'", "[Setup]\nKey =  new \nB='q'"},
             {"[Setup]\r\nA=\0\x80\r\r\nKey=1"s, "[Setup]\r\nA=\0\x80\r\r\nKey=new\r\n"s}}) {
        Have(before);
        WriteKey("new");
        EXPECT_EQ(Now(), after) << before;
        EXPECT_EQ(ReadKey(), "new") << before;
    }
}

TEST_F(ProfileStringsTest, CreatesTheFileAndKeepsAnEntryToOneLine) {
    for (const auto& [value, line] : std::vector<std::pair<std::string, std::string>>{
             {"one\r\n[Evil]\nB=2", "one  [Evil] B=2"}, {"cut\0off"s, "cut"}, {"'q'", "'q'"}}) {
        WriteKey(value);
        EXPECT_EQ(Now(), "[Setup]\r\nKey=" + line + "\r\n");
    }
    EXPECT_EQ(folder.EntryCount(), 1);
    for (const std::string& place : {folder / "missing/VelWriter.ini", folder.Path()})
        EXPECT_NE(FailureOf([&] { ProfileStrings::Write("Setup", "Key", "1", place); }).Number, 0);
}

TEST_F(ProfileStringsTest, ReadsAndWritesSections) {
    const auto read = [&](std::size_t size) { return ProfileStrings::ReadSection("Setup", size, file); };
    EXPECT_EQ(read(64), "");
    Have("[A]\r\nx=1\r\n[setup]\r\n a = 1 \r\n; no=1\r\nstray\r\n\r\nb='2'\r\n[B]\r\ny=1\r\n");
    const std::string whole = "a=1\0b='2'\0"s;
    for (const std::size_t size : {whole.size() + 2, whole.size() + 1, std::size_t{2}})
        EXPECT_EQ(read(size), whole.substr(0, size - 2));
    EXPECT_EQ(read(1), "");
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [before, data, after] :
         {Case{"[A]\r\nx=1\r\n\r\n[setup]\r\nold=1\r\n; gone\r\n\r\n[B]\r\ny=1\r\n", "a=1\0b=2\0\0junk\0"s,
               "[A]\r\nx=1\r\n\r\n[setup]\r\na=1\r\nb=2\r\n\r\n[B]\r\ny=1\r\n"},
          Case{"[Setup]\r\nold=1\r\n", "", "[Setup]\r\n"}, Case{"", "a=1", "[Setup]\r\na=1\r\n"},
          Case{"[Setup]\na=1\n", "a=1\0"s, "[Setup]\na=1\n"}}) {
        Have(before);
        ProfileStrings::WriteSection("Setup", data, file);
        EXPECT_EQ(Now(), after);
    }
}

} // namespace
} // namespace velmora
