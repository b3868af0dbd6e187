#include "cli/Commands.h"
#include "cli/RecordJson.h"
#include "cli/Reports.h"
#include "kinds/Sheets.h"
#include "platform/Utf8.h"

namespace velmora {

namespace {

/// One run of `export`.
class Exporting {
  public:
    explicit Exporting(const ExportOptions& chosen)
        : options(chosen), loader(chosen.Game.Directory, chosen.Game.Own) {}

    void WriteJson(std::ostream& out) {
        std::vector<Problem> messages;
        JsonDocument document(out);
        // A kind at a time: only one library is held at once.
        for (const KindEntry* kind : options.Game.Kinds)
            WriteKind(*kind, document, messages);
        document.BeginList("messages");
        for (const Problem& message : messages)
            document.Add(ProblemToJson(message));
        document.BeginList("errors");
        for (const LoadError& error : loader.Errors())
            document.Add(ErrorToJson(error));
        document.Finish();
    }

    /// What loading has to tell finds no place in a table.
    void WriteCsv(std::ostream& out, std::ostream& err) {
        const KindEntry& kind = *options.Game.Kinds.front();
        Library library(*kind.Kind);
        LoadTelling(kind, library, err);
        out << CsvHeader(RecordToJson(kind, *kind.Kind->Make())) << '\n';
        for (const auto& [name, record] : library)
            out << CsvRow(RecordToJson(kind, record)) << '\n';
    }

    /// Tables for people, in UTF-8 that spreadsheets recognise.
    void WriteSheet(std::ostream& out, std::ostream& err) {
        const KindEntry& kind = *options.Game.Kinds.front();
        Library library(*kind.Kind);
        LoadTelling(kind, library, err);
        out << Utf8::ByteOrderMark << Sheets::RecordHeader(*kind.Kind, options.Separator);
        for (const auto& [name, record] : library)
            out << Sheets::RecordRow(*kind.Kind, record, options.Separator);
    }

    void WriteTexts(std::ostream& out, std::ostream& err) {
        const bool po = options.As == ExportOptions::Form::Po;
        if (po)
            out << Sheets::PoHeader();
        else
            out << Utf8::ByteOrderMark << Sheets::TextHeader(options.Separator);
        for (const KindEntry* kind : options.Game.Kinds) {
            if (PlayerTextsOf(*kind->Kind).empty())
                continue;
            Library library(*kind->Kind);
            LoadTelling(*kind, library, err);
            FieldLines lines(*kind->Kind);
            for (const auto& [name, record] : library)
                Sheets::ForEachText(*kind->Kind, record, lines, [&](const Sheets::Text& text) {
                    out << (po ? Sheets::PoEntry(text) : Sheets::TextRow(text, options.Separator));
                });
        }
    }

    bool Report(std::ostream& err) const { return loader.Report(err); }

  private:
    void LoadTelling(const KindEntry& kind, Library& library, std::ostream& err) {
        ProblemLines lines(err, loader.FolderOf(kind));
        Load(kind, library, [&](const Problem& message) { lines.Print(message); });
    }

    void Load(const KindEntry& kind, Library& library, const ProblemSink& problems) {
        loader.Load(kind, library, [&](const Problem& problem) {
            if (problem.Rule != UnfinishedBlockRule) // no message of the windows
                problems(problem);
        });
        if (options.SortByName)
            library.SortBy(1);
    }

    void WriteKind(const KindEntry& kind, JsonDocument& document, std::vector<Problem>& messages) {
        Library library(*kind.Kind);
        Load(kind, library, [&](const Problem& message) { messages.push_back(message); });
        document.BeginList(kind.Option);
        for (const auto& [name, record] : library)
            document.Add(RecordToJson(kind, record));
        document.BeginList(kind.FileList);
        for (const auto& [name, item] : library.FileList())
            document.Add({{"name", JsonName(name)}, {"item", item}});
    }

    const ExportOptions& options;
    GameLoader loader;
};

} // namespace

ExitStatus RunExport(const ExportOptions& options, std::ostream& out, std::ostream& err) {
    Exporting exporting(options);
    using Form = ExportOptions::Form;
    if (options.As == Form::Json)
        exporting.WriteJson(out);
    else if (options.As == Form::Csv)
        exporting.WriteCsv(out, err);
    else if (options.As == Form::Sheet)
        exporting.WriteSheet(out, err);
    else
        exporting.WriteTexts(out, err);
    return exporting.Report(err) ? ExitWell : ExitFailure;
}

} // namespace velmora
