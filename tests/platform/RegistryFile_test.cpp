#include "platform/RegistryFile.h"

#include <gmock/gmock.h>

#include <string>
#include <tuple>
#include <vector>

namespace velmora {
namespace {

using namespace std::string_literals;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using Created = Registry::Created;

const std::string Key = "HKEY_LOCAL_MACHINE\\Software\\Velmora";
const std::string Head = "REGEDIT4\r\n\r\n[" + Key + "]\r\n";

RegistryValue Text(const std::string& text) {
    return {RegistryType::Sz, text + '\0'};
}

RegistryValue Found(const RegistryFile& file, const std::string& key, const std::string& name) {
    const RegistryValue* const value = file.Find(key, name);
    return value == nullptr ? Text("nothing") : *value;
}

TEST(RegistryFile, ReadsEveryForm) {
    using Case = std::tuple<std::string, std::string, RegistryValue>;
    for (const auto& [line, name, expected] :
         {Case{R"("a\"b\\c" = "say \"hi\"" )", "A\"b\\c", Text("say \"hi\"")},
          Case{R"("a=b"="c=d")", "a=b", Text("c=d")}, Case{R"(@="default")", "", Text("default")},
          Case{R"("n"=DWORD:fffffffe)", "n", {RegistryType::Dword, "\xFE\xFF\xFF\xFF"}},
          Case{"\"b\"=hex:01, 02,\\\r\n  03,\\\n\tff", "b", {RegistryType::Binary, "\1\2\3\xFF"}},
          Case{"\"twice\"=\"1\"\r\n\"TWICE\"=\"2\"", "twice", Text("2")},
          Case{"\"x\"=\"1\"\r\n[Other]\r\n[" + Key + "]\r\n\"y\"=\"2\"", "y", Text("2")}}) {
        const RegistryFile file(Head + line);
        EXPECT_EQ(Found(file, "hkey_local_machine\\SOFTWARE\\velmora", name), expected) << line;
        EXPECT_TRUE(file.BrokenLines().empty()) << line;
    }
}

TEST(RegistryFile, KeepsAndReportsBrokenLines) {
    std::vector<std::string> brokenLines{"\"x", "\"x\"", "x=\"1\"", "REGEDIT4", "\"x\"=\"\0"s};
    for (const std::string value :
         {"\"C:\\Games\\\"", "\"C:\\Games\"", "\"a\" b", "dword:", "dword:123456789", "dword:0x1", "dword:-1",
          "hex:1g", "hex:001", "hex:01,,02", "hex:01,", "hex:01,\\", "hex(5):01", "hex(:01", "hex(2:01", "-"})
        brokenLines.push_back("\"x\"=" + value);
    for (const std::string& broken : brokenLines) {
        SCOPED_TRACE(broken);
        RegistryFile file(Head + broken + "\r\n\"y\"=\"1\"\r\n");
        ASSERT_EQ(file.BrokenLines().size(), 1u);
        EXPECT_EQ(file.BrokenLines()[0].Number, 4u);
        EXPECT_EQ(file.BrokenLines()[0].Text, broken);
        EXPECT_EQ(file.Find(Key, "x"), nullptr);
        EXPECT_TRUE(file.SetValue(Key, "y", Text("2")));
        EXPECT_EQ(file.Text(), Head + broken + "\r\n\"y\"=\"2\"\r\n");
        EXPECT_TRUE(file.DeleteKey(Key));
        EXPECT_THAT(file.Text(), HasSubstr(broken)) << "lost with its key";
    }
}

TEST(RegistryFile, CountsLinesAfterABrokenKeyAsBroken) {
    for (const std::string broken :
         {"[HKEY_LOCAL_MACHINE\\Bad", "[]", "[-HKEY_LOCAL_MACHINE\\Software]", "[a] b"}) {
        SCOPED_TRACE(broken);
        const std::string lines = broken + "\r\n; note\r\n\"x\"=\"2\"";
        RegistryFile file(Head + "\"x\"=\"1\"\r\n" + lines + "\r\n[K\\L]\r\n\"x\"=\"3\"");
        ASSERT_EQ(file.BrokenLines().size(), 2u);
        EXPECT_EQ(file.BrokenLines()[1].Number, 7u);
        EXPECT_EQ(Found(file, Key, "x"), Text("1"));
        EXPECT_EQ(Found(file, "K\\L", "x"), Text("3"));
        EXPECT_TRUE(file.DeleteKey(Key));
        EXPECT_THAT(file.Text(), HasSubstr(lines));
    }
    EXPECT_EQ(RegistryFile("Windows Registry Editor Version 5.00\r\n; x\r\n\r\n").BrokenLines().size(), 1u);
}

TEST(RegistryFile, WritesEveryForm) {
    using Case = std::tuple<std::string, RegistryType, std::string>;
    for (const auto& [data, type, bytes] :
         {Case{R"("C:\\Games\\\"x\"")", RegistryType::Sz, "C:\\Games\\\"x\"\0"s},
          Case{"\"\t\x81\xFF\"", RegistryType::Sz, "\t\x81\xFF\0"s}, Case{"\"\"", RegistryType::Sz, "\0"s},
          Case{"hex(1):0d,0a,00", RegistryType::Sz, "\r\n\0"s},
          Case{"hex(1):65,6e,64", RegistryType::Sz, "end"}, Case{"hex(1):", RegistryType::Sz, ""},
          Case{"hex(1):61,00,62,00", RegistryType::Sz, "a\0b\0"s},
          Case{"hex(2):25,54,00", RegistryType::ExpandSz, "%T\0"s},
          Case{"dword:8000000a", RegistryType::Dword, "\x0A\0\0\x80"s},
          Case{"hex(4):01", RegistryType::Dword, "\1"}, Case{"hex:00,ff", RegistryType::Binary, "\0\xFF"s},
          Case{"hex(7):61,00,00", RegistryType::MultiSz, "a\0\0"s},
          Case{"hex(0):", RegistryType::None, ""}}) {
        RegistryFile file(Head);
        EXPECT_TRUE(file.SetValue(Key, "v", {type, bytes}));
        EXPECT_EQ(file.Text(), Head + "\"v\"=" + data + "\r\n");
        EXPECT_EQ(Found(RegistryFile(file.Text()), Key, "v"), (RegistryValue{type, bytes})) << data;
    }
}

