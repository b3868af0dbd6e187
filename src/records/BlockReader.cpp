#include "records/BlockReader.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/TextLines.h"
#include "services/Numbers.h"
#include "services/modWriter.h"

namespace velmora {

BlockReader::BlockReader(const RecordKind& recordKind, std::string fileName, const FindingSink& findings,
                         Taker taker)
    : kind(recordKind), file(std::move(fileName)), sink(findings), take(std::move(taker)),
      held(recordKind.Fields.size()) {
    for (std::size_t i = 0; i < kind.Fields.size(); ++i)
        fieldsByLength.at(kind.Fields[i].Key.size()).push_back(i);
}

void BlockReader::Read(std::string_view bytes) {
    while (!bytes.empty()) {
        if (ReadWrittenLine(bytes))
            continue;
        ++lineNumber;
        ReadLine(TextLines::Take(bytes));
    }
}

bool BlockReader::ReadWrittenLine(std::string_view& bytes) {
    if (bytes.starts_with("\r\n")) {
        bytes.remove_prefix(2);
        ++lineNumber;
        return true;
    }
    if (nextField == kind.Fields.size() || kind.ValuesKeepBlanks)
        return false;
    const auto value = TakeWrittenLine(bytes, kind.Fields[nextField].Key);
    if (!value)
        return false;
    ++lineNumber;
    Hold(nextField++, *value);
    return true;
}

void BlockReader::ReadLine(std::string_view line) {
    KeyValue parts;
    if (!SplitLine(line, kind.ValuesKeepBlanks, scratch, parts))
        return;
    if (parts.UnneededSpace)
        Report("unneeded-space", "Unneeded space removed from " + LineForMessage(line) + ".");

    if (const std::size_t at = FindField(parts.Key); at < kind.Fields.size())
        Hold(at, parts.Value);
    else if (CodePage::EqualNoCase(parts.Key, kind.Header))
        BeginBlock(parts.Value);
    else if (CodePage::EqualNoCase(parts.Key, kind.End))
        EndBlock();
    else
        Report("unrecognized-token", "Unrecognized token! a(0) = " + LineForMessage(parts.Key) +
                                         ", sValue = " + std::string(parts.Value) + ", File = " + file);
}

std::size_t BlockReader::FindField(std::string_view key) {
    const std::size_t none = kind.Fields.size();
    if (nextField < none && kind.Fields[nextField].Key == key)
        return nextField++;
    if (key.size() >= fieldsByLength.size())
        return none;
    for (const std::size_t at : fieldsByLength[key.size()])
        if (CodePage::EqualNoCase(kind.Fields[at].Key, key)) {
            nextField = at + 1;
            return at;
        }
    return none;
}

void BlockReader::Hold(std::size_t at, std::string_view value) {
    const Field& field = kind.Fields[at];
    Held& holding = held[at];
    switch (field.Type) {
    case FieldType::Text:
        holding.Text = Keep(value);
        break;
    case FieldType::List:
        holding.Entries.push_back(Keep(value));
        break;
    case FieldType::Number:
        if (!ReadPlainInteger(value, holding.Number))
            holding.Number = ToNumber(LeadingNumber(value), field.Key);
        break;
    case FieldType::LateNumber:
        holding.Late = LeadingNumber(value);
        holding.Given = true;
        break;
    }
}

std::string_view BlockReader::Keep(std::string_view value) {
    if (value.data() != scratch.data())
        return value;
    return kept.emplace_back(value);
}

void BlockReader::BeginBlock(std::string_view value) {
    headerLine = lineNumber;
    if (kind.SetHeaderNumber) {
        // The pieces stand after an empty one: the value starts with a blank.
        const auto pieces = Split(value, " ");
        headerNumber = pieces.size() > 1 ? ToNumber(LeadingNumber(pieces[1]), kind.Header) : 0;
        name = pieces.size() > 2 ? pieces[2] : std::string();
    } else {
        name = value;
    }
    if (std::string report = SanitizeName(name, kind.NameWord); !report.empty())
        Report("illegal-name", std::move(report));
}

void BlockReader::EndBlock() {
    auto record = kind.Make();
    record->HeaderLine = headerLine;
    Fill(*record);
    take(std::move(record), lineNumber);
    for (Held& holding : held)
        holding.Entries.clear();
    nextField = 0;
}

void BlockReader::Fill(Record& record) {
    kind.Name.SetText(record, name);
    if (kind.SetHeaderNumber)
        kind.SetHeaderNumber(record, headerNumber);
    for (std::size_t i = 0; i < held.size(); ++i) {
        const Field& field = kind.Fields[i];
        const Held& holding = held[i];
        switch (field.Type) {
        case FieldType::Text:
            field.SetText(record, holding.Text);
            break;
        case FieldType::Number:
            field.SetNumber(record, holding.Number);
            break;
        case FieldType::LateNumber:
            if (!holding.Given)
                throw Failure(FailureTypeMismatch, "Type mismatch (file " + file + ", line " +
                                                       std::to_string(lineNumber) + ", key " +
                                                       std::string(field.Key) + " was never given)");
            field.SetNumber(record, ToNumber(holding.Late, field.Key));
            break;
        case FieldType::List:
            for (const std::string_view entry : holding.Entries)
                field.SetText(record, entry);
            if (holding.Entries.empty())
                field.SetText(record, {});
            break;
        }
    }
}

std::int32_t BlockReader::ToNumber(double value, std::string_view key) const {
    try {
        return RoundToInt32(value);
    } catch (const Failure& failure) {
        throw Failure(failure.Number, failure.Description() + " (file " + file + ", line " +
                                          std::to_string(lineNumber) + ", key " + std::string(key) + ")");
    }
}

void BlockReader::Report(std::string_view rule, std::string text) const {
    sink({kind.Word, file, lineNumber, rule, std::move(text)});
}

} // namespace velmora
