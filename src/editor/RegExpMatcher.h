#pragma once

#include "records/Matcher.h"

#include <QRegularExpression>
#include <QString>
#include <array>
#include <string>

namespace velmora {

/// A regular expression over the characters that the bytes of the code page stand for. In what takes a hit's
/// place "\0" is the hit, "\1" to "\9" are its groups and "\\" is a backslash; any other backslash stays.
///
/// The work on one text is limited, however many hits are in it, so that an expression that runs away holds
/// nobody up.
class RegExpMatcher : public Matcher {
  public:
    RegExpMatcher(const QString& pattern, std::string with, TextMatcher::How how);

    /// What is wrong with the expression, and where; empty when nothing is.
    [[nodiscard]] QString Fault() const;
    bool ForEachHit(std::string_view text, const Visit& visit) const override;

  private:
    /// The first hit from a place on; an invalid one when it takes more than is left of the work on the text.
    [[nodiscard]] QRegularExpressionMatch Next(qsizetype from, int& trialsLeft) const;
    [[nodiscard]] std::string Expanded(std::string_view text, const QRegularExpressionMatch& match) const;

    QRegularExpression expression;
    QRegularExpression hasty; ///< the same, but soon given up
    std::string replacing;
    bool plain; ///< the same for every hit
    std::array<char16_t, 256> unicode{};
    mutable QString shown; ///< the text that is searched; kept for its memory
};

} // namespace velmora
