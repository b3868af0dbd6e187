#include "platform/ProfileStrings.h"

#include "TempFolder.h"
#include "platform/FaultHook.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>
#include <string>

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
    const struct {
        std::string File;
        std::string Value;
    } cases[] = {
        {"[Setup]\r\nKey=value\r\n", "value"},
        {"[Setup]\nKey=value", "value"},
        {"[SETUP]\r\nkEY=value", "value"},
        {" [ Setup ] ; said so\r\n \tKey \t=\t value \t\r\n", "value"},
        {"[Setup]\r\nKey=\"value\"", "value"},
        {"[Setup]\r\nKey= 'value' ", "value"},
        {"[Setup]\r\nKey=\" value \"", " value "},
        {"[Setup]\r\nKey=\"\"value\"\"", "\"value\""},
        {"[Setup]\r\nKey=\"value'", "\"value'"},
        {"[Setup]\r\nKey=\"", "\""},
        {"[Setup]\r\nKey=\"\"", ""},
        {"[Setup]\r\nKey=", ""},
        {"[Setup]\r\nKey=a=b;c", "a=b;c"},
        {"[Setup]\r\nKey=first\r\nKey=second", "first"},
        {"[Setup]\r\nOther=1\r\n[Setup]\r\nKey=second", "fallback"},
        {"[Setup]\r\n[Other]\r\nKey=value", "fallback"},
        {"[Setup]\r\n;Key=value", "fallback"},
        {"[Setup]\r\nKey", "fallback"},
        {"[Setup\r\nKey=value", "fallback"},
        {"Key=value\r\n[Setup]", "fallback"},
        {"[Setup]\r\nK\0ey=1\r\nKey=a\0b"s, "a\0b"s},
        {"[Setup]\r\nKey=\x81\xFF\xE9", "\x81\xFF\xE9"},
        {"", "fallback"},
    };
    for (const auto& read : cases) {
        Have(read.File);
        EXPECT_EQ(ReadKey("Key"), read.Value) << read.File;
        EXPECT_EQ(Now(), read.File) << "reading changed the file";
    }
}

TEST_F(ProfileStringsTest, FallsBackWithoutAFile) {
    EXPECT_EQ(ReadKey("Key"), "fallback");
    EXPECT_EQ(ProfileStrings::Read("Setup", "Key", " two words \t ", 64, File()), " two words");
    EXPECT_EQ(ProfileStrings::Read("Setup", "Key", "  ", 64, File()), "");
    EXPECT_EQ(ProfileStrings::Read("Setup", "Key", "fallback", 5, File()), "fall");
    EXPECT_EQ(ProfileStrings::Read("Setup", "Key", "fallback", 64, folder.Path()), "fallback");
    EXPECT_FALSE(folder.Has("VelWriter.ini"));
}

TEST_F(ProfileStringsTest, CutsValuesToTheBuffer) {
    Have("[Setup]\r\nKey=" + std::string(70, 'x') + "y");
    EXPECT_EQ(ReadKey("Key", 63), std::string(62, 'x'));
    EXPECT_EQ(ReadKey("Key", 71), std::string(70, 'x'));
    EXPECT_EQ(ReadKey("Key", 72), std::string(70, 'x') + "y");
    EXPECT_EQ(ReadKey("Key", 1), "");
    EXPECT_EQ(ReadKey("Key", 0), "");
}

TEST_F(ProfileStringsTest, Writes) {
    const struct {
        std::string Before;
        std::string After;
    } cases[] = {
        {"", "[Setup]\r\nKey=new\r\n"},
        {"[Setup]", "[Setup]\r\nKey=new\r\n"},
        {"[setup]\nKEY = old\n", "[setup]\r\nKEY =new\r\n"},
        {"[Setup]\r\nKey=old\r\nKey=other\r\n", "[Setup]\r\nKey=new\r\nKey=other\r\n"},
        {"[Setup]\r\nA=1\r\n\r\n[Z]\r\nKey=1\r\n", "[Setup]\r\nA=1\r\nKey=new\r\n\r\n[Z]\r\nKey=1\r\n"},
        {"[Setup]\r\n\r\n\r\n[Z]\r\n", "[Setup]\r\nKey=new\r\n\r\n\r\n[Z]\r\n"},
        {"[Z]\r\nKey=1\r\n\r\n", "[Z]\r\nKey=1\r\n\r\n[Setup]\r\nKey=new\r\n"},
        {"; mine\r\nstray\r\n[Setup]\r\n; note\r\nwhat is this\r\n;Key=no\r\n",
         "; mine\r\nstray\r\n[Setup]\r\n; note\r\nwhat is this\r\n;Key=no\r\nKey=new\r\n"},
        {"[Setup]\r\nKey=\"new\"\r\n", "[Setup]\r\nKey=new\r\n"},
        {"[Setup]\r\nA=\0\x80\r\r\nKey=1"s, "[Setup]\r\nA=\0\x80\r\r\nKey=new\r\n"s},
    };
    for (const auto& written : cases) {
        Have(written.Before);
        EXPECT_TRUE(WriteKey("Key", "new"));
        EXPECT_EQ(Now(), written.After) << written.Before;
        EXPECT_EQ(ReadKey("Key"), "new") << written.Before;
    }
}

