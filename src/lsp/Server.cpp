#include "lsp/Server.h"

#include "lsp/Uri.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "platform/PathTexts.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <exception>
#include <utility>

namespace velmora::lsp {

namespace {

// The protocol's own numbers.
enum ErrorCode {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    NotInitialized = -32002,
    RequestFailed = -32803,
};
constexpr int TellsError = 1;
constexpr int TellsWarning = 2;

Json Capabilities() {
    return {{"positionEncoding", "utf-16"},
            {"textDocumentSync", {{"openClose", true}, {"change", 2}, {"save", true}}},
            {"hoverProvider", true},
            {"completionProvider", {{"triggerCharacters", Json::array({" ", "\""})}}},
            {"documentSymbolProvider", true},
            {"definitionProvider", true},
            {"documentFormattingProvider", true}};
}

Position PositionIn(const Json& json) {
    return {json.at("line").get<std::size_t>(), json.at("character").get<std::size_t>()};
}

bool IsId(const Json& id) {
    return id.is_string() || id.is_number_integer();
}

std::string UriIn(const Json& params) {
    return params.at("textDocument").at("uri").get<std::string>();
}

/// Some clients send the bytes of a file that they took for UTF-8 as they are: each that is none becomes the
/// replacement character.
std::string Repaired(std::string_view body) {
    std::string repaired;
    while (!body.empty()) {
        const std::string_view before = body;
        if (!Utf8::TakeCharacter(body)) {
            Utf8::Append(repaired, 0xFFFD);
            body.remove_prefix(1);
        } else {
            repaired += before.substr(0, before.size() - body.size());
        }
    }
    return repaired;
}

/// Whether arrays and objects stand in each other so deeply that taking them apart may exhaust the stack.
/// Looked for beforehand: the parser's own callback takes quadratic time for long arrays of objects.
bool IsTooDeep(std::string_view body) {
    constexpr std::size_t deepest = 100;
    std::size_t depth = 0;
    bool inString = false;
    for (std::size_t at = 0; at < body.size() && depth <= deepest; ++at) {
        const char c = body[at];
        if (c == '"')
            inString = !inString;
        else if (inString)
            at += c == '\\' ? 1 : 0;
        else if (c == '[' || c == '{')
            ++depth;
        else if ((c == ']' || c == '}') && depth > 0)
            --depth;
    }
    return depth > deepest;
}

Json Parsed(const std::string& body) {
    Json message = Json::parse(body, nullptr, false);
    return message.is_discarded() ? Json::parse(Repaired(body), nullptr, false) : message;
}

} // namespace

void Server::Receive(std::string_view bytes) {
    reader.Feed(bytes);
    while (!ended) {
        const auto item = reader.Next();
        if (!item)
            break;
        if (item->Error.empty())
            Handle(item->Body);
        else
            SendError(nullptr, InvalidRequest, item->Error);
    }
    if (!ended)
        Publish();
    out.flush();
}

void Server::Handle(const std::string& body) {
    if (IsTooDeep(body))
        return SendError(nullptr, ParseError, "a message that is nested too deeply");
    const Json message = Parsed(body);
    if (message.is_discarded())
        return SendError(nullptr, ParseError, "a message that is no JSON");
    const Json none;
    const auto at = [&](const char* key) -> const Json& {
        return message.is_object() && message.contains(key) ? message[key] : none;
    };
    const Json& id = at("id");
    const Json& method = at("method");
    if (!method.is_string()) {
        // An answer is to no question of ours.
        if (at("result").is_null() && at("error").is_null())
            SendError(IsId(id) ? id : Json(), InvalidRequest, "a message without a method");
        return;
    }
    if (IsId(id))
        HandleRequest(id, method.get<std::string>(), at("params"));
    else
        HandleNotification(method.get<std::string>(), at("params"));
}

void Server::HandleRequest(const Json& id, const std::string& method, const Json& params) {
    if (isShutDown)
        return SendError(id, InvalidRequest, "the server is shut down");
    if (initialized == (method == "initialize"))
        return SendError(id, initialized ? InvalidRequest : NotInitialized,
                         initialized ? "initialized already" : "not initialized yet");
    try {
        Publish(); // a question is about what was typed before it
        Json result = Answer(method, params);
        if (result.is_discarded())
            return SendError(id, MethodNotFound, "there is no " + method);
        Send({{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}});
    } catch (const Json::exception&) {
        SendError(id, InvalidParams, method + " with other parameters than it has");
    } catch (const Refused& refused) {
        SendError(id, RequestFailed, PathTexts::ToHostText(refused.what()));
    } catch (const std::exception& failure) {
        SendError(id, RequestFailed, PathTexts::ToHostText(failure.what()));
    }
}

Json Server::Answer(const std::string& method, const Json& params) {
    if (method == "initialize") {
        initialized = true;
        return {{"capabilities", Capabilities()},
                {"serverInfo", {{"name", "velwriter"}, {"version", VELMORA_VERSION}}}};
    }
    if (method == "shutdown") {
        isShutDown = true;
        return nullptr;
    }
    if (!method.starts_with("textDocument/"))
        return Json(Json::value_t::discarded);
    const OpenFile* file = Find(params);
    OpenFile none;
    none.Kind = &Kinds().front();
    Json result = AnswerOf(method, file ? *file : none, params);
    return file || result.is_discarded() ? result : Json(); // a text of another kind has nothing
}

Json Server::AnswerOf(const std::string& method, const OpenFile& file, const Json& params) {
    if (method == "textDocument/documentSymbol")
        return SymbolsOf(file);
    if (method == "textDocument/hover")
        return HoverAt(file, PositionIn(params.at("position")));
    if (method == "textDocument/completion")
        return CompletionAt(file, PositionIn(params.at("position")));
    if (method == "textDocument/definition")
        return DefinitionAt(file, PositionIn(params.at("position")));
    if (method != "textDocument/formatting")
        return Json(Json::value_t::discarded);
    if (file.Name.empty())
        return nullptr;
    std::string lost;
    Json edits = FormattingOf(file, lost);
    if (!lost.empty())
        Tell(TellsWarning, "Formatting leaves out: " + lost);
    return edits;
}

void Server::HandleNotification(const std::string& method, const Json& params) {
    if (method == "exit") {
        ended = isShutDown ? 0 : 1;
        return;
    }
    if (!initialized || isShutDown)
        return;
    try {
        if (method == "textDocument/didOpen")
            DidOpen(params);
        else if (method == "textDocument/didChange")
            DidChange(params);
        else if (method == "textDocument/didSave")
            DidSave(params);
        else if (method == "textDocument/didClose")
            DidClose(UriIn(params));
        else if (method == "workspace/didChangeWatchedFiles")
            FilesChanged();
    } catch (const std::exception& failure) {
        Tell(TellsError, method + ": " + PathTexts::ToHostText(failure.what()));
    }
}

OpenFile* Server::Find(const Json& params) {
    const auto found = files.find(UriIn(params));
    return found == files.end() ? nullptr : &found->second;
}

void Server::DidOpen(const Json& params) {
    const std::string uri = UriIn(params);
    const Json& text = params.at("textDocument").at("text");
    DidClose(uri);
    OpenFile file;
    file.Path = PathOfUri(uri);
    file.Name = Files::NameOf(file.Path.empty() ? uri : file.Path);
    file.Kind = KindOfFile(file.Name);
    if (file.Kind == nullptr)
        return;
    file.Text.Set(text.get_ref<const std::string&>());
    if (!file.Path.empty())
        file.Index = IndexOf(*file.Kind, Files::FolderOf(file.Path));
    CompareWithDisk(file);
    files.emplace(uri, std::move(file));
    if (TextLength() > longest)
        Forget(uri, "all texts that are open are too long together");
}

std::shared_ptr<FolderIndex> Server::IndexOf(const KindEntry& kind, const std::string& folder) {
    std::erase_if(indexes, [](const auto& entry) { return entry.second.expired(); });
    auto& known = indexes[{&kind, folder}];
    std::shared_ptr<FolderIndex> index = known.lock();
    if (!index)
        known = index = std::make_shared<FolderIndex>(kind, folder);
    index->Refresh();
    return index;
}

void Server::DidChange(const Json& params) {
    OpenFile* file = Find(params);
    if (!file)
        return;
    for (const Json& change : params.at("contentChanges")) {
        const auto& text = change.at("text").get_ref<const std::string&>();
        if (change.contains("range")) {
            const Json& range = change["range"];
            file->Text.Replace(PositionIn(range.at("start")), PositionIn(range.at("end")), text);
        } else {
            file->Text.Set(text);
        }
        file->IsChanged = true;
    }
    if (TextLength() > longest)
        Forget(UriIn(params), "all texts that are open are too long together");
}

void Server::DidSave(const Json& params) {
    if (OpenFile* file = Find(params))
        CompareWithDisk(*file);
    FilesChanged();
}

void Server::FilesChanged() {
    for (const auto& [key, known] : indexes)
        if (const auto index = known.lock())
            index->Refresh();
    for (auto& [uri, file] : files)
        file.IsChanged = true;
}

void Server::DidClose(const std::string& uri) {
    const auto found = files.find(uri);
    if (found == files.end())
        return;
    const OpenFile closed = std::move(found->second);
    files.erase(found);
    isAnyClosed = true;
    const bool twice =
        std::ranges::any_of(files, [&](const auto& entry) { return entry.second.Path == closed.Path; });
    if (closed.Index && !twice)
        closed.Index->Close(closed.Name);
    if (!closed.Published.empty())
        Send({{"jsonrpc", "2.0"},
              {"method", "textDocument/publishDiagnostics"},
              {"params", {{"uri", uri}, {"diagnostics", Json::array()}}}});
}

void Server::Forget(const std::string& uri, const std::string& reason) {
    Tell(TellsError, uri + " is not looked at any more: " + reason);
    DidClose(uri);
}

std::size_t Server::TextLength() const {
    std::size_t length = 0;
    for (const auto& [uri, file] : files)
        length += file.Text.Bytes().size() + 1024; // what one takes without a text
    return length;
}

void Server::Publish() {
    bool any = std::exchange(isAnyClosed, false);
    for (auto& [uri, file] : files) {
        any = any || file.IsChanged;
        if (file.IsChanged)
            ReadAgain(file);
    }
    if (!any)
        return;
    for (auto& [uri, file] : files) {
        Json diagnostics = DiagnosticsOf(file);
        std::string told = diagnostics.dump(-1, ' ', false, Json::error_handler_t::replace);
        if (told == file.Published)
            continue;
        file.Published = std::move(told);
        Send({{"jsonrpc", "2.0"},
              {"method", "textDocument/publishDiagnostics"},
              {"params", {{"uri", uri}, {"diagnostics", std::move(diagnostics)}}}});
    }
}

void Server::Send(const Json& message) {
    const std::string body = message.dump(-1, ' ', false, Json::error_handler_t::replace);
    out << "Content-Length: " << body.size() << "\r\n\r\n" << body;
}

void Server::SendError(const Json& id, int code, const std::string& text) {
    Send({{"jsonrpc", "2.0"}, {"id", id}, {"error", {{"code", code}, {"message", text}}}});
}

void Server::Tell(int type, const std::string& text) {
    Send({{"jsonrpc", "2.0"},
          {"method", "window/showMessage"},
          {"params", {{"type", type}, {"message", text}}}});
}

int Serve(std::istream& in, std::ostream& out) {
    Server server(out);
    std::string bytes;
    // What is there is read at once, but nothing is waited for that has not been sent.
    while (!server.Ended() && out && in.peek() != std::istream::traits_type::eof()) {
        bytes.resize(
            static_cast<std::size_t>(std::clamp<std::streamsize>(in.rdbuf()->in_avail(), 1, 1 << 16)));
        in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        server.Receive(std::string_view(bytes).substr(0, static_cast<std::size_t>(in.gcount())));
    }
    return server.Ended().value_or(1);
}

} // namespace velmora::lsp
