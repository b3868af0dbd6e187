// A registry file may hold anything: its lines are kept, and what is set in it can be found again.
#include "platform/RegistryFile.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmora;
    const std::string key = "HKEY_CURRENT_USER\\Software\\Fuzz";
    RegistryFile file({reinterpret_cast<const char*>(data), size});
    const std::string text = file.Text();
    if (RegistryFile(text).Text() != text)
        std::abort();
    file.CreateKey(key);
    const RegistryValue value{size % 2 ? RegistryType::Binary : RegistryType::Dword,
                              std::string("\1\2\3\4", 4)};
    if (!file.SetValue(key, "Name", value))
        std::abort();
    const RegistryFile again(file.Text());
    const RegistryValue* found = again.Find(key, "Name");
    if (found == nullptr || !(*found == value))
        std::abort();
    return 0;
}
