#include "cli/ErrorCollector.h"

#include <utility>

namespace velmora {

ErrorCollector::ErrorCollector()
    : previousPrompts(std::exchange(gPrompts, this)), previousHandler(std::exchange(gErrHandler, &handler)) {
    handler.Unattended = false;
}

ErrorCollector::~ErrorCollector() {
    gPrompts = previousPrompts;
    gErrHandler = previousHandler;
}

std::string ErrorCollector::ReportError(const ErrorDetails& error) {
    Reports.push_back({error, handler.LastCallStack()});
    return {};
}

} // namespace velmora