TEST(RegistryFile, StartsFromNothingAndRefusesWhatNoLineCanHold) {
    RegistryFile file;
    EXPECT_TRUE(file.KeyExists("HKEY_LOCAL_MACHINE"));
    for (const std::string& key : {Key, ""s}) {
        EXPECT_FALSE(file.KeyExists(key));
        EXPECT_FALSE(file.SetValue(key, "x", Text("1")));
    }
    for (const std::string& key : {""s, "K\\a\nb"s, "K\\a\0b"s, "-K\\a"s})
        EXPECT_EQ(file.CreateKey(key), Created::Failed);
    EXPECT_EQ(file.Text(), "REGEDIT4\r\n");
    EXPECT_EQ(file.CreateKey(Key), Created::New);
    for (const char* key : {"hkey_local_machine\\software\\VELMORA", "HKEY_LOCAL_MACHINE\\Software"})
        EXPECT_EQ(file.CreateKey(key), Created::Existing);
    for (const std::string& name : {"a\rb"s, "a\nb"s, "a\0b"s})
        EXPECT_FALSE(file.SetValue(Key, name, Text("1")));
    EXPECT_TRUE(file.SetValue(Key, "", Text("1")));
    EXPECT_TRUE(file.SetValue("HKEY_CURRENT_USER", "x", Text("2")));
    EXPECT_EQ(file.Text(), Head + "@=\"1\"\r\n\r\n[HKEY_CURRENT_USER]\r\n\"x\"=\"2\"\r\n");
    file.CreateKey("K\\a ]b");
    EXPECT_TRUE(file.SetValue("K\\a ]b", "]=\"\\", Text("1")));
    EXPECT_EQ(Found(RegistryFile(file.Text()), "K\\a ]b", "]=\"\\"), Text("1"));
}

TEST(RegistryFile, DeletesKeysWithoutSubkeysAndKeepsEverythingElse) {
    RegistryFile file("; mine\nREGEDIT4\n\n[K\\A\\B]\n\"x\"=\"1\"\n[k\\a\\b]\n\"y\"=\"1\"\n"
                      "[K\\AB]\n; note\n\"b\"=hex:01,\\\n  02\n\n[L]\n");
    for (const char* key : {"K", "K\\A", "K\\A\\Missing"})
        EXPECT_FALSE(file.DeleteKey(key));
    for (const char* key : {"K\\A\\b", "K\\A"}) {
        EXPECT_TRUE(file.KeyExists(key)) << "a key went with its last subkey";
        EXPECT_TRUE(file.DeleteKey(key));
        EXPECT_FALSE(file.KeyExists(key));
    }
    for (const char* name : {"new", "b"})
        EXPECT_TRUE(file.SetValue("K\\AB", name, {RegistryType::Binary, "\1\2"}));
    EXPECT_THAT(file.Text(), StartsWith("; mine\r\nREGEDIT4\r\n\r\n[K\\AB]\r\n; note\r\n\"b\"=hex:01,\\\r\n"
                                        "  02\r\n\"new\"=hex:01,02\r\n\r\n[L]\r\n"));
}

} // namespace
} // namespace velmora
