#pragma once

#include "records/Library.h"
#include "records/RecordFile.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The records of one kind on one side of a comparison: those of files, or of a library.
struct RecordSide {
    struct Entry {
        const Record* Content;
        std::string File; ///< its name without folder
    };
    /// What keeps text of a file from being compared.
    struct Fault {
        std::string File;
        std::string Text;
    };

    KeyedCollection<Entry> Records;          ///< key: the record's name
    KeyedCollection<std::string_view> Bytes; ///< of each file, key: its name
    std::vector<Fault> Faults;

    /// Adds the records of a file. As in the game, the first one of a name counts. Throws what RecordFile
    /// throws.
    void AddFile(const RecordKind& kind, const std::string& path);
    /// Adds the records of a library, which has to stay as it is.
    void AddLibrary(const Library& library);

  private:
    struct File {
        std::string Text;
        RecordFile Parsed;
    };
    std::deque<File> files;
};

/// A record that is not the same on both sides.
struct RecordDifference {
    const RecordSide::Entry* Before;       ///< nullptr for one that was added
    const RecordSide::Entry* After;        ///< nullptr for one that was removed
    std::vector<const Field*> Fields = {}; ///< that differ, the name among them
    bool Moved = false;                    ///< it stands in a file of another name
};

/// The records that differ: those of the side before in its order, then those that were added.
std::vector<RecordDifference> Compare(const RecordKind& kind, const RecordSide& before,
                                      const RecordSide& after);
/// True when the records that both sides have stand in another order.
bool OrderDiffers(const RecordSide& before, const RecordSide& after);
/// True when the files hold other bytes.
bool BytesDiffer(const RecordSide& before, const RecordSide& after);

} // namespace velmora
