#pragma once

#include "platform/Files.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace velmora {

/// A fresh empty folder that is gone, with everything in it, at the end of a test.
class TempFolder {
  public:
    TempFolder() {
        std::random_device random;
        host = std::filesystem::temp_directory_path() /
               ("velmora-test-" + std::to_string(random()) + std::to_string(random()));
        std::filesystem::create_directories(host);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(host, ignored);
    }

    [[nodiscard]] const std::filesystem::path& Host() const { return host; }
    /// The folder as a text of the record core, with trailing separator.
    [[nodiscard]] std::string Path() const { return Files::PathText(host) + Files::Separator; }
    [[nodiscard]] std::string operator/(const std::string& name) const { return Path() + name; }

    /// Writes a file, its bytes as they are; folders in `name` are created.
    void Write(const std::string& name, const std::string& bytes) const {
        const std::filesystem::path path = host / name;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path, std::ios::binary) << bytes;
    }
    [[nodiscard]] std::string Read(const std::string& name) const {
        std::ifstream file(host / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    [[nodiscard]] bool Has(const std::string& name) const { return std::filesystem::exists(host / name); }
    /// How many files and folders are right in it: what a clean-up left behind shows here.
    [[nodiscard]] int EntryCount() const {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator(host), {}));
    }

  private:
    std::filesystem::path host;
};

} // namespace velmora
