#pragma once

#include "platform/Failure.h"
#include "records/BlockReader.h"
#include "records/RecordKind.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace velmora {

/// The records of a file's bytes, written as blocks.
inline std::string Write(const RecordKind& kind, const WrittenBlocks& file) {
    std::string written;
    const FindingSink nobody = [](const Finding&) {};
    BlockReader reader(kind, "Fuzz", nobody, [&](std::unique_ptr<Record> record, std::size_t) {
        written += BlockOf(kind, *record);
    });
    reader.Read(file);
    return written;
}

inline std::string ReadAndWrite(const RecordKind& kind, std::string_view bytes) {
    WrittenBlocks blocks;
    blocks.Find(kind, bytes);
    std::string written = Write(kind, blocks);
    // Line by line the same must come out.
    WrittenBlocks lines;
    lines.Others.push_back({1, 0, bytes});
    if (Write(kind, lines) != written)
        std::abort();
    return written;
}

/// Any bytes may stand in a file. What was read must survive being written and read again, from the second
/// reading on: the first one turns the name "!2nd" into "2nd", which only the second one makes legal.
inline void ExpectLastingText(const RecordKind& kind, std::string_view bytes) {
    std::string once;
    try {
        once = ReadAndWrite(kind, ReadAndWrite(kind, bytes));
    } catch (const Failure&) {
        return;
    }
    if (ReadAndWrite(kind, once) != once)
        std::abort();
}

} // namespace velmora
