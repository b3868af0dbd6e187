// Tables from elsewhere, and what other programs would make of a text in one.
#include "platform/CodePage.h"
#include "platform/TextLines.h"
#include "records/Csv.h"
#include "services/Numbers.h"

#include <algorithm>
#include <array>

namespace velmora::Csv {

namespace {

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// True for the letters of a date, a time or an exponent; a month may be cut to three.
bool IsDateWord(std::string_view word) {
    static constexpr std::array<std::string_view, 15> words{
        "january",   "february", "march",    "april",    "may", "june", "july", "august",
        "september", "october",  "november", "december", "e",   "am",   "pm"};
    return std::any_of(words.begin(), words.end(), [&](std::string_view whole) {
        return word.size() >= std::min<std::size_t>(whole.size(), 3) &&
               CodePage::EqualNoCase(whole.substr(0, word.size()), word);
    });
}

/// True for what spreadsheets turn into a date ("1-2", "May 5"), a time or an amount ("50%").
bool LooksLikeValue(std::string_view text) {
    bool anyDigit = false;
    for (std::size_t at = 0; at < text.size();) {
        const auto* const end = std::find_if_not(text.begin() + at, text.end(), IsLetter);
        const auto letters = static_cast<std::size_t>(end - text.begin()) - at;
        if (letters > 0 && !IsDateWord(text.substr(at, letters)))
            return false;
        if (letters == 0 && !IsDigit(text[at]) &&
            std::string_view(" .,:/-%$()").find(text[at]) == std::string_view::npos)
            return false;
        anyDigit |= IsDigit(text[at]);
        at += std::max<std::size_t>(letters, 1);
    }
    return anyDigit;
}

/// True for a text that is, behind any apostrophes, more than a text to a spreadsheet.
bool IsTempting(std::string_view text) {
    const std::size_t start = std::min(text.find_first_not_of('\''), text.size());
    text.remove_prefix(start);
    return !text.empty() && (std::string_view("=+-@\t\r").find(text.front()) != std::string_view::npos ||
                             IsNumeric(text) || LooksLikeValue(text) || CodePage::EqualNoCase(text, "true") ||
                             CodePage::EqualNoCase(text, "false"));
}

} // namespace

std::string Guarded(std::string text) {
    if (IsTempting(text))
        text.insert(text.begin(), '\'');
    return text;
}

std::string Unguarded(std::string text) {
    if (text.starts_with('\'') && IsTempting(text))
        text.erase(text.begin());
    return text;
}

void Reader::TakeQuoted(std::string& cell) {
    for (;;) {
        const std::size_t quote = std::min(rest.find('"'), rest.size());
        cell.append(rest.substr(0, quote));
        nextLine += static_cast<std::size_t>(
            std::count(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(quote), '\n'));
        const bool closed = quote < rest.size();
        rest.remove_prefix(quote + (closed ? 1 : 0));
        if (!rest.starts_with('"')) {
            wellQuoted &= closed && (rest.empty() || rest.starts_with(separator) || rest.starts_with('\n') ||
                                     rest.starts_with("\r\n"));
            return;
        }
        cell += '"';
        rest.remove_prefix(1);
    }
}

bool Reader::Next(std::vector<std::string>& cells) {
    const char ends[] = {separator, '\r', '\n'};
    for (; rest.starts_with('\n') || rest.starts_with("\r\n"); ++nextLine)
        TextLines::Take(rest);
    line = nextLine;
    if (rest.empty())
        return false;
    wellQuoted = true;
    std::size_t count = 0;
    for (bool more = true; more; ++count) {
        if (count == cells.size())
            cells.emplace_back();
        std::string& cell = cells[count];
        cell.clear();
        if (rest.starts_with('"')) {
            rest.remove_prefix(1);
            TakeQuoted(cell);
        }
        for (;;) { // a carriage return alone belongs to the text
            const std::size_t end = std::min(rest.find_first_of({ends, 3}), rest.size());
            cell.append(rest.substr(0, end));
            rest.remove_prefix(end);
            if (!rest.starts_with('\r') || rest.starts_with("\r\n"))
                break;
            cell += '\r';
            rest.remove_prefix(1);
        }
        more = rest.starts_with(separator);
        if (more)
            rest.remove_prefix(1);
        else if (!rest.empty()) {
            TextLines::Take(rest);
            ++nextLine;
        }
    }
    cells.resize(count);
    return true;
}

char SeparatorOf(std::string_view table) {
    const std::string_view first = table.substr(0, table.find('\n'));
    const auto count = [&](char separator) { return std::ranges::count(first, separator); };
    constexpr std::array separators{',', ';', '\t'};
    return *std::ranges::max_element(separators, {}, count);
}

} // namespace velmora::Csv
