#pragma once

#include "editor/ChoiceBox.h"
#include "services/Catalogues.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class QListWidget;

/// Small routines by which every editor fills, selects and checks its boxes.
namespace velmora {

class LineBox;
class PictureViewer;

/// Names of a catalogue, in its order.
template <class Item>
std::vector<std::string> NamesOf(const KeyedCollection<Item>& catalogue) {
    std::vector<std::string> names;
    names.reserve(catalogue.Count());
    for (const auto& [name, item] : catalogue)
        names.push_back(name);
    return names;
}

/// Fill a box with a catalogue's names and select the entry wanted, the first when there is none. Of several
/// with the same number or code the last is selected.
void LoadComboByNumber(ChoiceBox* box, const Catalogue& catalogue, std::int32_t number);
void LoadComboByCode(ChoiceBox* box, const CodeCatalogue& catalogue, std::string_view code);
void LoadComboByName(ChoiceBox* box, std::vector<std::string> names, std::string_view name);

/// Fills a list with the non-empty texts and selects the one wanted, none when it is not among them.
void LoadListFromArray(QListWidget* list, const std::vector<std::string>& texts, std::string_view wanted);

/// Shows a picture file and makes the viewer visible. Ignores any failure.
void ShowImageFile(PictureViewer* viewer, const std::string& path) noexcept;

/// True, with a message, when a box's text is NOT numeric.
bool CheckNumericField(LineBox* box);

/// Takes blanks and characters that file names may not hold out of a box's text. Ignores any failure.
void StripIllegalFileChars(LineBox* box) noexcept;

} // namespace velmora
