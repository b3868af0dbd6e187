#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

enum class RegistryType : std::uint32_t {
    None = 0,
    Sz = 1,
    ExpandSz = 2,
    Binary = 3,
    Dword = 4,
    MultiSz = 7
};

/// A stored value: its type and its raw bytes as the registry holds them (texts in the code page, with their
/// final NUL; numbers as four bytes, lowest first).
struct RegistryValue {
    RegistryType Type = RegistryType::None;
    std::string Bytes;
    bool operator==(const RegistryValue&) const = default;
};

/// The host's registry: the system's own on Windows, elsewhere a registry file of the user's.
/// Keys are paths below a root, with "\" between levels, matched without regard to case.
class Registry {
  public:
    static constexpr std::uint32_t LocalMachine = 0x80000002;
    static constexpr std::uint32_t CurrentUser = 0x80000001;

    virtual ~Registry() = default;
    /// True when the key can be opened for reading.
    virtual bool KeyExists(std::uint32_t root, std::string_view key) = 0;
    enum class Created { New, Existing, Failed };
    virtual Created CreateKey(std::uint32_t root, std::string_view key) = 0;
    /// False when the key is missing or has subkeys or cannot be deleted.
    virtual bool DeleteKey(std::uint32_t root, std::string_view key) = 0;
    /// False when the key cannot be opened for writing.
    virtual bool Write(std::uint32_t root, std::string_view key, std::string_view name,
                       const RegistryValue& value) = 0;
    virtual std::optional<RegistryValue> Read(std::uint32_t root, std::string_view key,
                                              std::string_view name) = 0;
    /// Lines of the registry's file that make no sense, as "FILE:LINE: TEXT"; they are kept as they stand.
    virtual std::vector<std::string> BrokenLines() { return {}; }
};

/// The registry of this host. Where it is a file, that is "registry.reg" in the user's configuration
/// directory, or the file that the environment variable VELMORA_REGISTRY names; what it lacks below the local
/// machine is looked for in the user's Windows compatibility prefix too.
std::unique_ptr<Registry> HostRegistry();

} // namespace velmora
