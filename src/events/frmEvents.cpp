#include "events/frmEvents.h"

#include "editor/ChoiceBox.h"
#include "editor/FieldChecks.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "ui_frmEvents.h"

#include <QRadioButton>

namespace velmora {

namespace {

EditorWords EventWords() {
    EditorWords words{};
    words.DetailsFrame = "fraEventDetails";
    words.NameBox = "txtEventName";
    words.FileBox = "cboEventFile";
    words.FirstField = "txtTitle";
    words.EditItem = "mnuEditThisEvent";
    words.MoveItem = "mnuMoveThisEventToANewFile";
    words.ZoomFileItem = "mnuZoomToEventFile";
    words.SortByFileItem = "mnuSortByFileName";
    words.SaveRoutine = "SaveEvent";
    words.AddPrompt =
        "Please enter the name of this new event, there should be no spaces in the chosen name.";
    words.TakenOnAdd = words.TakenOnCopy =
        "The chosen name matches that of an existing event.  The event name must "
        "be unique, please try again.";
    words.DeleteQuestion = "Are you sure you wish to mark this event for deletion?";
    words.UnwrittenQuestion =
        "There are changed events that have not yet been committed to file, do you still wish "
        "to exit?";
    words.WriteIntroduction = "Preparing to save events for the following files:";
    words.RenameScope = "every event owned by ";
    words.MoveExtension = ".Event";
    words.ZoomNameTitle = "Zoom To Event Name";
    words.ZoomFileTitle = "Zoom To Event File";
    words.ZoomNameMode = 0;
    words.ZoomFileMode = 2;
    words.InstructionsFile = "EventsInstructions.txt";
    return words;
}

/// A number field and the member behind it, in the order in which they are read.
struct NumberBox {
    const char* Box;
    std::int32_t clsEvent::*Member;
};
constexpr std::array<NumberBox, 7> NumberBoxes{{
    {"txtGoodValue", &clsEvent::GoodValue},
    {"txtNeutralValue", &clsEvent::NeutralValue},
    {"txtEvilValue", &clsEvent::EvilValue},
    {"txtGoodPopChange", &clsEvent::GoodPopChange},
    {"txtNeutralPopChange", &clsEvent::NeutralPopChange},
    {"txtEvilPopChange", &clsEvent::EvilPopChange},
    {"txtProbability", &clsEvent::Probability},
}};
constexpr std::array<std::int32_t clsEvent::*, 3> Attributes{
    &clsEvent::GoodAttribute, &clsEvent::NeutralAttribute, &clsEvent::EvilAttribute};

const Catalogue& AttributesOf(std::int32_t type) {
    return type != 0 ? RandomEventAttributes : ColonialEventAttributes;
}

QString UnitOf(std::int32_t attribute) {
    switch (attribute) {
    case 200:
        return QStringLiteral("BC");
    case 103:
        return QStringLiteral("Moves");
    case 119:
        return QStringLiteral("Routes");
    default:
        return QStringLiteral("%");
    }
}

bool IsReservedName(const std::string& name) {
    return IsReservedEventFile(name + ".event");
}

} // namespace

frmEvents::frmEvents(QWidget* parent)
    : EditorWindow(EventKind, EventWords(), parent), ui(std::make_unique<Ui::frmEvents>()) {
    ui->setupUi(this);
    textBoxes = {ui->txtDescription, ui->txtGoodOption, ui->txtNeutralOption, ui->txtEvilOption};
    AdoptEditor();
    ConnectFields();
    ConnectReviews();
}

frmEvents::~frmEvents() = default;

void frmEvents::ConnectFields() {
    for (std::size_t i = 0; i < EventTexts.size(); ++i) {
        checks->OnLeave(textBoxes[i], [this, i] {
            NormalizeBox(textBoxes[i]);
            WarnOfLength(textBoxes[i]->Bytes(), EventTexts[i].Label, EventTexts[i].MaximumLength);
            return true;
        });
    }
    for (const NumberBox& number : NumberBoxes)
        CheckNumberOnLeave(QString::fromLatin1(number.Box));
    for (std::size_t i = 0; i < Attributes.size(); ++i)
        OnPick(Indexed("cboAttributeDropDown", i), "cboAttributeDropDown_Click",
               [this, i](const std::string&) { AttributeChosen(i); });
    for (std::size_t i = 0; i < EventSubstitutions.size(); ++i)
        OnPick(Indexed("cboDescStr", i), "cboDescStr_Click",
               [this](const std::string& name) { ShowHint(std::string(EventSubstitutionHint(name))); });
    OnClick("optColonial", [this] { SwitchType(0); });
    OnClick("optRandom", [this] { SwitchType(1); });
    OnClick("cmdBrowseForPicture", [this] { BrowseForPicture(); });
}

void frmEvents::ConnectReviews() {
    const char* items[] = {"mnuReviewDescription", "mnuReviewGood", "mnuReviewNeutral", "mnuReviewEvil"};
    for (std::size_t i = 0; i < std::size(items); ++i)
        OnClick(items[i], [this, i] { Review(i); });
}

std::string frmEvents::OwnFile() const {
    return Settings.EventFile;
}
std::string frmEvents::DataFolder() const {
    return Settings.DataPath;
}

std::string frmEvents::RenameRefusal(const std::string& name) const {
    if (!IsReservedName(name))
        return {};
    return "Sorry, but you may not rename this file to " + name + " as this is a reserved Velmora name.";
}

std::string frmEvents::MoveRefusal(const std::string& name) const {
    return IsReservedName(name)
               ? "You may not use the base Velmora event filenames (BonusEvents or CoreEvents)."
               : "";
}

void frmEvents::InitNewRecord(Record& record) {
    static_cast<clsEvent&>(record).Probability = 100;
}

void frmEvents::BeginLoad() {
    EventWildCardSubs.RemoveAll();
    BuildWildCardSubs(EventWildCardSubs);
}

void frmEvents::ShowRecord(Record* record) {
    clsEvent none;
    none.MoralityWeight = 1;
    auto& event = record ? static_cast<clsEvent&>(*record) : none;
    for (std::size_t i = 0; i < EventTexts.size(); ++i)
        textBoxes[i]->SetLimit(static_cast<int>(EventTexts[i].MaximumLength));
    ui->txtEventName->SetBytes(event.EventName);
    ui->txtTitle->SetBytes(event.Title);
    ShowPicture(Settings.GamePath + event.Image);
    ShownEventType = event.EventType;
    const bool random = event.EventType == 1;
    (random ? ui->optRandom : ui->optColonial)->setChecked(true);
    if (record)
        for (std::size_t i = 0; i < Attributes.size(); ++i)
            Find<QLabel>(Indexed("lblEffects", i))
                ->setText(random ? QStringLiteral("Affects player's entire civilization")
                                 : QStringLiteral("Affects only this colony"));
    ShowTexts(event);
    PopulateAttributes({event.GoodAttribute, event.NeutralAttribute, event.EvilAttribute}, event.EventType);
    event.MoralityWeight = LegalMoralityWeight(event.MoralityWeight);
    ShowMorality(event.MoralityWeight);
    for (const NumberBox& number : NumberBoxes)
        Find<LineBox>(QString::fromLatin1(number.Box))->SetBytes(std::to_string(event.*number.Member));
    ShowFile(event.ShortName);
    ui->txtEdited->SetBytes(event.IsDirty ? "YES" : "NO");
    for (std::size_t i = 0; i < EventSubstitutions.size(); ++i)
        LoadComboByNumber(Find<ChoiceBox>(Indexed("cboDescStr", i)), EventWildCardSubs,
                          event.*EventSubstitutions[i]);
}

void frmEvents::ShowTexts(clsEvent& event) {
    for (std::size_t i = 0; i < EventTexts.size(); ++i) {
        const EventText& text = EventTexts[i];
        std::string& value = event.*text.Text;
        NormalizeWildCards(value);
        if (value.size() > text.MaximumLength) {
            gPrompts->Message(
                "The original " + std::string(text.Label) +
                " text length for this event is too long and will display poorly in-game.  It has NOT "
                "been shortened, but you really ought to rewrite it.");
            textBoxes[i]->SetLimit(0);
        }
        textBoxes[i]->SetBytes(value);
    }
}

void frmEvents::ShowPicture(const std::string& path) {
    ui->txtImagePath->SetBytes(path);
    ShowImageFile(ui->Gvbox1, path);
}

void frmEvents::ShowMorality(std::int32_t weight) {
    Find<QRadioButton>(Indexed("optMorality", static_cast<std::size_t>(weight - 1)))->setChecked(true);
}

void frmEvents::ShowFile(const std::string& shortName) {
    std::vector<std::string> names;
    int selected = 0;
    if (IsReservedEventFile(shortName))
        names.push_back(shortName);
    else
        for (const auto& [name, position] : library.Files) {
            if (IsReservedEventFile(name))
                continue;
            if (CodePage::EqualNoCase(name, shortName))
                selected = static_cast<int>(names.size());
            names.push_back(name);
        }
    ui->cboEventFile->SetEntries(std::move(names), selected);
}

void frmEvents::PopulateAttributes(const std::array<std::int32_t, 3>& numbers, std::int32_t type) {
    Trap(Routine("PopulateAttributes"),
         {std::to_string(numbers[0]), std::to_string(numbers[1]), std::to_string(numbers[2]),
          std::to_string(type)},
         [&] {
             for (std::size_t i = 0; i < numbers.size(); ++i) {
                 LoadComboByNumber(Find<ChoiceBox>(Indexed("cboAttributeDropDown", i)), AttributesOf(type),
                                   numbers[i]);
                 AttributeChosen(i);
                 Find<QLabel>(Indexed("lblUnit", i))->setText(UnitOf(numbers[i]));
             }
         });
}

void frmEvents::AttributeChosen(std::size_t column) {
    const std::string name = Find<ChoiceBox>(Indexed("cboAttributeDropDown", column))->Chosen();
    const std::int32_t* number = RandomEventAttributes.Find(name);
    Find<QLabel>(Indexed("lblUnit", column))->setText(UnitOf(number ? *number : 0));
    ShowHint(std::string(AttributeHint(name)));
}

void frmEvents::SwitchType(std::int32_t type) {
    if (type == ShownEventType)
        return;
    if (!TypeSwitchWarned) {
        TypeSwitchWarned = true;
        if (!gPrompts->Ask(
                {"Switching between the Colonial and Random event types necessitates a rebuilding of the "
                 "Attribute drop down boxes, as you have completely different choices between the two "
                 "event types.  If you proceed, all attribute choices will be set to 'No Effect'.  Do you "
                 "wish to continue with this operation?\r\r(This message will only be displayed once per "
                 "session)"})) {
            (type == 0 ? ui->optRandom : ui->optColonial)->setChecked(true);
            return;
        }
    }
    PopulateAttributes({0, 0, 0}, type);
    ShownEventType = type;
}

void frmEvents::BrowseForPicture() {
    const std::string path = gPrompts->PickFile(
        {"Select your picture", Settings.GamePath + "GFX\\", "*.pcx", "PCX files (*.pcx)"});
    if (!path.empty())
        ShowPicture(path);
}

void frmEvents::Review(std::size_t text) {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < EventTexts[text].Boxes; ++i)
        names.push_back(Find<ChoiceBox>(Indexed("cboDescStr", EventTexts[text].FirstBox + i))->Chosen());
    DisplayReview(textBoxes[text]->Bytes(), names, {std::to_string(text)});
}

