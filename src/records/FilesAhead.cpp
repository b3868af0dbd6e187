#include "records/FilesAhead.h"

#include "platform/Files.h"

namespace velmora {

void FileBytes::Read(const RecordKind& kind, const std::string& path) {
    Failure = nullptr;
    try {
        Files::ReadWhole(path, Bytes);
        Content = HashOf(Bytes);
        Fault = FindTextFault(Bytes);
        if (Fault.Text.empty())
            Blocks.Find(kind, Bytes);
    } catch (...) {
        Failure = std::current_exception();
    }
}

FilesAhead::FilesAhead(const RecordKind& recordKind, std::vector<std::string> filePaths)
    : kind(recordKind), paths(std::move(filePaths)),
      reader([this](const std::stop_token& stop) { Run(stop); }) {}

void FilesAhead::Run(const std::stop_token& stop) {
    Lock lock(mutex);
    while (changed.wait(lock, stop, [&] { return MayBegin() || begun == paths.size(); }) &&
           begun < paths.size())
        ReadOne(lock);
}

bool FilesAhead::MayBegin() const {
    // The file in use keeps its place.
    return begun < paths.size() && begun + 1 < asked + ring.size();
}

void FilesAhead::ReadOne(Lock& lock) {
    const std::size_t file = begun++;
    lock.unlock();
    SlotOf(file).File.Read(kind, paths[file]);
    lock.lock();
    SlotOf(file).Ready = file + 1;
    changed.notify_all();
}

const FileBytes& FilesAhead::Next() {
    Lock lock(mutex);
    const std::size_t file = asked++;
    changed.notify_all();
    while (SlotOf(file).Ready != file + 1) {
        if (MayBegin())
            ReadOne(lock);
        else
            changed.wait(lock);
    }
    return SlotOf(file).File;
}

} // namespace velmora
