#pragma once

#include "TempFolder.h"
#include "platform/Registry.h"

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>

namespace velmora {

inline void SetEnvironment(const char* name, const std::string& value) {
#ifdef _WIN32
    ::_putenv_s(name, value.c_str());
#else
    ::setenv(name, value.c_str(), 1);
#endif
}

/// A part of the host's registry that a test may write to; gone at its end. Where the registry is a file, it
/// is one of the test's own, and there is no compatibility prefix.
class ScratchRegistry {
  public:
    static constexpr std::uint32_t Root = Registry::CurrentUser;

    ScratchRegistry() {
        SetEnvironment("VELMORA_REGISTRY", Folder / "registry.reg");
        SetEnvironment("WINEPREFIX", Folder / "no-prefix");
        Host = HostRegistry();
    }
    ScratchRegistry(const ScratchRegistry&) = delete;
    ScratchRegistry& operator=(const ScratchRegistry&) = delete;
    ~ScratchRegistry() {
        for (const char* key : {"\\Inner", ""})
            Host->DeleteKey(Root, Key + key);
        SetEnvironment("VELMORA_REGISTRY", "");
        SetEnvironment("WINEPREFIX", "");
    }

    TempFolder Folder;
    std::unique_ptr<Registry> Host;
    /// A key that does not exist yet.
    const std::string Key = "Software\\VelmoraWriterTests" + std::to_string(std::random_device()());
};

} // namespace velmora
