#include "kinds/FolderComparison.h"

#include "kinds/FileNames.h"
#include "kinds/Kinds.h"
#include "platform/Failure.h"
#include "platform/Files.h"
#include "records/CheckRecords.h"
#include "services/modWriter.h"

#include <algorithm>

namespace velmora {

namespace {

constexpr std::string_view WholeRecord = "whole record";
constexpr std::string_view FileField = "file";

/// All that a record holds, on one line.
std::string Summary(const RecordKind& kind, const RecordSide::Entry& entry) {
    std::string text = std::string(FileField) + ": " + entry.File;
    kind.ForEachField([&](const Field& field) {
        if (const std::string value = field.Shown(*entry.Content); !value.empty())
            text.append("; ").append(field.Property).append(": ").append(value);
    });
    return text;
}

std::string TextsOf(const std::vector<Problem>& problems) {
    std::vector<std::string> texts;
    texts.reserve(problems.size());
    for (const Problem& problem : problems)
        texts.push_back(problem.Text + " [" + std::string(problem.Rule) + "]");
    return Join(texts, "; ");
}

} // namespace

bool FolderComparison::Read(const std::string& folder) {
    const std::vector<std::string> paths = FilesOf(EntryOf(library.Kind), folder);
    for (const std::string& path : paths)
        try {
            there.AddFile(library.Kind, path);
        } catch (const Failure& failure) {
            there.Faults.push_back({Files::NameOf(path), failure.Description()});
        }
    here.AddLibrary(library);
    differences = Compare(library.Kind, here, there);
    for (const RecordDifference& difference : differences)
        AddRecord(difference);
    AddFaults();
    return !paths.empty();
}

void FolderComparison::AddGroup(const std::string& title, const RecordDifference* difference) {
    groups.push_back({title, difference, lines.size(), lines.size()});
}

void FolderComparison::AddLine(const Field* field, std::string refusal) {
    lines.push_back({static_cast<std::uint32_t>(groups.size() - 1), field, std::move(refusal)});
    groups.back().Last = lines.size();
}

void FolderComparison::AddFaults() {
    for (const RecordSide::Fault& fault : there.Faults) {
        AddGroup("not compared: " + fault.File, nullptr);
        AddLine(nullptr, fault.Text);
    }
}

void FolderComparison::AddRecord(const RecordDifference& difference) {
    const RecordSide::Entry* after = difference.After;
    const std::string& name = library.NameOf(*(difference.Before ? difference.Before : after)->Content);
    AddGroup((!after ? "removed: " : difference.Before ? "changed: " : "added: ") + name, &difference);
    if (!after)
        AddLine(nullptr, "only here; nothing is deleted");
    else if (difference.Before)
        AddChanges(difference);
    else
        AddLine(nullptr, IsLegalName(name) ? FileRefusal(library.Kind, {}, after->File)
                                           : "the game takes no such name");
}

void FolderComparison::AddChanges(const RecordDifference& difference) {
    const RecordSide::Entry& before = *difference.Before;
    const std::string deleted = before.Content->ToBeDeleted ? "the record is marked for deletion" : "";
    for (const Field* field : difference.Fields)
        AddLine(field, field == &library.Kind.Name ? "a record keeps its name" : deleted);
    if (difference.Moved)
        AddLine(nullptr,
                deleted.empty() ? FileRefusal(library.Kind, before.File, difference.After->File) : deleted);
}

bool FolderComparison::AnyTicked(const Group& group) const {
    return std::ranges::any_of(LinesOf(group), &Line::Ticked);
}

const Record* FolderComparison::Before(const Group& group) {
    return group.Of->Before ? group.Of->Before->Content : nullptr;
}

std::unique_ptr<Record> FolderComparison::Taken(const Group& group, const Line* line, Beside which) const {
    const Record* before = Before(group);
    const Record& other = *group.Of->After->Content;
    auto taken = library.Kind.Copy(before ? *before : other);
    for (const Line& each : LinesOf(group))
        if (each.Shown && (&each == line ? which == Beside::With : each.Ticked))
            each.Shown->Set(*taken, each.Shown->Get(other));
    NormalizeChanges(library.Kind, before, *taken);
    return taken;
}

bool FolderComparison::IsFaulty(const Group& group) const {
    if (!group.Faulty)
        group.Faulty =
            AnyTicked(group) && !NewProblems(library.Kind, *context, Before(group), *Taken(group)).empty();
    return *group.Faulty;
}

FolderComparison::Totals FolderComparison::Sum() const {
    Totals sum;
    sum.Faults = there.Faults.size();
    for (const RecordDifference& difference : differences)
        ++(!difference.After ? sum.Removed : difference.Before ? sum.Changed : sum.Added);
    sum.Same = library.Count() - sum.Changed - sum.Removed;
    sum.Ticked = static_cast<std::size_t>(std::ranges::count(lines, true, &Line::Ticked));
    sum.WithProblems = static_cast<std::size_t>(
        std::ranges::count_if(groups, [this](const Group& group) { return IsFaulty(group); }));
    return sum;
}

std::string_view FolderComparison::GroupOf(std::size_t line) const {
    return GroupAt(line).Title;
}

std::pair<std::string_view, std::string_view> FolderComparison::NamesOf(std::size_t line) const {
    const RecordDifference* difference = GroupAt(line).Of;
    if (!difference)
        return {};
    const RecordSide::Entry& entry = *(difference->Before ? difference->Before : difference->After);
    const bool isFile = difference->Before && difference->After;
    return {library.NameOf(*entry.Content), lines[line].Shown ? lines[line].Shown->Property
                                            : isFile          ? FileField
                                                              : WholeRecord};
}

ChangeList::Proposal FolderComparison::WholeAt(const Line& line) const {
    const Group& group = groups[line.Group];
    const RecordSide::Entry* before = group.Of->Before;
    const RecordSide::Entry* after = group.Of->After;
    return {{},
            {},
            before ? Summary(library.Kind, *before) : std::string(),
            after ? Summary(library.Kind, *after) : std::string(),
            line.Refusal.empty() ? TextsOf(NewProblems(library.Kind, *context, nullptr, *Taken(group)))
                                 : line.Refusal};
}

ChangeList::Proposal FolderComparison::ChangeAt(const Line& line) const {
    const Group& group = groups[line.Group];
    const RecordSide::Entry& before = *group.Of->Before;
    const RecordSide::Entry& after = *group.Of->After;
    if (!line.Shown)
        return {{}, {}, before.File, after.File, line.Refusal};
    if (!line.Refusal.empty())
        return {{}, {}, line.Shown->Shown(*before.Content), line.Shown->Shown(*after.Content), line.Refusal};
    const auto taken = Taken(group, &line);
    Proposal change{{}, {}, line.Shown->Shown(*before.Content), line.Shown->Shown(*taken), {}};
    const auto without = Taken(group, &line, Beside::Without);
    change.Note = change.Before == change.After
                      ? "stays as it is"
                      : TextsOf(NewProblems(library.Kind, *context, without.get(), *taken));
    return change;
}

ChangeList::Proposal FolderComparison::At(std::size_t at) const {
    const Line& line = lines[at];
    const RecordDifference* difference = groups[line.Group].Of;
    if (!difference)
        return {{}, "fault", {}, {}, line.Refusal};
    Proposal change = difference->Before && difference->After ? ChangeAt(line) : WholeAt(line);
    std::tie(change.Record, change.Field) = NamesOf(at);
    return change;
}

void FolderComparison::Tick(std::size_t line, bool ticked) {
    if (!MayTick(line))
        return;
    lines[line].Ticked = ticked;
    GroupAt(line).Faulty.reset();
}

Edits::Step FolderComparison::MakeStep(std::string name, const std::string& folder) const {
    Edits::Step step(library, std::move(name));
    FileSpelling files(library);
    for (const Group& group : groups)
        if (AnyTicked(group))
            AddToStep(group, files.Of(group.Of->After->File), folder, step);
    return step;
}

void FolderComparison::AddToStep(const Group& group, const std::string& file, const std::string& folder,
                                 Edits::Step& step) const {
    const auto taken = Taken(group);
    const std::string& name = library.NameOf(*taken);
    Record* record = nullptr;
    if (!group.Of->Before) {
        record = &step.Add(name, folder, file);
        step.NoteFile(file);
    } else {
        const Record& before = *group.Of->Before->Content;
        const auto isFile = [](const Line& line) { return line.Ticked && !line.Shown; };
        if (std::ranges::any_of(LinesOf(group), isFile))
            record = &step.Move(name, folder, before.ShortName, file);
        else if (!SameContent(library.Kind, *taken, before))
            record = &step.Change(name);
        else
            return;
    }
    CopyContent(library.Kind, *taken, *record);
    record->IsDirty = true;
    record->IsBeingAdded = false;
}

} // namespace velmora
