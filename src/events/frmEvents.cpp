#include "events/frmEvents.h"

#include "editor/ChoiceBox.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"
#include "services/Settings.h"
#include "services/Trap.h"
#include "ui_frmEvents.h"

#include <span>

namespace velmora {

namespace {

EditorWords EventWords() {
    EditorWords words{};
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
    words.ZoomNameMode = frmZoomTo::EventNames;
    words.ZoomFileMode = frmZoomTo::EventFiles;
    words.InstructionsFile = "EventsInstructions.txt";
    words.OwnFile = [] { return Settings.EventFile; };
    words.DataFolder = [] { return Settings.DataPath; };
    words.SubstitutionPick = "cboDescStr_Click";
    words.BuildSubstitutions = BuildWildCardSubs;
    words.SubstitutionHint = EventSubstitutionHint;
    return words;
}

QString UnitOf(std::int32_t attribute) {
    return ToQt(AttributeUnit(attribute));
}

bool IsReservedName(const std::string& name) {
    return IsReservedEventFile(name + ".event");
}

} // namespace

frmEvents::frmEvents(QWidget* parent)
    : EditorWindow(EventKind, EventWords(), EventWildCardSubs, parent),
      ui(std::make_unique<Ui::frmEvents>()) {
    ui->setupUi(this);
    textBoxes = {ui->txtDescription, ui->txtGoodOption, ui->txtNeutralOption, ui->txtEvilOption};
    substitutionBoxes = {ui->cboDescStr_0, ui->cboDescStr_1, ui->cboDescStr_2, ui->cboDescStr_3,
                         ui->cboDescStr_4, ui->cboDescStr_5, ui->cboDescStr_6, ui->cboDescStr_7,
                         ui->cboDescStr_8, ui->cboDescStr_9};
    columns = {{{ui->cboAttributeDropDown_0, ui->lblUnit_0, ui->lblEffects_0},
                {ui->cboAttributeDropDown_1, ui->lblUnit_1, ui->lblEffects_1},
                {ui->cboAttributeDropDown_2, ui->lblUnit_2, ui->lblEffects_2}}};
    AdoptEditor(ControlsOf(ui, ui->fraEventDetails, ui->txtEventName, ui->cboEventFile));
    firstField = ui->txtTitle;
    BindFields();
    AdoptTexts();
    ConnectCommands();
}

frmEvents::~frmEvents() = default;

void frmEvents::BindFields() {
    form.BindNumber("GoodValue", ui->txtGoodValue);
    form.BindNumber("NeutralValue", ui->txtNeutralValue);
    form.BindNumber("EvilValue", ui->txtEvilValue);
    form.BindNumber("GoodPopChange", ui->txtGoodPopChange);
    form.BindNumber("NeutralPopChange", ui->txtNeutralPopChange);
    form.BindNumber("EvilPopChange", ui->txtEvilPopChange);
    form.BindNumber("Probability", ui->txtProbability);
    BindTexts();
    BindPicture();
    Binding& type = form.BindOptions("EventType", {{ui->optRandom, 1}, {ui->optColonial, 0}});
    type.SetText = [this, switchOn = type.SetText](const std::string& number) {
        switchOn(number);
        const std::int32_t shown = ui->optRandom->isChecked() ? 1 : 0;
        if (shown == std::exchange(ShownEventType, shown))
            return;
        clsEvent none; // no choice belongs to both types
        none.EventType = shown;
        PopulateAttributes(none);
    };
    form.BindOptions("MoralityWeight", {{ui->optMorality_0, 1},
                                        {ui->optMorality_1, 2},
                                        {ui->optMorality_2, 3},
                                        {ui->optMorality_3, 4},
                                        {ui->optMorality_4, 5}});
    BindAttributes();
}

void frmEvents::BindTexts() {
    form.BindText("Title", ui->txtTitle);
    const char* texts[] = {"Description", "GoodOption", "NeutralOption", "EvilOption"};
    for (std::size_t i = 0; i < textBoxes.size(); ++i) {
        const std::string label(EventTexts[i].Label);
        form.BindText(texts[i], textBoxes[i],
                      {EventTexts[i].MaximumLength, label, label + " text length for this event", true});
    }
    const char* properties[] = {"DescStr01",    "DescStr02",    "DescStr03",       "DescStr04",
                                "GoodOptStr01", "GoodOptStr02", "NeutralOptStr01", "NeutralOptStr02",
                                "EvilOptStr01", "EvilOptStr02"};
    for (std::size_t i = 0; i < substitutionBoxes.size(); ++i)
        BindSubstitution(properties[i], substitutionBoxes[i]);
}

void frmEvents::BindPicture() {
    Binding& picture = form.BindText("Image", ui->txtImagePath);
    picture.Show = [this](const Record& record) {
        shownPicture = Settings.GamePath + static_cast<const clsEvent&>(record).Image;
        ShowPicture(shownPicture);
    };
    picture.TextFor = [](const Record& record) {
        return Settings.GamePath + static_cast<const clsEvent&>(record).Image;
    };
    picture.SetText = [this](const std::string& path) { ShowPicture(path); };
    picture.Read = [this](Record& record) {
        const std::string path = ui->txtImagePath->Bytes();
        static_cast<clsEvent&>(record).Image = path == shownPicture ? ImageForRecord(path, Settings.GamePath)
                                                                    : ChosenImage(path, Settings.GamePath);
    };
}

void frmEvents::BindAttributes() {
    const char* attributes[] = {"GoodAttribute", "NeutralAttribute", "EvilAttribute"};
    for (std::size_t i = 0; i < columns.size(); ++i) {
        Binding& bound = form.BindChoice(
            attributes[i], columns[i].Attribute, [](const Record& record) -> const Catalogue& {
                return EventAttributes(static_cast<const clsEvent&>(record).EventType);
            });
        bound.ShownApart = true;
        bound.SetText = [this, i, select = bound.SetText](const std::string& name) {
            // The names are those of the type that is on show by now.
            columns[i].Attribute->SetEntries(NamesOf(EventAttributes(ShownEventType)), -1);
            select(name);
            AttributeChosen(i);
        };
        columns[i].Bound = &bound;
    }
}

void frmEvents::ConnectCommands() {
    for (std::size_t i = 0; i < columns.size(); ++i)
        OnPick(columns[i].Attribute, "cboAttributeDropDown_Click",
               [this, i](const std::string&) { AttributeChosen(i); });
    OnClick("optColonial", [this] { SwitchType(0); });
    OnClick("optRandom", [this] { SwitchType(1); });
    OnClick("cmdBrowseForPicture", [this] { BrowseForPicture(); });
    const char* reviews[] = {"mnuReviewDescription", "mnuReviewGood", "mnuReviewNeutral", "mnuReviewEvil"};
    for (std::size_t i = 0; i < std::size(reviews); ++i)
        OnClick(reviews[i], [this, i] { Review(i); });
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

void frmEvents::EnableFrames(bool enabled) {
    EditorWindow::EnableFrames(enabled);
    ui->cmdBrowseForPicture->setEnabled(enabled);
}

void frmEvents::FollowRecord(const Record& record) {
    const auto& event = static_cast<const clsEvent&>(record);
    ShownEventType = event.EventType;
    if (anyShown)
        for (const Column& column : columns)
            column.Effects->setText(event.EventType == 1
                                        ? QStringLiteral("Affects player's entire civilization")
                                        : QStringLiteral("Affects only this colony"));
    PopulateAttributes(event);
}

void frmEvents::ShowPicture(const std::string& path) {
    ui->txtImagePath->SetBytes(path);
    ShowImageFile(ui->Gvbox1, path);
}

void frmEvents::PopulateAttributes(const clsEvent& event) {
    const std::array numbers{event.GoodAttribute, event.NeutralAttribute, event.EvilAttribute};
    Trap(Routine("PopulateAttributes"),
         {std::to_string(numbers[0]), std::to_string(numbers[1]), std::to_string(numbers[2]),
          std::to_string(event.EventType)},
         [&] {
             for (std::size_t i = 0; i < numbers.size(); ++i) {
                 columns[i].Bound->Show(event);
                 AttributeChosen(i);
                 columns[i].Unit->setText(UnitOf(numbers[i]));
             }
         });
}

void frmEvents::AttributeChosen(std::size_t column) {
    const std::string name = columns[column].Attribute->Chosen();
    const std::int32_t* number = RandomEventAttributes.Find(name);
    columns[column].Unit->setText(UnitOf(number ? *number : 0));
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
                 "session)",
                 true})) {
            (type == 0 ? ui->optRandom : ui->optColonial)->setChecked(true);
            return;
        }
    }
    clsEvent none;
    none.EventType = type;
    PopulateAttributes(none);
    ShownEventType = type;
}

void frmEvents::BrowseForPicture() {
    const std::string path = gPrompts->PickFile(
        {"Select your picture", Settings.GamePath + "GFX\\", "*.pcx", "PCX files (*.pcx)"});
    if (!path.empty())
        ShowPicture(path);
}

void frmEvents::Review(std::size_t text) {
    DisplayReview(textBoxes[text]->Bytes(),
                  std::span(substitutionBoxes).subspan(EventTexts[text].FirstBox, EventTexts[text].Boxes),
                  {std::to_string(text)});
}

bool frmEvents::ValidateData() {
    clsEvent event;
    form.ReadAllButNumbers(event);
    return AcceptReasons(CheckEvent(event, ui->txtImagePath->Bytes(), EventWildCardSubs));
}

} // namespace velmora
