#include "cli/PlacedReport.h"

#include "platform/Files.h"

#include <filesystem>

namespace velmora {

std::string PlacedReport::PathOf(const KindEntry& kind, const Problem& problem) const {
    namespace fs = std::filesystem;
    const fs::path whole =
        fs::absolute(Files::HostPath(loader.FolderOf(kind) + problem.File)).lexically_normal();
    const fs::path below = whole.lexically_relative(fs::current_path());
    const std::u8string path = (below.empty() || *below.begin() == ".." ? whole : below).generic_u8string();
    return {path.begin(), path.end()};
}

} // namespace velmora