TEST_F(ProfileStringsTest, CreatesTheFile) {
    EXPECT_TRUE(WriteKey("Path", "C:\\Games\\"));
    EXPECT_EQ(Now(), "[Setup]\r\nPath=C:\\Games\\\r\n");
    EXPECT_EQ(folder.EntryCount(), 1);
}

TEST_F(ProfileStringsTest, LeavesTheFileAloneWhenNothingChanges) {
    const std::string bytes = "[Setup]\nKey =  same \nB='q'";
    Have(bytes);
    EXPECT_TRUE(WriteKey("key", "same"));
    EXPECT_TRUE(WriteKey("B", "'q'"));
    EXPECT_EQ(Now(), bytes);
}

TEST_F(ProfileStringsTest, KeepsAnEntryToOneLine) {
    EXPECT_TRUE(WriteKey("A", "one\r\n[Evil]\nB=2"));
    EXPECT_EQ(Now(), "[Setup]\r\nA=one  [Evil] B=2\r\n");
    EXPECT_TRUE(WriteKey("A", "cut\0off"s));
    EXPECT_EQ(Now(), "[Setup]\r\nA=cut\r\n");
}

TEST_F(ProfileStringsTest, TellsWhenItCannotWrite) {
    EXPECT_FALSE(ProfileStrings::Write("Setup", "Key", "1", folder / "missing/VelWriter.ini"));
    EXPECT_FALSE(ProfileStrings::Write("Setup", "Key", "1", folder.Path()));
    Have("[Setup]\r\nKey=old\r\n");
    for (const char* operation : {"open", "write", "fsync", "rename"}) {
        static std::string failing;
        failing = operation;
        gFaultHook = [](const char* called) { return failing == called ? ENOSPC : 0; };
        EXPECT_FALSE(WriteKey("Key", "new")) << operation;
        EXPECT_FALSE(ProfileStrings::WriteSection("Setup", "Key=new\0"s, File())) << operation;
        gFaultHook = nullptr;
        EXPECT_EQ(Now(), "[Setup]\r\nKey=old\r\n") << operation;
        EXPECT_EQ(folder.EntryCount(), 1) << operation;
    }
}

TEST_F(ProfileStringsTest, ReadsSections) {
    Have("[A]\r\nx=1\r\n[Setup]\r\n a = 1 \r\n; no=1\r\nstray\r\n\r\nb='2'\r\n[B]\r\ny=1\r\n");
    const std::string whole = "a=1\0b='2'\0"s;
    EXPECT_EQ(ProfileStrings::ReadSection("setup", 64, File()), whole);
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", whole.size() + 2, File()), whole);
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", whole.size() + 1, File()), "a=1\0b='2'"s);
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", 4, File()), "a=");
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", 1, File()), "");
    EXPECT_EQ(ProfileStrings::ReadSection("Missing", 64, File()), "");
    EXPECT_EQ(ProfileStrings::ReadSection("Setup", 64, folder / "none.ini"), "");
}

TEST_F(ProfileStringsTest, WritesSections) {
    const struct {
        std::string Before;
        std::string Data;
        std::string After;
    } cases[] = {
        {"", "a=1\0b=2\0"s, "[Setup]\r\na=1\r\nb=2\r\n"},
        {"[A]\r\nx=1\r\n\r\n[setup]\r\nold=1\r\n; gone\r\n\r\n[B]\r\ny=1\r\n", "a=1\0b=2\0\0junk\0"s,
         "[A]\r\nx=1\r\n\r\n[setup]\r\na=1\r\nb=2\r\n\r\n[B]\r\ny=1\r\n"},
        {"[Setup]\r\nold=1\r\n", "", "[Setup]\r\n"},
        {"[Setup]\r\n", "a=1", "[Setup]\r\na=1\r\n"},
        {"[Setup]\na=1\n", "a=1\0"s, "[Setup]\na=1\n"},
    };
    for (const auto& written : cases) {
        Have(written.Before);
        EXPECT_TRUE(ProfileStrings::WriteSection("Setup", written.Data, File()));
        EXPECT_EQ(Now(), written.After);
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
