#pragma once

#include "platform/Failure.h"

namespace velmora {

/// The failure that some work ends in; number 0 and "no failure" when it does not fail.
template <class Work>
Failure FailureOf(const Work& work) {
    try {
        work();
    } catch (const Failure& failure) {
        return failure;
    }
    return {0, "no failure", {}, 0};
}

} // namespace velmora
