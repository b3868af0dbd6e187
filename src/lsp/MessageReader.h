#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace velmora::lsp {

/// Cuts a stream of bytes into the messages of the language server protocol. What is no message is passed
/// over and told; never more than one message is kept.
class MessageReader {
  public:
    /// A longer message is passed over: a client that opens a file of hundreds of megabytes must not take the
    /// memory of the whole machine.
    static constexpr std::size_t LongestMessage = 32u << 20;

    /// One message, or what is wrong with one.
    struct Item {
        std::string Body = {};
        std::string Error = {}; ///< empty for a message
    };

    void Feed(std::string_view bytes);
    /// The next message of what was fed; nothing as long as it is not whole.
    std::optional<Item> Next();

  private:
    static constexpr std::size_t LongestHeader = 4096;

    std::optional<Item> PassOver();
    std::optional<Item> TakeHeader();

    std::string held;
    std::size_t taken = 0;             ///< of `held`
    std::size_t toSkip = 0;            ///< of what comes
    std::optional<std::size_t> length; ///< of the body that comes, once its header was read
};

} // namespace velmora::lsp
