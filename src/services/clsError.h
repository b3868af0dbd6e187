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

    /// Directory for error files; empty: none are written. A separator is appended on assignment unless the
    /// directory ends in one.
    [[nodiscard]] const std::string& MsgOutputDIR() const { return msgOutputDir; }
    void SetMsgOutputDIR(const std::string& directory);
    /// File name of the running executable, with extension.
    [[nodiscard]] const std::string& AppExeName() const { return appExeName; }

    /// One routine's report. Number -1 (or 0) tells that a routine further in has reported the failure
    /// before; any other number is a fresh failure, whose line, number, description, source and parameters
    /// are kept. A source "S*X*Y" stands for the source S and two more operations X and Y for the call stack.
    /// Not top level: raises Failure (-1, source "clsError") for the calling routine.
    /// Top level: shows the dialog (unless unattended), writes error file and log, forgets the failure and
    /// returns. A file that cannot be written is given up quietly.
    void HandleError(std::string_view routineName, std::int32_t line, std::int32_t number,
                     const std::string& description, const std::string& source,
                     const std::vector<std::string>& parameters, bool isTopLevel);

    /// Routine names of the failure reported last by a top-level routine, event routine first. Already set
    /// when the dialog is asked for.
    [[nodiscard]] const std::vector<std::string>& LastCallStack() const { return lastCallStack; }

  private:
    struct Pending {
        std::int32_t Line = 0;
        std::int32_t Number = 0;
        std::string Description;
        std::string Source;
        std::time_t Time = 0;
        std::vector<std::string> Parameters;
        std::vector<std::string> Routines; ///< that of the failure first
    };

    void ReportAtTopLevel(Pending failure, std::string_view routineName);
    [[nodiscard]] std::string AskUser(const Pending& failure,
                                      const std::vector<std::string>& callStack) const;
    [[nodiscard]] std::string LogRecord(const Pending& failure, const std::vector<std::string>& callStack,
                                        const std::string& userMessage) const;
    void WriteFiles(const Pending& failure, std::string record, const std::vector<std::string>& callStack,
                    const std::string& userMessage) const;

    std::string msgOutputDir;
    std::string appExeName;
    Pending pending;
    std::vector<std::string> lastCallStack;
};

inline clsError* gErrHandler = nullptr;

} // namespace velmora
