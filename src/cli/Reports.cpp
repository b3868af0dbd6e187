#include "cli/Reports.h"

#include "cli/OutputText.h"
#include "kinds/Rules.h"
#include "platform/Files.h"

namespace velmora {

namespace {

class TextReport : public CheckReport {
  public:
    TextReport(std::ostream& out, const GameLoader& loader) {
        for (const KindEntry& kind : Kinds())
            lines.try_emplace(&kind, out, loader.FolderOf(kind));
    }

    void Begin(Section /*section*/) override {}
    void Add(const KindEntry& kind, const Problem& message) override { lines.at(&kind).Print(message); }
    void Add(const KindEntry& kind, const Record& /*record*/, const std::vector<Problem>& problems) override {
        for (const Problem& problem : problems)
            lines.at(&kind).Print(problem, problem.Record + ": ");
    }
    void Add(const LoadError& error) override { lines.at(error.Kind).Print(error.Told); }
    void Finish() override {}

  private:
    std::unordered_map<const KindEntry*, ProblemLines> lines;
};

class JsonReport : public CheckReport {
  public:
    explicit JsonReport(std::ostream& out) : document(out) {}

    void Begin(Section section) override {
        constexpr std::string_view names[] = {"messages", "reasons", "errors"};
        document.BeginList(names[static_cast<std::size_t>(section)]);
    }
    void Add(const KindEntry& /*kind*/, const Problem& message) override {
        document.Add(ProblemToJson(message));
    }
    void Add(const KindEntry& kind, const Record& record, const std::vector<Problem>& problems) override {
        Json texts = Json::array();
        Json rules = Json::array();
        Json findings = Json::array();
        for (const Problem& problem : problems) {
            if (problem.Level == Severity::Note) {
                notes.push_back(ProblemToJson(problem));
                continue;
            }
            texts.push_back(JsonText(problem.Text));
            rules.push_back(problem.Rule);
            findings.push_back(ProblemToJson(problem));
        }
        if (findings.empty())
            return;
        document.Add({{"kind", kind.Kind->Word},
                      {"file", JsonName(record.ShortName)},
                      {"line", record.HeaderLine},
                      {"name", JsonText(kind.Kind->NameOf(record))},
                      {"reasons", std::move(texts)},
                      {"rules", std::move(rules)},
                      {"findings", std::move(findings)}});
    }
    void Add(const LoadError& error) override { document.Add(ErrorToJson(error)); }
    void Finish() override {
        document.BeginList("notes");
        for (const Json& note : notes)
            document.Add(note);
        document.Finish();
    }

  private:
    JsonDocument document;
    std::vector<Json> notes;
};

} // namespace

ProblemLines::ProblemLines(std::ostream& stream, const std::string& folderPath) : out(stream) {
    // The host's form of a path has lost the separator at its end.
    if (!folderPath.empty())
        folder = OutputText::Path(folderPath) + Files::Separator;
}

void ProblemLines::Print(const Problem& problem, const std::string& before) {
    out << folder << OutputText::Name(problem.File) << ':' << problem.Line << ": " << NameOf(problem.Level)
        << ": " << OutputText::OneLine(before + problem.Text) << " [" << problem.Rule << "]\n";
}

Json ProblemToJson(const Problem& problem) {
    // The text may mention the file.
    return {{"kind", problem.Kind},   {"file", JsonName(problem.File)},   {"line", problem.Line},
            {"rule", problem.Rule},   {"text", JsonName(problem.Text)},   {"name", JsonText(problem.Record)},
            {"field", problem.Field}, {"severity", NameOf(problem.Level)}};
}

Json ErrorToJson(const LoadError& error) {
    return {{"kind", error.Kind->Kind->Word}, {"file", JsonName(error.Told.File)},
            {"number", error.Number},         {"description", JsonName(error.Told.Text)},
            {"routines", error.Routines},     {"line", error.Told.Line},
            {"field", error.Told.Field},      {"severity", NameOf(error.Told.Level)}};
}

std::unique_ptr<CheckReport> MakeTextReport(std::ostream& out, const GameLoader& loader) {
    return std::make_unique<TextReport>(out, loader);
}

std::unique_ptr<CheckReport> MakeJsonReport(std::ostream& out) {
    return std::make_unique<JsonReport>(out);
}

} // namespace velmora
