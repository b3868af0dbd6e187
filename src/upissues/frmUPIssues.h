#pragma once

#include "editor/EditorWindow.h"
#include "upissues/UPIssueRules.h"

#include <array>
#include <memory>

namespace Ui {
class frmUPIssues;
}

namespace velmora {

class LineBox;

/// The UP issue editor's window.
class frmUPIssues : public EditorWindow {
    Q_OBJECT

  public:
    explicit frmUPIssues(QWidget* parent = nullptr);
    ~frmUPIssues() override;

  protected:
    void LoadForm() override;
    void FollowRecord(const Record&) override { OfferGuidance(); }
    bool ValidateData() override;

  private:
    void BindFields();
    void BindOptions();
    void BindValues();
    void ConnectCommands();
    void OfferGuidance();
    void AbilityChosen();

    std::unique_ptr<Ui::frmUPIssues> ui;
    Catalogue UPIssueSubstitutions;
    std::array<ChoiceBox*, 4> substitutionBoxes; ///< of the question
    std::array<LineBox*, 6> optionValueBoxes;
    Guidance guidance;
};

} // namespace velmora
