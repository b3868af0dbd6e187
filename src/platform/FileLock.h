#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// Keeps other programs off something for as long as it lives, by way of a file of its own. The system frees
/// it with its holder's end, whatever brought that about. The file is removed with it, or left lying without
/// meaning where that is refused. Throws Failure when the host knows no locking there.
class FileLock {
  public:
    /// Waits for as long as another program holds it.
    explicit FileLock(std::string_view lockFile);
    ~FileLock();
    FileLock(FileLock&& other) noexcept;
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    FileLock& operator=(FileLock&&) = delete;

    /// Nothing while another program holds it.
    static std::optional<FileLock> Try(std::string_view lockFile);

  private:
    enum class Waiting { No, Yes };
    FileLock(std::filesystem::path file, Waiting waiting);

    std::filesystem::path path;
    std::intptr_t handle; ///< -1: another program holds it
};

} // namespace velmora
