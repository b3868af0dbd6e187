#include "services/clsRegistry.h"

#include "FailureOf.h"
#include "ScratchRegistry.h"
#include "platform/Failure.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora {
namespace {

using namespace std::string_literals;
using Bytes = std::vector<std::uint8_t>;

class clsRegistryTest : public ::testing::Test {
  protected:
    void SetUp() override { registry.SetKeyToUse(ScratchRegistry::Root); }
    void HaveKey() { ASSERT_TRUE(registry.CreateRegistryKey(scratch.Key)); }
    bool Set(const RegistryVariant& value) { return registry.SetRegistryValue(scratch.Key, "Value", value); }
    RegistryVariant Get() { return registry.GetRegistryValue(scratch.Key, "Value"); }
    RegistryVariant Get(const RegistryVariant& fallback) {
        return registry.GetRegistryValue(scratch.Key, "Value", fallback);
    }
    [[nodiscard]] RegistryValue Stored() const {
        return scratch.Host->Read(ScratchRegistry::Root, scratch.Key, "Value").value_or(RegistryValue{});
    }
    bool Store(RegistryType type, const std::string& bytes) const {
        return scratch.Host->Write(ScratchRegistry::Root, scratch.Key, "Value", {type, bytes});
    }

    ScratchRegistry scratch;
    clsRegistry registry;
};

std::string Told(const Failure& failure) {
    return std::to_string(failure.Number) + ' ' + failure.Description();
}

const RegistryVariant Empty = std::string();

TEST_F(clsRegistryTest, CreatesChecksAndDeletesKeys) {
    EXPECT_FALSE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CreateRegistryKey(scratch.Key));
    EXPECT_FALSE(registry.CreateRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.CreateRegistryKey(scratch.Key + "\\Inner"));
    EXPECT_FALSE(registry.DeleteRegistryKey(scratch.Key));
    EXPECT_TRUE(registry.DeleteRegistryKey(scratch.Key + "\\Inner"));
    EXPECT_TRUE(registry.DeleteRegistryKey(scratch.Key));
    EXPECT_FALSE(registry.DeleteRegistryKey(scratch.Key));
}

TEST_F(clsRegistryTest, UsesTheRootKeyItIsGiven) {
    HaveKey();
    EXPECT_FALSE(clsRegistry().CheckRegistryKey(scratch.Key)) << "the local machine has no such key";
    registry.SetKeyToUse(0x12345678);
    EXPECT_FALSE(registry.CheckRegistryKey(scratch.Key));
    EXPECT_EQ(Told(FailureOf([&] { registry.CreateRegistryKey(scratch.Key); })),
              "1001 Unable to create the registry key");
}

TEST_F(clsRegistryTest, KeepsEveryTypeItCanStore) {
    HaveKey();
    const struct {
        RegistryVariant Value;
        RegistryType Type;
        std::string Bytes;
        RegistryVariant Read;
    } cases[] = {
        {"C:\\Games"s, RegistryType::Sz, "C:\\Games\0"s, "C:\\Games"s},
        {""s, RegistryType::Sz, "[not set]\0"s, ""s},
        {std::string(3000, 'x'), RegistryType::Sz, std::string(3000, 'x') + '\0', std::string(3000, 'x')},
        {-2, RegistryType::Dword, "\xFE\xFF\xFF\xFF", -2},
        {std::int16_t{-2}, RegistryType::Dword, "\xFE\xFF\xFF\xFF", -2},
        {2147483647, RegistryType::Dword, "\xFF\xFF\xFF\x7F", 2147483647},
        {Bytes{0, 1, 255}, RegistryType::Binary, "\0\1\xFF"s, Bytes{0, 1, 255}},
    };
    for (const auto& value : cases) {
        EXPECT_TRUE(Set(value.Value));
        EXPECT_EQ(Stored(), (RegistryValue{value.Type, value.Bytes}));
        EXPECT_EQ(Get(), value.Read);
    }
}

TEST_F(clsRegistryTest, RefusesOtherTypesAndKeepsTheOldValue) {
    EXPECT_FALSE(Set(2.5)) << "without a key there is nothing to refuse";
    HaveKey();
    ASSERT_TRUE(Set("old"s));
    for (const RegistryVariant& value :
         {RegistryVariant(2.5), RegistryVariant(true), RegistryVariant(std::monostate())})
        EXPECT_EQ(Told(FailureOf([&] { Set(value); })), "1001 Unsupported value type");
    EXPECT_EQ(Get(), RegistryVariant("old"s));
}

TEST_F(clsRegistryTest, FallsBackToTheDefault) {
    EXPECT_EQ(Get(), Empty);
    EXPECT_EQ(Get(5), RegistryVariant(5));
    EXPECT_FALSE(Set("x"s));
    HaveKey();
    EXPECT_EQ(Get(), Empty);
    EXPECT_EQ(Get(5), RegistryVariant(5));
    EXPECT_EQ(Get(std::monostate()), RegistryVariant(std::monostate()));
    ASSERT_TRUE(Store(RegistryType::MultiSz, "a\0b\0\0"s));
    EXPECT_EQ(Get(5), RegistryVariant(5));
    ASSERT_TRUE(Store(RegistryType::Dword, "\1"));
    EXPECT_EQ(Get(5), RegistryVariant(5));
}

TEST_F(clsRegistryTest, ReadsStoredTextsAsTheyStand) {
    HaveKey();
    const struct {
        RegistryType Type;
        std::string Bytes;
        std::string Text;
    } cases[] = {
        {RegistryType::Sz, "no end", "no end"},
        {RegistryType::Sz, "", ""},
        {RegistryType::Sz, "\0"s, ""},
        {RegistryType::ExpandSz, "%TEMP%\\x\0"s, "%TEMP%\\x"},
        {RegistryType::ExpandSz, "[not set]\0"s, ""},
    };
    for (const auto& stored : cases) {
        ASSERT_TRUE(Store(stored.Type, stored.Bytes));
        EXPECT_EQ(Get(5), RegistryVariant(stored.Text)) << stored.Bytes;
        EXPECT_EQ(registry.GetRegistryText(scratch.Key, "Value"), stored.Text) << stored.Bytes;
    }
    ASSERT_TRUE(Set(7));
    EXPECT_EQ(registry.GetRegistryText(scratch.Key, "Value"), "") << "a number is no text";
}

} // namespace
} // namespace velmora
