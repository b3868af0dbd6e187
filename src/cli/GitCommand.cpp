#include "cli/Commands.h"
#include "cli/Host.h"
#include "cli/OutputText.h"
#include "kinds/Kinds.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "platform/Process.h"
#include "platform/TextLines.h"
#include "services/modWriter.h"

#include <algorithm>
#include <cctype>

namespace velmora {

namespace {

constexpr std::string_view ConfigName = "velwriter.config";
constexpr std::string_view Begin = "# velwriter git --enable";
constexpr std::string_view End = "# velwriter git: end";

/// What git prints on a line of words.
std::string Git(const std::string& line, int& status) {
    const std::vector<std::string> words = Split("git " + line, " ");
    return std::string(TextLines::Stripped(ReplaceAll(Host::OutputOf(words, status), "\n", "")));
}

/// A word that the shell, which git starts programs by, takes as it is.
std::string ShellWord(const std::string& word) {
    return "'" + ReplaceAll(word, "'", "'\\''") + "'";
}

std::string ConfigValue(const std::string& value) {
    return '"' + ReplaceAll(ReplaceAll(value, "\\", "\\\\"), "\"", "\\\"") + '"';
}

/// This program as git's shell spells it.
std::string Program() {
    std::string path = PathTexts::ToHostText(Process::ExecutablePath());
    if constexpr (std::filesystem::path::preferred_separator == L'\\')
        std::replace(path.begin(), path.end(), '\\', '/');
    return ShellWord(path);
}

std::string MergeDriver() {
    // In a driver's words git takes a percent sign for the beginning of its own. What cannot be merged by
    // record is merged by line: git would leave one side alone in the file.
    return ReplaceAll(Program(), "%", "%%") + " merge %O %A %B -o %A --name %P || { [ $? -eq 1 ] && exit 1; "
                                              "git merge-file -L ours -L base -L theirs "
                                              "%A %O %B; }";
}

std::string DiffDriver() {
    // Git hands over seven words, the files being the second and the fifth, but only the name of a file
    // whose conflict is not settled. To git any status but 0 is a failure; what cannot be compared by record
    // is by line.
    return "f() { printf 'diff --velwriter %s\\n' \"$1\"; [ $# -ge 7 ] || { echo 'not merged yet'; return; "
           "}; " +
           Program() +
           " diff \"$2\" \"$5\" || [ $? -eq 1 ] || git --no-pager diff --no-index --no-ext-diff \"$2\" "
           "\"$5\" "
           "|| :; }; f";
}

/// Git's patterns know no letter case of their own.
std::string AnyCase(std::string_view extension) {
    std::string pattern = "*";
    for (const char c : extension)
        if (std::isalpha(static_cast<unsigned char>(c)))
            pattern += {'[', static_cast<char>(std::tolower(c)), static_cast<char>(std::toupper(c)), ']'};
        else
            pattern += c;
    return pattern;
}

std::string Attributes() {
    std::string lines = std::string(Begin) + "\n";
    for (const KindEntry& kind : Kinds())
        lines += AnyCase(kind.Kind->Extension) + " diff=velmora merge=velmora\n";
    return lines + std::string(End) + "\n";
}

std::string Headers() {
    std::vector<std::string> words;
    for (const KindEntry& kind : Kinds())
        words.emplace_back(kind.Kind->Header);
    return "^[ \t]*((" + Join(words, "|") + ")[ \t].*)$"; // git shows the first group
}

std::string ReadIfThere(const std::string& path) {
    return Files::FileExists(path) ? Files::ReadWhole(path) : std::string();
}

/// One run of `git`, in the repository that it is run in.
class Repository {
  public:
    explicit Repository(std::ostream& stream) : out(stream) {
        int status = 0;
        // Worktrees of one repository share both files.
        const std::string folder = Git("rev-parse --git-common-dir", status);
        if (status != 0 || folder.empty())
            throw Failure(FailurePathNotFound, "git finds no repository here");
        const std::string common = OutputText::TypedPath(folder);
        config = Files::Join(common, ConfigName);
        attributes = Files::Join(Files::Join(common, "info"), "attributes");
    }

