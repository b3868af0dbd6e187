#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velmora {

/// One line of a content file, taken apart.
struct KeyValue {
    std::string_view Key;
    std::string_view Value;
    bool UnneededSpace = false;  ///< an unquoted value was broken by blanks
    bool TextAfterQuote = false; ///< more than blanks stands behind the closing quote
};

/// Takes a line apart, its line end already removed. False for a line to skip (empty, or a comment).
/// Quoted: the key stands before the first quote, the value between the first and the second. Unquoted: the
/// pieces after the first blank or tab are joined, with one blank before each when `keepBlanks` is set.
/// `scratch` holds a joined value; the views are good until either text changes.
bool SplitLine(std::string_view line, bool keepBlanks, std::string& scratch, KeyValue& parts);

/// Takes a line off the front that holds `key` the way the editor itself writes it, and returns its value;
/// leaves any other line alone. What it returns is what SplitLine would, several times as fast.
std::optional<std::string_view> TakeWrittenLine(std::string_view& bytes, std::string_view key);

/// The line as messages quote it: trimmed of blanks, tabs turned into blanks.
std::string LineForMessage(std::string_view line);

std::string_view TrimBlanks(std::string_view text);

} // namespace velmora
