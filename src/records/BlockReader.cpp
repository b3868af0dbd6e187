#include "records/BlockReader.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/TextLines.h"
#include "records/Merge.h"
#include "services/Numbers.h"
#include "services/modWriter.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace velmora {

namespace {

/// Lines of dashes are the editor's own.
bool IsRule(std::string_view line) {
    return std::all_of(line.begin(), line.end(), [](char c) { return c == '/' || c == '-' || c == ' '; });
}

bool IsCut(double value, std::string_view text) {
    return std::to_string(std::llrint(value)) != TextLines::Stripped(text);
}

} // namespace

BlockReader::BlockReader(const RecordKind& recordKind, std::string fileName, const ProblemSink& problems,
                         Taker taker)
    : kind(recordKind), file(std::move(fileName)), sink(problems), take(std::move(taker)),
      held(recordKind.Fields.size()) {
    for (std::size_t i = 0; i < kind.Fields.size(); ++i)
        fieldsByLength.at(kind.Fields[i].Key.size()).push_back(i);
}

void BlockReader::Read(std::string_view bytes) {
    WrittenBlocks blocks;
    blocks.Find(kind, bytes);
    Read(blocks);
}

void BlockReader::Read(const WrittenBlocks& blocks) {
    std::size_t taken = 0;
    for (const WrittenBlocks::OtherLines& lines : blocks.Others) {
        TakeWritten(blocks, taken, lines.BlocksBefore);
        taken = lines.BlocksBefore;
        ReadOthers(lines);
    }
    TakeWritten(blocks, taken, blocks.Blocks.size());
    LeaveUnfinished();
}

void BlockReader::TakeWritten(const WrittenBlocks& blocks, std::size_t from, std::size_t to) {
    if (from == to)
        return;
    LeaveUnfinished();
    for (std::size_t at = from; at < to; ++at)
        take(blocks.MakeRecord(kind, at), blocks.Blocks[at].EndLine);
    HoldWritten(blocks, to - 1);
}

void BlockReader::HoldWritten(const WrittenBlocks& blocks, std::size_t at) {
    const std::string_view* text = blocks.TextsOf(at);
    const std::int32_t* number = blocks.NumbersOf(at);
    for (std::size_t i = 0; i < held.size(); ++i) {
        Held& holding = held[i];
        Losses.Add(Loss::Repeated, holding.GivenIn == blockNumber);
        holding.GivenIn = blockNumber;
        if (kind.Fields[i].Type == FieldType::Text)
            holding.Text = *text++;
        else
            holding.Late = holding.Number = *number++;
    }
    name = blocks.Blocks[at].Name;
    headerLine = blocks.Blocks[at].HeaderLine;
    nextField = 0;
    ++blockNumber;
}

void BlockReader::ReadOthers(const WrittenBlocks::OtherLines& lines) {
    lineNumber = lines.FirstLine;
    for (std::string_view bytes = lines.Bytes; !bytes.empty(); ++lineNumber)
        ReadLine(TextLines::Take(bytes));
}

void BlockReader::ReadLine(std::string_view line) {
    if (IsConflictLine(line)) {
        Losses.Add(Loss::Unrecognized);
        Report(ConflictRule,
               "A merge left a conflict here: \"" + LineForMessage(line) + "\".  Keep one of its sides.");
        return;
    }
    KeyValue parts;
    if (!SplitLine(line, kind.ValuesKeepBlanks, scratch, parts)) {
        Losses.Add(Loss::Comments, !IsRule(line));
        return;
    }
    Losses.Add(Loss::Blanks, parts.UnneededSpace);
    Losses.Add(Loss::AfterQuote, parts.TextAfterQuote);
    const std::size_t at = FindField(parts.Key);
    const bool isField = at < kind.Fields.size();
    if (parts.UnneededSpace)
        Report("unneeded-space", "Unneeded space removed from " + LineForMessage(line) + ".",
               isField ? kind.Fields[at].Property : std::string_view{});

    if (isField)
        Hold(at, parts.Value);
    else if (CodePage::EqualNoCase(parts.Key, kind.Header))
        BeginBlock(parts.Value);
    else if (CodePage::EqualNoCase(parts.Key, kind.End))
        EndBlock();
    else
        ReportUnrecognized(parts);
}

