#include "lsp/Uri.h"

#include "platform/Files.h"

#include <algorithm>
#include <cctype>
#include <charconv>

namespace velmora::lsp {

namespace {

constexpr std::string_view Scheme = "file://";

bool IsPlain(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
           std::string_view("-._~/").find(c) != std::string_view::npos;
}

/// "/c:/Games": a drive has no folder above it.
bool NamesDrive(std::string_view path) {
    return path.size() >= 3 && path[0] == '/' && std::isalpha(static_cast<unsigned char>(path[1])) != 0 &&
           path[2] == ':';
}

} // namespace

std::string PathOfUri(std::string_view uri) {
    if (!uri.starts_with(Scheme))
        return {};
    uri.remove_prefix(Scheme.size());
    uri.remove_prefix(std::min(uri.find('/'), uri.size())); // the host's name
    std::u8string path;
    while (!uri.empty()) {
        int byte = static_cast<unsigned char>(uri[0]);
        std::size_t length = 1;
        if (byte == '%' && uri.size() >= 3 &&
            std::from_chars(uri.data() + 1, uri.data() + 3, byte, 16).ptr == uri.data() + 3)
            length = 3;
        path += static_cast<char8_t>(byte);
        uri.remove_prefix(length);
    }
    const std::string_view text(reinterpret_cast<const char*>(path.data()), path.size());
    if (text.find('\0') != std::string_view::npos)
        return {};
    return Files::PathText(NamesDrive(text) ? path.substr(1) : path);
}

std::string UriOf(std::string_view path) {
    const std::u8string host = Files::HostPath(path).generic_u8string();
    std::string uri(Scheme);
    if (!host.starts_with(u8"/"))
        uri += '/';
    for (const char8_t byte : host) {
        const char c = static_cast<char>(byte);
        constexpr std::string_view digits = "0123456789ABCDEF";
        if (IsPlain(c))
            uri += c;
        else
            uri += {'%', digits[byte >> 4], digits[byte & 15]};
    }
    return uri;
}

} // namespace velmora::lsp
