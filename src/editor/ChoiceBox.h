#pragma once

#include <QComboBox>
#include <string>
#include <vector>

namespace velmora {

class EntryList;

/// A drop-down list of code-page texts. The mouse wheel passing over it never changes the choice. A long list
/// can be searched: any part of an entry typed offers the entries that hold it. Leaving the box takes the
/// only one, else the choice stays what it was.
class ChoiceBox : public QComboBox {
    Q_OBJECT

  public:
    explicit ChoiceBox(QWidget* parent = nullptr);

    /// Replaces the list and selects an entry, -1 for none. Emits no signal.
    void SetEntries(std::vector<std::string> names, int selected);
    /// The selected entry; empty when there is none.
    [[nodiscard]] std::string Chosen() const;
    /// Ends a search that was begun, as leaving the box does.
    void EndSearch();
    void hidePopup() override;

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    void MakeSearchable(bool searchable);
    /// Follows a text that is an entry. True when the choice is that entry now.
    bool ChooseText(const QString& text, bool byHand);
    /// The entry that a typed text stands for; null when there is none, or more than one.
    [[nodiscard]] QString MatchOf(const QString& typed) const;
    void ReturnPressed();

    EntryList* list;
};

} // namespace velmora
