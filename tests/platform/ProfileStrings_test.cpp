#include "platform/ProfileStrings.h"

#include "TempFolder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;

class ProfileStringsTest : public ::testing::Test {
  protected:
    [[nodiscard]] std::string File() const { return folder / "VelWriter.ini"; }
    void Have(const std::string& bytes) const { folder.Write("VelWriter.ini", bytes); }
    [[nodiscard]] std::string Now() const { return folder.Read("VelWriter.ini"); }
    [[nodiscard]] std::string ReadKey(const std::string& key, std::size_t size = 64) const {
        return ProfileStrings::Read("Setup", key, "fallback", size, File());
    }
    bool WriteKey(const std::string& key, const std::string& value) const {
        return ProfileStrings::Write("Setup", key, value, File());
    }

    TempFolder folder;
};

TEST_F(ProfileStringsTest, ReadsValues) {
    using Case = std::pair<std::string, std::string>;
    for (const auto& [bytes, value] : {
             Case{"[Setup]\r\nKey=value\r\n", "value"},
             Case{"[Setup]\nKey=value", "value"},
             Case{"[SETUP]\r\nkEY=value", "value"},
             Case{" [ Setup ] ; said so\r\n \tKey \t=\t value \t\r\n", "value"},
             Case{"[Setup]\r\nKey=\"value\"", "value"},
             Case{"[Setup]\r\nKey= 'value' ", "value"},
             Case{"[Setup]\r\nKey=\" value \"", " value "},
             Case{"[Setup]\r\nKey=\"\"value\"\"", "\"value\""},
             Case{"[Setup]\r\nKey=\"value'", "\"value'"},
             Case{"[Setup]\r\nKey=\"", "\""},
             Case{"[Setup]\r\nKey=\"\"", ""},
             Case{"[Setup]\r\nKey=", ""},
             Case{"[Setup]\r\nKey=a=b;c", "a=b;c"},
             Case{"[Setup]\r\nKey=first\r\nKey=second", "first"},
             Case{"[Setup]\r\nOther=1\r\n[Setup]\r\nKey=second", "fallback"},
             Case{"[Setup]\r\n[Other]\r\nKey=value", "fallback"},
             Case{"[Setup]\r\n;Key=value", "fallback"},
             Case{"[Setup]\r\nKey", "fallback"},
             Case{"[Setup\r\nKey=value", "fallback"},
             Case{"Key=value\r\n[Setup]", "fallback"},
             Case{"[Setup]\r\nK\0ey=1\r\nKey=a\0b"s, "a\0b"s},
             Case{"[Setup]\r\nKey=\x81\xFF\xE9", "\x81\xFF\xE9"},
             Case{"", "fallback"},
         }) {
        Have(bytes);
        EXPECT_EQ(ReadKey("Key"), value) << bytes;
        EXPECT_EQ(Now(), bytes) << "reading changed the file";
    }
}

TEST_F(ProfileStringsTest, FallsBackAndCutsToTheBuffer) {
    using Case = std::tuple<std::string, std::size_t, std::string>;
    for (const auto& [fallback, size, value] :
         {Case{"fallback", 64, "fallback"}, Case{" two words \t ", 64, " two words"}, Case{"  ", 64, ""},
          Case{"fallback", 5, "fall"}})
        EXPECT_EQ(ProfileStrings::Read("Setup", "Key", fallback, size, File()), value);
    EXPECT_EQ(ProfileStrings::Read("Setup", "Key", "fallback", 64, folder.Path()), "fallback");
    EXPECT_FALSE(folder.Has("VelWriter.ini"));
    const std::string whole = std::string(70, 'x') + "y";
    Have("[Setup]\r\nKey=" + whole);
    for (const std::size_t size : {72, 71, 63, 1})
        EXPECT_EQ(ReadKey("Key", size), whole.substr(0, size - 1));
    EXPECT_EQ(ReadKey("Key", 0), "");
}

TEST_F(ProfileStringsTest, WritesWhatChanges) {
    using Case = std::pair<std::string, std::string>;
    for (const auto& [before, after] : {
             Case{"", "[Setup]\r\nKey=new\r\n"},
             Case{"[Setup]", "[Setup]\r\nKey=new\r\n"},
             Case{"[setup]\nKEY = old\n", "[setup]\r\nKEY =new\r\n"},
             Case{"[Setup]\r\nKey=old\r\nKey=other\r\n", "[Setup]\r\nKey=new\r\nKey=other\r\n"},
             Case{"[Setup]\r\nA=1\r\n\r\n[Z]\r\nKey=1\r\n",
                  "[Setup]\r\nA=1\r\nKey=new\r\n\r\n[Z]\r\nKey=1\r\n"},
             Case{"[Setup]\r\n\r\n\r\n[Z]\r\n", "[Setup]\r\nKey=new\r\n\r\n\r\n[Z]\r\n"},
             Case{"[Z]\r\nKey=1\r\n\r\n", "[Z]\r\nKey=1\r\n\r\n[Setup]\r\nKey=new\r\n"},
             Case{"; mine\r\nstray\r\n[Setup]\r\n; note\r\nwhat is this\r\n;Key=no\r\n",
                  "; mine\r\nstray\r\n[Setup]\r\n; note\r\nwhat is this\r\n;Key=no\r\nKey=new\r\n"},
             Case{"[Setup]\r\nKey=\"new\"\r\n", "[Setup]\r\nKey=new\r\n"},
             Case{"[Setup]\nKey =  new \nB='q'", "[Setup]\nKey =  new \nB='q'"},
             Case{"[Setup]\r\nA=\0\x80\r\r\nKey=1"s, "[Setup]\r\nA=\0\x80\r\r\nKey=new\r\n"s},
         }) {
        Have(before);
        EXPECT_TRUE(WriteKey("Key", "new"));
        EXPECT_EQ(Now(), after) << before;
        EXPECT_EQ(ReadKey("Key"), "new") << before;
    }
}

