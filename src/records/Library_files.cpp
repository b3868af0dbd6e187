// The library's reading from disk: a folder of files, with backups.
#include "platform/Files.h"
#include "records/BlockReader.h"
#include "records/FilesAhead.h"
#include "records/Library.h"
#include "services/BubbleSort.h"
#include "services/Trap.h"

#include <algorithm>

namespace velmora {

bool Library::Load(const LoadRequest& request) {
    return Trap(Kind.Routine(Kind.LoadRoutine), {ParameterText(request.MakeBackups)}, [&] {
        if (!velmora::Files::FolderExists(request.Folder)) {
            request.Findings(
                {Kind.Word, {}, 0, "no-data-directory", std::string(Kind.MissingFolderText), Icon::Critical});
            return false;
        }
        const std::vector<std::string> paths = ListAndBackUp(request);
        FilesAhead ahead(Kind, paths);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            const std::string name = velmora::Files::NameOf(paths[i]);
            if (request.Reading)
                request.Reading(name, i, paths.size());
            ParseFile(request, paths[i], ahead.Next());
            files.TryAdd(name, static_cast<std::int32_t>(i));
        }
        files.TryAdd(request.OwnFile, static_cast<std::int32_t>(paths.size()));
        return true;
    });
}

std::vector<std::string> Library::ListAndBackUp(const LoadRequest& request) {
    backupFolder = request.BackupFolder;
    std::vector<std::string> names;
    for (std::string& name : velmora::Files::ListFiles(request.Folder))
        if (CodePage::EndsWithNoCase(name, Kind.Extension))
            names.push_back(std::move(name));
    std::sort(names.begin(), names.end()); // names that differ in case only have no order of their own
    BubbleSort(names);
    ReportCaseTwins(request, names);
    // The first in order has the shorter name for its backups; a whole file name is never a shorter one.
    KeyedCollection<bool> bases;
    std::vector<std::string> paths;
    for (const std::string& name : names) {
        paths.push_back(request.Folder + name);
        std::string base = CodePage::ReplaceNoCase(name, Kind.Extension, "");
        if (!bases.TryAdd(base, true))
            base = name;
        if (request.MakeBackups && request.AutoBackup)
            BackUp(request, name, base);
    }
    return paths;
}

void Library::ReportCaseTwins(const LoadRequest& request, const std::vector<std::string>& names) {
    KeyedCollection<std::string> met;
    for (const std::string& name : names) {
        if (met.TryAdd(name, name))
            continue;
        const std::string& twin = *met.Find(name);
        const std::string both = std::string(twin).append(" and ").append(name);
        caseTwins.TryAdd(name, both);
        request.Findings({Kind.Word, name, 0, "case-twin-files",
                          std::string("The files ")
                              .append(both)
                              .append(" are one file to the game.  Neither will be written to."),
                          Icon::Exclamation});
    }
}

void Library::BackUp(const LoadRequest& request, const std::string& fileName, const std::string& base) const {
    const auto backup = [&](std::string_view which) {
        return std::string(request.BackupFolder).append(base).append(which).append(Kind.BackupMark);
    };
    if (!velmora::Files::FileExists(backup(".1st")))
        velmora::Files::CopyFile(request.Folder + fileName, backup(".1st"));
    velmora::Files::CopyFile(request.Folder + fileName, backup(".latest"));
}

void Library::NoteContent(const std::string& shortName, const ContentHash& content,
                          const LossCounts& losses) {
    const KnownFile file{content, losses};
    if (!knownFiles.TryAdd(shortName, file))
        *knownFiles.Find(shortName) = file;
}

void Library::ParseFile(const LoadRequest& request, const std::string& path) {
    FileBytes file;
    file.Read(Kind, path);
    ParseFile(request, path, file);
}

void Library::ParseFile(const LoadRequest& request, const std::string& path, const FileBytes& file) {
    const std::string name = velmora::Files::NameOf(path);
    Trap(Kind.Routine(Kind.ParseRoutine), {name}, [&] {
        if (file.Failure)
            std::rethrow_exception(file.Failure);
        if (request.Accept && !request.Accept(name, file.Bytes))
            return;
        const auto place = static_cast<std::int32_t>(std::min(files.IndexOf(name), files.Count()));
        BlockReader reader(
            Kind, name, request.Findings, [&](std::unique_ptr<Record> record, std::size_t line) {
                record->FileOnDisk = place;
                reader.Losses.Add(Loss::Dropped,
                                  !Take(std::move(record), path, name, line, request.Findings));
            });
        NoteContent(name, file.Content);
        reader.Read(file.Blocks);
        NoteContent(name, file.Content, reader.Losses);
    });
}

bool Library::Take(std::unique_ptr<Record> record, const std::string& path, const std::string& fileName,
                   std::size_t line, const FindingSink& findings) {
    record->FileName = path;
    record->ShortName = fileName;
    record->OrigNumber = Kind.Number(*record) = static_cast<std::int32_t>(records.Count()) + 1;
    const auto report = [&](std::string_view rule, std::string text) {
        findings({Kind.Word, fileName, line, rule, std::move(text)});
    };
    const bool admitted = !Admit || Admit(*record, report);
    const std::string& name = NameOf(*record); // stays where it is when the record moves
    if (admitted && records.TryAdd(name, std::move(record)))
        return true;
    if (admitted || records.Exists(name))
        report(Kind.DuplicateRule, std::string(Kind.DuplicateText) + name + ", File = " + fileName);
    return false;
}

LossCounts Library::LossesOf(const std::string& shortName, std::string_view bytes) const {
    const KnownFile* file = knownFiles.Find(shortName);
    if (file && file->Content == HashOf(bytes))
        return file->Losses;
    // Another program's content: what it holds has not been read.
    KeyedCollection<bool> met;
    const FindingSink nobody = [](const Finding&) {};
    BlockReader reader(Kind, shortName, nobody, [&](const std::unique_ptr<Record>& record, std::size_t) {
        const Record* mine = Find(NameOf(*record));
        const bool kept =
            mine && CodePage::EqualNoCase(mine->ShortName, shortName) && met.TryAdd(NameOf(*record), true);
        reader.Losses.Add(Loss::Dropped, !kept);
    });
    reader.Read(bytes);
    return reader.Losses;
}

} // namespace velmora
