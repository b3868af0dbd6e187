// The editor's history: what is undone, what is typed, what is given up.
#include "editor/EditorWindow.h"
#include "editor/GivenUpDialog.h"
#include "editor/LineBox.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"
#include "editor/Workbench.h"

#include <QAbstractButton>
#include <QAction>
#include <QMenu>
#include <QTimer>
#include <algorithm>

namespace velmora {

namespace {

constexpr int DraftDelay = 2000; // milliseconds from the first change that is not yet kept

std::vector<std::string_view> DifferingFields(const RecordKind& kind, const Record& one,
                                              const Record& other) {
    std::vector<std::string_view> properties;
    kind.ForEachField([&](const Field& field) {
        if (field.Get(one) != field.Get(other))
            properties.push_back(field.Property);
    });
    if (one.ShortName != other.ShortName)
        properties.emplace_back("ShortName");
    return properties;
}

QWidget* FocusOf(const Binding& binding) {
    for (QWidget* control : binding.Controls)
        if (auto* button = qobject_cast<QAbstractButton*>(control); button && button->isChecked())
            return button;
    return binding.Controls.front();
}

} // namespace

void EditorWindow::AdoptUndo() {
    QMenu* menu = Menu("mnuEdit");
    menu->addSeparator();
    const auto add = [menu](const char* name, const QString& text, const QList<QKeySequence>& keys) {
        QAction* item = menu->addAction(text);
        item->setObjectName(QString::fromLatin1(name));
        item->setShortcuts(keys);
    };
    add("mnuUndo", tr("&Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)});
    add("mnuRedo", tr("Red&o"),
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    add("mnuTakeUpGivenUp", tr("Ta&ke Up Given-Up Work..."), {});
    OnClick("mnuUndo", [this] { Browsing() ? UndoStep() : GoTo(history.Undo()); });
    OnClick("mnuRedo", [this] { Browsing() ? RedoStep() : GoTo(history.Redo()); });
    OnClick("mnuTakeUpGivenUp", [this] { TakeUpGivenUp(); });
    for (auto* box : findChildren<LineBox*>())
        AdoptBox(box);
    for (auto* box : findChildren<TextBox*>())
        AdoptBox(box);
    draftTimer = new QTimer(this);
    draftTimer->setObjectName(QStringLiteral("tmrDraft"));
    draftTimer->setSingleShot(true);
    connect(draftTimer, &QTimer::timeout, this, &EditorWindow::KeepDraft);
    connect(&history, &FormHistory::Moved, this, [this] {
        UpdateUndo();
        if (!draftTimer->isActive())
            draftTimer->start(DraftDelay);
    });
    connect(this, &RecordWindow::ModeChanged, this, &EditorWindow::FollowMode);
    edits.OnChange([this](const Edits::Change& change) {
        if (change.Kind != Edits::How::Normalized && change.Kind != Edits::How::TakenBack)
            discarded.reset();
        UpdateUndo();
    });
}

template <class Box>
void EditorWindow::AdoptBox(Box* box) {
    if (!box->Locked())
        box->SetUndoneByWindow();
    connect(box, &Box::MenuShown, this, [this, box](QMenu* menu) {
        for (const FieldStates& states : FieldsOnShow())
            if (states.Field == form.BindingOf(box) && CanRevert(states)) {
                menu->addSeparator();
                menu->addAction(tr("Re&vert To What Is on Disk"), this,
                                [this, binding = states.Field] { Revert(*binding); });
            }
        for (const auto& [text, name] : {std::pair("&Undo", "mnuUndo"), std::pair("&Redo", "mnuRedo")})
            for (QAction* item : menu->actions())
                if (item->text().startsWith(QLatin1String(text))) {
                    menu->insertAction(item, Action(name));
                    menu->removeAction(item);
                    delete item;
                }
    });
}

void EditorWindow::FollowMode() {
    if (Browsing()) {
        history.End();
        draftTimer->stop();
        unwritten.KeepDraft(nullptr);
    } else {
        discarded.reset();
        history.Begin();
    }
}

void EditorWindow::UpdateUndo() {
    const bool changeable = Browsing() && !halfRead;
    Action("mnuUndo")->setEnabled(changeable ? discarded || edits.CanUndo() : history.CanUndo());
    Action("mnuRedo")->setEnabled(changeable ? edits.CanRedo() : history.CanRedo());
    Action("mnuTakeUpGivenUp")->setEnabled(changeable);
    for (const char* item : {"mnuImport", "mnuCompareWith"})
        Action(item)->setEnabled(changeable);
}

void EditorWindow::GoTo(const FormHistory::Place& place) {
    if (!place.Field)
        return;
    QWidget* control = FocusOf(*place.Field);
    if (!control->hasFocus())
        control->setFocus(Qt::OtherFocusReason);
    ScrollTo(control);
    if (auto* line = qobject_cast<LineBox*>(control))
        line->PutCaret(place.Caret);
    if (auto* text = qobject_cast<TextBox*>(control))
        text->PutCaret(place.Caret);
}

void EditorWindow::UndoStep() {
    if (discarded)
        BringBackDiscarded();
    else if (edits.CanUndo())
        ShowExchange("Undone: ", edits.NextUndo(), &Edits::Undo);
}

void EditorWindow::RedoStep() {
    if (edits.CanRedo())
        ShowExchange("Redone: ", edits.NextRedo(), &Edits::Redo);
}

void EditorWindow::ShowExchange(const std::string& word, const Edits::Step& step, void (Edits::*exchange)()) {
    const std::string told = word + step.Name();
    std::string name = ShownRecordName();
    if (step.Count() > 0 && !step.Touches(name))
        name = step.RecordName(0);
    const Record* live = library.Find(name);
    const std::unique_ptr<Record> before = live ? library.Kind.Copy(*live) : nullptr;
    const std::size_t place = live ? library.IndexOf(name) : CurrentIndex();
    (edits.*exchange)();
    live = library.Find(name);
    const std::size_t last = library.Empty() ? 0 : library.Count() - 1;
    ShowQuietly(live ? library.IndexOf(name) : std::min(place, last));
    SetReadOnly();
    if (live && before)
        workbench->Mark(DifferingFields(library.Kind, *before, *live));
    ShowHint(told);
}

void EditorWindow::TellOfEndedHistory(const std::vector<std::string>& names) {
    ShowHint("Undo goes back no further: " + names.front() +
             (names.size() > 1 ? " and " + std::to_string(names.size() - 1) + " more are" : " is") +
             " no longer what it was here");
}

Draft EditorWindow::WhatIsTyped() {
    history.Note();
    const Record& record = ShownRecord();
    Draft draft{ShownName(), Mode() == EditMode::Adding, record.ShortName, library.Kind.Copy(record), {}};
    for (const auto& [binding, text] : history.Differences())
        draft.Texts.emplace_back(FromQt(binding->Controls.front()->objectName()), text);
    return draft;
}

void EditorWindow::KeepDraft() {
    if (Browsing())
        return;
    const Draft draft = WhatIsTyped();
    unwritten.KeepDraft(draft.Texts.empty() ? nullptr : &draft);
}

void EditorWindow::KeepDiscarded() {
    Draft draft = WhatIsTyped();
    if (!draft.Texts.empty())
        unwritten.KeepGivenUp(&draft, false);
    if (draft.Adding || !draft.Texts.empty())
        discarded = Discarded{std::move(draft), history.Now()};
}

void EditorWindow::BringBackDiscarded() {
    const Discarded given = std::move(*discarded);
    discarded.reset();
    Resume(given.What);
    history.Restore(given.History);
}

void EditorWindow::Resume(const Draft& draft) {
    if (!library.Exists(draft.Name)) {
        Edits::Step step(library, "addition of " + draft.Name);
        CopyContent(library.Kind, *draft.Base, step.Add(draft.Name, DataFolder(), draft.File));
        edits.Open(std::move(step));
        ShowQuietly(library.Count() - 1);
        SetForEditing(EditMode::Adding);
    } else {
        ShowQuietly(library.IndexOf(draft.Name));
        SetForEditing(EditMode::Editing);
    }
}

void EditorWindow::ResumeTyping(const Draft& draft) {
    Resume(draft);
    // In the order of the bindings: what a list offers depends on the fields before it.
    for (const Binding& binding : form.Bindings())
        for (const auto& [control, text] : draft.Texts)
            if (binding.Controls.front()->objectName() == ToQt(control))
                form.SetText(binding, text);
    history.Note();
}

void EditorWindow::KeepWhatIsGivenUp() {
    std::optional<Draft> typed;
    if (!Browsing())
        typed = WhatIsTyped();
    const bool anyTyped = typed && !typed->Texts.empty();
    if (anyTyped || library.AnyPending())
        unwritten.KeepGivenUp(anyTyped ? &*typed : nullptr, true);
}

std::string EditorWindow::FieldsOf(const Draft& draft) const {
    std::string named;
    for (const auto& [control, text] : draft.Texts)
        for (const Binding& binding : form.Bindings())
            if (binding.Controls.front()->objectName() == ToQt(control))
                named.append(named.empty() ? "" : ", ").append(binding.Shown->Property);
    return named;
}

std::vector<std::string> EditorWindow::DescribeGivenUp(const Journal::Leftover& work) const {
    std::vector<std::string> lines;
    for (const auto& [name, record] : work.Records) {
        std::string named;
        if (const Record* live = library.Find(name))
            for (const std::string_view field : DifferingFields(library.Kind, *record, *live))
                named.append(named.empty() ? "" : ", ").append(field);
        else
            named = "new";
        if (record->ToBeDeleted)
            named = "to be deleted";
        lines.push_back(name + ": " + (named.empty() ? "as it is now" : named));
    }
    for (const std::string& name : work.RemovedRecords)
        lines.push_back(name + ": removed");
    if (work.Typed)
        lines.push_back(work.Typed->Name + ": typed, not committed: " + FieldsOf(*work.Typed));
    return lines;
}

void EditorWindow::TakeUpGivenUp() {
    const std::vector<UnwrittenWork::GivenUp> given = unwritten.ListGivenUp();
    if (given.empty()) {
        ShowHint(std::string("No work was given up"));
        return;
    }
    std::vector<GivenUpDialog::Entry> entries;
    for (const UnwrittenWork::GivenUp& work : given) {
        std::vector<std::string> lines = DescribeGivenUp(*work.Work);
        std::string when = work.Date; // 20251231-235959
        for (const auto& [at, mark] : {std::pair(13, ":"), {11, ":"}, {6, "-"}, {4, "-"}})
            when.insert(static_cast<std::size_t>(at), mark);
        when[10] = ' ';
        entries.push_back(
            {when + ", " + std::to_string(lines.size()) + (lines.size() == 1 ? " record" : " records"),
             std::move(lines)});
    }
    const int chosen = GivenUpDialog(entries, this).Choose();
    if (chosen < 0)
        return;
    unwritten.TakeUp(given[static_cast<std::size_t>(chosen)]);
    ShowTakenUp();
}

void EditorWindow::ShowTakenUp() {
    const std::optional<Draft> draft = unwritten.TakeDraft();
    ShowQuietly(anyShown ? CurrentIndex() : 0);
    SetReadOnly();
    if (draft)
        ResumeTyping(*draft);
}

} // namespace velmora
