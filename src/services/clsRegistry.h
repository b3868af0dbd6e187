#pragma once

#include "platform/Registry.h"

#include <cstdint>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace velmora {

/// A value of any type. Only texts, whole numbers and bytes can be stored; nothing at all stands for null.
using RegistryVariant = std::variant<std::string, std::int32_t, std::int16_t, std::vector<std::uint8_t>,
                                     double, bool, std::monostate>;

/// Access to keys and single values below one root key of the registry. Key names are paths below the root,
/// with "\" between levels. An empty text is kept as "[not set]".
class clsRegistry {
  public:
    explicit clsRegistry(std::unique_ptr<Registry> hostRegistry = HostRegistry());

    /// The root key of every operation; the local machine unless set.
    void SetKeyToUse(std::uint32_t rootKey) { keyToUse = rootKey; }

    /// True when the key can be opened for reading.
    bool CheckRegistryKey(const std::string& keyName);

    /// True when the key was created, false when it was there. Throws Failure (1001) when it is neither.
    bool CreateRegistryKey(const std::string& keyName);

    /// True when the key was deleted. A key with subkeys stays.
    bool DeleteRegistryKey(const std::string& keyName);

    /// Stores texts as strings, whole numbers as 32-bit numbers and bytes as they are. False when the key
    /// cannot be opened for writing. Throws Failure (1001) for other types, the stored value left as it is.
    bool SetRegistryValue(const std::string& keyName, const std::string& valueName,
                          const RegistryVariant& value);

    /// The stored text (environment references as they stand), number or bytes; `defaultValue` when the key
    /// or the value is missing or has another type.
    RegistryVariant GetRegistryValue(const std::string& keyName, const std::string& valueName,
                                     const RegistryVariant& defaultValue = std::string());

    /// The same for callers that want a text: empty when there is none.
    std::string GetRegistryText(const std::string& keyName, const std::string& valueName);

  private:
    std::unique_ptr<Registry> registry;
    std::uint32_t keyToUse = Registry::LocalMachine;
};

} // namespace velmora
