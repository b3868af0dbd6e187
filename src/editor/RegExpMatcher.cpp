#include "editor/RegExpMatcher.h"

#include "platform/CodePage.h"

#include <utility>

namespace velmora {

namespace {

/// More than any sound expression takes on a text of the game; some milliseconds.
const QString WorkLimit = QStringLiteral("(*LIMIT_MATCH=100000)");
/// The line break "\n" is none of the word behind it.
const QString WordBegin = QStringLiteral("(?:(?<!\\w)|(?<=\\\\[nN]))");

QString Limited(const QString& pattern, bool wholeWord) {
    return WorkLimit + (wholeWord ? WordBegin + QStringLiteral("(?:%1)(?!\\w)").arg(pattern) : pattern);
}

QRegularExpression::PatternOptions OptionsOf(bool matchCase) {
    const QRegularExpression::PatternOptions options = QRegularExpression::UseUnicodePropertiesOption;
    return matchCase ? options : options | QRegularExpression::CaseInsensitiveOption;
}

} // namespace

RegExpMatcher::RegExpMatcher(const QString& pattern, std::string with, TextMatcher::How how)
    : expression(Limited(pattern, false), OptionsOf(how.MatchCase)), replacing(std::move(with)),
      plain(replacing.find('\\') == std::string::npos) {
    if (how.WholeWord && expression.isValid())
        expression.setPattern(Limited(pattern, true));
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
    for (qsizetype at = 0; at <= shown.size();) {
        const QRegularExpressionMatch match =
            expression.match(shown, at, QRegularExpression::NormalMatch,
                             QRegularExpression::DontCheckSubjectStringMatchOption);
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