TEST_F(ProfileStringsTest, CreatesTheFileAndKeepsAnEntryToOneLine) {
    EXPECT_TRUE(WriteKey("A", "one\r\n[Evil]\nB=2"));
    EXPECT_EQ(Now(), "[Setup]\r\nA=one  [Evil] B=2\r\n");
    EXPECT_TRUE(WriteKey("A", "cut\0off"s));
    EXPECT_EQ(Now(), "[Setup]\r\nA=cut\r\n");
    EXPECT_TRUE(WriteKey("A", "'q'"));
    EXPECT_EQ(Now(), "[Setup]\r\nA='q'\r\n");
    EXPECT_EQ(folder.EntryCount(), 1);
    EXPECT_FALSE(ProfileStrings::Write("Setup", "Key", "1", folder / "missing/VelWriter.ini"));
    EXPECT_FALSE(ProfileStrings::Write("Setup", "Key", "1", folder.Path()));
}

TEST_F(ProfileStringsTest, ReadsSections) {
    Have("[A]\r\nx=1\r\n[Setup]\r\n a = 1 \r\n; no=1\r\nstray\r\n\r\nb='2'\r\n[B]\r\ny=1\r\n");
    const std::string whole = "a=1\0b='2'\0"s;
    EXPECT_EQ(ProfileStrings::ReadSection("setup", 64, File()), whole);
    for (const std::size_t size : {whole.size() + 2, whole.size() + 1, std::size_t{4}, std::size_t{2}})
        EXPECT_EQ(ProfileStrings::ReadSection("Setup", size, File()), whole.substr(0, size - 2));
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", 1, File()), "");
    EXPECT_EQ(ProfileStrings::ReadSection("Missing", 64, File()), "");
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", 64, folder / "none.ini"), "");
}

TEST_F(ProfileStringsTest, WritesSections) {
    using Case = std::tuple<std::string, std::string, std::string>;
    for (const auto& [before, data, after] : {
             Case{"", "a=1\0b=2\0"s, "[Setup]\r\na=1\r\nb=2\r\n"},
             Case{"[A]\r\nx=1\r\n\r\n[setup]\r\nold=1\r\n; gone\r\n\r\n[B]\r\ny=1\r\n", "a=1\0b=2\0\0junk\0"s,
                  "[A]\r\nx=1\r\n\r\n[setup]\r\na=1\r\nb=2\r\n\r\n[B]\r\ny=1\r\n"},
             Case{"[Setup]\r\nold=1\r\n", "", "[Setup]\r\n"},
             Case{"[Setup]\r\n", "a=1", "[Setup]\r\na=1\r\n"},
             Case{"[Setup]\na=1\n", "a=1\0"s, "[Setup]\na=1\n"},
         }) {
        Have(before);
        EXPECT_TRUE(ProfileStrings::WriteSection("Setup", data, File()));
        EXPECT_EQ(Now(), after);
    }
}

TEST_F(ProfileStringsTest, SurvivesAnyBytes) {
    std::mt19937 random(7);
    const std::string alphabet = "[]=;\"' \t\r\nSetupKey\0\xFF"s;
    for (int round = 0; round < 30; ++round) {
        std::string bytes = round % 2 == 0 ? "[Setup]\n" : "";
        for (int i = 0; i < 150; ++i)
            bytes += alphabet[random() % alphabet.size()];
        Have(bytes);
        ASSERT_EQ(ReadKey("Key").find('\n'), std::string::npos) << bytes;
        ASSERT_LE(ProfileStrings::ReadSection("Setup", 16, File()).size(), 14u) << bytes;
        ASSERT_TRUE(WriteKey("Key", "new"));
        ASSERT_EQ(ReadKey("Key"), "new") << bytes;
        const std::string once = Now();
        ASSERT_TRUE(WriteKey("Key", "newer"));
        ASSERT_TRUE(WriteKey("Key", "new"));
        ASSERT_EQ(Now(), once) << "a second write changed more than the value";
    }
}

} // namespace
} // namespace velmora
