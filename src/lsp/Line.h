#pragma once

#include "lsp/Meanings.h"
#include "lsp/OpenFile.h"

namespace velmora::lsp {

/// The line of a position, taken apart, with what of its block matters.
class Line {
  public:
    Line(const OpenFile& file, Position position);

    const Field* KeyField = nullptr; ///< nullptr for a line that begins with no field's key
    std::string Value;
    bool IsInBlock = false;  ///< behind a header and in front of its end
    std::string_view Before; ///< the line up to the position

    /// The number of a field of the same block, 0 when it gives none.
    [[nodiscard]] std::int32_t NumberInBlock(std::string_view property) const;
    /// True when the block gives a field on some other line.
    [[nodiscard]] bool HasKey(const Field& field) const;

  private:
    void ReadBlock(std::size_t line);
    [[nodiscard]] const Field* FieldOf(std::string_view key) const;

    const OpenFile& file;
    const RecordKind& kind;
    std::vector<std::pair<const Field*, std::string>> given; ///< on the other lines of the block
};

} // namespace velmora::lsp
