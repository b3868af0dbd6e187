#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::lsp {

/// Where a client says that something is: lines from 0, and UTF-16 units in a line.
struct Position {
    std::size_t Line = 0;
    std::size_t Character = 0;
};

/// A file's text as a client has it open. It is kept as bytes of the code page, whose characters are one
/// UTF-16 unit each: an offset counts both. A unit that the code page has no character for is a NUL byte,
/// which no file of the game holds.
class TextDocument {
  public:
    void Set(std::string_view utf8);
    /// Replaces what stands from one position to another. Positions behind the end mean the end.
    void Replace(Position from, Position to, std::string_view utf8);

    [[nodiscard]] const std::string& Bytes() const { return bytes; }
    /// The first unit beyond the code page, npos without one.
    [[nodiscard]] std::size_t FirstForeign() const { return bytes.find('\0'); }

    [[nodiscard]] std::size_t OffsetOf(Position position) const;
    [[nodiscard]] Position PositionOf(std::size_t offset) const;
    /// A line without its end, empty behind the last one.
    [[nodiscard]] std::string_view Line(std::size_t line) const;

    /// How many lines there are by line feeds, as the game's files count them; a client counts lone carriage
    /// returns, too.
    [[nodiscard]] std::size_t FileLineCount() const { return fileLines.size(); }
    /// Offset of such a line, counted from 1; the last one for a greater number.
    [[nodiscard]] std::size_t StartOfFileLine(std::size_t line) const;
    [[nodiscard]] std::size_t FileLineOf(std::size_t offset) const;

  private:
    /// Finds the lines anew of a piece that was replaced.
    void FindLines(std::size_t begin, std::size_t oldEnd, std::size_t newEnd);

    std::string bytes;
    std::vector<std::size_t> starts = {0};    ///< of the client's lines
    std::vector<std::size_t> fileLines = {0}; ///< of the file's
};

} // namespace velmora::lsp
