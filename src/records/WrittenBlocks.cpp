#include "records/WrittenBlocks.h"

#include "platform/TextLines.h"
#include "records/LineGrammar.h"
#include "services/Numbers.h"
#include "services/modWriter.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace velmora {

namespace {

std::size_t SkipBlanks(std::string_view& text) {
    std::size_t blanks = 0;
    while (blanks < text.size() && text[blanks] == ' ')
        ++blanks;
    text.remove_prefix(blanks);
    return blanks;
}

/// Takes a line off the front that holds `key` and one whole value, and nothing else but blanks before
/// either; leaves any other line alone. The value is the one that SplitLine would find, several times as
/// fast.
std::optional<std::string_view> TakeWrittenLine(std::string_view& bytes, std::string_view key) {
    std::string_view rest = bytes;
    SkipBlanks(rest);
    if (!rest.starts_with(key))
        return std::nullopt;
    rest.remove_prefix(key.size());
    if (SkipBlanks(rest) == 0 || rest.empty())
        return std::nullopt;
    std::string_view value;
    if (rest.front() == '"') {
        rest.remove_prefix(1);
        value = rest.substr(0, rest.find('"'));
        if (value.size() == rest.size() || value.find('\n') != std::string_view::npos)
            return std::nullopt;
        rest.remove_prefix(value.size() + 1);
    } else {
        const auto isValue = [](char c) { return c > ' ' && c != '"'; };
        value = rest.substr(
            0, static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), isValue) - rest.begin()));
        rest.remove_prefix(value.size());
    }
    if (rest.starts_with('\r'))
        rest.remove_prefix(1);
    if (!rest.starts_with('\n'))
        return std::nullopt;
    bytes = rest.substr(1);
    return value;
}

/// Reads a number that is written again as it stands.
bool ReadLastingNumber(std::string_view value, std::int32_t& number) {
    const std::string_view digits = value.substr(value.starts_with('-') ? 1 : 0);
    return ReadPlainInteger(value, number) && (!digits.starts_with('0') || value == "0");
}

bool TakeEnd(std::string_view& bytes, std::string_view word) {
    if (!bytes.starts_with(word))
        return false;
    std::string_view rest = bytes.substr(word.size());
    if (rest.starts_with('\r'))
        rest.remove_prefix(1);
    if (!rest.starts_with('\n'))
        return false;
    bytes = rest.substr(1);
    return true;
}

} // namespace

std::unique_ptr<Record> WrittenBlocks::MakeRecord(const RecordKind& kind, std::size_t block) const {
    const std::string_view* text = TextsOf(block);
    const std::int32_t* number = NumbersOf(block);
    auto record = kind.Make();
    record->HeaderLine = Blocks[block].HeaderLine;
    kind.Name.SetText(*record, Blocks[block].Name);
    for (const Field& field : kind.Fields)
        if (field.Type == FieldType::Text)
            field.SetText(*record, *text++);
        else
            field.SetNumber(*record, *number++);
    return record;
}

void WrittenBlocks::Find(const RecordKind& kind, std::string_view bytes) {
    Blocks.clear();
    Texts.clear();
    Numbers.clear();
    Others.clear();
    lineCount = 0;
    const std::size_t size = bytes.size();
    while (true) {
        SkipEmptyLines(bytes);
        if (bytes.empty())
            return;
        if (TakeBlock(kind, bytes))
            Blocks.back().End = size - bytes.size();
        else
            TakeOther(bytes);
    }
}

void WrittenBlocks::SkipEmptyLines(std::string_view& bytes) {
    while (!bytes.empty()) {
        const std::string_view line = bytes.front() == '/'    ? SeparatorLine
                                      : bytes.front() == '\n' ? "\n"
                                                              : "\r\n";
        if (!bytes.starts_with(line))
            return;
        bytes.remove_prefix(line.size());
        ++lineCount;
    }
}

bool WrittenBlocks::TakeBlock(const RecordKind& kind, std::string_view& bytes) {
    // The values of these kinds take more than taking a line apart.
    if (kind.ValuesKeepBlanks || kind.HeaderNumber || !bytes.starts_with(kind.Header))
        return false;
    const std::size_t lines = lineCount;
    const std::size_t texts = Texts.size();
    const std::size_t numbers = Numbers.size();
    std::string_view rest = bytes;
    const auto name = TakeWrittenLine(rest, kind.Header);
    if (name && IsLegalName(*name)) {
        const std::size_t headerLine = ++lineCount;
        if (TakeFields(kind, rest) && TakeEnd(rest, kind.End)) {
            Blocks.push_back({headerLine, ++lineCount, *name});
            bytes = rest;
            return true;
        }
    }
    lineCount = lines;
    Texts.resize(texts);
    Numbers.resize(numbers);
    return false;
}

bool WrittenBlocks::TakeFields(const RecordKind& kind, std::string_view& bytes) {
    for (const Field& field : kind.Fields) {
        SkipEmptyLines(bytes);
        const auto value = TakeWrittenLine(bytes, field.Key);
        std::int32_t number = 0;
        if (!value || field.Type == FieldType::List)
            return false;
        if (field.Type == FieldType::Text)
            Texts.push_back(*value);
        else if (ReadLastingNumber(*value, number))
            Numbers.push_back(number);
        else
            return false;
        ++lineCount;
    }
    SkipEmptyLines(bytes);
    return true;
}

void WrittenBlocks::TakeOther(std::string_view& bytes) {
    const char* const start = bytes.data();
    ++lineCount;
    TextLines::Take(bytes);
    const auto length = static_cast<std::size_t>(bytes.data() - start);
    if (!Others.empty() && Others.back().BlocksBefore == Blocks.size() &&
        Others.back().Bytes.data() + Others.back().Bytes.size() == start) {
        OtherLines& last = Others.back();
        last.Bytes = {last.Bytes.data(), last.Bytes.size() + length};
        return;
    }
    Others.push_back({lineCount, Blocks.size(), {start, length}});
}

} // namespace velmora
