#pragma once

#include "services/Trap.h"

#include <string>
#include <string_view>
#include <utility>

namespace velmora {

/// Names the operations of an object: a failure in one passes on with the source "CLASS*FIRST*SECOND", the
/// operations being all that the object has ever begun. The error handler shows them as further routines.
class OperationTrace {
  public:
    explicit OperationTrace(std::string className) : source(std::move(className)) {}

    /// Runs an operation's body; its result is passed on.
    template <class Body>
    auto Run(std::string_view operation, Body&& body) {
        source.append("*").append(operation);
        try {
            return std::forward<Body>(body)();
        } catch (...) {
            const Failure failure = CurrentFailure();
            throw Failure(failure.Number, failure.Description(), source, failure.Line);
        }
    }

  private:
    std::string source;
};

} // namespace velmora
