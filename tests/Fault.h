#pragma once

#include "platform/FaultHook.h"

#include <mutex>
#include <string>
#include <utility>

namespace velmora {

/// While it lives, the host refuses the nth call of an operation ("" for any; each when `nth` is 0) with an
/// errno value. With 0 for that it only listens.
class Fault {
  public:
    explicit Fault(std::string refused = {}, int nth = 0, int errorCode = 0)
        : operation(std::move(refused)), turn(nth), code(errorCode) {
        current = this;
        gFaultHook = [](const char* name) { return current->Ask(name); };
    }
    ~Fault() { gFaultHook = nullptr; }
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;

    std::string Calls;  ///< all so far that touch a file's bytes or name, each with a blank behind it
    std::string Struck; ///< the last one refused

  private:
    int Ask(const std::string& name) {
        const std::lock_guard hold(asking); // files are read by several threads
        if (name != "stat" && name != "readlink" && name != "link" && name != "chmod" && name != "opendir")
            Calls += name + ' ';
        if (code == 0 || (!operation.empty() && operation != name) || (turn != 0 && ++asked != turn))
            return 0;
        Struck = name;
        return code;
    }

    static inline Fault* current = nullptr;
    std::mutex asking;
    std::string operation;
    int turn;
    int code;
    int asked = 0;
};

} // namespace velmora
