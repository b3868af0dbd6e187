#include "editor/UnwrittenWork.h"

#include "editor/QtText.h"
#include "services/Prompts.h"
#include "services/modWriter.h"

#include <QLockFile>

namespace velmora {

UnwrittenWork::UnwrittenWork(Edits& libraryEdits, const Library& library)
    : edits(libraryEdits), journal(library) {
    edits.OnChange([this](const Edits::Change& change) { Keep(change); });
}
UnwrittenWork::~UnwrittenWork() = default;

bool UnwrittenWork::Lock(const std::string& path) {
    lock = std::make_unique<QLockFile>(PathToQt(path + ".lock"));
    lock->setStaleLockTime(0); // however long it is held: only the end of its program frees it
    return lock->tryLock() || lock->error() != QLockFile::LockFailedError;
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
    TellTrouble(journal.Begin());
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
        TellTrouble(journal.Note(change.Names));
}

void UnwrittenWork::Drop() {
    TellTrouble(journal.Remove());
    lock.reset();
}

void UnwrittenWork::TellTrouble(const std::string& reason) {
    if (!reason.empty())
        gPrompts->Message("Your changes are safe in this window, but could not be noted on disk in case the "
                          "program ends before they are written to file.\r" +
                              reason,
                          Icon::Exclamation);
}

} // namespace velmora
