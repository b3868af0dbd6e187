// What differs from the disk, and going back to it.
#include "editor/ChoiceBox.h"
#include "editor/EditorWindow.h"
#include "editor/QtText.h"
#include "editor/StatisticsPanel.h"
#include "editor/UndoPanels.h"
#include "editor/Workbench.h"

#include <QTimer>
#include <algorithm>

namespace velmora {

void EditorWindow::AdoptUndoPanels() {
    new HistoryPanel(*this, *workbench);
    new StatisticsPanel(*this, *workbench, *recordList);
    differences = new DifferencesPanel(*this, *workbench);
    arrows = new RevertArrows(*this, controls.Details);
    // Once for all that one command changes.
    differenceTimer = new QTimer(this);
    differenceTimer->setSingleShot(true);
    differenceTimer->setInterval(0);
    connect(differenceTimer, &QTimer::timeout, this, [this] {
        arrows->Refresh();
        differences->Refresh();
    });
    const auto later = [this] { differenceTimer->start(); };
    connect(this, &RecordWindow::RecordShown, this, later);
    connect(this, &RecordWindow::ModeChanged, this, later);
    connect(&history, &FormHistory::Moved, this, later);
}

std::vector<FieldStates> EditorWindow::FieldsOnShow() const {
    std::vector<FieldStates> all;
    const Record* live = library.Find(ShownRecordName());
    if (!live)
        return all;
    const Edits::DiskRecord disk = edits.OnDisk(ShownRecordName());
    std::unique_ptr<Record> onDisk;
    if (disk.State) {
        onDisk = library.Kind.Copy(*disk.State);
        library.Kind.Normalize(*onDisk);
    }
    for (const Binding& binding : form.Bindings()) {
        if (binding.Hidden() || !binding.TextFor)
            continue;
        FieldStates states{&binding, {}, binding.TextFor(*live), {}};
        if (onDisk)
            states.OnDisk = binding.TextFor(*onDisk);
        states.Typed = Browsing() ? states.Committed : binding.Text();
        all.push_back(std::move(states));
    }
    return all;
}

bool EditorWindow::CanRevert(const FieldStates& states) const {
    return states.OnDisk && *states.OnDisk != states.Typed && states.Field->Read && !halfRead;
}

void EditorWindow::Revert(const Binding& binding) {
    RunCommand("Revert", [&] {
        for (const FieldStates& states : FieldsOnShow())
            if (states.Field == &binding && CanRevert(states))
                Browsing() ? RevertCommitted(binding) : RevertTyped(binding, *states.OnDisk);
    });
}

void EditorWindow::RevertTyped(const Binding& binding, const std::string& text) {
    history.Note(); // what was done before is no part of it
    const std::string before = binding.Text();
    form.SetText(binding, text);
    if (binding.Text() != text) {
        form.SetText(binding, before);
        ShowHint("The list does not offer " + text + " now");
    }
    history.Note();
}

void EditorWindow::RevertCommitted(const Binding& binding) {
    const std::string name = ShownRecordName();
    const Record& disk = *edits.OnDisk(name).State;
    Edits::Step step(library, "revert of " + std::string(binding.Shown->Property) + " of " + name);
    const bool ofFile = &binding == form.BindingOf(controls.File);
    Record& record = ofFile ? step.MoveBack(name, disk) : step.Change(name);
    if (!ofFile)
        binding.Shown->Set(record, binding.Shown->Get(disk));
    const auto normal = library.Kind.Copy(disk);
    library.Kind.Normalize(*normal);
    record.IsDirty = record.ToBeDeleted || !CodePage::EqualNoCase(record.ShortName, disk.ShortName) ||
                     !SameContent(library.Kind, record, *normal);
    if (!record.IsDirty)
        record.SetStatus({});
    edits.Do(std::move(step));
    ShowQuietly(CurrentIndex());
}

void EditorWindow::GoToStep(int stepsDone) {
    if (!Browsing()) {
        ShowHint(std::string("Commit or discard first"));
        return;
    }
    const auto wanted = static_cast<std::size_t>(std::max(0, stepsDone));
    RunCommand("GoToStep", [&] {
        while (edits.CanUndo() && edits.StepsDone() > wanted + 1)
            edits.Undo();
        while (edits.CanRedo() && edits.StepsDone() + 1 < wanted)
            edits.Redo();
        discarded.reset();
        if (edits.StepsDone() > wanted)
            UndoStep();
        else if (edits.StepsDone() < wanted)
            RedoStep();
    });
}

} // namespace velmora
