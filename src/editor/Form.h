#pragma once

#include "editor/FieldChecks.h"
#include "records/RecordKind.h"
#include "services/Catalogues.h"

#include <QWidget>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QAbstractButton;

namespace velmora {

class ChoiceBox;
class LineBox;

/// What is demanded of a text.
struct TextRule {
    std::size_t Limit = 0;    ///< most characters recommended, 0 for any number
    std::string Label = {};   ///< "Good Option": the text where leaving its box tells that it is too long
    std::string Subject = {}; ///< "Good Option text length for this event": the same where showing it does
    bool Normalizes = false;  ///< lone percent signs are doubled when its box is left
    std::function<void(const std::string&)> OnLeave = {}; ///< tells what else is wrong with it
};

/// An option button and the number that a record holds when it is on.
struct OptionButton {
    QAbstractButton* Button;
    std::int32_t Number;
};

/// A control and the field that it shows. A control that its form hides shows nothing and is not read.
struct Binding {
    const Field* Shown;
    std::vector<QWidget*> Controls; ///< one, or several option buttons
    std::function<void(const Record&)> Show;
    std::function<void(Record&)> Read; ///< empty for a field that cannot be changed
    /// What stands in the control, whether a record could hold it or not: a text as it is, a number as it was
    /// typed, the name of a choice, the number of an option button.
    std::function<std::string()> Text;
    std::function<void(const std::string&)> SetText;
    /// What stands there while a record is on show.
    std::function<std::string(const Record&)> TextFor;
    TextRule Rule = {};
    bool ReadFirst = false;  ///< reading it can fail
    bool ShownApart = false; ///< its window shows it, together with others

    [[nodiscard]] bool Hidden() const { return Controls.front()->isHidden(); }
};

/// The fields of a record on show: a list of bindings. Showing, reading, what is checked on leaving a field
/// and which control shows which field follow from it.
class Form : public QObject {
    Q_OBJECT

  public:
    Form(const RecordKind& shownKind, QWidget* window);

    using CatalogueOf = std::function<const Catalogue&(const Record&)>;

    // Bindings, in the order in which they are read. A property that the kind lacks is a Failure (5).
    template <class Box>
    Binding& BindText(std::string_view property, Box* box, TextRule rule = {});
    /// A box that keeps the focus until it holds a number.
    Binding& BindNumber(std::string_view property, LineBox* box);
    /// A number that the catalogue knows by name. The catalogue may depend on the record.
    Binding& BindChoice(std::string_view property, ChoiceBox* box, const CatalogueOf& catalogue);
    Binding& BindChoice(std::string_view property, ChoiceBox* box, const Catalogue& catalogue);
    /// The same for a text by its code, for display only.
    Binding& BindCode(std::string_view property, ChoiceBox* box, const CodeCatalogue& catalogue);
    /// The last button stands for all numbers that no button has.
    Binding& BindOptions(std::string_view property, const std::vector<OptionButton>& options);
    /// The file that the record belongs to; `names` are those it may belong to, given its present one.
    Binding& BindFile(ChoiceBox* box, std::function<std::vector<std::string>(const std::string&)> names);
    /// The record's name cannot be changed.
    Binding& BindName(LineBox* box);

    /// Shows a record, which stays as it is.
    void Show(const Record& record);
    /// Shows lists in which nothing is chosen, and empty boxes.
    void ShowNothing();
    /// Notices that texts on show are too long, in the order of their bindings.
    [[nodiscard]] std::vector<std::string> Overlong() const;
    /// Puts what stands in the controls into a copy of the record on show. Numbers come first: when one
    /// cannot be converted its box gets the focus, and the failure names it.
    void Read(Record& record);
    /// The same without the numbers, so that it cannot fail.
    void ReadAllButNumbers(Record& record);
    /// The same with those numbers that can be converted.
    void ReadWhatConverts(Record& record) const;
    /// Ends the searches in lists, as leaving their boxes does.
    void EndSearches();
    /// The number in a box, not rounded. Fails as Read does.
    static double NumberIn(LineBox* box);

    /// What stands in all controls, in the order of their bindings.
    [[nodiscard]] std::vector<std::string> Texts() const;
    /// Puts a text into a control, as showing does: it tells of no change.
    void SetText(const Binding& binding, const std::string& text);

    [[nodiscard]] const std::deque<Binding>& Bindings() const { return bindings; }
    /// nullptr when no control shows the field. Of several the one that is not hidden.
    [[nodiscard]] QWidget* ControlOf(std::string_view property) const;
    /// nullptr when the control shows no field.
    [[nodiscard]] const Binding* BindingOf(const QWidget* control) const;

  signals:
    /// What stands in a control has changed, other than by showing a record.
    void Changed(const velmora::Binding& binding);

  private:
    [[nodiscard]] const Field& FieldOf(std::string_view property) const;
    Binding& Bind(const Field& field, std::vector<QWidget*> controls);
    /// Connects the signal of a control that tells of its changes.
    template <class Control, class Signal>
    void Follow(Control* control, Signal signal, const Binding& binding);
    /// Runs when a text box is left.
    static void LeaveText(const Binding& binding);

    const RecordKind& kind;
    FieldChecks checks;
    std::deque<Binding> bindings;
    bool showing = false;
};

template <class Control, class Signal>
void Form::Follow(Control* control, Signal signal, const Binding& binding) {
    connect(control, signal, this, [this, &binding] {
        if (!showing)
            emit Changed(binding);
    });
}

template <class Box>
Binding& Form::BindText(std::string_view property, Box* box, TextRule rule) {
    Binding& binding = Bind(FieldOf(property), {box});
    binding.Rule = std::move(rule);
    binding.Show = [box, &binding](const Record& record) {
        const std::string& text = binding.Shown->TextOf(record);
        box->SetLimit(text.size() > binding.Rule.Limit ? 0 : static_cast<int>(binding.Rule.Limit));
        box->SetBytes(text);
    };
    binding.Read = [box, &binding](Record& record) { binding.Shown->SetText(record, box->Bytes()); };
    binding.Text = [box] { return box->Bytes(); };
    binding.SetText = [box](const std::string& text) { box->SetBytes(text); };
    binding.TextFor = [&binding](const Record& record) { return binding.Shown->TextOf(record); };
    if (binding.Rule.Normalizes)
        checks.OnLeave(box, [&binding] {
            LeaveText(binding);
            return true;
        });
    Follow(box, &Box::textChanged, binding);
    return binding;
}

} // namespace velmora
