#include "records/Losses.h"

#include "platform/Files.h"
#include "records/TextDiff.h"

namespace velmora {

namespace {

std::string BytesOnDisk(const std::string& path) {
    return Files::FileExists(path) ? Files::ReadWhole(path) : std::string();
}

/// True when the file loses something or is deleted.
bool Describe(const Library& library, const std::string& folder, const std::string& name,
              const std::string& text, std::string& details) {
    bool drops = text.empty();
    details += name + (text.empty() ? ": will be deleted\r" : "\r");
    try {
        const std::string old = BytesOnDisk(folder + name);
        for (const std::string& loss : library.LossesOf(name, old).Texts()) {
            details += "  lost: " + loss + "\r";
            drops = true;
        }
        details += DiffLines(old, text);
    } catch (const Failure& failure) {
        details += "  " + failure.Description() + "\r";
    }
    details += "\r";
    return drops;
}

} // namespace

std::string WriteDetails(const Library& library, const std::string& folder,
                         const std::vector<std::string>& shortNames, bool* drops) {
    KeyedCollection<std::string> texts;
    for (const std::string& name : shortNames)
        texts.TryAdd(name, {});
    for (const auto& [name, record] : library)
        if (std::string* text = record.ToBeDeleted ? nullptr : texts.Find(record.ShortName))
            AppendBlock(library.Kind, record, *text);
    std::string details;
    for (const auto& [name, text] : texts)
        if (Describe(library, folder, name, text, details) && drops != nullptr)
            *drops = true;
    return details;
}

} // namespace velmora
