#pragma once

#include "records/RecordKind.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Records as comma-separated values: their contents in file order, the name first, the file last.
namespace Csv {

/// A text as a cell: quoted where it has to be.
std::string Cell(const std::string& text, char separator = ',');
std::string Header(const RecordKind& kind);
std::string Row(const RecordKind& kind, const Record& record);

/// A text for a program that takes what begins with = + - @ for a formula, and digits for a number, an
/// amount, a date or a time: such a one gets an apostrophe in front. Unguarded takes it away again; no other
/// text is changed by either.
std::string Guarded(std::string text);
std::string Unguarded(std::string text);

/// Takes a table apart, row by row. Whatever stands in it makes some cells: a quote that is not closed
/// reaches to the end.
class Reader {
  public:
    Reader(std::string_view table, char cellSeparator) : rest(table), separator(cellSeparator) {}

    /// False at the end. Empty lines are passed over.
    bool Next(std::vector<std::string>& cells);
    /// 1-based line in which the last row begins.
    [[nodiscard]] std::size_t Line() const { return line; }
    /// False when a quote in the last row is not closed, or closed amid its cell: rows may have been taken
    /// for part of it.
    [[nodiscard]] bool WellQuoted() const { return wellQuoted; }

  private:
    void TakeQuoted(std::string& cell);

    std::string_view rest;
    char separator;
    std::size_t line = 0;
    std::size_t nextLine = 1;
    bool wellQuoted = true;
};

/// The separator of a table: of comma, semicolon and tab the one that its first line has most of.
char SeparatorOf(std::string_view table);

} // namespace Csv

} // namespace velmora
