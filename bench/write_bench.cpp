// Writing a library back, beside copying the same bytes.
#include "BenchLibrary.h"
#include "Measure.h"

#include "TempFolder.h"
#include "platform/Files.h"
#include "records/Edits.h"

#include <fcntl.h>
#include <unistd.h>

namespace velmora {
namespace {

/// A library of its own that may be written over.
struct Writable {
    explicit Writable(std::size_t events) : From(LibraryOf(events)) {
        for (const std::string& path : From.EventPaths)
            Temp.Write("Data/" + Files::NameOf(path), Files::ReadWhole(path));
        Temp.Write("BackupData/", "");
        LoadRequest request;
        request.Folder = Temp / "Data/";
        request.BackupFolder = Temp / "BackupData/";
        request.OwnFile = "MyEvents.event";
        request.Problems = [](const Problem&) {};
        Loaded.Load(request);
    }

    /// Gives one record of every file another text.
    void ChangeEveryFile() {
        ++round;
        Edits changes(Loaded);
        Edits::Step step(Loaded, "round");
        std::string last;
        for (const auto& [name, record] : Loaded) {
            if (record.ShortName == last)
                continue;
            last = record.ShortName;
            auto& event = static_cast<clsEvent&>(step.Change(name));
            event.Title = "Round " + std::to_string(round);
            event.IsDirty = true;
        }
        changes.Do(std::move(step));
    }

    const BenchLibrary& From;
    TempFolder Temp;
    Library Loaded{EventKind};

  private:
    int round = 0;
};

void CopyWithFlush(const std::string& from, const std::string& to) {
    const std::string bytes = Files::ReadWhole(from);
    const int file = ::open(to.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    if (::write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()) || ::fsync(file) != 0)
        throw std::runtime_error("the copy failed");
    ::close(file);
}

double CopyTime(const Writable& files) {
    const std::string target = files.Temp / "Copy/";
    std::filesystem::remove_all(target);
    Files::CreateFolder(target);
    return SecondsOf([&] {
        for (const std::string& path : files.From.EventPaths)
            CopyWithFlush(path, target + Files::NameOf(path));
    });
}

void Write(benchmark::State& state) {
    Writable files(static_cast<std::size_t>(state.range(0)));
    const std::string folder = files.Temp / "Data/";
    std::vector<std::string> names;
    double copying = 1e9;
    // By turns, for the disk has good times and bad ones.
    const double least = LeastTime([&] { files.Loaded.WriteFiles(folder, names); },
                                   [&] {
                                       copying = std::min(copying, CopyTime(files));
                                       files.ChangeEveryFile();
                                       names = files.Loaded.FilesToWrite();
                                   });
    Library again(EventKind);
    LoadRequest request;
    request.Folder = folder;
    request.Problems = [](const Problem&) {};
    again.Load(request);
    if (names.size() != files.From.EventPaths.size() ||
        BlockOf(EventKind, again.At(0)) != BlockOf(EventKind, files.Loaded.At(0)))
        return state.SkipWithError("not every file was written");
    Tell(state, least, {.Ratio = 2}, copying);
}
VELMORA_MEASURE(Write);

} // namespace
} // namespace velmora
