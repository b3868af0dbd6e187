#include "cli/CommandLine.h"
#include "cli/Host.h"

#include <iostream>

int main(int argc, char** argv) {
    velmora::Host::PrepareStreams();
    std::ios::sync_with_stdio(false);
    return velmora::RunVelwriter(velmora::Host::Arguments(argc, argv), std::cout, std::cerr,
                                 velmora::Host::OutputIsTerminal());
}
