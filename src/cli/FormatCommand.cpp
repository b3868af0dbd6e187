#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "cli/Reports.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"

#include <algorithm>

namespace velmora {

namespace {

/// A file in two forms: as it stands and as the editor would write it.
struct Forms {
    std::string Old;
    std::string New;
    bool LosesRecords = false; ///< in the new form
    bool IsBroken = false;     ///< records are lost to the game, too
};

Forms ReadForms(const KindEntry& kind, const std::string& path, std::ostream& err) {
    Forms forms;
    ProblemLines lines(err, Files::FolderOf(path));
    LoadRequest request;
    request.Problems = [&](const Problem& problem) {
        if (problem.Rule == LoadFailureRule)
            throw Failure(FailurePathFileAccess, problem.Text);
        lines.Print(problem);
        forms.IsBroken |= problem.Rule == UnfinishedBlockRule;
        forms.LosesRecords |= forms.IsBroken || problem.Rule == kind.Kind->DuplicateRule;
    };
    request.Accept = [&](const std::string& /*name*/, std::string_view bytes) {
        forms.Old = bytes;
        return true;
    };
    Library library(*kind.Kind);
    library.ParseFile(request, path);
    for (const auto& [name, record] : library)
        AppendBlock(*kind.Kind, record, forms.New);
    return forms;
}

ExitStatus Replace(const std::string& path, const Forms& forms, std::ostream& out, std::ostream& err) {
    if (forms.LosesRecords || forms.New.empty()) {
        err << "velwriter: " << OutputText::Path(path) << ": not written, "
            << (forms.LosesRecords ? "records would be lost\n" : "it holds no record\n");
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
        out << (options.ToTerminal ? CodePage::ToUtf8(forms.New) : forms.New);
        return forms.IsBroken ? ExitFailure : ExitWell;
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
