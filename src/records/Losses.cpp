#include "records/Losses.h"

#include "platform/Files.h"
#include "platform/TextLines.h"
#include "records/LineGrammar.h"
#include "records/TextDiff.h"
#include "services/Numbers.h"
#include "services/modWriter.h"

#include <algorithm>

namespace velmora {

namespace {

enum Loss {
    Comments,
    Unrecognized,
    AfterQuote,
    Blanks,
    Cut,
    Names,
    CarriedOver,
    Duplicates,
    Unfinished,
    LossCount
};

struct LossWords {
    const char* One;
    const char* Many;
};
constexpr LossWords Words[LossCount] = {
    {"comment", "comments"},
    {"unrecognized line", "unrecognized lines"},
    {"text after a closing quote", "texts after a closing quote"},
    {"value with blanks in it", "values with blanks in them"},
    {"number cut or rounded", "numbers cut or rounded"},
    {"name made legal", "names made legal"},
    {"value carried over from an earlier block", "values carried over from an earlier block"},
    {"record dropped for its name", "records dropped for their names"},
    {"block without its end", "blocks without their end"},
};

/// Walks through a file's lines as reading does and counts what has no place in the records.
class Census {
  public:
    Census(const Library& of, const std::string& file) : library(of), kind(of.Kind), shortName(file) {
        given.resize(kind.Fields.size());
        everGiven.resize(kind.Fields.size());
    }

    void Read(std::string_view bytes) {
        while (!bytes.empty()) {
            ++lineNumber;
            if (!TakeSoundLine(bytes))
                Count(TextLines::Take(bytes));
        }
        if (inBlock)
            ++counts[Unfinished];
    }

    [[nodiscard]] std::vector<std::string> Texts() const {
        std::vector<std::string> texts;
        for (int loss = 0; loss < LossCount; ++loss)
            if (const int count = counts[loss]; count > 0)
                texts.push_back(std::to_string(count) + ' ' +
                                (count == 1 ? Words[loss].One : Words[loss].Many));
        return texts;
    }

  private:
    /// Takes an empty line, or one of the next field that loses nothing, off the front. Nearly every line is
    /// one.
    bool TakeSoundLine(std::string_view& bytes) {
        if (bytes.starts_with("\r\n")) {
            bytes.remove_prefix(2);
            return true;
        }
        if (nextField >= kind.Fields.size() || kind.ValuesKeepBlanks)
            return false;
        const Field& field = kind.Fields[nextField];
        std::string_view rest = bytes;
        const auto value = TakeWrittenLine(rest, field.Key);
        if (!value || (IsNumber(field) && CutsNumber(*value)))
            return false;
        given[nextField] = everGiven[nextField] = true;
        ++nextField;
        bytes = rest;
        return true;
    }

    void Count(std::string_view line) {
        KeyValue parts;
        if (!SplitLine(line, kind.ValuesKeepBlanks, scratch, parts)) {
            // Lines of dashes are the editor's own.
            counts[Comments] += std::all_of(line.begin(), line.end(), IsRule) ? 0 : 1;
            return;
        }
        counts[Blanks] += parts.UnneededSpace ? 1 : 0;
        counts[AfterQuote] += EndsAfterQuote(line) ? 1 : 0;
        if (const std::size_t at = FieldOf(parts.Key); at < given.size())
            CountValue(at, parts.Value);
        else if (CodePage::EqualNoCase(parts.Key, kind.Header))
            BeginBlock(parts.Value);
        else if (CodePage::EqualNoCase(parts.Key, kind.End))
            EndBlock();
        else
            ++counts[Unrecognized];
    }

    static bool IsRule(char c) { return c == '/' || c == '-' || c == ' '; }

    static bool IsNumber(const Field& field) {
        return field.Type == FieldType::Number || field.Type == FieldType::LateNumber;
    }

