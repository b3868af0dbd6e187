#pragma once

#include "editor/Form.h"

#include <QObject>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmora {

/// One history for all fields of a form, from when its record began to be edited: undo and redo go from field
/// to field. Letters typed one after the other in one field are one step a word; whatever else changes a
/// field, be it the user or the program itself, is a step of its own.
class FormHistory : public QObject {
    Q_OBJECT

  public:
    explicit FormHistory(Form& shownForm);

    /// What was done, so that it can be brought back.
    struct State;

    /// Begins with what the form holds, without a step.
    void Begin();
    /// Follows the form no more.
    void End() { following = false; }
    /// Makes a step of what has changed unnoticed; it joins the step that it followed from.
    void Note();

    [[nodiscard]] bool CanUndo() const { return following && now.Done > 0; }
    [[nodiscard]] bool CanRedo() const { return following && now.Done < now.Steps.size(); }
    /// A place in the form: where the last change is.
    struct Place {
        const Binding* Field = nullptr;
        int Caret = 0;
    };
    Place Undo() { return Go(false); }
    Place Redo() { return Go(true); }

    /// Controls whose texts are no longer what they were at the beginning, and those texts.
    [[nodiscard]] std::vector<std::pair<const Binding*, std::string>> Differences() const;

    struct Change {
        std::size_t Field; // number of the binding
        std::string Before;
        std::string After;
    };
    struct Step {
        std::vector<Change> Changes;
        std::optional<std::size_t> TypedTo = {}; // where the next letter would continue it
    };
    struct State {
        std::vector<std::string> First;
        std::vector<Step> Steps;
        std::size_t Done = 0;
    };
    [[nodiscard]] const State& Now() const { return now; }
    /// Brings back a form with its history; the form shows the same record as at its beginning.
    void Restore(State state);

  signals:
    /// There is a new step, or another one to undo.
    void Moved();

  private:
    void Follow(const Binding& binding);
    void Add(Step step);
    void Join(const Step& step);
    [[nodiscard]] bool ContinuesWord(const Change& change, std::size_t& typedTo) const;
    Place Go(bool forward);
    void Apply(const Change& change, bool forward);

    Form& form;
    State now;
    std::vector<std::string> texts;
    bool following = false;
    bool settled = true; ///< what follows is no consequence of the last step
};

} // namespace velmora
