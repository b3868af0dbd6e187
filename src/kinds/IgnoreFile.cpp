#include "kinds/IgnoreFile.h"

#include "kinds/Rules.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/TextLines.h"
#include "services/modWriter.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::string_view FileName = "velwriter.ignore";

/// A text that fits into a line.
std::string OneLine(std::string text) {
    std::ranges::replace_if(
        text, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
    return text;
}

std::string Quoted(const std::string& value) {
    return value.find_first_of(" \t\"#") == std::string::npos ? value
                                                              : '"' + ReplaceAll(value, "\"", "\"\"") + '"';
}

/// Takes "key:value" off a line; nothing when a quote is not closed.
std::optional<std::string> TakeValue(std::string_view& rest) {
    std::string value;
    if (!rest.starts_with('"')) {
        const std::size_t end = std::min(rest.find_first_of(" \t#"), rest.size());
        value = rest.substr(0, end);
        rest.remove_prefix(end);
        return value;
    }
    for (std::size_t at = 1; at < rest.size(); ++at) {
        if (rest[at] == '"' && !rest.substr(at + 1).starts_with('"')) {
            rest.remove_prefix(at + 1);
            return value;
        }
        at += rest[at] == '"' ? 1 : 0;
        value += rest[at];
    }
    return std::nullopt;
}

} // namespace

bool IgnoreFile::Line::Holds(const Problem& problem) const {
    const auto holds = [](const std::string& named, std::string_view value) {
        return named.empty() || CodePage::EqualNoCase(named, value);
    };
    return holds(Rule, problem.Rule) && holds(File, problem.File) && holds(Record, problem.Record) &&
           holds(Field, problem.Field) && (Text.empty() || holds(Text, OneLine(problem.Text)));
}

std::string* IgnoreFile::Line::Value(std::string_view key) {
    return key == "rule"     ? &Rule
           : key == "file"   ? &File
           : key == "record" ? &Record
           : key == "field"  ? &Field
           : key == "text"   ? &Text
                             : nullptr;
}

/// Why a line is not understood, empty when it is; an empty line and a mere remark hide nothing.
std::string IgnoreFile::Parse(std::string_view text, std::optional<Line>& line) {
    Line parsed;
    std::string_view rest = TextLines::Stripped(text);
    bool any = false;
    for (; !rest.empty() && rest.front() != '#'; rest = TextLines::Stripped(rest)) {
        any = true;
        const std::size_t colon = std::min(rest.find_first_of(": \t"), rest.size());
        const std::string_view key = rest.substr(0, colon);
        std::string* value = parsed.Value(key);
        if (value == nullptr || !rest.substr(colon).starts_with(':'))
            return "\"" + std::string(key) + "\" is none of rule:, file:, record:, field:, text:";
        rest.remove_prefix(colon + 1);
        const auto taken = TakeValue(rest);
        if (!taken || taken->empty())
            return std::string(key) + (taken ? ": names nothing" : ": a quote is not closed");
        *value = *taken;
    }
    if (!any)
        return {};
    if (!IsRule(parsed.Rule))
        return parsed.Rule.empty() ? "it names no rule" : "there is no rule " + parsed.Rule;
    line = std::move(parsed);
    return {};
}

void IgnoreFile::Read(const std::string& gameDirectory) {
    path = Files::Join(gameDirectory, FileName);
    Take(Files::FileExists(path) ? Files::ReadWhole(path) : std::string());
}

void IgnoreFile::Take(std::string bytes) {
    content = std::move(bytes);
    lines.clear();
    broken.clear();
    std::size_t number = 0;
    for (const std::string_view text : TextLines::Split(content)) {
        ++number;
        std::optional<Line> line;
        if (const std::string reason = Parse(text, line); !reason.empty())
            broken.push_back({BrokenIgnoreLineRule,
                              "This line hides nothing: " + reason + ".",
                              Severity::Warning,
                              {},
                              {},
                              {},
                              std::string(FileName),
                              number});
        else if (line)
            lines[line->Rule].push_back(*line);
    }
}

bool IgnoreFile::Hides(const Problem& problem) const {
    if (lines.empty())
        return false;
    const auto found = lines.find(std::string(problem.Rule));
    return found != lines.end() && std::any_of(found->second.begin(), found->second.end(),
                                               [&](const Line& line) { return line.Holds(problem); });
}

void IgnoreFile::Hide(const Problem& problem, Scope scope) {
    std::string bytes = Files::FileExists(path) ? Files::ReadWhole(path) : std::string();
    if (!bytes.empty() && bytes.back() != '\n')
        bytes += "\r\n";
    const auto name = [&](const char* key, const std::string& value) {
        if (!value.empty())
            bytes += std::string(" ") + key + ":" + Quoted(OneLine(value));
    };
    bytes += "rule:" + std::string(problem.Rule);
    if (scope == Scope::InFile || (scope == Scope::One && problem.Record.empty()))
        name("file", problem.File);
    if (scope == Scope::One) {
        name("record", problem.Record);
        name("field", std::string(problem.Field));
        if (problem.Record.empty() || problem.Field.empty())
            name("text", problem.Text);
    }
    bytes += "  # " + OneLine(scope == Scope::One ? problem.Text : GameRule(problem.Rule)) + "\r\n";
    Files::ReplaceSafely(path, bytes);
    Take(std::move(bytes));
}

void IgnoreFile::Show(const Problem& problem) {
    const std::string bytes = Files::FileExists(path) ? Files::ReadWhole(path) : std::string();
    std::string kept;
    for (std::string_view rest = bytes; !rest.empty();) {
        const std::string_view before = rest;
        std::optional<Line> line;
        Parse(TextLines::Take(rest), line);
        if (!line || !line->Holds(problem))
            kept += before.substr(0, before.size() - rest.size());
    }
    Files::ReplaceSafely(path, kept);
    Take(std::move(kept));
}

} // namespace velmora
