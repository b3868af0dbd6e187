#pragma once

#include "editor/EditorWindow.h"
#include "upissues/UPIssueRules.h"

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
    void BeginLoad() override;
    void ReleaseRecords() override {
        EditorWindow::ReleaseRecords();
        UPIssueSubstitutions.RemoveAll();
    }
    void ShowRecord(Record* record) override;
    bool ValidateData() override;
    void FormToRecord(Record& record) override;
    [[nodiscard]] std::string OwnFile() const override;
    [[nodiscard]] std::string DataFolder() const override;

  private:
    void ConnectFields();
    void LeaveQuestion();
    void LeaveOption(LineBox* box);
    void ShowQuestion(clsUPIssue& issue);
    void ShowOptions(clsUPIssue& issue);
    void ShowNumbers(const clsUPIssue& issue);
    void OfferGuidance();
    void AbilityChosen();
    void ReadTexts(clsUPIssue& issue) const;
    [[nodiscard]] std::vector<std::string> SubstitutionNames() const;

    std::unique_ptr<Ui::frmUPIssues> ui;
    Catalogue UPIssueSubstitutions;
    Guidance guidance;
};

} // namespace velmora
