#pragma once

#include <cstdint>
#include <source_location>
#include <stdexcept>
#include <string>

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
/// Line is the source line it was raised at, 0 when not known.
class Failure : public std::runtime_error {
  public:
    Failure(std::int32_t number, const std::string& description, std::string source = {},
            std::source_location where = std::source_location::current())
        : std::runtime_error(description), Number(number), Source(std::move(source)),
          Line(static_cast<std::int32_t>(where.line())) {}

    [[nodiscard]] std::string Description() const { return what(); }

    std::int32_t Number;
    std::string Source;
    std::int32_t Line;
};

} // namespace velmora
