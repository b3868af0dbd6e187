#include "services/clsRegistry.h"

#include "platform/Failure.h"
#include "platform/RegistryText.h"

#include <optional>
#include <utility>

namespace velmora {

namespace {

constexpr std::int32_t FailureRegistry = 1001;
const std::string NotSet = "[not set]";

/// The stored form of a value: nothing for a type that cannot be stored.
struct StoredForm {
    std::optional<RegistryValue> operator()(const std::string& text) const {
        return RegistryValue{RegistryType::Sz, (text.empty() ? NotSet : text) + '\0'};
    }
    std::optional<RegistryValue> operator()(std::int32_t number) const {
        return RegistryValue{RegistryType::Dword,
                             RegistryText::DwordBytes(static_cast<std::uint32_t>(number))};
    }
    std::optional<RegistryValue> operator()(std::int16_t number) const {
        return (*this)(std::int32_t{number});
    }
    std::optional<RegistryValue> operator()(const std::vector<std::uint8_t>& bytes) const {
        return RegistryValue{RegistryType::Binary, {bytes.begin(), bytes.end()}};
    }
    std::optional<RegistryValue> operator()(double /*value*/) const { return std::nullopt; }
    std::optional<RegistryValue> operator()(bool /*value*/) const { return std::nullopt; }
    std::optional<RegistryValue> operator()(std::monostate /*value*/) const { return std::nullopt; }
};

RegistryVariant TextOf(std::string bytes) {
    if (!bytes.empty() && bytes.back() == '\0')
        bytes.pop_back();
    return bytes;
}

RegistryVariant VariantOf(const RegistryValue& value, const RegistryVariant& defaultValue) {
    switch (value.Type) {
    case RegistryType::Sz:
    case RegistryType::ExpandSz:
        return TextOf(value.Bytes);
    case RegistryType::Dword:
        if (const auto number = RegistryText::DwordOf(value.Bytes))
            return static_cast<std::int32_t>(*number);
        return defaultValue;
    case RegistryType::Binary:
        return std::vector<std::uint8_t>(value.Bytes.begin(), value.Bytes.end());
    default:
        return defaultValue;
    }
}

} // namespace

clsRegistry::clsRegistry(std::unique_ptr<Registry> hostRegistry) : registry(std::move(hostRegistry)) {}

bool clsRegistry::CheckRegistryKey(const std::string& keyName) {
    return registry->KeyExists(keyToUse, keyName);
}

bool clsRegistry::CreateRegistryKey(const std::string& keyName) {
    const Registry::Created created = registry->CreateKey(keyToUse, keyName);
    if (created == Registry::Created::Failed)
        throw Failure(FailureRegistry, "Unable to create the registry key");
    return created == Registry::Created::New;
}

bool clsRegistry::DeleteRegistryKey(const std::string& keyName) {
    return registry->DeleteKey(keyToUse, keyName);
}

bool clsRegistry::SetRegistryValue(const std::string& keyName, const std::string& valueName,
                                   const RegistryVariant& value) {
    if (!registry->KeyExists(keyToUse, keyName))
        return false;
    const auto stored = std::visit(StoredForm{}, value);
    if (!stored)
        throw Failure(FailureRegistry, "Unsupported value type");
    return registry->Write(keyToUse, keyName, valueName, *stored);
}

RegistryVariant clsRegistry::GetRegistryValue(const std::string& keyName, const std::string& valueName,
                                              const RegistryVariant& defaultValue) {
    if (!registry->KeyExists(keyToUse, keyName))
        return defaultValue;
    const auto stored = registry->Read(keyToUse, keyName, valueName);
    RegistryVariant value = stored ? VariantOf(*stored, defaultValue) : defaultValue;
    if (value == RegistryVariant(NotSet))
        value = std::string();
    return value;
}

std::string clsRegistry::GetRegistryText(const std::string& keyName, const std::string& valueName) {
    const RegistryVariant value = GetRegistryValue(keyName, valueName);
    const auto* const text = std::get_if<std::string>(&value);
    return text != nullptr ? *text : std::string();
}

} // namespace velmora
