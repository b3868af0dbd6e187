#pragma once

#include "lsp/OpenFile.h"

#include <nlohmann/json.hpp>

#include <stdexcept>
#include <string>
#include <string_view>

/// What a client can ask about an open file. Results are those of the language server protocol.
namespace velmora::lsp {

using Json = nlohmann::json;

/// A request that is understood and refused.
class Refused : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// A core text as a JSON string.
Json JsonText(std::string_view text);

/// Every problem of a file, those of other files' sakes among them.
Json DiagnosticsOf(const OpenFile& file);
/// What the number, code or text at a position means; null for nothing.
Json HoverAt(const OpenFile& file, Position position);
/// The keys, or the values of the key, that may stand at a position.
Json CompletionAt(const OpenFile& file, Position position);
/// The records.
Json SymbolsOf(const OpenFile& file);
/// Where the module stands that the position requires; null for nothing.
Json DefinitionAt(const OpenFile& file, Position position);
/// The edits that bring a file into the form in which the editor writes it. Throws Refused. `lost` becomes
/// what they leave out.
Json FormattingOf(const OpenFile& file, std::string& lost);

} // namespace velmora::lsp
