#pragma once

#include "editor/EditorWindow.h"
#include "events/EventRules.h"

#include <array>
#include <memory>

namespace Ui {
class frmEvents;
}

namespace velmora {

class TextBox;

/// The event editor's window.
class frmEvents : public EditorWindow {
    Q_OBJECT

  public:
    explicit frmEvents(QWidget* parent = nullptr);
    ~frmEvents() override;

  protected:
    void BeginLoad() override;
    void ReleaseRecords() override {
        EditorWindow::ReleaseRecords();
        EventWildCardSubs.RemoveAll();
    }
    void ShowRecord(Record* record) override;
    bool ValidateData() override;
    void FormToRecord(Record& record) override;
    void InitNewRecord(Record& record) override;
    [[nodiscard]] bool IsReservedFile(const std::string& file) const override {
        return IsReservedEventFile(file);
    }
    [[nodiscard]] std::string RenameRefusal(const std::string& name) const override;
    [[nodiscard]] std::string MoveRefusal(const std::string& name) const override;
    [[nodiscard]] std::string OwnFile() const override;
    [[nodiscard]] std::string DataFolder() const override;

  private:
    void ConnectFields();
    void ConnectReviews();
    void ShowTexts(clsEvent& event);
    void ShowFile(const std::string& shortName);
    void ShowPicture(const std::string& path);
    void ShowMorality(std::int32_t weight);
    void PopulateAttributes(const std::array<std::int32_t, 3>& numbers, std::int32_t type);
    void AttributeChosen(std::size_t column);
    void SwitchType(std::int32_t type);
    void BrowseForPicture();
    void Review(std::size_t text);
    void ReadTexts(clsEvent& event) const;

    std::unique_ptr<Ui::frmEvents> ui;
    std::array<TextBox*, 4> textBoxes; ///< in the order of EventTexts
    Catalogue EventWildCardSubs;
    std::int32_t ShownEventType = 0;
    bool TypeSwitchWarned = false; ///< for as long as the program runs
};

} // namespace velmora
