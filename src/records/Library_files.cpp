// The library's reading from disk: a folder of files, with backups.
#include "platform/Files.h"
#include "records/Backups.h"
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
            request.Problems({.Rule = "no-data-directory",
                              .Text = std::string(Kind.MissingFolderText),
                              .Kind = Kind.Word,
                              .MessageIcon = Icon::Critical});
            return false;
        }
        backupFolder = request.BackupFolder;
        const std::vector<std::string> names = ListFiles(request);
        if (request.MakeBackups && request.AutoBackup)
            Backups(Kind, backupFolder).KeepLoaded(request.Folder, names, request.Reading, request.Problems);
        std::vector<std::string> paths;
        paths.reserve(names.size());
        for (const std::string& name : names)
            paths.push_back(request.Folder + name);
        FilesAhead ahead(Kind, paths);
        for (std::size_t i = 0; i < paths.size(); ++i) {
            if (request.Reading)
                request.Reading(names[i], i, paths.size());
            ParseFile(request, paths[i], ahead.Next());
            files.TryAdd(names[i], static_cast<std::int32_t>(i));
        }
        files.TryAdd(request.OwnFile, static_cast<std::int32_t>(paths.size()));
        return true;
    });
}

std::vector<std::string> Library::ListFiles(const LoadRequest& request) {
    std::vector<std::string> names;
    for (std::string& name : velmora::Files::ListFiles(request.Folder)) {
        if (!CodePage::EndsWithNoCase(name, Kind.Extension))
            continue;
        if (velmora::Files::NameOf(name) == name)
            names.push_back(std::move(name));
        else
            request.Problems({.Rule = "unusable-file-name",
                              .Text = "The file " + name +
                                      " is left out: to the game a \\ separates a folder from what is in it.",
                              .Kind = Kind.Word,
                              .File = name,
                              .MessageIcon = Icon::Exclamation});
    }
    std::sort(names.begin(), names.end()); // names that differ in case only have no order of their own
    BubbleSort(names);
    ReportCaseTwins(request, names);
    return names;
}

void Library::ReportCaseTwins(const LoadRequest& request, const std::vector<std::string>& names) {
    KeyedCollection<std::string> met;
    for (const std::string& name : names) {
        if (met.TryAdd(name, name))
            continue;
        const std::string& twin = *met.Find(name);
        const std::string both = std::string(twin).append(" and ").append(name);
        notWritten.TryAdd(name, both + " are one file to the game");
        request.Problems(
            {.Rule = "case-twin-files",
             .Text = "The files " + both + " are one file to the game.  Neither will be written to.",
             .Kind = Kind.Word,
             .File = name,
             .MessageIcon = Icon::Exclamation});
    }
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
        if (!file.Fault.Text.empty()) {
            notWritten.TryAdd(name, name + " could not be read: " + file.Fault.Text);
            request.Problems({.Rule = LoadFailureRule,
                              .Text = file.Fault.Text,
                              .Level = Severity::Error,
                              .Kind = Kind.Word,
                              .File = name,
                              .Line = file.Fault.Line,
                              .MessageIcon = Icon::Exclamation});
            return;
        }
        if (request.Accept && !request.Accept(name, file.Bytes))
            return;
        const auto place = static_cast<std::int32_t>(std::min(files.IndexOf(name), files.Count()));
        BlockReader reader(
            Kind, name, request.Problems, [&](std::unique_ptr<Record> record, std::size_t line) {
                record->FileOnDisk = place;
                reader.Losses.Add(Loss::Dropped,
                                  !Take(std::move(record), path, name, line, request.Problems));
            });
        NoteContent(name, file.Content);
        reader.Read(file.Blocks);
        NoteContent(name, file.Content, reader.Losses);
    });
}

bool Library::Take(std::unique_ptr<Record> record, const std::string& path, const std::string& fileName,
                   std::size_t line, const ProblemSink& problems) {
    record->FileName = path;
    record->ShortName = fileName;
    record->OrigNumber = Kind.Number(*record) = static_cast<std::int32_t>(records.Count()) + 1;
    const std::string& name = NameOf(*record); // stays where it is when the record moves
    const auto report = [&](std::string_view rule, std::string_view field, std::string text) {
        problems({rule, std::move(text), Severity::Warning, field, name, Kind.Word, fileName, line});
    };
    const bool admitted = !Admit || Admit(*record, [&](std::string_view rule, std::string text) {
        report(rule, Kind.HeaderNumber->Property, std::move(text));
    });
    if (admitted && records.TryAdd(name, std::move(record)))
        return true;
    if (admitted || records.Exists(name))
        report(Kind.DuplicateRule, Kind.Name.Property,
               std::string(Kind.DuplicateText) + name + ", File = " + fileName);
    return false;
}

LossCounts Library::LossesOf(const std::string& shortName, std::string_view bytes) const {
    const KnownFile* file = knownFiles.Find(shortName);
    if (file && file->Content == HashOf(bytes))
        return file->Losses;
    // Another program's content: what it holds has not been read.
    KeyedCollection<bool> met;
    const ProblemSink nobody = [](const Problem&) {};
    BlockReader reader(Kind, shortName, nobody, [&](const std::unique_ptr<Record>& record, std::size_t) {
        const Record* mine = Find(NameOf(*record));
        const bool kept = mine &&
                          (CodePage::EqualNoCase(mine->ShortName, shortName) ||
                           CodePage::EqualNoCase(FileOnDiskOf(*mine), shortName)) && // or moves
                          met.TryAdd(NameOf(*record), true);
        reader.Losses.Add(Loss::Dropped, !kept);
    });
    reader.Read(bytes);
    return reader.Losses;
}

} // namespace velmora
