#include "cli/Host.h"

#include <unistd.h>

namespace velmora::Host {

std::vector<std::string> Arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool OutputIsTerminal() {
    return ::isatty(STDOUT_FILENO) != 0;
}

void PrepareStreams() {}

} // namespace velmora::Host
