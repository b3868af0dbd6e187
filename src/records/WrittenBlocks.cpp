#include "records/WrittenBlocks.h"

#include "platform/TextLines.h"
#include "records/LineGrammar.h"
#include "services/Numbers.h"
#include "services/modWriter.h"

#include <algorithm>
#include <utility>

namespace velmora {

namespace {

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

void WrittenBlocks::Find(const RecordKind& kind, std::string_view bytes) {
    Blocks.clear();
    Texts.clear();
    Numbers.clear();
    Others.clear();
    lineCount = 0;
    while (true) {
        SkipEmptyLines(bytes);
        if (bytes.empty())
            return;
        if (!TakeBlock(kind, bytes))
            TakeOther(bytes);
    }
}

void WrittenBlocks::SkipEmptyLines(std::string_view& bytes) {
    while (true) {
        if (bytes.starts_with("\r\n"))
            bytes.remove_prefix(2);
        else if (bytes.starts_with('\n'))
            bytes.remove_prefix(1);
        else if (!bytes.starts_with(SeparatorLine))
            return;
        else
            bytes.remove_prefix(SeparatorLine.size());
        ++lineCount;
    }
}

bool WrittenBlocks::TakeBlock(const RecordKind& kind, std::string_view& bytes) {
    // The values of these kinds take more than taking a line apart.
    if (kind.ValuesKeepBlanks || kind.SetHeaderNumber || !bytes.starts_with(kind.Header))
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
