#pragma once

#include "cli/GameLoader.h"
#include "cli/JsonDocument.h"
#include "cli/KindTable.h"
#include "records/Finding.h"

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace velmora {

/// Prints findings one a line: "PATH:LINE: warning|error: TEXT [RULE]". Line 0 stands for the whole file.
class FindingLines {
  public:
    FindingLines(std::ostream& stream, const std::string& folderPath);

    void Warn(const Finding& finding);
    void Fail(std::string_view file, std::size_t line, const std::string& text, std::string_view rule);

  private:
    void Print(std::string_view file, std::size_t line, std::string_view severity, const std::string& text,
               std::string_view rule);

    std::ostream& out;
    std::string folder; ///< as it is shown, with trailing separator
};

Json MessageToJson(const Finding& finding);
Json ErrorToJson(const LoadError& error);

/// What `check` has found, in the order of its sections: messages, reasons, errors.
class CheckReport {
  public:
    enum class Section { Messages, Reasons, Errors };

    virtual ~CheckReport() = default;
    virtual void Begin(Section section) = 0;
    virtual void Add(const KindEntry& kind, const Finding& message) = 0;
    virtual void Add(const KindEntry& kind, const Record& record, const std::vector<Reason>& reasons) = 0;
    virtual void Add(const LoadError& error) = 0;
    virtual void Finish() = 0;
};

std::unique_ptr<CheckReport> MakeTextReport(std::ostream& out, const GameLoader& loader);
std::unique_ptr<CheckReport> MakeJsonReport(std::ostream& out);

} // namespace velmora
