#include "platform/HostWindows.h"

#include "ScratchRegistry.h"

#include <gtest/gtest.h>

namespace velmora {
namespace {

TEST(WindowsRegistryTest, KeepsTextsInUnicode) {
    ScratchRegistry scratch;
    scratch.Host->CreateKey(ScratchRegistry::Root, scratch.Key);
    const std::wstring set = L"C:\\\u884C\u00E9";
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, ToWide(scratch.Key).c_str(), L"Path", REG_SZ, set.c_str(),
                              static_cast<DWORD>((set.size() + 1) * sizeof(wchar_t))),
              ERROR_SUCCESS);
    const auto read = scratch.Host->Read(ScratchRegistry::Root, scratch.Key, "Path");
    ASSERT_TRUE(read);
    EXPECT_EQ(read->Bytes, FromWide(set) + '\0');
    ASSERT_TRUE(scratch.Host->Write(ScratchRegistry::Root, scratch.Key, "Copy", *read));
    std::wstring kept(100, L'\0');
    auto size = static_cast<DWORD>(kept.size() * sizeof(wchar_t));
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, ToWide(scratch.Key).c_str(), L"Copy", RRF_RT_REG_SZ, nullptr,
                           kept.data(), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(kept.substr(0, size / sizeof(wchar_t) - 1), set);
}

} // namespace
} // namespace velmora
