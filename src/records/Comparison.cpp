#include "records/Comparison.h"

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "records/TextFault.h"

#include <algorithm>

namespace velmora {

namespace {

/// The records that both sides have, in the order of one.
std::vector<std::string> CommonOrder(const RecordSide& side, const RecordSide& other) {
    std::vector<std::string> order;
    for (const auto& [name, entry] : side.Records)
        if (other.Records.Exists(name))
            order.push_back(CodePage::ToLower(name));
    return order;
}

RecordDifference CompareRecord(const RecordKind& kind, const RecordSide::Entry& before,
                               const RecordSide::Entry& after) {
    RecordDifference difference{&before, &after};
    const auto compare = [&](const Field& field) {
        if (field.Get(*before.Content) != field.Get(*after.Content))
            difference.Fields.push_back(&field);
    };
    if (kind.NameOf(*before.Content) != kind.NameOf(*after.Content))
        difference.Fields.push_back(&kind.Name);
    if (!SameContent(kind, *before.Content, *after.Content))
        kind.ForEachField(compare);
    difference.Moved = !CodePage::EqualNoCase(before.File, after.File);
    return difference;
}

} // namespace

void RecordSide::AddFile(const RecordKind& kind, const std::string& path) {
    const std::string name = Files::NameOf(path);
    auto& [text, parsed] = files.emplace_back();
    Files::ReadWhole(path, text);
    if (TextFault fault = FindTextFault(text); !fault.Text.empty()) {
        Faults.push_back({name, std::move(fault.Text)});
    } else {
        parsed.Read(kind, text, name);
        if (!parsed.Fault.empty())
            Faults.push_back({name, parsed.Fault});
    }
    Bytes.TryAdd(name, std::string_view(text));
    for (const auto& [record, part] : parsed.Parts)
        if (!Records.TryAdd(record, Entry{&part.Content(), name}))
            Faults.push_back({name, record + " is in " + Records.Find(record)->File + " too"});
}

void RecordSide::AddLibrary(const Library& library) {
    for (const auto& [name, record] : library)
        Records.TryAdd(name, Entry{&record, record.ShortName});
}

std::vector<RecordDifference> Compare(const RecordKind& kind, const RecordSide& before,
                                      const RecordSide& after) {
    std::vector<RecordDifference> differences;
    for (const auto& [name, entry] : before.Records) {
        const RecordSide::Entry* now = after.Records.Find(name);
        RecordDifference difference =
            now ? CompareRecord(kind, entry, *now) : RecordDifference{&entry, nullptr};
        if (!now || difference.Moved || !difference.Fields.empty())
            differences.push_back(std::move(difference));
    }
    for (const auto& [name, entry] : after.Records)
        if (!before.Records.Exists(name))
            differences.push_back({nullptr, &entry});
    return differences;
}

bool OrderDiffers(const RecordSide& before, const RecordSide& after) {
    return CommonOrder(before, after) != CommonOrder(after, before);
}

bool BytesDiffer(const RecordSide& before, const RecordSide& after) {
    if (before.Bytes.Count() != after.Bytes.Count())
        return true;
    if (before.Bytes.Count() == 1) // two files may have two names
        return before.Bytes.ItemAt(0) != after.Bytes.ItemAt(0);
    return std::any_of(before.Bytes.begin(), before.Bytes.end(), [&](const auto& file) {
        const std::string_view* now = after.Bytes.Find(file.first);
        return !now || *now != file.second;
    });
}

} // namespace velmora
