#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

/// Failure numbers of the classic run-time that modders know from the error log.
enum FailureNumber : std::int32_t {
    FailureAlreadyReported = -1,
    FailureInvalidArgument = 5,
    FailureOverflow = 6,
    FailureOutOfMemory = 7,
    FailureSubscript = 9,
    FailureTypeMismatch = 13,
    FailureAutomation = 51,
    FailureFileNotFound = 53,
    FailureDeviceError = 57,
    FailureDiskFull = 61,
    FailurePermissionDenied = 70,
    FailurePathFileAccess = 75,
    FailurePathNotFound = 76,
    FailureDuplicateKey = 457,
};

/// A failure on its way up to the user-interface event that started the action.
/// Number, Description and Source are what the error dialog and the error log show;
/// Line is the source line it was raised at, 0 when not known; Source names the file of that line where
/// nothing else is said.
class Failure : public std::runtime_error {
  public:
    // std::source_location is still missing from the clang that fuzzes; the builtin serves every compiler
    // here.
    Failure(std::int32_t number, const std::string& description,
            std::string source = SourceOf(__builtin_FILE()), std::int32_t line = __builtin_LINE())
        : std::runtime_error(description), Number(number), Source(std::move(source)), Line(line) {}

    [[nodiscard]] std::string Description() const { return what(); }

    std::int32_t Number;
    std::string Source;
    std::int32_t Line;

  private:
    /// "Numbers" of ".../services/Numbers.cpp".
    static std::string SourceOf(std::string_view file) {
        file.remove_prefix(file.find_last_of("/\\") + 1);
        return std::string(file.substr(0, file.find('.')));
    }
};

} // namespace velmora
