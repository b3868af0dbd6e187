#include "editor/FormHistory.h"

#include <QScopedValueRollback>
#include <algorithm>

namespace velmora {

namespace {

/// The part of a text that differs from another.
struct Part {
    std::size_t Start;
    std::size_t Before; // its length in the one
    std::size_t After;  // and in the other
};

Part DifferingPart(const std::string& before, const std::string& after) {
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t start = 0;
    while (start < shorter && before[start] == after[start])
        ++start;
    std::size_t same = 0;
    while (same < shorter - start && before[before.size() - 1 - same] == after[after.size() - 1 - same])
        ++same;
    return {start, before.size() - start - same, after.size() - start - same};
}

bool IsBlank(char character) {
    return character == ' ' || character == '\n';
}

} // namespace

FormHistory::FormHistory(Form& shownForm) : form(shownForm) {
    connect(&form, &Form::Changed, this, &FormHistory::Follow);
}

void FormHistory::Begin() {
    texts = form.Texts();
    now = {texts, {}, 0};
    following = settled = true;
    emit Moved();
}

void FormHistory::Follow(const Binding& binding) {
    if (!following)
        return;
    const auto& all = form.Bindings();
    const auto isIt = [&](const Binding& one) { return &one == &binding; };
    const auto field = static_cast<std::size_t>(std::find_if(all.begin(), all.end(), isIt) - all.begin());
    std::string text = binding.Text();
    if (text == texts[field])
        return;
    Step step{{{field, std::exchange(texts[field], text), text}}};
    std::size_t typedTo = std::string::npos;
    const bool continues = ContinuesWord(step.Changes[0], typedTo);
    if (typedTo != std::string::npos)
        step.TypedTo = typedTo;
    if (continues) {
        Join(step);
        now.Steps.back().TypedTo = step.TypedTo;
    } else {
        Add(std::move(step));
    }
    settled = false;
    emit Moved();
}

bool FormHistory::ContinuesWord(const Change& change, std::size_t& typedTo) const {
    const Part part = DifferingPart(change.Before, change.After);
    const QWidget* box = form.Bindings()[change.Field].Controls.front();
    if (part.Before + part.After != 1 || !box->hasFocus())
        return false;
    typedTo = part.Start + part.After;
    if (now.Done == 0 || now.Done < now.Steps.size())
        return false;
    const Step& last = now.Steps.back();
    if (!last.TypedTo || last.Changes.size() != 1 || last.Changes[0].Field != change.Field)
        return false;
    if (part.Before == 1) // taken away, backwards or forwards
        return last.Changes[0].After.size() < last.Changes[0].Before.size() &&
               (part.Start + 1 == *last.TypedTo || part.Start == *last.TypedTo);
    const bool newWord =
        part.Start > 0 && IsBlank(change.After[part.Start - 1]) && !IsBlank(change.After[part.Start]);
    return part.Start == *last.TypedTo && !newWord &&
           last.Changes[0].After.size() >= last.Changes[0].Before.size();
}

void FormHistory::Add(Step step) {
    now.Steps.resize(now.Done);
    now.Steps.push_back(std::move(step));
    ++now.Done;
}

void FormHistory::Join(const Step& step) {
    std::vector<Change>& changes = now.Steps.back().Changes;
    for (const Change& change : step.Changes) {
        const auto same =
            std::ranges::find_if(changes, [&](const Change& one) { return one.Field == change.Field; });
        if (same == changes.end())
            changes.push_back(change);
        else
            same->After = change.After;
    }
    std::erase_if(changes, [](const Change& change) { return change.Before == change.After; });
    if (!changes.empty())
        return;
    now.Steps.pop_back(); // it was taken back at once
    --now.Done;
}

void FormHistory::Note() {
    if (!following)
        return;
    std::vector<std::string> present = form.Texts();
    Step step;
    for (std::size_t field = 0; field < present.size(); ++field)
        if (present[field] != texts[field])
            step.Changes.push_back({field, texts[field], present[field]});
    texts = std::move(present);
    const bool follows = !std::exchange(settled, true) && now.Done > 0 && now.Done == now.Steps.size();
    if (step.Changes.empty())
        return;
    follows ? Join(step) : Add(std::move(step));
    emit Moved();
}

void FormHistory::Apply(const Change& change, bool forward) {
    form.SetText(form.Bindings()[change.Field], forward ? change.After : change.Before);
}

FormHistory::Place FormHistory::Go(bool forward) {
    Note();
    if (forward ? !CanRedo() : !CanUndo())
        return {};
    const Step& step = now.Steps[forward ? now.Done++ : --now.Done];
    // In the order of the bindings: what a list offers depends on the fields before it.
    std::vector<Change> changes = step.Changes;
    std::ranges::sort(changes, {}, &Change::Field);
    {
        const QScopedValueRollback<bool> guard(following, false);
        for (const Change& change : changes)
            Apply(change, forward);
        texts = form.Texts();
    }
    settled = true;
    if (!now.Steps.empty() && now.Done > 0)
        now.Steps[now.Done - 1].TypedTo.reset();
    const Change& first = step.Changes.front();
    const Part part = DifferingPart(first.Before, first.After);
    emit Moved();
    return {&form.Bindings()[first.Field],
            static_cast<int>(part.Start + (forward ? part.After : part.Before))};
}

std::vector<std::pair<const Binding*, std::string>> FormHistory::Differences() const {
    std::vector<std::pair<const Binding*, std::string>> differences;
    for (std::size_t field = 0; following && field < now.First.size(); ++field) {
        const Binding& binding = form.Bindings()[field];
        if (std::string text = binding.Text(); text != now.First[field])
            differences.emplace_back(&binding, std::move(text));
    }
    return differences;
}

void FormHistory::Restore(State state) {
    const QScopedValueRollback<bool> guard(following, false);
    now = std::move(state);
    std::vector<std::string> wanted = now.First;
    for (std::size_t at = 0; at < now.Done; ++at)
        for (const Change& change : now.Steps[at].Changes)
            wanted[change.Field] = change.After;
    for (std::size_t field = 0; field < wanted.size(); ++field)
        if (const Binding& binding = form.Bindings()[field]; binding.Text() != wanted[field])
            form.SetText(binding, wanted[field]);
    texts = form.Texts();
    emit Moved();
}

} // namespace velmora
