#include "records/RecordFile.h"

#include "records/BlockReader.h"

#include <algorithm>

namespace velmora {

void RecordFile::Read(const RecordKind& kind, std::string_view bytes, const std::string& name) {
    Bytes = bytes;
    Parts.RemoveAll();
    Fault.clear();
    std::size_t taken = 0;
    std::size_t linesTaken = 0;
    const ProblemSink sink = [this](const Problem& problem) {
        if (problem.Rule == UnfinishedBlockRule)
            Fault = "Line " + std::to_string(problem.Line) + ": " + problem.Text;
    };
    BlockReader reader(kind, name, sink, [&](std::unique_ptr<Record> record, std::size_t endLine) {
        std::size_t end = taken;
        for (; linesTaken < endLine && end < Bytes.size(); ++linesTaken)
            end = std::min(Bytes.find('\n', end), Bytes.size() - 1) + 1;
        Part part{std::move(record), Bytes.substr(taken, end - taken)};
        const std::string& recordName = kind.NameOf(*part.Content);
        if (!Parts.TryAdd(recordName, std::move(part)))
            Fault = "Two records are named " + recordName;
        taken = end;
    });
    WrittenBlocks blocks;
    blocks.Find(kind, Bytes);
    GivesAll = blocks.Others.empty();
    reader.Read(blocks);
    Tail = Bytes.substr(taken);
}

} // namespace velmora
