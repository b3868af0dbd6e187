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
    void EnableFrames(bool enabled) override;
    void FollowRecord(const Record& record) override;
    bool ValidateData() override;
    void InitNewRecord(Record& record) override;
    [[nodiscard]] bool IsReservedFile(const std::string& file) const override {
        return IsReservedEventFile(file);
    }
    [[nodiscard]] std::string RenameRefusal(const std::string& name) const override;
    [[nodiscard]] std::string MoveRefusal(const std::string& name) const override;

  private:
    void BindFields();
    void BindTexts();
    void BindPicture();
    void BindAttributes();
    void ConnectCommands();
    void ShowPicture(const std::string& path);
    void PopulateAttributes(const clsEvent& event);
    void AttributeChosen(std::size_t column);
    void SwitchType(std::int32_t type);
    void BrowseForPicture();
    void Review(std::size_t text);

    std::unique_ptr<Ui::frmEvents> ui;
    Catalogue EventWildCardSubs;
    std::array<TextBox*, 4> textBoxes;            ///< in the order of EventTexts
    std::array<ChoiceBox*, 10> substitutionBoxes; ///< in the order of EventSubstitutions
    /// What shows one answer's attribute.
    struct Column {
        ChoiceBox* Attribute;
        QLabel* Unit;
        QLabel* Effects;
        const Binding* Bound = nullptr;
    };
    std::array<Column, 3> columns; ///< good, neutral, evil
    std::string shownPicture;      ///< path of the picture as the record has it
    std::int32_t ShownEventType = 0;
    bool TypeSwitchWarned = false; ///< for as long as the program runs
};

} // namespace velmora
