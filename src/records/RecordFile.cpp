#include "records/RecordFile.h"

#include "records/BlockReader.h"

#include <algorithm>

namespace velmora {

const Record& RecordFile::Part::Content() const {
    if (!content)
        content = file->written.MakeRecord(*file->recordKind, block);
    return *content;
}

void RecordFile::Read(const RecordKind& kind, std::string_view bytes, const std::string& name,
                      const ProblemSink& problems) {
    recordKind = &kind;
    Bytes = bytes;
    Parts.RemoveAll();
    Fault.clear();
    std::size_t taken = 0;
    const auto add = [&](const std::string& recordName, Part part, std::size_t end) {
        part.file = this;
        part.Text = Bytes.substr(taken, end - taken);
        if (!Parts.TryAdd(recordName, std::move(part)))
            Fault = "Two records are named " + recordName;
        taken = end;
    };
    written.Find(kind, Bytes);
    GivesAll = written.Others.empty();
    for (std::size_t block = 0; GivesAll && block < written.Blocks.size(); ++block) {
        Part part;
        part.block = block;
        add(std::string(written.Blocks[block].Name), std::move(part), written.Blocks[block].End);
    }
    if (!GivesAll)
        ReadAll(name, problems, add);
    Tail = Bytes.substr(taken);
}

template <class Add>
void RecordFile::ReadAll(const std::string& name, const ProblemSink& problems, const Add& add) {
    const ProblemSink sink = [&](const Problem& problem) {
        if (problem.Rule == UnfinishedBlockRule)
            Fault = "Line " + std::to_string(problem.Line) + ": " + problem.Text;
        if (problems)
            problems(problem);
    };
    std::size_t end = 0;
    std::size_t line = 0;
    BlockReader reader(*recordKind, name, sink, [&](std::unique_ptr<Record> record, std::size_t endLine) {
        Part part;
        part.content = std::move(record);
        for (; line < endLine && end < Bytes.size(); ++line)
            end = std::min(Bytes.find('\n', end), Bytes.size() - 1) + 1;
        const std::string recordName = recordKind->NameOf(*part.content);
        add(recordName, std::move(part), end);
    });
    reader.Read(written);
}

} // namespace velmora
