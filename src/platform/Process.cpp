#include "platform/Process.h"

#include <chrono>
#include <thread>

namespace velmora::Process {

void Sleep(std::int32_t milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

} // namespace velmora::Process
