#pragma once

#include <QString>

namespace velmora {

/// What a person may put into a text box. All text of the game's files is in its code page, between double
/// quotes and on one line; whatever would break that never gets into a box.
struct InputRules {
    int Limit = 0;            ///< most characters, 0 for any number
    bool FiltersKeys = false; ///< drops a typed Enter, turns a typed double quote into a single one
    bool Path = false;        ///< a path of the host: any character, and none of the above

    struct Admitted {
        QString Text;
        QString Hint; ///< what was left out and why; empty when nothing was
    };
    /// What a typed text becomes where `room` more characters fit.
    [[nodiscard]] Admitted Typed(const QString& text, qsizetype room) const;
    /// The same for a pasted or dropped text: line breaks become the two characters "\n", which a cut at the
    /// limit never parts, double quotes single ones, for any box. A path loses line ends and the pair of
    /// quotes around it, as other programs copy paths.
    [[nodiscard]] Admitted Pasted(const QString& text, qsizetype room) const;

    /// A text without the characters that the code page lacks.
    [[nodiscard]] static Admitted KeepCodePage(const QString& text);

    /// Characters that still fit into a text of this length whose selected part is about to be replaced.
    [[nodiscard]] qsizetype Room(qsizetype length, qsizetype selected) const;
};

} // namespace velmora