    ExitStatus Enable() {
        Files::ReplaceSafely(config, Config());
        if (!IsIncluded())
            Run("config --local --add include.path " + std::string(ConfigName));
        out << "wrote " << OutputText::Path(config) << ", which the repository's configuration includes:\n"
            << Indented(Config());
        Files::CreateFolder(Files::FolderOf(attributes));
        Files::ReplaceSafely(attributes, WithoutOurs(ReadIfThere(attributes)) + Attributes());
        out << "added to " << OutputText::Path(attributes) << ":\n" << Indented(Attributes());
        return ExitWell;
    }

    ExitStatus Disable() {
        if (IsIncluded()) {
            Run("config --local --unset-all include.path ^velwriter[.]config$");
            out << "took " << ConfigName << " out of the repository's configuration\n";
        }
        if (Files::FileExists(config)) {
            Files::DeleteFile(config);
            out << "deleted " << OutputText::Path(config) << '\n';
        }
        const std::string before = ReadIfThere(attributes);
        const std::string after = WithoutOurs(before);
        if (before == after)
            return ExitWell;
        if (after.empty())
            Files::DeleteFile(attributes);
        else
            Files::ReplaceSafely(attributes, after);
        out << "took velwriter's lines out of " << OutputText::Path(attributes) << '\n';
        return ExitWell;
    }

    /// Well only when all of it is as this program would set it.
    ExitStatus Status() {
        const std::string before = ReadIfThere(attributes);
        const bool configured = IsIncluded() && ReadIfThere(config) == Config();
        const bool attributed = before.find(Attributes()) != std::string::npos;
        const bool any = IsIncluded() || before != WithoutOurs(before);
        out << (configured && attributed ? "enabled: git compares and merges the game's files by velwriter\n"
                : any ? "half enabled, or for another velwriter: run velwriter git --enable again\n"
                      : "not enabled\n");
        return configured && attributed ? ExitWell : ExitFound;
    }

  private:
    static std::string Config() {
        return "[merge \"velmora\"]\n\tname = velwriter: by record and field\n\tdriver = " +
               ConfigValue(MergeDriver()) + "\n[diff \"velmora\"]\n\tcommand = " + ConfigValue(DiffDriver()) +
               "\n\txfuncname = " + ReplaceAll(ConfigValue(Headers()), "\t", "\\t") + "\n";
    }

    static std::string Indented(const std::string& text) {
        std::string indented;
        for (const std::string_view line : TextLines::Split(text))
            indented.append("    ").append(line).append("\n");
        return indented;
    }

    static void Run(const std::string& line) {
        int status = 0;
        Git(line, status);
        if (status != 0)
            throw Failure(FailurePathFileAccess, "git refused: git " + line);
    }

    [[nodiscard]] static bool IsIncluded() {
        int status = 0;
        Git("config --local --get-all include.path ^velwriter[.]config$", status);
        return status == 0;
    }

    static std::string WithoutOurs(std::string_view text) {
        std::string kept;
        bool ours = false;
        while (!text.empty()) {
            const std::string_view before = text;
            const std::string_view line = TextLines::Take(text);
            ours = ours || line == Begin;
            if (!ours)
                kept += before.substr(0, before.size() - text.size());
            ours = ours && line != End;
        }
        if (!kept.empty() && kept.back() != '\n')
            kept += '\n';
        return kept;
    }

    std::ostream& out;
    std::string config;
    std::string attributes;
};

} // namespace

ExitStatus RunGit(GitAction action, std::ostream& out) {
    Repository repository(out);
    switch (action) {
    case GitAction::Enable:
        return repository.Enable();
    case GitAction::Disable:
        return repository.Disable();
    default:
        return repository.Status();
    }
}

} // namespace velmora
