#include "editor/InputRules.h"

#include "editor/QtText.h"
#include "platform/CodePage.h"
#include "services/modWriter.h"

#include <QStringList>
#include <limits>

namespace velmora {

namespace {

/// Printable form of a character for a hint.
QString Named(char32_t character) {
    const QString code = QStringLiteral("U+%1").arg(static_cast<uint>(character), 4, 16, QLatin1Char('0'));
    return QChar::isPrint(character) ? QString::fromUcs4(&character, 1) : code.toUpper();
}

QString LackingHint(const QStringList& lacking) {
    if (lacking.isEmpty())
        return {};
    const bool one = lacking.size() == 1;
    return QStringLiteral("The character%1 ‘%2’ %3 not in the game's code page and %4 left out.")
        .arg(one ? QString() : QStringLiteral("s"), lacking.join(QStringLiteral("’, ‘")),
             one ? QStringLiteral("is") : QStringLiteral("are"),
             one ? QStringLiteral("was") : QStringLiteral("were"));
}

QString FilterKeys(const QString& text) {
    QString filtered;
    for (const QChar c : text) {
        auto key = static_cast<std::int16_t>(c.unicode());
        FilterKeyPress(key);
        if (key != 0)
            filtered += QChar(static_cast<char16_t>(key));
    }
    return filtered;
}

/// A path as it is meant: other programs copy it with quotes around it, terminals with a line's end.
QString PathOf(QString text) {
    text = text.remove(QLatin1Char('\r')).remove(QLatin1Char('\n')).trimmed();
    const bool quoted = text.size() > 1 && text.front() == text.back() &&
                        (text.front() == QLatin1Char('"') || text.front() == QLatin1Char('\''));
    return quoted ? text.mid(1, text.size() - 2) : text;
}

} // namespace

InputRules::Admitted InputRules::KeepCodePage(const QString& text) {
    constexpr int mostNamed = 5;
    Admitted kept;
    QStringList lacking;
    // Accents that stand apart are joined with their letters: the code page has only the joined ones.
    for (const uint character : text.normalized(QString::NormalizationForm_C).toUcs4()) {
        const char32_t unicode = character;
        if (unicode == 0)
            continue;
        if (CodePage::FromUnicode(unicode)) {
            kept.Text += QString::fromUcs4(&unicode, 1);
            continue;
        }
        const QString name = Named(unicode);
        if (lacking.size() < mostNamed && !lacking.contains(name))
            lacking += name;
    }
    kept.Hint = LackingHint(lacking);
    return kept;
}

InputRules::Admitted InputRules::Typed(const QString& text, qsizetype room) const {
    if (Path)
        return {text, {}};
    Admitted admitted = KeepCodePage(FiltersKeys ? FilterKeys(text) : text);
    admitted.Text.truncate(room);
    return admitted;
}

InputRules::Admitted InputRules::Pasted(const QString& text, qsizetype room) const {
    if (Path)
        return {PathOf(text), {}};
    QString lines = text;
    lines.replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
    Admitted admitted = KeepCodePage(lines);
    admitted.Text = ToQt(TextForFile(FromQt(admitted.Text)));
    if (admitted.Text.size() > room) {
        const bool partsBreak = room > 0 && admitted.Text.mid(room - 1, 2) == QLatin1String("\\n");
        admitted.Text.truncate(partsBreak ? room - 1 : room);
        if (admitted.Hint.isEmpty())
            admitted.Hint =
                QStringLiteral("The pasted text was cut: this field holds at most %1 characters.").arg(Limit);
    }
    return admitted;
}

qsizetype InputRules::Room(qsizetype length, qsizetype selected) const {
    if (Limit <= 0)
        return std::numeric_limits<qsizetype>::max();
    return qMax<qsizetype>(0, Limit - (length - selected));
}

} // namespace velmora