    static bool CutsNumber(std::string_view value) {
        return std::to_string(RoundToInt32(LeadingNumber(value))) != TextLines::Stripped(value);
    }

    /// More than blanks stands behind a value's second quote.
    static bool EndsAfterQuote(std::string_view line) {
        const std::size_t first = line.find('"');
        const std::size_t second = first == std::string_view::npos ? first : line.find('"', first + 1);
        return second != std::string_view::npos && !TextLines::Stripped(line.substr(second + 1)).empty();
    }

    /// Mostly the field after the last one found: that is looked at first.
    [[nodiscard]] std::size_t FieldOf(std::string_view key) {
        const std::size_t count = kind.Fields.size();
        for (std::size_t tried = 0; tried < count; ++tried)
            if (const std::size_t at = (nextField + tried) % count;
                CodePage::EqualNoCase(kind.Fields[at].Key, key)) {
                nextField = at + 1;
                return at;
            }
        return count;
    }

    void CountValue(std::size_t at, std::string_view value) {
        given[at] = everGiven[at] = true;
        counts[Cut] += IsNumber(kind.Fields[at]) && CutsNumber(value) ? 1 : 0;
    }

    void BeginBlock(std::string_view value) {
        counts[Unfinished] += inBlock ? 1 : 0;
        inBlock = true;
        headerLine = lineNumber;
        std::string name(value);
        counts[Names] += SanitizeName(name, kind.NameWord).empty() ? 0 : 1;
        record = library.Find(name);
    }

    void EndBlock() {
        for (std::size_t at = 0; at < given.size(); ++at) {
            counts[CarriedOver] += everGiven[at] && !given[at] ? 1 : 0;
            given[at] = false;
        }
        // A record of the same name from another place stands for this one.
        const bool kept = record && record->HeaderLine == headerLine && record->FileOnDisk >= 0 &&
                          CodePage::EqualNoCase(
                              library.Files.KeyAt(static_cast<std::size_t>(record->FileOnDisk)), shortName);
        counts[Duplicates] += kept ? 0 : 1;
        inBlock = false;
        nextField = 0;
    }

    const Library& library;
    const RecordKind& kind;
    const std::string& shortName;
    int counts[LossCount] = {};
    std::vector<bool> given;
    std::vector<bool> everGiven;
    std::size_t lineNumber = 0;
    std::size_t headerLine = 0;
    std::size_t nextField = 0;
    bool inBlock = false;
    const Record* record = nullptr;
    std::string scratch;
};

std::string BytesOnDisk(const std::string& path) {
    return Files::FileExists(path) ? Files::ReadWhole(path) : std::string();
}

void Describe(const Library& library, const std::string& folder, const std::string& name,
              const std::string& text, std::string& details) {
    details += name + (text.empty() ? ": will be deleted\r" : "\r");
    try {
        const std::string old = BytesOnDisk(folder + name);
        for (const std::string& loss : LossesOf(library, name, old))
            details += "  lost: " + loss + "\r";
        details += DiffLines(old, text);
    } catch (const Failure& failure) {
        details += "  " + failure.Description() + "\r";
    }
    details += "\r";
}

} // namespace

std::vector<std::string> LossesOf(const Library& library, const std::string& shortName,
                                  std::string_view bytes) {
    Census census(library, shortName);
    census.Read(bytes);
    return census.Texts();
}

std::string WriteDetails(const Library& library, const std::string& folder,
                         const std::vector<std::string>& shortNames) {
    KeyedCollection<std::string> texts;
    for (const std::string& name : shortNames)
        texts.TryAdd(name, {});
    for (const auto& [name, record] : library.Records)
        if (std::string* text = record->ToBeDeleted ? nullptr : texts.Find(record->ShortName))
            AppendBlock(library.Kind, *record, *text);
    std::string details;
    for (const auto& [name, text] : texts)
        Describe(library, folder, name, text, details);
    return details;
}

} // namespace velmora
