#include "editor/UnwrittenWork.h"

#include "platform/Files.h"
#include "platform/TimeText.h"
#include "services/Prompts.h"
#include "services/modWriter.h"

#include <algorithm>
#include <functional>

namespace velmora {

namespace {

const std::string NotKept =
    "Your changes are safe in this window, but could not be noted on disk in case the "
    "program ends before they are written to file.\r";

constexpr std::string_view GivenUpEnd = ".journal";
constexpr std::size_t GivenUpKept = 20;
constexpr std::size_t DateLength = 15;

} // namespace

UnwrittenWork::UnwrittenWork(Edits& libraryEdits, const Library& editedLibrary)
    : edits(libraryEdits), library(editedLibrary), journal(editedLibrary) {
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

bool UnwrittenWork::Offer(const std::string& usualPath, const std::string& folder) {
    const std::string path = journal.PathFor(usualPath, folder);
    base = Files::NameOf(usualPath.substr(0, usualPath.rfind('.')));
    givenUpFolder = Files::Join(Files::FolderOf(usualPath), "GivenUp");
    dataFolder = folder;
    draft.reset();
    if (!Lock(path)) {
        gPrompts->Message("This editor is open in another Velmora Writer.  Should this one end before its "
                          "changes are written to file, they cannot be taken up again.",
                          Icon::Exclamation);
        return false;
    }
    Journal::Leftover found;
    journal.Find(path, folder, found);
    if (!found.Complaint.empty())
        gPrompts->Message(found.Complaint + KeepAside(), Icon::Exclamation);
    const bool wanted = !found.Empty() && AskToTakeUp(found);
    if (wanted)
        TakeUp(journal, found);
    else if (!found.Empty() && found.Complaint.empty())
        gPrompts->Message("The changes are kept as " + journal.KeepCopy());
    TellTrouble(NotKept, journal.Begin());
    if (draft)
        KeepDraft(&*draft);
    return wanted;
}

void UnwrittenWork::TakeUp(const Journal& from, Journal::Leftover& found) {
    Edits::Step step = from.TakeUp(found);
    if (step.Count() > 0)
        edits.Do(std::move(step));
    draft = std::move(found.Typed);
}

std::string UnwrittenWork::KeepAside() const {
    try {
        return "\rThe file is kept as " + journal.KeepCopy();
    } catch (const Failure& failure) {
        return "\rIt could not be kept under another name: " + failure.Description();
    }
}

bool UnwrittenWork::AskToTakeUp(const Journal::Leftover& found) const {
    std::vector<std::string> lines;
    for (const auto& [name, record] : found.Records)
        lines.push_back(name + ", " + record->ShortName + (record->ToBeDeleted ? ", to be deleted" : ""));
    for (const std::string& name : found.RemovedRecords)
        lines.push_back(name + ", removed");
    if (found.Typed)
        lines.push_back(found.Typed->Name + ", " + found.Typed->File + ", typed but not committed");
    return gPrompts->Ask({"The program ended before changes to these records were written to file: " +
                              std::to_string(lines.size()) + ".\rDo you wish to take them up again?",
                          false, Join(lines, "\r")});
}

void UnwrittenWork::Keep(const Edits::Change& change) {
    const bool committed = change.Kind != Edits::How::Opened && change.Kind != Edits::How::TakenBack;
    if (committed)
        TellTrouble(NotKept, journal.Note(change.Names));
}

void UnwrittenWork::KeepDraft(const Draft* typed) {
    TellTrouble(NotKept, journal.NoteDraft(typed));
}

void UnwrittenWork::KeepGivenUp(const Draft* typed, bool committed) const {
    try {
        WriteGivenUp(typed, committed);
    } catch (const Failure& failure) {
        TellTrouble("What is given up could not be kept on disk, and cannot be taken up again.\r",
                    failure.Description());
    }
}

void UnwrittenWork::WriteGivenUp(const Draft* typed, bool committed) const {
    Files::CreateFolder(givenUpFolder);
    std::string name = base + DateMark(std::time(nullptr));
    const std::vector<std::string> before = GivenUpNames();
    const auto same = std::ranges::find_if(
        before, [&](const std::string& one) { return one.starts_with(name); }); // the latest of this second
    if (same != before.end())
        name = same->substr(0, same->size() - GivenUpEnd.size()) + '_';
    name += GivenUpEnd;
    journal.WriteCopy(Files::Join(givenUpFolder, name), dataFolder, typed, committed);
    const std::vector<std::string> names = GivenUpNames();
    for (std::size_t at = GivenUpKept; at < names.size(); ++at)
        if (names[at] != name)
            Files::DeleteFile(Files::Join(givenUpFolder, names[at]));
}

std::vector<std::string> UnwrittenWork::GivenUpNames() const {
    std::vector<std::string> names;
    if (Files::FolderExists(givenUpFolder))
        names = Files::ListFiles(givenUpFolder);
    std::erase_if(names, [this](const std::string& name) {
        return !name.starts_with(base + '.') || !name.ends_with(GivenUpEnd);
    });
    std::ranges::sort(names, std::greater());
    return names;
}

std::vector<UnwrittenWork::GivenUp> UnwrittenWork::ListGivenUp() const {
    std::vector<GivenUp> list;
    for (const std::string& name : GivenUpNames()) {
        GivenUp work{Files::Join(givenUpFolder, name), name.substr(base.size() + 1, DateLength),
                     std::make_unique<Journal::Leftover>()};
        Journal::Read(library.Kind, work.Path, dataFolder, *work.Work);
        if (!work.Work->Empty())
            list.push_back(std::move(work));
    }
    return list;
}

void UnwrittenWork::TakeUp(const GivenUp& work) {
    Journal from(library);
    Journal::Leftover found;
    from.Find(work.Path, dataFolder, found);
    TakeUp(from, found);
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