void frmEvents::ReadTexts(clsEvent& event) const {
    event.Title = ui->txtTitle->Bytes();
    for (std::size_t i = 0; i < EventTexts.size(); ++i)
        event.*EventTexts[i].Text = textBoxes[i]->Bytes();
    for (std::size_t i = 0; i < EventSubstitutions.size(); ++i) {
        const auto* box = Find<ChoiceBox>(Indexed("cboDescStr", i));
        event.*EventSubstitutions[i] =
            EventWildCardSubs.ItemAt(PositionByName(EventWildCardSubs, box->Chosen()));
    }
}

bool frmEvents::ValidateData() {
    clsEvent form;
    ReadTexts(form);
    return AcceptReasons(CheckEvent(form, ui->txtImagePath->Bytes(), EventWildCardSubs));
}

void frmEvents::FormToRecord(Record& record) {
    std::array<std::int32_t, NumberBoxes.size()> numbers{};
    for (std::size_t i = 0; i < NumberBoxes.size(); ++i)
        numbers[i] = FieldNumber(QString::fromLatin1(NumberBoxes[i].Box));

    auto& event = static_cast<clsEvent&>(record);
    event.EventName = ui->txtEventName->Bytes();
    ReadTexts(event);
    event.Image = ImageForRecord(ui->txtImagePath->Bytes(), Settings.GamePath);
    event.EventType = ui->optColonial->isChecked() ? 0 : 1;
    TakeChosenFile(event);
    const Catalogue& catalogue = AttributesOf(event.EventType);
    for (std::size_t i = 0; i < Attributes.size(); ++i) {
        const auto* box = Find<ChoiceBox>(Indexed("cboAttributeDropDown", i));
        event.*Attributes[i] = catalogue.ItemAt(PositionByName(catalogue, box->Chosen()));
    }
    for (std::size_t i = 0; i < NumberBoxes.size(); ++i)
        event.*NumberBoxes[i].Member = numbers[i];
    for (std::int32_t weight = 5; weight >= 1; --weight)
        if (Find<QRadioButton>(Indexed("optMorality", static_cast<std::size_t>(weight - 1)))->isChecked())
            event.MoralityWeight = weight;
}

} // namespace velmora
