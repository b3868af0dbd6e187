#include "upissues/frmUPIssues.h"

#include "editor/ChoiceBox.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"
#include "services/Settings.h"
#include "ui_frmUPIssues.h"

#include <cmath>

namespace velmora {

namespace {

EditorWords UPIssueWords() {
    EditorWords words{};
    words.EditItem = "mnuEditThisIssue";
    words.MoveItem = "mnuMoveThisUPIssueToANewFile";
    words.ZoomFileItem = "mnuZoomToUPIssueFile";
    words.SortByFileItem = "mnuSortByFilename";
    words.SaveRoutine = "SaveUPIssue";
    words.AddPrompt =
        "Please enter the name of this new UP Issue, there should be no spaces in the chosen name.";
    words.TakenOnAdd =
        "The chosen name matches that of an existing UP Issue.  The UP Issue name must be unique, "
        "please try again.";
    words.TakenOnCopy =
        "The chosen name matches that of an existing UPIssue.  The UPIssue name must be unique, "
        "please try again.";
    words.DeleteQuestion = "Are you sure you wish to mark this UP Issue for deletion?";
    words.UnwrittenQuestion =
        "There are changed UP Issues that have not yet been committed to file, do you still "
        "wish to exit?";
    words.WriteIntroduction = "Preparing to save UP Issues for the following files:";
    words.RenameScope = "every UP Issue owned by ";
    words.MoveExtension = ".UPIssue";
    words.ZoomNameTitle = "Zoom To UP Issue Name";
    words.ZoomFileTitle = "Zoom To UP Issue File";
    words.ZoomNameMode = frmZoomTo::UPIssueNames;
    words.ZoomFileMode = frmZoomTo::UPIssueFiles;
    words.InstructionsFile = "UPIssuesInstructions.txt";
    words.OwnFile = [] { return Settings.UPIssueFile; };
    words.DataFolder = [] { return Settings.UPIssuePath; };
    words.SubstitutionPick = "cboUPIssueSubs_Click";
    words.BuildSubstitutions = BuildUPIssueSubstitutions;
    words.SubstitutionHint = UPIssueSubstitutionHint;
    return words;
}

/// The property of the i-th of several fields, from 0.
std::string Numbered(const char* property, std::size_t i) {
    return property + std::to_string(i + 1);
}

void TellLineBreaks(const std::string& option) {
    if (CodePage::FindNoCase(option, "\\n") != std::string::npos)
        gPrompts->Message("The \\n character grouping is not applicable for Option texts.",
                          Icon::Information);
}

} // namespace

frmUPIssues::frmUPIssues(QWidget* parent)
    : EditorWindow(UPIssueKind, UPIssueWords(), UPIssueSubstitutions, parent),
      ui(std::make_unique<Ui::frmUPIssues>()) {
    ui->setupUi(this);
    substitutionBoxes = {ui->cboUPIssueSubs_0, ui->cboUPIssueSubs_1, ui->cboUPIssueSubs_2,
                         ui->cboUPIssueSubs_3};
    optionValueBoxes = {ui->txtOptVal_0, ui->txtOptVal_1, ui->txtOptVal_2,
                        ui->txtOptVal_3, ui->txtOptVal_4, ui->txtOptVal_5};
    AdoptEditor(ControlsOf(ui, ui->fraUPIssueDetails, ui->txtUPIssueName, ui->cboUPIssueFile));
    firstField = ui->txtQuestion;
    BindFields();
    AdoptTexts();
    ConnectCommands();
}

frmUPIssues::~frmUPIssues() = default;

void frmUPIssues::BindFields() {
    form.BindNumber("YearsInEffect", ui->txtYearsInEffect);
    form.BindNumber("AppliesTo", ui->txtAppliesTo);
    form.BindNumber("Prereq", ui->txtPrerequisite);
    form.BindNumber("Probability", ui->txtProbability);
    form.BindChoice("HowAIWouldVote", ui->cboHowAIWouldVote, AIVoteBehaviours);
    form.BindText("Question", ui->txtQuestion,
                  {UPIssueQuestionLimit.MaximumLength, std::string(UPIssueQuestionLimit.Label),
                   "Question text length for this issue", true});
    form.BindText("SubQuestion", ui->txtSubQuestion, {0, {}, {}, true});
    for (std::size_t i = 0; i < substitutionBoxes.size(); ++i)
        BindSubstitution(Numbered("QuestionStr0", i), substitutionBoxes[i]);
    BindOptions();
    form.BindChoice("UPIssueAttribute", ui->cboAttributeToEffect, UPIssueTypes);
    BindValues();
}

void frmUPIssues::BindOptions() {
    LineBox* texts[] = {ui->txtOption_0, ui->txtOption_1, ui->txtOption_2,
                        ui->txtOption_3, ui->txtOption_4, ui->txtOption_5};
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        form.BindText(Numbered("Option0", i), texts[i],
                      {UPIssueOptionLimit.MaximumLength, std::string(UPIssueOptionLimit.Label),
                       Numbered("option text length for #", i), true, TellLineBreaks});
        form.BindNumber(Numbered("OptionVal0", i), optionValueBoxes[i]);
    }
}

