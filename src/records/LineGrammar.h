#pragma once

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

/// The line as messages quote it: trimmed of blanks, tabs turned into blanks.
std::string LineForMessage(std::string_view line);

std::string_view TrimBlanks(std::string_view text);

} // namespace velmora
