#include "cli/JsonDocument.h"

#include "platform/CodePage.h"
#include "platform/PathTexts.h"

namespace velmora {

Json JsonText(std::string_view text) {
    return CodePage::ToUtf8(text);
}

Json JsonName(std::string_view name) {
    return PathTexts::ToHostText(name);
}

void JsonDocument::BeginList(std::string_view name) {
    EndList();
    out << (firstList ? "\n" : ",\n") << Json(name).dump() << ":[";
    firstList = false;
    firstEntry = true;
    listOpen = true;
}

void JsonDocument::Add(const Json& entry) {
    out << (firstEntry ? "\n" : ",\n")
        << entry.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    firstEntry = false;
}

void JsonDocument::EndList() {
    if (listOpen)
        out << (firstEntry ? "]" : "\n]");
    listOpen = false;
}

void JsonDocument::Finish() {
    EndList();
    out << "\n}\n";
}

} // namespace velmora
