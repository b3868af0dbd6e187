#include "records/FilesAhead.h"

#include "platform/Files.h"

namespace velmora {

void FileBytes::Read(const std::string& path) {
    Failure = nullptr;
    try {
        Files::ReadWhole(path, Bytes);
        Content = HashOf(Bytes);
    } catch (...) {
        Failure = std::current_exception();
    }
}

FilesAhead::FilesAhead(std::vector<std::string> filePaths)
    : paths(std::move(filePaths)), reader([this](const std::stop_token& stop) { Run(stop); }) {}

void FilesAhead::Run(const std::stop_token& stop) {
    for (std::size_t i = 0; i < paths.size(); ++i) {
        {
            std::unique_lock lock(mutex);
            // The file in use keeps its place.
            if (!changed.wait(lock, stop, [&] { return i + 1 < asked + ring.size(); }))
                return;
        }
        ring[i % ring.size()].Read(paths[i]);
        const std::scoped_lock lock(mutex);
        ++read;
        changed.notify_one();
    }
}

const FileBytes& FilesAhead::Next() {
    std::unique_lock lock(mutex);
    const std::size_t next = asked++;
    changed.notify_one();
    changed.wait(lock, [&] { return next < read; });
    return ring[next % ring.size()];
}

} // namespace velmora
