#include "services/clsError.h"

#include "platform/Failure.h"
#include "platform/Files.h"
#include "services/Prompts.h"
#include "services/clsMsgLog.h"
#include "services/modWriter.h"

#include <utility>

namespace velmora {

namespace {

constexpr const char* LineEnd = "\r\n";
const std::string RecordRule(55, '*');

std::string Lines(const std::vector<std::string>& texts, const std::string& indent = {}) {
    std::string lines;
    for (const std::string& text : texts)
        lines += indent + text + LineEnd;
    return lines;
}

std::string ParameterList(const std::vector<std::string>& parameters) {
    return parameters.empty() ? "" : "<" + Join(parameters, ">,<") + ">";
}

} // namespace

clsError::clsError() : appExeName(ExecutableName()) {}

void clsError::SetMsgOutputDIR(const std::string& directory) {
    msgOutputDir = Files::Join(directory, "");
}

void clsError::HandleError(std::string_view routineName, std::int32_t line, std::int32_t number,
                           const std::string& description, const std::string& source,
                           const std::vector<std::string>& parameters, bool isTopLevel) {
    if (number != FailureAlreadyReported && number != 0)
        pending = {line, number, description, source, std::time(nullptr), parameters, {}};
    if (isTopLevel) {
        ReportAtTopLevel(std::exchange(pending, {}), routineName);
        return;
    }
    pending.Routines.emplace_back(routineName);
    throw Failure(FailureAlreadyReported, "", "clsError");
}

void clsError::ReportAtTopLevel(Pending failure, std::string_view routineName) {
    if (failure.Time == 0)
        failure.Time = std::time(nullptr);
    lastCallStack.assign(1, std::string(routineName));
    lastCallStack.insert(lastCallStack.end(), failure.Routines.rbegin(), failure.Routines.rend());

    const std::vector<std::string> pieces = Split(failure.Source, "*");
    failure.Source = pieces.front();
    // The dialog and the error file list the pieces of the source last, the log right below the event
    // routine.
    auto dialogStack = lastCallStack;
    dialogStack.insert(dialogStack.end(), pieces.begin() + 1, pieces.end());
    auto logStack = lastCallStack;
    logStack.insert(logStack.begin() + 1, pieces.begin() + 1, pieces.end());

    const std::string userMessage = AskUser(failure, dialogStack);
    WriteFiles(failure, LogRecord(failure, logStack, userMessage), dialogStack, userMessage);
}

std::string clsError::AskUser(const Pending& failure, const std::vector<std::string>& callStack) const {
    if (Unattended || gPrompts == nullptr)
        return "<Unattended Execution>";
    ErrorDetails details;
    details.Number = failure.Number;
    details.Line = failure.Line;
    details.Description = failure.Description;
    details.Source = failure.Source;
    details.Time = GeneralDate(failure.Time);
    details.CallStack = Lines(callStack);
    details.Parameters = ParameterList(failure.Parameters);
    details.OfferDetails = OfferDetails;
    details.CollectUserInput = CollectUserInput;
    return gPrompts->ReportError(details);
}

std::string clsError::LogRecord(const Pending& failure, const std::vector<std::string>& callStack,
                                const std::string& userMessage) const {
    const bool userKnown = !UserName.empty() || UserNumber != 0;
    return Lines(
               {RecordRule, "", "THE FOLLOWING ERROR WAS CAUGHT:", "", "Application: " + appExeName,
                "Error Source: " + failure.Source, "Error Number: " + std::to_string(failure.Number),
                "Error Description: " + failure.Description, "Date and Time: " + GeneralDate(failure.Time),
                "User: " + (userKnown ? std::to_string(UserNumber) + " " + UserName : "<No information>"),
                "User Message: " + (userMessage.empty() ? "<None given>" : ReplaceAll(userMessage, "\"", "")),
                "Call Stack: "}) +
           Lines(callStack, "\t") + RecordRule;
}

void clsError::WriteFiles(const Pending& failure, std::string record,
                          const std::vector<std::string>& callStack, const std::string& userMessage) const {
    clsMsgLog log;
    log.LogFile = LogFile;
    log.SetMsgOutputDIR(msgOutputDir);
    log.SendErrFile({std::to_string(UserNumber) + "-" + UserName, failure.Time, record, appExeName,
                     failure.Source, failure.Number, failure.Description, Join(callStack, "*"), userMessage});
    try {
        log.WriteToLogFile(record, false);
    } catch (const Failure&) {
        // The person has seen the failure; a log that cannot be written must not raise a second one.
    }
}

} // namespace velmora
