#include "records/RecordFile.h"

#include "records/BlockReader.h"

namespace velmora {

void RecordFile::Read(const RecordKind& kind, std::string bytes, const std::string& name) {
    Bytes = std::move(bytes);
    Parts.RemoveAll();
    Fault.clear();
    std::vector<std::size_t> lineEnds; // of each line, behind its end
    for (std::size_t at = Bytes.find('\n'); at != std::string::npos; at = Bytes.find('\n', at + 1))
        lineEnds.push_back(at + 1);
    std::size_t taken = 0;
    const ProblemSink sink = [this](const Problem& problem) {
        if (problem.Rule == UnfinishedBlockRule)
            Fault = "Line " + std::to_string(problem.Line) + ": " + problem.Text;
    };
    BlockReader reader(kind, name, sink, [&](std::unique_ptr<Record> record, std::size_t endLine) {
        const std::size_t end = endLine <= lineEnds.size() ? lineEnds[endLine - 1] : Bytes.size();
        const std::string& recordName = kind.NameOf(*record);
        if (Parts.Exists(recordName))
            Fault = "Two records are named " + recordName;
        Parts.TryAdd(recordName, {std::move(record), std::string_view(Bytes).substr(taken, end - taken)});
        taken = end;
    });
    WrittenBlocks blocks;
    blocks.Find(kind, Bytes);
    GivesAll = blocks.Others.empty();
    reader.Read(blocks);
    Tail = std::string_view(Bytes).substr(taken);
}

} // namespace velmora
