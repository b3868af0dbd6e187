// The library's writing to disk.
#include "platform/Files.h"
#include "records/Library.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <unordered_set>

namespace velmora {

/// One save of some files.
class Library::Writer {
  public:
    Writer(Library& owner, const std::string& dataFolder, const std::vector<std::string>& shortNames)
        : library(owner), folder(dataFolder) {
        for (const std::string& name : shortNames)
            files.TryAdd(name, {library.PlaceOf(name)});
        for (const auto& [name, record] : library.Records)
            if (!record->ToBeDeleted)
                Assign(*record);
    }

    /// Gaining files first. Where files gain from each other, the first of them is written with what it
    /// still has to give away, and once more when that has arrived.
    void Run() {
        for (auto& [name, file] : files)
            if (file.Gains)
                WriteItDown(name, file);
        for (auto& [name, file] : files)
            if (!file.Done)
                WriteItDown(name, file);
    }

  private:
    struct File {
        std::int32_t Place; ///< position in the library's files
        std::vector<Record*> Records = {};
        std::vector<Record*> Leaving = {}; ///< held on disk, belonging elsewhere by now
        bool Gains = false;
        bool Done = false;
    };

    void Assign(Record& record) {
        File* own = files.Find(record.ShortName);
        if (own) {
            own->Records.push_back(&record);
            own->Gains |= record.FileOnDisk != own->Place;
        }
        if (record.FileOnDisk < 0)
            return;
        File* before = files.Find(library.Files.KeyAt(static_cast<std::size_t>(record.FileOnDisk)));
        if (before && before != own)
            before->Leaving.push_back(&record);
    }

    void WriteItDown(const std::string& name, File& file) {
        Trap(library.Kind.Routine("WriteItDown"), {name}, [&] {
            std::string text;
            for (const Record* record : file.Records)
                AppendBlock(library.Kind, *record, text);
            bool waiting = false;
            for (const Record* record : file.Leaving)
                if (record->FileOnDisk == file.Place) {
                    waiting = true;
                    AppendBlock(library.Kind, *record, text);
                }
            try {
                Put(folder + name, text);
            } catch (const Failure& failure) {
                throw Failure(failure.Number, failure.Description() + Outcome(), failure.Source,
                              failure.Line);
            }
            for (Record* record : file.Records)
                record->FileOnDisk = file.Place;
            file.Done = !waiting;
        });
    }

    static void Put(const std::string& path, const std::string& text) {
        const bool exists = velmora::Files::FileExists(path);
        if (text.empty()) {
            if (exists)
                velmora::Files::DeleteFile(path);
        } else if (!exists || velmora::Files::ReadWhole(path) != text) {
            velmora::Files::ReplaceSafely(path, text);
        }
    }

    [[nodiscard]] std::string Outcome() const {
        std::vector<std::string> written;
        std::vector<std::string> missing;
        for (const auto& [name, file] : files)
            (file.Done ? written : missing).push_back(name);
        return " (files written: " + (written.empty() ? "none" : Join(written, ", ")) +
               "; not written: " + Join(missing, ", ") + ")";
    }

    Library& library;
    const std::string& folder;
    KeyedCollection<File> files;
};

std::vector<std::string> Library::FilesToWrite() const {
    std::vector<std::string> names;
    std::unordered_set<std::string> met;
    const auto meet = [&](const std::string& name) {
        if (met.insert(name).second)
            names.push_back(name);
    };
    for (const auto& [name, record] : Records)
        if (record->IsDirty)
            meet(record->ShortName);
    for (const std::string& name : FilesLosingRecords)
        meet(name);
    return names;
}

void Library::WriteFiles(const std::string& folder, const std::vector<std::string>& shortNames) {
    Writer(*this, folder, shortNames).Run();
}

} // namespace velmora
