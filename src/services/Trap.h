#pragma once

#include "platform/Failure.h"
#include "services/clsError.h"

#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

namespace velmora {

/// A text form of each parameter of a routine.
using Parameters = std::vector<std::string>;
inline const Parameters NoInputParms{"NO INPUT PARMS"};

inline std::string ParameterText(bool value) {
    return value ? "True" : "False";
}

/// The exception being handled, as a failure. Other exceptions than Failure count as number 51 with their
/// text, a lack of memory as 7.
Failure CurrentFailure();

/// Reports the exception being handled to the error handler under the routine's name. Without an error
/// handler it passes on as it is.
void ReportCurrentFailure(std::string_view routine, const Parameters& parameters, bool isTopLevel);

/// Runs a routine's body; a failure is reported under the routine's name and passed up.
template <class Body>
auto Trap(std::string_view routine, const Parameters& parameters, Body&& body) {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        ReportCurrentFailure(routine, parameters, false);
        throw; // not reached: a report that is not top level always throws
    }
}

/// Runs an event routine's body; a failure ends here, shown and logged. True when the body ran through.
template <class Body>
bool TrapEvent(std::string_view routine, const Parameters& parameters, Body&& body) {
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        ReportCurrentFailure(routine, parameters, true);
        return false;
    }
}

} // namespace velmora
