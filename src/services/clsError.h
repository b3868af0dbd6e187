#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

/// The one error handler. A failure is reported by every routine on its way up; the event routine's report
/// shows the error dialog, appends a record to the error log and writes an error file, once per failure.
class clsError {
  public:
    clsError();

    std::string LogFile; ///< empty: no log is written
    bool Unattended = true;
    bool OfferDetails = true;
    bool CollectUserInput = false;
    std::string UserName;
    std::int32_t UserNumber = 0;

    /// Directory for error files; empty: none are written. A separator is appended on assignment.
    [[nodiscard]] const std::string& MsgOutputDIR() const { return msgOutputDir; }
    void SetMsgOutputDIR(const std::string& directory);
    /// File name of the running executable, with extension.
    [[nodiscard]] const std::string& AppExeName() const { return appExeName; }

    /// One routine's report. Not top level: raises Failure (-1, source "clsError") for the calling routine.
    /// Top level: shows the dialog, writes log and error file, forgets the failure and returns.
    void HandleError(std::string_view routineName, std::int32_t line, std::int32_t number,
                     const std::string& description, const std::string& source,
                     const std::vector<std::string>& parameters, bool isTopLevel);

    /// Routine names of the failure reported last by a top-level routine, event routine first.
    [[nodiscard]] const std::vector<std::string>& LastCallStack() const { return lastCallStack; }

  private:
    struct Pending {
        std::int32_t Line = 0;
        std::int32_t Number = 0;
        std::string Description;
        std::string Source;
        std::time_t Time = 0;
        std::vector<std::string> Parameters;
        std::string LogStack;
    };

    std::string msgOutputDir;
    std::string appExeName;
    Pending pending;
    std::vector<std::string> lastCallStack;
};

inline clsError* gErrHandler = nullptr;

} // namespace velmora
