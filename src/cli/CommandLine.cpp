#include "cli/CommandLine.h"

#include "cli/Commands.h"
#include "cli/OutputText.h"
#include "kinds/Rules.h"
#include "lsp/Server.h"
#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "services/Catalogues.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <iostream>

namespace velmora {

namespace {

constexpr const char* Examples = R"(Examples:
  velwriter check ~/Velmora
  velwriter check ~/Velmora --kind events --ignore no-image,unneeded-space
  velwriter check ~/Velmora --baseline known.txt --watch
  velwriter check --list-rules
  velwriter export ~/Velmora --sort name > velmora.json
  velwriter export ~/Velmora --kind upissues --format csv > issues.csv
  velwriter export ~/Velmora --kind events --for spreadsheet > events.csv
  velwriter import ~/Velmora events.csv --write
  velwriter stats ~/Velmora
  velwriter format ~/Velmora/Data/MyEvents.event
  velwriter format --check ~/Velmora/Data/*.event
  velwriter format --write ~/Velmora/Data/MyEvents.event
  velwriter diff old/Data Data
  velwriter merge base.event ours.event theirs.event -o merged.event
  velwriter git --enable
  velwriter lsp

Exit status: 0 all well, 1 something was found, 2 bad usage or a failure.)";

/// The words of the command line as CLI11 leaves them.
struct Words {
    std::string Directory;
    std::string Kind;
    std::string Format;
    std::string Sort = "file";
    std::string For;
    std::string Separator;
    std::vector<std::string> Ignored;
    bool ListRules = false;
    bool NoIgnoreFile = false;
    std::string Baseline;
    std::string NewBaseline;
    bool Watch = false;
    bool Spelling = false;
    std::vector<std::string> Dictionaries{"en_US", "en_GB"};
    std::vector<std::string> OwnFiles = std::vector<std::string>(Kinds().size());
    std::vector<std::string> Files;
    bool Check = false;
    bool Write = false;
    std::string Output;
    std::string Name;
    bool Stdio = false;
    bool Enable = false;
    bool Disable = false;
    bool Status = false;
    bool ToTerminal = false;
};

/// What the words do not add up to.
CLI::ValidationError BadUsage(const std::string& text) {
    return CLI::ValidationError(text);
}

std::vector<std::string> KindNames() {
    std::vector<std::string> names;
    for (const KindEntry& kind : Kinds())
        names.emplace_back(kind.Option);
    return names;
}

void AddOwnFiles(CLI::App& command, Words& words) {
    for (std::size_t i = 0; i < Kinds().size(); ++i) {
        const KindEntry& kind = Kinds()[i];
        command
            .add_option(std::string(kind.OwnFileOption), words.OwnFiles[i],
                        "Your own file of " + std::string(kind.Option) + ", listed even before it exists (" +
                            std::string(kind.OwnFile) + ")")
            ->type_name("NAME");
    }
}

void AddGame(CLI::App& command, Words& words, const std::vector<std::string>& formats) {
    command.add_option("GAME_DIR", words.Directory, "The game's directory, the one that holds Data")
        ->type_name("");
    command.add_option("--kind", words.Kind, "Look at one kind of record only")
        ->check(CLI::IsMember(KindNames()));
    command.add_option("--format", words.Format, "Form of the output (" + formats.front() + ")")
        ->check(CLI::IsMember(formats));
    AddOwnFiles(command, words);
}

/// In the order of CheckFormat.
const std::vector<std::string> CheckFormats{"text", "json", "github", "sarif"};

CLI::App* AddCheck(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("check", "Check every record against the rules of the game");
    AddGame(*command, words, CheckFormats);
    command->add_option("--ignore", words.Ignored, "Leave out the findings of these rules")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("RULE[,RULE...]");
    command->add_flag("--no-ignore-file", words.NoIgnoreFile,
                      "Print what the game directory's velwriter.ignore hides, too");
    CLI::Option* known =
        command->add_option("--baseline", words.Baseline, "Print only what is not in this file")
            ->type_name("FILE");
    CLI::Option* keep = command
                            ->add_option("--write-baseline", words.NewBaseline,
                                         "Keep what is found in this file, for --baseline, and print nothing")
                            ->type_name("FILE")
                            ->excludes(known);
    command->add_flag("--watch", words.Watch, "Check again after each change, until it is stopped")
        ->excludes(keep);
    CLI::Option* spelling = command->add_flag("--spelling", words.Spelling,
                                              "Note unknown words in the texts that players read, too");
    command->add_option("--dictionary", words.Dictionaries, "Dictionaries to look them up in (en_US,en_GB)")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->type_name("NAME[,NAME...]")
        ->needs(spelling);
    command->add_flag("--list-rules", words.ListRules, "List the rules and end");
    command->footer("Example: velwriter check ~/Velmora --kind events --ignore no-image");
    return command;
}

CLI::App* AddExport(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("export", "Print every record as JSON, CSV or PO");
    AddGame(*command, words, {"json", "csv", "po"});
    command->add_option("--for", words.For, "Make a table for other people's programs")
        ->check(CLI::IsMember({"spreadsheet", "translators"}));
    command->add_option("--separator", words.Separator, "What parts the cells of such a table (,)")
        ->check(CLI::IsMember({",", ";", "tab"}));
    command->add_option("--sort", words.Sort, "Order of the records (file)")
        ->check(CLI::IsMember({"file", "name"}));
    command->footer("Example: velwriter export ~/Velmora --sort name > velmora.json");
    return command;
}

CLI::App* AddImport(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("import", "Take records or texts from a table edited elsewhere");
    command->add_option("GAME_DIR", words.Directory, "The game's directory, the one that holds Data")
        ->type_name("");
    command->add_option("FILE", words.Files, "A table as export --for makes it")
        ->required()
        ->expected(1)
        ->type_name("");
    command->add_option("--kind", words.Kind, "Take one kind of record only")
        ->check(CLI::IsMember(KindNames()));
    CLI::Option* dry = command->add_flag("--dry-run", words.Check, "Only tell what would change (so it is)");
    command->add_flag("--write", words.Write, "Write the changed files")->excludes(dry);
    AddOwnFiles(*command, words);
    command->footer("Example: velwriter import ~/Velmora events.csv --write");
    return command;
}

CLI::App* AddStats(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("stats", "Count the records by file, type, answer and problem");
    AddGame(*command, words, {"text", "json"});
    command->footer("Example: velwriter stats ~/Velmora --kind events");
    return command;
}

CLI::App* AddDiff(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("diff", "Tell what changed from one file or folder to another");
    command->add_option("A B", words.Files, "Two files of one kind, or two folders")
        ->required()
        ->expected(2)
        ->type_name("");
    command->add_option("--format", words.Format, "Form of the output (text)")
        ->check(CLI::IsMember({"text", "json"}));
    command->footer("Example: velwriter diff old/Data/MyEvents.event Data/MyEvents.event");
    return command;
}

CLI::App* AddMerge(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("merge", "Merge two versions of a file by record and field");
    command->add_option("BASE OURS THEIRS", words.Files, "The version that both come from, and both")
        ->required()
        ->expected(3)
        ->type_name("");
    command->add_option("-o,--output", words.Output, "File for the result; it may be one of the three")
        ->required()
        ->type_name("OUT");
    command->add_option("--name", words.Name, "The file's name in messages, which tells its kind, too")
        ->type_name("NAME");
    command->footer("Example: velwriter merge base.event ours.event theirs.event -o merged.event");
    return command;
}

CLI::App* AddGit(CLI::App& app, Words& words) {
    CLI::App* command =
        app.add_subcommand("git", "Make git compare and merge the game's files in this repository");
    CLI::Option* enable = command->add_flag("--enable", words.Enable, "Set git's drivers for diff and merge");
    CLI::Option* disable = command->add_flag("--disable", words.Disable, "Take them out again");
    CLI::Option* status =
        command->add_flag("--status", words.Status, "Tell whether they are set; status 1 if not");
    disable->excludes(enable);
    status->excludes(enable)->excludes(disable);
    command->footer("Example: velwriter git --enable");
    return command;
}

CLI::App* AddLsp(CLI::App& app, Words& words) {
    CLI::App* command = app.add_subcommand("lsp", "Serve a text editor by the language server protocol");
    command->add_flag("--stdio", words.Stdio,
                      "Taken, and changes nothing: there is no other way to be spoken to");
    command->footer("Example: velwriter lsp");
    return command;
}

CLI::App* AddFormat(CLI::App& app, Words& words) {
    CLI::App* command =
        app.add_subcommand("format", "Print .event and .UPIssue files as the editor would write them");
    command->add_option("FILE", words.Files, "Files to format")->required()->type_name("");
    CLI::Option* check =
        command->add_flag("--check", words.Check, "Only tell which files would change; status 1 if any");
    command->add_flag("--write", words.Write, "Replace the files")->excludes(check);
    AddOwnFiles(*command, words);
    command->footer("Example: velwriter format --check ~/Velmora/Data/MyEvents.event");
    return command;
}

std::string OwnFileName(const KindEntry& kind, const std::string& utf8) {
    auto name = CodePage::FromUtf8(utf8);
    if (!name)
        throw BadUsage(std::string(kind.OwnFileOption) + ": the code page has no characters for " + utf8);
    return *name;
}

void ExpectGame(const std::string& directory) {
    const std::vector<std::string_view> names = PathTexts::Components(directory);
    if (!names.empty() && CodePage::EqualNoCase(names.back(), "Data") &&
        !Files::FolderExists(Files::Join(directory, "Data")))
        throw Failure(FailurePathNotFound,
                      directory + ": GAME_DIR is the directory that holds Data, not Data itself");
}

GameChoice ChooseGame(const Words& words) {
    if (words.Directory.empty())
        throw BadUsage("GAME_DIR is required");
    GameChoice game;
    game.Directory = OutputText::TypedPath(words.Directory);
    if (!Files::FolderExists(game.Directory))
        throw Failure(FailurePathNotFound, game.Directory + ": no such directory");
    ExpectGame(game.Directory);
    for (std::size_t i = 0; i < Kinds().size(); ++i) {
        const KindEntry& kind = Kinds()[i];
        if (words.Kind.empty() || words.Kind == kind.Option)
            game.Kinds.push_back(&kind);
        if (!words.OwnFiles[i].empty())
            game.Own[&kind] = OwnFileName(kind, words.OwnFiles[i]);
    }
    return game;
}

ExitStatus ListRules(std::ostream& out) {
    std::size_t width = 0;
    for (const RuleEntry& rule : Rules())
        width = std::max(width, rule.Name.size());
    for (const RuleEntry& rule : Rules())
        out << rule.Name << std::string(width + 2 - rule.Name.size(), ' ') << rule.Game << '\n';
    return ExitWell;
}

ExitStatus Check(const Words& words, std::ostream& out, std::ostream& err) {
    for (const std::string& rule : words.Ignored)
        if (!IsRule(rule))
            throw BadUsage("--ignore: there is no rule " + rule + "; --list-rules tells them all");
    if (words.ListRules)
        return ListRules(out);
    CheckOptions options;
    options.Game = ChooseGame(words);
    const auto format = std::ranges::find(CheckFormats, words.Format);
    if (format != CheckFormats.end())
        options.Format = static_cast<CheckFormat>(format - CheckFormats.begin());
    if (words.Watch && options.Format != CheckFormat::Text)
        throw BadUsage("--watch prints text only");
    options.Ignored.insert(words.Ignored.begin(), words.Ignored.end());
    options.ReadIgnoreFile = !words.NoIgnoreFile;
    options.BaselineFile = words.Baseline.empty() ? "" : OutputText::TypedPath(words.Baseline);
    options.NewBaselineFile = words.NewBaseline.empty() ? "" : OutputText::TypedPath(words.NewBaseline);
    options.Watch = words.Watch;
    if (words.Spelling)
        options.Dictionaries = words.Dictionaries;
    return RunCheck(options, out, err);
}

ExportOptions::Form FormOf(const Words& words) {
    using Form = ExportOptions::Form;
    if (words.For.empty()) {
        if (!words.Separator.empty())
            throw BadUsage("--separator goes with --for");
        return words.Format == "csv" ? Form::Csv : words.Format == "po" ? Form::Po : Form::Json;
    }
    if (words.Format == "json" || (words.Format == "po" && words.For == "spreadsheet"))
        throw BadUsage("--for " + words.For + " makes no " + words.Format);
    return words.Format == "po" ? Form::Po : words.For == "spreadsheet" ? Form::Sheet : Form::Texts;
}

ExitStatus Export(const Words& words, std::ostream& out, std::ostream& err) {
    ExportOptions options;
    options.As = FormOf(words);
    using Form = ExportOptions::Form;
    if ((options.As == Form::Csv || options.As == Form::Sheet) && words.Kind.empty())
        throw BadUsage("a table holds one kind; name it with --kind");
    options.Separator = words.Separator == "tab" ? '\t' : words.Separator.empty() ? ',' : words.Separator[0];
    options.Game = ChooseGame(words);
    options.SortByName = words.Sort == "name";
    return RunExport(options, out, err);
}

ExitStatus Format(const Words& words, std::ostream& out, std::ostream& err) {
    FormatOptions options;
    options.Check = words.Check;
    options.Write = words.Write;
    options.ToTerminal = words.ToTerminal;
    for (const std::string& file : words.Files) {
        options.Paths.push_back(OutputText::TypedPath(file));
        const KindEntry* kind = KindOfFile(options.Paths.back());
        if (kind == nullptr || !kind->Written)
            throw BadUsage(file + ": only .event and .UPIssue files can be formatted");
    }
    return RunFormat(options, out, err);
}

ExitStatus Diff(const Words& words, std::ostream& out) {
    return RunDiff({OutputText::TypedPath(words.Files[0]), OutputText::TypedPath(words.Files[1]),
                    words.Format == "json"},
                   out);
}

ExitStatus Merge(const Words& words, std::ostream& err) {
    return RunMerge({OutputText::TypedPath(words.Files[0]), OutputText::TypedPath(words.Files[1]),
                     OutputText::TypedPath(words.Files[2]), OutputText::TypedPath(words.Output),
                     OutputText::TypedPath(words.Name)},
                    err);
}

ExitStatus Git(const Words& words, std::ostream& out) {
    if (!words.Enable && !words.Disable && !words.Status)
        throw BadUsage("git needs --enable, --disable or --status");
    return RunGit(words.Enable    ? GitAction::Enable
                  : words.Disable ? GitAction::Disable
                                  : GitAction::Status,
                  out);
}

ExitStatus Run(CLI::App& app, std::vector<std::string> arguments, Words& words, std::ostream& out,
               std::ostream& err) {
    const CLI::App* check = AddCheck(app, words);
    const CLI::App* exporting = AddExport(app, words);
    const CLI::App* importing = AddImport(app, words);
    const CLI::App* stats = AddStats(app, words);
    const CLI::App* format = AddFormat(app, words);
    const CLI::App* diff = AddDiff(app, words);
    const CLI::App* git = AddGit(app, words);
    const CLI::App* server = AddLsp(app, words);
    AddMerge(app, words);
    const auto named = [&](const CLI::App* command) { return command->get_name() == arguments.front(); };
    if (!arguments.empty() && !arguments.front().starts_with('-') && app.get_subcommands(named).empty())
        throw BadUsage("there is no command " + arguments.front() +
                       "; check, export, import, stats, format, diff, merge, git and lsp are those");
    std::reverse(arguments.begin(), arguments.end()); // CLI11 takes words off the end
    app.parse(std::move(arguments));
    BuildCatalogues();
    if (check->parsed())
        return Check(words, out, err);
    if (importing->parsed())
        return RunImport({ChooseGame(words), OutputText::TypedPath(words.Files.front()), words.Write}, out,
                         err);
    if (stats->parsed())
        return RunStats({ChooseGame(words), words.Format == "json"}, out, err);
    if (exporting->parsed())
        return Export(words, out, err);
    if (format->parsed())
        return Format(words, out, err);
    if (server->parsed())
        return lsp::Serve(std::cin, out) == 0 ? ExitWell : ExitFound;
    if (git->parsed())
        return Git(words, out);
    return diff->parsed() ? Diff(words, out) : Merge(words, err);
}

} // namespace

int RunVelwriter(std::vector<std::string> arguments, std::ostream& out, std::ostream& err, bool toTerminal) {
    CLI::App app("Checks, exports, formats, compares and merges the content files of the game Velmora.",
                 "velwriter");
    app.footer(Examples);
    app.set_version_flag("--version", "velwriter " VELMORA_VERSION);
    app.require_subcommand(1);
    app.allow_windows_style_options(false); // "/games" is a path on every host
    app.failure_message([](const CLI::App*, const CLI::Error& error) {
        return std::string("velwriter: ") + error.what() + "\nRun velwriter --help for more information.\n";
    });
    Words words;
    words.ToTerminal = toTerminal;
    int status = ExitFailure;
    try {
        status = Run(app, std::move(arguments), words, out, err);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error, out, err) == 0 ? ExitWell : ExitFailure;
    } catch (const std::exception& exception) {
        err << "velwriter: " << OutputText::OneLine(exception.what()) << '\n';
    }
    if (!out.flush()) {
        err << "velwriter: the output could not be written\n";
        status = ExitFailure;
    }
    return status;
}

} // namespace velmora
