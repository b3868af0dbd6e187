#include "lsp/MessageReader.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace velmora::lsp {

namespace {

constexpr std::string_view LengthKey = "Content-Length:";
constexpr std::string_view HeaderEnd = "\r\n\r\n";

/// The length that a header gives. Whatever stands in front is what a broken message has left behind.
std::optional<std::size_t> LengthIn(std::string_view header) {
    std::size_t at = std::string_view::npos;
    for (std::size_t next = 0;
         (next = CodePage::FindNoCase(header, LengthKey, next)) != std::string_view::npos;
         next += LengthKey.size())
        at = next;
    if (at == std::string_view::npos)
        return std::nullopt;
    header.remove_prefix(at + LengthKey.size());
    header.remove_prefix(std::min(header.find_first_not_of(' '), header.size()));
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(header.data(), header.data() + header.size(), length);
    const bool ends = end == header.data() + header.size() || *end == '\r' || *end == ' ';
    return error == std::errc() && ends ? std::optional(length) : std::nullopt;
}

} // namespace

void MessageReader::Feed(std::string_view bytes) {
    const std::size_t skipped = std::min(toSkip, bytes.size());
    toSkip -= skipped;
    bytes.remove_prefix(skipped);
    held.erase(0, std::exchange(taken, 0));
    held += bytes;
}

std::optional<MessageReader::Item> MessageReader::Next() {
    if (!length)
        if (auto error = TakeHeader())
            return error;
    if (!length || held.size() - taken < *length)
        return std::nullopt;
    Item item{held.substr(taken, *length)};
    taken += *length;
    length.reset();
    return item;
}

std::optional<MessageReader::Item> MessageReader::TakeHeader() {
    const std::string_view rest = std::string_view(held).substr(taken);
    const std::size_t end = rest.find(HeaderEnd);
    if (end > LongestHeader) // or not there yet
        return PassOver();
    taken += end + HeaderEnd.size();
    const auto found = LengthIn(rest.substr(0, end));
    if (!found)
        return Item{.Error = "a message without its length"};
    if (*found <= LongestMessage) {
        length = found;
        return std::nullopt;
    }
    const std::size_t here = std::min(*found, held.size() - taken);
    taken += here;
    toSkip = *found - here;
    return Item{.Error = "a message of " + std::to_string(*found) + " bytes; the longest that is read has " +
                         std::to_string(LongestMessage)};
}

std::optional<MessageReader::Item> MessageReader::PassOver() {
    const std::size_t waiting = held.size() - taken;
    if (waiting <= LongestHeader)
        return std::nullopt;
    // The beginning of a message may be among what is left.
    taken += waiting - LongestHeader / 2;
    return Item{.Error = "what comes is no message"};
}

} // namespace velmora::lsp
