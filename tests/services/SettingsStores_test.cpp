#include "services/clsINI.h"
#include "services/clsRegistry.h"

#include "FailureOf.h"
#include "ScratchRegistry.h"

#include <gtest/gtest.h>

#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;
using Bytes = std::vector<std::uint8_t>;

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
         {Case{"", 4, "\0\0\0\0"s}, Case{"\"1\"", 4, "1\0\0\0"s}, Case{"long text", 6, "long"},
          Case{"10", 4, "10"}, Case{"10", 3, "1\0\0"s}, Case{"10", 1, "\0"s}, Case{"10", 0, ""}}) {
        folder.Write("VelWriter.ini", "[Setup]\r\nKey=" + stored + "\r\n");
        EXPECT_EQ(ini.GetINIValue("Setup", "Key", size), read) << stored << size;
    }
}

TEST_F(clsINITest, ReadsAndWritesSections) {
    EXPECT_NE(ini.PutINIValue("Setup", "Path", "C:\\"), 0);
    EXPECT_EQ(folder.Read("VelWriter.ini"), "[Setup]\r\nPath=C:\\\r\n");
    EXPECT_NE(ini.PutINISection("Setup", "a=1\0b=2\0"s), 0);
    EXPECT_EQ(folder.Read("VelWriter.ini"), "[Setup]\r\na=1\r\nb=2\r\n");
    using Case = std::pair<std::int32_t, std::string>;
    for (const auto& [size, read] : {Case{64, "a=1\0b=2"s}, Case{9, "a=1\0b="s}, Case{4, "a\0\0\0"s}})
        EXPECT_EQ(ini.GetINISection("Setup", size), read) << size;
    ini.INIFile = folder / "missing/VelWriter.ini";
    EXPECT_EQ(ini.PutINIValue("Setup", "Path", "C:\\"), 0);
    EXPECT_EQ(ini.PutINISection("Setup", "a=1\0"s), 0);
    EXPECT_NE(ini.LastFailure.find("missing"), std::string::npos) << ini.LastFailure;
}

TEST_F(clsINITest, NamesAllItsReadsInTheSourceOfAFailure) {
    EXPECT_EQ(FailureOf([&] { (void)ini.GetINISection("Setup", -64); }).Source, "clsINI*GetINISection");
    (void)ini.PutINIValue("Setup", "Key", "1");
    const Failure failure = FailureOf([&] { (void)ini.GetINIValue("Setup", "Key", -1); });
    EXPECT_EQ(failure.Number, FailureInvalidArgument);
    EXPECT_EQ(failure.Description(), "Invalid procedure call or argument");
    EXPECT_NE(failure.Line, 0);
    EXPECT_EQ(failure.Source, "clsINI*GetINISection*GetINIValue");
}

std::string Told(const Failure& failure) {
    return std::to_string(failure.Number) + ' ' + failure.Description();
}

class clsRegistryTest : public ::testing::Test {
  protected:
    void SetUp() override { registry.SetKeyToUse(ScratchRegistry::Root); }
    bool Set(const RegistryVariant& value) { return registry.SetRegistryValue(scratch.Key, "Value", value); }
    RegistryVariant Get(const RegistryVariant& fallback) {
        return registry.GetRegistryValue(scratch.Key, "Value", fallback);
    }

    ScratchRegistry scratch;
    clsRegistry registry;
};

TEST_F(clsRegistryTest, CreatesChecksAndDeletesKeys) {
    EXPECT_FALSE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CreateRegistryKey(scratch.Key));
    EXPECT_FALSE(registry.CreateRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CreateRegistryKey(scratch.Key + "\\Inner"));
    EXPECT_FALSE(registry.DeleteRegistryKey(scratch.Key)) << "it has a subkey";
    EXPECT_TRUE(registry.DeleteRegistryKey(scratch.Key + "\\INNER"));
    EXPECT_TRUE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_FALSE(clsRegistry().CheckRegistryKey(scratch.Key)) << "the local machine has no such key";
    EXPECT_TRUE(registry.DeleteRegistryKey(scratch.Key));
    EXPECT_FALSE(registry.DeleteRegistryKey(scratch.Key));
    registry.SetKeyToUse(0x12345678);
    EXPECT_EQ(Told(FailureOf([&] { registry.CreateRegistryKey(scratch.Key); })),
              "1001 Unable to create the registry key");
}

TEST_F(clsRegistryTest, KeepsEveryTypeItCanStoreAndRefusesOthers) {
    EXPECT_FALSE(Set(2.5)) << "without a key there is nothing to refuse";
    EXPECT_EQ(Get(5), RegistryVariant(5));
    registry.CreateRegistryKey(scratch.Key);
    EXPECT_EQ(Get(std::monostate()), RegistryVariant(std::monostate()));
    using Case = std::tuple<RegistryVariant, RegistryType, std::string, RegistryVariant>;
    for (const auto& [value, type, bytes, read] :
         {Case{""s, RegistryType::Sz, "[not set]\0"s, ""s},
          Case{"C:\\"s, RegistryType::Sz, "C:\\\0"s, "C:\\"s},
          Case{-2, RegistryType::Dword, "\xFE\xFF\xFF\xFF", -2},
          Case{std::int16_t{-2}, RegistryType::Dword, "\xFE\xFF\xFF\xFF", -2},
          Case{Bytes{0, 1, 255}, RegistryType::Binary, "\0\1\xFF"s, Bytes{0, 1, 255}}}) {
        EXPECT_TRUE(Set(value));
        EXPECT_EQ(scratch.Host->Read(ScratchRegistry::Root, scratch.Key, "Value"),
                  (RegistryValue{type, bytes}));
        EXPECT_EQ(Get(5), read);
    }
    for (const RegistryVariant& value : std::vector<RegistryVariant>{2.5, true, std::monostate()})
        EXPECT_EQ(Told(FailureOf([&] { Set(value); })), "1001 Unsupported value type");
    EXPECT_EQ(Get(5), RegistryVariant(Bytes{0, 1, 255})) << "the old value stays";
}

TEST_F(clsRegistryTest, ReadsTextsAsTheyStandAndFallsBackToTheDefault) {
    registry.CreateRegistryKey(scratch.Key);
    using Case = std::tuple<RegistryType, std::string, RegistryVariant>;
    for (const auto& [type, bytes, read] :
         {Case{RegistryType::Sz, "no end", "no end"s}, Case{RegistryType::Sz, "", ""s},
          Case{RegistryType::Sz, "two\r\nlines \"x\"\0"s, "two\r\nlines \"x\""s},
          Case{RegistryType::ExpandSz, "%TEMP%\\x\0"s, "%TEMP%\\x"s},
          Case{RegistryType::ExpandSz, "[not set]\0"s, ""s}, Case{RegistryType::MultiSz, "a\0b\0\0"s, 5},
          Case{RegistryType::Dword, "\1", 5}, Case{RegistryType::Dword, "\7\0\0\0"s, 7}})
        for (const char* name : {"Value", ""}) {
            EXPECT_TRUE(scratch.Host->Write(ScratchRegistry::Root, scratch.Key, name, {type, bytes}));
            EXPECT_EQ(registry.GetRegistryValue(scratch.Key, name, 5), read) << bytes;
            const auto* const text = std::get_if<std::string>(&read);
            EXPECT_EQ(registry.GetRegistryText(scratch.Key, name), text != nullptr ? *text : "") << bytes;
        }
}

} // namespace
} // namespace velmora
