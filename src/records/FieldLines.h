#pragma once

#include "records/RecordKind.h"
#include "services/Problem.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// Finds the lines of fields in the files that records were read from. Files are read when they are asked
/// for, so that loading has nothing to note; asking file by file reads each once.
class FieldLines {
  public:
    explicit FieldLines(const RecordKind& recordKind) : kind(recordKind) {}

    /// Takes these bytes for those of a file, until another file is asked for.
    void Hold(const std::string& filePath, std::string fileBytes);

    /// 1-based line of a field, named by its property. A field that the record's own block does not give,
    /// be its value carried over from an earlier block or never given, stands at the block's header, as do
    /// name and number of the header itself. 0 for a record without a file on disk.
    std::size_t LineOf(const Record& record, std::string_view property);
    /// Gives problems of a record its kind, name and file, and their lines.
    void Place(const Record& record, std::span<Problem> problems);

  private:
    void Open(const std::string& filePath);
    void ReadBlock(std::size_t headerLine);

    const RecordKind& kind;
    std::string path;
    std::string bytes;
    std::vector<std::size_t> starts; ///< of the lines of `bytes`
    std::size_t block = 0;           ///< header line of the block whose lines are known, 0 for none
    std::vector<std::size_t> lines;  ///< one an entry of kind.Fields
};

} // namespace velmora
