// The library's writing to disk.
#include "platform/Files.h"
#include "platform/Replacements.h"
#include "records/Backups.h"
#include "records/Library.h"
#include "services/Trap.h"
#include "services/modWriter.h"

#include <algorithm>
#include <deque>
#include <unordered_set>

namespace velmora {

/// One save of some files.
class Library::Writer {
  public:
    Writer(Library& owner, const std::string& dataFolder, const std::vector<std::string>& shortNames,
           const MissingCopy& aboutMissingCopies)
        : library(owner), folder(dataFolder), goOnWithoutCopy(aboutMissingCopies) {
        for (const std::string& name : shortNames) {
            Trap(library.Kind.Routine("WriteItDown"), {name}, [&] { RefuseOthers(name); });
            files.TryAdd(name, File{library.PlaceOf(name)});
        }
        for (const auto& [name, record] : library.records)
            if (!record->ToBeDeleted)
                Assign(*record);
    }

    /// Gaining files first. Where files gain from each other, the first of them is written with what it
    /// still has to give away, and once more when that has arrived. Returns the dated copies made.
    std::vector<std::string> Run() {
        for (auto& [name, file] : files)
            if (file.Gains)
                WriteItDown(name, file);
        Settle();
        for (auto& [name, file] : files)
            if (!file.Done)
                WriteItDown(name, file);
        Settle();
        return std::move(copies);
    }

  private:
    struct File {
        std::int32_t Place; ///< position in the library's files
        std::vector<Record*> Records = {};
        std::vector<Record*> Leaving = {}; ///< held on disk, belonging elsewhere by now
        bool Gains = false;
        bool Done = false;
    };

    void RefuseOthers(const std::string& name) const {
        if (const std::string* reason = library.notWritten.Find(name))
            throw Failure(FailurePathFileAccess, *reason + "; nothing was written");
    }

    void Assign(Record& record) {
        File* own = files.Find(record.ShortName);
        if (own) {
            own->Records.push_back(&record);
            own->Gains |= record.FileOnDisk != own->Place;
        }
        File* before = files.Find(library.FileOnDiskOf(record));
        if (before && before != own)
            before->Leaving.push_back(&record);
    }

    void WriteItDown(const std::string& name, File& file) {
        // A record leaves its file once it has arrived for good; a file goes once those before it are
        // written.
        if (!file.Leaving.empty() || file.Records.empty())
            Settle();
        try {
            std::string text;
            for (const Record* record : file.Records)
                AppendBlock(library.Kind, *record, text);
            bool waiting = false;
            for (const Record* record : file.Leaving)
                if (record->FileOnDisk == file.Place) {
                    waiting = true;
                    AppendBlock(library.Kind, *record, text);
                }
            Put(name, file, text, !waiting);
        } catch (...) {
            const Failure failure = CurrentFailure();
            Settle();
            Fail(name, failure);
        }
    }

    void Put(const std::string& name, File& file, const std::string& text, bool last) {
        const std::string path = folder + name;
        const bool exists = velmora::Files::FileExists(path);
        const std::string old = OnDisk(name);
        if (old != text && !old.empty() && HoldsMore(name, old))
            KeepDatedCopy(name, old);
        const auto written = [this, &name, &file, last, hash = HashOf(text), gone = text.empty()] {
            gone ? void(library.knownFiles.Remove(name)) : library.NoteContent(name, hash);
            for (Record* record : file.Records)
                record->FileOnDisk = file.Place;
            file.Done = last;
        };
        if (!text.empty() && (!exists || old != text)) {
            replacements.Put(path, text, [this, written] {
                written();
                unsettled.pop_front();
            });
            unsettled.push_back(name);
            return;
        }
        if (text.empty() && exists)
            velmora::Files::DeleteFile(path);
        written();
    }

    void Settle() {
        try {
            replacements.Settle();
        } catch (const Failure& failure) {
            Fail(unsettled.front(), failure);
        }
    }

    void Fail(const std::string& name, const Failure& failure) const {
        Trap(library.Kind.Routine("WriteItDown"), {name}, [&] { throw WithOutcome(failure); });
    }

    [[nodiscard]] Failure WithOutcome(const Failure& failure) const {
        return {failure.Number, failure.Description() + Outcome(), failure.Source, failure.Line};
    }

    [[nodiscard]] std::string OnDisk(const std::string& name) const {
        const std::string path = folder + name;
        return velmora::Files::FileExists(path) ? velmora::Files::ReadWhole(path) : std::string();
    }

    /// True for content that the records do not give back, or that was neither read nor written here.
    [[nodiscard]] bool HoldsMore(const std::string& name, const std::string& old) const {
        const KnownFile* file = library.knownFiles.Find(name);
        return !file || file->Losses.Any() || HashOf(old) != file->Content;
    }

    /// What only the old file holds must be found again: comments, lines that make no sense, another
    /// program's changes.
    void KeepDatedCopy(const std::string& name, const std::string& old) {
        try {
            const std::string copy =
                Backups(library.Kind, library.backupFolder).KeepDated(folder + name, old);
            if (!copy.empty())
                copies.push_back(copy);
        } catch (const Failure& failure) {
            withoutCopies = withoutCopies || (goOnWithoutCopy && goOnWithoutCopy(failure.Description()));
            if (!withoutCopies)
                throw;
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
    const MissingCopy& goOnWithoutCopy;
    bool withoutCopies = false; ///< the user has agreed
    std::vector<std::string> copies;
    KeyedCollection<File> files;
    std::deque<std::string> unsettled; ///< names of the files in the replacements
    velmora::Files::Replacements replacements;
};

std::vector<std::string> Library::FilesToWrite() const {
    std::vector<std::string> names;
    std::unordered_set<std::string> met;
    const auto meet = [&](const std::string& name) {
        if (met.insert(name).second)
            names.push_back(name);
    };
    for (const auto& [name, record] : *this)
        if (record.IsDirty)
            meet(record.ShortName);
    for (const std::string& name : filesLosingRecords)
        meet(name);
    return names;
}

Library::OutsideChanges Library::ChangedOutside(const std::string& folder,
                                                const std::vector<std::string>& shortNames) const {
    OutsideChanges outside;
    for (const std::string& name : shortNames) {
        if (notWritten.Find(name))
            continue; // of case twins only one could be known
        const KnownFile* file = knownFiles.Find(name);
        try {
            const bool exists = velmora::Files::FileExists(folder + name);
            if (exists != (file != nullptr) ||
                (exists && HashOf(velmora::Files::ReadWhole(folder + name)) != file->Content))
                outside.Changed.push_back(name);
        } catch (const Failure&) {
            outside.Unreadable.push_back(name);
        }
    }
    return outside;
}
Library::OutsideChanges Library::ChangedOutside(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& [name, file] : knownFiles)
        names.push_back(name);
    return ChangedOutside(folder, names);
}

std::vector<std::string> Library::WriteFiles(const std::string& folder,
                                             const std::vector<std::string>& shortNames,
                                             const MissingCopy& goOnWithoutCopy) {
    auto copies = Writer(*this, folder, shortNames, goOnWithoutCopy).Run();
    velmora::Files::RemoveOldTemporaries(folder);
    return copies;
}

} // namespace velmora
