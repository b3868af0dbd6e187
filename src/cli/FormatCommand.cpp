#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "cli/Reports.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/TextLines.h"
#include "records/LineGrammar.h"

#include <algorithm>

namespace velmora {

namespace {

/// The header lines whose block never ends: nothing of them becomes a record.
std::vector<std::size_t> UnfinishedBlocks(const RecordKind& kind, std::string_view bytes) {
    std::vector<std::size_t> unfinished;
    std::string scratch;
    KeyValue parts;
    std::size_t open = 0;
    std::size_t number = 0;
    for (const std::string_view line : TextLines::Split(bytes)) {
        ++number;
        if (!SplitLine(line, kind.ValuesKeepBlanks, scratch, parts))
            continue;
        const bool begins = CodePage::EqualNoCase(parts.Key, kind.Header);
        if (begins && open > 0)
            unfinished.push_back(open);
        if (begins)
            open = number;
        else if (CodePage::EqualNoCase(parts.Key, kind.End))
            open = 0;
    }
    if (open > 0)
        unfinished.push_back(open);
    return unfinished;
}

/// A file in two forms: as it stands and as the editor would write it.
struct Forms {
    std::string Old;
    std::string New;
    std::size_t RecordsLost = 0;
};

Forms ReadForms(const KindEntry& kind, const std::string& path, std::ostream& err) {
    Forms forms;
    FindingLines lines(err, Files::FolderOf(path));
    LoadRequest request;
    request.Findings = [&](const Finding& message) {
        lines.Warn(message);
        forms.RecordsLost += message.Rule == kind.Kind->DuplicateRule;
    };
    request.Accept = [&](const std::string& name, std::string_view bytes) {
        const TextFault fault = FindTextFault(bytes);
        if (!fault.Text.empty())
            throw Failure(FailurePathFileAccess,
                          "This is no text file: " + fault.Text + " in line " + std::to_string(fault.Line));
        forms.Old = bytes;
        for (const std::size_t line : UnfinishedBlocks(*kind.Kind, bytes)) {
            lines.Fail(name, line, "This block has no " + std::string(kind.Kind->End), "unfinished-block");
            ++forms.RecordsLost;
        }
        return true;
    };
    Library library(*kind.Kind);
    library.ParseFile(request, path);
    for (const auto& [name, record] : library)
        AppendBlock(*kind.Kind, record, forms.New);
    return forms;
}

ExitStatus Replace(const std::string& path, const Forms& forms, std::ostream& out, std::ostream& err) {
    if (forms.RecordsLost > 0 || forms.New.empty()) {
        err << "velwriter: " << OutputText::Path(path) << ": not written, "
            << (forms.RecordsLost > 0 ? "records would be lost\n" : "it holds no record\n");
        return ExitFailure;
    }
    Files::ReplaceSafely(path, forms.New);
    out << "written: " << OutputText::Path(path) << '\n';
    return ExitWell;
}

ExitStatus FormatFile(const FormatOptions& options, const std::string& path, std::ostream& out,
                      std::ostream& err) {
    const Forms forms = ReadForms(*KindOfFile(path), path, err);
    if (!options.Check && !options.Write) {
        out << CodePage::ToUtf8(forms.New);
        return ExitWell;
    }
    if (forms.New == forms.Old)
        return ExitWell;
    if (options.Write)
        return Replace(path, forms, out, err);
    out << "would change: " << OutputText::Path(path) << '\n';
    return ExitFound;
}

} // namespace

ExitStatus RunFormat(const FormatOptions& options, std::ostream& out, std::ostream& err) {
    ExitStatus worst = ExitWell;
    for (const std::string& path : options.Paths) {
        try {
            worst = std::max(worst, FormatFile(options, path, out, err));
        } catch (const Failure& failure) {
            err << "velwriter: " << OutputText::Path(path) << ": "
                << OutputText::OneLine(failure.Description()) << '\n';
            worst = ExitFailure;
        }
    }
    return worst;
}

} // namespace velmora
