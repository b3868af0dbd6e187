#pragma once

#include "SoundRecords.h"
#include "TempFolder.h"
#include "lsp/Server.h"
#include "lsp/Uri.h"
#include "services/Catalogues.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <vector>

namespace velmora::lsp {

inline std::string Framed(const std::string& body) {
    return "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body;
}

/// A server over a game directory, and what it sent.
class ServerFixture : public ::testing::Test {
  protected:
    ServerFixture() {
        BuildCatalogues();
        game.Write("GFX/P.pcx", "picture");
        std::filesystem::create_directories(game.Host() / "Data" / "UP_Issues");
    }

    /// The messages that some bytes are answered by.
    std::vector<Json> Sent(const std::string& bytes) {
        out.str({});
        server.Receive(bytes);
        std::vector<Json> sent;
        MessageReader reader;
        reader.Feed(out.str());
        while (const auto item = reader.Next())
            sent.push_back(Json::parse(item->Body));
        return sent;
    }
    std::vector<Json> Notify(const std::string& method, const Json& params) {
        return Sent(Framed(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}}.dump()));
    }
    /// The answer to a request: its result, or its error.
    Json Ask(const std::string& method, const Json& params) {
        const auto sent =
            Sent(Framed(Json{{"jsonrpc", "2.0"}, {"id", 7}, {"method", method}, {"params", params}}.dump()));
        EXPECT_FALSE(sent.empty());
        messages.clear();
        for (const Json& message : sent)
            if (message.contains("method"))
                messages.push_back(message["params"].value("message", ""));
        const Json& answer = sent.back();
        EXPECT_EQ(answer.value("id", 0), 7) << answer;
        return answer.contains("error") ? answer["error"] : answer["result"];
    }
    void Initialize() { Ask("initialize", Json::object()); }

    [[nodiscard]] std::string Uri(const std::string& file) const { return UriOf(game / file); }
    [[nodiscard]] Json At(const std::string& file, std::size_t line, std::size_t character) const {
        return {{"textDocument", {{"uri", Uri(file)}}},
                {"position", {{"line", line}, {"character", character}}}};
    }
    /// Opens a text, whatever is on disk; what is said of it.
    std::vector<std::string> Open(const std::string& file, const std::string& utf8) {
        return Told(
            Notify("textDocument/didOpen",
                   {{"textDocument",
                     {{"uri", Uri(file)}, {"languageId", "velmora"}, {"version", 1}, {"text", utf8}}}}),
            file);
    }
    /// Replaces a piece of a line, to an end in the same line.
    std::vector<std::string> Type(const std::string& file, std::size_t line, std::size_t from, std::size_t to,
                                  const std::string& utf8, const std::string& toldOf = {}) {
        const Json range{{"start", {{"line", line}, {"character", from}}},
                         {"end", {{"line", line}, {"character", to}}}};
        return Told(Notify("textDocument/didChange",
                           {{"textDocument", {{"uri", Uri(file)}, {"version", 2}}},
                            {"contentChanges", Json::array({{{"range", range}, {"text", utf8}}})}}),
                    toldOf.empty() ? file : toldOf);
    }
    /// "LINE: code" of each diagnostic that was published for a file.
    std::vector<std::string> Told(const std::vector<Json>& sent, const std::string& file) {
        std::vector<std::string> told;
        for (const Json& message : sent) {
            if (message.value("method", "") != "textDocument/publishDiagnostics" ||
                message["params"]["uri"] != Uri(file))
                continue;
            for (const Json& diagnostic : message["params"]["diagnostics"]) {
                told.push_back(std::to_string(diagnostic["range"]["start"]["line"].get<int>()) + ": " +
                               diagnostic["code"].get<std::string>());
                diagnostics.push_back(diagnostic);
            }
        }
        return told;
    }

    TempFolder game;
    std::ostringstream out;
    Server server{out};
    std::vector<std::string> messages; ///< shown to the user beside the last answer
    std::vector<Json> diagnostics;     ///< all that were ever told
};

} // namespace velmora::lsp
