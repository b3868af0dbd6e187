#include "records/Matcher.h"

#include "platform/CodePage.h"

#include <utility>

namespace velmora {

namespace {

bool IsOfWord(char c) {
    return (c >= '0' && c <= '9') || c == '_' || CodePage::IsLetter(static_cast<unsigned char>(c));
}

} // namespace

bool WordMayBegin(std::string_view text, std::size_t at) {
    return at == 0 || !IsOfWord(text[at - 1]) || CodePage::EndsWithNoCase(text.substr(0, at), "\\n");
}

bool WordMayEnd(std::string_view text, std::size_t at) {
    return at == text.size() || !IsOfWord(text[at]);
}

TextMatcher::TextMatcher(std::string what, std::string with, How asked)
    : sought(std::move(what)), replacing(std::move(with)), how(asked), finder(sought) {}

bool TextMatcher::IsHit(std::string_view text, std::size_t at) const {
    const std::size_t end = at + sought.size();
    if (how.MatchCase && text.substr(at, sought.size()) != sought)
        return false;
    return !how.WholeWord || (WordMayBegin(text, at) && WordMayEnd(text, end));
}

bool TextMatcher::ForEachHit(std::string_view text, const Visit& visit) const {
    for (std::size_t at = finder.In(text); at != TextFinder::None;) {
        const bool isHit = IsHit(text, at);
        if (isHit)
            visit(at, sought.size(), replacing);
        at = finder.In(text, at + (isHit ? sought.size() : 1));
    }
    return true;
}

} // namespace velmora
