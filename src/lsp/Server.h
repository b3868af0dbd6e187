#pragma once

#include "lsp/Features.h"
#include "lsp/MessageReader.h"
#include "lsp/OpenFile.h"

#include <istream>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::lsp {

/// A language server for the files of the game: the same checks as everywhere, of texts as they are typed.
/// Whatever it receives, it answers or waits for more; BuildCatalogues must have been called.
class Server {
  public:
    /// All open texts together are kept from being longer than so many characters.
    explicit Server(std::ostream& stream, std::size_t longestTexts = 128u << 20)
        : out(stream), longest(longestTexts) {}

    /// Takes what a client has sent, answers the messages that are whole and tells of the problems of what
    /// they changed.
    void Receive(std::string_view bytes);
    /// The exit status of the program, once the client has ended it.
    [[nodiscard]] std::optional<int> Ended() const { return ended; }

  private:
    void Handle(const std::string& body);
    void HandleRequest(const Json& id, const std::string& method, const Json& params);
    void HandleNotification(const std::string& method, const Json& params);
    Json Answer(const std::string& method, const Json& params);
    Json AnswerOf(const std::string& method, const OpenFile& file, const Json& params);

    void DidOpen(const Json& params);
    void DidChange(const Json& params);
    void DidSave(const Json& params);
    void DidClose(const std::string& uri);
    void FilesChanged();
    void Forget(const std::string& uri, const std::string& reason);
    OpenFile* Find(const Json& params);
    std::shared_ptr<FolderIndex> IndexOf(const KindEntry& kind, const std::string& folder);
    [[nodiscard]] std::size_t TextLength() const;

    /// Reads changed texts again and tells of what is wrong with them, and with others for their sake.
    void Publish();
    void Send(const Json& message);
    void SendError(const Json& id, int code, const std::string& text);
    void Tell(int type, const std::string& text);

    std::ostream& out;
    const std::size_t longest;
    MessageReader reader;
    std::map<std::string, OpenFile> files; ///< by their addresses
    std::map<std::pair<const KindEntry*, std::string>, std::weak_ptr<FolderIndex>> indexes;
    bool isAnyClosed = false; ///< since the last Publish: other files may have problems for its sake
    bool initialized = false;
    bool isShutDown = false;
    std::optional<int> ended;
};

/// Serves until the client ends it or its stream does; returns the exit status.
int Serve(std::istream& in, std::ostream& out);

} // namespace velmora::lsp
