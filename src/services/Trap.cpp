#include "services/Trap.h"

#include "platform/Failure.h"

#include <new>

namespace velmora {

namespace {

Failure WithoutLine(std::int32_t number, const std::string& description) {
    Failure failure(number, description);
    failure.Line = 0;
    return failure;
}

Failure CurrentFailure() {
    try {
        throw;
    } catch (const Failure& failure) {
        return failure;
    } catch (const std::bad_alloc&) {
        return WithoutLine(FailureOutOfMemory, "Out of memory");
    } catch (const std::exception& exception) {
        return WithoutLine(FailureAutomation, exception.what());
    } catch (...) {
        return WithoutLine(FailureAutomation, "Unknown failure");
    }
}

} // namespace

void ReportCurrentFailure(std::string_view routine, const Parameters& parameters, bool isTopLevel) {
    if (gErrHandler == nullptr)
        throw;
    const Failure failure = CurrentFailure();
    gErrHandler->HandleError(routine, failure.Line, failure.Number, failure.Description(), failure.Source,
                             parameters, isTopLevel);
}

} // namespace velmora