void BlockReader::ReportUnrecognized(const KeyValue& parts) {
    Losses.Add(Loss::Unrecognized);
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
    Losses.Add(Loss::Repeated, field.Type != FieldType::List && holding.GivenIn == blockNumber);
    holding.GivenIn = blockNumber;
    switch (field.Type) {
    case FieldType::Text:
        holding.Text = Keep(value);
        break;
    case FieldType::List:
        holding.Entries.push_back(Keep(value));
        break;
    case FieldType::Number:
    case FieldType::LateNumber:
        holding.Late = kind.ReadNumber(value);
        if (field.Type == FieldType::Number)
            holding.Number = ToNumber(holding.Late, field.Key);
        Losses.Add(Loss::Cut, IsCut(holding.Late, value));
        break;
    }
}

std::string_view BlockReader::Keep(std::string_view value) {
    if (value.data() != scratch.data())
        return value;
    return kept.emplace_back(value);
}

void BlockReader::BeginBlock(std::string_view value) {
    LeaveUnfinished();
    inBlock = true;
    headerLine = lineNumber;
    if (kind.HeaderNumber) {
        // The pieces stand after an empty one: the value starts with a blank.
        const auto pieces = Split(value, " ");
        headerNumber = pieces.size() > 1 ? ToNumber(kind.ReadNumber(pieces[1]), kind.Header) : 0;
        name = pieces.size() > 2 ? pieces[2] : std::string();
    } else {
        name = value;
    }
    if (std::string report = SanitizeName(name, kind.NameWord); !report.empty()) {
        Losses.Add(Loss::Names);
        Report("illegal-name", std::move(report), kind.Name.Property);
    }
}

void BlockReader::LeaveUnfinished() {
    if (!std::exchange(inBlock, false))
        return;
    Losses.Add(Loss::Unfinished);
    sink({UnfinishedBlockRule, "This block has no " + std::string(kind.End), Severity::Error,
          kind.Name.Property, name, kind.Word, file, headerLine});
    ++blockNumber;
}

void BlockReader::EndBlock() {
    auto record = kind.Make();
    record->HeaderLine = inBlock ? headerLine : lineNumber;
    Fill(*record);
    take(std::move(record), lineNumber);
    for (Held& holding : held)
        holding.Entries.clear();
    nextField = 0;
    inBlock = false;
    ++blockNumber;
}

void BlockReader::Fill(Record& record) {
    kind.Name.SetText(record, name);
    if (kind.HeaderNumber)
        kind.HeaderNumber->SetNumber(record, headerNumber);
    for (std::size_t i = 0; i < held.size(); ++i) {
        const Field& field = kind.Fields[i];
        const Held& holding = held[i];
        const bool earlier = holding.GivenIn != 0 && holding.GivenIn != blockNumber;
        Losses.Add(Loss::CarriedOver, earlier && field.Type != FieldType::List);
        switch (field.Type) {
        case FieldType::Text:
            field.SetText(record, holding.Text);
            break;
        case FieldType::Number:
            field.SetNumber(record, holding.Number);
            break;
        case FieldType::LateNumber:
            if (holding.GivenIn == 0)
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
        throw Failure(failure.Number,
                      failure.Description() + " (file " + file + ", line " + std::to_string(lineNumber) +
                          ", key " + std::string(key) + ")",
                      failure.Source, failure.Line);
    }
}

void BlockReader::Report(std::string_view rule, std::string text, std::string_view field) const {
    sink({rule, std::move(text), Severity::Warning, field, inBlock ? name : std::string(), kind.Word, file,
          lineNumber});
}

std::size_t LineNamedIn(std::string_view description) {
    constexpr std::string_view mark = ", line "; // behind the file, whose name may hold anything
    std::size_t line = 0;
    if (const std::size_t at = description.rfind(mark); at != std::string_view::npos)
        std::from_chars(description.data() + at + mark.size(), description.data() + description.size(), line);
    return line;
}

} // namespace velmora
