#include "records/FieldLines.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/TextLines.h"
#include "records/LineGrammar.h"

namespace velmora {

std::size_t FieldLines::LineOf(const Record& record, std::string_view property) {
    if (record.HeaderLine == 0)
        return 0;
    for (std::size_t i = 0; i < kind.Fields.size(); ++i)
        if (kind.Fields[i].Property == property) {
            Open(record.FileName);
            ReadBlock(record.HeaderLine);
            return lines[i];
        }
    return record.HeaderLine;
}

void FieldLines::Place(const Record& record, std::span<Problem> problems) {
    for (Problem& problem : problems) {
        problem.Kind = kind.Word;
        problem.Record = kind.NameOf(record);
        problem.File = record.ShortName;
        problem.Line = LineOf(record, problem.Field);
    }
}

void FieldLines::Open(const std::string& filePath) {
    if (path == filePath)
        return;
    try {
        Hold(filePath, Files::ReadWhole(filePath));
    } catch (const Failure&) {
        Hold(filePath, {}); // it was there when it was loaded; its blocks' headers have to do
    }
}

void FieldLines::Hold(const std::string& filePath, std::string fileBytes) {
    path = filePath;
    bytes = std::move(fileBytes);
    block = 0;
    starts.clear();
    for (std::string_view rest = bytes; !rest.empty(); TextLines::Take(rest))
        starts.push_back(bytes.size() - rest.size());
}

void FieldLines::ReadBlock(std::size_t headerLine) {
    if (block == headerLine)
        return;
    block = headerLine;
    lines.assign(kind.Fields.size(), headerLine);
    std::string scratch;
    KeyValue parts;
    for (std::size_t line = headerLine + 1; line <= starts.size(); ++line) {
        std::string_view rest = std::string_view(bytes).substr(starts[line - 1]);
        if (!SplitLine(TextLines::Take(rest), kind.ValuesKeepBlanks, scratch, parts))
            continue;
        if (CodePage::EqualNoCase(parts.Key, kind.End) || CodePage::EqualNoCase(parts.Key, kind.Header))
            return;
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (CodePage::EqualNoCase(kind.Fields[i].Key, parts.Key))
                lines[i] = line;
    }
}

} // namespace velmora
