#include "kinds/Sheets.h"

#include "platform/CodePage.h"
#include "platform/PathTexts.h"
#include "records/Csv.h"
#include "services/modWriter.h"

#include <cstdio>

namespace velmora::Sheets {

namespace {

std::string TextCell(const std::string& utf8, char separator) {
    return Csv::Cell(Csv::Guarded(utf8), separator);
}

std::string FieldCell(const Field& field, const Record& record, char separator) {
    if (field.Type == FieldType::Text)
        return TextCell(CodePage::ToUtf8(field.TextOf(record)), separator);
    if (field.Type == FieldType::List)
        return TextCell(CodePage::ToUtf8(Join(field.ListOf(record), "; ")), separator);
    return std::to_string(field.NumberOf(record));
}

std::string RemarkOf(const RecordKind& kind, const PlayerText& text, const Record& record) {
    std::string remark;
    if (text.Limit > 0)
        remark = "at most " + std::to_string(text.Limit) + " characters";
    if (const std::string names = SubstitutionNames(kind, text, record); !names.empty())
        remark.append(remark.empty() ? "" : "; ").append("%s stands for: ").append(names);
    return remark;
}

/// A text between quotes, as C writes it.
std::string Quoted(std::string_view text) {
    std::string quoted = "\"";
    for (const char c : text)
        if (c == '"' || c == '\\') {
            quoted.append({'\\', c});
        } else if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\%03o", static_cast<unsigned>(c));
            quoted += c == '\n' ? "\\n" : c == '\t' ? "\\t" : c == '\r' ? "\\r" : escape;
        } else {
            quoted += c;
        }
    return quoted + '"';
}

} // namespace

std::string RecordHeader(const RecordKind& kind, char separator) {
    std::string row(kind.Name.Property);
    kind.ForEachField([&](const Field& field) { row.append(1, separator).append(field.Property); });
    return row.append(1, separator).append("ShortName\r\n");
}

std::string RecordRow(const RecordKind& kind, const Record& record, char separator) {
    std::string row = FieldCell(kind.Name, record, separator);
    kind.ForEachField(
        [&](const Field& field) { row.append(1, separator).append(FieldCell(field, record, separator)); });
    const std::string file = PathTexts::ToHostText(record.ShortName);
    return row.append(1, separator).append(TextCell(file, separator)).append("\r\n");
}

void ForEachText(const RecordKind& kind, const Record& record, FieldLines& lines,
                 const std::function<void(const Text&)>& visit) {
    const std::string& name = kind.NameOf(record);
    for (const PlayerText& text : PlayerTextsOf(kind)) {
        const std::string& source = text.Shown->TextOf(record);
        if (source.empty())
            continue;
        const std::string_view property = text.Shown->Property;
        visit({PathTexts::ToHostText(record.ShortName) + ":" + std::to_string(lines.LineOf(record, property)),
               CodePage::ToUtf8(source),
               std::string(kind.Word) + "." + CodePage::ToUtf8(name) + "." + std::string(property),
               std::string(text.Label) + " of " + std::string(kind.NameWord) + " " + CodePage::ToUtf8(name),
               RemarkOf(kind, text, record)});
    }
}

std::string TextHeader(char separator) {
    return Join(std::vector<std::string>{"location", "source", "target", "ID", "context", "remark"},
                std::string(1, separator)) +
           "\r\n";
}

std::string TextRow(const Text& text, char separator) {
    std::string row = TextCell(text.Place, separator);
    for (const std::string& piece : {text.Source, std::string(), text.ID, text.Context, text.Remark})
        row.append(1, separator).append(TextCell(piece, separator));
    return row + "\r\n";
}

std::string PoHeader() {
    return "msgid \"\"\nmsgstr \"\"\n\"Project-Id-Version: Velmora\\n\"\n\"MIME-Version: 1.0\\n\"\n"
           "\"Content-Type: text/plain; charset=UTF-8\\n\"\n\"Content-Transfer-Encoding: 8bit\\n\"\n";
}

std::string PoEntry(const Text& text) {
    std::string entry = "\n#. " + text.Context + "\n";
    if (!text.Remark.empty())
        entry += "#. " + text.Remark + "\n";
    entry += "#: " + ReplaceAll(text.Place, " ", "_") + "\n";
    if (text.Source.find('%') != std::string::npos)
        entry += "#, c-format\n";
    return entry + "msgctxt " + Quoted(text.ID) + "\nmsgid " + Quoted(text.Source) + "\nmsgstr \"\"\n";
}

} // namespace velmora::Sheets
