#include "services/Trap.h"

#include <new>

namespace velmora {

Failure CurrentFailure() {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return {FailureOutOfMemory, "Out of memory", "", 0};
    } catch (const std::exception& exception) {
        return {FailureAutomation, exception.what(), "", 0};
    } catch (...) {
        return {FailureAutomation, "Unknown failure", "", 0};
    }
}

void ReportCurrentFailure(std::string_view routine, const Parameters& parameters, bool isTopLevel) {
    if (gErrHandler == nullptr)
        throw;
    const Failure failure = CurrentFailure();
    gErrHandler->HandleError(routine, failure.Line, failure.Number, failure.Description(), failure.Source,
                             parameters, isTopLevel);
}

} // namespace velmora
