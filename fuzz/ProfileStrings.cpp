// A settings file may hold anything: what is written into it can be read back, and the rest stays.
#include "platform/ProfileStrings.h"
#include "platform/Files.h"
#include "platform/TextLines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

namespace {

/// In memory where the host has such a folder: each run writes a file.
std::string ScratchFile() {
    const std::string name = "velmora-fuzz-" + std::to_string(getpid()) + ".ini";
    const std::string folder = velmora::Files::WriteRefusal("/dev/shm").empty() ? "/dev/shm/" : "/tmp/";
    return folder + name;
}

void Put(const std::string& file, const std::uint8_t* data, std::size_t size) {
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmora;
    static const std::string file = ScratchFile();
    static const bool cleared = std::atexit([] { unlink(file.c_str()); }) == 0;
    if (!cleared)
        std::abort();
    Put(file, data, size);
    const std::string old = ProfileStrings::ReadSection("Other", 1 << 20, file);
    ProfileStrings::Write("Setup", "Path", "C:\\Velmora", file);
    if (ProfileStrings::Read("setup", "PATH", "", 64, file) != "C:\\Velmora")
        std::abort();
    if (ProfileStrings::ReadSection("Other", 1 << 20, file) != old)
        std::abort();
    return 0;
}
