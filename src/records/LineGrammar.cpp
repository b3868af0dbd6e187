#include "records/LineGrammar.h"

#include <algorithm>

namespace velmora {

namespace {

bool IsBlankOrTab(char c) {
    return c == ' ' || c == '\t';
}

std::string_view TrimBlanksAndTabs(std::string_view text) {
    while (!text.empty() && IsBlankOrTab(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlankOrTab(text.back()))
        text.remove_suffix(1);
    return text;
}

void SplitQuoted(std::string_view line, std::size_t quote, KeyValue& parts) {
    parts.Key = TrimBlanksAndTabs(line.substr(0, quote));
    const std::string_view rest = line.substr(quote + 1);
    parts.Value = rest.substr(0, rest.find('"'));
    parts.TextAfterQuote =
        !TrimBlanksAndTabs(rest.substr(std::min(parts.Value.size() + 1, rest.size()))).empty();
}

/// Takes everything up to the next blank or tab off the front.
std::string_view TakePiece(std::string_view& rest) {
    std::size_t end = 0;
    while (end < rest.size() && !IsBlankOrTab(rest[end]))
        ++end;
    const std::string_view piece = rest.substr(0, end);
    rest.remove_prefix(end);
    return piece;
}

std::string_view NextPiece(std::string_view& rest) {
    while (!rest.empty() && IsBlankOrTab(rest.front()))
        rest.remove_prefix(1);
    return TakePiece(rest);
}

void SplitUnquoted(std::string_view line, bool keepBlanks, std::string& scratch, KeyValue& parts) {
    std::string_view rest = line;
    parts.Key = TakePiece(rest);
    parts.Value = NextPiece(rest);
    std::string_view piece = NextPiece(rest);
    if (!keepBlanks && piece.empty())
        return;
    scratch.clear();
    for (std::string_view next = parts.Value; !next.empty(); next = piece, piece = NextPiece(rest)) {
        if (keepBlanks)
            scratch += ' ';
        scratch += next;
    }
    parts.UnneededSpace = !keepBlanks;
    parts.Value = scratch;
}

} // namespace

std::string_view TrimBlanks(std::string_view text) {
    while (!text.empty() && text.front() == ' ')
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

bool SplitLine(std::string_view line, bool keepBlanks, std::string& scratch, KeyValue& parts) {
    line = TrimBlanks(line);
    if (line.empty() || line.starts_with("//"))
        return false;
    parts.UnneededSpace = false;
    parts.TextAfterQuote = false;
    const std::size_t quote = line.find('"');
    if (quote == std::string_view::npos)
        SplitUnquoted(line, keepBlanks, scratch, parts);
    else
        SplitQuoted(line, quote, parts);
    return true;
}

std::string LineForMessage(std::string_view line) {
    std::string text(TrimBlanks(line));
    std::replace(text.begin(), text.end(), '\t', ' ');
    return text;
}

} // namespace velmora
