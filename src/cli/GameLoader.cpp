#include "cli/GameLoader.h"

#include "cli/ErrorCollector.h"
#include "cli/OutputText.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "records/BlockReader.h"
#include "services/Trap.h"

#include <algorithm>
#include <filesystem>

namespace velmora {

namespace {

constexpr std::int32_t FailureInvalidFileFormat = 321;

} // namespace

GameLoader::GameLoader(const std::string& gameDirectory, OwnFiles ownFiles)
    : gamePath(Files::Join(gameDirectory, "")), own(std::move(ownFiles)) {}

std::string GameLoader::FolderOf(const KindEntry& entry) const {
    return gamePath + std::string(entry.Folder);
}

void GameLoader::Load(const KindEntry& entry, Library& library, const ProblemSink& problems) {
    std::string file;
    LoadRequest request;
    request.Folder = FolderOf(entry);
    const auto named = own.find(&entry);
    request.OwnFile = named == own.end() ? std::string(entry.OwnFile) : named->second;
    request.BackupFolder = BackupFolder;
    request.MakeBackups = true;
    request.Problems = [&](const Problem& problem) {
        if (problem.Rule == LoadFailureRule)
            AddError(entry, problem.File, problem.Line, FailureInvalidFileFormat, problem.Text);
        else
            problems(problem);
    };
    request.Reading = [&](const std::string& name, std::size_t, std::size_t) { file = name; };
    if (entry.MakeAdmission)
        library.Admit = entry.MakeAdmission();

    if (!LoadTrapped(entry, library, request, file)) {
        missingFolders.push_back(request.Folder);
        return;
    }
    ++foldersLoaded;
    SetFoldersAside(entry);
}

bool GameLoader::LoadTrapped(const KindEntry& entry, Library& library, const LoadRequest& request,
                             const std::string& file) {
    ErrorCollector collector;
    bool folderFound = true;
    TrapEvent(entry.Kind->Routine("Form_Load"), NoInputParms, [&] {
        Trap(entry.Kind->Routine("InitForm"), NoInputParms, [&] { folderFound = library.Load(request); });
    });
    for (const auto& [details, routines] : collector.Reports)
        AddError(entry, file, LineNamedIn(details.Description), details.Number, details.Description,
                 routines);
    return folderFound;
}

void GameLoader::AddError(const KindEntry& entry, const std::string& file, std::size_t line,
                          std::int32_t number, const std::string& text, std::vector<std::string> routines) {
    Problem told{LoadFailureRule, text, Severity::Error, {}, {}, entry.Kind->Word, file, line};
    errors.push_back({&entry, std::move(told), FolderOf(entry) + file, number, std::move(routines)});
}

void GameLoader::SetFoldersAside(const KindEntry& entry) {
    namespace fs = std::filesystem;
    const std::string folder = FolderOf(entry);
    std::vector<std::string> names;
    std::error_code ignored; // a folder that cannot be listed has failed the loading already
    for (const auto& item : fs::directory_iterator(Files::HostPath(folder), ignored))
        if (item.is_directory(ignored))
            if (std::string name = Files::PathText(item.path().filename());
                CodePage::EndsWithNoCase(name, entry.Kind->Extension))
                names.push_back(std::move(name));
    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
        AddError(entry, name, 0, FailurePathFileAccess, "This is a directory, not a file");
}

bool GameLoader::Report(std::ostream& err) const {
    for (const LoadError& error : errors)
        err << "velwriter: " << OutputText::Path(error.Path) << ": " << OutputText::OneLine(error.Told.Text)
            << '\n';
    for (const std::string& folder : missingFolders)
        err << "velwriter: " << OutputText::Path(folder) << ": no such directory\n";
    return errors.empty() && foldersLoaded > 0;
}

} // namespace velmora
