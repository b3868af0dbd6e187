#pragma once

#include "platform/FaultHook.h"

#include <cerrno>
#include <system_error>

/// Calls of the system that touch files: tests can break them, signals cannot.
namespace velmora::SystemCall {

[[noreturn]] inline void Refuse(int code, const char* operation) {
    throw std::system_error(code, std::generic_category(), operation);
}

/// The result of a call, made again until no signal interrupts it; -1 with errno when it is refused.
template <class Call>
auto Try(const char* operation, Call call) {
    while (true) {
        const int fault = FaultAt(operation);
        const auto result = fault == 0 ? call() : -1;
        if (fault != 0)
            errno = fault;
        if (result != -1 || errno != EINTR)
            return result;
    }
}

/// The same, but a refusal is thrown.
template <class Call>
auto Make(const char* operation, Call call) {
    const auto result = Try(operation, call);
    if (result == -1)
        Refuse(errno, operation);
    return result;
}

} // namespace velmora::SystemCall
