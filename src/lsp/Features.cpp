#include "lsp/Features.h"

#include "lsp/Line.h"
#include "lsp/Uri.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "records/LineGrammar.h"
#include "services/modWriter.h"

#include <algorithm>
#include <functional>

namespace velmora::lsp {

namespace {

Json PositionJson(Position position) {
    return {{"line", position.Line}, {"character", position.Character}};
}

Json RangeJson(const OpenFile& file, std::size_t begin, std::size_t end) {
    return {{"start", PositionJson(file.Text.PositionOf(begin))},
            {"end", PositionJson(file.Text.PositionOf(end))}};
}

/// What of a line, counted as files do, is not blank.
Json LineRange(const OpenFile& file, std::size_t fileLine) {
    const std::size_t start = file.Text.StartOfFileLine(fileLine);
    std::string_view line = std::string_view(file.Text.Bytes()).substr(start);
    line = line.substr(0, line.find_first_of("\r\n"));
    const std::size_t first = std::min(line.find_first_not_of(" \t"), line.size());
    return RangeJson(file, start + first, start + line.size());
}

int SeverityNumber(Severity severity) {
    return severity == Severity::Error ? 1 : severity == Severity::Warning ? 2 : 3;
}

Json Diagnostic(const OpenFile& file, const Problem& problem) {
    return {{"range", LineRange(file, problem.Line)},
            {"severity", SeverityNumber(problem.Level)},
            {"code", problem.Rule},
            {"source", "velwriter"},
            {"message", JsonText(ReplaceAll(problem.Text, "\r", "\n"))}};
}

std::string HoverText(const OpenFile& file, const Line& line) {
    const RecordKind& kind = *file.Kind->Kind;
    const auto numberOf = [&](std::string_view property) { return line.NumberInBlock(property); };
    std::string text(line.KeyField->Property);
    for (const Choice& choice : ChoicesOf(kind, *line.KeyField, numberOf))
        if (CodePage::EqualNoCase(ReplaceAll(choice.Value, "\"", ""), line.Value))
            text += " " + line.Value + ": " + choice.Name + (choice.Hint.empty() ? "" : "\n" + choice.Hint);
    const std::string about = AboutField(kind, *line.KeyField, line.Value, numberOf);
    return text == line.KeyField->Property && about.empty() ? std::string()
                                                            : text + (about.empty() ? "" : "\n" + about);
}

bool IsRequirement(const Line& line) {
    return line.KeyField && line.KeyField->Property == "ModuleRequirements";
}

Json KeyItems(const OpenFile& file, const Line& line) {
    const RecordKind& kind = *file.Kind->Kind;
    Json items = Json::array();
    const auto add = [&](std::string_view key, std::string_view detail) {
        items.push_back({{"label", key}, {"kind", 10}, {"detail", detail}});
    };
    if (!line.IsInBlock)
        add(kind.Header, "begins a record");
    else
        for (const Field& field : kind.Fields)
            if (field.Type == FieldType::List || !line.HasKey(field))
                add(field.Key, field.Property);
    if (line.IsInBlock)
        add(kind.End, "ends the record");
    return items;
}

Json ValueItems(const OpenFile& file, const Line& line) {
    const bool quoted = line.Before.find('"') != std::string_view::npos;
    std::vector<Choice> choices = ChoicesOf(*file.Kind->Kind, *line.KeyField, [&](std::string_view property) {
        return line.NumberInBlock(property);
    });
    if (IsRequirement(line) && file.Index)
        for (const std::string& name : file.Index->Names())
            choices.push_back({'"' + name + '"', name, {}});
    Json items = Json::array();
    for (const Choice& choice : choices) {
        const std::string value = quoted ? ReplaceAll(choice.Value, "\"", "") : choice.Value;
        items.push_back({{"label", JsonText(value)},
                         {"kind", 12},
                         {"detail", JsonText(choice.Name)},
                         {"documentation", JsonText(choice.Hint)}});
    }
    return items;
}

/// What stands between the lines that both texts begin and end with, replaced.
Json EditsTo(const OpenFile& file, const std::string& now) {
    const std::string& old = file.Text.Bytes();
    const std::size_t shorter = std::min(old.size(), now.size());
    std::size_t begin = static_cast<std::size_t>(
        std::mismatch(old.begin(), old.begin() + static_cast<std::ptrdiff_t>(shorter), now.begin()).first -
        old.begin());
    begin = begin == 0 ? 0 : old.rfind('\n', begin - 1) + 1;
    std::size_t same = 0;
    while (same < shorter - begin && old[old.size() - 1 - same] == now[now.size() - 1 - same])
        ++same;
    // Whole lines: a carriage return must not be parted from its line feed.
    if (const std::size_t at = old.size() - same; at > begin && old[at - 1] != '\n') {
        const std::size_t lineEnd = old.find('\n', at);
        same = lineEnd == std::string::npos ? 0 : old.size() - lineEnd - 1;
    }
    if (begin == old.size() && old.size() == now.size())
        return Json::array();
    return Json::array(
        {{{"range", RangeJson(file, begin, old.size() - same)},
          {"newText", JsonText(std::string_view(now).substr(begin, now.size() - same - begin))}}});
}

} // namespace

Json JsonText(std::string_view text) {
    return CodePage::ToUtf8(text);
}

Json DiagnosticsOf(const OpenFile& file) {
    Json diagnostics = Json::array();
    if (const std::string fault = EncodingFault(file); !fault.empty()) {
        const std::size_t at = file.Text.FirstForeign();
        Problem problem{"wrong-encoding", "The game cannot read this: " + fault + ".", Severity::Error};
        problem.Line = at == std::string::npos ? 1 : file.Text.FileLineOf(at);
        diagnostics.push_back(Diagnostic(file, problem));
    }
    std::vector<Problem> problems = file.Problems;
    if (file.Index)
        std::ranges::move(file.Index->ProblemsOf(file.Name), std::back_inserter(problems));
    std::erase_if(problems, [&](const Problem& problem) { return file.Index && file.Index->Hides(problem); });
    std::size_t leftOut = file.ProblemsLeftOut;
    if (problems.size() > MostProblems) {
        std::ranges::stable_sort(problems, std::greater(), &Problem::Level);
        leftOut += problems.size() - MostProblems;
        problems.resize(MostProblems);
    }
    std::ranges::stable_sort(problems, {}, &Problem::Line);
    if (leftOut > 0) {
        Problem more{"more-problems", "and " + std::to_string(leftOut) + " more", Severity::Note};
        more.Line = problems.back().Line;
        problems.push_back(std::move(more));
    }
    for (const Problem& problem : problems)
        diagnostics.push_back(Diagnostic(file, problem));
    return diagnostics;
}

Json HoverAt(const OpenFile& file, Position position) {
    const Line line(file, position);
    const std::string text = line.KeyField ? HoverText(file, line) : std::string();
    if (text.empty())
        return nullptr;
    return {{"contents", {{"kind", "plaintext"}, {"value", JsonText(text)}}}};
}

Json CompletionAt(const OpenFile& file, Position position) {
    const Line line(file, position);
    const std::size_t key = line.Before.find_first_not_of(" \t");
    const bool inKey =
        key == std::string_view::npos || line.Before.find_first_of(" \t\"", key) == std::string_view::npos;
    if (inKey)
        return KeyItems(file, line);
    return line.KeyField && line.IsInBlock ? ValueItems(file, line) : Json::array();
}

Json SymbolsOf(const OpenFile& file) {
    Json symbols = Json::array();
    const std::string& bytes = file.Text.Bytes();
    for (const NamedRecord& record : file.Records) {
        const std::size_t start = file.Text.StartOfFileLine(record.HeaderLine);
        const std::size_t last = file.Text.StartOfFileLine(record.EndLine);
        const std::size_t end = std::min(bytes.find_first_of("\r\n", last), bytes.size());
        symbols.push_back({{"name", record.Name.empty() ? Json("(no name)") : JsonText(record.Name)},
                           {"kind", 23},
                           {"range", RangeJson(file, start, std::max(start, end))},
                           {"selectionRange", LineRange(file, record.HeaderLine)}});
    }
    return symbols;
}

Json DefinitionAt(const OpenFile& file, Position position) {
    const Line line(file, position);
    if (!IsRequirement(line) || !file.Index)
        return nullptr;
    const auto found = file.Index->Find(line.Value);
    if (!found)
        return nullptr;
    const Position start{found->second.HeaderLine - 1, 0};
    return {{"uri", UriOf(file.Index->Folder + found->first)},
            {"range", {{"start", PositionJson(start)}, {"end", PositionJson(start)}}}};
}

Json FormattingOf(const OpenFile& file, std::string& lost) {
    Formatted formatted = Format(file);
    if (!formatted.Refusal.empty())
        throw Refused(formatted.Refusal);
    if (file.Text.Bytes().find("\r\n") == std::string::npos)
        formatted.Text = ReplaceAll(formatted.Text, "\r\n", "\n");
    Json edits = EditsTo(file, formatted.Text);
    if (!edits.empty())
        lost = Join(formatted.Losses.Texts(), ", ");
    return edits;
}

} // namespace velmora::lsp
