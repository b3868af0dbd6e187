#include "editor/UnwrittenWork.h"

#include "services/Prompts.h"
#include "services/modWriter.h"

namespace velmora {

namespace {

const std::string NotKept =
    "Your changes are safe in this window, but could not be noted on disk in case the "
    "program ends before they are written to file.\r";

} // namespace

UnwrittenWork::UnwrittenWork(Edits& libraryEdits, const Library& library)
    : edits(libraryEdits), journal(library) {
    edits.OnChange([this](const Edits::Change& change) { Keep(change); });
}

bool UnwrittenWork::Lock(const std::string& path) {
    lock.reset();
    try {
        if (auto taken = FileLock::Try(path + ".lock"))
            lock.emplace(std::move(*taken));
        return lock.has_value();
    } catch (const Failure&) {
        return true; // where nothing can be locked work is kept all the same
    }
}

bool UnwrittenWork::Offer(const std::string& path, const std::string& folder) {
    if (!Lock(path)) {
        gPrompts->Message("This editor is open in another Velmora Writer.  Should this one end before its "
                          "changes are written to file, they cannot be taken up again.",
                          Icon::Exclamation);
        return false;
    }
    Journal::Leftover found;
    journal.Find(path, folder, found);
    if (!found.Complaint.empty())
        gPrompts->Message(found.Complaint + "\rThe file is kept as " + journal.KeepCopy(), Icon::Exclamation);
    const bool wanted = !found.Empty() && AskToTakeUp(found);
    if (wanted)
        edits.Do(journal.TakeUp(found));
    else if (!found.Empty() && found.Complaint.empty())
        gPrompts->Message("The changes are kept as " + journal.KeepCopy());
    TellTrouble(NotKept, journal.Begin());
    return wanted;
}

bool UnwrittenWork::AskToTakeUp(const Journal::Leftover& found) const {
    std::vector<std::string> lines;
    for (const auto& [name, record] : found.Records)
        lines.push_back(name + ", " + record->ShortName + (record->ToBeDeleted ? ", to be deleted" : ""));
    for (const std::string& name : found.RemovedRecords)
        lines.push_back(name + ", removed");
    return gPrompts->Ask({"The program ended before changes to these records were written to file: " +
                              std::to_string(lines.size()) + ".\rDo you wish to take them up again?",
                          false, Join(lines, "\r")});
}

void UnwrittenWork::Keep(const Edits::Change& change) {
    const bool committed = change.Kind != Edits::How::Opened && change.Kind != Edits::How::TakenBack;
    if (committed)
        TellTrouble(NotKept, journal.Note(change.Names));
}

void UnwrittenWork::Drop() {
    TellTrouble(
        "What was kept on disk in case the program ends could not be removed.  These changes are written "
        "to file or given up, and will be offered once more.\r",
        journal.Remove());
    lock.reset();
}

void UnwrittenWork::TellTrouble(const std::string& trouble, const std::string& reason) {
    if (!reason.empty())
        gPrompts->Message(trouble + reason, Icon::Exclamation);
}

} // namespace velmora
