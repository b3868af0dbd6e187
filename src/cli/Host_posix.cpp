#include "cli/Host.h"

#include "services/modWriter.h"

#include <cstdio>
#include <unistd.h>

namespace velmora::Host {

std::vector<std::string> Arguments(int argc, char** argv) {
    return {argv + (argc > 0 ? 1 : 0), argv + argc};
}

bool OutputIsTerminal() {
    return ::isatty(STDOUT_FILENO) != 0;
}

std::string OutputOf(const std::vector<std::string>& words, int& status) {
    std::string line;
    for (const std::string& word : words)
        line += "'" + ReplaceAll(word, "'", "'\\''") + "' ";
    std::string output;
    std::FILE* pipe = ::popen(line.c_str(), "r");
    if (pipe == nullptr) {
        status = -1;
        return output;
    }
    char bytes[4096];
    while (const std::size_t count = std::fread(bytes, 1, sizeof bytes, pipe))
        output.append(bytes, count);
    status = ::pclose(pipe);
    return output;
}

void PrepareStreams() {}

} // namespace velmora::Host
