#include "editor/RegExpMatcher.h"

#include "platform/CodePage.h"

#include <utility>

namespace velmora {

namespace {

// Limits of the steps that a trial at one place of a text may take.
const QString HastyLimit = QStringLiteral("(*LIMIT_MATCH=1000)");  // some microseconds
const QString WorkLimit = QStringLiteral("(*LIMIT_MATCH=200000)"); // a millisecond or two
constexpr int MostTrials = 10; // that the hasty limit was too low for; in one text
/// The line break "\n" is none of the word behind it.
const QString WordBegin = QStringLiteral("(?:(?<!\\w)|(?<=\\\\[nN]))");

QString WholeWords(const QString& pattern) {
    return WordBegin + QStringLiteral("(?:%1)(?!\\w)").arg(pattern);
}

QRegularExpression::PatternOptions OptionsOf(bool matchCase) {
    const QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    return matchCase ? options : options | QRegularExpression::CaseInsensitiveOption;
}

} // namespace

RegExpMatcher::RegExpMatcher(const QString& pattern, std::string with, TextMatcher::How how)
    : expression(WorkLimit + pattern, OptionsOf(how.MatchCase)), replacing(std::move(with)),
      plain(replacing.find('\\') == std::string::npos) {
    const bool whole = how.WholeWord && expression.isValid(); // a fault is told of what the user typed
    const QString sought = whole ? WholeWords(pattern) : pattern;
    expression.setPattern(WorkLimit + sought);
    hasty = QRegularExpression(HastyLimit + sought, expression.patternOptions());
    for (unsigned byte = 0; byte < 256; ++byte)
        unicode[byte] = static_cast<char16_t>(CodePage::ToUnicode(static_cast<unsigned char>(byte)));
}

QString RegExpMatcher::Fault() const {
    if (expression.isValid())
        return {};
    const qsizetype at = expression.patternErrorOffset() - WorkLimit.size();
    return QStringLiteral("%1 (at character %2)")
        .arg(expression.errorString())
        .arg(qMax<qsizetype>(0, at) + 1);
}

bool RegExpMatcher::ForEachHit(std::string_view text, const Visit& visit) const {
    shown.resize(static_cast<qsizetype>(text.size()));
    auto* to = reinterpret_cast<char16_t*>(shown.data());
    for (const char c : text)
        *to++ = unicode[static_cast<unsigned char>(c)];
    int trialsLeft = MostTrials;
    for (qsizetype at = 0; at <= shown.size();) {
        const QRegularExpressionMatch match = Next(at, trialsLeft);
        if (!match.hasMatch())
            return match.isValid(); // or it took too much work
        const qsizetype length = match.capturedLength();
        const auto start = static_cast<std::size_t>(match.capturedStart());
        if (plain)
            visit(start, static_cast<std::size_t>(length), replacing);
        else
            visit(start, static_cast<std::size_t>(length), Expanded(text, match));
        at = match.capturedEnd() + (length == 0 ? 1 : 0);
    }
    return true;
}

QRegularExpressionMatch RegExpMatcher::Next(qsizetype from, int& trialsLeft) const {
    const auto match = [this](const QRegularExpression& pattern, qsizetype at, auto... more) {
        return pattern.match(shown, at, QRegularExpression::NormalMatch,
                             (QRegularExpression::DontCheckSubjectStringMatchOption | ... | more));
    };
    QRegularExpressionMatch found = match(hasty, from);
    if (found.isValid())
        return found;
    // Place by place, for a limit holds for each place anew.
    for (qsizetype at = from; at <= shown.size() && !found.hasMatch(); ++at) {
        constexpr auto here = QRegularExpression::AnchorAtOffsetMatchOption;
        found = match(hasty, at, here);
        if (!found.isValid() && trialsLeft-- > 0)
            found = match(expression, at, here);
        if (!found.isValid())
            break;
    }
    return found;
}

std::string RegExpMatcher::Expanded(std::string_view text, const QRegularExpressionMatch& match) const {
    std::string result;
    for (std::size_t i = 0; i < replacing.size(); ++i) {
        const char next = i + 1 < replacing.size() ? replacing[i + 1] : '\0';
        if (replacing[i] != '\\' || (next != '\\' && (next < '0' || next > '9'))) {
            result += replacing[i];
            continue;
        }
        ++i;
        if (next == '\\')
            result += next;
        else if (const int group = next - '0'; match.capturedStart(group) >= 0)
            result += text.substr(static_cast<std::size_t>(match.capturedStart(group)),
                                  static_cast<std::size_t>(match.capturedLength(group)));
    }
    return result;
}

} // namespace velmora
