#include "editor/FormRoutines.h"

#include "editor/LineBox.h"
#include "editor/PictureViewer.h"
#include "services/Numbers.h"
#include "services/Prompts.h"
#include "services/modWriter.h"

#include <QListWidget>
#include <algorithm>
#include <exception>

namespace velmora {

namespace {

template <class Body>
void IgnoreFailure(const Body& body) noexcept {
    try {
        body();
    } catch (const std::exception&) {
        // The control stays as far as the routine got.
    }
}

} // namespace

void LoadComboByNumber(ChoiceBox* box, const Catalogue& catalogue, std::int32_t number) {
    box->SetEntries(NamesOf(catalogue), static_cast<int>(PositionByNumber(catalogue, number)));
}

void LoadComboByCode(ChoiceBox* box, const CodeCatalogue& catalogue, std::string_view code) {
    box->SetEntries(NamesOf(catalogue), static_cast<int>(PositionByCode(catalogue, code)));
}

void LoadComboByName(ChoiceBox* box, std::vector<std::string> names, std::string_view name) {
    const auto wanted = std::find_if(names.begin(), names.end(), [&](const std::string& entry) {
        return CodePage::EqualNoCase(entry, name);
    });
    const auto at = wanted == names.end() ? 0 : wanted - names.begin();
    box->SetEntries(std::move(names), static_cast<int>(at));
}

void LoadListFromArray(QListWidget* list, const std::vector<std::string>& texts, std::string_view wanted) {
    list->clear();
    for (const std::string& text : texts) {
        if (text.empty())
            continue;
        list->addItem(ToQt(text));
        if (CodePage::EqualNoCase(text, wanted))
            list->setCurrentRow(list->count() - 1);
    }
}

void ShowImageFile(PictureViewer* viewer, const std::string& path) noexcept {
    IgnoreFailure([&] {
        viewer->ShowFile(path);
        viewer->show();
    });
}

bool CheckNumericField(LineBox* box) {
    if (IsNumeric(box->Bytes()))
        return false;
    gPrompts->Message("Sorry, this field must contain a numeric value");
    return true;
}

void StripIllegalFileChars(LineBox* box) noexcept {
    IgnoreFailure([box] { box->SetBytes(StripIllegalFileChars(box->Bytes())); });
}

} // namespace velmora
