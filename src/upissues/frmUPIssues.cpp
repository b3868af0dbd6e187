#include "upissues/frmUPIssues.h"

#include "editor/ChoiceBox.h"
#include "editor/FieldChecks.h"
#include "editor/FormRoutines.h"
#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "editor/QtText.h"
#include "editor/TextBox.h"
#include "services/Numbers.h"
#include "services/Settings.h"
#include "ui_frmUPIssues.h"

#include <cmath>

namespace velmora {

namespace {

EditorWords UPIssueWords() {
    EditorWords words{};
    words.DetailsFrame = "fraUPIssueDetails";
    words.NameBox = "txtUPIssueName";
    words.FileBox = "cboUPIssueFile";
    words.FirstField = "txtQuestion";
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
    words.ZoomNameMode = 1;
    words.ZoomFileMode = 3;
    words.InstructionsFile = "UPIssuesInstructions.txt";
    return words;
}

/// The single number fields, in the order in which they are read.
struct NumberBox {
    const char* Box;
    std::int32_t clsUPIssue::*Member;
};
constexpr std::array<NumberBox, 4> NumberBoxes{{
    {"txtYearsInEffect", &clsUPIssue::YearsInEffect},
    {"txtAppliesTo", &clsUPIssue::AppliesTo},
    {"txtPrerequisite", &clsUPIssue::Prereq},
    {"txtProbability", &clsUPIssue::Probability},
}};

} // namespace

frmUPIssues::frmUPIssues(QWidget* parent)
    : EditorWindow(UPIssueKind, UPIssueWords(), parent), ui(std::make_unique<Ui::frmUPIssues>()) {
    ui->setupUi(this);
    AdoptEditor();
    ConnectFields();
    OnClick("mnuIssueText", [this] { DisplayReview(ui->txtQuestion->Bytes(), SubstitutionNames()); });
}

frmUPIssues::~frmUPIssues() = default;

void frmUPIssues::ConnectFields() {
    checks->OnLeave(ui->txtQuestion, [this] {
        LeaveQuestion();
        return true;
    });
    checks->OnLeave(ui->txtSubQuestion, [this] {
        NormalizeBox(ui->txtSubQuestion);
        return true;
    });
    for (std::size_t i = 0; i < UPIssueOptions.size(); ++i) {
        auto* box = Find<LineBox>(Indexed("txtOption", i));
        checks->OnLeave(box, [this, box] {
            LeaveOption(box);
            return true;
        });
        CheckNumberOnLeave(Indexed("txtOptVal", i));
    }
    for (std::size_t i = 0; i < UPIssueValues.size(); ++i)
        CheckNumberOnLeave(Indexed("txtValue", i));
    for (const NumberBox& number : NumberBoxes)
        CheckNumberOnLeave(QString::fromLatin1(number.Box));
    for (std::size_t i = 0; i < UPIssueQuestionSubs.size(); ++i)
        OnPick(Indexed("cboUPIssueSubs", i), "cboUPIssueSubs_Click",
               [this](const std::string& name) { ShowHint(std::string(UPIssueSubstitutionHint(name))); });
    OnPick(QStringLiteral("cboAttributeToEffect"), "cboAttributeToEffect_Click",
           [this](const std::string&) { OfferGuidance(); });
    OnPick(QStringLiteral("cboValue01"), "cboValue01_Click", [this](const std::string&) { AbilityChosen(); });
}

std::string frmUPIssues::OwnFile() const {
    return Settings.UPIssueFile;
}
std::string frmUPIssues::DataFolder() const {
    return Settings.UPIssuePath;
}

void frmUPIssues::LoadForm() {
    ShowImageFile(ui->Gvbox1, Settings.GamePath + "GFX\\UnitedPlanets_small.pcx");
}

void frmUPIssues::BeginLoad() {
    UPIssueSubstitutions.RemoveAll();
    BuildUPIssueSubstitutions(UPIssueSubstitutions);
}

void frmUPIssues::ShowRecord(Record* record) {
    clsUPIssue none;
    auto& issue = record ? static_cast<clsUPIssue&>(*record) : none;
    ui->txtUPIssueName->SetBytes(issue.UPIssueName);
    LoadComboByName(ui->cboUPIssueFile, library.Files, issue.ShortName);
    ui->txtEdited->SetBytes(issue.IsDirty ? "YES" : "NO");
    LoadComboByNumber(ui->cboHowAIWouldVote, AIVoteBehaviours, issue.HowAIWouldVote);
    ShowQuestion(issue);
    ShowOptions(issue);
    LoadComboByNumber(ui->cboAttributeToEffect, UPIssueTypes, issue.UPIssueAttribute);
    ShowNumbers(issue);
    LoadComboByNumber(ui->cboValue01, UPIssueAttributes, issue.Value01);
    OfferGuidance();
}

void frmUPIssues::ShowQuestion(clsUPIssue& issue) {
    NormalizeUPIssue(issue);
    ui->txtQuestion->SetLimit(static_cast<int>(UPIssueQuestionLimit.MaximumLength));
    if (issue.Question.size() > UPIssueQuestionLimit.MaximumLength) {
        gPrompts->Message(
            "The original Question text length for this issue is too long and will display poorly "
            "in-game.  It has NOT been shortened, but you really ought to rewrite it.");
        ui->txtQuestion->SetLimit(0);
    }
    ui->txtQuestion->SetBytes(issue.Question);
    ui->txtSubQuestion->SetBytes(issue.SubQuestion);
    for (std::size_t i = 0; i < UPIssueQuestionSubs.size(); ++i)
        LoadComboByNumber(Find<ChoiceBox>(Indexed("cboUPIssueSubs", i)), UPIssueSubstitutions,
                          issue.*UPIssueQuestionSubs[i]);
}

void frmUPIssues::ShowOptions(clsUPIssue& issue) {
    for (std::size_t i = 0; i < UPIssueOptions.size(); ++i) {
        auto* box = Find<LineBox>(Indexed("txtOption", i));
        const std::string& option = issue.*UPIssueOptions[i];
        box->SetLimit(static_cast<int>(UPIssueOptionLimit.MaximumLength));
        if (option.size() > UPIssueOptionLimit.MaximumLength) {
            gPrompts->Message(
                "The original option text length for #" + std::to_string(i + 1) +
                " is too long and will display poorly in-game.  It has NOT been shortened, but you "
                "really ought to rewrite it.");
            box->SetLimit(0);
        }
        box->SetBytes(option);
        Find<LineBox>(Indexed("txtOptVal", i))->SetBytes(std::to_string(issue.*UPIssueOptionValues[i]));
    }
}

void frmUPIssues::ShowNumbers(const clsUPIssue& issue) {
    for (const NumberBox& number : NumberBoxes)
        Find<LineBox>(QString::fromLatin1(number.Box))->SetBytes(std::to_string(issue.*number.Member));
    for (std::size_t i = 0; i < UPIssueValues.size(); ++i)
        Find<LineBox>(Indexed("txtValue", i))->SetBytes(std::to_string(issue.*UPIssueValues[i]));
}

void frmUPIssues::OfferGuidance() {
    const std::int32_t* number = UPIssueTypes.Find(ui->cboAttributeToEffect->Chosen());
    guidance = velmora::OfferGuidance(number ? *number : 0);
    ui->lblAttributeStatus->setText(ToQt(guidance.Caption));
    const char* captions[] = {"lblValue01", "lblValue02", "lblValue03", "lblValue04"};
    for (std::size_t i = 0; i < std::size(captions); ++i) {
        auto* caption = Find<QLabel>(QString::fromLatin1(captions[i]));
        caption->setText(ToQt(guidance.ValueCaptions[i]));
        caption->setAlignment((guidance.LeftAligned[i] ? Qt::AlignLeft : Qt::AlignHCenter) |
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

void frmUPIssues::LeaveQuestion() {
    NormalizeBox(ui->txtQuestion);
    WarnOfLength(ui->txtQuestion->Bytes(), UPIssueQuestionLimit.Label, UPIssueQuestionLimit.MaximumLength);
}

void frmUPIssues::LeaveOption(LineBox* box) {
    NormalizeBox(box);
    const std::string text = box->Bytes();
    WarnOfLength(text, UPIssueOptionLimit.Label, UPIssueOptionLimit.MaximumLength);
    if (CodePage::FindNoCase(text, "\\n") != std::string::npos)
        gPrompts->Message("The \\n character grouping is not applicable for Option texts.",
                          Icon::Information);
}

std::vector<std::string> frmUPIssues::SubstitutionNames() const {
    std::vector<std::string> names;
    for (std::size_t i = 0; i < UPIssueQuestionSubs.size(); ++i)
        names.push_back(Find<ChoiceBox>(Indexed("cboUPIssueSubs", i))->Chosen());
    return names;
}

void frmUPIssues::ReadTexts(clsUPIssue& issue) const {
    issue.Question = ui->txtQuestion->Bytes();
    issue.SubQuestion = ui->txtSubQuestion->Bytes();
    const std::vector<std::string> names = SubstitutionNames();
    for (std::size_t i = 0; i < names.size(); ++i)
        issue.*UPIssueQuestionSubs[i] =
            UPIssueSubstitutions.ItemAt(PositionByName(UPIssueSubstitutions, names[i]));
    for (std::size_t i = 0; i < UPIssueOptions.size(); ++i)
        issue.*UPIssueOptions[i] = Find<LineBox>(Indexed("txtOption", i))->Bytes();
}

bool frmUPIssues::ValidateData() {
    clsUPIssue form;
    ReadTexts(form);
    double sum = 0;
    for (std::size_t i = 0; i < UPIssueOptionValues.size(); ++i)
        sum += std::abs(NumberOf(Find<LineBox>(Indexed("txtOptVal", i))->Bytes()));
    return AcceptReasons(CheckUPIssue(form, guidance.Caption, sum, UPIssueSubstitutions));
}

void frmUPIssues::FormToRecord(Record& record) {
    clsUPIssue form;
    for (const NumberBox& number : NumberBoxes)
        form.*number.Member = FieldNumber(QString::fromLatin1(number.Box));
    for (std::size_t i = 0; i < UPIssueOptionValues.size(); ++i)
        form.*UPIssueOptionValues[i] = FieldNumber(Indexed("txtOptVal", i));
    for (std::size_t i = 0; i < UPIssueValues.size(); ++i)
        if (i > 0 || !guidance.ShowsAbilityBox)
            form.*UPIssueValues[i] = FieldNumber(Indexed("txtValue", i));
    if (guidance.ShowsAbilityBox)
        form.Value01 = UPIssueAttributes.ItemAt(PositionByName(UPIssueAttributes, ui->cboValue01->Chosen()));
    form.HowAIWouldVote =
        AIVoteBehaviours.ItemAt(PositionByName(AIVoteBehaviours, ui->cboHowAIWouldVote->Chosen()));
    form.UPIssueAttribute =
        UPIssueTypes.ItemAt(PositionByName(UPIssueTypes, ui->cboAttributeToEffect->Chosen()));
    ReadTexts(form);

    auto& issue = static_cast<clsUPIssue&>(record);
    issue.UPIssueName = ui->txtUPIssueName->Bytes();
    TakeChosenFile(issue);
    CopyContent(UPIssueKind, form, issue);
}

} // namespace velmora
