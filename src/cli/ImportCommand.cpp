#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "kinds/Import.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "records/WordDiff.h"
#include "services/modWriter.h"

#include <algorithm>
#include <filesystem>
#include <memory>

namespace velmora {

namespace {

/// What one kind of record gets of a table.
struct Part {
    Part(const KindEntry& entry, const CheckContext& context, std::string own)
        : Kind(entry), Records(*entry.Kind), Table(Records, context, std::move(own)) {}

    const KindEntry& Kind;
    Library Records;
    Import Table;
};

/// One run of `import`.
class Importing {
  public:
    Importing(const ImportOptions& chosen, std::ostream& output, std::ostream& errors)
        : options(chosen), out(output), err(errors), loader(chosen.Game.Directory, chosen.Game.Own) {
        loader.BackupFolder = loader.GamePath() + "BackupData" + Files::Separator;
    }

    ExitStatus Run() {
        const std::string bytes = Files::ReadWhole(options.File);
        for (const KindEntry* kind : KindsOf(bytes))
            Load(*kind);
        if (!loader.Report(err)) // what was not read to its end takes no changes
            return ExitFailure;
        bool anyLeft = false;
        for (const auto& part : parts) {
            part->Table.Read(bytes);
            Tell(*part);
            anyLeft |= part->Table.CountOf(Import::Outcome::Refused) +
                           part->Table.CountOf(Import::Outcome::Conflict) >
                       0;
        }
        if (options.Write)
            for (const auto& part : parts)
                Write(*part);
        return anyLeft ? ExitFound : ExitWell;
    }

  private:
    [[nodiscard]] std::vector<const KindEntry*> KindsOf(const std::string& bytes) const {
        std::vector<const KindEntry*> kinds = Import::KindsOf(bytes);
        std::erase_if(kinds, [&](const KindEntry* kind) {
            return std::ranges::find(options.Game.Kinds, kind) == options.Game.Kinds.end();
        });
        if (kinds.empty())
            throw Failure(FailureInvalidArgument,
                          options.File + ": no column names records of these kinds (EventName, UPIssueName), "
                                         "nor are there the columns source, target and ID");
        if (!kinds.front()->Written)
            throw Failure(FailureInvalidArgument, options.File + ": starbase modules are only read");
        return kinds;
    }

    void Load(const KindEntry& kind) {
        const auto own = options.Game.Own.find(&kind);
        parts.push_back(std::make_unique<Part>(
            kind, context, own == options.Game.Own.end() ? std::string(kind.OwnFile) : own->second));
        loader.Load(kind, parts.back()->Records, [](const Problem&) {});
    }

    void Tell(const Part& part) {
        if (&part == parts.front().get())
            for (const std::string& column : part.Table.UnknownColumns())
                err << "velwriter: " << OutputText::Path(options.File)
                    << ": this column is not known and left out: "
                    << OutputText::OneLine(CodePage::FromUtf8Lossy(column)) << '\n';
        for (const Import::Row& row : part.Table.Rows())
            Tell(row);
        const auto count = [&](Import::Outcome outcome) { return part.Table.CountOf(outcome); };
        out << part.Kind.Option << ": " << count(Import::Outcome::New) << " new, "
            << count(Import::Outcome::Changed) << " changed, " << count(Import::Outcome::Refused)
            << " refused, " << count(Import::Outcome::Conflict) << " in conflict, "
            << count(Import::Outcome::Same) << " the same\n";
    }

    void Tell(const Import::Row& row) {
        const std::string name = OutputText::OneLine(row.Name);
        if (row.Is == Import::Outcome::Refused || row.Is == Import::Outcome::Conflict) {
            out << OutputText::Path(options.File) << ':' << row.Line << ": "
                << (row.Is == Import::Outcome::Refused ? "refused" : "conflict") << ": " << name << ": "
                << OutputText::OneLine(row.Reason);
            out << (row.Rule.empty() ? "" : " [" + std::string(row.Rule) + "]") << '\n';
            return;
        }
        if (row.Is == Import::Outcome::New) {
            out << "new: " << name << '\n';
            return;
        }
        for (const Import::FieldChange& change : row.Changes)
            out << "changed: " << name << ": " << change.Property << ": "
                << OutputText::OneLine(DiffWords(change.Before, change.After)) << '\n';
    }

    void Write(Part& part) {
        Edits edits(part.Records);
        Edits::Step step = part.Table.StepOf(loader.FolderOf(part.Kind));
        if (step.Count() == 0)
            return;
        edits.Do(std::move(step));
        const std::vector<std::string> files = part.Records.FilesToWrite();
        const bool hadFolder = Files::FolderExists(loader.BackupFolder);
        Files::CreateFolder(loader.BackupFolder);
        const std::vector<std::string> copies = edits.Write(loader.FolderOf(part.Kind), files);
        std::error_code notEmpty;
        if (!hadFolder)
            std::filesystem::remove(Files::HostPath(loader.BackupFolder), notEmpty);
        for (const std::string& copy : copies)
            out << "copy of what the file had: " << OutputText::Path(copy) << '\n';
        for (const std::string& file : files)
            out << "written: " << OutputText::Path(loader.FolderOf(part.Kind) + file) << '\n';
    }

    const ImportOptions& options;
    std::ostream& out;
    std::ostream& err;
    GameLoader loader;
    CheckContext context{loader.GamePath()};
    std::vector<std::unique_ptr<Part>> parts;
};

} // namespace

ExitStatus RunImport(const ImportOptions& options, std::ostream& out, std::ostream& err) {
    return Importing(options, out, err).Run();
}

} // namespace velmora