void frmUPIssues::BindValues() {
    LineBox* values[] = {ui->txtValue_0, ui->txtValue_1, ui->txtValue_2, ui->txtValue_3};
    for (std::size_t i = 0; i < std::size(values); ++i)
        form.BindNumber(Numbered("Value0", i), values[i]);
    form.BindChoice("Value01", ui->cboValue01, UPIssueAttributes); // by the type one of the two is hidden
}

void frmUPIssues::ConnectCommands() {
    OnPick(ui->cboAttributeToEffect, "cboAttributeToEffect_Click",
           [this](const std::string&) { OfferGuidance(); });
    OnPick(ui->cboValue01, "cboValue01_Click", [this](const std::string&) { AbilityChosen(); });
    OnClick("mnuIssueText", [this] { DisplayReview(ui->txtQuestion->Bytes(), substitutionBoxes); });
}

void frmUPIssues::LoadForm() {
    ShowImageFile(ui->Gvbox1, Settings.GamePath + "GFX\\UnitedPlanets_small.pcx");
}

void frmUPIssues::OfferGuidance() {
    const std::int32_t* number = UPIssueTypes.Find(ui->cboAttributeToEffect->Chosen());
    guidance = velmora::OfferGuidance(number ? *number : 0);
    ui->lblAttributeStatus->setText(ToQt(guidance.Caption));
    QLabel* captions[] = {ui->lblValue01, ui->lblValue02, ui->lblValue03, ui->lblValue04};
    for (std::size_t i = 0; i < std::size(captions); ++i) {
        captions[i]->setText(ToQt(guidance.ValueCaptions[i]));
        captions[i]->setAlignment((guidance.LeftAligned[i] ? Qt::AlignLeft : Qt::AlignHCenter) |
                                  Qt::AlignVCenter);
    }
    ui->txtValue_0->setVisible(!guidance.ShowsAbilityBox);
    ui->cboValue01->setVisible(guidance.ShowsAbilityBox);
}

void frmUPIssues::AbilityChosen() {
    const std::string ability = ui->cboValue01->Chosen();
    ui->lblValue02->setAlignment(Qt::AlignCenter);
    ui->lblValue02->setText(ToQt(AbilityUnit(ability)));
    ShowHint(std::string(AttributeHint(ability)));
}

bool frmUPIssues::ValidateData() {
    clsUPIssue issue;
    form.ReadAllButNumbers(issue);
    double sum = 0;
    for (LineBox* box : optionValueBoxes)
        sum += std::abs(Form::NumberIn(box));
    return AcceptReasons(CheckUPIssue(issue, guidance.Caption, sum, UPIssueSubstitutions));
}

} // namespace velmora
