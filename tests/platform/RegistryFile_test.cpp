#include "platform/RegistryFile.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;
using Created = Registry::Created;

const std::string Key = "HKEY_LOCAL_MACHINE\\Software\\Velmora";

RegistryFile WithLines(const std::string& lines) {
    return RegistryFile("REGEDIT4\r\n\r\n[" + Key + "]\r\n" + lines);
}

RegistryValue Text(const std::string& text) {
    return {RegistryType::Sz, text + '\0'};
}

TEST(RegistryFile, ReadsEveryForm) {
    using Case = std::tuple<std::string, std::string, RegistryValue>;
    const Case cases[] = {
        {R"("path" = "spaced" )", "PATH", Text("spaced")},
        {R"("a\"b\\c"="say \"hi\"")", "a\"b\\c", Text("say \"hi\"")},
        {R"("a=b"="c=d")", "a=b", Text("c=d")},
        {R"(@="default")", "", Text("default")},
        {R"("n"=DWORD:fffffffe)", "n", {RegistryType::Dword, "\xFE\xFF\xFF\xFF"}},
        {R"("b"=hex:01,02, ff)", "b", {RegistryType::Binary, "\x01\x02\xFF"}},
        {R"("m"=hex(7):61,00,62,00,00)", "m", {RegistryType::MultiSz, "a\0b\0\0"s}},
        {"\"b\"=hex:01,\\\r\n  02,\\\n\t03", "b", {RegistryType::Binary, "\1\2\3"}},
        {"\"twice\"=\"1\"\r\n\"TWICE\"=\"2\"", "twice", Text("2")},
        {"\"x\"=\"1\"\r\n[Other]\r\n[" + Key + "]\r\n\"y\"=\"2\"", "y", Text("2")},
    };
    for (const auto& [line, name, expected] : cases) {
        const RegistryFile file = WithLines(line);
        const RegistryValue* const value = file.Find("hkey_local_machine\\SOFTWARE\\velmora", name);
        ASSERT_NE(value, nullptr) << line;
        EXPECT_EQ(*value, expected) << line;
        EXPECT_TRUE(file.BrokenLines().empty()) << line;
    }
}

TEST(RegistryFile, KeepsAndReportsBrokenLines) {
    std::vector<std::string> brokenLines{"\"x", "\"x\"", "x=\"1\"", "REGEDIT4", "\"x\"=\"\0"s};
    for (const char* value : {"\"open", "\"C:\\Games\\\"", "\"C:\\Games\"", "\"a\" b",
                              "dword:", "dword:123456789", "dword:0x1", "dword:-1", "hex:1g", "hex:001",
                              "hex:01,,02", "hex:01,", "hex:01,\\", "hex(5):01", "hex(:01", "hex(2:01", "-"})
        brokenLines.push_back("\"x\"="s + value);
    for (const std::string& broken : brokenLines) {
        RegistryFile file = WithLines(broken + "\r\n\"y\"=\"1\"\r\n");
        ASSERT_EQ(file.BrokenLines().size(), 1u) << broken;
        EXPECT_EQ(file.BrokenLines()[0].Number, 4u) << broken;
        EXPECT_EQ(file.BrokenLines()[0].Text, broken);
        EXPECT_EQ(file.Find(Key, "x"), nullptr) << broken;
        EXPECT_TRUE(file.SetValue(Key, "y", Text("2")));
        EXPECT_TRUE(file.SetValue(Key, "x", Text("1")));
        EXPECT_EQ(file.Text(),
                  "REGEDIT4\r\n\r\n[" + Key + "]\r\n" + broken + "\r\n\"y\"=\"2\"\r\n\"x\"=\"1\"\r\n");
        EXPECT_TRUE(file.DeleteKey(Key));
        EXPECT_NE(file.Text().find(broken), std::string::npos) << "lost with its key: " << broken;
    }
}

TEST(RegistryFile, CountsLinesAfterABrokenKeyAsBroken) {
    for (const std::string broken :
         {"[HKEY_LOCAL_MACHINE\\Bad", "[]", "[-HKEY_LOCAL_MACHINE\\Software]", "[a] b"}) {
        RegistryFile file =
            WithLines("\"x\"=\"1\"\r\n" + broken + "\r\n; note\r\n\"x\"=\"2\"\r\n[K\\L]\r\n\"x\"=\"3\"");
        ASSERT_EQ(file.BrokenLines().size(), 2u) << broken;
        EXPECT_EQ(file.BrokenLines()[0].Number, 5u);
        EXPECT_EQ(file.BrokenLines()[1].Number, 7u);
        EXPECT_EQ(*file.Find(Key, "x"), Text("1"));
        EXPECT_EQ(*file.Find("K\\L", "x"), Text("3"));
        const std::string before = file.Text();
        EXPECT_TRUE(file.DeleteKey(Key));
        EXPECT_NE(file.Text().find(broken + "\r\n; note\r\n\"x\"=\"2\""), std::string::npos);
    }
    EXPECT_EQ(RegistryFile("Windows Registry Editor Version 5.00\r\n; x\r\n\r\n").BrokenLines().size(), 1u);
}

