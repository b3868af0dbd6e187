#include "services/modWriter.h"

#include "platform/CodePage.h"
#include "platform/Failure.h"
#include "services/GameText.h"
#include "services/Settings.h"

#include <algorithm>
#include <array>

namespace velmora {

namespace {

constexpr std::array<std::string_view, 10> DigitWords{"Zero", "One", "Two",   "Three", "Four",
                                                      "Five", "Six", "Seven", "Eight", "Nine"};
constexpr std::string_view WildCard = "%s";
constexpr std::size_t MostReviewNames = 4;

char UpperOf(char c) {
    return static_cast<char>(CodePage::Upper(static_cast<unsigned char>(c)));
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool IsLegalInName(char c) {
    const char upper = UpperOf(c);
    return (upper >= 'A' && upper <= 'Z') || IsDigit(c) || c == '_';
}

/// Wild cards do not overlap: each percent sign that an s follows makes one.
std::int32_t CountWildCards(std::string_view text) {
    std::int32_t count = 0;
    for (std::size_t at = text.find('%'); at != std::string_view::npos; at = text.find('%', at + 1))
        count += at + 1 < text.size() && (text[at + 1] == 's' || text[at + 1] == 'S') ? 1 : 0;
    return count;
}

/// A name as each line of a report quotes it: a report must not grow with the square of the name.
std::string Shortened(const std::string& name) {
    constexpr std::size_t longest = 200;
    return name.size() <= longest ? name : name.substr(0, longest) + "...";
}

std::int32_t CodeAt(std::span<const std::int32_t> subs, std::size_t at) {
    if (at >= subs.size())
        throw Failure(FailureSubscript, "Subscript out of range");
    return subs[at];
}

} // namespace

bool IsLegalName(std::string_view name) {
    return (name.empty() || !IsDigit(name[0])) && std::all_of(name.begin(), name.end(), IsLegalInName);
}

std::string SanitizeName(std::string& name, std::string_view kind) {
    if (IsLegalName(name))
        return {};
    std::string report;
    const std::string kindText(kind);
    if (!name.empty() && IsDigit(name[0])) {
        report = "Illegal " + kindText +
                 " name found, the first character in the name can not be numeric, the name " + name +
                 " will be converted.  1 will become One, 2 will become Two, etc.";
        name.replace(0, 1, DigitWords[static_cast<std::size_t>(name[0] - '0')]);
    }
    const std::string found =
        "\" found in the " + kindText + " name " + Shortened(name) + ".  It will be removed.";
    for (const char c : name) {
        if (IsLegalInName(c))
            continue;
        if (!report.empty())
            report += '\r';
        report += "Illegal character \"";
        report += UpperOf(c);
        report += found;
    }
    std::erase_if(name, [](char c) { return !IsLegalInName(c); });
    if (!report.empty())
        report += "\r\rFinal revised " + kindText + " name is now: " + name + ".";
    return report;
}

std::string FileNameRefusal(std::string_view name) {
    if (name.ends_with('.') || name.ends_with(' '))
        return "Your filename may not end in a dot or a blank";
    std::string_view device = name.substr(0, name.find('.'));
    device = device.substr(0, device.find_last_not_of(' ') + 1);
    const auto isDevice = [&](std::string_view word) { return CodePage::EqualNoCase(device, word); };
    constexpr std::array<std::string_view, 6> words{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
    bool kept = std::any_of(words.begin(), words.end(), isDevice);
    for (const char digit : std::string_view("123456789\xB9\xB2\xB3")) // raised ones, too
        kept = kept || isDevice(std::string("COM") + digit) || isDevice(std::string("LPT") + digit);
    return kept ? "Your filename may not be \"" + std::string(device) + "\", which Windows keeps for itself"
                : "";
}

std::string StripIllegalFileChars(std::string_view text) {
    std::string stripped(text);
    std::erase_if(stripped, [](char c) {
        return c == ' ' ||
               std::find(IllegalFileChars.begin(), IllegalFileChars.end(), c) != IllegalFileChars.end();
    });
    return stripped;
}

void FilterKeyPress(std::int16_t& keyCode) {
    constexpr std::int16_t enter = 13;
    if (keyCode == enter)
        keyCode = 0;
    else if (keyCode == '"')
        keyCode = '\'';
}

void NormalizeWildCards(std::string& text) {
    if (text.find('%') == std::string::npos)
        return;
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t run = std::min(text.find('%', at), text.size());
        result.append(text, at, run - at);
        at = std::min(text.find_first_not_of('%', run), text.size());
        const bool isWildCard = at > run && at < text.size() && (text[at] == 's' || text[at] == 'S');
        // The last percent sign of a run belongs to the wild card; the others go in pairs.
        const std::size_t others = at - run - (isWildCard ? 1 : 0);
        result.append(others + others % 2, '%');
        if (isWildCard) {
            result += WildCard;
            ++at;
        }
    }
    text = std::move(result);
}

void CheckWildCards(std::string_view text, std::int32_t maximum, std::string_view label,
                    std::span<const std::int32_t> subs, std::vector<Problem>& problems,
                    std::string_view field) {
    auto wildCards = CountWildCards(text);
    const auto set = static_cast<std::int32_t>(
        std::count_if(subs.begin(), subs.end(), [](auto code) { return code != 0; }));
    if (wildCards == 0 && set == 0)
        return;
    const std::string words(label);
    const auto add = [&](std::string_view rule, std::string reason) {
        problems.push_back(Reason(rule, field, std::move(reason)));
    };
    if (wildCards > maximum) {
        add("too-many-wild-cards", "Too many wild cards in the " + words + " text (" +
                                       std::to_string(wildCards) + ") !  You are limited to " +
                                       std::to_string(maximum) + " wild cards.");
        wildCards = maximum;
    }
    if (wildCards == 0 && set > 0)
        add("wild-cards-missing", "No wild cards in the " + words + " text, but Wild Card subs were set.");
    for (std::int32_t j = 0; j < wildCards; ++j)
        if (CodeAt(subs, static_cast<std::size_t>(j)) == 0)
            add("wild-card-placement",
                "The number or placement of wild cards (%s) used in the " + words +
                    " text do not match the number of wild card subs set using the drop down boxes.");
    if (set != wildCards)
        add("wild-card-count", std::to_string(set) + " Wild Card Sub boxes were set, but there are " +
                                   std::to_string(wildCards) + " '%s' character groupings in the " + words +
                                   " text.");
}

std::string LengthText(std::string_view label, std::size_t length, std::size_t maximum) {
    return std::string(label) + " text length (" + std::to_string(length) +
           ") higher than maximum recommended length (" + std::to_string(maximum) + ")!";
}

void CheckLength(std::string_view text, std::size_t maximum, std::string_view label, std::string_view rule,
                 std::string_view field, std::vector<Problem>& problems) {
    if (text.size() <= maximum / 2) // doubled percent signs cannot make it too long
        return;
    if (const std::size_t length = LengthInGame(text); length > maximum)
        problems.push_back({rule, LengthText(label, length, maximum), Severity::Note, field});
}

std::string FailedValidationText(std::span<const Problem> reasons) {
    std::string text = "Failed validation!  Reasons: \r";
    for (const Problem& reason : reasons)
        text += "\r" + reason.Text;
    return text +
           "\r\rDo you still wish to proceed? (proceeding in this state might render Velmora inoperative)";
}

std::string TextForFile(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') {
            result += '\'';
        } else if (text[i] == '\r' || text[i] == '\n') {
            result += "\\n";
            if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
                ++i;
        } else {
            result += text[i] == '\0' ? ' ' : text[i];
        }
    }
    return result;
}

std::string ReviewText(std::string_view text, std::span<const std::string> names) {
    std::string result;
    std::size_t card = 0;
    for (const TextPiece& piece : CutAtWildCards(text, names))
        if (piece.Is == TextPiece::Sort::Plain)
            result += piece.Text;
        else if (card++ < MostReviewNames)
            result += "[" + CodePage::ToUpper(piece.Text) + "]";
    return ShownPlain(result);
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view with) {
    return Join(Split(text, what), with);
}

std::string Join(std::span<const std::string> texts, std::string_view separator) {
    std::string joined;
    for (const std::string& text : texts) {
        if (&text != texts.data())
            joined += separator;
        joined += text;
    }
    return joined;
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    if (!separator.empty())
        for (std::size_t at; (at = text.find(separator, start)) != std::string_view::npos;
             start = at + separator.size())
            pieces.emplace_back(text.substr(start, at - start));
    pieces.emplace_back(text.substr(start));
    return pieces;
}

} // namespace velmora
