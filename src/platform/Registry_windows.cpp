#include "platform/Registry.h"

#include "platform/HostWindows.h"

#include <algorithm>

namespace velmora {

namespace {

HKEY RootKey(std::uint32_t root) {
    return reinterpret_cast<HKEY>(static_cast<LONG_PTR>(static_cast<LONG>(root)));
}

/// A key opened for a while; closed at the end.
class OpenKey {
  public:
    OpenKey(std::uint32_t root, std::string_view key, REGSAM access) {
        if (RegOpenKeyExW(RootKey(root), ToWide(key).c_str(), 0, access, &handle) != ERROR_SUCCESS)
            handle = nullptr;
    }
    OpenKey(const OpenKey&) = delete;
    OpenKey& operator=(const OpenKey&) = delete;
    ~OpenKey() {
        if (handle != nullptr)
            RegCloseKey(handle);
    }

    explicit operator bool() const { return handle != nullptr; }
    [[nodiscard]] HKEY Get() const { return handle; }

  private:
    HKEY handle = nullptr;
};

bool IsText(RegistryType type) {
    return type == RegistryType::Sz || type == RegistryType::ExpandSz || type == RegistryType::MultiSz;
}

/// A text as the system keeps it, in UTF-16, whatever its code page: some of those have no bytes for much.
std::string WideBytes(std::string_view text) {
    const std::wstring wide = ToWide(text);
    return {reinterpret_cast<const char*>(wide.data()), wide.size() * sizeof(wchar_t)};
}

std::string TextOfWideBytes(const std::string& bytes) {
    std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
    std::copy_n(bytes.data(), wide.size() * sizeof(wchar_t), reinterpret_cast<char*>(wide.data()));
    return FromWide(wide);
}

std::optional<RegistryValue> QueryValue(HKEY key, std::string_view name) {
    const std::wstring valueName = ToWide(name);
    std::string bytes(1024, '\0');
    DWORD type = REG_NONE;
    DWORD size = 0;
    LONG result = ERROR_MORE_DATA;
    do {
        size = static_cast<DWORD>(bytes.size());
        result = RegQueryValueExW(key, valueName.c_str(), nullptr, &type,
                                  reinterpret_cast<BYTE*>(bytes.data()), &size);
        if (result == ERROR_MORE_DATA)
            bytes.resize(std::max<std::size_t>(size, bytes.size() + 1));
    } while (result == ERROR_MORE_DATA);
    if (result != ERROR_SUCCESS)
        return std::nullopt;
    bytes.resize(size);
    const auto kind = static_cast<RegistryType>(type);
    return RegistryValue{kind, IsText(kind) ? TextOfWideBytes(bytes) : std::move(bytes)};
}

class WindowsRegistry : public Registry {
  public:
    bool KeyExists(std::uint32_t root, std::string_view key) override {
        return OpenKey(root, key, KEY_READ) || OpenKey(root, key, KEY_READ | KEY_WOW64_32KEY);
    }

    Created CreateKey(std::uint32_t root, std::string_view key) override {
        HKEY handle = nullptr;
        DWORD disposition = 0;
        if (RegCreateKeyExW(RootKey(root), ToWide(key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, 0,
                            nullptr, &handle, &disposition) != ERROR_SUCCESS)
            return Created::Failed;
        RegCloseKey(handle);
        return disposition == REG_CREATED_NEW_KEY ? Created::New : Created::Existing;
    }

    bool DeleteKey(std::uint32_t root, std::string_view key) override {
        return RegDeleteKeyW(RootKey(root), ToWide(key).c_str()) == ERROR_SUCCESS;
    }

    bool Write(std::uint32_t root, std::string_view key, std::string_view name,
               const RegistryValue& value) override {
        const OpenKey open(root, key, KEY_WRITE);
        const std::string bytes = IsText(value.Type) ? WideBytes(value.Bytes) : value.Bytes;
        return open && RegSetValueExW(open.Get(), ToWide(name).c_str(), 0, static_cast<DWORD>(value.Type),
                                      reinterpret_cast<const BYTE*>(bytes.data()),
                                      static_cast<DWORD>(bytes.size())) == ERROR_SUCCESS;
    }

    std::optional<RegistryValue> Read(std::uint32_t root, std::string_view key,
                                      std::string_view name) override {
        // The game is a 32-bit program: a 64-bit system keeps its keys in a view of their own.
        for (const REGSAM view : {REGSAM{0}, REGSAM{KEY_WOW64_32KEY}}) {
            const OpenKey open(root, key, KEY_READ | view);
            auto value = open ? QueryValue(open.Get(), name) : std::nullopt;
            if (value)
                return value;
        }
        return std::nullopt;
    }
};

} // namespace

std::unique_ptr<Registry> HostRegistry() {
    return std::make_unique<WindowsRegistry>();
}

} // namespace velmora
