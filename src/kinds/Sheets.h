#pragma once

#include "kinds/PlayerTexts.h"
#include "records/FieldLines.h"

#include <functional>
#include <string>
#include <string_view>

/// Records as tables for people who work in other programs, in UTF-8. Import reads them back.
namespace velmora::Sheets {

/// A row a record: name, contents in file order, file. Texts are guarded (Csv::Guarded).
std::string RecordHeader(const RecordKind& kind, char separator);
std::string RecordRow(const RecordKind& kind, const Record& record, char separator);

/// A text to be translated.
struct Text {
    std::string Place; ///< "A.event:12"
    std::string Source;
    std::string ID;      ///< "event.Raid.Title"
    std::string Context; ///< "Title of event Raid"
    std::string Remark;  ///< limit and wild cards
};
/// Calls `visit` with the texts of a record that are not empty.
void ForEachText(const RecordKind& kind, const Record& record, FieldLines& lines,
                 const std::function<void(const Text&)>& visit);

/// A row a text: location, source, target, ID, context, remark.
std::string TextHeader(char separator);
std::string TextRow(const Text& text, char separator);

/// The same as entries of gettext.
std::string PoHeader();
std::string PoEntry(const Text& text);

} // namespace velmora::Sheets
