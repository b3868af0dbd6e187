#pragma once

#include "records/Library.h"

#include <string>

namespace velmora {

/// Why a record may not be given to a file, named without folder; empty when it may. `from` is the file that
/// the record is in, empty for a new one.
std::string FileRefusal(const RecordKind& kind, const std::string& from, const std::string& file);

/// How names of files from elsewhere are spelled here: as the library has them, else as they were first met.
/// Names that differ in case only mean one file, which is to be written once.
class FileSpelling {
  public:
    explicit FileSpelling(const Library& target) : library(target) {}
    const std::string& Of(const std::string& file);

  private:
    const Library& library;
    KeyedCollection<bool> met;
};

} // namespace velmora
