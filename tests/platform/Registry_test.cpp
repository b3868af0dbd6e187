#include "platform/Registry.h"

#include "ScratchRegistry.h"

#include <gtest/gtest.h>

#include <string>

namespace velmora {
namespace {

using namespace std::string_literals;

constexpr std::uint32_t Root = ScratchRegistry::Root;

TEST(Registry, CreatesAndDeletesKeys) {
    const ScratchRegistry scratch;
    Registry& registry = *scratch.Host;
    EXPECT_FALSE(registry.KeyExists(Root, scratch.Key));
    EXPECT_EQ(registry.CreateKey(Root, scratch.Key), Registry::Created::New);
    EXPECT_EQ(registry.CreateKey(Root, scratch.Key), Registry::Created::Existing);
    EXPECT_EQ(registry.CreateKey(Root, scratch.Key + "\\Inner"), Registry::Created::New);
    EXPECT_TRUE(registry.KeyExists(Root, scratch.Key + "\\inner"));
    EXPECT_FALSE(registry.DeleteKey(Root, scratch.Key)) << "it has a subkey";
    EXPECT_TRUE(registry.DeleteKey(Root, scratch.Key + "\\INNER"));
    EXPECT_TRUE(registry.DeleteKey(Root, scratch.Key));
    EXPECT_FALSE(registry.DeleteKey(Root, scratch.Key));
    EXPECT_FALSE(registry.KeyExists(Root, scratch.Key));
}

TEST(Registry, KeepsValuesOfEveryType) {
    const ScratchRegistry scratch;
    Registry& registry = *scratch.Host;
    ASSERT_EQ(registry.CreateKey(Root, scratch.Key), Registry::Created::New);
    const RegistryValue values[] = {
        {RegistryType::Sz, "C:\\Games \"x\"\0"s},  {RegistryType::Sz, std::string(5000, 'x') + '\0'},
        {RegistryType::Sz, "two\r\nlines\0"s},     {RegistryType::ExpandSz, "%TEMP%\\x\0"s},
        {RegistryType::Dword, "\xFE\xFF\xFF\xFF"}, {RegistryType::Binary, "\0\1\xFF"s},
        {RegistryType::MultiSz, "one\0two\0\0"s},
    };
    for (const RegistryValue& value : values) {
        for (const char* name : {"Value", ""}) {
            ASSERT_TRUE(registry.Write(Root, scratch.Key, name, value)) << value.Bytes;
            const auto read = HostRegistry()->Read(Root, scratch.Key, name);
            ASSERT_TRUE(read) << value.Bytes;
            EXPECT_EQ(*read, value);
        }
    }
    EXPECT_EQ(registry.BrokenLines().size(), 0u);
}

TEST(Registry, LacksWhatWasNeverWritten) {
    const ScratchRegistry scratch;
    Registry& registry = *scratch.Host;
    EXPECT_FALSE(registry.Read(Root, scratch.Key, "Value"));
    EXPECT_FALSE(registry.Write(Root, scratch.Key, "Value", {RegistryType::Sz, "x\0"s}));
    registry.CreateKey(Root, scratch.Key);
    EXPECT_FALSE(registry.Read(Root, scratch.Key, "Value"));
    EXPECT_FALSE(registry.KeyExists(0x12345678, scratch.Key));
    EXPECT_FALSE(registry.Write(0x12345678, scratch.Key, "Value", {RegistryType::Sz, "x\0"s}));
    EXPECT_EQ(registry.CreateKey(0x12345678, scratch.Key), Registry::Created::Failed);
}

} // namespace
} // namespace velmora
