#include "cli/Checking.h"
#include "cli/OutputText.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/FolderStamps.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <sstream>
#include <thread>
#include <utility>

namespace velmora {

namespace {

/// Short beside the 0.3 s in which a change is to show, long enough to leave the processor idle.
constexpr std::chrono::milliseconds BetweenLooks{50};

/// What a check found, in lines, file by file, so that the lines of one can be replaced.
class Findings {
  public:
    struct OfFile {
        std::string Messages;
        std::string Reasons;
    };
    OfFile& Of(const KindEntry& kind, const std::string& file) { return files[{&kind, file}]; }
    void AddError(const std::string& line) { errors += line; }

    void Print(std::ostream& out) const {
        for (const auto& [place, lines] : files)
            out << lines.Messages;
        for (const auto& [place, lines] : files)
            out << lines.Reasons;
        out << errors;
    }

  private:
    std::map<std::pair<const KindEntry*, std::string>, OfFile> files; ///< kinds stand in one table, in order
    std::string errors;
};

/// Files what is found, in the words of the text report.
class FilingReport : public CheckReport {
  public:
    FilingReport(Findings& kept, const GameLoader& places)
        : findings(kept), text(MakeTextReport(line, places)) {}

    void Begin(Section /*section*/) override {}
    void Add(const KindEntry& kind, const Problem& message) override {
        text->Add(kind, message);
        findings.Of(kind, message.File).Messages += TakeLine();
    }
    void Add(const KindEntry& kind, const Record& record, const std::vector<Problem>& problems) override {
        text->Add(kind, record, problems);
        findings.Of(kind, record.ShortName).Reasons += TakeLine();
    }
    void Add(const LoadError& error) override {
        text->Add(error);
        findings.AddError(TakeLine());
    }
    void Finish() override {}

  private:
    std::string TakeLine() {
        std::string taken = line.str();
        line.str({});
        return taken;
    }

    Findings& findings;
    std::ostringstream line;
    std::unique_ptr<CheckReport> text;
};

/// A game that is checked again after each change: a changed file by itself where that tells all, else
/// everything.
class Watching {
  public:
    Watching(const CheckOptions& chosen, std::ostream& errors)
        : options(chosen), err(errors), places(chosen.Game.Directory, chosen.Game.Own) {
        // What is wrong with the options themselves ends it at once.
        const Checking probe(options, std::unique_ptr<CheckReport>());
    }

    void CheckAll() {
        // Before anything is read: what changes meanwhile has to show.
        stamps = {};
        stamps.Add(places.GamePath(), true); // velwriter.ignore, velmora.dic
        for (const KindEntry* kind : options.Game.Kinds)
            stamps.Add(places.FolderOf(*kind), true);
        findings = {};
        files.clear();
        checking = std::make_unique<Checking>(options, std::make_unique<FilingReport>(findings, places));
        checking->Run(err);
        for (const auto& library : checking->TakeLibraries())
            NoteFiles(*library);
        WatchPictures();
    }

    void Check(const Files::FolderStamps::Changes& changed) {
        if (changed.AnyFolder ||
            !std::ranges::all_of(changed.Files, [this](const auto& path) { return CheckAgain(path); }))
            return CheckAll();
        WatchPictures();
    }

    Files::FolderStamps::Changes WaitForChanges() {
        for (;;) {
            Files::FolderStamps::Changes changed = stamps.Changed();
            std::erase_if(changed.Files, [](const auto& path) { return !Matters(path); });
            if (changed.AnyFolder || !changed.Files.empty())
                return changed;
            std::this_thread::sleep_for(BetweenLooks);
        }
    }

    void Print(std::ostream& out) const { findings.Print(out); }

  private:
    struct KnownFile {
        const KindEntry* Kind;
        std::vector<std::string> Names = {}; ///< of its records
    };

    static bool Matters(const std::filesystem::path& path) {
        const std::string name = Files::PathText(path.filename());
        return KindOfFile(name) != nullptr || CodePage::EqualNoCase(name, "velwriter.ignore") ||
               CodePage::EqualNoCase(name, "velmora.dic");
    }

    void NoteFiles(const Library& library) {
        const auto kind = std::ranges::find_if(
            options.Game.Kinds, [&](const KindEntry* entry) { return entry->Kind == &library.Kind; });
        for (const auto& [name, record] : library)
            files.try_emplace(Files::HostPath(record.FileName), KnownFile{*kind})
                .first->second.Names.push_back(name);
    }

    /// A baseline counts through the whole game, spelling learns from it, and modules share their IDs.
    bool CheckAgain(const std::filesystem::path& path) {
        const auto file = files.find(path);
        if (file == files.end() || !checking || checking->AnyFailed() || !options.BaselineFile.empty() ||
            !options.Dictionaries.empty() || file->second.Kind->MakeAdmission)
            return false;
        const KindEntry& kind = *file->second.Kind;
        const std::string name = Files::PathText(path.filename());
        Findings::OfFile& lines = findings.Of(kind, name);
        const Findings::OfFile before = std::exchange(lines, {});
        if (checking->CheckAgain(kind, places.FolderOf(kind) + name, file->second.Names))
            return true;
        lines = before;
        return false;
    }

    void WatchPictures() {
        for (const std::string& folder : checking->Context().Folders())
            stamps.Add(folder, false);
    }

    const CheckOptions& options;
    std::ostream& err;
    GameLoader places;
    Files::FolderStamps stamps;
    Findings findings;
    std::map<std::filesystem::path, KnownFile> files;
    std::unique_ptr<Checking> checking;
};

} // namespace

/// The lines around each round tell an editor where its findings begin and end.
ExitStatus RunWatch(const CheckOptions& options, std::ostream& out, std::ostream& err) {
    Watching watching(options, err);
    for (Files::FolderStamps::Changes changed{.AnyFolder = true};; changed = watching.WaitForChanges()) {
        out << "velwriter: checking\n";
        try {
            watching.Check(changed);
            watching.Print(out);
        } catch (const std::exception& exception) {
            err << "velwriter: " << OutputText::OneLine(exception.what()) << '\n';
        }
        out << "velwriter: waiting for changes\n";
        err.flush();
        if (!out.flush())
            return ExitFailure;
    }
}

} // namespace velmora
