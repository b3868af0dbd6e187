// Three versions of a file, parted by NUL bytes. Whatever they are, a merge holds what only one side changed,
// is the same the other way round, and can be read.
#include "records/Merge.h"
#include "events/clsEvent.h"
#include "platform/Failure.h"
#include "records/RecordFile.h"
#include "services/modWriter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace velmora {
namespace {

void Demand(bool holds) {
    if (!holds)
        std::abort();
}

/// True when a file has just this record, or has it as little.
bool Has(const RecordFile& file, const std::string& name, const RecordFile::Part* part) {
    const RecordFile::Part* held = file.Parts.Find(name);
    return held && part ? SameContent(EventKind, held->Content(), part->Content()) : held == part;
}

void ExpectNothingLost(const std::vector<std::string>& sides, const MergeResult& merged) {
    RecordFile base;
    RecordFile ours;
    RecordFile theirs;
    RecordFile result;
    base.Read(EventKind, sides[0]);
    ours.Read(EventKind, sides[1]);
    theirs.Read(EventKind, sides[2]);
    try {
        result.Read(EventKind, merged.Text);
    } catch (const Failure&) {
        Demand(false);
    }
    for (const RecordFile* side : {&ours, &theirs})
        for (const auto& [name, part] : side->Parts) {
            const RecordFile& other = side == &ours ? theirs : ours;
            if (Has(base, name, other.Parts.Find(name)))
                Demand(Has(result, name, &part));
        }
}

void Fuzz(const std::vector<std::string>& sides) {
    MergeResult merged;
    MergeResult swapped;
    try {
        merged = Merge(EventKind, sides[0], sides[1], sides[2]);
        swapped = Merge(EventKind, sides[0], sides[2], sides[1]);
        for (const std::string& side : sides) { // those that are the same are not read by a merge
            RecordFile file;
            file.Read(EventKind, side);
            if (!file.Fault.empty())
                return;
        }
    } catch (const Failure&) {
        return;
    }
    Demand(merged.Conflicts.size() == swapped.Conflicts.size());
    if (!merged.Conflicts.empty())
        return;
    Demand(sides[1] == sides[2] || merged.Text == swapped.Text);
    ExpectNothingLost(sides, merged);
}

} // namespace
} // namespace velmora

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    auto sides = velmora::Split(std::string(reinterpret_cast<const char*>(data), size), std::string(1, '\0'));
    sides.resize(3);
    velmora::Fuzz(sides);
    return 0;
}