TEST(RegistryFile, WritesEveryForm) {
    using Case = std::tuple<RegistryType, std::string, std::string>;
    const Case cases[] = {
        {RegistryType::Sz, "C:\\Games\\\"x\"\0"s, R"("v"="C:\\Games\\\"x\"")"},
        {RegistryType::Sz, "\0"s, R"("v"="")"},
        {RegistryType::Sz, "\t\x81\xFF\0"s, "\"v\"=\"\t\x81\xFF\""},
        {RegistryType::Sz, "a\r\nb\0"s, R"("v"=hex(1):61,0d,0a,62,00)"},
        {RegistryType::Sz, "no end", R"("v"=hex(1):6e,6f,20,65,6e,64)"},
        {RegistryType::Sz, "", R"("v"=hex(1):)"},
        {RegistryType::Sz, "a\0b\0"s, R"("v"=hex(1):61,00,62,00)"},
        {RegistryType::ExpandSz, "%T%\0"s, R"("v"=hex(2):25,54,25,00)"},
        {RegistryType::Dword, "\x0A\0\0\x80"s, R"("v"=dword:8000000a)"},
        {RegistryType::Dword, "\1", R"("v"=hex(4):01)"},
        {RegistryType::Binary, "\0\xFF"s, R"("v"=hex:00,ff)"},
        {RegistryType::Binary, "", R"("v"=hex:)"},
        {RegistryType::MultiSz, "a\0\0"s, R"("v"=hex(7):61,00,00)"},
        {RegistryType::None, "", R"("v"=hex(0):)"},
    };
    for (const auto& [type, bytes, line] : cases) {
        RegistryFile file = WithLines("");
        ASSERT_TRUE(file.SetValue(Key, "v", {type, bytes}));
        EXPECT_EQ(file.Text(), "REGEDIT4\r\n\r\n[" + Key + "]\r\n" + line + "\r\n");
        const RegistryFile again(file.Text());
        ASSERT_NE(again.Find(Key, "v"), nullptr) << line;
        EXPECT_EQ(*again.Find(Key, "v"), (RegistryValue{type, bytes})) << line;
    }
}

TEST(RegistryFile, StartsFromNothing) {
    RegistryFile file;
    EXPECT_EQ(file.Text(), "REGEDIT4\r\n");
    EXPECT_TRUE(file.KeyExists("HKEY_LOCAL_MACHINE"));
    EXPECT_FALSE(file.KeyExists(Key));
    EXPECT_FALSE(file.KeyExists(""));
    EXPECT_FALSE(file.SetValue(Key, "x", Text("1")));
    EXPECT_FALSE(file.SetValue("", "x", Text("1")));
    EXPECT_EQ(file.CreateKey(Key), Created::New);
    EXPECT_EQ(file.CreateKey("hkey_local_machine\\software\\VELMORA"), Created::Existing);
    EXPECT_EQ(file.CreateKey("HKEY_LOCAL_MACHINE\\Software"), Created::Existing);
    EXPECT_TRUE(file.SetValue(Key, "", Text("1")));
    EXPECT_TRUE(file.SetValue("HKEY_CURRENT_USER", "x", Text("2")));
    EXPECT_EQ(file.Text(),
              "REGEDIT4\r\n\r\n[" + Key + "]\r\n@=\"1\"\r\n\r\n[HKEY_CURRENT_USER]\r\n\"x\"=\"2\"\r\n");
}

TEST(RegistryFile, RefusesWhatNoLineCanHold) {
    RegistryFile file;
    for (const std::string& key : {""s, "K\\a\nb"s, "K\\a\0b"s, "-K\\a"s})
        EXPECT_EQ(file.CreateKey(key), Created::Failed);
    file.CreateKey("K\\a ]b");
    for (const std::string& name : {"a\rb"s, "a\nb"s, "a\0b"s})
        EXPECT_FALSE(file.SetValue("K\\a ]b", name, Text("1")));
    EXPECT_TRUE(file.SetValue("K\\a ]b", "]=\"\\", Text("1")));
    EXPECT_EQ(*RegistryFile(file.Text()).Find("K\\a ]b", "]=\"\\"), Text("1"));
}

TEST(RegistryFile, DeletesKeysWithoutSubkeys) {
    RegistryFile file("REGEDIT4\n[K\\A\\B]\n\"x\"=\"1\"\n[k\\a\\b]\n\"y\"=\"1\"\n[K\\AB]\n");
    EXPECT_FALSE(file.DeleteKey("K"));
    EXPECT_FALSE(file.DeleteKey("K\\A"));
    EXPECT_FALSE(file.DeleteKey("K\\A\\Missing"));
    EXPECT_TRUE(file.DeleteKey("K\\A\\b"));
    EXPECT_FALSE(file.KeyExists("K\\A\\B"));
    EXPECT_TRUE(file.KeyExists("K\\A")) << "a key went with its last subkey";
    EXPECT_TRUE(file.KeyExists("K\\AB"));
    EXPECT_TRUE(file.DeleteKey("K\\A"));
    EXPECT_FALSE(file.KeyExists("K\\A"));
}

TEST(RegistryFile, KeepsEverythingElse) {
    const std::string before =
        "; mine\nREGEDIT4\n\n[K\\A]\n; note\n\"x\"=\"1\"\n\"b\"=hex:01,\\\n  02\n\n[K\\B]\n";
    RegistryFile file(before);
    EXPECT_TRUE(file.SetValue("K\\A", "x", Text("1")));
    EXPECT_TRUE(file.SetValue("K\\A", "new", Text("2")));
    EXPECT_EQ(file.Text(),
              "; mine\r\nREGEDIT4\r\n\r\n[K\\A]\r\n; note\r\n\"x\"=\"1\"\r\n\"b\"=hex:01,\\\r\n  02\r\n"
              "\"new\"=\"2\"\r\n\r\n[K\\B]\r\n");
    EXPECT_TRUE(file.BrokenLines().empty());
}

} // namespace
} // namespace velmora
