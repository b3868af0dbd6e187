#include "lsp/OpenFile.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/TextLines.h"
#include "platform/Utf8.h"
#include "records/BlockReader.h"
#include "records/FieldLines.h"
#include "records/Merge.h"
#include "records/TextFault.h"
#include "services/modWriter.h"

#include <algorithm>

namespace velmora::lsp {

namespace {

/// A text whose units beyond the code page are question marks.
std::string Readable(const TextDocument& text) {
    std::string bytes = text.Bytes();
    if (text.FirstForeign() != std::string::npos)
        std::ranges::replace(bytes, '\0', '?');
    return bytes;
}

/// One reading of a text.
class Reading {
  public:
    explicit Reading(OpenFile& read) : file(read), kind(*read.Kind->Kind), bytes(Readable(read.Text)) {
        lines.Hold(file.Path, bytes);
    }

    void Run() {
        file.Records.clear();
        file.Problems.clear();
        file.ProblemsLeftOut = 0;
        if (const TextFault fault = FindTextFault(bytes); !fault.Text.empty())
            return Fail(fault.Text, fault.Line);
        const ProblemSink sink = [&](const Problem& problem) { Keep(problem); };
        BlockReader reader(kind, file.Name, sink,
                           [&](const std::unique_ptr<Record>& record, std::size_t end) {
                               file.Records.push_back(NamedRecordOf(kind, *record, end));
                               Check(*record);
                           });
        try {
            reader.Read(bytes);
        } catch (const Failure& failure) {
            Fail(failure.Description(), LineNamedIn(failure.Description()));
        }
    }

  private:
    void Check(Record& record) {
        if (kind.Check == nullptr)
            return;
        record.FileName = file.Path;
        record.ShortName = file.Name;
        std::vector<Problem> problems;
        kind.Check(record, context, problems);
        if (!file.Index || !file.Index->IsInGame())
            std::erase_if(problems, [](const Problem& problem) { return problem.Rule == "no-image"; });
        lines.Place(record, problems);
        for (Problem& problem : problems)
            Keep(std::move(problem));
    }

    void Keep(Problem problem) {
        if (file.Index && file.Index->Hides(problem))
            return;
        if (file.Problems.size() < MostProblems)
            file.Problems.push_back(std::move(problem));
        else
            ++file.ProblemsLeftOut;
    }

    void Fail(std::string text, std::size_t line) {
        file.Problems.push_back(
            {LoadFailureRule, std::move(text), Severity::Error, {}, {}, kind.Word, file.Name, line});
    }

    OpenFile& file;
    const RecordKind& kind;
    const std::string bytes;
    FieldLines lines{kind};
    const CheckContext nowhere{""};
    const CheckContext& context = file.Index ? file.Index->Context() : nowhere;
};

} // namespace

void ReadAgain(OpenFile& file) {
    Reading(file).Run();
    file.IsChanged = false;
    if (file.Index)
        file.Index->Open(file.Name, file.Records);
}

Formatted Format(const OpenFile& file) {
    Formatted formatted;
    const RecordKind& kind = *file.Kind->Kind;
    const auto refuse = [&](const std::string& reason) {
        formatted.Refusal = "This text is not formatted: " + reason;
        return std::move(formatted);
    };
    if (const std::string fault = EncodingFault(file); !fault.empty())
        return refuse(fault);
    if (!file.Kind->Written)
        return refuse("files of this kind are never written");
    const std::vector<std::string_view> lines = TextLines::Split(file.Text.Bytes());
    if (std::ranges::any_of(lines, IsConflictLine))
        return refuse("a conflict of a merge is not settled yet");
    std::string lost;
    const ProblemSink sink = [&](const Problem& problem) {
        if (problem.Rule == UnfinishedBlockRule)
            lost = "a block has no " + std::string(kind.End);
    };
    KeyedCollection<bool> names;
    BlockReader reader(kind, file.Name, sink, [&](const std::unique_ptr<Record>& record, std::size_t) {
        if (!names.TryAdd(kind.NameOf(*record), true))
            lost = "two records are named " + kind.NameOf(*record);
        AppendBlock(kind, *record, formatted.Text);
    });
    try {
        reader.Read(file.Text.Bytes());
    } catch (const Failure& failure) {
        lost = failure.Description();
    }
    if (lost.empty() && formatted.Text.empty())
        lost = "it holds no record";
    if (!lost.empty())
        return refuse(lost);
    formatted.Losses = reader.Losses;
    return formatted;
}

void CompareWithDisk(OpenFile& file) {
    file.IsUtf8 = false;
    try {
        if (file.Path.empty() || !Files::FileExists(file.Path))
            return;
        const std::string disk = Files::ReadWhole(file.Path);
        const auto decoded = Utf8::IsBeyondAscii(disk) ? CodePage::FromUtf8(disk) : std::nullopt;
        file.IsUtf8 =
            decoded && ReplaceAll(*decoded, "\r\n", "\n") == ReplaceAll(file.Text.Bytes(), "\r\n", "\n");
    } catch (const Failure&) {
        // Then the text itself has to tell.
    }
}

std::string EncodingFault(const OpenFile& file) {
    if (file.Text.FirstForeign() != std::string::npos)
        return "it holds a character that the game's code page lacks. Open the file in that code page (see "
               "velwriter.md, lsp), or take the character out";
    if (file.IsUtf8)
        return "the file is in UTF-8, the game reads it in its code page. Save it in that code page (see "
               "velwriter.md, lsp)";
    return {};
}

} // namespace velmora::lsp
