#pragma once

#include <string>
#include <vector>

/// What hosts do differently for a program on a terminal.
namespace velmora::Host {

/// The words after the program's name, in UTF-8.
std::vector<std::string> Arguments(int argc, char** argv);

/// True when the standard output is a terminal, not a file or a pipe.
bool OutputIsTerminal();

/// What a program prints on its standard output, with its exit status: its name first, then its arguments,
/// all in UTF-8. A program that is not there has a status other than 0.
std::string OutputOf(const std::vector<std::string>& words, int& status);

/// Makes the standard streams pass bytes on as they are and show UTF-8.
void PrepareStreams();

} // namespace velmora::Host
