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
    const ProblemSink nobody = [](const Problem&) {};
    BlockReader reader(kind, "Fuzz", nobody, [&](std::unique_ptr<Record> record, std::size_t) {
        written += BlockOf(kind, *record);
    });
    reader.Read(file);
    return written;
}

inline std::string ReadAndWrite(const RecordKind& kind, std::string_view bytes) {
    WrittenBlocks blocks;
    blocks.Find(kind, bytes);
    return Write(kind, blocks);
}

inline std::string ReadLinesAndWrite(const RecordKind& kind, std::string_view bytes) {
    WrittenBlocks lines;
    lines.Others.push_back({1, 0, bytes});
    return Write(kind, lines);
}

/// Any bytes may stand in a file, and it is all one whether its blocks are found or read line by line. What
/// was read must survive being written and read again, from the second reading on: the first one turns the
/// name
/// "!2nd" into "2nd", which only the second one makes legal.
inline void ExpectLastingText(const RecordKind& kind, std::string_view bytes) {
    std::string once;
    try {
        once = ReadAndWrite(kind, bytes);
        if (ReadLinesAndWrite(kind, bytes) != once)
            std::abort();
        once = ReadAndWrite(kind, once);
    } catch (const Failure&) {
        return;
    }
    if (ReadAndWrite(kind, once) != once)
        std::abort();
}

} // namespace velmora
