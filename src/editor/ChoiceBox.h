#pragma once

#include <QComboBox>
#include <string>
#include <vector>

namespace velmora {

class EntryList;

/// A drop-down list of code-page texts. The mouse wheel passing over it never changes the choice. A long list
/// can be searched: any part of an entry typed offers the entries that hold it.
class ChoiceBox : public QComboBox {
    Q_OBJECT

  public:
    explicit ChoiceBox(QWidget* parent = nullptr);

    /// Replaces the list and selects an entry, -1 for none. Emits no signal.
    void SetEntries(std::vector<std::string> names, int selected);
    /// The selected entry; empty when there is none.
    [[nodiscard]] std::string Chosen() const;

  protected:
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

  private:
    void MakeSearchable(bool searchable);
    /// Follows a text that is an entry. True when the choice is that entry now.
    bool ChooseText(const QString& text, bool byHand);
    void LeaveSearch();

    EntryList* list;
};

} // namespace velmora
