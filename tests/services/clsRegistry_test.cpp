#include "services/clsRegistry.h"

#include "FailureOf.h"
#include "ScratchRegistry.h"

#include <gtest/gtest.h>

#include <tuple>

namespace velmora {
namespace {

using namespace std::string_literals;
using Bytes = std::vector<std::uint8_t>;

class clsRegistryTest : public ::testing::Test {
  protected:
    void SetUp() override { registry.SetKeyToUse(ScratchRegistry::Root); }
    void HaveKey() { ASSERT_TRUE(registry.CreateRegistryKey(scratch.Key)); }
    bool Set(const RegistryVariant& value) { return registry.SetRegistryValue(scratch.Key, "Value", value); }
    RegistryVariant Get(const RegistryVariant& fallback = std::string()) {
        return registry.GetRegistryValue(scratch.Key, "Value", fallback);
    }
    [[nodiscard]] RegistryValue Stored() const {
        return scratch.Host->Read(ScratchRegistry::Root, scratch.Key, "Value").value_or(RegistryValue{});
    }
    /// Stores a value of any type, as the default value of the key too.
    void Store(const RegistryValue& value) const {
        for (const char* name : {"Value", ""}) {
            EXPECT_TRUE(scratch.Host->Write(ScratchRegistry::Root, scratch.Key, name, value));
            const RegistryValue read =
                HostRegistry()->Read(ScratchRegistry::Root, scratch.Key, name).value_or(RegistryValue{});
            EXPECT_EQ(read.Type, value.Type);
            // Windows itself ends a text that was stored without an end.
            EXPECT_TRUE(read.Bytes == value.Bytes || read.Bytes == value.Bytes + '\0') << value.Bytes;
        }
    }

    ScratchRegistry scratch;
    clsRegistry registry;
};

std::string Told(const Failure& failure) {
    return std::to_string(failure.Number) + ' ' + failure.Description();
}

TEST_F(clsRegistryTest, CreatesChecksAndDeletesKeys) {
    EXPECT_FALSE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CreateRegistryKey(scratch.Key));
    EXPECT_FALSE(registry.CreateRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CreateRegistryKey(scratch.Key + "\\Inner"));
    EXPECT_TRUE(registry.CheckRegistryKey(scratch.Key + "\\inner"));
    EXPECT_FALSE(registry.DeleteRegistryKey(scratch.Key)) << "it has a subkey";
    EXPECT_TRUE(registry.DeleteRegistryKey(scratch.Key + "\\INNER"));
    EXPECT_TRUE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_FALSE(clsRegistry().CheckRegistryKey(scratch.Key)) << "the local machine has no such key";
    EXPECT_TRUE(registry.DeleteRegistryKey(scratch.Key));
    EXPECT_FALSE(registry.DeleteRegistryKey(scratch.Key));
    registry.SetKeyToUse(0x12345678);
    EXPECT_FALSE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_EQ(Told(FailureOf([&] { registry.CreateRegistryKey(scratch.Key); })),
              "1001 Unable to create the registry key");
}

TEST_F(clsRegistryTest, KeepsEveryTypeItCanStoreAndRefusesOthers) {
    EXPECT_FALSE(Set("x"s));
    EXPECT_FALSE(Set(2.5)) << "without a key there is nothing to refuse";
    EXPECT_FALSE(scratch.Host->Write(ScratchRegistry::Root, scratch.Key, "Value", {}));
    HaveKey();
    using Case = std::tuple<RegistryVariant, RegistryType, std::string, RegistryVariant>;
    for (const auto& [value, type, bytes, read] :
         {Case{"C:\\Games"s, RegistryType::Sz, "C:\\Games\0"s, "C:\\Games"s},
          Case{""s, RegistryType::Sz, "[not set]\0"s, ""s},
          Case{std::string(3000, 'x'), RegistryType::Sz, std::string(3000, 'x') + '\0',
               std::string(3000, 'x')},
          Case{-2, RegistryType::Dword, "\xFE\xFF\xFF\xFF", -2},
          Case{std::int16_t{-2}, RegistryType::Dword, "\xFE\xFF\xFF\xFF", -2},
          Case{2147483647, RegistryType::Dword, "\xFF\xFF\xFF\x7F", 2147483647},
          Case{Bytes{0, 1, 255}, RegistryType::Binary, "\0\1\xFF"s, Bytes{0, 1, 255}}}) {
        EXPECT_TRUE(Set(value));
        EXPECT_EQ(Stored(), (RegistryValue{type, bytes}));
        EXPECT_EQ(Get(), read);
    }
    for (const RegistryVariant& value :
         {RegistryVariant(2.5), RegistryVariant(true), RegistryVariant(std::monostate())})
        EXPECT_EQ(Told(FailureOf([&] { Set(value); })), "1001 Unsupported value type");
    EXPECT_EQ(Get(), RegistryVariant(Bytes{0, 1, 255})) << "the old value stays";
}

TEST_F(clsRegistryTest, ReadsTextsAsTheyStandAndFallsBackToTheDefault) {
    EXPECT_EQ(Get(5), RegistryVariant(5));
    HaveKey();
    EXPECT_EQ(Get(), RegistryVariant(""s));
    EXPECT_EQ(Get(std::monostate()), RegistryVariant(std::monostate()));
    using Case = std::tuple<RegistryType, std::string, RegistryVariant>;
    for (const auto& [type, bytes, read] :
         {Case{RegistryType::Sz, "no end", "no end"s}, Case{RegistryType::Sz, "", ""s},
          Case{RegistryType::Sz, "two\r\nlines \"x\"\0"s, "two\r\nlines \"x\""s},
          Case{RegistryType::ExpandSz, "%TEMP%\\x\0"s, "%TEMP%\\x"s},
          Case{RegistryType::ExpandSz, "[not set]\0"s, ""s}, Case{RegistryType::MultiSz, "a\0b\0\0"s, 5},
          Case{RegistryType::Dword, "\1", 5}, Case{RegistryType::Dword, "\7\0\0\0"s, 7}}) {
        Store({type, bytes});
        EXPECT_EQ(Get(5), read) << bytes;
        const auto* const text = std::get_if<std::string>(&read);
        EXPECT_EQ(registry.GetRegistryText(scratch.Key, "Value"), text != nullptr ? *text : "") << bytes;
    }
}

} // namespace
} // namespace velmora
