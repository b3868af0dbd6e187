#include "cli/Host.h"

namespace velmora::Host {

std::vector<std::string> Arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

void PrepareStreams() {}

} // namespace velmora::Host
