// What people who share a library wait for: comparing, merging, and the language server's word on what they
// type.
#include "BenchLibrary.h"
#include "Measure.h"

#include "TempFolder.h"
#include "cli/CommandLine.h"
#include "lsp/Server.h"
#include "lsp/Uri.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "records/Merge.h"
#include "services/Catalogues.h"
#include "services/modWriter.h"

#include <sstream>

namespace velmora {
namespace {

std::string AllOf(const BenchLibrary& files) {
    std::string all;
    for (const std::string& path : files.EventPaths)
        all += Files::ReadWhole(path);
    return all;
}

/// One file with all records, each hundredth of which one side changed, and the other another one.
struct Sides {
    explicit Sides(std::size_t events) : Base(AllOf(LibraryOf(events))), Ours(Base), Theirs(Base) {
        std::size_t record = 0;
        for (std::size_t at = Base.find("  Probability  "); at != std::string::npos;
             at = Base.find("  Probability  ", at + 1), ++record)
            if (record % 100 == 0)
                (record % 200 == 0 ? Ours : Theirs)[at + 15] = '9';
    }
    std::string Base;
    std::string Ours;
    std::string Theirs;
};

void MergeFiles(benchmark::State& state) {
    const Sides sides(static_cast<std::size_t>(state.range(0)));
    Tell(state,
         LeastTime([&] { benchmark::DoNotOptimize(Merge(EventKind, sides.Base, sides.Ours, sides.Theirs)); }),
         {.Milliseconds = 1000});
}
VELMORA_MEASURE(MergeFiles);

/// The command: the files are read, the result is checked and flushed to disk.
void VelwriterMerge(benchmark::State& state) {
    const Sides sides(static_cast<std::size_t>(state.range(0)));
    const TempFolder folder;
    const auto file = [&](const std::string& name) { return (folder.Host() / (name + ".event")).string(); };
    for (const auto& [name, text] :
         {std::pair("base", &sides.Base), std::pair("ours", &sides.Ours), std::pair("theirs", &sides.Theirs)})
        folder.Write(std::string(name) + ".event", *text);
    Tell(state, LeastTime([&] {
             std::ostringstream out;
             if (RunVelwriter({"merge", file("base"), file("ours"), file("theirs"), "-o", file("out")}, out,
                              out) != 0)
                 state.SkipWithError("they do not merge");
         }),
         {.Milliseconds = 1000});
}
VELMORA_MEASURE(VelwriterMerge);

/// Two game directories of which one file differs in all its records.
void DiffFolders(benchmark::State& state) {
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    const TempFolder other;
    for (const std::string& path : files.EventPaths) {
        const std::string text = Files::ReadWhole(path);
        other.Write("Data/" + Files::NameOf(path),
                    path == files.EventPaths.front() ? ReplaceAll(text, "the", "a") : text);
    }
    Tell(state, LeastTime([&] {
             std::ostringstream out;
             std::ostringstream err;
             if (RunVelwriter({"diff", Files::HostPath(files.Game).string(), other.Host().string()}, out,
                              err) != 1)
                 state.SkipWithError("they do not differ");
         }),
         {.Milliseconds = 1000});
}
VELMORA_MEASURE(DiffFolders);

void Send(lsp::Server& server, const std::string& method, const lsp::Json& params, bool asks = false) {
    lsp::Json message{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}};
    if (asks)
        message["id"] = 1;
    const std::string body = message.dump();
    server.Receive("Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
}

/// A letter in a file of 1.5 MB, until the client is told of what it makes wrong.
void LspChange(benchmark::State& state) {
    BuildCatalogues();
    const BenchLibrary& files = LibraryOf(static_cast<std::size_t>(state.range(0)));
    std::string text;
    for (std::size_t i = 0; i < std::min<std::size_t>(5, files.EventPaths.size()); ++i)
        text += Files::ReadWhole(files.EventPaths[i]);
    const lsp::Json document{{"uri", lsp::UriOf(files.Folder + "Zzz.event")}};
    std::ostringstream out;
    lsp::Server server(out);
    Send(server, "initialize", lsp::Json::object(), true);
    lsp::Json opened = document;
    // Names of their own: else every one of them would be doubled.
    opened["text"] = CodePage::ToUtf8(ReplaceAll(text, "\r\nEVENT ", "\r\nEVENT Zz"));
    Send(server, "textDocument/didOpen", {{"textDocument", opened}});
    const lsp::Json start{{"line", 1}, {"character", 6}};
    const double least = LeastTime([&] {
        out.str({});
        Send(server, "textDocument/didChange",
             {{"textDocument", document},
              {"contentChanges", {{{"range", {{"start", start}, {"end", start}}}, {"text", "x!"}}}}});
        if (out.str().find("illegal-name") == std::string::npos)
            state.SkipWithError("nothing was told");
    });
    Tell(state, least, {.Milliseconds = 50});
}
VELMORA_MEASURE(LspChange);

} // namespace
} // namespace velmora
