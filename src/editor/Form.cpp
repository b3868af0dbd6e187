#include "editor/Form.h"

#include "editor/ChoiceBox.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "services/Numbers.h"
#include "services/Prompts.h"
#include "services/modWriter.h"

#include <QAbstractButton>
#include <QScopedValueRollback>
#include <algorithm>

namespace velmora {

namespace {

constexpr Field FileField = TextField<&Record::ShortName>("ShortName");

/// Converts what stands in a number field. A failure takes the focus there and names the field.
template <class Convert>
auto InField(LineBox* box, const Convert& convert) {
    try {
        return convert(box->Bytes());
    } catch (const Failure& failure) {
        box->setFocus(Qt::OtherFocusReason);
        throw Failure(failure.Number, failure.Description() + " (" + FromQt(box->accessibleName()) + ")");
    }
}

void Select(ChoiceBox* box, const std::string& name) {
    box->setCurrentIndex(box->findText(ToQt(name), Qt::MatchFixedString | Qt::MatchCaseSensitive));
}

} // namespace

Form::Form(const RecordKind& shownKind, QWidget* window) : kind(shownKind), checks(window) {}

const Field& Form::FieldOf(std::string_view property) const {
    const Field* found = nullptr;
    kind.ForEachField([&](const Field& field) {
        if (field.Property == property)
            found = &field;
    });
    if (!found)
        throw Failure(FailureInvalidArgument, "No field is named " + std::string(property));
    return *found;
}

Binding& Form::Bind(const Field& field, std::vector<QWidget*> controls) {
    Binding& binding = bindings.emplace_back();
    binding.Shown = &field;
    binding.Controls = std::move(controls);
    return binding;
}

Binding& Form::BindNumber(std::string_view property, LineBox* box) {
    Binding& binding = Bind(FieldOf(property), {box});
    const Field& field = *binding.Shown;
    binding.ReadFirst = true;
    binding.Show = [box, &field](const Record& record) {
        box->SetBytes(std::to_string(field.NumberOf(record)));
    };
    binding.Read = [box, &field](Record& record) { field.SetNumber(record, InField(box, FieldToInt32)); };
    binding.Text = [box] { return box->Bytes(); };
    binding.SetText = [box](const std::string& text) { box->SetBytes(text); };
    binding.TextFor = [&field](const Record& record) { return std::to_string(field.NumberOf(record)); };
    checks.OnLeave(box, [box] { return !CheckNumericField(box); });
    Follow(box, &LineBox::textChanged, binding);
    return binding;
}

Binding& Form::BindChoice(std::string_view property, ChoiceBox* box, const CatalogueOf& catalogue) {
    Binding& binding = Bind(FieldOf(property), {box});
    const Field& field = *binding.Shown;
    binding.Show = [box, &field, catalogue](const Record& record) {
        LoadComboByNumber(box, catalogue(record), field.NumberOf(record));
    };
    binding.Read = [box, &field, catalogue](Record& record) {
        const Catalogue& known = catalogue(record);
        field.SetNumber(record, known.ItemAt(PositionByName(known, box->Chosen())));
    };
    binding.Text = [box] { return box->Chosen(); };
    binding.SetText = [box](const std::string& name) { Select(box, name); };
    binding.TextFor = [&field, catalogue](const Record& record) {
        return NameByNumber(catalogue(record), field.NumberOf(record));
    };
    Follow(box, &QComboBox::currentIndexChanged, binding);
    return binding;
}

Binding& Form::BindChoice(std::string_view property, ChoiceBox* box, const Catalogue& catalogue) {
    return BindChoice(property, box, [&catalogue](const Record&) -> const Catalogue& { return catalogue; });
}

Binding& Form::BindCode(std::string_view property, ChoiceBox* box, const CodeCatalogue& catalogue) {
    Binding& binding = Bind(FieldOf(property), {box});
    const Field& field = *binding.Shown;
    binding.Show = [box, &field, &catalogue](const Record& record) {
        LoadComboByCode(box, catalogue, field.TextOf(record));
    };
    binding.Text = [box] { return box->Chosen(); };
    binding.SetText = [box](const std::string& name) { Select(box, name); };
    binding.TextFor = [&field](const Record& record) { return field.TextOf(record); };
    return binding;
}

Binding& Form::BindOptions(std::string_view property, const std::vector<OptionButton>& options) {
    std::vector<QWidget*> buttons;
    buttons.reserve(options.size());
    for (const OptionButton& option : options)
        buttons.push_back(option.Button);
    Binding& binding = Bind(FieldOf(property), std::move(buttons));
    const Field& field = *binding.Shown;
    for (const OptionButton& option : options)
        Follow(option.Button, &QAbstractButton::clicked, binding);
    const auto numberOn = [options](std::int32_t otherwise) {
        for (const OptionButton& option : options)
            if (option.Button->isChecked())
                return option.Number;
        return otherwise;
    };
    const auto switchOn = [options](std::int32_t number) {
        for (const OptionButton& option : options)
            if (option.Number == number)
                return option.Button->setChecked(true);
        options.back().Button->setChecked(true);
    };
    binding.Show = [switchOn, &field](const Record& record) { switchOn(field.NumberOf(record)); };
    binding.Read = [numberOn, &field](Record& record) {
        field.SetNumber(record, numberOn(field.NumberOf(record)));
    };
    binding.Text = [numberOn] { return std::to_string(numberOn(0)); };
    binding.TextFor = [options, &field](const Record& record) {
        const auto stands = [number = field.NumberOf(record)](const OptionButton& option) {
            return option.Number == number;
        };
        const auto known = std::ranges::find_if(options, stands);
        return std::to_string(known == options.end() ? options.back().Number : known->Number);
    };
    binding.SetText = [switchOn](const std::string& number) { switchOn(FieldToInt32(number)); };
    return binding;
}

Binding& Form::BindFile(ChoiceBox* box, std::function<std::vector<std::string>(const std::string&)> names) {
    Binding& binding = Bind(FileField, {box});
    binding.Show = [box, names = std::move(names)](const Record& record) {
        LoadComboByName(box, names(record.ShortName), record.ShortName);
    };
    binding.Read = [box](Record& record) { record.ShortName = box->Chosen(); };
    binding.Text = [box] { return box->Chosen(); };
    binding.SetText = [box](const std::string& name) { Select(box, name); };
    binding.TextFor = [](const Record& record) { return record.ShortName; };
    Follow(box, &QComboBox::currentIndexChanged, binding);
    return binding;
}

Binding& Form::BindName(LineBox* box) {
    Binding& binding = Bind(kind.Name, {box});
    binding.Show = [box, this](const Record& record) { box->SetBytes(kind.NameOf(record)); };
    binding.Text = [box] { return box->Bytes(); };
    binding.SetText = [box](const std::string& name) { box->SetBytes(name); };
    binding.TextFor = [this](const Record& record) { return kind.NameOf(record); };
    return binding;
}

void Form::Show(const Record& record) {
    const QScopedValueRollback<bool> guard(showing, true);
    checks.Forget();
    for (const Binding& binding : bindings)
        if (!binding.ShownApart)
            binding.Show(record);
}

void Form::ShowNothing() {
    Show(*kind.Make());
    const QScopedValueRollback<bool> guard(showing, true);
    for (const Binding& binding : bindings)
        binding.SetText("");
}

std::vector<std::string> Form::Texts() const {
    std::vector<std::string> texts;
    texts.reserve(bindings.size());
    for (const Binding& binding : bindings)
        texts.push_back(binding.Text());
    return texts;
}

void Form::SetText(const Binding& binding, const std::string& text) {
    const QScopedValueRollback<bool> guard(showing, true);
    binding.SetText(text);
}

std::vector<std::string> Form::Overlong() const {
    std::vector<std::string> notices;
    for (const Binding& binding : bindings)
        if (binding.Rule.Limit > 0 && binding.Text().size() > binding.Rule.Limit)
            notices.push_back("The original " + binding.Rule.Subject +
                              " is too long and will display poorly in-game.  It has NOT been shortened, but "
                              "you really ought to rewrite it.");
    return notices;
}

void Form::Read(Record& record) {
    for (const Binding& binding : bindings)
        if (binding.ReadFirst && !binding.Hidden())
            binding.Read(record);
    ReadAllButNumbers(record);
}

void Form::ReadAllButNumbers(Record& record) {
    for (const Binding& binding : bindings)
        if (binding.Read && !binding.ReadFirst && !binding.Hidden())
            binding.Read(record);
}

void Form::ReadWhatConverts(Record& record) const {
    for (const Binding& binding : bindings)
        if (binding.Read && !binding.Hidden()) {
            if (!binding.ReadFirst) {
                binding.Read(record);
                continue;
            }
            try {
                binding.Shown->SetNumber(record, FieldToInt32(binding.Text()));
            } catch (const Failure&) {
                // Still being typed.
            }
        }
}

void Form::EndSearches() {
    for (const Binding& binding : bindings)
        if (auto* box = qobject_cast<ChoiceBox*>(binding.Controls.front()))
            box->EndSearch();
}

double Form::NumberIn(LineBox* box) {
    return InField(box, NumberOf);
}

QWidget* Form::ControlOf(std::string_view property) const {
    QWidget* control = nullptr;
    for (const Binding& binding : bindings)
        if (binding.Shown->Property == property && (!control || control->isHidden()))
            control = binding.Controls.front();
    return control;
}

const Binding* Form::BindingOf(const QWidget* control) const {
    for (const Binding& binding : bindings)
        if (std::ranges::find(binding.Controls, control) != binding.Controls.end())
            return &binding;
    return nullptr;
}

void Form::LeaveText(const Binding& binding) {
    std::string text = binding.Text();
    NormalizeWildCards(text);
    if (text != binding.Text())
        binding.SetText(text);
    const TextRule& rule = binding.Rule;
    if (rule.Limit > 0 && text.size() > rule.Limit)
        gPrompts->Message(LengthText(rule.Label, text.size(), rule.Limit), Icon::Exclamation);
    if (rule.OnLeave)
        rule.OnLeave(text);
}

} // namespace velmora
