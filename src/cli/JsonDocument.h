#pragma once

#include <nlohmann/json.hpp>

#include <ostream>
#include <string>
#include <string_view>

namespace velmora {

using Json = nlohmann::ordered_json;

/// A core text as a JSON string.
Json JsonText(std::string_view text);
/// A file's name, or a text that mentions one, as a JSON string.
Json JsonName(std::string_view name);

/// Streams one object whose members are lists, an entry a line: no library is ever held twice.
class JsonDocument {
  public:
    explicit JsonDocument(std::ostream& stream) : out(stream) { out << '{'; }

    /// Ends the list before it.
    void BeginList(std::string_view name);
    void Add(const Json& entry);
    void Finish();

  private:
    void EndList();

    std::ostream& out;
    bool listOpen = false;
    bool firstList = true;
    bool firstEntry = true;
};

} // namespace velmora
