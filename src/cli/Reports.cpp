#include "cli/Reports.h"

#include "cli/OutputText.h"
#include "cli/RuleTable.h"
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
    void Add(const KindEntry& kind, const Finding& message) override { lines.at(&kind).Warn(message); }
    void Add(const KindEntry& kind, const Record& record, const std::vector<Reason>& reasons) override {
        for (const Reason& reason : reasons)
            lines.at(&kind).Fail(record.ShortName, record.HeaderLine,
                                 kind.Kind->NameOf(record) + ": " + reason.Text, reason.Rule);
    }
    void Add(const LoadError& error) override {
        lines.at(error.Kind).Fail(error.File, error.Line, error.Description, LoadFailureRule);
    }
    void Finish() override {}

  private:
    std::unordered_map<const KindEntry*, FindingLines> lines;
};

class JsonReport : public CheckReport {
  public:
    explicit JsonReport(std::ostream& out) : document(out) {}

    void Begin(Section section) override {
        constexpr std::string_view names[] = {"messages", "reasons", "errors"};
        document.BeginList(names[static_cast<std::size_t>(section)]);
    }
    void Add(const KindEntry& /*kind*/, const Finding& message) override {
        document.Add(MessageToJson(message));
    }
    void Add(const KindEntry& kind, const Record& record, const std::vector<Reason>& reasons) override {
        Json texts = Json::array();
        Json rules = Json::array();
        for (const Reason& reason : reasons) {
            texts.push_back(JsonText(reason.Text));
            rules.push_back(reason.Rule);
        }
        document.Add({{"kind", kind.Kind->Word},
                      {"file", JsonName(record.ShortName)},
                      {"line", record.HeaderLine},
                      {"name", JsonText(kind.Kind->NameOf(record))},
                      {"reasons", std::move(texts)},
                      {"rules", std::move(rules)}});
    }
    void Add(const LoadError& error) override { document.Add(ErrorToJson(error)); }
    void Finish() override { document.Finish(); }

  private:
    JsonDocument document;
};

} // namespace

FindingLines::FindingLines(std::ostream& stream, const std::string& folderPath) : out(stream) {
    // The host's form of a path has lost the separator at its end.
    if (!folderPath.empty())
        folder = OutputText::Path(folderPath) + Files::Separator;
}

void FindingLines::Warn(const Finding& finding) {
    Print(finding.File, finding.Line, "warning", finding.Text, finding.Rule);
}

void FindingLines::Fail(std::string_view file, std::size_t line, const std::string& text,
                        std::string_view rule) {
    Print(file, line, "error", text, rule);
}

void FindingLines::Print(std::string_view file, std::size_t line, std::string_view severity,
                         const std::string& text, std::string_view rule) {
    out << folder << OutputText::Name(file) << ':' << line << ": " << severity << ": "
        << OutputText::OneLine(text) << " [" << rule << "]\n";
}

Json MessageToJson(const Finding& finding) {
    return {{"kind", finding.Kind},
            {"file", JsonName(finding.File)},
            {"line", finding.Line},
            {"rule", finding.Rule},
            {"text", JsonText(finding.Text)}};
}

Json ErrorToJson(const LoadError& error) {
    return {{"kind", error.Kind->Kind->Word},
            {"file", JsonName(error.File)},
            {"number", error.Number},
            {"description", JsonText(error.Description)},
            {"routines", error.Routines}};
}

std::unique_ptr<CheckReport> MakeTextReport(std::ostream& out, const GameLoader& loader) {
    return std::make_unique<TextReport>(out, loader);
}

std::unique_ptr<CheckReport> MakeJsonReport(std::ostream& out) {
    return std::make_unique<JsonReport>(out);
}

} // namespace velmora
