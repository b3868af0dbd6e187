#pragma once

#include "records/RecordKind.h"
#include "records/WrittenBlocks.h"
#include "services/KeyedCollection.h"
#include "services/Problem.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// One file of records taken by itself, outside of any library, with the very text that each record stands
/// in.
struct RecordFile {
    class Part {
      public:
        std::string_view Text; ///< from the end of the record before it to its own last line
        /// Made when it is first asked for: of two files most records stand in the same text. Not to be asked
        /// by several threads at once.
        [[nodiscard]] const Record& Content() const;

      private:
        friend RecordFile;
        const RecordFile* file = nullptr;
        std::size_t block = 0;
        mutable std::unique_ptr<Record> content;
    };

    std::string_view Bytes;
    KeyedCollection<Part> Parts; ///< key: the record's name
    std::string_view Tail;       ///< what stands behind the last record
    bool GivesAll = false;       ///< every block gives each of its fields, none takes one over from another
    std::string Fault; ///< why text may stand in no record, mostly empty: a name met twice, of which the
                       ///< first counts, or a block without an end

    RecordFile() = default;
    RecordFile(const RecordFile&) = delete;
    RecordFile& operator=(const RecordFile&) = delete;
    ~RecordFile() = default;

    /// Takes a file's bytes apart, which have to stay, and tells what reading them reports. Throws what
    /// BlockReader throws, naming the file.
    void Read(const RecordKind& kind, std::string_view bytes, const std::string& name = {},
              const ProblemSink& problems = {});

  private:
    template <class Add>
    void ReadAll(const std::string& name, const ProblemSink& problems, const Add& add);

    const RecordKind* recordKind = nullptr;
    WrittenBlocks written;
};

} // namespace velmora
